#include "ogckml/kml_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "ogckml/wgs84.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

namespace {

// Longitudes may run on beyond the date line.
constexpr double kMostLongitude = 360.0;
constexpr double kMostLatitude = 90.0;

// Written so that what is no number fails too.
bool isOnEarth(double longitude, double latitude) {
  return std::fabs(longitude) <= kMostLongitude && std::fabs(latitude) <= kMostLatitude;
}

constexpr double kUnits = 1e9;  // of a degree

struct Place {
  std::int64_t x, y;
};
struct Step {
  std::int32_t x, y;
};

bool toUnits(double degrees, std::int64_t& units) {
  units = static_cast<std::int64_t>(degrees * kUnits + (degrees < 0.0 ? -0.5 : 0.5));
  return static_cast<double>(units) / kUnits == degrees;
}

// False when the units would not give back what was taken.
bool toUnits(const double* pair, Place& place) {
  return toUnits(pair[0], place.x) && toUnits(pair[1], place.y);
}

void toDegrees(const Place& place, double* pair) {
  pair[0] = static_cast<double>(place.x) / kUnits;
  pair[1] = static_cast<double>(place.y) / kUnits;
}

}  // namespace

OgKMLAbstractObject::~OgKMLAbstractObject() = default;
OgKMLDetachedPolygon::~OgKMLDetachedPolygon() = default;
OgKMLMultiGeometry::~OgKMLMultiGeometry() = default;

void OgKMLDetachedPolygon::lendOutline() {
  Line* const first = lines.empty() ? nullptr : lines.front().get();
  SetPoints(outline != nullptr ? outline.get() : first);
}

void OgKMLPositions::assign(const double* pairs, int count) {
  count_ = count;
  areGeographic_ = true;
  for (int i = 0; i < count && areGeographic_; ++i)
    areGeographic_ = isOnEarth(pairs[2 * i], pairs[2 * i + 1]);
  isPacked_ = areGeographic_ && pack(pairs);
  if (isPacked_ || count == 0) return;
  const std::size_t size = 2 * static_cast<std::size_t>(count) * sizeof(double);
  bytes_.reset(new char[size]);
  std::memcpy(bytes_.get(), pairs, size);
}

// The first place, and the steps to the others.
bool OgKMLPositions::pack(const double* pairs) {
  Place last{};
  if (count_ < 2 || !toUnits(pairs, last)) return false;
  bytes_.reset(new char[sizeof(Place) + static_cast<std::size_t>(count_ - 1) * sizeof(Step)]);
  std::memcpy(bytes_.get(), &last, sizeof last);
  char* at = bytes_.get() + sizeof last;
  for (int i = 1; i < count_; ++i, at += sizeof(Step)) {
    Place place{};
    if (!toUnits(pairs + 2 * i, place)) return false;
    const std::int64_t dx = place.x - last.x;
    const std::int64_t dy = place.y - last.y;
    const Step step{static_cast<std::int32_t>(dx), static_cast<std::int32_t>(dy)};
    if (step.x != dx || step.y != dy) return false;
    std::memcpy(at, &step, sizeof step);
    last = place;
  }
  return true;
}

void OgKMLPositions::copyTo(std::vector<double>& pairs) const {
  pairs.resize(2 * static_cast<std::size_t>(count_));
  if (count_ == 0) return;
  if (!isPacked_) {
    std::memcpy(pairs.data(), bytes_.get(), pairs.size() * sizeof(double));
    return;
  }
  Place place{};
  std::memcpy(&place, bytes_.get(), sizeof place);
  toDegrees(place, pairs.data());
  const char* at = bytes_.get() + sizeof place;
  for (std::size_t i = 2; i < pairs.size(); i += 2, at += sizeof(Step)) {
    Step step{};
    std::memcpy(&step, at, sizeof step);
    place.x += step.x;
    place.y += step.y;
    toDegrees(place, &pairs[i]);
  }
}

void OgKMLPositions::close() {
  if (count_ == 0) return;
  std::vector<double> closed;
  copyTo(closed);
  const double x = closed[0];
  const double y = closed[1];
  if (x == closed[closed.size() - 2] && y == closed.back()) return;
  closed.push_back(x);
  closed.push_back(y);
  assign(closed.data(), count_ + 1);
}

bool OgKMLPositions::toLine(Line& line, const SProjection* projection) const {
  thread_local std::vector<double> xy;
  copyTo(xy);
  const bool placed = kaldex::Wgs84Transfer(projection).toPlane(xy.data(), static_cast<std::size_t>(count_));
  line.assign(xy.data(), count_);
  return placed;
}

bool OgKMLPoint::isGeographic() const {
  return isOnEarth(place_.x, place_.y);
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
