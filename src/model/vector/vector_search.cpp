#include <algorithm>
#include <cmath>
#include <limits>

#include "kaldex/model/projection.h"
#include "kaldex/model/vector.h"
#include "model/geometry/scan_line.h"
#include "model/vector/vector_store.h"

// Searches of a vector: candidates by box from the spatial index, in ascending identifier, then the exact
// test. Shells that a search makes and doesn't hand out are deleted again, so that searching doesn't fill the
// memory.

inline namespace kaldex_v1 {

namespace {

Box around(const Point& point, double tolerance) {
  return {point.x - tolerance, point.y - tolerance, point.x + tolerance, point.y + tolerance};
}

double squareDistance(double x, double y, const Point& point) {
  return (x - point.x) * (x - point.x) + (y - point.y) * (y - point.y);
}

/// The place on a line that is nearest to a point.
struct NearestPlace {
  double square = std::numeric_limits<double>::infinity();
  int segment = 0;
  int vertex = 0;
  Point place;
};

NearestPlace nearestOn(const Line& line, const Point& point) {
  NearestPlace nearest;
  const double* xy = line.coordinates();
  const int count = line.Size();
  for (int i = 0; i < count; ++i) {
    const double* a = xy + 2 * i;
    const double* b = xy + 2 * std::min(i + 1, count - 1);
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    const double length = dx * dx + dy * dy;
    const double t =
        length > 0 ? std::clamp(((point.x - a[0]) * dx + (point.y - a[1]) * dy) / length, 0.0, 1.0) : 0.0;
    const Point place(a[0] + t * dx, a[1] + t * dy);
    const double square = squareDistance(place.x, place.y, point);
    if (square >= nearest.square) continue;
    nearest.square = square;
    nearest.segment = std::min(i, std::max(count - 2, 0));
    nearest.vertex = t < 0.5 ? i : std::min(i + 1, count - 1);
    nearest.place = place;
  }
  return nearest;
}

/// Deletes a shell that a search has made, if nobody held it before.
template <class Shell>
class Borrowed {
 public:
  Borrowed(Shell* shell, bool wasLive) : shell_(shell), wasLive_(wasLive) {}
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;
  ~Borrowed() {
    if (!wasLive_) delete shell_;
  }
  Shell* get() const { return shell_; }

 private:
  Shell* shell_;
  bool wasLive_;
};

// Whether the shell was there before must be known before it is asked for.
Borrowed<Line> borrowLine(kaldex::VectorStore& store, int id) {
  const bool wasLive = store.liveLine(id);
  return Borrowed<Line>(store.line(id), wasLive);
}

Borrowed<SPolygon> borrowPolygon(kaldex::VectorStore& store, int id) {
  const bool wasLive = store.livePolygon(id) != nullptr;
  return Borrowed<SPolygon>(store.polygon(id), wasLive);
}

}  // namespace

int Vector::Lines(const Box& box, LineList& list, double, double) {
  if (store_ == nullptr) return list.Size();
  for (std::int64_t id : store_->lineCandidates(box)) {
    Line* line = store_->line(static_cast<int>(id));
    if (line != nullptr && line->box.intersects(box)) list.Append(line);
  }
  return list.Size();
}

Line* Vector::FindLine(const Point& point, int* segment, float tolerance, float tolerance2, int* vertex,
                       Point* nearest, double, double) {
  if (store_ == nullptr) return nullptr;
  const double reach = std::max({static_cast<double>(tolerance), static_cast<double>(tolerance2), 0.0});
  NearestPlace best;
  int bestId = 0;
  for (std::int64_t candidate : store_->lineCandidates(around(point, reach))) {
    const int id = static_cast<int>(candidate);
    const Borrowed<Line> line = borrowLine(*store_, id);
    if (line.get() == nullptr) continue;
    const NearestPlace place = nearestOn(*line.get(), point);
    if (place.square > reach * reach || place.square >= best.square) continue;
    best = place;
    bestId = id;
  }
  if (bestId == 0) return nullptr;
  if (segment != nullptr) *segment = best.segment;
  if (vertex != nullptr) *vertex = best.vertex;
  if (nearest != nullptr) *nearest = best.place;
  return store_->line(bestId);
}

Line* Vector::FindLine(const Point& from, const Point& to) {
  if (store_ == nullptr) return nullptr;
  const double factor = projection() != nullptr ? projection()->MeterToDegreeMultFactor() : 1.0;
  const double reach = 0.5 * factor;
  double best = std::numeric_limits<double>::infinity();
  int bestId = 0;
  for (std::int64_t candidate : store_->lineCandidates(around(from, reach))) {
    const int id = static_cast<int>(candidate);
    const Borrowed<Line> line = borrowLine(*store_, id);
    if (line.get() == nullptr || line.get()->Size() == 0) continue;
    const double* first = line.get()->coordinates();
    const double* last = first + 2 * (line.get()->Size() - 1);
    for (bool swapped : {false, true}) {
      const double a = std::sqrt(squareDistance(first[0], first[1], swapped ? to : from));
      const double b = std::sqrt(squareDistance(last[0], last[1], swapped ? from : to));
      if (a > reach || b > reach || a + b >= best) continue;
      best = a + b;
      bestId = id;
    }
  }
  return bestId == 0 ? nullptr : store_->line(bestId);
}

SPolygon* Vector::FindPolygon(const Point& point, double, double) {
  if (store_ == nullptr) return nullptr;
  int borderId = 0;
  int innermost = 0;
  double smallest = std::numeric_limits<double>::infinity();
  for (std::int64_t candidate : store_->polygonCandidates(around(point, 0.0))) {
    const int id = static_cast<int>(candidate);
    const Borrowed<SPolygon> polygon = borrowPolygon(*store_, id);
    if (polygon.get() == nullptr) continue;
    const short place = polygon.get()->Inside(point);
    if (place == 1 && borderId == 0) borderId = id;
    if (place != 2) continue;
    // Of polygons that lie in one another the innermost has the smallest box.
    const Box& box = polygon.get()->box;
    const double size = (box.x2 - box.x1) * (box.y2 - box.y1);
    if (size >= smallest) continue;
    smallest = size;
    innermost = id;
  }
  const int id = borderId != 0 ? borderId : innermost;
  return id == 0 ? nullptr : store_->polygon(id);
}

Point2d* Vector::FindPoint2d(const Point& point, float tolerance) {
  if (store_ == nullptr) return nullptr;
  const double reach = std::max(static_cast<double>(tolerance), 0.0);
  double best = std::numeric_limits<double>::infinity();
  Point2d found;
  for (std::int64_t id : store_->pointCandidates(around(point, reach))) {
    const Point2d* candidate = store_->point(static_cast<int>(id));
    if (candidate == nullptr) continue;
    const double square = squareDistance(candidate->x, candidate->y, point);
    if (square > reach * reach || square >= best) continue;
    best = square;
    found = *candidate;
  }
  return found.id == 0 ? nullptr : store_->point(found.id);
}

Point2d* Vector::FindNode(const Point& point, float tolerance) {
  if (store_ == nullptr) return nullptr;
  if (Point2d* stored = FindPoint2d(point, tolerance)) return stored;
  const double reach = std::max(static_cast<double>(tolerance), 0.0);
  double best = std::numeric_limits<double>::infinity();
  Point2d node;
  for (std::int64_t candidate : store_->lineCandidates(around(point, reach))) {
    const int id = static_cast<int>(candidate);
    const Borrowed<Line> line = borrowLine(*store_, id);
    if (line.get() == nullptr || line.get()->Size() == 0) continue;
    const double* xy = line.get()->coordinates();
    for (int end : {0, line.get()->Size() - 1}) {
      const double square = squareDistance(xy[2 * end], xy[2 * end + 1], point);
      if (square > reach * reach || square >= best) continue;
      best = square;
      node = Point2d(xy[2 * end], xy[2 * end + 1]);
    }
  }
  if (!std::isfinite(best)) return nullptr;
  // A line's end becomes a node with an identifier of its own when it is first found; storing it is the
  // caller's matter.
  if (Point2d* known = FindPoint2d(node, 0.0f)) return known;
  node.id = store_->newPointId();
  return store_->handOut(node);
}

int Vector::Anchors(const Box& box, AnchorList& list, short wantPoints, short wantLines, short wantPolygons,
                    double, double) {
  if (store_ == nullptr) return list.Size();
  for (std::int64_t id : store_->anchorCandidates(box)) {
    std::unique_ptr<Anchor> anchor(store_->anchor(static_cast<int>(id)));
    if (anchor == nullptr) continue;
    bool meets = false;
    if (wantPoints != 0) {
      for (int piece : anchor->points) {
        const Point2d* point = store_->point(piece);
        meets = meets || (point != nullptr && box.Contains(static_cast<const Point&>(*point)));
      }
    }
    if (wantLines != 0 && !meets) {
      for (int piece : anchor->lines) {
        const Borrowed<Line> line = borrowLine(*store_, piece);
        meets = meets || (line.get() != nullptr && line.get()->box.intersects(box));
      }
    }
    if (wantPolygons != 0 && !meets) {
      for (int piece : anchor->polygons) {
        const Borrowed<SPolygon> polygon = borrowPolygon(*store_, piece);
        meets = meets || (polygon.get() != nullptr && polygon.get()->box.intersects(box));
      }
    }
    if (meets) list.Append(anchor.release());
  }
  return list.Size();
}

Anchor* Vector::FindAnchors(const Point& point, float tolerance, double, double) {
  if (store_ == nullptr) return nullptr;
  const double reach = std::max(static_cast<double>(tolerance), 0.0);
  double best = std::numeric_limits<double>::infinity();
  int bestId = 0;
  for (std::int64_t id : store_->anchorCandidates(around(point, reach))) {
    const std::unique_ptr<Anchor> anchor(store_->anchor(static_cast<int>(id)));
    if (anchor == nullptr) continue;
    for (int piece : anchor->points) {
      const Point2d* place = store_->point(piece);
      if (place == nullptr) continue;
      const double square = squareDistance(place->x, place->y, point);
      if (square > reach * reach || square >= best) continue;
      best = square;
      bestId = anchor->id;
    }
  }
  return bestId == 0 ? nullptr : store_->anchor(bestId);
}

}  // namespace kaldex_v1
