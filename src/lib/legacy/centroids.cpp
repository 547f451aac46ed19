#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "base/tracer.h"
#include "kaldex/legacy.h"
#include "lib/legacy/polygon_ring.h"
#include "lib/legacy/rectangle_index.h"

inline namespace kaldex_v1 {

namespace {

struct Rectangle {
  double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
};

/// Finds a place in each polygon of the older system's files.
class Centroids {
 public:
  ~Centroids() { kaldex::RET_destroi(); }

  bool open(const char* name);
  void collect(SExtLabelPointList& list, double scale, double xoffset, double yoffset);

 private:
  void indexRectangles();
  bool findPlace(const kaldex::PolygonRecord& record, const std::vector<std::int16_t>& lines,
                 const std::vector<std::int16_t>& children, Point& place);
  void leaveHole(int child, Point& place, double lastCrossing);
  bool cut(const std::vector<std::int16_t>& lines, double y);

  kaldex::LineFiles lines_;
  kaldex::PolygonFiles polygons_;
  kaldex::LineRecord line_;
  std::vector<float> x_, y_;
  std::vector<double> crossings_;
};

bool Centroids::open(const char* name) {
  return kaldex::linha_abre_arq(lines_, name) == kaldex::openDone &&
         kaldex::poli_abre_arq(polygons_, name) == kaldex::openDone;
}

void Centroids::collect(SExtLabelPointList& list, double scale, double xoffset, double yoffset) {
  constexpr char last = '1';
  if (polygons_.count <= 0) return;
  indexRectangles();
  kaldex::PolygonRecord record;
  std::vector<std::int16_t> lines, children;
  // Each polygon is a child of those around it. Lists that hold more have been damaged, and could keep us at
  // work for days.
  constexpr long long deepestNesting = 16;
  const long long mostChildren = deepestNesting * polygons_.count;
  long long childrenRead = 0;
  short serial = 0;
  for (int id = 1; id <= polygons_.count; ++id) {
    if (kaldex::poli_le(polygons_, record, id, lines) == 0 || record.flag == last) return;
    if (kaldex::poli_le_filhos(polygons_, record, children) == 0) return;
    childrenRead += static_cast<long long>(children.size());
    if (childrenRead > mostChildren) return;
    Point place;
    if (!findPlace(record, lines, children, place)) continue;
    auto labelPoint = std::make_unique<SExtLabelPoint>();
    labelPoint->Coordinate(new Point((place.x + xoffset) * scale, (place.y + yoffset) * scale));
    labelPoint->Iclass = record.geoClass;
    labelPoint->Nodes = serial++;
    list.InsertLabel(labelPoint.release());
  }
}

void Centroids::indexRectangles() {
  constexpr float most = std::numeric_limits<float>::max();
  float xMin = most, xMax = -most, yMin = most, yMax = -most;
  kaldex::PolygonRecord record;
  std::vector<std::int16_t> lines;
  for (int id = 1; id <= polygons_.count; ++id) {
    if (kaldex::poli_le(polygons_, record, id, lines) == 0) continue;
    xMin = std::min(xMin, record.xMin);
    xMax = std::max(xMax, record.xMax);
    yMin = std::min(yMin, record.yMin);
    yMax = std::max(yMax, record.yMax);
  }
  kaldex::RET_cria(polygons_, lines_, static_cast<double>(xMin), static_cast<double>(xMax),
                   static_cast<double>(yMin), static_cast<double>(yMax));
}

// The middle of the last stretch of the polygon at half its height, to the right of what is cut out of it.
bool Centroids::findPlace(const kaldex::PolygonRecord& record, const std::vector<std::int16_t>& lines,
                          const std::vector<std::int16_t>& children, Point& place) {
  int points = 0;
  Rectangle box;
  if (kaldex::RET_get(record.id, points, box.x1, box.x2, box.y1, box.y2) == 0) return false;
  place.y = (box.y1 + box.y2) * 0.5;
  if (!cut(lines, place.y) || crossings_.size() < 2) return false;
  const double lastCrossing = crossings_.back();
  place.x = (crossings_[crossings_.size() - 2] + lastCrossing) * 0.5;
  for (const int child : children) leaveHole(child, place, lastCrossing);
  return std::isfinite(place.x) && std::isfinite(place.y);
}

void Centroids::leaveHole(int child, Point& place, double lastCrossing) {
  int points = 0;
  Rectangle box;
  kaldex::RET_get(child, points, box.x1, box.x2, box.y1, box.y2);
  if (place.x > box.x2 || place.y < box.y1 || place.y > box.y2) return;
  kaldex::PolygonRecord record;
  std::vector<std::int16_t> lines;
  if (kaldex::poli_le(polygons_, record, child, lines) == 0) return;
  if (cut(lines, place.y) && !crossings_.empty()) place.x = (lastCrossing + crossings_.back()) * 0.5;
}

bool Centroids::cut(const std::vector<std::int16_t>& lines, double y) {
  const auto count = static_cast<int>(lines.size());
  if (kaldex::monta_poligono(lines_, line_, count, x_, y_, lines.data()) == 0) return false;
  return kaldex::corta_poli(y, crossings_, static_cast<int>(x_.size()), x_.data(), y_.data()) != 0;
}

}  // namespace

int carrega_centroides(const char* name, SExtLabelPointList& list, double scale, double xoffset,
                       double yoffset) {
  const Tracer tracer(__FILE__, __LINE__, "carrega_centroides");
  if (name == nullptr) return 0;
  try {
    Centroids centroids;
    if (!centroids.open(name)) return 0;
    centroids.collect(list, scale, xoffset, yoffset);
    return 1;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

}  // namespace kaldex_v1
