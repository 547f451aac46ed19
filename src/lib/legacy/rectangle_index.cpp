#include "lib/legacy/rectangle_index.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

namespace kaldex {

namespace {

constexpr double kSteps = 64000.0;
constexpr double kNowhere = 1e14;

using Values = std::vector<std::uint16_t>;

// An axis of the range, and where a coordinate of it stands in 16 bits.
struct Axis {
  double scale = 1.0;
  double offset = 0.0;

  void set(double lowest, double highest) {
    scale = highest > lowest ? kSteps / (highest - lowest) : 1.0;
    offset = -scale * lowest;
  }
  std::uint16_t stored(double value) const {
    constexpr double most = std::numeric_limits<std::uint16_t>::max();
    const double place = value * scale + offset;
    return place > 0.0 ? static_cast<std::uint16_t>(std::min(place, most)) : std::uint16_t(0);
  }
  double value(std::uint16_t place) const { return (place - offset) / scale; }
};

struct Index {
  Axis x, y;
  Values points, x1, x2, y1, y2;
};

Index index;

}  // namespace

int RET_cria(PolygonFiles& polygons, LineFiles& lines, double xMin, double xMax, double yMin, double yMax) {
  RET_destroi();
  const auto count = static_cast<std::size_t>(std::max(polygons.count, 0));
  try {
    for (Values* values : {&index.points, &index.x1, &index.x2, &index.y1, &index.y2})
      values->assign(count, 0);
  } catch (const std::bad_alloc&) {
    RET_destroi();
    return 0;
  }
  index.x.set(xMin, xMax);
  index.y.set(yMin, yMax);
  PolygonRecord record;
  LineRecord line;
  std::vector<std::int16_t> ids;
  for (std::size_t i = 0; i < count; ++i) {
    if (poli_le(polygons, record, static_cast<int>(i) + 1, ids) == 0) continue;
    long long points = 0;
    if (aloca_pt(lines, line, ids.data(), static_cast<int>(ids.size()), points) != 0) {
      constexpr long long most = std::numeric_limits<std::uint16_t>::max();
      index.points[i] = static_cast<std::uint16_t>(std::min(points, most));
    }
    index.x1[i] = index.x.stored(static_cast<double>(record.xMin));
    index.x2[i] = index.x.stored(static_cast<double>(record.xMax));
    index.y1[i] = index.y.stored(static_cast<double>(record.yMin));
    index.y2[i] = index.y.stored(static_cast<double>(record.yMax));
  }
  return 1;
}

int RET_get(int id, int& points, double& x1, double& x2, double& y1, double& y2) {
  points = 0;
  x1 = y1 = kNowhere;
  x2 = y2 = -kNowhere;
  if (id < 1 || static_cast<std::size_t>(id) > index.points.size()) return 0;
  const auto i = static_cast<std::size_t>(id) - 1;
  points = index.points[i];
  x1 = index.x.value(index.x1[i]);
  x2 = index.x.value(index.x2[i]);
  y1 = index.y.value(index.y1[i]);
  y2 = index.y.value(index.y2[i]);
  return 1;
}

void RET_destroi() {
  index = Index();
}

}  // namespace kaldex
