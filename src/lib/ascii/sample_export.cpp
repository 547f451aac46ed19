#include <QObject>
#include <memory>
#include <vector>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/progress_scope.h"

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
  SampleExport(IEAsc& handler, Vector& vector)
      : handler_(handler),
        vector_(vector),
        progress_(kaldex::progressSteps(vector.point3dCount() + vector.lineCount())) {}
  ~SampleExport();

  int run() { return exportSamples() != 0 && openBreakLineFile() ? exportBreakLines() : 0; }

 private:
  int exportSamples();
  void writePoints(SectionWriter& writer);
  template <class Take>
  void eachLine(const SectionWriter& writer, Take take);
  bool openBreakLineFile();
  int exportBreakLines();
  bool wantsMore(const SectionWriter& writer) const { return writer.ok() && !progress_.cancelled(); }

  IEAsc& handler_;
  Vector& vector_;
  kaldex::ProgressScope progress_;
  bool hasBreakLines_ = false;
  long long points_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long fewPoints_ = 0;
};

IEAsc::SampleExport::~SampleExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (points_ > 0) job->countRead("samples", points_);
  if (points_ > 0) job->countWritten("samples", points_);
  if (linesRead_ > 0) job->countRead("lines", linesRead_);
  if (linesWritten_ > 0) job->countWritten("lines", linesWritten_);
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
}

int IEAsc::SampleExport::exportSamples() {
  SectionWriter writer(handler_);
  writer.begin("SAMPLE", QObject::tr("//Amostras de Modelagem Numérica"));
  writer.endHeader();
  writer.out().append("\nPOINT3D");
  writePoints(writer);
  writer.endRecord();
  eachLine(writer, [&](const Line& line) {
    ++linesRead_;
    progress_.step();
    if (line.Size() < 2) {
      ++fewPoints_;
    } else if (line.Type() == lineBreak) {
      hasBreakLines_ = true;
    } else {
      writer.contourHead(line);
      writer.coordinates(line);
      writer.endRecord();
      ++linesWritten_;
    }
  });
  return writer.finish(!progress_.cancelled());
}

void IEAsc::SampleExport::writePoints(SectionWriter& writer) {
  std::vector<double> xy;
  std::vector<float> heights;
  const auto flush = [&] {
    writer.samples(xy.data(), heights.data(), static_cast<int>(heights.size()));
    xy.clear();
    heights.clear();
  };
  std::unique_ptr<Point3d> point(vector_.FirstPoint3d());
  for (; point != nullptr && wantsMore(writer); point.reset(vector_.NextPoint3d())) {
    ++points_;
    progress_.step();
    xy.push_back(point->x);
    xy.push_back(point->y);
    heights.push_back(point->z);
    if (heights.size() == kPointsAtOnce) flush();
  }
  flush();
}

template <class Take>
void IEAsc::SampleExport::eachLine(const SectionWriter& writer, Take take) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(writer); line = vector_.NextLine()) {
    take(*line);
    giveBack(vector_, line);
  }
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
  if (hasBreakLines_) {
    eachLine(writer, [&](const Line& line) {
      if (line.Type() != lineBreak || line.Size() < 2) return;
      writer.coordinates(line);
      writer.endRecord();
      ++linesWritten_;
    });
  }
  return writer.finish(!progress_.cancelled());
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
