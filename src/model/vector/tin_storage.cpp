#include "model/vector/tin_storage.h"

#include <algorithm>

#include "model/database/row_batch.h"
#include "model/vector/representation.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::FeatureKind;
using kaldex::FeatureTable;
using kaldex::SqliteConnection;
using kaldex::Statement;

FeatureTable::Definition definitionOf(kaldex::VectorStore& store, FeatureKind kind, const char* columns) {
  FeatureTable::Definition definition;
  const kaldex::VectorStore::Info& info = store.info();
  definition.registration.name = kaldex::featureTableName(store.baseName(), info.kind, kind);
  definition.registration.identifier = (info.title.isEmpty() ? info.name : info.title) +
                                       QStringLiteral(": ") + kaldex::featureTitle(info.kind, kind);
  definition.registration.geometryType = kaldex::geometryTypeOf(kind);
  definition.registration.hasZ = kind == FeatureKind::samples;
  definition.registration.box = Box::inverted();
  definition.columns = columns;
  SqliteConnection& connection = store.connection();
  const SProjection* const projection = info.projection;
  definition.spatialReference = [&connection, projection] {
    return projection != nullptr ? kaldex::registerSpatialReference(connection, *projection) : -1;
  };
  return definition;
}

Box boxAt(const TinNode& node) {
  return {node.x, node.y, node.x, node.y};
}

}  // namespace

Tin::Storage::Storage(kaldex::VectorStore& store, Surface& surface)
    : store_(store),
      connection_(store.connection()),
      surface_(surface),
      nodes_(connection_, definitionOf(store, FeatureKind::samples, "")),
      triangles_(connection_,
                 definitionOf(store, FeatureKind::polygons, "node1 INTEGER, node2 INTEGER, node3 INTEGER,")),
      edgeTable_(store.baseName() + "_tin_edges") {
  connection_.addListener(this);
}

Tin::Storage::~Storage() {
  connection_.removeListener(this);
}

void Tin::Storage::releaseCursors() {
  nodes_.releaseCursors();
  triangles_.releaseCursors();
}

void Tin::Storage::afterRollback() {
  nodes_.forget();
  triangles_.forget();
  // Nobody knows whether what is in memory is what is stored: the next one to ask reads it again.
  surface_ = Surface();
}

// --- Reading ---

void Tin::Storage::load() {
  Surface read;
  loadNodes(read.nodes);
  if (triangles_.exists()) {
    Statement rows =
        connection_.prepare("SELECT node1, node2, node3 FROM " + triangles_.quoted() + " ORDER BY fid");
    while (rows.step()) {
      const Triangle triangle{positionOf(rows.integer(0)), positionOf(rows.integer(1)),
                              positionOf(rows.integer(2))};
      // A triangle that lost a node is none any more.
      if (*std::min_element(triangle.begin(), triangle.end()) >= 0) read.triangles.push_back(triangle);
    }
  }
  if (edgesExist()) {
    Statement rows =
        connection_.prepare("SELECT node1, node2 FROM " + kaldex::quotedName(edgeTable_) + " ORDER BY fid");
    while (rows.step()) {
      read.edges.push_back({{{positionOf(rows.integer(0)), positionOf(rows.integer(1))}}});
    }
  }
  keys_ = {};
  read.loaded = true;
  surface_ = std::move(read);
}

void Tin::Storage::loadNodes(std::vector<TinNode>& nodes) {
  keys_.clear();
  if (!nodes_.exists()) return;
  Statement rows = connection_.prepare("SELECT fid, geom FROM " + nodes_.quoted() + " ORDER BY fid");
  while (rows.step()) {
    std::size_t size = 0;
    const unsigned char* const blob = rows.blob(1, size);
    TinNode node;
    double z = kUnsetValue;
    if (blob == nullptr || !kaldex::decodePoint(blob, size, node.x, node.y, z)) continue;
    node.height = static_cast<float>(z);
    keys_.push_back(rows.integer(0));
    nodes.push_back(node);
  }
}

int Tin::Storage::positionOf(std::int64_t key) const {
  if (keys_.empty()) return -1;
  // Keys without a gap, as they are stored, need no search.
  const std::int64_t guess = key - keys_.front();
  if (guess < 0) return -1;
  const auto place = static_cast<std::size_t>(guess);
  if (place < keys_.size() && keys_[place] == key) return static_cast<int>(guess);
  const auto found = std::lower_bound(keys_.begin(), keys_.end(), key);
  return found != keys_.end() && *found == key ? static_cast<int>(found - keys_.begin()) : -1;
}

// --- Writing ---

void Tin::Storage::save() {
  connection_.beginChange();
  store_.ensureRegistered();
  clear();
  saveNodes();
  saveTriangles();
  saveEdges();
  surface_.loaded = true;
}

void Tin::Storage::clear() {
  clear(nodes_);
  clear(triangles_);
  if (edgesExist()) connection_.exec("DELETE FROM " + kaldex::quotedName(edgeTable_));
}

// The index follows by its triggers.
void Tin::Storage::clear(FeatureTable& table) {
  if (!table.exists()) return;
  connection_.exec("DELETE FROM " + table.quoted());
  const Box none = Box::inverted();
  kaldex::updateContents(connection_, table.name(), &none);
  table.forget();
}

void Tin::Storage::saveNodes() {
  if (surface_.nodes.empty()) return;
  nodes_.ensure();
  Statement insert = connection_.prepare("INSERT INTO " + nodes_.quoted() + " (fid, geom) VALUES (?1, ?2)");
  kaldex::Bytes blob;
  for (const TinNode& node : surface_.nodes) {
    const std::int64_t key = nodes_.newId();
    nodes_.added(key, boxAt(node));
    kaldex::encodePointZ(blob, nodes_.srsId(), node.x, node.y, static_cast<double>(node.height));
    insert.bind(1, key);
    insert.bindBorrowedBlob(2, blob.data(), blob.size());
    insert.run();
  }
  nodes_.finish();
}

void Tin::Storage::saveTriangles() {
  if (surface_.triangles.empty()) return;
  triangles_.ensure();
  Statement insert = connection_.prepare("INSERT INTO " + triangles_.quoted() +
                                         " (fid, node1, node2, node3, geom) VALUES (?1, ?2, ?3, ?4, ?5)");
  kaldex::Bytes blob;
  const auto count = static_cast<int>(surface_.nodes.size());
  for (const Triangle& triangle : surface_.triangles) {
    const auto [low, high] = std::minmax_element(triangle.begin(), triangle.end());
    if (*low < 0 || *high >= count) continue;
    double xy[8];
    Box box = Box::inverted();
    const std::int64_t key = triangles_.newId();
    insert.bind(1, key);
    for (std::size_t i = 0; i < 4; ++i) {
      const TinNode& node = surface_.nodes[static_cast<std::size_t>(triangle[i % 3])];
      xy[2 * i] = node.x;
      xy[2 * i + 1] = node.y;
      box.extend(node.x, node.y);
      if (i < 3) insert.bind(static_cast<int>(i) + 2, triangle[i] + 1);
    }
    triangles_.added(key, box);
    kaldex::encodePolygon(blob, triangles_.srsId(), box, {{xy, 4}});
    insert.bindBorrowedBlob(5, blob.data(), blob.size());
    insert.run();
  }
  triangles_.finish();
}

// An end that is missing, or is none of the nodes, has the key 0.
void Tin::Storage::saveEdges() {
  if (surface_.edges.empty()) return;
  if (!edgesExist()) {
    connection_.execSchema("CREATE TABLE " + kaldex::quotedName(edgeTable_) +
                           " (fid INTEGER PRIMARY KEY NOT NULL, node1 INTEGER, node2 INTEGER)");
    kaldex::registerAttributeTable(connection_, edgeTable_, QString::fromStdString(edgeTable_),
                                   store_.info().title + QStringLiteral(": tin edges"));
  }
  const auto count = static_cast<int>(surface_.nodes.size());
  kaldex::RowBatch rows(connection_, kaldex::quotedName(edgeTable_),
                        std::vector<std::string>{"fid", "node1", "node2"});
  int key = 0;
  for (const TinEdge& edge : surface_.edges) {
    rows.beginRow();
    rows.put(++key);
    for (const int node : edge.Node) rows.put(node >= 0 && node < count ? node + 1 : 0);
  }
  rows.flush();
}

}  // namespace kaldex_v1
