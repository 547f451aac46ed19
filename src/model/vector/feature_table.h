#ifndef KALDEX_MODEL_FEATURE_TABLE_H
#define KALDEX_MODEL_FEATURE_TABLE_H

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "model/database/geometry_blob.h"
#include "model/database/geopackage_schema.h"
#include "model/database/spatial_index.h"
#include "model/database/sqlite.h"

namespace kaldex {

/// A walk over a table's rows in ascending key. It keeps the last key, not its statement: after a rollback, a
/// change of the table's schema or a pause it goes on behind that key.
class RowCursor {
 public:
  void rewind() {
    statement_.reset();
    open_ = false;
    last_ = kBeforeFirst;
  }
  /// Stand as if the row of that key had just been read.
  void placeAt(std::int64_t key) {
    if (key == last_) return;
    release();
    last_ = key;
  }
  /// The next row's statement (key in column 0), or null at the end. `select` makes the query up to its
  /// WHERE; it is asked only when the statement must be prepared.
  template <class MakeSelect>
  Statement* next(SqliteConnection& connection, MakeSelect select) {
    if (!statement_) statement_ = connection.prepare(select() + " WHERE fid > ?1 ORDER BY fid");
    return step();
  }
  void release() {
    if (statement_) statement_.reset();
    open_ = false;
  }
  void finalize() {
    statement_.finalize();
    open_ = false;
  }

 private:
  Statement* step();

  static constexpr std::int64_t kBeforeFirst = std::numeric_limits<std::int64_t>::min();

  Statement statement_;
  std::int64_t last_ = kBeforeFirst;
  bool open_ = false;
};

/// One feature table of a layer: key "fid", columns, geometry "geom", its registration, identifiers and
/// index. The table is made when its first row comes.
class FeatureTable {
 public:
  struct Definition {
    FeatureTableRegistration registration;
    std::string columns;  ///< SQL of the columns between key and geometry, each with a comma behind it
    /// Gives the projection's identifier in the file, registering it when need be; asked when it is first
    /// wanted.
    std::function<int()> spatialReference;
  };

  FeatureTable(SqliteConnection& connection, Definition definition);

  bool exists();
  void ensure();
  /// A new identifier, above all that the table holds or that were given out.
  std::int64_t newId();
  /// Make sure that newId never gives `id`.
  void reserveId(std::int64_t id);
  long long count();
  Box extent();

  void added(std::int64_t id, const Box& box);
  void moved(std::int64_t id, const Box& box);
  /// Identifiers of the rows whose box meets `box`, ascending.
  std::vector<std::int64_t> candidates(const Box& box);
  /// Write index and extent.
  void finish();
  void releaseCursors() { index_.releaseCursors(); }
  void forget();

  const std::string& name() const { return definition_.registration.name; }
  std::string quoted() const { return quotedName(name()); }
  int srsId();
  SqliteConnection& connection() { return connection_; }

 private:
  SqliteConnection& connection_;
  Definition definition_;
  SpatialIndex index_;
  Box extent_ = Box::inverted();
  std::int64_t lastId_ = -1;
  int known_ = -1;
  bool srsKnown_ = false;
};

}  // namespace kaldex

#endif
