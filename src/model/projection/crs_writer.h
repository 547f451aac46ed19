#ifndef KALDEX_MODEL_PROJECTION_CRS_WRITER_H
#define KALDEX_MODEL_PROJECTION_CRS_WRITER_H

#include "kaldex/model/projection.h"
#include "model/projection/proj_handles.h"

namespace kaldex {

/// The reference system of a projection without its datum shift; null when there is none.
PjPtr makePlainCrs(PJ_CONTEXT* context, const ProjectionParameters& parameters);

/// `plain` with the projection's shift stated, when a reader of the text would find another one for it; else
/// `plain` itself. A PROJ string doesn't name its datum, so nothing can be found by it.
PjPtr stateShift(PJ_CONTEXT* context, PjPtr plain, const ProjectionParameters& parameters, bool namesDatum);

}  // namespace kaldex

#endif
