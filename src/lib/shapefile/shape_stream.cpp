#include "lib/shapefile/shape_stream.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <algorithm>
#include <new>

namespace kaldex {

namespace {
constexpr std::size_t kBufferSize = 256 * 1024;
}

std::unique_ptr<ShapeStream> ShapeStream::open(const char* path, bool forReading) {
  if (path == nullptr) return nullptr;
  FILE* const file = std::fopen(path, forReading ? "rb" : "wb");
  if (file == nullptr) return nullptr;
  std::unique_ptr<ShapeStream> stream(new ShapeStream(file));
  stream->buffer_.reset(new (std::nothrow) char[kBufferSize]);
  if (stream->buffer_ != nullptr) std::setvbuf(file, stream->buffer_.get(), _IOFBF, kBufferSize);
  return stream;
}

ShapeStream::~ShapeStream() {
  close();
}

bool ShapeStream::close() {
  if (file_ == nullptr) return true;
  const bool whole = std::ferror(file_) == 0;
  FILE* const file = file_;
  file_ = nullptr;
  return std::fclose(file) == 0 && whole;
}

std::int64_t ShapeStream::remaining() {
  struct stat status;
  const off_t position = ftello(file_);
  if (position < 0 || fstat(fileno(file_), &status) != 0) return 0;
  return std::max<std::int64_t>(status.st_size - position, 0);
}

}  // namespace kaldex
