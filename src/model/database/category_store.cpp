#include "model/database/category_store.h"

#include <algorithm>

#include "model/database/catalogue_query.h"
#include "model/database/geopackage_schema.h"

namespace kaldex {

namespace {

GeoClass* classOf(const Category& category, int id) {
  for (GeoClass* geoClass : category.classes) {
    if (geoClass->id == id) return geoClass;
  }
  return nullptr;
}

bool hasAttributes(short model) {
  return model == OBJECTMODEL || model == NOTSPACIALMODEL;
}

}  // namespace

void CategoryStore::createTables() {
  SqliteConnection& connection = context_.connection;
  connection.execSchema(
      "CREATE TABLE kdx_categories (id INTEGER PRIMARY KEY, name TEXT NOT NULL, model INTEGER NOT NULL, "
      "parent TEXT, "
      "position INTEGER, attribute_table TEXT, visual_id INTEGER, last_class INTEGER, UNIQUE (name, model));"
      "CREATE TABLE kdx_classes (kdx_fid INTEGER PRIMARY KEY, category_id INTEGER NOT NULL, id INTEGER NOT "
      "NULL, name "
      "TEXT, model INTEGER, position INTEGER, visual_id INTEGER, UNIQUE (category_id, id));"
      "CREATE TABLE kdx_layer_visuals (kdx_fid INTEGER PRIMARY KEY, layer_id INTEGER NOT NULL, class_id "
      "INTEGER NOT "
      "NULL, visual_id INTEGER NOT NULL, UNIQUE (layer_id, class_id))");
  registerAttributeTable(connection, "kdx_categories", QStringLiteral("kdx_categories"),
                         QStringLiteral("Categories"));
  registerAttributeTable(connection, "kdx_classes", QStringLiteral("kdx_classes"),
                         QStringLiteral("Classes of the categories"));
  registerAttributeTable(connection, "kdx_layer_visuals", QStringLiteral("kdx_layer_visuals"),
                         QStringLiteral("Looks that classes have in single layers"));
}

void CategoryStore::load() {
  std::map<int, Stored> known;
  known.swap(stored_);
  CatalogueQuery all(
      context_.dataBase,
      QStringLiteral("SELECT id, name, model, parent, position, attribute_table, visual_id, last_class "
                     "FROM kdx_categories ORDER BY id"));
  all.run();
  while (all.next()) {
    Stored& stored = stored_[all.integer(0)];
    const auto old = known.find(all.integer(0));
    if (old != known.end()) {
      stored = std::move(old->second);
      known.erase(old);
    }
    readCategory(all, stored);
  }
  for (auto& [id, stored] : known) {
    stored.category->id = -1;
    fallen_.push_back(std::move(stored.category));
  }
  for (auto& [id, stored] : stored_) loadClasses(stored);
  rebuildLists();
}

void CategoryStore::readCategory(CatalogueQuery& row, Stored& stored) {
  if (stored.category == nullptr) {
    stored.category =
        std::make_unique<Category>(row.integer(0), QString(), row.small(2), QString(), 0, nullptr);
  }
  Category& category = *stored.category;
  category.name = row.text(1);
  category.model = row.small(2);
  category.categoryName = row.text(3);
  category.position = row.integer(4);
  category.attributeTable = row.text(5);
  stored.visualId = row.integer(6);
  stored.drawn = row.integer(7);
  category.lastClassId = std::max(category.lastClassId, stored.drawn);
  visuals_.load(stored.visualId, category.visual);
}

void CategoryStore::loadClasses(Stored& stored) {
  Category& category = *stored.category;
  stored.classVisuals.clear();
  CatalogueQuery all(context_.dataBase,
                     QStringLiteral("SELECT id, name, model, position, visual_id FROM kdx_classes "
                                    "WHERE category_id = ? ORDER BY position, id"));
  all.with(category.id).run();
  while (all.next()) {
    GeoClass* geoClass = classOf(category, all.integer(0));
    if (geoClass == nullptr) {
      geoClass = new GeoClass(all.integer(0), QString(), 0, category.name, 0, &category);
      category.classes.Append(geoClass);
    }
    geoClass->name = all.text(1);
    geoClass->model = all.small(2);
    geoClass->position = all.integer(3);
    stored.classVisuals[geoClass->id] = all.integer(4);
    visuals_.load(all.integer(4), geoClass->visual);
  }
}

void CategoryStore::rebuildLists() {
  // A caller may be walking a list: it is only touched when its content has changed.
  std::vector<SObject*> all, objects;
  for (auto& [id, stored] : stored_) {
    all.push_back(stored.category.get());
    if (stored.category->model == OBJECTMODEL) objects.push_back(stored.category.get());
  }
  const auto refill = [](CategoryList& list, const std::vector<SObject*>& items) {
    if (list.items() == items) return;
    list.Kill();
    for (SObject* item : items) list.Append(item);
  };
  refill(all_, all);
  refill(objects_, objects);
}

Category* CategoryStore::find(int id) const {
  const auto found = stored_.find(id);
  return found == stored_.end() ? nullptr : found->second.category.get();
}

int CategoryStore::store(CategoryList& list) {
  // A copy, since the list may be one of the live ones, which change on the way.
  const std::vector<SObject*> items = list.items();
  for (const Category* category : list) {
    const bool foreign = category->id > 0 && find(category->id) != category;
    if (foreign || !nameFree(*category, list)) return 0;
  }
  list.disown();
  for (SObject* item : items) {
    auto* category = static_cast<Category*>(item);
    if (category->id <= 0) add(*category);
    update(stored_[category->id]);
  }
  rebuildLists();
  return 1;
}

bool CategoryStore::nameFree(const Category& category, const CategoryList& list) const {
  const auto clashes = [&category](const SObject* item) {
    const auto* other = static_cast<const Category*>(item);
    return other != &category && other->model == category.model && other->name == category.name;
  };
  return !category.name.isEmpty() && std::none_of(all_.items().begin(), all_.items().end(), clashes) &&
         std::none_of(list.items().begin(), list.items().end(), clashes);
}

void CategoryStore::add(Category& category) {
  context_.connection.beginChange();
  category.id = static_cast<int>(context_.connection.scalar("SELECT max(id) FROM kdx_categories")) + 1;
  CatalogueQuery insert(context_.dataBase,
                        QStringLiteral("INSERT INTO kdx_categories (id, name, model) VALUES (?, ?, ?)"));
  insert.with(category.id).with(category.name).with(category.model).run();
  std::unique_ptr<Category> owned = takeFallen(category);
  if (owned == nullptr) owned.reset(&category);
  if (category.attributeTable.isEmpty() && hasAttributes(category.model)) {
    category.attributeTable = QStringLiteral("CG%1").arg(category.id, 6, 10, QLatin1Char('0'));
  }
  stored_[category.id].category = std::move(owned);
}

std::unique_ptr<Category> CategoryStore::takeFallen(Category& category) {
  for (auto it = fallen_.begin(); it != fallen_.end(); ++it) {
    if (it->get() != &category) continue;
    std::unique_ptr<Category> taken = std::move(*it);
    fallen_.erase(it);
    return taken;
  }
  return nullptr;
}

void CategoryStore::update(Stored& stored) {
  Category& category = *stored.category;
  context_.connection.beginChange();
  storeVisual(category.visual, stored.visualId);
  storeClasses(stored);
  CatalogueQuery update(
      context_.dataBase,
      QStringLiteral("UPDATE kdx_categories SET name = ?, model = ?, parent = ?, position = ?, "
                     "attribute_table = ?, visual_id = ?, last_class = ? WHERE id = ?"));
  update.with(category.name).with(category.model).with(category.categoryName).with(category.position);
  update.with(category.attributeTable).with(stored.visualId).with(category.lastClassId).with(category.id);
  update.run();
  stored.drawn = category.lastClassId;
  if (category.model == OBJECTMODEL) tables_.createObjectTable(category);
}

void CategoryStore::storeClasses(Stored& stored) {
  Category& category = *stored.category;
  CatalogueQuery insert(
      context_.dataBase,
      QStringLiteral("INSERT INTO kdx_classes (name, model, position, visual_id, category_id, id) "
                     "VALUES (?, ?, ?, ?, ?, ?)"));
  CatalogueQuery update(
      context_.dataBase,
      QStringLiteral("UPDATE kdx_classes SET name = ?, model = ?, position = ?, visual_id = ? WHERE "
                     "category_id = ? AND id = ?"));
  for (GeoClass* geoClass : category.classes) {
    if (geoClass->id <= 0) geoClass->id = category.drawClassId();
    const bool isNew = stored.classVisuals.count(geoClass->id) == 0;
    int& visualId = stored.classVisuals[geoClass->id];
    storeVisual(geoClass->visual, visualId);
    CatalogueQuery& write = isNew ? insert : update;
    write.with(geoClass->name).with(geoClass->model).with(geoClass->position).with(visualId);
    write.with(category.id).with(geoClass->id).run();
  }
}

void CategoryStore::storeVisual(GeneralVisual& visual, int& storedId) {
  // Whoever copied a visual whole has copied its identifier too: the row that counts is the owner's.
  visual.id = storedId;
  visuals_.save(visual);
  storedId = visual.id;
}

int CategoryStore::reload(Category& category) {
  const auto found = stored_.find(category.id);
  if (found == stored_.end() || found->second.category.get() != &category) return 0;
  CatalogueQuery row(
      context_.dataBase,
      QStringLiteral("SELECT id, name, model, parent, position, attribute_table, visual_id, last_class "
                     "FROM kdx_categories WHERE id = ?"));
  row.with(category.id).run();
  if (!row.next()) return 0;
  readCategory(row, found->second);
  return 1;
}

void CategoryStore::storeDrawnIds() {
  for (auto& [id, stored] : stored_) {
    if (stored.category->lastClassId == stored.drawn) continue;
    context_.connection.beginChange();
    CatalogueQuery update(context_.dataBase,
                          QStringLiteral("UPDATE kdx_categories SET last_class = ? WHERE id = ?"));
    update.with(stored.category->lastClassId).with(id).run();
    stored.drawn = stored.category->lastClassId;
  }
}

void CategoryStore::refreshClassVisual(int layerId, const GeoClass& geoClass) {
  context_.connection.beginChange();
  CatalogueQuery known(
      context_.dataBase,
      QStringLiteral("SELECT visual_id FROM kdx_layer_visuals WHERE layer_id = ? AND class_id = ?"));
  known.with(layerId).with(geoClass.id).run();
  GeneralVisual copy = geoClass.visual;
  copy.id = known.next() ? known.integer(0) : 0;
  const bool isNew = copy.id == 0;
  visuals_.save(copy);
  if (!isNew) return;
  CatalogueQuery insert(
      context_.dataBase,
      QStringLiteral("INSERT INTO kdx_layer_visuals (layer_id, class_id, visual_id) VALUES (?, ?, ?)"));
  insert.with(layerId).with(geoClass.id).with(copy.id).run();
}

void CategoryStore::mark(int depth) {
  std::set<const GeoClass*> unstored;
  for (const auto& [id, stored] : stored_) {
    for (const GeoClass* geoClass : stored.category->classes) {
      if (stored.classVisuals.count(geoClass->id) == 0) unstored.insert(geoClass);
    }
  }
  marks_.resize(static_cast<size_t>(depth) + 1);
  marks_.back() = std::move(unstored);
}

void CategoryStore::rollback(int depth) {
  leave(depth);
  load();
  for (auto& [id, stored] : stored_) dropUnstoredClasses(stored);
}

void CategoryStore::dropUnstoredClasses(Stored& stored) {
  GeoClassList& classes = stored.category->classes;
  for (int position = classes.Size() - 1; position >= 0; --position) {
    GeoClass* geoClass = classes.at(position);
    const bool keep =
        stored.classVisuals.count(geoClass->id) > 0 || marks_.empty() || marks_.back().count(geoClass) > 0;
    if (keep) continue;
    classes.Get(position);
    fallenClasses_.emplace_back(static_cast<GeoClass*>(classes.Take()));
  }
}

}  // namespace kaldex
