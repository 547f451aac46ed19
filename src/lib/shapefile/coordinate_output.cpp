#include "lib/shapefile/coordinate_output.h"

#include "base/tracer.h"
#include "kaldex/model/angle.h"
#include "kaldex/shapefile.h"

namespace kaldex {

namespace {

// 1.0 for degrees, 3600.0 for seconds, 0.0 where coordinates stay in the plane.
double unitsInDegree(const SProjection* projection, short mode) {
  if (projection == nullptr || mode == 0 || mode == 1) return 0.0;
  return mode == 2 ? 1.0 : 3600.0;
}

}  // namespace

CoordinateOutput::CoordinateOutput(const SProjection* projection, short mode)
    : projection_(projection), mode_(mode), factor_(unitsInDegree(projection, mode)) {}

void CoordinateOutput::apply(double* xy, int count) {
  if (!changes() || count <= 0) return;
  if (!projection_->planeToGeographicAll(xy, static_cast<std::size_t>(count))) failed_ = true;
  for (double* at = xy; at != xy + 2 * static_cast<std::size_t>(count); ++at)
    *at = *at * 180.0 * factor_ / kPi;
}

void CoordinateOutput::apply(double& x, double& y) {
  double xy[] = {x, y};
  apply(xy, 1);
  x = xy[0];
  y = xy[1];
}

Box CoordinateOutput::apply(const Box& box) {
  double corners[] = {box.x1, box.y1, box.x2, box.y2};
  apply(corners, 2);
  return {corners[0], corners[1], corners[2], corners[3]};
}

const double* CoordinateOutput::applied(const double* xy, int count) {
  if (!changes() || count <= 0) return xy;
  copy_.assign(xy, xy + 2 * static_cast<std::size_t>(count));
  apply(copy_.data(), count);
  return copy_.data();
}

}  // namespace kaldex

inline namespace kaldex_v1 {

void ExpCoordShp(double* x, double* y, QString& sx, QString& sy, const SProjection* projection,
                 short coordMode) {
  const Tracer tracer(__FILE__, __LINE__, "ExpCoordShp");
  if (coordMode == 0 || projection == nullptr || x == nullptr || y == nullptr) return;
  if (coordMode != 1) return kaldex::CoordinateOutput(projection, coordMode).apply(*x, *y);
  Point place(*x, *y);
  projection->planeToGeographic(place);
  sx.clear();
  sy.clear();
  Encode(place.x, kLongitudeKind, sx);
  Encode(place.y, kLatitudeKind, sy);
}

}  // namespace kaldex_v1
