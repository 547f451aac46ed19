#include "lib/dxf/mesh_chain.h"

#include <cstdint>
#include <cstring>
#include <unordered_map>

namespace kaldex {

namespace {

// Zeros of either sign are one place.
std::uint64_t bitsOf(double value) {
  value += 0.0;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

struct Place {
  double x;
  double y;
  bool operator==(const Place& other) const { return x == other.x && y == other.y; }
};

struct PlaceHash {
  std::size_t operator()(const Place& place) const {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = bitsOf(place.x) * kSpread;
    mixed = (mixed ^ (mixed >> 32)) + bitsOf(place.y);
    mixed *= kSpread;
    return static_cast<std::size_t>(mixed ^ (mixed >> 29));
  }
};

// The ends of edges by their place. Ends at one place are a chain in ascending order.
class EndIndex {
 public:
  explicit EndIndex(std::size_t count) : next_(count, kNone), used_(count, false) { heads_.reserve(count); }

  // To be called from the last end to the first.
  void add(const Place& place, std::size_t end) {
    const auto added = heads_.emplace(place, end);
    if (added.second) return;
    next_[end] = added.first->second;
    added.first->second = end;
  }
  // Both ends of an edge go together: each end's partner stays where it is.
  void use(std::size_t end) { used_[end] = used_[end ^ 1u] = true; }
  // The first unused end there, or kNone.
  std::size_t find(const Place& place) {
    const auto found = heads_.find(place);
    if (found == heads_.end()) return kNone;
    std::size_t& head = found->second;
    while (head != kNone && used_[head]) head = next_[head];
    return head;
  }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

 private:
  std::unordered_map<Place, std::size_t, PlaceHash> heads_;
  std::vector<std::size_t> next_;
  std::vector<bool> used_;
};

}  // namespace

void MeshChain::clear() {
  vertices_.clear();
  ends_.clear();
}

void MeshChain::addVertex(double x, double y) {
  vertices_.push_back({x, y});
}

void MeshChain::beginFace() {
  if (!vertices_.empty() && vertices_.size() % 2 == 0) vertices_.push_back(vertices_.back());
}

void MeshChain::addFace(const std::array<int, 4>& corners) {
  if (corners[0] >= 0 || corners[1] <= 0 || corners[2] >= 0 || corners[3] <= 0) return;
  addEdge(corners[1], corners[2]);
  addEdge(corners[3], corners[0]);
}

void MeshChain::addEdge(int from, int to) {
  const auto position = [](int corner) {
    const long long number = corner;
    return static_cast<std::size_t>((number < 0 ? -number : number) - 1);
  };
  if (position(from) >= vertices_.size() || position(to) >= vertices_.size()) return;
  ends_.push_back(vertices_[position(from)]);
  ends_.push_back(vertices_[position(to)]);
}

std::size_t MeshChain::join(std::vector<double>& xy) const {
  if (ends_.empty()) return 0;
  const auto placeOf = [this](std::size_t end) { return Place{ends_[end].x, ends_[end].y}; };
  EndIndex index(ends_.size());
  for (std::size_t end = ends_.size(); end-- > 0;) index.add(placeOf(end), end);
  std::size_t joined = 1;
  index.use(0);
  xy.insert(xy.end(), {ends_[0].x, ends_[0].y});
  std::size_t current = 1;
  for (;;) {
    xy.insert(xy.end(), {ends_[current].x, ends_[current].y});
    const std::size_t match = index.find(placeOf(current));
    if (match == EndIndex::kNone) return ends_.size() / 2 - joined;
    index.use(match);
    ++joined;
    current = match ^ 1u;
  }
}

}  // namespace kaldex
