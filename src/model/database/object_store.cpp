#include "model/database/object_store.h"

#include <algorithm>

#include "model/database/catalogue_query.h"

namespace kaldex {

namespace {

bool contains(const std::vector<uint>& values, uint value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

}  // namespace

ObjectStore::Table* ObjectStore::find(int categoryId) {
  if (last_ != nullptr && lastCategory_ == categoryId) return last_;
  const auto found = known_.find(categoryId);
  if (found != known_.end()) {
    last_ = &found->second;
  } else {
    const TableInfo* info = tables_.find(numberedTable("OJ", categoryId));
    if (info == nullptr) return nullptr;
    last_ = &known_[categoryId];
    last_->name = info->name;
    last_->quoted = info->quoted;
    last_->batch =
        RowBatch(context_.connection, info->quoted, {"ID", "NOME", "ROTULO", "VISID", "DATA", "HORA"});
  }
  lastCategory_ = categoryId;
  return last_;
}

Statement& ObjectStore::ready(Statement& statement, const Table& table, const char* rest) const {
  if (!statement) {
    statement =
        context_.connection.prepare("SELECT ID, NOME, ROTULO, VISID FROM " + table.quoted + " WHERE " + rest);
  }
  return statement;
}

int ObjectStore::fetch(Statement& statement, const Category& category, KaldexObject& object) {
  const bool found = statement.step();
  if (found) take(statement, category, object);
  statement.reset();
  return found ? 1 : 0;
}

void ObjectStore::take(const Statement& row, const Category& category, KaldexObject& object) {
  object.id = static_cast<int>(row.integer(0));
  object.name = row.text(1);
  object.label = row.text(2);
  object.visualId = static_cast<int>(row.integer(3));
  object.categoryId = category.id;
}

int ObjectStore::find(int id, const Category& category, KaldexObject& object) {
  Table* table = find(category.id);
  if (table == nullptr) return 0;
  if (id >= table->firstInBatch) flush(*table);
  Statement& statement = ready(table->byId, *table, "ID = ?1");
  statement.bind(1, id);
  return fetch(statement, category, object);
}

int ObjectStore::findByLabel(const QString& label, const Category& category, KaldexObject& object) {
  Table* table = find(category.id);
  if (table == nullptr) return 0;
  if (contains(table->labels, qHash(label))) flush(*table);
  index(*table);
  Statement& statement = ready(table->byLabel, *table, "ROTULO = ?1 ORDER BY ID LIMIT 1");
  binder_.bindText(statement, 1, label);
  return fetch(statement, category, object);
}

int ObjectStore::findByName(const QString& name, const Category& category, KaldexObject& object) {
  Table* table = find(category.id);
  if (table == nullptr) return 0;
  if (contains(table->names, qHash(name))) flush(*table);
  index(*table);
  Statement& statement = ready(table->byName, *table, "NOME = ?1 ORDER BY ID LIMIT 1");
  binder_.bindText(statement, 1, name);
  return fetch(statement, category, object);
}

int ObjectStore::create(const ObjectDefinition& definition, KaldexObject& object) {
  if (definition.category == nullptr) return 0;
  Table* table = find(definition.category->id);
  if (table == nullptr) return 0;
  context_.connection.beginChange();
  object.id = drawId();
  object.categoryId = definition.category->id;
  object.name = definition.name;
  object.label = definition.label;
  object.visualId = definition.category->visual.id;
  put(*table, definition, object);
  attributes_.due(definition.category->attributeTable, object.id);
  return 1;
}

void ObjectStore::put(Table& table, const ObjectDefinition& definition, const KaldexObject& object) {
  stamp(definition.time);
  table.batch.beginRow();
  if (table.batch.isEmpty()) {
    table.firstInBatch = object.id;
    table.labels.clear();
    table.names.clear();
  }
  table.batch.put(object.id);
  table.batch.put(object.name);
  table.batch.put(object.label);
  table.batch.put(object.visualId);
  table.batch.put(date_);
  table.batch.put(time_);
  table.labels.push_back(qHash(object.label));
  table.names.push_back(qHash(object.name));
  if (!table.indexed && ++table.unindexed >= kMostUnindexed) index(table);
}

void ObjectStore::flush(Table& table) {
  table.batch.flush();
  table.labels.clear();
  table.names.clear();
}

void ObjectStore::index(Table& table) {
  if (table.indexed) return;
  flush(table);
  tables_.ensureIndexes(table.name);
  table.indexed = true;
}

void ObjectStore::stamp(const STime& time) {
  if (time.seconds() == stampedSecond_) return;
  stampedSecond_ = time.seconds();
  date_ = time.date();
  time_ = time.time();
}

int ObjectStore::updateName(const KaldexObject& object) {
  Table* table = find(object.categoryId);
  if (table == nullptr) return 0;
  flush(*table);
  if (!table->rename) {
    table->rename = context_.connection.prepare("UPDATE " + table->quoted + " SET NOME = ?1 WHERE ID = ?2");
  }
  context_.connection.beginChange();
  binder_.bindText(table->rename, 1, object.name);
  table->rename.bind(2, object.id);
  table->rename.run();
  return sqlite3_changes(context_.connection.handle()) > 0 ? 1 : 0;
}

int ObjectStore::first(const Category& category, KaldexObject& object) {
  Table* table = find(category.id);
  if (table == nullptr) return objectError;
  stopWalk(*table);
  walked_[category.id] = 0;
  const int result = next(category, object);
  return result == objectEnd ? objectNone : result;
}

int ObjectStore::next(const Category& category, KaldexObject& object) {
  Table* table = find(category.id);
  if (table == nullptr) return objectError;
  // Rows that wait in memory are the walk's last ones.
  if (!table->batch.isEmpty()) flush(*table);
  // The running statement holds SQLite's lock too, which every other read of the walk would have to take
  // anew.
  Statement& statement = ready(table->following, *table, "ID > ?1 ORDER BY ID");
  if (!table->walking) statement.bind(1, walked_[category.id]);
  table->walking = false;
  if (!statement.step()) {
    statement.reset();
    return objectEnd;
  }
  table->walking = true;
  take(statement, category, object);
  walked_[category.id] = object.id;
  return objectFound;
}

void ObjectStore::stopWalk(Table& table) {
  if (table.walking) table.following.reset();
  table.walking = false;
}

void ObjectStore::releaseCursors() {
  for (auto& [category, table] : known_) stopWalk(table);
}

int ObjectStore::drawId() {
  if (lastId_ < 0) lastId_ = storedId_ = highestId();
  return ++lastId_;
}

int ObjectStore::highestId() {
  // The tables are asked too: another program may have added rows without knowing of the sequence.
  SqliteConnection& connection = context_.connection;
  std::int64_t highest = connection.scalar("SELECT value FROM kdx_sequences WHERE name = 'object'");
  CatalogueQuery categories(context_.dataBase,
                            QStringLiteral("SELECT id, attribute_table FROM kdx_categories"));
  categories.run();
  while (categories.next()) {
    const TableInfo* objects = tables_.find(numberedTable("OJ", categories.integer(0)));
    if (objects != nullptr)
      highest = std::max(highest, connection.scalar("SELECT max(ID) FROM " + objects->quoted));
    const TableInfo* rows = tables_.find(categories.text(1));
    if (rows != nullptr && rows->hasObjectKey) {
      highest = std::max(highest, connection.scalar("SELECT max(GEOID) FROM " + rows->quoted));
    }
  }
  return static_cast<int>(highest);
}

void ObjectStore::flush() {
  for (auto& [category, table] : known_) flush(table);
}

void ObjectStore::finish() {
  releaseCursors();
  // The indexes by label and name are left to the first look-up: many a database never sees one.
  flush();
  if (lastId_ == storedId_) return;
  context_.connection.beginChange();
  Statement update = context_.connection.prepare("UPDATE kdx_sequences SET value = ?1 WHERE name = 'object'");
  update.bind(1, lastId_);
  update.run();
  storedId_ = lastId_;
}

void ObjectStore::forget() {
  known_.clear();
  last_ = nullptr;
  lastId_ = storedId_ = -1;
}

}  // namespace kaldex
