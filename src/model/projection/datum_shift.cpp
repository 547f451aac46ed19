#include "model/projection/datum_shift.h"

#include <cmath>

#include "kaldex/model/angle.h"

namespace kaldex {
namespace {

/// Longitude and latitude of a place near the ellipsoid. Bowring's formula is good to a hundredth of a
/// millimetre at once for places this close; the second round brings it to the last digits. Angles stay sides
/// of a triangle until the end, which spares their sines.
void geographicOf(const Geocentric& place, const Datum& datum, double& longitude, double& latitude) {
  const double a = datum.radius();
  const double b = a * (1.0 - datum.flattening());
  const double e2 = datum.flattening() * (2.0 - datum.flattening());
  const double secondE2 = e2 / (1.0 - e2);
  const double fromAxis = std::sqrt(place.x * place.x + place.y * place.y);
  double up = 0.0, out = 0.0;
  double sine = place.z * a, cosine = fromAxis * b;
  for (int round = 0; round < 2; ++round) {
    const double length = std::sqrt(sine * sine + cosine * cosine);
    sine /= length;
    cosine /= length;
    up = place.z + secondE2 * b * sine * sine * sine;
    out = fromAxis - e2 * a * cosine * cosine * cosine;
    sine = b * up;
    cosine = a * out;
  }
  latitude = std::atan2(up, out);
  const double around = std::atan2(place.y, place.x);
  // Longitudes counted on beyond 180 degrees stay in their turn.
  longitude = around + 2.0 * kPi * std::round((longitude - around) / (2.0 * kPi));
}

}  // namespace

Geocentric geocentricOf(double radius, double flattening, double longitude, double latitude) {
  const double e2 = flattening * (2.0 - flattening);
  const double sine = std::sin(latitude);
  const double normal = radius / std::sqrt(1.0 - e2 * sine * sine);
  const double fromAxis = normal * std::cos(latitude);
  return {fromAxis * std::cos(longitude), fromAxis * std::sin(longitude), normal * (1.0 - e2) * sine};
}

void carryToDatum(const Datum& from, const Datum& to, double& longitude, double& latitude) {
  if (from.isNone() || to.isNone() || from == to) return;
  if (!(std::fabs(latitude) < kPi / 2.0 + 1e-9) || !(std::fabs(longitude) < 4.0 * kPi)) return;
  Geocentric place = geocentricOf(from.radius(), from.flattening(), longitude, latitude);
  place.x += static_cast<double>(from.dx()) - to.dx();
  place.y += static_cast<double>(from.dy()) - to.dy();
  place.z += static_cast<double>(from.dz()) - to.dz();
  geographicOf(place, to, longitude, latitude);
}

}  // namespace kaldex
