#ifndef KALDEX_DXF_MESH_CHAIN_H
#define KALDEX_DXF_MESH_CHAIN_H

#include <array>
#include <cstddef>
#include <vector>

namespace kaldex {

// The vertices and faces of a polyface mesh, by which drawings give the borders of an area: the edges that
// the faces show are joined into one line.
class MeshChain {
 public:
  void clear();
  void addVertex(double x, double y);
  // The first corner of a face is read: the list of vertices is made odd, as its writers count on.
  void beginFace();
  // Corners as numbers in the list of vertices from 1, negative where the edge behind the corner is hidden.
  // Only faces that show their second and fourth edge have any.
  void addFace(const std::array<int, 4>& corners);
  // Append the line of x, y pairs that begins with the first edge and goes on while an edge follows; returns
  // how many edges are left over.
  std::size_t join(std::vector<double>& xy) const;

 private:
  struct Vertex {
    double x;
    double y;
  };
  void addEdge(int from, int to);

  std::vector<Vertex> vertices_;
  std::vector<Vertex> ends_;  // two for each edge
};

}  // namespace kaldex

#endif
