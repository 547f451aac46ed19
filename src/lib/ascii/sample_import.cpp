#include "lib/ascii/sample_import.h"

#include <QFile>
#include <QObject>
#include <cmath>
#include <cstring>

#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kPointsAtOnce = 4096;
constexpr short kSampleBits = 7;  // a vector whose kind has one of these bits takes samples

}  // namespace

IEAsc::SampleImport::SampleImport(IEAsc& handler, Vector& vector, SProjection* target, Section section)
    : SectionReader(handler, target), vector_(vector), section_(section), box_(vector.BoundingBox()) {}

IEAsc::SampleImport::~SampleImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (linesRead_ > 0) job->countRead("contours", linesRead_);
  if (linesWritten_ > 0) job->countWritten("contours", linesWritten_);
  if (linesRefused_ > 0) job->countLeftOut("refused", linesRefused_);
  if (pointsRead_ > 0) job->countRead("samples", pointsRead_);
  if (pointsWritten_ > 0) job->countWritten("samples", pointsWritten_);
  if (outside_ > 0) job->countLeftOut("outside_box", outside_);
}

bool IEAsc::SampleImport::accepts(const Vector& vector) {
  if ((vector.representation() & kSampleBits) != 0) return true;
  logicRestriction("Not a CONTOUR Vector");
  return false;
}

int IEAsc::SampleImport::run() {
  if (!findSection(section_ == Section::samples ? "SAMPLE" : "CONTOURLINES")) return 0;
  constexpr int bytesPerRecord = 50;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  for (;;) {
    const Word word = nextWord(progress);
    if (word == Word::sectionEnd) return finish();
    if (word == Word::failed || !readBlock(progress)) return 0;
  }
}

bool IEAsc::SampleImport::readBlock(kaldex::ProgressScope& progress) {
  if (std::strcmp(handler_.line, "POINT3D") == 0) return readPointBlock(progress);
  if (std::strcmp(handler_.line, "LINE3D") == 0) return readLineBlock(linePlain, progress);
  if (std::strcmp(handler_.line, "LINE3D-MASTER") == 0) return readLineBlock(lineMaster, progress);
  return malformed();
}

// --- Blocks of a line ---

bool IEAsc::SampleImport::readLineBlock(char type, kaldex::ProgressScope& progress) {
  float height = 0.0f;
  if (!readHeight(height) || !skipRestOfLine()) return false;
  handler_.clearLine();
  if (handler_.readLine() == 0) return false;
  progress.step();
  bool empty = false;
  if (!readLinePoints(empty, progress)) return false;
  if (empty) return true;
  ++linesRead_;
  if (section_ == Section::samples) dropOutside();
  insertLine(type, height);
  return true;
}

bool IEAsc::SampleImport::readHeight(float& height) {
  if (!handler_.readWordIntoLine() || std::strcmp(handler_.line, "HEIGHT") != 0) {
    return malformed();
  }
  const bool number = handler_.readWordIntoLine() && kaldex::TextScan(handler_.line).readAll(height) == 1;
  return (number && std::isfinite(height)) || malformed();
}

bool IEAsc::SampleImport::readLinePoints(bool& empty, kaldex::ProgressScope& progress) {
  empty = atRecordEnd();
  if (empty) return true;
  if (kaldex::startsLikeNumber(handler_.line)) return readPlanePairs(progress);
  if (kaldex::isHemisphereLetter(handler_.line[0])) return readGeographicPairs(progress);
  return malformed();
}

void IEAsc::SampleImport::dropOutside() {
  std::vector<double>& points = xy();
  std::size_t kept = 0;
  for (std::size_t i = 0; i < points.size(); i += 2) {
    if (!box_.Contains(Point(points[i], points[i + 1]))) {
      ++outside_;
      continue;
    }
    points[kept++] = points[i];
    points[kept++] = points[i + 1];
    ++inside_;
  }
  points.resize(kept);
}

// A line that the vector refuses, as one without points, is no reason to stop.
void IEAsc::SampleImport::insertLine(char type, float height) {
  auto line = std::make_unique<Line>();
  line->Type(type);
  line->height = height;
  line->assign(xy().data(), static_cast<int>(xy().size() / 2));
  // Points without a place are outside of every box.
  const bool placed = section_ == Section::samples || allPlaced();
  if (placed && vector_.Insert(*line, 1) != 0) {
    ++linesWritten_;
    giveBack(vector_, line.release());
  } else {
    ++linesRefused_;
  }
}

// --- Blocks of points ---

bool IEAsc::SampleImport::readPointBlock(kaldex::ProgressScope& progress) {
  if (!skipRestOfLine() || !nextLine(progress)) return false;
  if (atRecordEnd()) return true;
  const bool plane = kaldex::startsLikeNumber(handler_.line);
  if (!plane && !kaldex::isHemisphereLetter(handler_.line[0])) return malformed();
  // What was read before a failure goes in, as if each point had gone in by itself.
  const bool read = plane ? readPlanePoints(progress) : readGeographicPoints(progress);
  const bool inserted = insertPending();
  if (!read || !inserted) return false;
  return atRecordEnd() || malformed();
}

bool IEAsc::SampleImport::readPlanePoints(kaldex::ProgressScope& progress) {
  for (;;) {
    double x = 0.0;
    double y = 0.0;
    float z = 0.0f;
    const kaldex::PlaneResult result = kaldex::parsePlaneSample(handler_.lineText(), x, y, z);
    if (result == kaldex::PlaneResult::noNumber) return true;
    if (result == kaldex::PlaneResult::malformed) return malformed();
    pendingXy_.push_back(x * factor_);
    pendingXy_.push_back(y * factor_);
    pendingZ_.push_back(z);
    if (pendingZ_.size() == kPointsAtOnce && !insertPending()) return false;
    if (!nextLine(progress)) return false;
  }
}

bool IEAsc::SampleImport::readGeographicPoints(kaldex::ProgressScope& progress) {
  Point point;
  float height = 0.0f;
  while (handler_.readLatLong(transfer_, point, height) != 0) {
    if (!std::isfinite(height) || height > static_cast<float>(kUnsetLimit)) return malformed();
    const double pair[2] = {point.x, point.y};
    if (!insertPoint(pair, height) || !nextLine(progress)) return false;
  }
  return point != Point(-1.0, -1.0) || malformed();
}

bool IEAsc::SampleImport::insertPending() {
  transfer_.apply(pendingXy_.data(), pendingZ_.size());
  bool good = true;
  for (std::size_t i = 0; good && i < pendingZ_.size(); ++i) {
    good = insertPoint(&pendingXy_[2 * i], pendingZ_[i]);
  }
  pendingXy_.clear();
  pendingZ_.clear();
  return good;
}

bool IEAsc::SampleImport::insertPoint(const double* xy, float z) {
  Point3d point(xy[0], xy[1], z);
  ++pointsRead_;
  if (!box_.Contains(point)) {
    ++outside_;
    return true;
  }
  ++inside_;
  if (vector_.Insert(point, 0) == 0) return false;
  ++pointsWritten_;
  return true;
}

// --- The end ---

int IEAsc::SampleImport::finish() {
  handler_.FileClose();
  if (Point3dSet* const points = vector_.point3dSet()) {
    points->KeepFilesOpen(0);
    // Older stores kept points in a file beside the layer, which would be out of date now.
    const QString stale = QStringLiteral("%1/%2.kdt").arg(vector_.directory(), vector_.name());
    QFile::remove(stale);
  }
  if (section_ == Section::samples) tellOutside();
  return 1;
}

void IEAsc::SampleImport::tellOutside() const {
  if (outside_ == 0) return;
  if (inside_ == 0) {
    show(QObject::tr("TODOS os dados FORA do projeto, nenhum dado importado -") +
         QObject::tr(" Conferir BOX ou PROJEçâO ou Unidade importação (m/km/graus/..."));
  } else {
    show(QObject::tr("Existem dados fora da área do projeto que não foram importados") + QStringLiteral(" "));
  }
}

int IEAsc::ImportContourout(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportContourout");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (!SampleImport::accepts(*vec) || !openFile("r")) return 0;
    return SampleImport(*this, *vec, target, SampleImport::Section::contours).run();
  });
}

int IEAsc::ImportSamples(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportSamples");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (!SampleImport::accepts(*vec) || !openFile("r")) return 0;
    return SampleImport(*this, *vec, target, SampleImport::Section::samples).run();
  });
}

}  // namespace kaldex_v1
