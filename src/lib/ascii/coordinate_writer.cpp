#include "lib/ascii/coordinate_writer.h"

#include "base/latin1.h"
#include "kaldex/model/angle.h"

namespace kaldex {

namespace {

constexpr int kPlaneDecimals = 6;
constexpr int kDegreeDecimals = 8;
constexpr int kSecondDecimals = 5;
constexpr double kSecondsPerDegree = 3600.0;

}  // namespace

void CoordinateWriter::write(const double* xy, int count) {
  if (coordFormat_ == 0) {
    writePlane(xy, count, kPlaneDecimals);
  } else {
    writeGeographic(xy, count);
  }
}

void CoordinateWriter::writePlane(const double* xy, int count, int decimals) {
  for (const double* end = xy + 2 * static_cast<std::size_t>(count); xy != end; xy += 2) {
    out_.append('\n');
    out_.appendFixed(xy[0], decimals);
    out_.append("     ");
    out_.appendFixed(xy[1], decimals);
  }
}

void CoordinateWriter::writeGeographic(const double* xy, int count) {
  const auto pairs = static_cast<std::size_t>(count);
  geographic_.assign(xy, xy + 2 * pairs);
  if (plane_ != nullptr && !plane_->planeToGeographicAll(geographic_.data(), pairs)) {
    for (std::size_t i = 0; i < pairs; ++i) failed_ += geographic_[2 * i] > kUnsetLimit ? 1 : 0;
  }
  if (coordFormat_ == 1) return writeAngles(geographic_.data(), count);
  // Multiplications before the division, as printed values are defined by it to the last digit.
  for (double& value : geographic_) {
    value = coordFormat_ == 2 ? value * 180 / kPi : value * 180 * kSecondsPerDegree / kPi;
  }
  writePlane(geographic_.data(), count, coordFormat_ == 2 ? kDegreeDecimals : kSecondDecimals);
}

void CoordinateWriter::writeAngles(const double* xy, int count) {
  for (int i = 0; i < count; ++i) {
    Encode(xy[2 * i + 1], kLatitudeKind, latitude_, true);
    Encode(xy[2 * i], kLongitudeKind, longitude_, true);
    out_.append("\n ");
    out_.append(longitude_.toLatin1());
    out_.append("   ");
    out_.append(latitude_.toLatin1());
  }
}

}  // namespace kaldex
