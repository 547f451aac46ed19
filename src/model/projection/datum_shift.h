#ifndef KALDEX_MODEL_PROJECTION_DATUM_SHIFT_H
#define KALDEX_MODEL_PROJECTION_DATUM_SHIFT_H

#include "kaldex/model/datum.h"

namespace kaldex {

struct Geocentric {
  double x, y, z;  ///< Metres.
};

/// A place on the ellipsoid's surface, radians.
Geocentric geocentricOf(double radius, double flattening, double longitude, double latitude);

/// Carries longitude and latitude (radians) on the surface of one datum's ellipsoid to another datum through
/// geocentric coordinates. Untouched when one of them is NONE, when they are equal, and when the values are
/// no angles.
void carryToDatum(const Datum& from, const Datum& to, double& longitude, double& latitude);

}  // namespace kaldex

#endif
