#ifndef KALDEX_FRAME_CELL_TEXT_H
#define KALDEX_FRAME_CELL_TEXT_H

#include <string>

#include "kaldex/model/field.h"

namespace kaldex {

// Bring a value into the width of its column; true when that cost something of it. Of a number that is too
// long the high digits go, since numbers of fixed width have always been read from their right end; its sign
// and fraction stay. Of a date or text the end goes.
bool fitToColumn(const SField& column, std::string& value);

}  // namespace kaldex

#endif
