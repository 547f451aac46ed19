#ifndef KALDEX_MODEL_PROJECTION_EPSG_REGISTRY_H
#define KALDEX_MODEL_PROJECTION_EPSG_REGISTRY_H

#include <vector>

#include "model/projection/proj_handles.h"

namespace kaldex {

/// The EPSG code that an object carries, or 0.
int epsgCodeOf(const PJ* object);

/// The reference system of that EPSG code, or null.
PjPtr registeredCrs(PJ_CONTEXT* context, int code);

/// True when both describe the same system, the order of axes aside.
bool isSameCrs(PJ_CONTEXT* context, const PJ* a, const PJ* b);

/// What the registry holds that may be `made`, the likeliest first, without what is withdrawn.
std::vector<PjPtr> likelyRegistered(PJ_CONTEXT* context, const PJ* made);

/// The registry's entry for `crs`: that of its code if it is unchanged, else the likeliest same one; null if
/// there is none.
PjPtr registeredFor(PJ_CONTEXT* context, const PJ* crs);

}  // namespace kaldex

#endif
