#ifndef KALDEX_SHAPEFILE_SHAPE_STREAM_H
#define KALDEX_SHAPEFILE_SHAPE_STREAM_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "lib/shapefile/field_order.h"

namespace kaldex {

// An open .shp or .shx file with a large buffer. Used by one thread only.
class ShapeStream {
 public:
  // Null if the file can't be opened.
  static std::unique_ptr<ShapeStream> open(const char* path, bool forReading);
  ShapeStream(const ShapeStream&) = delete;
  ShapeStream& operator=(const ShapeStream&) = delete;
  ~ShapeStream();

  bool seekStart() { return std::fseek(file_, 0, SEEK_SET) == 0; }
  bool write(const void* bytes, std::size_t count) {
    return fwrite_unlocked(bytes, 1, count, file_) == count;
  }
  bool read(void* bytes, std::size_t count) { return fread_unlocked(bytes, 1, count, file_) == count; }
  // `count` values of type T, reversed if `swap`.
  template <typename T>
  bool writeArray(const T* values, std::size_t count, bool swap);
  template <typename T>
  bool readArray(T* values, std::size_t count, bool swap);
  // Bytes from here to the end of the file, as the file is now.
  std::int64_t remaining();
  // False if anything written didn't reach the file.
  bool close();

 private:
  explicit ShapeStream(FILE* file) : file_(file) {}

  FILE* file_;
  std::unique_ptr<char[]> buffer_;
};

// The stream if it is open and its byte order known, else null.
inline ShapeStream* usable(const std::unique_ptr<ShapeStream>& stream, FieldOrder order) {
  return order.known ? stream.get() : nullptr;
}

template <std::size_t Size>
bool writeFields(ShapeStream* stream, const FieldPacker<Size>& fields) {
  return stream->write(fields.bytes(), Size);
}

template <std::size_t Size>
bool readFields(ShapeStream* stream, FieldUnpacker<Size>& fields) {
  return stream->read(fields.bytes(), Size);
}

template <typename T>
bool ShapeStream::writeArray(const T* values, std::size_t count, bool swap) {
  if (!swap) return write(values, count * sizeof(T));
  constexpr std::size_t kChunk = 512;
  T chunk[kChunk];
  while (count > 0) {
    const std::size_t size = count < kChunk ? count : kChunk;
    for (std::size_t i = 0; i < size; ++i) copyField<T>(chunk + i, values + i, true);
    if (!write(chunk, size * sizeof(T))) return false;
    values += size;
    count -= size;
  }
  return true;
}

template <typename T>
bool ShapeStream::readArray(T* values, std::size_t count, bool swap) {
  if (count == 0) return true;
  if (!read(values, count * sizeof(T))) return false;
  for (std::size_t i = 0; swap && i < count; ++i) copyField<T>(values + i, values + i, true);
  return true;
}

}  // namespace kaldex

#endif
