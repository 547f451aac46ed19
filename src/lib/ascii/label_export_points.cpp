#include <QObject>
#include <memory>
#include <vector>

#include "base/tracer.h"
#include "lib/ascii/label_export.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kBaseCapacity = 50;
constexpr int kNameCapacity = 50;
constexpr double kReach = 0.001;
constexpr char kNone[] = "Nenhuma";
}  // namespace

/// 2D points, with what they are or under names of their own.
class IEAsc::LabelExport::Points : public LabelExport {
 public:
  using LabelExport::LabelExport;

  int run(bool onlyUsed);
  int runGenerated();

 private:
  void writeHeader(bool withClasses);
  void writeClasses(bool onlyUsed);
  void writeObjects();
  void writeObjectsAt(const Point2d& point);
  void writeObject(const Point& place, const Identity& identity);
  void writeStranger(const Point& place);
  void writeNamed(const Point& place, const QByteArray& base, const QByteArray& name);
};

int IEAsc::LabelExport::Points::run(bool onlyUsed) {
  if (isThematic()) chooseClasses(onlyUsed, isSeparated());
  writeHeader(true);
  if (isThematic()) {
    writeClasses(onlyUsed);
  } else {
    writeObjects();
  }
  return finish();
}

int IEAsc::LabelExport::Points::runGenerated() {
  writeHeader(false);
  const QByteArray base = baseName(kBaseCapacity);
  int number = 0;
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && wantsMore();
       point = vector_.NextPoint2d()) {
    progress_.step();
    ++pointsRead_;
    writeNamed(*point, base, base + QByteArray::number(++number));
  }
  return finish();
}

void IEAsc::LabelExport::Points::writeHeader(bool withClasses) {
  writer_.begin("POINT2D", QObject::tr("//Ponto 2D e Identificadores se Ponto Classificado"));
  if (isSeparated()) {
    writeSeparator();
    if (withClasses && isThematic()) {
      writer_.out().append(
          "//Formato THEMACLASS <ptcolorR> <ptcolorG> <ptcolorB> <nameclass> (PARAMETRO OPCIONAL)"
          "\nTHEMACLASS");
      for (const GeoClass* geoClass : chosen()) writeRow({&geoClass->visual.point.color}, geoClass->name);
      writer_.out().append('\n');
    }
    writeFields();
  }
  writer_.endHeader();
}

void IEAsc::LabelExport::Points::writeClasses(bool onlyUsed) {
  QString name;
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr && wantsMore();
       point = vector_.NextPoint2d()) {
    progress_.step();
    const GeoClass* const geoClass = chosenClass(point->classId);
    if (geoClass == nullptr && onlyUsed) continue;
    ++pointsRead_;
    // A class that nobody knows leaves the name of the point before.
    if (geoClass != nullptr) name = geoClass->name.left(kNameCapacity - 1);
    if (point->classId == 0) name = QString::fromLatin1(kNone);
    writeClass(*point, name);
  }
}

// The points are copied first: the search for objects goes through the same store as the walk.
void IEAsc::LabelExport::Points::writeObjects() {
  if (vector_.anchorSet() != nullptr) loadObjects();
  std::vector<Point2d> points;
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr; point = vector_.NextPoint2d()) {
    points.push_back(*point);
  }
  for (const Point2d& point : points) {
    if (!wantsMore()) return;
    progress_.step();
    ++pointsRead_;
    writeObjectsAt(point);
  }
}

void IEAsc::LabelExport::Points::writeObjectsAt(const Point2d& point) {
  const Box around(point.x - kReach, point.y - kReach, point.x + kReach, point.y + kReach);
  AnchorList anchors(List::Ownership::owns);
  if (vector_.Anchors(around, anchors, 1, 0, 0) == 0) return writeStranger(point);
  Identity identity;
  for (const Anchor* anchor : anchors) {
    if (identify(*anchor, identity)) writeObject(point, identity);
  }
}

void IEAsc::LabelExport::Points::writeObject(const Point& place, const Identity& identity) {
  if (!isSeparated()) {
    writeKeyword("CATEGORY_OBJ  ", identity.category);
    writeKeyword("LABEL  ", identity.label);
    writeKeyword("NAME   ", identity.name);
  }
  writePlace(place);
  if (!isSeparated()) return;
  for (const QString& value : {identity.label, identity.name, identity.category}) writeField(value);
}

void IEAsc::LabelExport::Points::writeStranger(const Point& place) {
  const QString none = QString::fromLatin1(kNone);
  if (!isSeparated()) writeKeyword("LABEL   ", none);
  writePlace(place);
  if (isSeparated()) writeField(none);
}

void IEAsc::LabelExport::Points::writeNamed(const Point& place, const QByteArray& base,
                                            const QByteArray& name) {
  if (isThematic()) return writeClass(place, QString::fromLatin1(name));
  if (!isSeparated()) {
    writeKeyword("CATEGORY_OBJ   ", QString::fromLatin1(base));
    writeKeyword("LABEL   ", QString::fromLatin1(name));
    return writePlace(place);
  }
  writePlace(place);
  for (const QByteArray& value : {name, QByteArray(), base}) writeField(value);
}

int IEAsc::ExportPoints(Vector* vec, Category* category, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportPoints");
  return LabelExport::run<LabelExport::Points>(
      *this, vec, category, [&](LabelExport::Points& work) { return work.run(onlyUsedClasses != 0); });
}

int IEAsc::ExportPointsAuto(Vector* vec, Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportPointsAuto");
  return LabelExport::run<LabelExport::Points>(*this, vec, category,
                                               [](LabelExport::Points& work) { return work.runGenerated(); });
}

}  // namespace kaldex_v1
