#include "lib/ascii/coordinate_writer.h"

#include "base/latin1.h"
#include "kaldex/model/angle.h"

namespace kaldex {

namespace {

constexpr int kDegreeDecimals = 8;
constexpr int kSecondDecimals = 5;
constexpr int kHeightDecimals = 6;
constexpr double kSecondsPerDegree = 3600.0;

}  // namespace

void CoordinateWriter::write(const double* xy, int count, const float* heights) {
  const auto pairs = static_cast<std::size_t>(count);
  if (coordFormat_ != 0) {
    converted_.assign(xy, xy + 2 * pairs);
    convert(converted_.data(), pairs);
    xy = converted_.data();
  }
  const bool angles = coordFormat_ == 1;
  for (std::size_t i = 0; i < pairs; ++i) {
    out_.append(angles ? "\n " : "\n");
    print(xy + 2 * i, angles ? "   " : "     ");
    if (heights == nullptr) continue;
    out_.append(angles ? "   z " : "   ");
    out_.appendFixed(static_cast<double>(heights[i]), kHeightDecimals);
  }
}

void CoordinateWriter::convert(double* xy, std::size_t count) {
  if (coordFormat_ == 0) return;
  if (plane_ != nullptr && !plane_->planeToGeographicAll(xy, count)) {
    for (std::size_t i = 0; i < count; ++i) failed_ += xy[2 * i] > kUnsetLimit ? 1 : 0;
  }
  if (coordFormat_ == 1) return;
  // Multiplications before the division, as printed values are defined by it to the last digit.
  for (double* const end = xy + 2 * count; xy != end; ++xy) {
    *xy = coordFormat_ == 2 ? *xy * 180 / kPi : *xy * 180 * kSecondsPerDegree / kPi;
  }
}

void CoordinateWriter::print(const double* xy, std::string_view between, int planeDecimals) {
  if (coordFormat_ == 1) {
    Encode(xy[1], kLatitudeKind, latitude_, true);
    Encode(xy[0], kLongitudeKind, longitude_, true);
    out_.append(longitude_.toLatin1());
    out_.append(between);
    out_.append(latitude_.toLatin1());
    return;
  }
  const int decimals = coordFormat_ == 0   ? planeDecimals
                       : coordFormat_ == 2 ? kDegreeDecimals
                                           : kSecondDecimals;
  out_.appendFixed(xy[0], decimals);
  out_.append(between);
  out_.appendFixed(xy[1], decimals);
}

}  // namespace kaldex
