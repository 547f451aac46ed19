#include "lib/kml/feature_describer.h"

#include <algorithm>
#include <memory>

#include "base/number_text.h"

namespace kaldex {

namespace {

constexpr char kClass[] = "CLASSE";
constexpr char kLabel[] = "ROTULO";
constexpr char kCategory[] = "CATEGORIA";
constexpr char kHeight[] = "COTA";
constexpr int kHeightDigits = 9;  // of a float, so that it comes back

std::string utf8(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace

FeatureDescriber::FeatureDescriber(DataBase* dataBase, Vector& vector)
    : dataBase_(dataBase),
      vector_(vector),
      objects_(dataBase, vector.infoLayer()),
      hasHeights_(vector.representation() == vectorContours || vector.representation() == vectorSamples) {
  const InfoLayer* const layer = vector.infoLayer();
  if (layer != nullptr && layer->category() != nullptr) {
    for (const GeoClass* geoClass : layer->category()->classes) {
      classNames_.emplace(geoClass->id, utf8(geoClass->name));
    }
  }
  if (!objects_.isEmpty() && vector.anchorSet() != nullptr) loadAnchors();
}

void FeatureDescriber::loadAnchors() {
  for (Anchor* next = vector_.FirstAnchor(); next != nullptr; next = vector_.NextAnchor()) {
    const std::unique_ptr<Anchor> anchor(next);
    addPieces(points_, anchor->points, anchor->id);
    addPieces(lines_, anchor->lines, anchor->id);
    addPieces(polygons_, anchor->polygons, anchor->id);
  }
  for (Pieces* pieces : {&points_, &lines_, &polygons_}) sort(*pieces);
}

void FeatureDescriber::addPieces(Pieces& pieces, const std::vector<int>& ids, int anchor) {
  for (const int id : ids) pieces.push_back({id, anchor});
}

void FeatureDescriber::sort(Pieces& pieces) {
  std::sort(pieces.begin(), pieces.end(), [](const Piece& left, const Piece& right) {
    return left.id != right.id ? left.id < right.id : left.anchor < right.anchor;
  });
}

int FeatureDescriber::anchorOf(const Pieces& pieces, int id) {
  const auto found = std::lower_bound(pieces.begin(), pieces.end(), id,
                                      [](const Piece& piece, int wanted) { return piece.id < wanted; });
  if (found == pieces.end() || found->id != id) return 0;
  if (found + 1 != pieces.end() && (found + 1)->id == id) ++severalObjects_;
  return found->anchor;
}

int FeatureDescriber::polygonClass(int id) {
  if (classNames_.empty() || vector_.polygonSet() == nullptr) return 0;
  const auto known = polygonClasses_.find(id);
  if (known != polygonClasses_.end()) return known->second;
  const std::unique_ptr<SPolygon> polygon(vector_.polygonSet()->Get(id));
  return polygonClasses_[id] = polygon != nullptr ? polygon->classId : 0;
}

void FeatureDescriber::describe(const Line& line, KdxOgc::OgKMLPlacemark& placemark) {
  int anchor = anchorOf(lines_, line.id);
  int classId = line.classId;
  const bool oneSide = (line.leftPolygon > 0) != (line.rightPolygon > 0);
  if (anchor == 0 && classId == 0 && oneSide) {
    const int polygon = std::max(line.leftPolygon, line.rightPolygon);
    anchor = anchorOf(polygons_, polygon);
    classId = polygonClass(polygon);
  }
  const bool height = hasHeights_ && line.Type() != lineBreak;
  if (height) {
    std::string text;
    appendGeneral(text, static_cast<double>(line.height), kHeightDigits);
    placemark.describe({}, {{kHeight, text}});
    return;
  }
  tell(anchor, classId, placemark);
}

void FeatureDescriber::describe(const Point2d& point, KdxOgc::OgKMLPlacemark& placemark) {
  tell(anchorOf(points_, point.id), point.classId, placemark);
}

void FeatureDescriber::tell(int anchor, int classId, KdxOgc::OgKMLPlacemark& placemark) {
  if (anchor != 0 && useObject(anchor)) {
    placemark.describe(name_, data_);
    return;
  }
  const auto known = classNames_.find(classId);
  if (classId != 0 && known != classNames_.end()) {
    placemark.describe(known->second, {{kClass, known->second}});
  }
}

// Pieces of one object often follow each other.
bool FeatureDescriber::useObject(int anchor) {
  if (anchor == lastAnchor_) return true;
  KaldexObject object;
  Category* category = nullptr;
  if (!objects_.find(anchor, object, &category)) return false;
  lastAnchor_ = anchor;
  name_ = utf8(object.name);
  data_.clear();
  data_.emplace_back(kLabel, utf8(object.label));
  data_.emplace_back(kCategory, utf8(category->name));
  addAttributes(object, *category);
  return true;
}

void FeatureDescriber::addAttributes(const KaldexObject& object, const Category& category) {
  const SFieldList& fields = columns(category);
  if (fields.Size() < 2) return;
  if (dataBase_->readObjectAttributes(fields, cells_, category.attributeTable, object.id) == 0) return;
  // The first column is the key.
  for (int i = 1; i < fields.Size() && i < cells_.Size(); ++i) {
    const QString& value = cells_.at(i)->value();
    if (!value.isEmpty()) data_.emplace_back(utf8(fields.at(i)->name), utf8(value));
  }
}

const SFieldList& FeatureDescriber::columns(const Category& category) {
  const auto [known, isNew] = columns_.try_emplace(category.id);
  if (isNew && !category.attributeTable.isEmpty()) {
    dataBase_->loadTableFields(known->second, category.attributeTable);
  }
  return known->second;
}

}  // namespace kaldex
