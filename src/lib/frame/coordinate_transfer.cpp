#include "lib/frame/coordinate_transfer.h"

namespace kaldex {

namespace {

bool isAngle(int units) {
  return units == 4 || units == 5;
}

}  // namespace

CoordinateTransfer::CoordinateTransfer(SProjection* source, SProjection* target, int units)
    : source_(source), target_(target) {
  differ_ = source != nullptr && target != nullptr && *target != *source;
  if (differ_) first_ = firstStep(units);
  toPlane_ = differ_ || (target != nullptr && isAngle(units));
}

CoordinateTransfer::FirstStep CoordinateTransfer::firstStep(int units) {
  if (isAngle(units)) return FirstStep::changeDatum;
  return (units >= 0 && units <= 3) || units == 6 ? FirstStep::toGeographic : FirstStep::none;
}

bool CoordinateTransfer::apply(double* xy, std::size_t count) const {
  bool good = true;
  if (first_ != FirstStep::none) {
    // The scope makes plane coordinates change their datum on the way too; without it they would land some
    // tens of metres off wherever the datums differ.
    const DestinationScope scope(source_, target_);
    if (first_ == FirstStep::toGeographic) {
      good = source_->planeToGeographicAll(xy, count);
    } else {
      for (std::size_t i = 0; i < count; ++i) source_->ChangeLL(xy[2 * i], xy[2 * i + 1]);
    }
  }
  if (toPlane_) good = target_->geographicToPlaneAll(xy, count) && good;
  return good;
}

bool CoordinateTransfer::apply(Point& point) const {
  double xy[2] = {point.x, point.y};
  const bool good = apply(xy, 1);
  point.x = xy[0];
  point.y = xy[1];
  return good;
}

bool CoordinateTransfer::geographicToTarget(Point& point) const {
  if (differ_) {
    const DestinationScope scope(source_, target_);
    source_->ChangeLL(point.x, point.y);
  }
  return target_ == nullptr || target_->geographicToPlane(point);
}

}  // namespace kaldex
