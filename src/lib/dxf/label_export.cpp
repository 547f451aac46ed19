#include <memory>
#include <unordered_map>

#include "base/tracer.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"
#include "lib/dxf/drawing_export.h"
#include "lib/frame/anchor_objects.h"

inline namespace kaldex_v1 {

/// Writes the names of classes, or the labels of objects, as texts at the places of what has them.
class IEDXF::LabelExport : private IEDXF::DrawingExport {
 public:
  LabelExport(IEDXF& handler, Vector& vector, Category& category)
      : DrawingExport(handler, kLabelDecimals),
        progress_(kaldex::progressSteps(vector.lineCount() + vector.polygonCount() + vector.point2dCount())),
        vector_(vector),
        category_(category) {}
  ~LabelExport();

  int exportClasses(bool onlyUsed);
  int exportObjects();

 private:
  using Names = std::unordered_map<int, QString>;
  Names chosenClasses(bool onlyUsed) const;
  void writePolygonClasses(const Names& names);
  void writeLineClasses(const Names& names);
  void writePointClasses(const Names& names);
  void writeAnchor(const Anchor& anchor, const QString& label);

  void writePolygon(SPolygon& polygon, const QString& label);
  void writeLine(Line& line, const QString& label);
  void write(const Point& place, const QString& label);

  kaldex::ProgressScope progress_;
  Vector& vector_;
  Category& category_;
  long long read_ = 0;
  long long written_ = 0;
  long long empty_ = 0;
  long long withoutPlace_ = 0;
};

IEDXF::LabelExport::~LabelExport() {
  kaldex::reportRead("labels", read_);
  kaldex::reportWritten("labels", written_);
  kaldex::reportLeftOut("no_label_point", withoutPlace_);
  kaldex::noteEmptyTexts(empty_);
}

// --- Texts ---

void IEDXF::LabelExport::write(const Point& place, const QString& label) {
  kaldex::DrawingOutput::TextLook look;
  look.height = 60.0;
  look.plainAngle = true;
  if (place.isUnset()) {
    ++withoutPlace_;
  } else if (label.trimmed().isEmpty()) {
    ++empty_;
  } else {
    writeText(place, label, look);
    ++written_;
  }
}

void IEDXF::LabelExport::writePolygon(SPolygon& polygon, const QString& label) {
  ++read_;
  if (!polygon.labelPoint.isUnset()) {
    write(polygon.labelPoint, label);
    return;
  }
  // What an export finds is no change of the layer's.
  const short changed = polygon.changed;
  const int id = polygon.id;
  polygon.LabelPointGeneration();
  const Point place = polygon.labelPoint;
  polygon.labelPoint = Point::unset();
  polygon.changed = changed;
  vector_.GetPolygon(id);
  write(place, label);
}

void IEDXF::LabelExport::writeLine(Line& line, const QString& label) {
  ++read_;
  line.UpdateLabelPoint();
  write(line.labelPoint, label);
}

// --- Classes ---

int IEDXF::LabelExport::exportClasses(bool onlyUsed) {
  const Names names = chosenClasses(onlyUsed);
  begin();
  writePolygonClasses(names);
  writeLineClasses(names);
  writePointClasses(names);
  return finish();
}

IEDXF::LabelExport::Names IEDXF::LabelExport::chosenClasses(bool onlyUsed) const {
  Names names;
  DataBase* const base = handler_.dataBase;
  InfoLayer* const layer = vector_.infoLayer();
  const bool known = base != nullptr && layer != nullptr;
  for (const GeoClass* geoClass : category_.classes) {
    if (!onlyUsed || (known && base->classInLayer(*layer, geoClass->id)))
      names.emplace(geoClass->id, geoClass->name);
  }
  return names;
}

void IEDXF::LabelExport::writePolygonClasses(const Names& names) {
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && wantsMore();
       polygon = vector_.NextPolygon()) {
    progress_.step();
    const auto name = names.find(polygon->classId);
    if (name != names.end()) writePolygon(*polygon, name->second);
    giveBack(vector_, polygon);
  }
}

void IEDXF::LabelExport::writeLineClasses(const Names& names) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    progress_.step();
    const auto name = names.find(line->classId);
    if (name != names.end()) writeLine(*line, name->second);
    giveBack(vector_, line);
  }
}

void IEDXF::LabelExport::writePointClasses(const Names& names) {
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && wantsMore();
       point = vector_.NextPoint2d()) {
    progress_.step();
    const auto name = names.find(point->classId);
    if (name == names.end()) continue;
    ++read_;
    write(*point, name->second);
  }
}

// --- Objects ---

int IEDXF::LabelExport::exportObjects() {
  begin();
  const kaldex::AnchorObjects objects(handler_.dataBase, vector_.infoLayer());
  for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
    const std::unique_ptr<Anchor> anchor(next);
    if (!wantsMore()) break;
    progress_.step();
    KaldexObject object;
    if (objects.find(anchor->id, object)) writeAnchor(*anchor, object.label);
  }
  return finish();
}

void IEDXF::LabelExport::writeAnchor(const Anchor& anchor, const QString& label) {
  for (const int id : anchor.polygons) {
    SPolygon* const polygon = vector_.GetPolygon(id);
    if (polygon == nullptr) continue;
    writePolygon(*polygon, label);
    giveBack(vector_, polygon);
  }
  for (const int id : anchor.lines) {
    Line* const line = vector_.GetLine(id);
    if (line == nullptr) continue;
    writeLine(*line, label);
    giveBack(vector_, line);
  }
  for (const int id : anchor.points) {
    const Point2d* const point = vector_.GetPoint2d(id);
    if (point == nullptr) continue;
    ++read_;
    write(*point, label);
  }
}

int IEDXF::ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportLabelPoints");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (category == nullptr) return invalidArgument("cat");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    if (!openFile("w+")) return 0;
    LabelExport work(*this, *vec, *category);
    return category->model == THEMATICMODEL ? work.exportClasses(onlyUsedClasses != 0) : work.exportObjects();
  });
}

}  // namespace kaldex_v1
