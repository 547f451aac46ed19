#ifndef KALDEX_FUZZ_SHAPE_CONTAINER_H
#define KALDEX_FUZZ_SHAPE_CONTAINER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kaldex::fuzz {

/// The files of one shapefile in a single input: three bytes that choose what is done (job, settings,
/// answers), the lengths of .shp, .shx, .dbf and .cpg as 16-bit little-endian numbers, then their
/// bytes. Lengths beyond the input's end are cut to it.
struct ShapeContainer {
  enum File { shp, shx, dbf, cpg, files };
  static constexpr std::size_t kHead = 3 + 2 * files;

  static ShapeContainer unpack(const std::uint8_t* data, std::size_t size);
  /// Empty when it takes more than `limit` bytes.
  std::vector<std::uint8_t> pack(std::size_t limit) const;

  std::uint8_t job = 0;
  std::uint8_t settings = 0;
  std::uint8_t answers = 0;
  std::string file[files];
};

/// A mutation of an input for a shapefile: of one of its files, and every other time with the lengths told in
/// heads of .shp and .shx mended, so that readers get beyond them. As LLVMFuzzerCustomMutator.
std::size_t mutateShapefile(std::uint8_t* data, std::size_t size, std::size_t limit, unsigned seed);

}  // namespace kaldex::fuzz

#endif
