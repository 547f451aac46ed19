#ifndef KALDEX_BASE_DISK_ROOM_H
#define KALDEX_BASE_DISK_ROOM_H

#include <QString>

#include "base/api.h"

namespace kaldex {

// Whether the file system of an existing folder has no room left: for a caller whose writing failed there and
// who tells people why. Ask while what was written is still there.
KALDEX_BASE_API bool isDiskFull(const QString& folder);

}  // namespace kaldex

#endif
