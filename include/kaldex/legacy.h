#ifndef KALDEX_LEGACY_H
#define KALDEX_LEGACY_H

#include "kaldex/extforma.h"

inline namespace kaldex_v1 {

/// Append a label point for each polygon of the older system's vector files name.li1, .li2, .po1 and .po2 to
/// the list: a place in the polygon and outside its children at ((x + xoffset) * scale, (y + yoffset) *
/// scale), with the polygon's class as `Iclass` and a serial number as `Nodes`. A polygon without an inside
/// at half its height has none. `name` in the bytes of the file system. 0 when the files can't be opened,
/// without a message; else 1, also when a record is not what it should be, which ends the reading.
KALDEX_API int carrega_centroides(const char* name, SExtLabelPointList& list, double scale, double xoffset,
                                  double yoffset);

}  // namespace kaldex_v1

#endif
