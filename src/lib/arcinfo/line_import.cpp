#include "lib/arcinfo/line_import.h"

#include <QObject>
#include <cstring>
#include <memory>
#include <new>

#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "lib/arcinfo/ungenerate_record.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

IEArcInfo::LineImport::LineImport(IEArcInfo& handler, Vector& vector, SProjection* target, char type,
                                  Form form)
    : Reader(handler, target, kBytesPerRecord), vector_(vector), type_(type), form_(form) {}

IEArcInfo::LineImport::~LineImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("lines", read_);
  if (written_ > 0) job->countWritten("lines", written_);
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
  if (degenerate_ > 0) job->countLeftOut("degenerate", degenerate_);
  if (refused_ > 0) job->countLeftOut("refused", refused_);
  if (unplaced_) {
    job->note(QObject::tr("Linhas com coordenadas sem lugar na projeção de destino não foram importadas"));
  }
  if (notFlat_ > 0) {
    job->note(QObject::tr("Linhas com alturas diferentes nos vértices, das quais vale a do último: %1")
                  .arg(notFlat_));
  }
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
  if (!readVertices()) return false;
  ++read_;
  return !isWorthInserting() || insert();
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

bool IEArcInfo::LineImport::isWorthInserting() {
  if (xy_.size() < 4) {
    ++fewPoints_;
  } else if (!transfer_.apply(xy_.data(), xy_.size() / 2)) {
    ++refused_;
    unplaced_ = true;
  } else if (xy_.size() == 4 && xy_[0] == xy_[2] && xy_[1] == xy_[3]) {
    ++degenerate_;
  } else {
    return true;
  }
  return false;
}

bool IEArcInfo::LineImport::insert() {
  std::unique_ptr<Line> line(new (std::nothrow) Line);
  if (line == nullptr) {
    outOfMemory("pLin = new Line");
    return false;
  }
  line->Type(type_);
  line->height = height_;
  line->assign(xy_.data(), static_cast<int>(xy_.size() / 2));
  if (vector_.Insert(*line, 1) == 0) {
    ++refused_;
    return true;
  }
  ++written_;
  notFlat_ += flat_ ? 0 : 1;
  // The line is the vector's now; giving it back at once keeps memory flat, however long the file is.
  giveBack(vector_, line.release());
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
