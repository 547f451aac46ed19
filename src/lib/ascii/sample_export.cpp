#include <QObject>
#include <vector>

#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kPointsAtOnce = 4096;
const QLatin1String kSampleFile("_L3D.kdx");
const QLatin1String kBreakLineFile("_L2D.kdx");

}  // namespace

/// Writes the points and contours of a vector as one section and its break lines as another. One export an
/// object; the handler's file must be open.
class IEAsc::SampleExport {
 public:
  SampleExport(IEAsc& handler, Vector& vector) : handler_(handler), walk_(vector) {}

  int run() { return exportSamples() != 0 && openBreakLineFile() ? exportBreakLines() : 0; }

 private:
  int exportSamples();
  void writePoints(SectionWriter& writer);
  bool openBreakLineFile();
  int exportBreakLines();

  IEAsc& handler_;
  kaldex::SampleWalk walk_;
};

int IEAsc::SampleExport::exportSamples() {
  SectionWriter writer(handler_);
  writer.begin("SAMPLE", QObject::tr("//Amostras de Modelagem Numérica"));
  writer.endHeader();
  writer.out().append("\nPOINT3D");
  writePoints(writer);
  writer.endRecord();
  walk_.heightLines(writer.out(), [&](const Line& line) {
    writer.contourHead(line);
    writer.coordinates(line);
    writer.endRecord();
  });
  return writer.finish(walk_.complete());
}

void IEAsc::SampleExport::writePoints(SectionWriter& writer) {
  std::vector<double> xy;
  std::vector<float> heights;
  const auto flush = [&] {
    writer.samples(xy.data(), heights.data(), static_cast<int>(heights.size()));
    xy.clear();
    heights.clear();
  };
  walk_.points(writer.out(), [&](const Point3d& point) {
    xy.push_back(point.x);
    xy.push_back(point.y);
    heights.push_back(point.z);
    if (heights.size() == kPointsAtOnce) flush();
  });
  flush();
}

bool IEAsc::SampleExport::openBreakLineFile() {
  QString name = handler_.dataFile;
  const int at = name.indexOf(kSampleFile);
  if (at >= 0) handler_.DataFile(name.remove(at, kSampleFile.size()) + kBreakLineFile);
  return handler_.openFile("a+");
}

int IEAsc::SampleExport::exportBreakLines() {
  SectionWriter writer(handler_);
  writer.begin("LINES", QObject::tr("//Linhas de Quebra exportadas de PI Numérico"));
  writer.endHeader();
  if (walk_.hasBreakLines()) {
    walk_.breakLines(writer.out(), [&](const Line& line) {
      writer.coordinates(line);
      writer.endRecord();
    });
  }
  return writer.finish(walk_.complete());
}

int IEAsc::ExportSample(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportSample");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorSamples) return logicRestriction("No SAMPLE in Vector");
    return openFile("a+") ? SampleExport(*this, *vec).run() : 0;
  });
}

}  // namespace kaldex_v1
