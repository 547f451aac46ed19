#include <QFile>
#include <QObject>
#include <vector>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_reader.h"
#include "lib/arcinfo/ungenerate_record.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kPointsAtOnce = 4096;
constexpr short kSampleBits = 7;  // a vector whose kind has one of these bits takes samples

// Older tools wrote points with angles, which nobody takes.
bool startsAngle(const char* line) {
  return *line == 's' || *line == 'n';
}

}  // namespace

/// Reads a file of points with heights into a vector, from the line in hand on. What was read before a
/// failure stays.
class IEArcInfo::PointImport : private IEArcInfo::Reader {
 public:
  PointImport(IEArcInfo& handler, Vector& vector, SProjection* target)
      : Reader(handler, target, kBytesPerRecord), vector_(vector) {}
  ~PointImport();

  int run();

 private:
  static constexpr int kBytesPerRecord = 40;

  bool readPoints();
  void insertPending();
  int store();

  Vector& vector_;
  std::vector<double> xy_;  ///< points that wait for being carried to the target all at once
  std::vector<float> z_;
  long long read_ = 0;
  long long written_ = 0;
};

IEArcInfo::PointImport::~PointImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("samples", read_);
  if (written_ > 0) job->countWritten("samples", written_);
  if (read_ > written_) job->countLeftOut("refused", read_ - written_);
}

int IEArcInfo::PointImport::run() {
  if (!kaldex::startsLikeNumber(handler_.line)) {
    return startsAngle(handler_.line) ? handler_.inconsistent("lat-qint32")
                                      : handler_.inconsistent(handler_.line);
  }
  const bool complete = readPoints();
  insertPending();
  return complete ? store() : 0;
}

bool IEArcInfo::PointImport::readPoints() {
  kaldex::PointRecord record;
  for (;;) {
    const kaldex::PointResult result = kaldex::parsePointRecord(handler_.lineText(), 3, record);
    if (result == kaldex::PointResult::end) return true;
    if (result == kaldex::PointResult::malformed) return malformed();
    ++read_;
    xy_.push_back(record.x * factor_);
    xy_.push_back(record.y * factor_);
    z_.push_back(record.z);
    if (z_.size() == kPointsAtOnce) insertPending();
    if (!nextLine()) return false;
  }
}

void IEArcInfo::PointImport::insertPending() {
  transfer_.apply(xy_.data(), z_.size());
  for (std::size_t i = 0; i < z_.size(); ++i) {
    Point3d point(xy_[2 * i], xy_[2 * i + 1], z_[i]);
    if (!point.isUnset() && vector_.Insert(point, 0) != 0) ++written_;
  }
  xy_.clear();
  z_.clear();
}

int IEArcInfo::PointImport::store() {
  finish();
  handler_.FileClose();
  if (Point3dSet* const points = vector_.point3dSet()) {
    points->KeepFilesOpen(0);
    // Older stores kept points in a file beside the layer, which would be out of date now.
    QFile::remove(QStringLiteral("%1/%2.kdt").arg(vector_.directory(), vector_.name()));
  }
  return 1;
}

// --- The operations ---

int IEArcInfo::ImpArcInfoPoint3D(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ImpArcInfoPoint3D");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (file == nullptr) {
      if (!openFile("r")) return 0;
      clearLine();
      if (readLine() == 0) return inconsistent(line);
    }
    return PointImport(*this, *vec, target).run();
  });
}

int IEArcInfo::ImportSamples(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ImportSamples");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if ((vec->representation() & kSampleBits) == 0) return logicRestriction("No SAMPLE in Vector");
    if (!openFile("r")) return 0;
    clearLine();
    const bool complete = readLine() != 0;
    switch (kaldex::sampleForm(line)) {
      case kaldex::SampleForm::lines:
        // The end of the file has closed it: there is no more than this line.
        if (!complete) return kaldex::isEndLine(line) ? 1 : inconsistent("FEOF");
        std::rewind(file);
        return ImpArcInfoLine3D(vec, target);
      case kaldex::SampleForm::points:
        return complete ? ImpArcInfoPoint3D(vec, target) : inconsistent("END ???");
      case kaldex::SampleForm::neither:
        break;
    }
    return inconsistent(line);
  });
}

}  // namespace kaldex_v1
