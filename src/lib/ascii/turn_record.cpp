#include "lib/ascii/turn_record.h"

#include <algorithm>

namespace kaldex {

namespace {

constexpr int kPartsOfPoint = 8;  // letter, degrees, minutes and seconds, twice
constexpr int kPartsOfTurn = 3 * kPartsOfPoint;

}  // namespace

std::array<Point, 3> turnPoints(const LineEnds& from, const LineEnds& to) {
  const int meeting = (from.first == to.first ? 1 : 0) + (from.first == to.last ? 2 : 0) +
                      (from.last == to.first ? 4 : 0) + (from.last == to.last ? 8 : 0);
  switch (meeting) {
    case 1:
      return {from.last, from.first, to.last};
    case 2:
      return {from.last, to.last, to.first};
    case 4:
      return {from.first, from.last, to.last};
    case 8:
      return {from.first, from.last, to.first};
    default:
      return {};
  }
}

bool parseTurn(std::string_view line, std::array<std::string, 3>& texts) {
  // Records are written with a blank behind each value, the last one too.
  if (!line.empty() && line.back() == ' ') line.remove_suffix(1);
  if (std::count(line.begin(), line.end(), ' ') != kPartsOfTurn - 1) return false;
  for (std::string& text : texts) {
    std::size_t end = 0;
    for (int part = 0; part < kPartsOfPoint && end != std::string_view::npos; ++part)
      end = line.find(' ', part == 0 ? 0 : end + 1);
    text = line.substr(0, end);
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  }
  return true;
}

}  // namespace kaldex
