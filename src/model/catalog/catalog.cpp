#include "kaldex/model/catalog.h"

#include <algorithm>

#include "kaldex/model/projection.h"

inline namespace kaldex_v1 {

namespace {

// Class identifiers travel through files as 16-bit numbers.
constexpr int kHighestClassId = 32767;

}  // namespace

QString modelName(short model) {
  switch (model) {
    case IMAGEMODEL:
      return QStringLiteral("IMAGEMODEL");
    case DIGITALMODEL:
      return QStringLiteral("DIGITALMODEL");
    case THEMATICMODEL:
      return QStringLiteral("THEMATICMODEL");
    case NETWORKMODEL:
      return QStringLiteral("NETWORKMODEL");
    case NOTSPACIALMODEL:
      return QStringLiteral("NOTSPACIALMODEL");
    case SYMBOLMODEL:
      return QStringLiteral("SYMBOLMODEL");
    case CADASTRALMODEL:
      return QStringLiteral("CADASTRALMODEL");
    case OBJECTMODEL:
      return QStringLiteral("OBJECTMODEL");
    default:
      return QStringLiteral("undefined MODEL");
  }
}

GeoClass::GeoClass(int id, const QString& name, short model, const QString& categoryName, int position,
                   GeoClass* category)
    : id(id), name(name), model(model), categoryName(categoryName), position(position) {
  auto* owner = dynamic_cast<Category*>(category);
  if (owner == nullptr) return;
  if (id == -1) {
    this->id = owner->drawClassId();
  } else {
    owner->lastClassId = std::max(owner->lastClassId, std::min(id, kHighestClassId));
  }
}

GeoClass::~GeoClass() = default;

void GeoClass::SetVisual(const GeneralVisual& visual) {
  this->visual.Init(&visual);
}

GeoClass* GeoClassList::SelectFromIndex(int id) {
  for (int position = 0; position < Size(); ++position) {
    if (at(position)->id == id) return Get(position);
  }
  return nullptr;
}

GeoClass* GeoClassList::findByName(const QString& name) const {
  for (GeoClass* geoClass : *this) {
    if (geoClass->name == name) return geoClass;
  }
  return nullptr;
}

Category::Category(int id, const QString& name, short model, const QString& parentName, int position,
                   GeoClass*)
    : GeoClass(id, name, model, parentName, position, nullptr) {}

Category::~Category() = default;

int Category::drawClassId() {
  if (lastClassId < kHighestClassId) return ++lastClassId;
  std::vector<bool> used(kHighestClassId + 1, false);
  for (const GeoClass* geoClass : classes) {
    if (geoClass->id > 0 && geoClass->id <= kHighestClassId) used[static_cast<size_t>(geoClass->id)] = true;
  }
  const auto free = std::find(used.begin() + 1, used.end(), false);
  return free == used.end() ? 0 : static_cast<int>(free - used.begin());
}

Category* CategoryList::Select(const QString& name) const {
  for (Category* category : *this) {
    if (category->name == name) return category;
  }
  return nullptr;
}

Category* CategoryList::Select(int id) const {
  for (Category* category : *this) {
    if (category->id == id) return category;
  }
  return nullptr;
}

Project::Project(int id, const QString& name, std::unique_ptr<SProjection> projection)
    : id(id), name(name), projection_(std::move(projection)) {}

Project::~Project() = default;

}  // namespace kaldex_v1
