#include <QObject>
#include <algorithm>
#include <memory>
#include <string>
#include <unordered_set>

#include "base/character_class.h"
#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_writer.h"
#include "lib/frame/anchor_objects.h"
#include "lib/frame/class_filter.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// Writes the label points of what has a class or an object. One export an object; the handler's file must be
/// open.
class IEArcInfo::LabelExport {
 public:
  LabelExport(IEArcInfo& handler, Vector& vector);
  ~LabelExport();

  int writeClasses(const Category& category, bool onlyUsed);
  int writeObjects();

 private:
  void writePolygonClasses();
  void writeLineClasses();
  void writePointClasses();
  bool takesClass(int id);
  void takeLabel(const QString& label);
  void writePieces(const Anchor& anchor);
  void writePolygon(SPolygon& polygon);
  void writeLine(Line& line);
  void write(const Point& place);
  bool goOn();

  IEArcInfo& handler_;
  Vector& vector_;
  Writer writer_;
  kaldex::ProgressScope progress_;
  std::unordered_set<int> classes_;
  std::string before_;  ///< what stands in front of the place
  long long written_ = 0;
  long long withoutPlace_ = 0;
  long long unreadable_ = 0;
};

IEArcInfo::LabelExport::LabelExport(IEArcInfo& handler, Vector& vector)
    : handler_(handler),
      vector_(vector),
      writer_(handler),
      progress_(kaldex::progressSteps(vector.lineCount() + vector.polygonCount() + vector.point2dCount())) {}

IEArcInfo::LabelExport::~LabelExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (written_ > 0) job->countWritten("labels", written_);
  if (withoutPlace_ > 0) job->countLeftOut("no_label_point", withoutPlace_);
  if (unreadable_ > 0) {
    job->note(QObject::tr("Rótulos vazios ou com espaços, que leitores deste formato não reconhecem: %1")
                  .arg(unreadable_));
  }
}

bool IEArcInfo::LabelExport::goOn() {
  progress_.step();
  return writer_.ok() && !progress_.cancelled();
}

void IEArcInfo::LabelExport::write(const Point& place) {
  writer_.label(before_, place);
  ++written_;
}

// --- Classes ---

int IEArcInfo::LabelExport::writeClasses(const Category& category, bool onlyUsed) {
  const kaldex::ClassFilter filter(onlyUsed, handler_.dataBase, vector_.infoLayer());
  for (const GeoClass* geoClass : category.classes) {
    if (filter.passes(geoClass->id)) classes_.insert(geoClass->id);
  }
  writePolygonClasses();
  writeLineClasses();
  writePointClasses();
  return writer_.finish(!progress_.cancelled());
}

bool IEArcInfo::LabelExport::takesClass(int id) {
  if (classes_.count(id) == 0) return false;
  before_.clear();
  kaldex::appendInt(before_, id);
  before_ += "  ";
  return true;
}

void IEArcInfo::LabelExport::writePolygonClasses() {
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && goOn();
       polygon = vector_.NextPolygon()) {
    if (takesClass(polygon->classId)) writePolygon(*polygon);
    giveBack(vector_, polygon);
  }
}

void IEArcInfo::LabelExport::writeLineClasses() {
  for (Line* line = vector_.FirstLine(); line != nullptr && goOn(); line = vector_.NextLine()) {
    if (takesClass(line->classId)) writeLine(*line);
    giveBack(vector_, line);
  }
}

void IEArcInfo::LabelExport::writePointClasses() {
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && goOn();
       point = vector_.NextPoint2d()) {
    if (takesClass(point->classId)) write(*point);
  }
}

void IEArcInfo::LabelExport::writePolygon(SPolygon& polygon) {
  Point place = polygon.labelPoint;
  if (place.isUnset()) {
    // What an export finds is no change of the layer's.
    const short changed = polygon.changed;
    const int id = polygon.id;
    polygon.LabelPointGeneration();
    place = polygon.labelPoint;
    polygon.labelPoint = Point::unset();
    polygon.changed = changed;
    vector_.GetPolygon(id);
  }
  if (place.x < kUnsetLimit && place.y < kUnsetLimit) {
    write(place);
  } else {
    ++withoutPlace_;
  }
}

void IEArcInfo::LabelExport::writeLine(Line& line) {
  line.UpdateLabelPoint();
  if (line.labelPoint.isUnset()) {
    ++withoutPlace_;
  } else {
    write(line.labelPoint);
  }
}

// --- Objects ---

int IEArcInfo::LabelExport::writeObjects() {
  const kaldex::AnchorObjects objects(handler_.dataBase, vector_.infoLayer());
  if (vector_.anchorSet() != nullptr && !objects.isEmpty()) {
    KaldexObject object;
    for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
      const std::unique_ptr<Anchor> anchor(next);
      if (!goOn()) break;
      if (!objects.find(anchor->id, object)) continue;
      takeLabel(object.label);
      writePieces(*anchor);
    }
  }
  return writer_.finish(!progress_.cancelled());
}

// A label is one word of one line: what breaks the line would break the whole file.
void IEArcInfo::LabelExport::takeLabel(const QString& label) {
  before_ = writer_.text(label).toStdString();
  std::replace_if(before_.begin(), before_.end(), kaldex::isBlankCharacter, ' ');
  const bool readable = !before_.empty() && before_.find(' ') == std::string::npos;
  unreadable_ += readable ? 0 : 1;
  before_ += "  ";
}

void IEArcInfo::LabelExport::writePieces(const Anchor& anchor) {
  for (const int id : anchor.polygons) {
    SPolygon* const polygon = vector_.GetPolygon(id);
    if (polygon == nullptr) continue;
    writePolygon(*polygon);
    giveBack(vector_, polygon);
  }
  for (const int id : anchor.lines) {
    Line* const line = vector_.GetLine(id);
    if (line == nullptr) continue;
    writeLine(*line);
    giveBack(vector_, line);
  }
  for (const int id : anchor.points) {
    if (const Point2d* const point = vector_.GetPoint2d(id)) write(*point);
  }
}

int IEArcInfo::ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportLabelPoints");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (category == nullptr) return invalidArgument("cat");
    if (!openFile("w+")) return 0;
    LabelExport work(*this, *vec);
    return category->model == THEMATICMODEL ? work.writeClasses(*category, onlyUsedClasses != 0)
                                            : work.writeObjects();
  });
}

}  // namespace kaldex_v1
