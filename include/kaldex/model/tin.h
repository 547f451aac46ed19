#ifndef KALDEX_MODEL_TIN_H
#define KALDEX_MODEL_TIN_H

#include <array>
#include <memory>
#include <vector>

#include "kaldex/model/vector.h"

inline namespace kaldex_v1 {

/// A corner of a triangulated surface: a place in plane units, and a height, which is no value from
/// kUnsetLimit on.
struct TinNode {
  double x = 0.0;
  double y = 0.0;
  float height = 0.0f;
};

/// An edge, by the positions of its two nodes in the array of nodes; -1 stands for none.
struct TinEdge {
  std::array<int, 2> Node{{-1, -1}};
};

/// The surface of a numeric layer as triangles. It is held in memory as a whole once it is loaded or made.
class KALDEX_MODEL_API Tin : public Vector {
 public:
  /// The positions of its three nodes.
  using Triangle = std::array<int, 3>;

  Tin();
  /// For the database, which makes the representations of layers.
  explicit Tin(std::unique_ptr<kaldex::VectorStore> store);
  ~Tin() override;

  /// Read what is stored; 1, or 0 when the surface has no storage. Throws SException on failure.
  int LoadTin();
  bool isLoaded() const;
  int nodeCount() const { return static_cast<int>(nodes().size()); }
  /// Triangles are numbered from 1 and this is the number behind the last: 0 stands for the outside.
  int triangleCount() const;
  /// -1 when there is none.
  int lastEdge() const { return static_cast<int>(edges().size()) - 1; }
  /// The nodes of a triangle, by its number; 0 when there is no such one.
  int NodesId(int triangle, int* nodes) const;
  const std::vector<TinNode>& nodes() const;
  const std::vector<TinEdge>& edges() const;

  /// Replace the surface in memory. The first of the triangles gets the number 1.
  void assign(std::vector<TinNode> nodes, std::vector<TinEdge> edges, std::vector<Triangle> triangles);
  /// Make the surface that the points of a vector span (Delaunay's triangles): its samples, and the vertices
  /// of its lines at the lines' heights, break lines apart, which have none. Of points at one place the first
  /// counts. 0, with the surface as it was, when they span none.
  int triangulate(Vector& source);
  /// Put the surface in the place of the stored one; 1, or 0 when it has no storage. Throws SException on
  /// failure.
  int store();

 private:
  struct Surface;
  class Storage;

  Storage* storage();

  std::unique_ptr<Surface> surface_;
  std::unique_ptr<Storage> storage_;
};

}  // namespace kaldex_v1

#endif
