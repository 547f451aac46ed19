#ifndef KALDEX_FRAME_COORDINATE_TRANSFER_H
#define KALDEX_FRAME_COORDINATE_TRANSFER_H

#include <cstddef>

#include "kaldex/model/projection.h"

namespace kaldex {

// The way of coordinates from a file, scaled to metres or radians, into the plane of a target. The comparison
// of the two projections is made once, here; they are borrowed and must not change meanwhile. An unknown
// (null) source counts as the target's own projection, and without a target nothing is converted.
class CoordinateTransfer {
 public:
  // `units` as for SExtFormats::Units2Meter: 4 and 5 are angles, 0 to 3 and 6 lengths.
  CoordinateTransfer(SProjection* source, SProjection* target, int units);

  bool isIdentity() const { return first_ == FirstStep::none && !toPlane_; }
  // In place, `count` pairs x, y. False when a pair has no image; it is then unset.
  bool apply(double* xy, std::size_t count) const;
  bool apply(Point& point) const;
  // For coordinates that are geographic already (radians on the source's datum), whatever the units.
  bool geographicToTarget(Point& point) const;

 private:
  enum class FirstStep { none, toGeographic, changeDatum };

  static FirstStep firstStep(int units);

  SProjection* source_;
  SProjection* target_;
  bool differ_;
  bool toPlane_ = false;
  FirstStep first_ = FirstStep::none;
};

}  // namespace kaldex

#endif
