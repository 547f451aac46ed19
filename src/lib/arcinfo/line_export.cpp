#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_writer.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

/// Writes the lines of a vector as their export wants them: all lines, contours, or polygon outlines with the
/// lines that bound none. One export an object; the handler's file must be open.
class IEArcInfo::LineExport {
 public:
  LineExport(IEArcInfo& handler, Vector& vector, bool onlyUsedClasses)
      : writer_(handler),
        walk_(vector, onlyUsedClasses, handler.dataBase, vector.infoLayer(), writer_.out()) {}

  int exportLines();
  int exportContours();
  int exportPolygons();

 private:
  Writer writer_;
  kaldex::LineWalk walk_;
};

int IEArcInfo::LineExport::exportLines() {
  const auto wanted = [this](const Line& line) { return walk_.wantsClass(line); };
  return writer_.finish(walk_.lines(wanted, [this](const Line& line) { writer_.record(line); }));
}

int IEArcInfo::LineExport::exportContours() {
  const auto all = [](const Line&) { return true; };
  return writer_.finish(walk_.lines(all, [this](const Line& line) { writer_.record(line, &line.height); }));
}

int IEArcInfo::LineExport::exportPolygons() {
  return writer_.finish(walk_.polygons([this](const Line& line) { writer_.record(line); }));
}

// --- The operations ---

int IEArcInfo::ExportLines(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportLines");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportLines() : 0;
  });
}

int IEArcInfo::ExportContourout(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportContourout");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorContours) return logicRestriction("No Contourout in Vector");
    return openFile("w+") ? LineExport(*this, *vec, false).exportContours() : 0;
  });
}

int IEArcInfo::ExportPolygons(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportPolygons");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportPolygons() : 0;
  });
}

}  // namespace kaldex_v1
