#ifndef KALDEX_ASCII_COORDINATE_WRITER_H
#define KALDEX_ASCII_COORDINATE_WRITER_H

#include <QString>
#include <cstddef>
#include <string_view>
#include <vector>

#include "base/text_output.h"
#include "kaldex/model/projection.h"

namespace kaldex {

// Writes coordinate records, each on a line of its own behind a line feed: plane coordinates as they are, or
// geographic ones in the form that `coordFormat` asks for, longitude first. What it prints is what
// SExtFormats::ExpCoord gives, for many points at once.
class CoordinateWriter {
 public:
  // `plane` is the projection of the coordinates, borrowed; without one they count as geographic already.
  CoordinateWriter(TextOutput& out, short coordFormat, const SProjection* plane)
      : out_(out), coordFormat_(coordFormat), plane_(plane) {}

  // `count` pairs x, y, with a height behind each unless there are none (null).
  void write(const double* xy, int count, const float* heights = nullptr);
  // In place: plane coordinates become the numbers that the form prints, or for texts radians.
  void convert(double* xy, std::size_t count);
  // One converted pair, without a line feed. `planeDecimals` are those of plane coordinates.
  void print(const double* xy, std::string_view between, int planeDecimals = kPlaneDecimals);
  // How many had no geographic image (they print as unset values).
  long long failed() const { return failed_; }

 private:
  static constexpr int kPlaneDecimals = 6;

  TextOutput& out_;
  short coordFormat_;
  const SProjection* plane_;
  long long failed_ = 0;
  std::vector<double> converted_;
  QString longitude_;
  QString latitude_;
};

}  // namespace kaldex

#endif
