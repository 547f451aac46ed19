#include "lib/intake/text_mender.h"

#include <QTextCodec>
#include <cstring>

namespace kaldex {

LineMender::LineMender(FILE* out, TextForm form) : out_(out), form_(form) {}

void LineMender::put(std::string_view bytes) {
  if (bytes.empty()) return;
  ok_ = ok_ && std::fwrite(bytes.data(), 1, bytes.size(), out_) == bytes.size();
  anything_ = true;
  lastIsFeed_ = bytes.back() == '\n';
}

void LineMender::putHeld() {
  for (; heldFeeds_ > 0; --heldFeeds_) put("\n");
  if (controlZPending_) put("\x1A");
  controlZPending_ = false;
}

void LineMender::lineFeed() {
  if (controlZPending_) putHeld();
  if (form_ == TextForm::delimitedTable) {
    ++heldFeeds_;
  } else {
    put("\n");
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
    const std::size_t plain = std::min(bytes.find_first_of("\r\n\x1A"), bytes.size());
    if (plain != 0) {
      putHeld();
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
      putHeld();
      controlZPending_ = true;
    }
  }
}

bool LineMender::finish() {
  if (returnPending_) {
    ++macEnds_;
    lineFeed();
  }
  controlZDropped_ = controlZPending_;
  if (form_ == TextForm::delimitedTable) {
    endMended_ = heldFeeds_ > 0;
  } else if (anything_ && !lastIsFeed_) {
    put("\n");
    endMended_ = true;
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
