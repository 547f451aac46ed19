#include <QObject>
#include <new>

#include "kaldex/model/database.h"
#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

namespace {
using kaldex::ImportStopped;
}

IEShp::ObjectMaker::ObjectMaker(IEShp& handler, AttributeSource& attributes, Vector& vector)
    : handler_(handler), attributes_(attributes), vector_(vector) {}

void IEShp::ObjectMaker::begin(int record) {
  ++counter_;
  const QString name = QStringLiteral("%1").arg(counter_, 9, 10, QLatin1Char('0'));
  anchor_.reset();
  anchorChanged_ = false;
  found_ = !attributes_.categoryIsNew() && find(name);
  if (!found_) create(name);
  attributes_.write(record, object_.id);
}

bool IEShp::ObjectMaker::find(const QString& name) {
  return handler_.dataBase->findObjectByName(name, attributes_.category(), object_) != 0;
}

void IEShp::ObjectMaker::create(const QString& name) {
  definition_.time = STime();
  definition_.category = &attributes_.category();
  definition_.name = name;
  definition_.label = name;
  if (handler_.dataBase->createObject(definition_, object_) == 0) throw ImportStopped{};
  ++made_;
}

void IEShp::ObjectMaker::take(const Point2d& point) {
  attach([&](Anchor& anchor) { anchor.InsertPoint(point); });
}

void IEShp::ObjectMaker::take(const Line& line) {
  attach([&](Anchor& anchor) { anchor.InsertLine(vector_.projection(), line); });
}

void IEShp::ObjectMaker::take(const SPolygon& polygon) {
  attach([&](Anchor& anchor) { anchor.InsertPolygon(polygon, vector_.projection()); });
}

template <class InsertPiece>
void IEShp::ObjectMaker::attach(InsertPiece insertPiece) {
  if (anchor_ == nullptr && found_) fetchAnchor();
  if (anchor_ != nullptr) {
    insertPiece(*anchor_);
    anchorChanged_ = true;
    return;
  }
  anchor_.reset(new (std::nothrow) Anchor);
  if (anchor_ == nullptr) stopWithoutAnchor();
  anchor_->SetVisual(attributes_.category().visual);
  insertPiece(*anchor_);
  if (vector_.Insert(*anchor_) == 0) throw ImportStopped{};
  if (handler_.dataBase->linkAnchor(*handler_.infoLayer, *anchor_, object_) == 0) throw ImportStopped{};
}

void IEShp::ObjectMaker::fetchAnchor() {
  const int id = handler_.dataBase->anchorOfObject(object_.id, *handler_.infoLayer);
  if (id == 0) return;
  AnchorSet* anchors = vector_.anchorSet();
  anchor_.reset(anchors == nullptr ? nullptr : anchors->Get(id));
  if (anchor_ == nullptr) stopWithoutAnchor();
}

void IEShp::ObjectMaker::stopWithoutAnchor() {
  show(QObject::tr("Erro de I/O.") + QObject::tr("Erro ao carregar âncora!"));
  throw ImportStopped{ImportStopped::Tell::nothing};
}

bool IEShp::ObjectMaker::end() {
  if (anchor_ == nullptr) return false;
  // An anchor of a single piece stands as it was inserted and linked.
  if (anchorChanged_) {
    vector_.anchorSet()->Update(*anchor_);
    handler_.dataBase->saveAnchor(*handler_.infoLayer, *anchor_);
  }
  anchor_.reset();
  return true;
}

}  // namespace kaldex_v1
