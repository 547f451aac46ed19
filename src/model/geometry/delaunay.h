#ifndef KALDEX_MODEL_DELAUNAY_H
#define KALDEX_MODEL_DELAUNAY_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace kaldex {

/// Places in the plane that are all different, in the order in which they came.
class PlaceIndex {
 public:
  /// The place's position; a new one is appended.
  int add(double x, double y);
  /// -1 when it isn't there.
  int find(double x, double y) const;
  /// x, y pairs.
  const std::vector<double>& xy() const { return xy_; }

 private:
  struct Place {
    double x, y;
    bool operator==(const Place& other) const { return x == other.x && y == other.y; }
  };
  struct Hash {
    std::size_t operator()(const Place& place) const;
  };

  std::unordered_map<Place, int, Hash> positions_;
  std::vector<double> xy_;
};

using IndexTriangle = std::array<int, 3>;

/// The Delaunay triangles of the places, counter-clockwise, by their positions. Empty when the places span
/// none, and when memory doesn't suffice.
std::vector<IndexTriangle> delaunayTriangles(const PlaceIndex& places);

}  // namespace kaldex

#endif
