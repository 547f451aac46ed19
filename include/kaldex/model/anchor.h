#ifndef KALDEX_MODEL_ANCHOR_H
#define KALDEX_MODEL_ANCHOR_H

#include <vector>

#include "kaldex/model/forward.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

/// What an object of the database looks like in one layer: the points, lines and polygons that stand for it
/// there, with the measures of the whole. A value: `Vector` and `AnchorSet` hand out copies,
/// `AnchorSet::Update` stores one.
class KALDEX_MODEL_API Anchor : public SObject {
 public:
  /// The visual's identifier goes into the anchor; it must be a stored one to be found again.
  void SetVisual(const GeneralVisual& visual);
  /// Each adds a piece once, grows the box and the measures (plane units), and is 0 for a piece without
  /// identifier.
  int InsertPoint(const Point2d& point);
  int InsertLine(const SProjection* projection, const Line& line);
  int InsertPolygon(const SPolygon& polygon, const SProjection* projection);
  /// 1 when the anchor has the piece, else 0.
  int SelectPoint(int id) const;
  int SelectLine(int id) const;
  int SelectPolygon(int id) const;

  int id = 0;
  int visualId = 0;
  Box box = Box::inverted();
  double area = 0.0;
  double perimeter = 0.0;
  double impedance = 0.0;
  double demand = 0.0;
  std::vector<int> points;
  std::vector<int> lines;
  std::vector<int> polygons;
};

class KALDEX_MODEL_API AnchorList : public TypedList<Anchor> {
 public:
  using TypedList<Anchor>::TypedList;
};

/// A forbidden or priced turn from one line of a network to another.
class KALDEX_MODEL_API Restriction : public SObject {
 public:
  Restriction() = default;
  Restriction(int from, int to) : from(from), to(to) {}

  int from = 0;
  int to = 0;
  float cost = 0.0f;  ///< of the turn; negative forbids it
};

}  // namespace kaldex_v1

#endif
