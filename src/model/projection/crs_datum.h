#ifndef KALDEX_MODEL_PROJECTION_CRS_DATUM_H
#define KALDEX_MODEL_PROJECTION_CRS_DATUM_H

#include <array>
#include <optional>

#include "kaldex/model/datum.h"
#include "model/projection/proj_handles.h"

namespace kaldex {

/// Metres to WGS84.
using DatumShift = std::array<float, 3>;

/// The shift that a bound system states; nothing when it goes by grids.
std::optional<DatumShift> statedShift(PJ_CONTEXT* context, const PJ* bound);

/// The datum of a geographic system. Without a stated shift it gets that of the known datums, else what
/// PROJ's database has for the system as a whole, so that all projections on one datum agree, else zeros.
Datum readDatum(PJ_CONTEXT* context, const PJ* base, const std::optional<DatumShift>& stated);

}  // namespace kaldex

#endif
