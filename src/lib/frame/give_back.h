#ifndef KALDEX_FRAME_GIVE_BACK_H
#define KALDEX_FRAME_GIVE_BACK_H

#include "kaldex/model/vector.h"

namespace kaldex {

// Give a line or polygon back to the vector that handed it out or took it in: what SExtFormats::giveBack
// does, for helpers of handlers that are none themselves.
void giveBack(Vector& vector, Line* line);
void giveBack(Vector& vector, SPolygon* polygon);

}  // namespace kaldex

#endif
