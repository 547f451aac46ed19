#include "lib/intake/text_mender.h"

#include <QTextCodec>
#include <algorithm>
#include <cstring>

namespace kaldex {

namespace {

constexpr char kControlZ = '\x1A';
constexpr std::size_t kLongestTail = 1 << 20;

bool isSpecial(char c) {
  return c == '\r' || c == '\n' || c == kControlZ;
}

}  // namespace

LineMender::LineMender(FILE* out, TextForm form) : out_(out), form_(form) {}

void LineMender::write(std::string_view bytes) {
  if (bytes.empty()) return;
  ok_ = ok_ && std::fwrite(bytes.data(), 1, bytes.size(), out_) == bytes.size();
  anything_ = true;
  lastIsFeed_ = bytes.back() == '\n';
}

void LineMender::put(std::string_view bytes) {
  write(tail_);
  tail_.clear();
  write(bytes);
}

void LineMender::hold(char special) {
  if (tail_.size() == kLongestTail) put({});
  tail_ += special;
}

void LineMender::lineFeed() {
  if (form_ == TextForm::delimitedTable || !tail_.empty()) {
    hold('\n');
  } else {
    write("\n");
  }
}

void LineMender::add(std::string_view bytes) {
  while (!bytes.empty()) {
    if (returnPending_) {
      const bool dos = bytes.front() == '\n';
      ++(dos ? dosEnds_ : macEnds_);
      if (dos) bytes.remove_prefix(1);
      returnPending_ = false;
      lineFeed();
      continue;
    }
    // Blanks behind the end of a table's last line are a line for readers, an empty one.
    if (form_ == TextForm::delimitedTable && !tail_.empty() && (bytes[0] == ' ' || bytes[0] == '\t')) {
      hold(bytes[0]);
      bytes.remove_prefix(1);
      continue;
    }
    const auto plain =
        static_cast<std::size_t>(std::find_if(bytes.begin(), bytes.end(), isSpecial) - bytes.begin());
    if (plain != 0) {
      put(bytes.substr(0, plain));
      bytes.remove_prefix(plain);
      continue;
    }
    const char special = bytes.front();
    bytes.remove_prefix(1);
    if (special == '\r') {
      returnPending_ = true;
    } else if (special == '\n') {
      lineFeed();
    } else {
      hold(kControlZ);
    }
  }
}

bool LineMender::finish() {
  if (returnPending_) {
    ++macEnds_;
    lineFeed();
  }
  const bool feedsDropped = tail_.find('\n') != std::string::npos;
  controlZDropped_ = tail_.find(kControlZ) != std::string::npos;
  if (form_ == TextForm::delimitedTable) {
    endMended_ = feedsDropped;
  } else if (anything_ && !lastIsFeed_) {
    write("\n");
    endMended_ = !feedsDropped;
  }
  return ok_ && std::fflush(out_) == 0;
}

Latin1Converter::Latin1Converter(const QByteArray& codecName) {
  QTextCodec* const codec = QTextCodec::codecForName(codecName);
  if (codec != nullptr) decoder_.reset(codec->makeDecoder(QTextCodec::IgnoreHeader));
}

Latin1Converter::~Latin1Converter() = default;

QByteArray Latin1Converter::convert(std::string_view bytes) {
  QString text = held_ + decoder_->toUnicode(bytes.data(), static_cast<int>(bytes.size()));
  // An accent that comes in the next piece still has to find its letter, and a half character its other half.
  int end = text.size();
  while (end > 0 && text.at(end - 1).isMark()) --end;
  if (end > 0) --end;
  if (end > 0 && text.at(end - 1).isHighSurrogate()) --end;
  held_ = text.mid(end);
  text.truncate(end);
  return toLatin1(text, &loss_);
}

QByteArray Latin1Converter::finish() {
  const QByteArray rest = toLatin1(held_, &loss_);
  held_.clear();
  return rest;
}

}  // namespace kaldex
