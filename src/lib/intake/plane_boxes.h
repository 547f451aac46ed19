#ifndef KALDEX_INTAKE_PLANE_BOXES_H
#define KALDEX_INTAKE_PLANE_BOXES_H

#include "kaldex/model/geometry.h"
#include "kaldex/model/projection.h"

namespace kaldex {

// The plane box whose geographic box (radians) this is: what a layer had before its box was written in
// degrees. The smallest box around the geographic one would be larger, and grow with each round trip.
Box planeBoxOf(const Box& geographic, const SProjection& projection);

// What handlers multiply numbers of a file by, for a code of SExtFormats::Units2Meter.
double unitFactor(int units);

bool isFinite(const Box& box);

}  // namespace kaldex

#endif
