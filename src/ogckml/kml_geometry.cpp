#include "ogckml/kml_geometry.h"

#include <algorithm>
#include <cmath>

#include "ogckml/wgs84.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

namespace {

// Longitudes may run on beyond the date line.
constexpr double kMostLongitude = 360.0;
constexpr double kMostLatitude = 90.0;

}  // namespace

OgKMLAbstractObject::~OgKMLAbstractObject() = default;
OgKMLDetachedPolygon::~OgKMLDetachedPolygon() = default;
OgKMLMultiGeometry::~OgKMLMultiGeometry() = default;

void OgKMLDetachedPolygon::lendOutline() {
  Line* const first = lines.empty() ? nullptr : lines.front().get();
  SetPoints(outline != nullptr ? outline.get() : first);
}

void OgKMLPositions::assign(const double* pairs, int count) {
  const auto size = 2 * static_cast<std::size_t>(count);
  pairs_.reset(new double[size]);
  std::copy(pairs, pairs + size, pairs_.get());
  count_ = count;
}

bool OgKMLPositions::areGeographic() const {
  for (int i = 0; i < count_; ++i) {
    const double longitude = pairs_[2 * static_cast<std::size_t>(i)];
    const double latitude = pairs_[2 * static_cast<std::size_t>(i) + 1];
    // Written so that what is no number fails too.
    if (!(std::fabs(longitude) <= kMostLongitude && std::fabs(latitude) <= kMostLatitude)) return false;
  }
  return true;
}

void OgKMLPositions::close() {
  if (count_ == 0) return;
  const std::size_t last = 2 * static_cast<std::size_t>(count_ - 1);
  if (pairs_[0] == pairs_[last] && pairs_[1] == pairs_[last + 1]) return;
  std::vector<double> closed(pairs_.get(), pairs_.get() + last + 2);
  closed.push_back(pairs_[0]);
  closed.push_back(pairs_[1]);
  assign(closed.data(), count_ + 1);
}

bool OgKMLPositions::toLine(Line& line, const SProjection* projection) const {
  thread_local std::vector<double> xy;
  xy.assign(pairs_.get(), pairs_.get() + 2 * static_cast<std::size_t>(count_));
  const bool placed = kaldex::Wgs84Transfer(projection).toPlane(xy.data(), static_cast<std::size_t>(count_));
  line.assign(xy.data(), count_);
  return placed;
}

bool OgKMLPoint::getTePoint(Point2d& point, const SProjection* projection) const {
  double xy[] = {place_.x, place_.y};
  const bool placed = kaldex::Wgs84Transfer(projection).toPlane(xy, 1);
  point.x = xy[0];
  point.y = xy[1];
  return placed;
}

std::unique_ptr<OgKMLDetachedPolygon> OgKMLPolygon::getSPolygon(const SProjection* projection) const {
  const auto ringPolygon = [&](const OgKMLPositions& ring) {
    auto polygon = std::make_unique<OgKMLDetachedPolygon>();
    polygon->lines.push_back(std::make_unique<Line>());
    if (ring.size() == 0 || !ring.toLine(*polygon->lines.front(), projection)) polygon.reset();
    if (polygon != nullptr) polygon->lendOutline();
    return polygon;
  };
  std::unique_ptr<OgKMLDetachedPolygon> polygon = ringPolygon(outer);
  if (polygon == nullptr) return nullptr;
  for (const OgKMLPositions& ring : inner) {
    polygon->sons.push_back(ringPolygon(ring));
    if (polygon->sons.back() == nullptr) return nullptr;
  }
  return polygon;
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
