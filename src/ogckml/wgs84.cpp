#include "ogckml/wgs84.h"

#include <memory>

#include "kaldex/model/angle.h"

namespace kaldex {

namespace {

// Setting one up costs more than converting a line, and a projection is not for two threads.
SProjection& wgs84() {
  thread_local const std::unique_ptr<SProjection> geographic = [] {
    ProjectionParameters parameters;
    parameters.type = ProjectionType::latLong;
    parameters.name = projectionTypeName(ProjectionType::latLong);
    parameters.datum = knownDatum(QStringLiteral("WGS84"));
    return projectionFromParameters(parameters);
  }();
  return *geographic;
}

}  // namespace

Wgs84Transfer::Wgs84Transfer(const SProjection* target)
    : target_(target), isIdentity_(target == nullptr || target->type() == ProjectionType::none) {
  // Degrees that only went to radians and back would lose their last digit.
  if (!isIdentity_ && target->isLatLong()) isIdentity_ = target->datum() == wgs84().datum();
}

bool Wgs84Transfer::toPlane(double* pairs, std::size_t count) const {
  if (isIdentity_) return true;
  const DestinationScope scope(&wgs84(), target_);
  for (std::size_t i = 0; i < count; ++i) {
    double* const pair = pairs + 2 * i;
    pair[0] = Math_Deg_To_Rad(pair[0]);
    pair[1] = Math_Deg_To_Rad(pair[1]);
    wgs84().ChangeLL(pair[0], pair[1]);
  }
  return target_->geographicToPlaneAll(pairs, count);
}

}  // namespace kaldex
