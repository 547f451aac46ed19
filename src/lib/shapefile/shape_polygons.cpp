#include <QObject>
#include <new>

#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kFewestRingPoints = 4;
constexpr short kClockwise = 1;
constexpr short kInside = 2;
}  // namespace

std::unique_ptr<Line> IEShp::PolygonImport::ringOf(int part) {
  ++tally_.read;
  const int count = shapes_.partSize(part);
  if (count < kFewestRingPoints) {
    ++tally_.fewPoints;
    return nullptr;
  }
  return newLine(shapes_.xy() + 2 * shapes_.partStart(part), count);
}

SPolygon* IEShp::PolygonImport::polygonOf(Line* ring, bool withLabelPoint) {
  std::unique_ptr<SPolygon> polygon(new (std::nothrow) SPolygon);
  if (polygon == nullptr) {
    outOfMemory();
    throw kaldex::ImportStopped{};
  }
  if (polygon->AppendLine(ring) == 0) {
    show(QObject::tr("O objeto não foi encontrado no Banco de Dados!") + "ppol->AppendLine");
  }
  polygon->UpdatePerimeter(vector_.projection());
  polygon->UpdateArea(vector_.projection());
  if (withLabelPoint) polygon->LabelPointGeneration();
  if (vector_.Insert(*polygon) == 0) {
    ++tally_.refused;
    polygon.reset();
    giveBackChanged(ring);
    return nullptr;
  }
  ++tally_.polygons;
  return polygon.release();
}

void IEShp::PolygonImport::place(SPolygon& father, SPolygon& son) {
  if (father.AppendSon(&son, 1) == 0) {
    show(QObject::tr("Polígono Filho!"));
    throw kaldex::ImportStopped{};
  }
  son.processed = true;
  son.parentId = father.id;
  markChanged(son);
  father.area -= son.area;
  father.processed = true;
  markChanged(father);
}

void IEShp::PolygonImport::giveBack(SPolygon* polygon) {
  polygon->Free();
  if (!vector_.PolygonsInMemory()) delete polygon;
}

void IEShp::PolygonImport::markChanged(SPolygon& polygon) {
  if (polygon.changed != stateNew) polygon.changed = stateChanged;
}

void IEShp::NestedPolygonImport::run() {
  while (shapes_.next()) {
    beginObject();
    takeRecord();
    endObject();
  }
}

void IEShp::NestedPolygonImport::takeRecord() {
  outers_.clear();
  holes_.clear();
  for (int part = 0; part < shapes_.partCount(); ++part) takePart(part);
  for (Ring& hole : holes_) placeHole(hole);
  finishRecord();
}

void IEShp::NestedPolygonImport::takePart(int part) {
  std::unique_ptr<Line> ring = ringOf(part);
  if (ring == nullptr) return;
  Line* line = insert(std::move(ring));
  if (line == nullptr) return;
  SPolygon* polygon = polygonOf(line, false);
  if (polygon == nullptr) return;
  if (shapes_.partCount() == 1 || polygon->Orientation() == kClockwise) {
    outers_.push_back({line, polygon});
    line->leftPolygon = 0;
    line->rightPolygon = polygon->id;
    if (objects != nullptr) objects->take(*polygon);
  } else {
    holes_.push_back({line, polygon});
    line->leftPolygon = polygon->id;
  }
}

void IEShp::NestedPolygonImport::placeHole(Ring& hole) {
  SPolygon* father = fatherOf(hole);
  if (father == nullptr) {
    ++tally_.unplacedHoles;
    return;
  }
  place(*father, *hole.polygon);
  hole.line->rightPolygon = father->id;
}

SPolygon* IEShp::NestedPolygonImport::fatherOf(const Ring& hole) {
  if (outers_.empty()) return nullptr;
  if (outers_.size() == 1) return outers_.front().polygon;
  const double* xy = hole.line->coordinates();
  const Point probe(xy[0], xy[1]);
  for (const Ring& outer : outers_) {
    if (!outer.polygon->box.Contains(probe)) continue;
    outer.polygon->KeepPoints(1);
    if (outer.polygon->Inside(probe, 0.0f, nullptr, nullptr) == kInside) return outer.polygon;
  }
  return nullptr;
}

// Fathers go first: what is stored of them takes in the outlines of their holes, which the holes' lines hold.
void IEShp::NestedPolygonImport::finishRecord() {
  for (Ring& outer : outers_) {
    outer.polygon->LabelPointGeneration();
    outer.polygon->processed = true;
    markChanged(*outer.polygon);
    giveBack(outer.polygon);
  }
  for (Ring& hole : holes_) giveBack(hole.polygon);
  for (Ring& outer : outers_) giveBackChanged(outer.line);
  for (Ring& hole : holes_) giveBackChanged(hole.line);
}

}  // namespace kaldex_v1
