#ifndef KALDEX_MODEL_SCAN_LINE_H
#define KALDEX_MODEL_SCAN_LINE_H

#include <cstddef>
#include <vector>

#include "kaldex/model/geometry.h"

namespace kaldex {

/// Where a point lies to a closed ring of x, y pairs (first vertex equal to the last, or closed in thought):
/// 0 outside, 1 within `tolerance` of the border, 2 inside. Crossing-number test (Shimrat 1962) after the
/// border test.
short placeInRing(const double* xy, std::size_t count, double x, double y, double tolerance);

/// Collects the crossings of rings with horizontal lines, to find a point inside an area with holes: the
/// middle of the widest stretch that lies inside on a line at half the outer ring's height, or, where that
/// line gives none (a degenerate or very flat ring), on lines at other heights.
class InteriorPointFinder {
 public:
  /// The first ring is the outer one.
  void addRing(const double* xy, std::size_t count);
  /// False when no line meets the area.
  bool find(Point& point);

 private:
  bool tryHeight(double y, Point& point);

  struct RingRef {
    const double* xy;
    std::size_t count;
  };
  std::vector<RingRef> rings_;
  std::vector<double> crossings_;
};

}  // namespace kaldex

#endif
