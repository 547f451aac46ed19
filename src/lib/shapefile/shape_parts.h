#ifndef KALDEX_SHAPEFILE_SHAPE_PARTS_H
#define KALDEX_SHAPEFILE_SHAPE_PARTS_H

#include <cstdint>
#include <limits>
#include <new>
#include <vector>

#include "lib/shapefile/coordinate_output.h"
#include "lib/shapefile/shape_sink.h"
#include "lib/shapefile/vector_leases.h"

namespace kaldex {

// Directions of rings, as SPolygon::Orientation counts them.
constexpr short kClockwise = 1;
constexpr short kCounterClockwise = 2;

// Parts and points of one record, gathered in blocks that are reused from record to record.
class ShapeParts {
 public:
  void clear() {
    starts_.clear();
    xy_.clear();
  }
  // Adds a part with these points, from the last to the first if `reversed`.
  void append(const double* xy, int count, bool reversed = false);
  // Makes `count` part starts of zero, without points of their own.
  void setStarts(int count) { starts_.assign(static_cast<std::size_t>(count), 0); }

  int numParts() const { return static_cast<int>(starts_.size()); }
  int numPoints() const { return static_cast<int>(xy_.size() / 2); }
  // The record's content, its points in the coordinates of the export; call it once, when all parts are
  // there.
  ShapeView view(CoordinateOutput& coordinates);

 private:
  std::vector<std::int32_t> starts_;
  std::vector<double> xy_;
};

// Adds a polygon's outer ring clockwise; false if the polygon has no outline. Its points are freed again.
bool appendOuterRing(SPolygon& polygon, ShapeParts& parts);
// Adds the outer ring and, counter-clockwise, the outline of each son of the same vector.
bool appendRings(Vector& vector, SPolygon& polygon, ShapeParts& parts);

}  // namespace kaldex

#endif
