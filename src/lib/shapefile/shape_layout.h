#ifndef KALDEX_SHAPEFILE_SHAPE_LAYOUT_H
#define KALDEX_SHAPEFILE_SHAPE_LAYOUT_H

#include <cstdint>
#include <limits>

// Sizes of what stands in .shp and .shx files, in bytes unless a name says words (of 16 bits).

namespace kaldex {

inline constexpr std::int64_t kShapeHeaderBytes = 100;
inline constexpr std::int64_t kRecordHeaderBytes = 8;
inline constexpr std::int64_t kPointBytes = 20;
inline constexpr std::int64_t kPointZBytes = 36;
inline constexpr std::int64_t kArcHeadBytes = 44;

constexpr std::int64_t arcBytes(std::int64_t parts, std::int64_t points) {
  return kArcHeadBytes + 4 * parts + 16 * points;
}
constexpr std::int64_t arcZBytes(std::int64_t parts, std::int64_t points) {
  return arcBytes(parts, points) + 16 + 8 * points;
}
// With the range and the values of the measures.
constexpr std::int64_t arcZMBytes(std::int64_t parts, std::int64_t points) {
  return arcZBytes(parts, points) + 16 + 8 * points;
}

// Lengths and offsets are kept as a signed count of words; the table is held to the same size.
inline constexpr std::int64_t kMaxFileBytes =
    2 * static_cast<std::int64_t>(std::numeric_limits<std::int32_t>::max());
// Many programs take offsets as a signed count of bytes.
inline constexpr std::int64_t kWidelyReadBytes = std::numeric_limits<std::int32_t>::max();

// Whether a record of that content fits behind `offset` bytes.
constexpr bool fitsShapeFile(std::int64_t offset, std::int64_t contentBytes) {
  return contentBytes <= kMaxFileBytes && offset <= kMaxFileBytes - kRecordHeaderBytes - contentBytes;
}
// Whether that many rows fit behind a table's header, with the mark at its end.
constexpr bool fitsTableFile(std::int64_t headerBytes, std::int64_t rowBytes, std::int64_t rows) {
  return rowBytes <= 0 || rows <= (kMaxFileBytes - headerBytes - 1) / rowBytes;
}
constexpr std::int32_t toWords(std::int64_t bytes) {
  return static_cast<std::int32_t>(bytes / 2);
}

}  // namespace kaldex

#endif
