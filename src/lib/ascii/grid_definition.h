#ifndef KALDEX_ASCII_GRID_DEFINITION_H
#define KALDEX_ASCII_GRID_DEFINITION_H

#include <string>
#include <string_view>

namespace kaldex {

// The geometry of a grid as its header tells it. The corner is two numbers, or a geographic text that the
// readers of such records understand.
struct GridDefinition {
  short columns = 0;
  short lines = 0;
  bool geographic = false;
  std::string corner;  // of a geographic one
  double x = 0.0;      // of a plane one, as the next
  double y = 0.0;
  float resX = 0.0f;
  float resY = 0.0f;
  double noData = 0.0;
};

// Reads a "GRIDDEF" line; false when it lacks something.
bool parseGridDefinition(std::string_view line, GridDefinition& grid);

}  // namespace kaldex

#endif
