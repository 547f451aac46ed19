#include "lib/dxf/arc_points.h"

#include <cmath>

namespace kaldex {

namespace {

// Programs elsewhere compute arcs with this value, and lines must meet at their ends.
constexpr double kRadians = 0.017453293;
constexpr double kTurn = 360.0;
constexpr double kMostTurns = 10.0;
constexpr double kLargestAngle = 1e6;

void append(const ArcShape& arc, double angle, std::vector<double>& xy) {
  const double radians = (angle > kTurn ? angle - kTurn : angle) * kRadians;
  xy.push_back(arc.x + arc.radius * std::cos(radians));
  xy.push_back(arc.y + arc.radius * std::sin(radians));
}

}  // namespace

bool appendArc(const ArcShape& arc, std::vector<double>& xy) {
  double end = arc.endAngle;
  if (end < arc.startAngle) end += kTurn;
  const bool sane = std::fabs(arc.startAngle) <= kLargestAngle && std::fabs(end) <= kLargestAngle &&
                    end - arc.startAngle <= kMostTurns * kTurn;
  if (!sane) return false;
  for (double angle = arc.startAngle; angle < end; angle += 1.0) append(arc, angle, xy);
  append(arc, end, xy);
  return true;
}

void appendCircle(const ArcShape& circle, std::vector<double>& xy) {
  constexpr int degrees = 360;
  for (int angle = 0; angle <= degrees; ++angle) append(circle, angle, xy);
}

}  // namespace kaldex
