#include <QObject>
#include <memory>
#include <unordered_map>

#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"
#include "lib/frame/class_filter.h"

inline namespace kaldex_v1 {

/// Writes what a vector of lines holds: its lines, polygons or points, or the contours of one.
class IEDXF::LineExport : private IEDXF::DrawingExport {
 public:
  LineExport(IEDXF& handler, Vector& vector, bool onlyUsedClasses)
      : DrawingExport(handler, vector.lineCount() + vector.polygonCount() + vector.point2dCount()),
        vector_(vector),
        filter_(onlyUsedClasses, handler.dataBase, handler.infoLayer) {}
  ~LineExport();

  int exportLines();
  int exportPolygons();
  int exportPoints();
  int exportContours();

 private:
  /// Write the lines that `wanted(line)` is true for.
  template <class Wanted>
  void writeLines(const char* suffix, Wanted wanted);
  bool passes(const Line& line);
  bool polygonPasses(int id);
  bool countFiltered(bool wanted);
  void writeOutline(SPolygon& polygon);
  void writeSonsOfOtherClasses(SPolygon& polygon);

  Vector& vector_;
  kaldex::ClassFilter filter_;
  std::unordered_map<int, bool> polygonVerdicts_;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long polygonsRead_ = 0;
  long long polygonsWritten_ = 0;
  long long pointsRead_ = 0;
  long long pointsWritten_ = 0;
  long long fewPoints_ = 0;
  long long filtered_ = 0;
  long long withoutOutline_ = 0;
};

IEDXF::LineExport::~LineExport() {
  kaldex::reportRead("lines", linesRead_);
  kaldex::reportWritten("lines", linesWritten_);
  kaldex::reportRead("polygons", polygonsRead_);
  kaldex::reportWritten("polygons", polygonsWritten_);
  kaldex::reportRead("points", pointsRead_);
  kaldex::reportWritten("points", pointsWritten_);
  kaldex::reportLeftOut("few_points", fewPoints_);
  kaldex::reportLeftOut("class_filter", filtered_);
  kaldex::reportLeftOut("no_geometry", withoutOutline_);
}

template <class Wanted>
void IEDXF::LineExport::writeLines(const char* suffix, Wanted wanted) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    progress_.step();
    if (wanted(*line)) {
      ++linesRead_;
      const bool enough = line->Size() >= 2;
      if (enough) writePolyline(*line, suffix);
      ++(enough ? linesWritten_ : fewPoints_);
    }
    giveBack(vector_, line);
  }
}

bool IEDXF::LineExport::countFiltered(bool wanted) {
  filtered_ += wanted ? 0 : 1;
  return wanted;
}

// --- Lines ---

int IEDXF::LineExport::exportLines() {
  begin();
  writeLines("", [this](const Line& line) { return countFiltered(passes(line)); });
  return finish();
}

// A line that bounds a polygon of a wanted class is part of it, whatever its own class is.
bool IEDXF::LineExport::passes(const Line& line) {
  if (filter_.passes(line.classId)) return true;
  return polygonPasses(line.leftPolygon) || polygonPasses(line.rightPolygon);
}

// A polygon bounds several lines, so its answer is kept.
bool IEDXF::LineExport::polygonPasses(int id) {
  PolygonSet* const polygons = vector_.polygonSet();
  if (id <= 0 || polygons == nullptr) return false;
  const auto known = polygonVerdicts_.find(id);
  if (known != polygonVerdicts_.end()) return known->second;
  const std::unique_ptr<SPolygon> polygon(polygons->Get(id));
  const bool verdict = polygon != nullptr && filter_.passes(polygon->classId);
  polygonVerdicts_.emplace(id, verdict);
  return verdict;
}

int IEDXF::LineExport::exportContours() {
  begin();
  writeLines(kaldex::kContourSuffix, [](const Line&) { return true; });
  return finish();
}

// --- Polygons ---

int IEDXF::LineExport::exportPolygons() {
  begin();
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && wantsMore();
       polygon = vector_.NextPolygon()) {
    progress_.step();
    ++polygonsRead_;
    if (countFiltered(filter_.passes(polygon->classId))) {
      writeOutline(*polygon);
      writeSonsOfOtherClasses(*polygon);
    }
    giveBack(vector_, polygon);
  }
  writeLines("", [this](const Line& line) {
    return line.leftPolygon <= 0 && line.rightPolygon <= 0 && countFiltered(filter_.passes(line.classId));
  });
  return finish();
}

void IEDXF::LineExport::writeOutline(SPolygon& polygon) {
  const Line* const outline = polygon.CreatePoints(nullptr);
  const bool enough = outline != nullptr && outline->Size() >= 2;
  if (enough) writePolyline(*outline, "");
  if (outline != nullptr) polygon.DeletePoints();
  ++(enough ? polygonsWritten_ : withoutOutline_);
}

// A son of a class that isn't wanted would leave no trace of its border.
void IEDXF::LineExport::writeSonsOfOtherClasses(SPolygon& polygon) {
  if (filter_.takesAll() || polygon.NumSons() == 0) return;
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) {
    if (!filter_.passes(son->classId)) writeOutline(*son);
    giveBack(vector_, son);
  }
  vector_.GetPolygon(polygon.id);
}

// --- Points ---

int IEDXF::LineExport::exportPoints() {
  begin();
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && wantsMore();
       point = vector_.NextPoint2d()) {
    progress_.step();
    ++pointsRead_;
    if (!countFiltered(filter_.passes(point->classId))) continue;
    writePoint(*point);
    ++pointsWritten_;
  }
  return finish();
}

// --- The operations ---

int IEDXF::ExportLines(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportLines");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return show(QObject::tr("Não existe linhas neste vetor!"));
    return openFile("a+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportLines() : 0;
  });
}

int IEDXF::ExportPolygons(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportPolygons");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return show(QObject::tr("Não existe linhas neste vetor!"));
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportPolygons() : 0;
  });
}

int IEDXF::ExportPoints(Vector* vec, Category*, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportPoints");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportPoints() : 0;
  });
}

int IEDXF::ExportContourout(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportContourout");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorContours) return logicRestriction("No CONTOUROUT in Vector");
    return openFile("w+") ? LineExport(*this, *vec, false).exportContours() : 0;
  });
}

}  // namespace kaldex_v1
