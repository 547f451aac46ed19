#include "base/byte_order.h"

inline namespace kaldex_v1 {

namespace {

template <typename T>
void swapInPlace(T* value) {
  kaldex::copyOrdered<sizeof(T), true>(value, value);
}

}  // namespace

void swapps(short* value) {
  swapInPlace(value);
}

void swappi(int* value) {
  swapInPlace(value);
}

void swappl(std::int32_t* value) {
  swapInPlace(value);
}

void swappf(float* value) {
  swapInPlace(value);
}

void swappd(double* value) {
  swapInPlace(value);
}

}  // namespace kaldex_v1
