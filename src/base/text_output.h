#ifndef KALDEX_BASE_TEXT_OUTPUT_H
#define KALDEX_BASE_TEXT_OUTPUT_H

#include <QByteArray>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/api.h"
#include "base/number_text.h"

namespace kaldex {

// A buffered writer onto a stream that its caller owns. A failure sticks: what is appended after it is
// dropped, and flush() tells. Text reaches the stream at flush() or when the buffer is full, so flush before
// using the stream directly or closing it; the destructor writes nothing, since the stream may be closed by
// then.
class KALDEX_BASE_API TextOutput {
 public:
  explicit TextOutput(FILE* file);
  ~TextOutput();
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  void append(char character) {
    if (reserve(1)) *cursor_++ = character;
  }
  void append(std::string_view text) {
    if (text.size() > kBufferSize) {
      appendLong(text);
    } else if (!text.empty() && reserve(text.size())) {
      std::memcpy(cursor_, text.data(), text.size());
      cursor_ += text.size();
    }
  }
  void append(const char* text) { append(std::string_view(text)); }
  void append(const QByteArray& bytes) {
    append(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  }
  // "%.Nf", "%d" and "%.Ng"; see number_text.h.
  void appendFixed(double value, int decimals) {
    if (reserve(kNumberTextCapacity)) cursor_ = kaldex::appendFixed(cursor_, value, decimals);
  }
  void appendInt(long long value) {
    if (reserve(kNumberTextCapacity)) cursor_ = kaldex::appendInt(cursor_, value);
  }
  void appendGeneral(double value, int precision = 6) {
    if (reserve(kNumberTextCapacity)) cursor_ = kaldex::appendGeneral(cursor_, value, precision);
  }

  // Hands everything to the stream and flushes that. False if this or any earlier write failed.
  bool flush();
  // False once a write has failed; text that is still in the buffer isn't known to be good.
  bool ok() const { return !failed_; }

 private:
  static constexpr std::size_t kBufferSize = 64 * 1024;

  bool reserve(std::size_t size) { return static_cast<std::size_t>(end_ - cursor_) >= size || makeRoom(); }
  bool makeRoom();
  void appendLong(std::string_view text);

  FILE* file_;
  std::unique_ptr<char[]> buffer_;
  char* cursor_ = nullptr;
  char* end_ = nullptr;
  bool failed_ = false;
};

}  // namespace kaldex

#endif
