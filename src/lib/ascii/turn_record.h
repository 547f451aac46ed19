#ifndef KALDEX_ASCII_TURN_RECORD_H
#define KALDEX_ASCII_TURN_RECORD_H

#include <array>
#include <string>
#include <string_view>

#include "kaldex/model/geometry.h"

namespace kaldex {

// The ends of a line.
struct LineEnds {
  Point first, last;
};

// The far end of the line that a turn leaves, the node where both lines meet, and the far end of the line
// that it enters. All (0, 0) for lines that don't meet, or meet in more than one way.
std::array<Point, 3> turnPoints(const LineEnds& from, const LineEnds& to);

// The three coordinate texts, latitude and longitude each, of a record of turns; false for any other line.
bool parseTurn(std::string_view line, std::array<std::string, 3>& texts);

}  // namespace kaldex

#endif
