#ifndef KALDEX_BASE_BYTE_ORDER_H
#define KALDEX_BASE_BYTE_ORDER_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "base/api.h"

inline namespace kaldex_v1 {

// Reverse the bytes of a value in place. A "long" of the file formats is 32 bits wide on every machine.
KALDEX_BASE_API void swapps(short* value);
KALDEX_BASE_API void swappi(int* value);
KALDEX_BASE_API void swappl(std::int32_t* value);
KALDEX_BASE_API void swappf(float* value);
KALDEX_BASE_API void swappd(double* value);

}  // namespace kaldex_v1

namespace kaldex {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ || __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__,
              "mixed byte orders are not handled");
inline constexpr bool kLittleEndianMachine = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

inline std::uint8_t reversed(std::uint8_t bits) {
  return bits;
}
inline std::uint16_t reversed(std::uint16_t bits) {
  return __builtin_bswap16(bits);
}
inline std::uint32_t reversed(std::uint32_t bits) {
  return __builtin_bswap32(bits);
}
inline std::uint64_t reversed(std::uint64_t bits) {
  return __builtin_bswap64(bits);
}

// Copies Size bytes, last one first if Reverse. They travel as an integer: a floating value in the wrong
// order may be a signalling NaN, which a move through a floating register could change. The places may be the
// same.
template <std::size_t Size, bool Reverse>
void copyOrdered(void* to, const void* from) {
  static_assert(Size == 1 || Size == 2 || Size == 4 || Size == 8);
  using Narrow = std::conditional_t<Size == 1, std::uint8_t, std::uint16_t>;
  using Wide = std::conditional_t<Size == 4, std::uint32_t, std::uint64_t>;
  std::conditional_t<(Size < 4), Narrow, Wide> bits;
  std::memcpy(&bits, from, Size);
  if constexpr (Reverse) bits = reversed(bits);
  std::memcpy(to, &bits, Size);
}

// Values of 1, 2, 4 or 8 bytes, integers or floating, at any address.
template <typename T>
T loadLittle(const void* from) {
  T value;
  copyOrdered<sizeof(T), !kLittleEndianMachine>(&value, from);
  return value;
}

template <typename T>
T loadBig(const void* from) {
  T value;
  copyOrdered<sizeof(T), kLittleEndianMachine>(&value, from);
  return value;
}

template <typename T>
void storeLittle(void* to, T value) {
  copyOrdered<sizeof(T), !kLittleEndianMachine>(to, &value);
}

template <typename T>
void storeBig(void* to, T value) {
  copyOrdered<sizeof(T), kLittleEndianMachine>(to, &value);
}

// A cursor over borrowed bytes that never leaves them. The first request beyond the end fails, and so does
// all that follows until seek(): values are then 0 and pointers null.
class ByteReader {
 public:
  ByteReader(const void* data, std::size_t size)
      : data_(static_cast<const unsigned char*>(data)), size_(size) {}

  bool ok() const { return ok_; }
  std::size_t size() const { return size_; }
  std::size_t position() const { return position_; }
  std::size_t remaining() const { return size_ - position_; }

  // To a position from the start; a position beyond the end fails.
  bool seek(std::size_t position) {
    ok_ = position <= size_;
    if (ok_) position_ = position;
    return ok_;
  }
  bool skip(std::size_t count) { return take(count) != nullptr; }
  // The next `count` bytes, passed over; null if there are fewer.
  const unsigned char* take(std::size_t count) {
    ok_ = ok_ && count <= remaining();
    if (!ok_) return nullptr;
    const unsigned char* bytes = data_ + position_;
    position_ += count;
    return bytes;
  }

  template <typename T>
  T little() {
    const unsigned char* bytes = take(sizeof(T));
    return bytes == nullptr ? T() : loadLittle<T>(bytes);
  }
  template <typename T>
  T big() {
    const unsigned char* bytes = take(sizeof(T));
    return bytes == nullptr ? T() : loadBig<T>(bytes);
  }

 private:
  const unsigned char* data_;
  std::size_t size_;
  std::size_t position_ = 0;
  bool ok_ = true;
};

}  // namespace kaldex

#endif
