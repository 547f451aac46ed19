#ifndef KALDEX_FRAME_SHIELD_H
#define KALDEX_FRAME_SHIELD_H

#include <functional>

namespace kaldex {

// The public edge of an operation: runs what may throw, and tells the user of the failure; false then. That
// the user has cancelled is no news. Nothing leaves it.
bool shielded(const std::function<void()>& action);

}  // namespace kaldex

#endif
