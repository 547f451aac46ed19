#include "kaldex/model/anchor.h"

#include <algorithm>

#include "kaldex/model/line.h"
#include "kaldex/model/polygon.h"
#include "kaldex/model/visual.h"

inline namespace kaldex_v1 {

namespace {

int has(const std::vector<int>& ids, int id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end() ? 1 : 0;
}

/// Takes a piece's identifier in; false when the anchor can't or already does hold it.
bool takeIn(std::vector<int>& ids, int id) {
  // Pieces come in ascending identifier as a rule: then nothing needs to be searched.
  if (!ids.empty() && id <= ids.back() && has(ids, id) != 0) return false;
  ids.push_back(id);
  return true;
}

}  // namespace

void Anchor::SetVisual(const GeneralVisual& visual) {
  visualId = visual.id;
}

int Anchor::InsertPoint(const Point2d& point) {
  if (point.id == 0) return 0;
  if (takeIn(points, point.id)) box.extend(point.x, point.y);
  return 1;
}

int Anchor::InsertLine(const SProjection* projection, const Line& line) {
  if (line.id == 0) return 0;
  if (!takeIn(lines, line.id)) return 1;
  box.extend(line.box);
  perimeter += line.CalcLength(projection);
  return 1;
}

int Anchor::InsertPolygon(const SPolygon& polygon, const SProjection*) {
  if (polygon.id == 0) return 0;
  if (!takeIn(polygons, polygon.id)) return 1;
  box.extend(polygon.box);
  area += polygon.area;
  perimeter += polygon.perimeter;
  return 1;
}

int Anchor::SelectPoint(int id) const {
  return has(points, id);
}
int Anchor::SelectLine(int id) const {
  return has(lines, id);
}
int Anchor::SelectPolygon(int id) const {
  return has(polygons, id);
}

}  // namespace kaldex_v1
