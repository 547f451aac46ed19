#include "lib/shapefile/shape_parts.h"

namespace kaldex {

namespace {

bool appendRing(SPolygon& polygon, short direction, ShapeParts& parts) {
  const Line* const outline = polygon.CreatePoints(nullptr);
  if (outline == nullptr || outline->Size() == 0) return false;
  parts.append(outline->coordinates(), outline->Size(), polygon.Orientation() != direction);
  polygon.DeletePoints();
  return true;
}

}  // namespace

void ShapeParts::append(const double* xy, int count, bool reversed) {
  // Counts of a record are 32 bits wide; a shape beyond them is as impossible as one beyond memory.
  if (count > std::numeric_limits<std::int32_t>::max() - numPoints()) throw std::bad_alloc();
  starts_.push_back(numPoints());
  const double* const end = xy + 2 * static_cast<std::size_t>(count);
  if (!reversed) {
    xy_.insert(xy_.end(), xy, end);
    return;
  }
  std::size_t at = xy_.size();
  xy_.resize(at + 2 * static_cast<std::size_t>(count));
  for (const double* from = end; from != xy; at += 2) {
    from -= 2;
    xy_[at] = from[0];
    xy_[at + 1] = from[1];
  }
}

ShapeView ShapeParts::view(CoordinateOutput& coordinates) {
  coordinates.apply(xy_.data(), numPoints());
  return {starts_.data(), numParts(), xy_.data(), numPoints()};
}

bool appendOuterRing(SPolygon& polygon, ShapeParts& parts) {
  return appendRing(polygon, kClockwise, parts);
}

bool appendRings(Vector& vector, SPolygon& polygon, ShapeParts& parts) {
  if (!appendOuterRing(polygon, parts)) return false;
  const int sons = polygon.NumSons();
  for (int i = 0; i < sons; ++i) {
    // A son that is gone from the vector, or has no outline, has nothing to cut out.
    const PolygonLease son(i == 0 ? polygon.FirstSon() : polygon.NextSon(), PolygonReturn(vector));
    if (son != nullptr) appendRing(*son, kCounterClockwise, parts);
  }
  return true;
}

}  // namespace kaldex
