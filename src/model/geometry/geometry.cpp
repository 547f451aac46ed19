#include "kaldex/model/geometry.h"

#include <algorithm>

#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

SObject::~SObject() = default;
Point::~Point() = default;

void Point2d::SetPoint(const Point* point) {
  if (point == nullptr) return;
  x = point->x;
  y = point->y;
}

void Box::extend(double x, double y) {
  x1 = std::min(x1, x);
  y1 = std::min(y1, y);
  x2 = std::max(x2, x);
  y2 = std::max(y2, y);
}

void Box::extend(const Box& other) {
  x1 = std::min(x1, other.x1);
  y1 = std::min(y1, other.y1);
  x2 = std::max(x2, other.x2);
  y2 = std::max(y2, other.y2);
}

}  // namespace kaldex_v1
