#ifndef KALDEX_MODEL_TIN_STORAGE_H
#define KALDEX_MODEL_TIN_STORAGE_H

#include "kaldex/model/tin.h"
#include "model/vector/feature_table.h"
#include "model/vector/vector_store.h"

inline namespace kaldex_v1 {

/// A surface in memory.
struct Tin::Surface {
  std::vector<TinNode> nodes;
  std::vector<TinEdge> edges;
  std::vector<Triangle> triangles;
  bool loaded = false;
};

/// The tables of a triangulation: nodes as points with a height, triangles as polygons with the keys of their
/// nodes, and edges, which have no shape of their own.
class Tin::Storage : public kaldex::TransactionListener {
 public:
  Storage(kaldex::VectorStore& store, Surface& surface);
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;
  ~Storage() override;

  void load();
  void save();

  void releaseCursors() override;
  void afterRollback() override;

 private:
  void clear();
  void clear(kaldex::FeatureTable& table);
  void saveNodes();
  void saveTriangles();
  void saveEdges();
  void loadNodes(std::vector<TinNode>& nodes);
  int positionOf(std::int64_t key) const;
  bool edgesExist() { return connection_.tableExists(edgeTable_); }

  kaldex::VectorStore& store_;
  kaldex::SqliteConnection& connection_;
  Surface& surface_;
  kaldex::FeatureTable nodes_, triangles_;
  std::string edgeTable_;
  std::vector<std::int64_t> keys_;  ///< of the nodes while a surface is being loaded, ascending
};

}  // namespace kaldex_v1

#endif
