#include <QObject>
#include <cstdio>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"
#include "lib/frame/line_class_filter.h"

inline namespace kaldex_v1 {

/// Writes what a vector of lines holds: its lines, polygons or points, or the contours of one.
class IEDXF::LineExport : private IEDXF::DrawingExport {
 public:
  /// `records` are those that the export walks over.
  LineExport(IEDXF& handler, Vector& vector, bool onlyUsedClasses, long long records)
      : DrawingExport(handler, records),
        vector_(vector),
        filter_(onlyUsedClasses, handler.dataBase, vector.infoLayer()),
        lineFilter_(filter_, vector) {}
  ~LineExport();

  int exportLines();
  int exportPolygons();
  int exportPoints();
  int exportContours();

 private:
  /// Write the lines that `wanted(line)` is true for.
  template <class Wanted>
  void writeLines(const char* suffix, Wanted wanted);
  void goBehindWhatIsThere();
  bool countFiltered(bool wanted);
  void writeOutline(SPolygon& polygon);
  void writeSonsOfOtherClasses(SPolygon& polygon);

  Vector& vector_;
  kaldex::ClassFilter filter_;
  kaldex::LineClassFilter lineFilter_;
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
  goBehindWhatIsThere();
  begin();
  writeLines("", [this](const Line& line) {
    ++linesRead_;
    return countFiltered(lineFilter_.passes(line));
  });
  return finish();
}

// A drawing that was cut has an unfinished last line, which would take the first of ours for its end.
void IEDXF::LineExport::goBehindWhatIsThere() {
  if (handler_.fileSize() == 0) return;
  std::fseek(handler_.file, -1, SEEK_END);
  const bool ended = std::fgetc(handler_.file) == '\n';
  std::fseek(handler_.file, 0, SEEK_END);
  if (!ended) text_.append('\n');
  if (JobReport* const job = JobReport::current())
    job->note(
        QObject::tr("O arquivo já tinha conteúdo: programas leem só o primeiro desenho de um arquivo."));
}

int IEDXF::LineExport::exportContours() {
  begin();
  writeLines(kaldex::kContourSuffix, [this](const Line&) {
    ++linesRead_;
    return true;
  });
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
    if (line.leftPolygon > 0 || line.rightPolygon > 0) return false;
    ++linesRead_;
    return countFiltered(filter_.passes(line.classId));
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
    if (!filter_.passes(son->classId)) {
      writeOutline(*son);
      --filtered_;  // as which it counts by itself
    }
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
    return openFile("a+") ? LineExport(*this, *vec, onlyUsedClasses != 0, vec->lineCount()).exportLines() : 0;
  });
}

int IEDXF::ExportPolygons(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportPolygons");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return show(QObject::tr("Não existe linhas neste vetor!"));
    return openFile("w+")
               ? LineExport(*this, *vec, onlyUsedClasses != 0, vec->polygonCount() + vec->lineCount())
                     .exportPolygons()
               : 0;
  });
}

int IEDXF::ExportPoints(Vector* vec, Category*, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportPoints");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0, vec->point2dCount()).exportPoints()
                          : 0;
  });
}

int IEDXF::ExportContourout(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportContourout");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorContours) return logicRestriction("No CONTOUROUT in Vector");
    return openFile("w+") ? LineExport(*this, *vec, false, vec->lineCount()).exportContours() : 0;
  });
}

}  // namespace kaldex_v1
