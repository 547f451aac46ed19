#include "lib/ascii/point_objects.h"

#include <QObject>
#include <new>

inline namespace kaldex_v1 {

namespace {

// Columns of an association table.
constexpr int kObjectColumn = 0;
constexpr int kAnchorColumn = 2;
constexpr int kVisualColumn = 3;

QString fromLatin1(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

}  // namespace

IEAsc::PointObjects::PointObjects(IEAsc& handler, Vector& vector)
    : handler_(handler),
      vector_(vector),
      base_(*handler.dataBase),
      layer_(*handler.infoLayer),
      shelf_([this](const Anchor& anchor, int) { storeAnchor(anchor); }) {}

IEAsc::PointObjects::~PointObjects() = default;

bool IEAsc::PointObjects::open() {
  const QString table = layer_.associationTable();
  if (!base_.tableExists(table) && base_.createLayerAssociationTable(layer_.id) == 0) return false;
  const auto rows = base_.selectRecords(table, QStringLiteral("*"), QString(), QString(), QString());
  for (; !rows->atEnd(); rows->next()) {
    const int anchor = rows->integer(kAnchorColumn);
    anchors_.emplace(rows->integer(kObjectColumn), anchor);
    visuals_.emplace(anchor, rows->integer(kVisualColumn));
  }
  return true;
}

bool IEAsc::PointObjects::take(const Point2d& point, const std::string& label, const std::string& name,
                               const std::string& category) {
  if (!selectCategory(category)) return true;
  if (label != label_ && !selectObject(label, name)) return true;
  if (anchor_ == nullptr) {
    const auto known = anchors_.find(object_.id);
    if (known == anchors_.end()) return makeAnchor(point);
    if (!fetchAnchor(known->second)) return false;
    if (anchor_ == nullptr) return true;
  }
  addToAnchor(point);
  return true;
}

// False when the record goes no further.
bool IEAsc::PointObjects::selectCategory(const std::string& name) {
  if (category_ != nullptr && name == categoryName_) return true;
  anchor_ = nullptr;
  label_.clear();
  category_ = nullptr;
  if (refused_.count(name) != 0) return false;
  const QString text = fromLatin1(name);
  category_ = base_.GetKaldexObjCategory().Select(text);
  categoryName_ = name;
  // Asking again for every point would leave a user who doesn't want the category no way out.
  if (category_ == nullptr && !handler_.offerToMakeCategory(text, category_)) refused_.insert(name);
  return category_ != nullptr;
}

bool IEAsc::PointObjects::selectObject(const std::string& label, const std::string& name) {
  anchor_ = nullptr;
  label_.clear();
  const QString text = fromLatin1(label);
  if (base_.findObjectByLabel(text, *category_, object_) == 0) {
    ObjectDefinition definition;
    definition.category = category_;
    definition.name = fromLatin1(name);
    definition.label = text;
    definition.time = STime();
    if (base_.createObject(definition, object_) == 0) return false;
    ++counts_.objects;
  }
  label_ = label;
  return true;
}

bool IEAsc::PointObjects::makeAnchor(const Point2d& point) {
  if (point.id == 0) return true;
  std::unique_ptr<Anchor> anchor(new (std::nothrow) Anchor);
  if (anchor == nullptr) {
    outOfMemory("anchor = new Anchor");
    return false;
  }
  GeneralVisual visual;
  const bool own = object_.visualId != category_->visual.id && loadVisual(object_.visualId, visual);
  anchor->SetVisual(own ? visual : category_->visual);
  if (anchor->InsertPoint(point) == 0) return true;
  ++counts_.associated;
  if (vector_.Insert(*anchor) == 0 || base_.linkAnchor(layer_, *anchor, object_) == 0) return true;
  anchors_.emplace(object_.id, anchor->id);
  visuals_.emplace(anchor->id, anchor->visualId);
  anchor_ = &shelf_.put(std::move(anchor), object_.id);
  return true;
}

// Without an anchor the record goes no further; without its visual the import ends.
bool IEAsc::PointObjects::fetchAnchor(int id) {
  anchor_ = shelf_.find(id);
  if (anchor_ != nullptr) return true;
  AnchorSet* const anchors = vector_.anchorSet();
  std::unique_ptr<Anchor> stored(anchors != nullptr ? anchors->Get(id) : nullptr);
  if (stored == nullptr) {
    show(QObject::tr("Erro ao carregar âncora!"));
    return true;
  }
  GeneralVisual visual;
  if (!loadVisual(visuals_[id], visual)) {
    show(QObject::tr("Erro ao carregar visual do objeto (âncora)!"));
    return false;
  }
  stored->SetVisual(visual);
  anchor_ = &shelf_.put(std::move(stored), object_.id);
  return true;
}

void IEAsc::PointObjects::addToAnchor(const Point2d& point) {
  if (point.id == 0) return;
  if (!shelf_.take(*anchor_, kaldex::AnchorShelf::Kind::point, point.id)) {
    ++counts_.already;
  } else if (anchor_->anchor->InsertPoint(point) != 0) {
    ++counts_.associated;
    anchor_->changed = true;
  }
}

void IEAsc::PointObjects::storeAnchor(const Anchor& anchor) {
  vector_.anchorSet()->Update(anchor);
  base_.saveAnchor(layer_, anchor);
}

void IEAsc::PointObjects::close() {
  anchor_ = nullptr;
  shelf_.storeAll();
}

bool IEAsc::PointObjects::loadVisual(int id, GeneralVisual& visual) const {
  return id > 0 && base_.loadVisual(id, visual) != 0;
}

}  // namespace kaldex_v1
