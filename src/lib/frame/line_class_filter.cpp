#include "lib/frame/line_class_filter.h"

#include <memory>

namespace kaldex {

bool LineClassFilter::passes(const Line& line) {
  if (filter_.passes(line.classId)) return true;
  return polygonPasses(line.leftPolygon) || polygonPasses(line.rightPolygon);
}

bool LineClassFilter::polygonPasses(int id) {
  PolygonSet* const polygons = vector_.polygonSet();
  if (id <= 0 || polygons == nullptr) return false;
  const auto place = static_cast<std::size_t>(id);
  if (place >= polygons_.size()) polygons_.resize(place + 1, Verdict::unknown);
  Verdict& verdict = polygons_[place];
  if (verdict == Verdict::unknown) {
    const std::unique_ptr<SPolygon> polygon(polygons->Get(id));
    verdict = polygon != nullptr && filter_.passes(polygon->classId) ? Verdict::passes : Verdict::fails;
  }
  return verdict == Verdict::passes;
}

}  // namespace kaldex
