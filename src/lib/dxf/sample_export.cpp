#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

/// Writes samples, contours and break lines, each into a layer of its own.
class IEDXF::SampleExport : private IEDXF::DrawingExport {
 public:
  SampleExport(IEDXF& handler, Vector& vector) : DrawingExport(handler), walk_(vector) {}

  int run();

 private:
  kaldex::SampleWalk walk_;
};

int IEDXF::SampleExport::run() {
  constexpr short layers = 3;
  begin(layers);
  walk_.points(text_, [this](const Point3d& point) {
    double xy[] = {point.x, point.y};
    convert(xy, 1);
    out_.sample(xy[0], xy[1], point.z);
  });
  walk_.heightLines(text_, [this](const Line& line) { writePolyline(line, kaldex::kSampleLineSuffix); });
  if (walk_.hasBreakLines())
    walk_.breakLines(text_, [this](const Line& line) { writePolyline(line, kaldex::kBreakLineSuffix); });
  return finish();
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
