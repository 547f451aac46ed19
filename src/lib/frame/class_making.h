#ifndef KALDEX_FRAME_CLASS_MAKING_H
#define KALDEX_FRAME_CLASS_MAKING_H

#include "kaldex/model/catalog.h"

namespace kaldex {

// Adds a class to the end of the category's list, which the caller stores. Null, and the user has been told,
// when the category has as many as there are identifiers for.
GeoClass* makeClass(Category& category, const QString& name);

}  // namespace kaldex

#endif
