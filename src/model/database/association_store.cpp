#include "model/database/association_store.h"

#include <algorithm>

#include "kaldex/model/projection.h"

namespace kaldex {

namespace {

bool contains(const std::vector<int>& values, int value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

}  // namespace

AssociationStore::Table* AssociationStore::find(int layerId) {
  if (last_ != nullptr && lastLayer_ == layerId) return last_;
  const auto found = known_.find(layerId);
  if (found != known_.end()) {
    last_ = &found->second;
  } else {
    const TableInfo* info = tables_.find(numberedTable("GA", layerId));
    if (info == nullptr) return nullptr;
    last_ = &known_[layerId];
    last_->name = info->name;
    last_->quoted = info->quoted;
    last_->batch =
        RowBatch(context_.connection, info->quoted,
                 {"GEOID", "CATEGORIA", "GANCHORID", "GVISID", "AREA", "PERIMETRO", "IMPEDANCIA", "DEMANDA"});
  }
  lastLayer_ = layerId;
  return last_;
}

int AssociationStore::createTable(int layerId) {
  if (find(layerId) == nullptr) tables_.createAssociationTable(layerId);
  return 1;
}

int AssociationStore::anchorOf(int objectId, const InfoLayer& layer) {
  if (waits(layer.id) && waiting_.objectId == objectId) return waiting_.anchorId;
  Table* table = find(layer.id);
  if (table == nullptr) return 0;
  if (contains(table->objects, objectId)) flush(*table);
  index(*table);
  if (!table->find) {
    table->find = context_.connection.prepare("SELECT GANCHORID FROM " + table->quoted +
                                              " WHERE GEOID = ?1 ORDER BY kdx_fid LIMIT 1");
  }
  table->find.bind(1, objectId);
  const int anchor = table->find.step() ? static_cast<int>(table->find.integer(0)) : 0;
  table->find.reset();
  return anchor;
}

int AssociationStore::link(const InfoLayer& layer, const Anchor& anchor, const KaldexObject& object) {
  if (waiting_.table != nullptr) putWaiting();
  createTable(layer.id);
  waiting_.table = find(layer.id);
  waiting_.layerId = layer.id;
  waiting_.objectId = object.id;
  waiting_.categoryId = object.categoryId;
  waiting_.anchorId = anchor.id;
  waiting_.visualId = anchor.visualId;
  measure(waiting_.measures, layer, anchor);
  return 1;
}

int AssociationStore::save(const InfoLayer& layer, const Anchor& anchor) {
  if (waits(layer.id) && waiting_.anchorId == anchor.id) {
    waiting_.visualId = anchor.visualId;
    measure(waiting_.measures, layer, anchor);
    return 1;
  }
  Table* table = find(layer.id);
  if (table == nullptr) return 0;
  if (contains(table->anchors, anchor.id)) flush(*table);
  index(*table);
  if (!table->update) {
    table->update = context_.connection.prepare(
        "UPDATE " + table->quoted +
        " SET AREA = ?1, PERIMETRO = ?2, IMPEDANCIA = ?3, DEMANDA = ?4, GVISID = ?5 WHERE GANCHORID = ?6");
  }
  context_.connection.beginChange();
  double measures[4];
  measure(measures, layer, anchor);
  for (int i = 0; i < 4; ++i) table->update.bind(i + 1, measures[i]);
  table->update.bind(5, anchor.visualId);
  table->update.bind(6, anchor.id);
  table->update.run();
  return sqlite3_changes(context_.connection.handle()) > 0 ? 1 : 0;
}

void AssociationStore::putWaiting() {
  Table& table = *waiting_.table;
  table.batch.beginRow();
  if (table.batch.isEmpty()) {
    table.objects.clear();
    table.anchors.clear();
  }
  table.batch.put(waiting_.objectId);
  table.batch.put(waiting_.categoryId);
  table.batch.put(waiting_.anchorId);
  table.batch.put(waiting_.visualId);
  for (double value : waiting_.measures) table.batch.put(value);
  table.objects.push_back(waiting_.objectId);
  table.anchors.push_back(waiting_.anchorId);
  waiting_.table = nullptr;
  if (!table.indexed && ++table.unindexed >= kMostUnindexed) index(table);
}

void AssociationStore::flush(Table& table) {
  table.batch.flush();
  table.objects.clear();
  table.anchors.clear();
}

void AssociationStore::index(Table& table) {
  if (table.indexed) return;
  flush(table);
  tables_.ensureIndexes(table.name);
  table.indexed = true;
}

void AssociationStore::flush() {
  if (waiting_.table != nullptr) putWaiting();
  for (auto& [layer, table] : known_) flush(table);
}

void AssociationStore::finish() {
  flush();
  for (auto& [layer, table] : known_) {
    if (table.unindexed > 0) index(table);
  }
}

void AssociationStore::forget() {
  waiting_.table = nullptr;
  last_ = nullptr;
  known_.clear();
}

void AssociationStore::measure(double (&measures)[4], const InfoLayer& layer, const Anchor& anchor) {
  // Anchors measure in the plane's units, the table holds metres also where the plane is in degrees.
  const SProjection* projection = layer.projection();
  const double toMetre = projection != nullptr ? projection->DegreeToMeterMultFactor() : 1.0;
  measures[0] = anchor.area * toMetre * toMetre;
  measures[1] = anchor.perimeter * toMetre;
  measures[2] = anchor.impedance;
  measures[3] = anchor.demand;
}

}  // namespace kaldex
