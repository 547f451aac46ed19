#ifndef KALDEX_SHAPEFILE_RECORD_BLOCK_H
#define KALDEX_SHAPEFILE_RECORD_BLOCK_H

#include <cstddef>
#include <new>
#include <stdexcept>
#include <vector>

namespace kaldex {

// `count` zeros in the block, which keeps its room for a later, smaller record. False, and an empty block, if
// memory is short: a shape of impossible size is the caller's to refuse.
template <typename T>
bool makeBlock(std::vector<T>& block, std::size_t count) {
  try {
    block.assign(count, T());
    return true;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  block.clear();
  return false;
}

}  // namespace kaldex

#endif
