#ifndef KALDEX_MODEL_SPATIAL_INDEX_H
#define KALDEX_MODEL_SPATIAL_INDEX_H

#include <string>
#include <vector>

#include "model/database/box_tree.h"
#include "model/database/sqlite.h"

namespace kaldex {

/// Register ST_IsEmpty, ST_MinX, ST_MaxX, ST_MinY and ST_MaxY, which the triggers of a GeoPackage's spatial
/// indexes call.
void registerGeometryFunctions(sqlite3* handle);

/// The spatial index of one feature table (key "fid", geometry "geom"): the GeoPackage extension
/// gpkg_rtree_index, an R*Tree kept in step by triggers for whoever else edits the table.
///
/// Our own changes go past the triggers: the first one takes them away, boxes gather in memory, and `store`
/// writes them, packing the whole tree anew when many came, and puts the triggers back. Between the two, and
/// within the same transaction, `find` asks both the stored tree and what gathered.
class SpatialIndex {
 public:
  SpatialIndex(SqliteConnection& connection, std::string table);

  void add(std::int64_t id, const Box& box);
  void move(std::int64_t id, const Box& box);
  /// Append the identifiers of what may meet `box`, in no order and some perhaps twice.
  void find(const Box& box, std::vector<std::int64_t>& ids);
  /// Write what gathered; makes the index when there is none yet and the table has rows.
  void store();
  /// Forget what gathered and what is known: the transaction was rolled back.
  void forget();
  void releaseCursors() { search_.reset(); }
  bool hasPending() const { return pending_.size() > 0 || detached_; }

 private:
  bool stored();
  void detach();
  void attach();
  void createTree();
  void registerTree();
  void gatherFromTable();
  void readStored(std::vector<BoxEntry>& entries);
  void keepOneOfEach(std::vector<BoxEntry>& entries);
  void insertOneByOne(const std::vector<BoxEntry>& entries);
  void writePacked(std::vector<BoxEntry>& entries);

  SqliteConnection& connection_;
  std::string table_;
  std::string tree_;  ///< "rtree_<table>_geom"
  BoxTree pending_;
  Statement search_, remove_;
  int known_ = -1;  ///< whether the tree is stored: -1 not looked yet
  bool detached_ = false;
  bool moved_ = false;  ///< whether an identifier may have gathered more than one box
};

}  // namespace kaldex

#endif
