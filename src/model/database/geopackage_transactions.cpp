#include "kaldex/model/exception.h"
#include "model/database/geopackage_database.h"

// How a geographic database begins, ends and undoes changes.

namespace kaldex {

void GeoPackageDataBase::commit() {
  try {
    connection_.commit();
  } catch (...) {
    // Some failures (a disk that is gone) end the transaction on SQLite's side: then what is known here is no
    // longer there. Otherwise it is the caller's to free space and try again, or to roll back.
    if (sqlite3_get_autocommit(connection_.handle()) != 0) rollback();
    throw;
  }
  if (connection_.blockDepth() == 0) categories_.mark(0);
}

void GeoPackageDataBase::rollback() {
  rollbackDepth_ = connection_.blockDepth();
  connection_.rollback();
}

void GeoPackageDataBase::beginBlock() {
  connection_.beginBlock();
  categories_.mark(connection_.blockDepth());
}

void GeoPackageDataBase::endBlock(bool keep) {
  const int depth = connection_.blockDepth();
  if (!keep) {
    rollbackDepth_ = depth;
    connection_.endBlock(false);
    return;
  }
  try {
    connection_.endBlock(true);
    categories_.leave(depth - 1);
    if (depth == 1) commit();
  } catch (...) {
    // A block that can't be kept whole is not kept at all.
    rollbackDepth_ = connection_.blockDepth();
    if (rollbackDepth_ == depth) {
      connection_.endBlock(false);
    } else {
      connection_.rollback();
    }
    throw;
  }
}

void GeoPackageDataBase::flushRows() {
  objects_.flush();
  attributes_.flush();
  associations_.flush();
}

void GeoPackageDataBase::beforeCommit() {
  attributes_.flush();
  objects_.finish();
  associations_.finish();
  // Numbers that were drawn for what was then taken back are no change of their own.
  if (connection_.inTransaction()) categories_.storeDrawnIds();
  texts_.finish();
}

void GeoPackageDataBase::releaseCursors() {
  objects_.releaseCursors();
  texts_.releaseCursors();
}

void GeoPackageDataBase::afterRollback() {
  attributes_.forget();
  associations_.forget();
  objects_.forget();
  texts_.forget();
  tables_.forget();
  classesInUse_ = ClassesInUse();
  projections_.load();
  categories_.rollback(rollbackDepth_);
  layers_.load();
  layers_.forEachLayer([](InfoLayer& layer) { layer.afterRollback(); });
}

QStringList GeoPackageDataBase::check() {
  flushRows();
  QStringList problems;
  const auto take = [&](const std::string& sql) {
    Statement rows = connection_.prepare(sql);
    while (rows.step()) {
      if (rows.text(0) != QLatin1String("ok")) problems << rows.text(0);
    }
  };
  take("PRAGMA integrity_check");
  Statement trees = connection_.prepare(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND sql LIKE 'CREATE VIRTUAL TABLE%USING rtree%'");
  while (trees.step()) take("SELECT rtreecheck(" + quotedText(trees.text(0)) + ")");
  return problems;
}

}  // namespace kaldex
