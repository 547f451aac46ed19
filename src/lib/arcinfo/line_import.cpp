#include <QObject>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_reader.h"
#include "lib/arcinfo/ungenerate_record.h"
#include "lib/ascii/record_text.h"
#include "lib/frame/line_insertion.h"

inline namespace kaldex_v1 {

/// Reads a file of lines, with or without heights, into a vector. What was inserted before a failure stays.
class IEArcInfo::LineImport : private IEArcInfo::Reader {
 public:
  enum class Form { plane, heights };

  LineImport(IEArcInfo& handler, Vector& vector, SProjection* target, char type, Form form)
      : Reader(handler, target, kBytesPerRecord), lines_(vector), type_(type), form_(form) {}
  ~LineImport();

  int run();

 private:
  static constexpr int kBytesPerRecord = 30;

  bool readRecord();
  bool skipIdentifierLine();
  bool readVertices();
  bool insert();

  kaldex::LineInsertion lines_;
  char type_;
  Form form_;
  std::vector<double> xy_;
  float height_ = 0.0f;
  bool flat_ = true;
  long long notFlat_ = 0;
};

IEArcInfo::LineImport::~LineImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr || notFlat_ == 0) return;
  job->note(QObject::tr("Linhas com alturas diferentes nos vértices, das quais vale a do último: %1")
                .arg(notFlat_));
}

int IEArcInfo::LineImport::run() {
  for (;;) {
    if (!handler_.readWordIntoLine()) return handler_.inconsistent("END ???");
    if (!step()) return 0;
    if (std::strcmp(handler_.line, "END") == 0) return finish();
    if (!kaldex::isLineIdentifier(handler_.line)) return handler_.inconsistent(handler_.line);
    if (!readRecord()) return 0;
  }
}

bool IEArcInfo::LineImport::readRecord() {
  if (!skipIdentifierLine() || !nextLine()) return false;
  if (!kaldex::startsLikeNumber(handler_.line)) return malformed();
  return readVertices() && insert();
}

// The identifier is the file's own business: the vector gives new ones.
bool IEArcInfo::LineImport::skipIdentifierLine() {
  if (kaldex::skipLine(handler_.file) != 0) return true;
  handler_.inconsistent("FEOF");
  return false;
}

bool IEArcInfo::LineImport::readVertices() {
  xy_.clear();
  flat_ = true;
  for (;;) {
    double x = 0.0;
    double y = 0.0;
    float z = 0.0f;
    const kaldex::PlaneResult result = form_ == Form::plane
                                           ? kaldex::parsePlanePair(handler_.lineText(), x, y)
                                           : kaldex::parsePlaneSample(handler_.lineText(), x, y, z);
    if (result == kaldex::PlaneResult::noNumber && kaldex::isEndLine(handler_.lineText())) return true;
    if (result != kaldex::PlaneResult::found) return malformed();
    flat_ = flat_ && (xy_.empty() || z == height_);
    height_ = z;
    xy_.push_back(x * factor_);
    xy_.push_back(y * factor_);
    if (!nextLine()) return false;
  }
}

bool IEArcInfo::LineImport::insert() {
  std::unique_ptr<Line> line(new (std::nothrow) Line);
  if (line == nullptr) {
    outOfMemory("pLin = new Line");
    return false;
  }
  line->Type(type_);
  line->height = height_;
  const bool placed = transfer_.apply(xy_.data(), xy_.size() / 2);
  // A line that the vector refuses is counted; the next one may be good.
  const bool taken = lines_.take(std::move(line), xy_, placed);
  notFlat_ += taken && !flat_ ? 1 : 0;
  return true;
}

// --- The operations ---

int IEArcInfo::ImportLines(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ImportLines");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    const Category* const category = infoLayer != nullptr ? infoLayer->category() : nullptr;
    const bool numeric = category != nullptr && category->model == DIGITALMODEL;
    if (vec->representation() != (numeric ? vectorSamples : vectorLines)) {
      return logicRestriction(numeric ? "Not a SAMPLE Vector" : "Not a LINE Vector");
    }
    if (!openFile("r")) return 0;
    return LineImport(*this, *vec, target, numeric ? lineBreak : linePlain, LineImport::Form::plane).run();
  });
}

int IEArcInfo::ImpArcInfoLine3D(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ImpArcInfoLine3D");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (file == nullptr && !openFile("r")) return 0;
    return LineImport(*this, *vec, target, linePlain, LineImport::Form::heights).run();
  });
}

}  // namespace kaldex_v1
