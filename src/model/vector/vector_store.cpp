#include "model/vector/vector_store.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "kaldex/model/catalog.h"
#include "model/vector/representation.h"

namespace kaldex {

namespace {

int spatialReferenceOf(SqliteConnection& connection, const SProjection* projection) {
  if (projection == nullptr) return -1;
  return registerSpatialReference(connection, *projection);
}

FeatureTable::Definition definitionOf(SqliteConnection& connection, const VectorStore::Info& info,
                                      FeatureKind kind) {
  FeatureTable::Definition definition;
  FeatureTableRegistration& registration = definition.registration;
  registration.name = featureTableName(representationBase(info.name, info.layerId), info.kind, kind);
  registration.identifier =
      (info.title.isEmpty() ? info.name : info.title) + QStringLiteral(": ") + featureTitle(info.kind, kind);
  registration.geometryType = geometryTypeOf(kind);
  registration.hasZ = kind == FeatureKind::samples;
  registration.box = Box::inverted();  // nothing is in it yet
  definition.columns = columnsOf(kind);
  const SProjection* projection = info.projection;
  definition.spatialReference = [&connection, projection] {
    return spatialReferenceOf(connection, projection);
  };
  return definition;
}

}  // namespace

VectorStore::VectorStore(SqliteConnection& connection, const Info& info)
    : connection_(&connection),
      info_(info),
      baseName_(representationBase(info.name, info.layerId)),
      lines_(connection, definitionOf(connection, info, FeatureKind::lines)),
      polygons_(connection, definitionOf(connection, info, FeatureKind::polygons)),
      points_(connection, definitionOf(connection, info, FeatureKind::points)),
      samples_(connection, definitionOf(connection, info, FeatureKind::samples)),
      anchorTable_(featureTableName(baseName_, info.kind, FeatureKind::anchors)) {
  ensureRegistered();
  // Last: what throws leaves no listener behind that nobody takes away again.
  connection_->addListener(this);
}

VectorStore::VectorStore(std::unique_ptr<SqliteConnection> own, const Info& info) : VectorStore(*own, info) {
  ownConnection_ = std::move(own);
}

std::unique_ptr<VectorStore> VectorStore::standalone(const Info& info) {
  QDir().mkpath(info.directory);
  const QString path = info.directory + QLatin1Char('/') + info.name;
  QFile::remove(path);
  auto connection = std::make_unique<SqliteConnection>(path);
  connection->beginChange();
  createGeoPackageTables(*connection);
  return std::unique_ptr<VectorStore>(new VectorStore(std::move(connection), info));
}

VectorStore::~VectorStore() {
  try {
    flush();
    if (ownConnection_ != nullptr) ownConnection_->commit();
  } catch (...) {
    // A destructor can't tell; operations that care have called flush before.
  }
  lineShells_.deleteAll();
  polygonShells_.deleteAll();
  connection_->removeListener(this);
}

bool VectorStore::exists(SqliteConnection& connection, int layerId, short kind) {
  if (!connection.tableExists("kdx_vectors")) return false;
  Statement find = connection.prepare("SELECT 1 FROM kdx_vectors WHERE layer_id = ?1 AND kind = ?2");
  find.bind(1, layerId);
  find.bind(2, static_cast<int>(kind));
  return find.step();
}

void VectorStore::ensureRegistered() {
  if (registered_) return;
  if (!exists(*connection_, info_.layerId, info_.kind)) registerRepresentation();
  registered_ = true;
}

void VectorStore::registerRepresentation() {
  beginChange();
  if (!connection_->tableExists("kdx_vectors")) {
    connection_->execSchema(
        "CREATE TABLE kdx_vectors (layer_id INTEGER NOT NULL, kind INTEGER NOT NULL, base_name TEXT NOT "
        "NULL, "
        "PRIMARY KEY (layer_id, kind))");
    registerAttributeTable(*connection_, "kdx_vectors", QStringLiteral("kdx_vectors"),
                           QStringLiteral("Vector representations of layers"));
  }
  Statement insert = connection_->prepare("INSERT INTO kdx_vectors VALUES (?1, ?2, ?3)");
  insert.bind(1, info_.layerId);
  insert.bind(2, static_cast<int>(info_.kind));
  insert.bind(3, baseName_);
  insert.run();
}

std::set<int> VectorStore::classesInUse(SqliteConnection& connection, int layerId) {
  std::set<int> classes;
  if (!connection.tableExists("kdx_vectors")) return classes;
  Statement all = connection.prepare("SELECT kind, base_name FROM kdx_vectors WHERE layer_id = ?1");
  all.bind(1, layerId);
  while (all.step()) {
    for (FeatureKind kind : {FeatureKind::lines, FeatureKind::polygons, FeatureKind::points}) {
      const std::string table = featureTableName(all.utf8(1), static_cast<short>(all.integer(0)), kind);
      if (!connection.tableExists(table)) continue;
      Statement distinct = connection.prepare("SELECT DISTINCT class_id FROM " + quotedName(table));
      while (distinct.step()) classes.insert(static_cast<int>(distinct.integer(0)));
    }
  }
  classes.erase(0);
  return classes;
}

bool VectorStore::classInUse(SqliteConnection& connection, int layerId, int classId) {
  return classesInUse(connection, layerId).count(classId) > 0;
}

void VectorStore::rethrowDeferred() {
  if (deferred_ == nullptr) return;
  std::rethrow_exception(std::exchange(deferred_, nullptr));
}

void VectorStore::flushRows() {
  rethrowDeferred();
  for (Line* line : lineShells_.all()) giveBack(*line, false);
  for (SPolygon* polygon : polygonShells_.all()) writePolygon(*polygon);
  settleAnchor();
  for (RowBatch* rows : newRows()) rows->flush();
}

void VectorStore::flush() {
  flushRows();
  lines_.finish();
  polygons_.finish();
  points_.finish();
  samples_.finish();
}

void VectorStore::releaseCursors() {
  for (RowCursor* cursor : {&lineCursor_, &polygonCursor_, &pointCursor_, &sampleCursor_, &anchorCursor_}) {
    cursor->release();
  }
  for (FeatureTable* table : {&lines_, &polygons_, &points_, &samples_}) table->releaseCursors();
}

void VectorStore::afterRollback() {
  lineShells_.orphanAll();
  polygonShells_.orphanAll();
  unreleased_.clear();
  for (RowBatch* rows : newRows()) rows->clear();
  pendingAnchor_.reset();
  anchorTree_.reset();
  anchorTableKnown_ = -1;
  lastAnchorId_ = -1;
  deferred_ = nullptr;
  for (FeatureTable* table : {&lines_, &polygons_, &points_, &samples_}) table->forget();
  // A table may be gone, so no statement on it can be kept; nor can the representation's registration.
  for (RowCursor* cursor : {&lineCursor_, &polygonCursor_, &pointCursor_, &sampleCursor_, &anchorCursor_}) {
    cursor->finalize();
  }
  registered_ = false;
}

long long VectorStore::lineCount() {
  flushRows();
  return lines_.count();
}
long long VectorStore::polygonCount() {
  flushRows();
  return polygons_.count();
}
long long VectorStore::pointCount() {
  newPoints_.flush();
  return points_.count();
}
long long VectorStore::sampleCount() {
  newSamples_.flush();
  return samples_.count();
}
long long VectorStore::anchorCount() {
  flushAnchors();
  return anchorTableExists() ? connection_->scalar("SELECT count(*) FROM " + quotedName(anchorTable_)) : 0;
}

Box VectorStore::extent() {
  Box box = Box::inverted();
  for (FeatureTable* table : {&lines_, &polygons_, &points_, &samples_}) {
    const Box part = table->extent();
    if (!part.isInverted()) box.extend(part);
  }
  return box;
}

}  // namespace kaldex
