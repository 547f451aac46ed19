#ifndef KALDEX_ASCII_COORDINATE_WRITER_H
#define KALDEX_ASCII_COORDINATE_WRITER_H

#include <QString>
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

  // `count` pairs x, y.
  void write(const double* xy, int count);
  // How many had no geographic image (they print as unset values).
  long long failed() const { return failed_; }

 private:
  void writePlane(const double* xy, int count, int decimals);
  void writeGeographic(const double* xy, int count);
  void writeAngles(const double* xy, int count);

  TextOutput& out_;
  short coordFormat_;
  const SProjection* plane_;
  long long failed_ = 0;
  std::vector<double> geographic_;
  QString longitude_;
  QString latitude_;
};

}  // namespace kaldex

#endif
