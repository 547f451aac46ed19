#include <QObject>
#include <algorithm>
#include <cmath>
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

/// Which anchors have a point within reach of a place. What an anchor has may lie anywhere, so that a search
/// through the anchors around a place would look at all points of most of them.
class AnchorsOfPlaces {
 public:
  /// `points` in ascending identifier; borrowed.
  explicit AnchorsOfPlaces(const std::vector<Point2d>& points) : points_(points) {}

  void add(const Anchor& anchor);
  /// To be called before the search.
  void sort() { std::sort(places_.begin(), places_.end(), before); }
  /// In ascending identifier, into `anchors`.
  void find(const Point& place, std::vector<int>& anchors) const;

 private:
  /// Cells as large as the reach: what is within reach lies in the place's own or in one beside it.
  struct Place {
    double column;
    double row;
    const Point2d* point;
    int anchor;
  };
  static double cell(double coordinate) { return std::floor(coordinate / kReach); }
  static bool before(const Place& one, const Place& other) {
    return one.column != other.column ? one.column < other.column : one.row < other.row;
  }

  const std::vector<Point2d>& points_;
  std::vector<Place> places_;
};

void AnchorsOfPlaces::add(const Anchor& anchor) {
  for (const int id : anchor.points) {
    const auto found = std::lower_bound(points_.begin(), points_.end(), id,
                                        [](const Point2d& point, int wanted) { return point.id < wanted; });
    if (found == points_.end() || found->id != id) continue;
    places_.push_back({cell(found->x), cell(found->y), &*found, anchor.id});
  }
}

void AnchorsOfPlaces::find(const Point& place, std::vector<int>& anchors) const {
  anchors.clear();
  const Box around(place.x - kReach, place.y - kReach, place.x + kReach, place.y + kReach);
  const double row = cell(place.y);
  for (const double side : {-1.0, 0.0, 1.0}) {
    const double column = cell(place.x) + side;
    auto at = std::lower_bound(places_.begin(), places_.end(), Place{column, row - 1, nullptr, 0}, before);
    for (; at != places_.end() && at->column == column && at->row <= row + 1; ++at) {
      if (around.Contains(*at->point)) anchors.push_back(at->anchor);
    }
  }
  std::sort(anchors.begin(), anchors.end());
  anchors.erase(std::unique(anchors.begin(), anchors.end()), anchors.end());
}

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
  void gatherAnchors(AnchorsOfPlaces& anchors);
  void writeObjectsAt(const Point2d& point, const std::vector<int>& anchors);
  void writeObject(const Point& place, const Identity& identity);
  void writeStranger(const Point& place);
  void writeNamed(const Point& place, const QByteArray& base, const QByteArray& name);

  // Of the anchor that was met last: a neighbour often is the place of the same object.
  int identified_ = 0;
  bool hasIdentity_ = false;
  Identity identity_;
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

// The points are copied first, as neighbours are looked for among them.
void IEAsc::LabelExport::Points::writeObjects() {
  if (vector_.anchorSet() != nullptr) loadObjects();
  std::vector<Point2d> points;
  for (const Point2d* point = vector_.FirstPoint2d(); point != nullptr; point = vector_.NextPoint2d()) {
    points.push_back(*point);
  }
  AnchorsOfPlaces anchorsOfPlaces(points);
  gatherAnchors(anchorsOfPlaces);
  std::vector<int> anchors;
  for (const Point2d& point : points) {
    if (!wantsMore()) return;
    progress_.step();
    ++pointsRead_;
    anchorsOfPlaces.find(point, anchors);
    writeObjectsAt(point, anchors);
  }
}

void IEAsc::LabelExport::Points::gatherAnchors(AnchorsOfPlaces& anchors) {
  if (vector_.anchorSet() == nullptr) return;
  for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
    const std::unique_ptr<Anchor> anchor(next);
    if (!wantsMore()) return;
    anchors.add(*anchor);
  }
  anchors.sort();
}

void IEAsc::LabelExport::Points::writeObjectsAt(const Point2d& point, const std::vector<int>& anchors) {
  if (anchors.empty()) return writeStranger(point);
  for (const int anchor : anchors) {
    if (anchor != identified_) hasIdentity_ = identify(anchor, identity_);
    identified_ = anchor;
    if (hasIdentity_) writeObject(point, identity_);
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
