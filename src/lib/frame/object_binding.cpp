#include "lib/frame/object_binding.h"

#include <QObject>
#include <type_traits>

#include "base/tracer.h"

inline namespace kaldex_v1 {

namespace {

constexpr short kNode = 1;
constexpr short kWaiting = -999;

enum AssociationColumn { geoid, categoryId, anchorId, visualId, area, perimeter, impedance, demand };
constexpr const char* kKey = "geoid";

}  // namespace

SExtFormats::ObjectBinding::ObjectBinding(SExtFormats& handler, Vector& vector, InfoLayer& layer)
    : handler_(handler),
      vector_(vector),
      layer_(layer),
      base_(*handler.dataBase),
      categories_(base_.GetKaldexObjCategory()),
      cadastral_(layer.model() == CADASTRALMODEL),
      search_(vector, layer.scale),
      progress_(2 * handler.labelPoints.Size()),
      shelf_([this](const Anchor& anchor, int objectId) { storeAnchor(anchor, objectId); }) {}

int SExtFormats::ObjectBinding::run() {
  loadTable();
  const Outcome outcome = bindAll();
  shelf_.storeAll();
  if (outcome == Outcome::failed) progress_.leaveRunning();
  if (outcome != Outcome::bound) return 0;
  if (!cadastral_) {
    tally_.notAssociated = handler_.labelPoints.Size() - tally_.associated - tally_.alreadyAssociated;
  }
  rows_.reset();
  show(tally_.text());
  tally_.report(tally_.associated + tally_.alreadyAssociated);
  return 1;
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindAll() {
  if (LineSet* const lines = vector_.lineSet()) lines->LoadLines(nullptr);
  const Outcome outcome = bindNodesAndLines();
  if (LineSet* const lines = vector_.lineSet()) lines->DestroyLines();
  return outcome == Outcome::bound && cadastral_ ? bindPolygons() : outcome;
}

void SExtFormats::ObjectBinding::loadTable() {
  const QString table = layer_.associationTable();
  if (!base_.tableExists(table)) base_.createLayerAssociationTable(layer_.id);
  rows_ = base_.selectRecords(table, QStringLiteral("*"), QString(), QString(), QString());
  for (; !rows_->atEnd(); rows_->next()) {
    const int anchor = rows_->integer(anchorId);
    anchors_[rows_->integer(geoid)] = anchor;
    visuals_[anchor] = rows_->integer(visualId);
  }
}

// --- Nodes and lines ---

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindNodesAndLines() {
  for (SExtLabelPoint* labelPoint : handler_.labelPoints) {
    progress_.step();
    if (progress_.cancelled()) return Outcome::refused;
    if (labelPoint->Iclass != kWaiting || labelPoint->Coordinate() == nullptr) {
      ++tally_.notAssociated;
      continue;
    }
    const Outcome outcome = labelPoint->Nodes == kNode ? bindNode(*labelPoint) : bindLine(*labelPoint);
    if (outcome == Outcome::refused || outcome == Outcome::failed) return outcome;
  }
  return Outcome::bound;
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindNode(SExtLabelPoint& labelPoint) {
  const Point2d* const found = search_.findNode(*labelPoint.Coordinate());
  if (found == nullptr) return Outcome::passedOver;
  Point2d node(found->x, found->y);
  node.id = found->id;
  node.flag = 1;
  vector_.Insert(node);
  return bind(labelPoint, node);
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindLine(SExtLabelPoint& labelPoint) {
  Line* const line = search_.findLine(*labelPoint.Coordinate());
  if (line == nullptr) return Outcome::passedOver;
  // In a cadastral layer a label on a boundary is meant for the polygon.
  if (cadastral_ && kaldex::LabelSearch::isBoundary(*line)) {
    delete line;  // there may be as many as there are labels
    return Outcome::passedOver;
  }
  const Outcome outcome = bind(labelPoint, *line);
  if (outcome == Outcome::bound) {
    kaldex::label(*line, *labelPoint.Coordinate(), 0);
    line->Free(1);
  }
  return outcome;
}

// --- Polygons ---

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindPolygons() {
  for (SExtLabelPoint* labelPoint : handler_.labelPoints) {
    if (labelPoint->Iclass == 0 || labelPoint->Coordinate() == nullptr) continue;
    progress_.step();
    if (progress_.cancelled()) return Outcome::refused;
    const Outcome outcome = bindPolygon(*labelPoint);
    if (outcome == Outcome::refused || outcome == Outcome::failed) return outcome;
  }
  return Outcome::bound;
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bindPolygon(SExtLabelPoint& labelPoint) {
  SPolygon* const polygon = search_.findPolygon(*labelPoint.Coordinate());
  if (polygon == nullptr) {
    ++tally_.notAssociated;
    return Outcome::passedOver;
  }
  const Outcome outcome = bind(labelPoint, *polygon);
  if (outcome == Outcome::bound) kaldex::label(*polygon, *labelPoint.Coordinate(), 0);
  giveBack(vector_, polygon);
  return outcome;
}

// --- A place for an object ---

template <class Piece>
SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::bind(SExtLabelPoint& labelPoint,
                                                                     const Piece& piece) {
  Category* category = nullptr;
  Outcome outcome = findCategory(labelPoint.Nclass(), category);
  if (outcome != Outcome::bound) return outcome;
  KaldexObject object;
  if (!findOrMakeObject(labelPoint, *category, object)) return Outcome::refused;
  const auto known = anchors_.find(object.id);
  if (known != anchors_.end()) {
    outcome = addToAnchor(object, known->second, piece);
  } else {
    makeAnchor(object, *category, piece);
  }
  if (outcome == Outcome::bound) labelPoint.Iclass = 0;
  return outcome;
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::findCategory(const QString& name,
                                                                             Category*& category) {
  category = categories_.Select(name);
  if (category != nullptr) return Outcome::bound;
  if (!handler_.offerToMakeCategory(name, category)) return Outcome::refused;
  return category != nullptr ? Outcome::bound : Outcome::failed;
}

bool SExtFormats::ObjectBinding::findOrMakeObject(const SExtLabelPoint& labelPoint, Category& category,
                                                  KaldexObject& object) {
  if (base_.findObjectByLabel(labelPoint.Label(), category, object) != 0) return true;
  return base_.createObject({&category, labelPoint.Name(), labelPoint.Label(), STime()}, object) != 0;
}

template <class Piece>
SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::addToAnchor(const KaldexObject& object,
                                                                            int anchorId,
                                                                            const Piece& piece) {
  kaldex::AnchorShelf::Held* const held = fetchAnchor(object, anchorId);
  if (held == nullptr) return Outcome::failed;
  if (!shelf_.take(*held, kindOf(piece), piece.id)) {
    ++tally_.alreadyAssociated;
    return Outcome::bound;
  }
  if (insert(*held->anchor, piece) == 0) return Outcome::bound;
  ++tally_.associated;
  // Once its row was found, the anchor's further pieces are stored together.
  if (held->changed) return Outcome::bound;
  vector_.anchorSet()->Update(*held->anchor);
  const Outcome outcome = updateRow(object.id, *held->anchor);
  held->changed = outcome == Outcome::bound;
  constexpr bool isPolygon = std::is_same_v<Piece, SPolygon>;
  return isPolygon && outcome == Outcome::failed ? Outcome::passedOver : outcome;
}

kaldex::AnchorShelf::Held* SExtFormats::ObjectBinding::fetchAnchor(const KaldexObject& object, int anchorId) {
  if (kaldex::AnchorShelf::Held* const held = shelf_.find(anchorId)) return held;
  AnchorSet* const set = vector_.anchorSet();
  std::unique_ptr<Anchor> anchor(set != nullptr ? set->Get(anchorId) : nullptr);
  if (anchor == nullptr) {
    show(QObject::tr("Erro de I/O.") + QObject::tr("Erro ao carregar âncora!"));
    return nullptr;
  }
  const auto known = visuals_.find(anchorId);
  const GeneralVisual* const look = visual(known != visuals_.end() ? known->second : anchor->visualId);
  if (look == nullptr) {
    show(QObject::tr("Erro de I/O.") + QObject::tr("Erro ao carregar visual do objeto (âncora)!"));
    return nullptr;
  }
  anchor->SetVisual(*look);
  return &shelf_.put(std::move(anchor), object.id);
}

template <class Piece>
void SExtFormats::ObjectBinding::makeAnchor(const KaldexObject& object, const Category& category,
                                            const Piece& piece) {
  Anchor anchor;
  anchor.SetVisual(category.visual);
  if (insert(anchor, piece) == 0) return;
  ++tally_.associated;
  vector_.Insert(anchor);
  addRow(object, anchor);
  anchors_[object.id] = anchor.id;
}

const GeneralVisual* SExtFormats::ObjectBinding::visual(int id) {
  const auto known = loadedVisuals_.find(id);
  if (known != loadedVisuals_.end()) return &known->second;
  GeneralVisual loaded;
  if (base_.loadVisual(id, loaded) == 0) return nullptr;
  loaded.id = id;
  return &loadedVisuals_.emplace(id, loaded).first->second;
}

int SExtFormats::ObjectBinding::insert(Anchor& anchor, const Point2d& point) const {
  return anchor.InsertPoint(point);
}
int SExtFormats::ObjectBinding::insert(Anchor& anchor, const Line& line) const {
  return anchor.InsertLine(handler_.projection, line);
}
int SExtFormats::ObjectBinding::insert(Anchor& anchor, const SPolygon& polygon) const {
  return anchor.InsertPolygon(polygon, nullptr);
}

// --- The association table ---

void SExtFormats::ObjectBinding::storeAnchor(const Anchor& anchor, int objectId) {
  vector_.anchorSet()->Update(anchor);
  updateRow(objectId, anchor);
}

SExtFormats::ObjectBinding::Outcome SExtFormats::ObjectBinding::updateRow(int objectId,
                                                                          const Anchor& anchor) {
  if (!rows_->findRow(QString::fromLatin1(kKey), QString::number(objectId))) {
    show(QObject::tr("Erro de I/O.") + QObject::tr("Um possível erro no arquivo!"));
    return Outcome::failed;
  }
  rows_->edit();
  setMeasures(anchor);
  rows_->post();
  return Outcome::bound;
}

void SExtFormats::ObjectBinding::addRow(const KaldexObject& object, const Anchor& anchor) {
  rows_->addNew();
  rows_->setText(geoid, QStringLiteral("%1").arg(object.id));
  rows_->setText(categoryId, QStringLiteral("%1").arg(object.categoryId));
  rows_->setText(anchorId, QStringLiteral("%1").arg(anchor.id));
  rows_->setText(visualId, QStringLiteral("%1").arg(anchor.visualId));
  setMeasures(anchor);
  rows_->post();
}

// Anchors measure in the plane's units, the table holds metres.
void SExtFormats::ObjectBinding::setMeasures(const Anchor& anchor) {
  const double metres = search_.metresPerUnit();
  rows_->setText(area, QStringLiteral("%1").arg(anchor.area * metres * metres));
  rows_->setText(perimeter, QStringLiteral("%1").arg(anchor.perimeter * metres));
  rows_->setText(impedance, QStringLiteral("%1").arg(anchor.impedance));
  rows_->setText(demand, QStringLiteral("%1").arg(anchor.demand));
}

int SExtFormats::ClassifyObj(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::ClassifyObj");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    InfoLayer* const layer = infoLayer != nullptr ? infoLayer : vec->infoLayer();
    if (layer == nullptr) return invalidArgument("infoLayer");
    return ObjectBinding(*this, *vec, *layer).run();
  });
}

}  // namespace kaldex_v1
