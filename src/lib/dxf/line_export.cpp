#include <QObject>
#include <cstdio>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"
#include "lib/frame/class_filter.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

/// Writes the lines or polygons of a vector, or its contours.
class IEDXF::LineExport : private IEDXF::DrawingExport {
 public:
  LineExport(IEDXF& handler, Vector& vector, bool onlyUsedClasses)
      : DrawingExport(handler), walk_(vector, onlyUsedClasses, handler.dataBase, vector.infoLayer(), text_) {}

  int exportLines();
  int exportPolygons();
  int exportContours();

 private:
  void goBehindWhatIsThere();

  kaldex::LineWalk walk_;
};

int IEDXF::LineExport::exportLines() {
  goBehindWhatIsThere();
  begin();
  walk_.lines([this](const Line& line) { return walk_.wantsClass(line); },
              [this](const Line& line) { writePolyline(line, ""); });
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
  walk_.lines([](const Line&) { return true; },
              [this](const Line& line) { writePolyline(line, kaldex::kContourSuffix); });
  return finish();
}

int IEDXF::LineExport::exportPolygons() {
  begin();
  walk_.polygons([this](const Line& line) { writePolyline(line, ""); });
  return finish();
}

/// Writes the points of a vector of lines.
class IEDXF::PointExport : private IEDXF::DrawingExport {
 public:
  PointExport(IEDXF& handler, Vector& vector, bool onlyUsedClasses)
      : DrawingExport(handler),
        vector_(vector),
        progress_(kaldex::progressSteps(vector.point2dCount())),
        filter_(onlyUsedClasses, handler.dataBase, vector.infoLayer()) {}

  int run();

 private:
  Vector& vector_;
  kaldex::ProgressScope progress_;
  kaldex::ClassFilter filter_;
};

int IEDXF::PointExport::run() {
  long long read = 0, written = 0;
  begin();
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && wantsMore();
       point = vector_.NextPoint2d()) {
    progress_.step();
    ++read;
    if (!filter_.passes(point->classId)) continue;
    writePoint(*point);
    ++written;
  }
  kaldex::reportRead("points", read);
  kaldex::reportWritten("points", written);
  kaldex::reportLeftOut("class_filter", read - written);
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
    return openFile("w+") ? PointExport(*this, *vec, onlyUsedClasses != 0).run() : 0;
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
