#include "lib/ascii/grid_definition.h"

#include "base/number_text.h"
#include "base/strings.h"

namespace kaldex {

namespace {

struct AngleFields {
  std::string_view hemisphere;
  short degrees = 0;
  short minutes = 0;
  float seconds = 0.0f;

  std::string text() const {
    std::string result(hemisphere);
    for (const short value : {degrees, minutes}) {
      result += ' ';
      appendInt(result, value);
    }
    return result + ' ' + fixedText(static_cast<double>(seconds), 2, 10);
  }
};

bool parsePlane(TextScan scan, GridDefinition& grid) {
  return scan.readAll(grid.x, grid.y, grid.resX, grid.resY, grid.noData) == 5;
}

bool parseGeographic(TextScan scan, GridDefinition& grid) {
  AngleFields first;
  AngleFields second;
  const int count =
      scan.readAll(first.hemisphere, first.degrees, first.minutes, first.seconds, second.hemisphere,
                   second.degrees, second.minutes, second.seconds, grid.resX, grid.resY, grid.noData);
  grid.corner = first.text() + "   " + second.text();
  return count == 11;
}

}  // namespace

bool parseGridDefinition(std::string_view line, GridDefinition& grid) {
  TextScan scan(line);
  std::string_view keyword;
  std::string_view fourth;
  if (scan.readAll(keyword, grid.columns, grid.lines) < 3) return false;
  const TextScan corner = scan;
  if (!scan.read(fourth)) return false;
  grid.geographic = StrIsAlpha(std::string(fourth).c_str());
  return grid.geographic ? parseGeographic(corner, grid) : parsePlane(corner, grid);
}

}  // namespace kaldex
