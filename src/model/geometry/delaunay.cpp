#include "model/geometry/delaunay.h"

#include <geos_c.h>

#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace kaldex {

namespace {

/// A GEOS context and what is made in it.
class Geos {
 public:
  Geos() : context_(GEOS_init_r()) {}
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;
  ~Geos() {
    if (context_ != nullptr) GEOS_finish_r(context_);
  }
  GEOSContextHandle_t context() const { return context_; }

  struct Destroy {
    GEOSContextHandle_t context;
    void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
  };
  using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;
  Geometry own(GEOSGeometry* geometry) const { return {geometry, Destroy{context_}}; }

  /// A line through all places: only its vertices matter.
  Geometry lineThrough(const std::vector<double>& xy) const {
    const auto count = static_cast<unsigned>(xy.size() / 2);
    GEOSCoordSequence* const places = GEOSCoordSeq_copyFromBuffer_r(context_, xy.data(), count, 0, 0);
    return own(places != nullptr ? GEOSGeom_createLineString_r(context_, places) : nullptr);
  }
  /// The first three corners of a triangle; false when it isn't one.
  bool corners(const GEOSGeometry* triangle, double (&xy)[8]) const {
    const GEOSGeometry* const ring = GEOSGetExteriorRing_r(context_, triangle);
    const GEOSCoordSequence* const sequence =
        ring != nullptr ? GEOSGeom_getCoordSeq_r(context_, ring) : nullptr;
    unsigned size = 0;
    return sequence != nullptr && GEOSCoordSeq_getSize_r(context_, sequence, &size) != 0 && size == 4 &&
           GEOSCoordSeq_copyToBuffer_r(context_, sequence, xy, 0, 0) != 0;
  }

 private:
  GEOSContextHandle_t context_;
};

// Twice the area, positive when counter-clockwise.
double turn(const double (&xy)[8]) {
  return (xy[2] - xy[0]) * (xy[5] - xy[1]) - (xy[4] - xy[0]) * (xy[3] - xy[1]);
}

}  // namespace

std::size_t PlaceIndex::Hash::operator()(const Place& place) const {
  std::uint64_t x = 0, y = 0;
  std::memcpy(&x, &place.x, sizeof x);
  std::memcpy(&y, &place.y, sizeof y);
  std::uint64_t mixed = x * 0x9E3779B97F4A7C15u ^ (y + (x >> 29)) * 0xC2B2AE3D27D4EB4Fu;
  mixed ^= mixed >> 32;
  return static_cast<std::size_t>(mixed * 0x9E3779B97F4A7C15u ^ mixed >> 29);
}

int PlaceIndex::add(double x, double y) {
  // Both zeros are one place, but differ in their bits.
  const auto [found, isNew] = positions_.try_emplace({x + 0.0, y + 0.0}, static_cast<int>(xy_.size() / 2));
  if (isNew) {
    xy_.push_back(x);
    xy_.push_back(y);
  }
  return found->second;
}

int PlaceIndex::find(double x, double y) const {
  const auto found = positions_.find({x + 0.0, y + 0.0});
  return found == positions_.end() ? -1 : found->second;
}

std::vector<IndexTriangle> delaunayTriangles(const PlaceIndex& places) {
  std::vector<IndexTriangle> triangles;
  const Geos geos;
  if (places.xy().size() < 6 || places.xy().size() / 2 > std::numeric_limits<int>::max()) return triangles;
  const Geos::Geometry line = geos.lineThrough(places.xy());
  if (line == nullptr) return triangles;
  const Geos::Geometry all = geos.own(GEOSDelaunayTriangulation_r(geos.context(), line.get(), 0.0, 0));
  const int count = all != nullptr ? GEOSGetNumGeometries_r(geos.context(), all.get()) : 0;
  triangles.reserve(static_cast<std::size_t>(count > 0 ? count : 0));
  for (int i = 0; i < count; ++i) {
    double xy[8];
    if (!geos.corners(GEOSGetGeometryN_r(geos.context(), all.get(), i), xy)) continue;
    IndexTriangle triangle{places.find(xy[0], xy[1]), places.find(xy[2], xy[3]), places.find(xy[4], xy[5])};
    if (triangle[0] < 0 || triangle[1] < 0 || triangle[2] < 0) continue;
    if (turn(xy) < 0) std::swap(triangle[1], triangle[2]);
    triangles.push_back(triangle);
  }
  return triangles;
}

}  // namespace kaldex
