#ifndef KALDEX_SHAPEFILE_FIELD_ORDER_H
#define KALDEX_SHAPEFILE_FIELD_ORDER_H

#include <cstddef>
#include <cstdint>

#include "base/byte_order.h"

namespace kaldex {

// Which fields have their bytes reversed on the way between memory and file, by the byte-order mode: on a
// little-endian machine (1) the big-endian ones, on a big-endian machine (2) the little-endian ones.
struct FieldOrder {
  explicit FieldOrder(std::int32_t mode)
      : known(mode == 1 || mode == 2), swapBig(mode == 1), swapLittle(mode == 2) {}

  bool known;
  bool swapBig;
  bool swapLittle;
};

template <typename T>
void copyField(void* to, const void* from, bool swap) {
  if (swap) {
    copyOrdered<sizeof(T), true>(to, from);
  } else {
    copyOrdered<sizeof(T), false>(to, from);
  }
}

// Puts fields one behind the other into a block of exactly `Size` bytes.
template <std::size_t Size>
class FieldPacker {
 public:
  explicit FieldPacker(FieldOrder order) : order_(order) {}

  template <typename T>
  void big(T value) {
    put(value, order_.swapBig);
  }
  template <typename T>
  void little(T value) {
    put(value, order_.swapLittle);
  }
  const unsigned char* bytes() const { return bytes_; }

 private:
  template <typename T>
  void put(T value, bool swap) {
    if (Size - used_ < sizeof(T)) return;
    copyField<T>(bytes_ + used_, &value, swap);
    used_ += sizeof(T);
  }

  FieldOrder order_;
  std::size_t used_ = 0;
  unsigned char bytes_[Size] = {};
};

// Takes fields one behind the other from a block of `Size` bytes, which its user has filled.
template <std::size_t Size>
class FieldUnpacker {
 public:
  explicit FieldUnpacker(FieldOrder order) : order_(order) {}

  template <typename T>
  void big(T& value) {
    take(value, order_.swapBig);
  }
  template <typename T>
  void little(T& value) {
    take(value, order_.swapLittle);
  }
  void skip(std::size_t count) { used_ += count; }
  unsigned char* bytes() { return bytes_; }

 private:
  template <typename T>
  void take(T& value, bool swap) {
    if (used_ > Size || Size - used_ < sizeof(T)) return;
    copyField<T>(&value, bytes_ + used_, swap);
    used_ += sizeof(T);
  }

  FieldOrder order_;
  std::size_t used_ = 0;
  unsigned char bytes_[Size] = {};
};

}  // namespace kaldex

#endif
