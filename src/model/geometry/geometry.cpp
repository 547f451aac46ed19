#include "kaldex/model/geometry.h"

#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

SObject::~SObject() = default;
Point::~Point() = default;

void Point2d::SetPoint(const Point* point) {
  if (point == nullptr) return;
  x = point->x;
  y = point->y;
}

}  // namespace kaldex_v1
