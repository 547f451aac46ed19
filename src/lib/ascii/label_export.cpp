#include "lib/ascii/label_export.h"

#include <QObject>
#include <memory>

#include "kaldex/job_report.h"
#include "lib/ascii/header_writer.h"

inline namespace kaldex_v1 {

namespace {

constexpr char kNoLabelPoint[] = " ; ***pol.erro***";

}  // namespace

bool IEAsc::LabelExport::accepts(const Vector* vec, const Category* category) {
  if (vec == nullptr) invalidArgument("vec");
  if (category == nullptr) invalidArgument("cat");
  if (vec == nullptr || category == nullptr) return false;
  return vec->representation() == vectorLines || logicRestriction("No LINES in Vector") != 0;
}

IEAsc::LabelExport::LabelExport(IEAsc& handler, Vector& vector, Category& category)
    : handler_(handler),
      vector_(vector),
      category_(category),
      writer_(handler),
      progress_(kaldex::progressSteps(vector.lineCount() + vector.polygonCount())) {}

IEAsc::LabelExport::~LabelExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (polygonsRead_ > 0) job->countRead("polygons", polygonsRead_);
  if (linesRead_ > 0) job->countRead("lines", linesRead_);
  if (pointsRead_ > 0) job->countRead("points", pointsRead_);
  if (written_ > 0) job->countWritten("labels", written_);
  if (withoutPlace_ > 0) job->countLeftOut("no_label_point", withoutPlace_);
}

bool IEAsc::LabelExport::needsSeparator() {
  show(QObject::tr("opção <Separador: Nenhum> não disponível"));
  return false;
}

QByteArray IEAsc::LabelExport::baseName(int capacity) const {
  QByteArray name = handler_.dataFile.toLatin1().left(capacity - 1);
  int end = name.lastIndexOf('_');
  if (end < 0) end = name.lastIndexOf('.');
  if (end >= 0) name.truncate(end);
  return name;
}

// --- Header ---

void IEAsc::LabelExport::writeSeparator() {
  writer_.out().append("\nSEPARATOR ");
  writer_.out().append(handler_.separator);
  writer_.out().append('\n');
}

void IEAsc::LabelExport::writeFormat(const char* words) {
  const QString separator = QString::fromLatin1(handler_.separator);
  writer_.text(kaldex::filledIn(QString::fromUtf8(words), {separator, separator, separator, separator}));
}

void IEAsc::LabelExport::writeFields() {
  writeFormat(isThematic() ? "//Formato coordx %s coordy %s class_name"
                           : "//Formato coordx %s coordy %s label %s name %s category_obj");
}

void IEAsc::LabelExport::writeRow(std::initializer_list<const Color*> colours, const QString& name) {
  constexpr int width = 3;
  writer_.out().append('\n');
  for (const Color* colour : colours) {
    for (const short part : {colour->red, colour->green, colour->blue}) {
      writer_.out().append(QByteArray::number(part).rightJustified(width));
      writer_.out().append("  ");
    }
  }
  writer_.text(name);
}

// --- Records ---

void IEAsc::LabelExport::writePlace(const Point& place) {
  kaldex::CoordinateWriter& coordinates = writer_.coordinateWriter();
  const bool angles = handler_.coordFormat == 1;
  char between[16];
  if (isSeparated()) {
    const char* const blanks = angles ? " " : "  ";
    qsnprintf(between, sizeof between, "%s%s%s", blanks, handler_.separator, blanks);
  } else {
    qstrncpy(between, angles ? "   " : "     ", sizeof between);
  }
  double xy[] = {place.x, place.y};
  coordinates.convert(xy, 1);
  writer_.out().append(angles ? "\n " : "\n");
  coordinates.print(xy, between);
  ++written_;
}

void IEAsc::LabelExport::writeField(const QString& value) {
  writeField(QByteArray());
  writer_.text(value);
}

void IEAsc::LabelExport::writeField(const QByteArray& value) {
  writer_.out().append(' ');
  writer_.out().append(handler_.separator);
  writer_.out().append(' ');
  writer_.out().append(value);
}

void IEAsc::LabelExport::writeKeyword(const char* keyword, const QString& value) {
  writer_.out().append('\n');
  writer_.out().append(keyword);
  writer_.out().append('"');
  writer_.text(value);
  writer_.out().append('"');
}

void IEAsc::LabelExport::writeClass(const Point& place, const QString& name) {
  if (!isSeparated()) writeKeyword("CLASS_NAME   ", name);
  writePlace(place);
  if (isSeparated()) writeField(name);
}

// --- Walks ---

void IEAsc::LabelExport::visitPolygons(const std::function<void(SPolygon&)>& visit) {
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && wantsMore();
       polygon = vector_.NextPolygon()) {
    progress_.step();
    visit(*polygon);
    giveBack(vector_, polygon);
  }
}

void IEAsc::LabelExport::visitLines(const std::function<void(Line&)>& visit) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    progress_.step();
    if (line->Size() > 1) visit(*line);
    giveBack(vector_, line);
  }
}

void IEAsc::LabelExport::visitAnchors(const std::function<void(const Anchor&, const Identity&)>& visit) {
  if (vector_.anchorSet() == nullptr) return;
  loadObjects();
  Identity identity;
  for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
    const std::unique_ptr<Anchor> anchor(next);
    if (!wantsMore()) return;
    progress_.step();
    if (identify(anchor->id, identity)) visit(*anchor, identity);
  }
}

void IEAsc::LabelExport::visitPolygons(const Anchor& anchor, const std::function<void(SPolygon&)>& visit) {
  for (const int id : anchor.polygons) {
    SPolygon* const polygon = vector_.GetPolygon(id);
    if (polygon == nullptr) continue;
    visit(*polygon);
    giveBack(vector_, polygon);
  }
}

void IEAsc::LabelExport::visitLines(const Anchor& anchor, const std::function<void(Line&)>& visit) {
  for (const int id : anchor.lines) {
    Line* const line = vector_.GetLine(id);
    if (line == nullptr) continue;
    visit(*line);
    giveBack(vector_, line);
  }
}

// --- Label points ---

bool IEAsc::LabelExport::labelOf(SPolygon& polygon, Point& place) {
  if (polygon.labelPoint.isUnset()) {
    // What an export finds is no change of the layer's.
    const short changed = polygon.changed;
    const int id = polygon.id;
    polygon.LabelPointGeneration();
    place = polygon.labelPoint;
    polygon.labelPoint = Point::unset();
    polygon.changed = changed;
    vector_.GetPolygon(id);
  } else {
    place = polygon.labelPoint;
  }
  return place.x < kUnsetLimit && place.y < kUnsetLimit;
}

Point IEAsc::LabelExport::labelOrVertex(SPolygon& polygon, const char*& mark) {
  Point place;
  mark = "";
  if (labelOf(polygon, place)) return place;
  mark = kNoLabelPoint;
  Line* const line = polygon.FirstLine();
  if (line == nullptr) return place;
  if (const Point* const vertex = line->First()) place = *vertex;
  giveBack(vector_, line);
  return place;
}

Point IEAsc::LabelExport::labelOf(Line& line) {
  line.UpdateLabelPoint();
  return line.labelPoint;
}

// --- Classes and objects ---

void IEAsc::LabelExport::chooseClasses(bool onlyUsed, bool listed) {
  for (const GeoClass* geoClass : category_.classes) {
    const bool wanted =
        !onlyUsed || (listed && handler_.dataBase != nullptr && handler_.infoLayer != nullptr &&
                      handler_.dataBase->classInLayer(*handler_.infoLayer, geoClass->id));
    if (!wanted) continue;
    chosen_.push_back(geoClass);
    byId_.emplace(geoClass->id, geoClass);
  }
}

const GeoClass* IEAsc::LabelExport::chosenClass(int id) const {
  const auto found = byId_.find(id);
  return id != 0 && found != byId_.end() ? found->second : nullptr;
}

void IEAsc::LabelExport::loadObjects() {
  objects_.emplace(handler_.dataBase, handler_.infoLayer);
}

bool IEAsc::LabelExport::identify(int anchorId, Identity& identity) {
  KaldexObject object;
  Category* category = nullptr;
  if (!objects_.has_value() || !objects_->find(anchorId, object, &category)) return false;
  identity.name = object.name;
  identity.label = object.label == QLatin1String("label") ? object.name : object.label;
  identity.category = category->name;
  return true;
}

}  // namespace kaldex_v1
