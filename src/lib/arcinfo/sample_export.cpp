#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_writer.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Writes lines with heights, break lines and points of a vector, each into a file of its own. One export an
/// object; the handler's file must be open.
class IEArcInfo::SampleExport {
 public:
  SampleExport(IEArcInfo& handler, Vector& vector)
      : handler_(handler),
        vector_(vector),
        progress_(kaldex::progressSteps(vector.point3dCount() + vector.lineCount())) {}
  ~SampleExport();

  int run();

 private:
  int writeLines(bool breakLines);
  int writePoints();
  bool openBeside(const char* ending);
  bool wantsMore(const Writer& writer) const { return writer.ok() && !progress_.cancelled(); }

  IEArcInfo& handler_;
  Vector& vector_;
  kaldex::ProgressScope progress_;
  bool hasBreakLines_ = false;
  long long points_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long fewPoints_ = 0;
};

IEArcInfo::SampleExport::~SampleExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (points_ > 0) job->countRead("samples", points_);
  if (points_ > 0) job->countWritten("samples", points_);
  if (linesRead_ > 0) job->countRead("lines", linesRead_);
  if (linesWritten_ > 0) job->countWritten("lines", linesWritten_);
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
}

int IEArcInfo::SampleExport::run() {
  if (writeLines(false) == 0) return 0;
  if (hasBreakLines_ && (!openBeside("_L2D.txt") || writeLines(true) == 0)) return 0;
  if (vector_.point3dCount() == 0) return 1;
  return openBeside("_P3D.txt") ? writePoints() : 0;
}

// Break lines have no height of their own: they go out, and come back, as pairs.
int IEArcInfo::SampleExport::writeLines(bool breakLines) {
  Writer writer(handler_);
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(writer); line = vector_.NextLine()) {
    const bool isBreakLine = line->Type() == lineBreak;
    hasBreakLines_ = hasBreakLines_ || isBreakLine;
    if (!breakLines) {
      ++linesRead_;
      progress_.step();
      fewPoints_ += line->Size() < 2 ? 1 : 0;
    }
    if (isBreakLine == breakLines && line->Size() >= 2) {
      writer.record(*line, breakLines ? nullptr : &line->height);
      ++linesWritten_;
    }
    giveBack(vector_, line);
  }
  return writer.finish(!progress_.cancelled());
}

int IEArcInfo::SampleExport::writePoints() {
  Writer writer(handler_);
  std::unique_ptr<Point3d> point(vector_.FirstPoint3d());
  for (; point != nullptr && wantsMore(writer); point.reset(vector_.NextPoint3d())) {
    ++points_;
    progress_.step();
    writer.sample("1  ", *point, point->z);
  }
  return writer.finish(!progress_.cancelled());
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
