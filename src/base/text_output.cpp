#include "base/text_output.h"

#include <new>

namespace kaldex {

TextOutput::TextOutput(FILE* file) : file_(file), buffer_(new (std::nothrow) char[kBufferSize]) {
  failed_ = file_ == nullptr || buffer_ == nullptr;
  if (buffer_ == nullptr) return;
  cursor_ = buffer_.get();
  end_ = cursor_ + kBufferSize;
}

TextOutput::~TextOutput() = default;

bool TextOutput::makeRoom() {
  if (buffer_ == nullptr) return false;
  const std::size_t size = static_cast<std::size_t>(cursor_ - buffer_.get());
  cursor_ = buffer_.get();
  if (!failed_ && size != 0) failed_ = std::fwrite(buffer_.get(), 1, size, file_) != size;
  return !failed_;
}

void TextOutput::appendLong(std::string_view text) {
  if (makeRoom()) failed_ = std::fwrite(text.data(), 1, text.size(), file_) != text.size();
}

bool TextOutput::flush() {
  makeRoom();
  if (!failed_) failed_ = std::fflush(file_) != 0 || std::ferror(file_) != 0;
  return !failed_;
}

}  // namespace kaldex
