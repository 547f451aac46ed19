#include "model/geometry/scan_line.h"

#include <algorithm>
#include <cmath>

namespace kaldex {

namespace {

bool onSegment(const double* a, const double* b, double x, double y, double tolerance) {
  if (x < std::min(a[0], b[0]) - tolerance || x > std::max(a[0], b[0]) + tolerance) return false;
  if (y < std::min(a[1], b[1]) - tolerance || y > std::max(a[1], b[1]) + tolerance) return false;
  const double dx = b[0] - a[0], dy = b[1] - a[1];
  const double cross = dx * (y - a[1]) - dy * (x - a[0]);
  if (tolerance == 0) return cross == 0;
  const double length = std::hypot(dx, dy);
  return length == 0 || std::fabs(cross) <= tolerance * length;
}

}  // namespace

short placeInRing(const double* xy, std::size_t count, double x, double y, double tolerance) {
  bool inside = false;
  for (std::size_t i = 0, j = count - 1; i < count; j = i++) {
    const double* a = xy + 2 * j;
    const double* b = xy + 2 * i;
    if (onSegment(a, b, x, y, tolerance)) return 1;
    if ((a[1] > y) != (b[1] > y) && x < (b[0] - a[0]) * (y - a[1]) / (b[1] - a[1]) + a[0]) inside = !inside;
  }
  return inside ? 2 : 0;
}

void InteriorPointFinder::addRing(const double* xy, std::size_t count) {
  rings_.push_back({xy, count});
}

bool InteriorPointFinder::tryHeight(double y, Point& point) {
  crossings_.clear();
  for (const RingRef& ring : rings_) {
    for (std::size_t i = 0, j = ring.count - 1; i < ring.count; j = i++) {
      const double* a = ring.xy + 2 * j;
      const double* b = ring.xy + 2 * i;
      // Half-open, so that a vertex on the line counts once.
      if ((a[1] > y) != (b[1] > y)) crossings_.push_back((b[0] - a[0]) * (y - a[1]) / (b[1] - a[1]) + a[0]);
    }
  }
  std::sort(crossings_.begin(), crossings_.end());
  double widest = 0.0;
  for (std::size_t i = 1; i < crossings_.size(); i += 2) {
    const double width = crossings_[i] - crossings_[i - 1];
    if (width <= widest) continue;
    widest = width;
    point = Point(crossings_[i - 1] + width / 2, y);
  }
  return widest > 0.0;
}

bool InteriorPointFinder::find(Point& point) {
  if (rings_.empty() || rings_.front().count < 3) return false;
  double low = rings_.front().xy[1], high = low;
  for (std::size_t i = 1; i < rings_.front().count; ++i) {
    low = std::min(low, rings_.front().xy[2 * i + 1]);
    high = std::max(high, rings_.front().xy[2 * i + 1]);
  }
  // Halves, then quarters, eighths...: a line through a vertex or a son's full width is not taken twice.
  for (int parts = 2; parts <= 64; parts *= 2) {
    for (int i = 1; i < parts; i += 2) {
      if (tryHeight(low + (high - low) * i / parts, point)) return true;
    }
  }
  return false;
}

}  // namespace kaldex
