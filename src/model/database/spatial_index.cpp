#include "model/database/spatial_index.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "kaldex/model/exception.h"
#include "model/database/geometry_blob.h"
#include "model/database/row_batch.h"

namespace kaldex {

namespace {

enum class Measure : int { isEmpty, minX, maxX, minY, maxY };

void measureFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto measure = static_cast<Measure>(reinterpret_cast<std::intptr_t>(sqlite3_user_data(context)));
  const auto* blob = static_cast<const std::uint8_t*>(sqlite3_value_blob(arguments[0]));
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]));
  Box box;
  const bool found = blob != nullptr && decodeEnvelope(blob, size, box);
  if (measure == Measure::isEmpty) {
    if (blob == nullptr) return sqlite3_result_null(context);
    return sqlite3_result_int(context, found ? 0 : 1);
  }
  if (!found) return sqlite3_result_null(context);
  switch (measure) {
    case Measure::minX:
      return sqlite3_result_double(context, box.x1);
    case Measure::maxX:
      return sqlite3_result_double(context, box.x2);
    case Measure::minY:
      return sqlite3_result_double(context, box.y1);
    default:
      return sqlite3_result_double(context, box.y2);
  }
}

// SQLite's R*Tree module: a node holds at most 51 cells of 24 bytes (two-dimensional, single precision)
// behind 4 bytes of header. Nodes are packed a little less than full, so that a later edit doesn't split
// every node it touches.
constexpr std::size_t cellSize = 24;
constexpr std::size_t nodeHeaderSize = 4;
constexpr std::size_t maxCells = 51;
constexpr std::size_t packedCells = 46;

void putBigEndian(std::uint8_t* place, std::uint64_t value, int size) {
  for (int i = size - 1; i >= 0; --i) {
    place[i] = static_cast<std::uint8_t>(value);
    value >>= 8;
  }
}

void putFloat(std::uint8_t* place, float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  putBigEndian(place, bits, 4);
}

/// Writes the node table of a packed tree, level by level from the leaves.
class PackedTreeWriter {
 public:
  PackedTreeWriter(SqliteConnection& connection, const std::string& tree)
      : insertNode_(
            connection.prepare("INSERT OR REPLACE INTO " + quotedName(tree + "_node") + " VALUES (?1, ?2)")),
        insertParent_(connection.prepare("INSERT INTO " + quotedName(tree + "_parent") + " VALUES (?1, ?2)")),
        rows_(connection, quotedName(tree + "_rowid"), {"rowid", "nodeno"}) {
    const std::string sql = "SELECT length(data) FROM " + quotedName(tree + "_node") + " WHERE nodeno = 1";
    nodeSize_ = static_cast<std::size_t>(connection.scalar(sql));
    // A small page makes small nodes.
    perNode_ = std::min({packedCells, maxCells, (nodeSize_ - nodeHeaderSize) / cellSize});
  }

  void write(std::vector<BoxEntry>& entries) {
    sortTileRecursive(entries, perNode_);
    std::vector<BoxEntry> level = writeLeaves(entries);
    int depth = 0;
    while (level.size() > 1) {
      ++depth;
      level = writeLevel(level, depth);
    }
  }

 private:
  using Range = std::pair<const BoxEntry*, const BoxEntry*>;

  // The root is always node 1; the others are numbered as they come.
  std::int64_t numberOf(bool isRoot) { return isRoot ? 1 : nextNode_++; }

  std::vector<BoxEntry> writeLeaves(std::vector<BoxEntry>& entries) {
    std::vector<std::pair<std::int64_t, std::int64_t>> homes;
    homes.reserve(entries.size());
    std::vector<BoxEntry> nodes = cut(
        entries, 0, [&](const BoxEntry& entry, std::int64_t node) { homes.emplace_back(entry.id, node); });
    // Appending in key order is several times cheaper than inserting all over the table.
    std::sort(homes.begin(), homes.end());
    for (const auto& home : homes) {
      rows_.beginRow();
      rows_.put(home.first);
      rows_.put(home.second);
    }
    rows_.flush();
    return nodes;
  }

  std::vector<BoxEntry> writeLevel(const std::vector<BoxEntry>& children, int depth) {
    return cut(children, depth, [&](const BoxEntry& child, std::int64_t node) {
      insertParent_.bind(1, child.id);
      insertParent_.bind(2, node);
      insertParent_.run();
    });
  }

  template <class Visitor>
  std::vector<BoxEntry> cut(const std::vector<BoxEntry>& cells, int depth, Visitor visit) {
    std::vector<BoxEntry> nodes;
    const bool isRoot = cells.size() <= perNode_;
    for (std::size_t start = 0; start < cells.size(); start += perNode_) {
      const std::size_t end = std::min(start + perNode_, cells.size());
      const std::int64_t number = numberOf(isRoot);
      BoxEntry node{number, cells[start].box};
      for (std::size_t i = start; i < end; ++i) {
        node.box.extend(cells[i].box);
        visit(cells[i], number);
      }
      writeNode(number, isRoot ? depth : 0, Range(cells.data() + start, cells.data() + end));
      nodes.push_back(node);
    }
    return nodes;
  }

  void writeNode(std::int64_t number, int depth, Range cells) {
    buffer_.assign(nodeSize_, 0);
    putBigEndian(buffer_.data(), static_cast<std::uint64_t>(depth), 2);
    putBigEndian(buffer_.data() + 2, static_cast<std::uint64_t>(cells.second - cells.first), 2);
    std::uint8_t* place = buffer_.data() + nodeHeaderSize;
    for (const BoxEntry* cell = cells.first; cell != cells.second; ++cell, place += cellSize) {
      putBigEndian(place, static_cast<std::uint64_t>(cell->id), 8);
      putFloat(place + 8, cell->box.x1);
      putFloat(place + 12, cell->box.x2);
      putFloat(place + 16, cell->box.y1);
      putFloat(place + 20, cell->box.y2);
    }
    insertNode_.bind(1, number);
    insertNode_.bindBorrowedBlob(2, buffer_.data(), buffer_.size());
    insertNode_.run();
  }

  Statement insertNode_, insertParent_;
  RowBatch rows_;
  Bytes buffer_;
  std::size_t nodeSize_ = 0;
  std::size_t perNode_ = 0;
  std::int64_t nextNode_ = 2;
};

/// The triggers of the GeoPackage extension, by name and body; %t the table, %r the tree.
struct TriggerText {
  const char* name;
  const char* body;
};

const TriggerText triggerTexts[] = {
    {"insert",
     "AFTER INSERT ON %t WHEN (NEW.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN INSERT OR REPLACE INTO "
     "%r VALUES "
     "(NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom)); END"},
    {"update1",
     "AFTER UPDATE OF geom ON %t WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) "
     "BEGIN "
     "INSERT OR REPLACE INTO %r VALUES (NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), "
     "ST_MaxY(NEW.geom)); END"},
    {"update2",
     "AFTER UPDATE OF geom ON %t WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN "
     "DELETE FROM "
     "%r WHERE id = OLD.fid; END"},
    {"update3",
     "AFTER UPDATE ON %t WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN "
     "DELETE FROM "
     "%r WHERE id = OLD.fid; INSERT OR REPLACE INTO %r VALUES (NEW.fid, ST_MinX(NEW.geom), "
     "ST_MaxX(NEW.geom), "
     "ST_MinY(NEW.geom), ST_MaxY(NEW.geom)); END"},
    {"update4",
     "AFTER UPDATE ON %t WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN DELETE "
     "FROM %r "
     "WHERE id IN (OLD.fid, NEW.fid); END"},
    {"delete", "AFTER DELETE ON %t WHEN OLD.geom NOT NULL BEGIN DELETE FROM %r WHERE id = OLD.fid; END"},
};

std::string filledIn(const char* text, const std::string& table, const std::string& tree) {
  std::string result;
  for (const char* c = text; *c != '\0'; ++c) {
    if (c[0] == '%' && c[1] == 't') {
      result += quotedName(table);
      ++c;
    } else if (c[0] == '%' && c[1] == 'r') {
      result += quotedName(tree);
      ++c;
    } else {
      result += *c;
    }
  }
  return result;
}

}  // namespace

void registerGeometryFunctions(sqlite3* handle) {
  static const struct {
    const char* name;
    Measure measure;
  } functions[] = {{"ST_IsEmpty", Measure::isEmpty},
                   {"ST_MinX", Measure::minX},
                   {"ST_MaxX", Measure::maxX},
                   {"ST_MinY", Measure::minY},
                   {"ST_MaxY", Measure::maxY}};
  for (const auto& function : functions) {
    void* data = reinterpret_cast<void*>(static_cast<std::intptr_t>(function.measure));
    sqlite3_create_function_v2(handle, function.name, 1,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, data, measureFunction,
                               nullptr, nullptr, nullptr);
  }
}

SpatialIndex::SpatialIndex(SqliteConnection& connection, std::string table)
    : connection_(connection), table_(std::move(table)), tree_("rtree_" + table_ + "_geom") {}

bool SpatialIndex::stored() {
  if (known_ < 0) known_ = connection_.tableExists(tree_) ? 1 : 0;
  return known_ == 1;
}

void SpatialIndex::add(std::int64_t id, const Box& box) {
  if (!detached_) detach();
  pending_.add(id, box);
}

void SpatialIndex::move(std::int64_t id, const Box& box) {
  if (!detached_) detach();
  if (stored()) {
    if (!remove_) remove_ = connection_.prepare("DELETE FROM " + quotedName(tree_) + " WHERE id = ?1");
    remove_.bind(1, id);
    remove_.run();
  }
  // The old box may have gathered too: it costs a search nothing but a candidate, and goes when all is
  // stored.
  pending_.add(id, box);
  moved_ = true;
}

void SpatialIndex::find(const Box& box, std::vector<std::int64_t>& ids) {
  if (!detached_ && !stored()) detach();
  pending_.find(box, ids);
  if (!stored()) return;
  if (!search_) {
    search_ = connection_.prepare("SELECT id FROM " + quotedName(tree_) +
                                  " WHERE minx <= ?2 AND maxx >= ?1 AND miny <= ?4 AND maxy >= ?3");
  }
  // SQLite compares its rounded boxes with the numbers as they are: both are widened the same way.
  const FloatBox wanted = FloatBox::around(box);
  search_.bind(1, static_cast<double>(wanted.x1));
  search_.bind(2, static_cast<double>(wanted.x2));
  search_.bind(3, static_cast<double>(wanted.y1));
  search_.bind(4, static_cast<double>(wanted.y2));
  while (search_.step()) ids.push_back(search_.integer(0));
  search_.reset();
}

void SpatialIndex::detach() {
  detached_ = true;
  if (!stored()) return gatherFromTable();
  for (const TriggerText& trigger : triggerTexts) {
    connection_.execSchema("DROP TRIGGER IF EXISTS " + quotedName(tree_ + "_" + trigger.name));
  }
}

void SpatialIndex::attach() {
  for (const TriggerText& trigger : triggerTexts) {
    connection_.execSchema("CREATE TRIGGER " + quotedName(tree_ + "_" + trigger.name) + " " +
                           filledIn(trigger.body, table_, tree_));
  }
  detached_ = false;
}

// Another program may have dropped the index of a table that has rows.
void SpatialIndex::gatherFromTable() {
  Statement all = connection_.prepare("SELECT fid, geom FROM " + quotedName(table_));
  while (all.step()) {
    Box box;
    std::size_t size = 0;
    const std::uint8_t* blob = all.blob(1, size);
    if (blob != nullptr && decodeEnvelope(blob, size, box)) pending_.add(all.integer(0), box);
  }
}

void SpatialIndex::createTree() {
  connection_.execSchema("CREATE VIRTUAL TABLE " + quotedName(tree_) +
                         " USING rtree(id, minx, maxx, miny, maxy)");
}

void SpatialIndex::registerTree() {
  Statement insert = connection_.prepare(
      "INSERT INTO gpkg_extensions (table_name, column_name, extension_name, definition, scope) VALUES (?1, "
      "'geom', "
      "'gpkg_rtree_index', 'http://www.geopackage.org/spec120/#extension_rtree', 'write-only')");
  insert.bind(1, table_);
  insert.run();
  known_ = 1;
}

void SpatialIndex::store() {
  if (!hasPending()) return;
  connection_.beginChange();
  search_.finalize();
  remove_.finalize();
  std::vector<BoxEntry> entries = pending_.take();
  if (moved_) keepOneOfEach(entries);
  moved_ = false;
  if (!stored()) {
    createTree();
    registerTree();
    writePacked(entries);
  } else {
    const std::string count = "SELECT count(*) FROM " + quotedName(tree_ + "_rowid");
    if (static_cast<std::int64_t>(entries.size()) * 4 > connection_.scalar(count)) {
      readStored(entries);
      connection_.execSchema("DROP TABLE " + quotedName(tree_));
      createTree();
      writePacked(entries);
    } else {
      insertOneByOne(entries);
    }
  }
  attach();
}

void SpatialIndex::readStored(std::vector<BoxEntry>& entries) {
  Statement all = connection_.prepare("SELECT id, minx, maxx, miny, maxy FROM " + quotedName(tree_));
  while (all.step()) {
    entries.push_back({all.integer(0),
                       {static_cast<float>(all.real(1)), static_cast<float>(all.real(2)),
                        static_cast<float>(all.real(3)), static_cast<float>(all.real(4))}});
  }
}

// Of an identifier that gathered several boxes, the one that the geometry has now.
void SpatialIndex::keepOneOfEach(std::vector<BoxEntry>& entries) {
  const auto byId = [](const BoxEntry& a, const BoxEntry& b) { return a.id < b.id; };
  std::sort(entries.begin(), entries.end(), byId);
  Statement geometry = connection_.prepare("SELECT geom FROM " + quotedName(table_) + " WHERE fid = ?1");
  std::size_t kept = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (kept == 0 || entries[kept - 1].id != entries[i].id) {
      entries[kept++] = entries[i];
      continue;
    }
    geometry.bind(1, entries[i].id);
    Box box;
    std::size_t size = 0;
    if (geometry.step()) {
      const std::uint8_t* blob = geometry.blob(0, size);
      if (blob != nullptr && decodeEnvelope(blob, size, box)) entries[kept - 1].box = FloatBox::around(box);
    }
    geometry.reset();
  }
  entries.resize(kept);
}

void SpatialIndex::insertOneByOne(const std::vector<BoxEntry>& entries) {
  Statement insert =
      connection_.prepare("INSERT OR REPLACE INTO " + quotedName(tree_) + " VALUES (?1, ?2, ?3, ?4, ?5)");
  for (const BoxEntry& entry : entries) {
    insert.bind(1, entry.id);
    insert.bind(2, static_cast<double>(entry.box.x1));
    insert.bind(3, static_cast<double>(entry.box.x2));
    insert.bind(4, static_cast<double>(entry.box.y1));
    insert.bind(5, static_cast<double>(entry.box.y2));
    insert.run();
  }
}

void SpatialIndex::writePacked(std::vector<BoxEntry>& entries) {
  if (entries.empty()) return;
  PackedTreeWriter(connection_, tree_).write(entries);
}

void SpatialIndex::forget() {
  pending_.clear();
  search_.finalize();
  remove_.finalize();
  known_ = -1;
  detached_ = false;
  moved_ = false;
}

}  // namespace kaldex
