#include <QObject>
#include <algorithm>

#include "kaldex/model/report.h"
#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

namespace {
constexpr short kClockwise = 1;
constexpr int kNoPolygon = -1;
}  // namespace

void IEShp::CleanedPolygonImport::run() {
  while (shapes_.next()) {
    beginObject();
    takeRecord();
    endObject();
  }
  if (!fathers_.empty()) placeHeldRings();
}

void IEShp::CleanedPolygonImport::takeRecord() {
  lastOuter_ = 0;
  held_.clear();
  for (int part = 0; part < shapes_.partCount(); ++part) {
    std::unique_ptr<Line> ring = ringOf(part);
    if (ring == nullptr) continue;
    if (shapes_.partCount() == 1) {
      takeOuter(std::move(ring));
      continue;
    }
    double area = 0.0;
    calcula_area(ring.get(), &area);
    if (area == 0.0) {
      ++tally_.degenerate;
    } else if (isClockwise(*ring)) {
      takeOuter(std::move(ring));
    } else {
      held_.emplace_back(ring->coordinates(), ring->coordinates() + 2 * ring->Size());
    }
  }
  assignHeldRings();
}

bool IEShp::CleanedPolygonImport::isClockwise(Line& ring) {
  SPolygon polygon;
  polygon.SetPoints(&ring);
  const bool clockwise = polygon.Orientation() == kClockwise;
  polygon.SetPoints(nullptr);
  return clockwise;
}

void IEShp::CleanedPolygonImport::takeOuter(std::unique_ptr<Line> ring) {
  Line* line = insert(std::move(ring));
  if (line == nullptr) return;
  SPolygon* polygon = polygonOf(line, objects != nullptr);
  if (polygon == nullptr) return;
  line->leftPolygon = polygon->id;
  line->rightPolygon = kNoPolygon;
  if (objects != nullptr) objects->take(*polygon);
  lastOuter_ = polygon->id;
  giveBack(polygon);
  giveBackChanged(line);
}

// The last outer ring of a record takes all its holes.
void IEShp::CleanedPolygonImport::assignHeldRings() {
  if (held_.empty()) return;
  if (lastOuter_ != 0) {
    fathers_.push_back({lastOuter_, std::move(held_)});
  } else {
    for (const HeldRing& ring : held_) takeUnplaced(ring);
  }
  held_.clear();
}

// A record of holes alone: they stay as polygons of their own rather than get lost.
void IEShp::CleanedPolygonImport::takeUnplaced(const HeldRing& ring) {
  Line* line = insert(newLine(ring.data(), static_cast<int>(ring.size() / 2)));
  if (line == nullptr) return;
  SPolygon* polygon = polygonOf(line, false);
  if (polygon == nullptr) return;
  ++tally_.unplacedHoles;
  line->leftPolygon = polygon->id;
  giveBack(polygon);
  giveBackChanged(line);
}

void IEShp::CleanedPolygonImport::placeHeldRings() {
  SGError->ProgressSetRange(0, static_cast<int>(fathers_.size()), 1);
  for (Father& father : fathers_) {
    if (cancelled()) throw kaldex::ImportStopped{kaldex::ImportStopped::Tell::nothing};
    placeRingsOf(father);
    father.rings = {};
    SGError->ProgressStep();
  }
}

void IEShp::CleanedPolygonImport::placeRingsOf(Father& record) {
  SPolygon* father = vector_.GetPolygon(record.polygonId);
  if (father == nullptr) return;
  sons_.clear();
  sonLines_.clear();
  for (const HeldRing& ring : record.rings) placeRing(*father, ring);
  if (objects != nullptr) father->LabelPointGeneration();
  father->processed = true;
  markChanged(*father);
  giveBack(father);
  for (SPolygon* son : sons_) giveBack(son);
  for (Line* line : sonLines_) giveBackChanged(line);
}

void IEShp::CleanedPolygonImport::placeRing(SPolygon& father, const HeldRing& held) {
  std::unique_ptr<Line> ring = newLine(held.data(), static_cast<int>(held.size() / 2));
  const auto [line, polygon] = findDuplicate(father, *ring);
  if (polygon != nullptr) {
    takeDuplicate(father, polygon, line);
  } else {
    takeHole(father, std::move(ring));
  }
}

// The polygon that fills the hole, with its line. A polygon fills one hole at most, and not that of its own
// ring.
std::pair<Line*, SPolygon*> IEShp::CleanedPolygonImport::findDuplicate(const SPolygon& father,
                                                                       const Line& ring) {
  std::unique_ptr<Line> start = newLine(ring.coordinates(), 2);
  start->UpdateBox();
  LineList near;
  vector_.Lines(start->box, near);
  std::pair<Line*, SPolygon*> found(nullptr, nullptr);
  for (Line* line : near) {
    SPolygon* polygon = found.second == nullptr ? fillingPolygon(*line, father, ring) : nullptr;
    if (polygon != nullptr) {
      found = {line, polygon};
    } else if (sonLines_.count(line) == 0) {
      IEShp::giveBack(vector_, line);
    }
  }
  return found;
}

SPolygon* IEShp::CleanedPolygonImport::fillingPolygon(const Line& line, const SPolygon& father,
                                                      const Line& ring) {
  if (line.leftPolygon <= 0 || line.leftPolygon == father.id || !line.Equal(ring)) return nullptr;
  SPolygon* polygon = vector_.GetPolygon(line.leftPolygon);
  if (polygon == nullptr || polygon->parentId <= 0) return polygon;
  if (std::find(sons_.begin(), sons_.end(), polygon) == sons_.end()) giveBack(polygon);
  return nullptr;
}

void IEShp::CleanedPolygonImport::takeDuplicate(SPolygon& father, SPolygon* son, Line* existing) {
  ++tally_.duplicates;
  existing->rightPolygon = father.id;
  keep(son, existing);
  place(father, *son);
}

void IEShp::CleanedPolygonImport::takeHole(SPolygon& father, std::unique_ptr<Line> ring) {
  Line* line = insert(std::move(ring));
  if (line == nullptr) return;
  SPolygon* son = polygonOf(line, false);
  if (son == nullptr) return;
  ++holes_;
  line->leftPolygon = son->id;
  line->rightPolygon = father.id;
  keep(son, line);
  place(father, *son);
}

void IEShp::CleanedPolygonImport::keep(SPolygon* son, Line* line) {
  sons_.push_back(son);
  sonLines_.insert(line);
}

void IEShp::CleanedPolygonImport::tell() {
  QString counts = QObject::tr("Polig.internos duplicados limpos=%ld \"buracos\" importados=%ld");
  const QString number = QStringLiteral("%ld");
  counts.replace(counts.indexOf(number), number.size(), QString::number(tally_.duplicates));
  counts.replace(counts.indexOf(number), number.size(), QString::number(holes_));
  show(QObject::tr("Sumário:") + QLatin1Char('\n') + counts);
}

}  // namespace kaldex_v1
