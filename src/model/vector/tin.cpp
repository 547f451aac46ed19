#include "kaldex/model/tin.h"

#include <algorithm>
#include <cmath>

#include "model/geometry/delaunay.h"
#include "model/vector/tin_storage.h"

inline namespace kaldex_v1 {

namespace {

// Each edge once, ordered, from triangles that share them.
std::vector<TinEdge> edgesOf(const std::vector<Tin::Triangle>& triangles) {
  std::vector<TinEdge> edges;
  edges.reserve(3 * triangles.size());
  for (const Tin::Triangle& triangle : triangles) {
    for (std::size_t i = 0; i < 3; ++i) {
      const auto [low, high] = std::minmax(triangle[i], triangle[(i + 1) % 3]);
      edges.push_back({{{low, high}}});
    }
  }
  const auto less = [](const TinEdge& a, const TinEdge& b) { return a.Node < b.Node; };
  const auto equal = [](const TinEdge& a, const TinEdge& b) { return a.Node == b.Node; };
  std::sort(edges.begin(), edges.end(), less);
  edges.erase(std::unique(edges.begin(), edges.end(), equal), edges.end());
  edges.shrink_to_fit();
  return edges;
}

/// The points that a surface is made of.
class NodeGatherer {
 public:
  void take(Vector& source) {
    takeSamples(source);
    takeLines(source);
  }
  const kaldex::PlaceIndex& places() const { return places_; }
  std::vector<TinNode> nodes() const {
    std::vector<TinNode> nodes(heights_.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
      nodes[i] = {places_.xy()[2 * i], places_.xy()[2 * i + 1], heights_[i]};
    return nodes;
  }

 private:
  void takeSamples(Vector& source) {
    std::unique_ptr<Point3d> sample(source.FirstPoint3d());
    for (; sample != nullptr; sample.reset(source.NextPoint3d())) add(sample->x, sample->y, sample->z);
  }
  void takeLines(Vector& source) {
    const bool keeps = source.lineSet() != nullptr && source.lineSet()->keepsInMemory();
    for (Line* line = source.FirstLine(); line != nullptr; line = source.NextLine()) {
      const double* const xy = line->Type() != lineBreak ? line->coordinates() : nullptr;
      for (int i = 0; xy != nullptr && i < line->Size(); ++i) add(xy[2 * i], xy[2 * i + 1], line->height);
      if (keeps) {
        line->Free(1);
      } else {
        delete line;
      }
    }
  }
  void add(double x, double y, float height) {
    if (!std::isfinite(x) || !std::isfinite(y) || Point(x, y).isUnset()) return;
    const auto position = static_cast<std::size_t>(places_.add(x, y));
    if (position == heights_.size()) heights_.push_back(height);
  }

  kaldex::PlaceIndex places_;
  std::vector<float> heights_;
};

}  // namespace

Tin::Tin() : surface_(std::make_unique<Surface>()) {}

Tin::Tin(std::unique_ptr<kaldex::VectorStore> store)
    : Vector(std::move(store)), surface_(std::make_unique<Surface>()) {
  storage();
}

Tin::~Tin() = default;

Tin::Storage* Tin::storage() {
  if (storage_ == nullptr && Vector::store() != nullptr)
    storage_ = std::make_unique<Storage>(*Vector::store(), *surface_);
  return storage_.get();
}

int Tin::LoadTin() {
  Storage* const rows = storage();
  if (rows == nullptr) return 0;
  if (!surface_->loaded) rows->load();
  return 1;
}

int Tin::store() {
  Storage* const rows = storage();
  if (rows == nullptr) return 0;
  rows->save();
  return 1;
}

bool Tin::isLoaded() const {
  return surface_->loaded;
}
int Tin::triangleCount() const {
  return surface_->triangles.empty() ? 0 : static_cast<int>(surface_->triangles.size()) + 1;
}
const std::vector<TinNode>& Tin::nodes() const {
  return surface_->nodes;
}
const std::vector<TinEdge>& Tin::edges() const {
  return surface_->edges;
}

int Tin::NodesId(int triangle, int* nodes) const {
  if (triangle < 1 || triangle >= triangleCount()) return 0;
  const Triangle& found = surface_->triangles[static_cast<std::size_t>(triangle) - 1];
  std::copy(found.begin(), found.end(), nodes);
  return 1;
}

void Tin::assign(std::vector<TinNode> nodes, std::vector<TinEdge> edges, std::vector<Triangle> triangles) {
  surface_->nodes = std::move(nodes);
  surface_->edges = std::move(edges);
  surface_->triangles = std::move(triangles);
  surface_->loaded = true;
}

int Tin::triangulate(Vector& source) {
  NodeGatherer gatherer;
  gatherer.take(source);
  std::vector<Triangle> triangles = kaldex::delaunayTriangles(gatherer.places());
  if (triangles.empty()) return 0;
  std::vector<TinEdge> edges = edgesOf(triangles);
  assign(gatherer.nodes(), std::move(edges), std::move(triangles));
  return 1;
}

}  // namespace kaldex_v1
