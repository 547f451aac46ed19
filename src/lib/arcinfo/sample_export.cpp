#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_writer.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

/// Writes lines with heights, break lines and points of a vector, each into a file of its own. One export an
/// object; the handler's file must be open.
class IEArcInfo::SampleExport {
 public:
  SampleExport(IEArcInfo& handler, Vector& vector) : handler_(handler), vector_(vector), walk_(vector) {}

  int run();

 private:
  int writeHeightLines();
  int writeBreakLines();
  int writePoints();
  bool openBeside(const char* ending);

  IEArcInfo& handler_;
  Vector& vector_;
  kaldex::SampleWalk walk_;
};

int IEArcInfo::SampleExport::run() {
  if (writeHeightLines() == 0) return 0;
  if (walk_.hasBreakLines() && (!openBeside("_L2D.txt") || writeBreakLines() == 0)) return 0;
  if (vector_.point3dCount() == 0) return 1;
  return openBeside("_P3D.txt") ? writePoints() : 0;
}

int IEArcInfo::SampleExport::writeHeightLines() {
  Writer writer(handler_);
  walk_.heightLines(writer.out(), [&](const Line& line) { writer.record(line, &line.height); });
  return writer.finish(walk_.complete());
}

// Break lines have no height of their own: they go out, and come back, as pairs.
int IEArcInfo::SampleExport::writeBreakLines() {
  Writer writer(handler_);
  walk_.breakLines(writer.out(), [&](const Line& line) { writer.record(line); });
  return writer.finish(walk_.complete());
}

int IEArcInfo::SampleExport::writePoints() {
  Writer writer(handler_);
  walk_.points(writer.out(), [&](const Point3d& point) { writer.sample("1  ", point, point.z); });
  return writer.finish(walk_.complete());
}

bool IEArcInfo::SampleExport::openBeside(const char* ending) {
  const QString main = handler_.dataFile;
  const int point = main.lastIndexOf(QLatin1Char('.'));
  handler_.DataFile(main.left(point >= 0 ? point : main.size()) + QLatin1String(ending));
  const bool opened = handler_.openFile("w+");
  handler_.DataFile(main);
  return opened;
}

int IEArcInfo::ExportSample(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportSample");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorSamples) return logicRestriction("No SAMPLE in Vector");
    return openFile("w+") ? SampleExport(*this, *vec).run() : 0;
  });
}

}  // namespace kaldex_v1
