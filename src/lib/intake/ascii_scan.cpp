#include "lib/intake/ascii_scan.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/file_window.h"

namespace kaldex {

namespace {

constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
constexpr std::uint64_t kHighs = kOnes << 7;
constexpr std::size_t kLongestLine = 64 * 1024;
constexpr unsigned char kFirstLetter = 'F';

// In each byte of the word: its highest bit if the byte is a letter from `kFirstLetter` on, or anything else
// up to 0x7F that is.
std::uint64_t letters(std::uint64_t word) {
  // Bytes above 0x7F are masked: they must not carry into their neighbours.
  return ((word & ~kHighs) + kOnes * (0x80 - kFirstLetter)) & ~word & kHighs;
}

// In each byte: 1 if it is a line feed.
std::uint64_t lineFeeds(std::uint64_t word) {
  const std::uint64_t difference = word ^ (kOnes * '\n');
  return ~(((difference & ~kHighs) + ~kHighs) | difference | ~kHighs) >> 7;
}

// First letter, or the end; `feeds` gets the line feeds passed over.
const char* findLetter(const char* at, const char* end, long long& feeds) {
  // Line feeds are summed byte by byte, as many words as a byte can count.
  constexpr int kWords = 255;
  for (bool found = false; !found && end - at >= 8;) {
    std::uint64_t sums = 0;
    for (int i = 0; i < kWords && end - at >= 8; ++i, at += 8) {
      std::uint64_t word;
      std::memcpy(&word, at, sizeof word);
      found = letters(word) != 0;
      if (found) break;
      sums += lineFeeds(word);
    }
    constexpr std::uint64_t kPairs = 0x00FF00FF00FF00FFULL;
    sums = (sums & kPairs) + ((sums >> 8) & kPairs);
    feeds += static_cast<long long>((sums * 0x0001000100010001ULL) >> 48);
  }
  for (; at < end; ++at) {
    const auto byte = static_cast<unsigned char>(*at);
    if (byte >= kFirstLetter && byte < 0x80) return at;
    if (byte == '\n') ++feeds;
  }
  return at;
}

const char* lineBegin(const char* from, const char* at) {
  while (at > from && at[-1] != '\n') --at;
  return at;
}

const char* lineEnd(const char* at, const char* end) {
  const void* const feed = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
  return feed != nullptr ? static_cast<const char*>(feed) : end;
}

// Walks a file in blocks that end with a line.
class LineBlocks {
 public:
  LineBlocks(const QByteArray& path, long long offset)
      : file_(path), offset_(static_cast<std::uint64_t>(offset)) {}

  bool isOpen() const { return file_.isOpen(); }
  bool next() {
    offset_ += taken_;
    if (offset_ >= file_.size()) return false;
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(FileWindow::kCapacity, file_.size() - offset_));
    begin_ = reinterpret_cast<const char*>(file_.view(offset_, count));
    if (begin_ == nullptr) return false;
    std::size_t whole = count;
    if (offset_ + count < file_.size()) {
      while (whole > 0 && begin_[whole - 1] != '\n') --whole;
    }
    taken_ = whole != 0 ? whole : count;
    return true;
  }

  const char* begin() const { return begin_; }
  const char* end() const { return begin_ + taken_; }
  long long offsetOf(const char* at) const { return static_cast<long long>(offset_) + (at - begin_); }

 private:
  FileWindow file_;
  std::uint64_t offset_;
  std::uint64_t taken_ = 0;
  const char* begin_ = nullptr;
};

std::string_view cut(const char* begin, const char* end) {
  return {begin, std::min(static_cast<std::size_t>(end - begin), kLongestLine)};
}

}  // namespace

bool scanWordLines(const QByteArray& path, const std::function<bool(const ScannedLine&)>& take) {
  LineBlocks blocks(path, 0);
  if (!blocks.isOpen()) return false;
  long long number = 1;
  while (blocks.next()) {
    const char* const end = blocks.end();
    for (const char* at = blocks.begin(); at < end;) {
      const char* const letter = findLetter(at, end, number);
      if (letter == end) break;
      const char* const first = lineBegin(at, letter);
      const char* const last = lineEnd(letter, end);
      if (!take({cut(first, last), number, blocks.offsetOf(first)})) return true;
      at = last;
    }
  }
  return true;
}

bool scanLines(const QByteArray& path, long long offset,
               const std::function<bool(const ScannedLine&)>& take) {
  LineBlocks blocks(path, offset);
  if (!blocks.isOpen()) return false;
  long long number = 1;
  while (blocks.next()) {
    for (const char* at = blocks.begin(); at < blocks.end();) {
      const char* const last = lineEnd(at, blocks.end());
      if (!take({cut(at, last), number, blocks.offsetOf(at)})) return true;
      ++number;
      at = last + 1;
    }
  }
  return true;
}

}  // namespace kaldex
