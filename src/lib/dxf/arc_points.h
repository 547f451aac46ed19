#ifndef KALDEX_DXF_ARC_POINTS_H
#define KALDEX_DXF_ARC_POINTS_H

#include <vector>

namespace kaldex {

struct ArcShape {
  double x = 0.0;
  double y = 0.0;
  double radius = 0.0;
  double startAngle = 0.0;  // degrees, as the next
  double endAngle = 0.0;
};

// Append the points of an arc, counter-clockwise from its start, in steps of a degree and with the exact end.
// False, and nothing, for angles that no drawing means.
bool appendArc(const ArcShape& arc, std::vector<double>& xy);
// The 361 points of a circle.
void appendCircle(const ArcShape& circle, std::vector<double>& xy);

}  // namespace kaldex

#endif
