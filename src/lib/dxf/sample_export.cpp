#include <memory>

#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"

inline namespace kaldex_v1 {

/// Writes samples, contours and break lines, each into a layer of its own.
class IEDXF::SampleExport : private IEDXF::DrawingExport {
 public:
  SampleExport(IEDXF& handler, Vector& vector)
      : DrawingExport(handler, vector.point3dCount() + vector.lineCount()), vector_(vector) {}
  ~SampleExport() {
    kaldex::reportRead("samples", samples_);
    kaldex::reportWritten("samples", samples_);
    kaldex::reportRead("lines", linesRead_);
    kaldex::reportWritten("lines", linesWritten_);
    kaldex::reportLeftOut("few_points", linesRead_ - linesWritten_);
  }

  int run();

 private:
  void writeSamples();
  void writeLines(bool breakLines);

  Vector& vector_;
  bool hasBreakLines_ = false;
  long long samples_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
};

int IEDXF::SampleExport::run() {
  constexpr short layers = 3;
  begin(layers);
  writeSamples();
  writeLines(false);
  if (hasBreakLines_) writeLines(true);
  return finish();
}

void IEDXF::SampleExport::writeSamples() {
  std::unique_ptr<Point3d> point(vector_.FirstPoint3d());
  for (; point != nullptr && wantsMore(); point.reset(vector_.NextPoint3d())) {
    progress_.step();
    ++samples_;
    double xy[] = {point->x, point->y};
    convert(xy, 1);
    out_.sample(xy[0], xy[1], point->z);
  }
}

void IEDXF::SampleExport::writeLines(bool breakLines) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    const bool isBreak = line->Type() == lineBreak;
    hasBreakLines_ = hasBreakLines_ || isBreak;
    if (isBreak == breakLines) {
      progress_.step();
      ++linesRead_;
      if (line->Size() >= 2) ++linesWritten_;
      writePolyline(*line, breakLines ? kaldex::kBreakLineSuffix : kaldex::kSampleLineSuffix);
    }
    giveBack(vector_, line);
  }
}

int IEDXF::ExportSample(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportSample");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorSamples) return logicRestriction("No SAMPLE in Vector");
    return openFile("w+") ? SampleExport(*this, *vec).run() : 0;
  });
}

}  // namespace kaldex_v1
