#ifndef KALDEX_MODEL_LINE_H
#define KALDEX_MODEL_LINE_H

#include <vector>

#include "kaldex/model/forward.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/list.h"

namespace kaldex {
class VectorStore;
}

inline namespace kaldex_v1 {

/// How an object of a vector stands to what is stored of it. A changed object is updated, a new one inserted,
/// when it is given back (`Free`, deletion, or the vector's end).
enum ObjectState : short { stateStored = 0, stateChanged = 1, stateNew = 2 };

/// Characters of a line's type.
enum LineType : char { lineFree = '1', lineBreak = '2', linePlain = '3', lineMaster = '4' };

/// A line of a vector layer, or a detached one that a caller builds up.
///
/// A line that a `Vector` handed out or took in is a live shell of the stored one: its points are loaded when
/// they are first asked for, `Free` stores what changed and drops them, deletion does the same and ends the
/// shell. Handing out one identifier twice gives the same shell. Points that First, Next, Prev and Last
/// return live in the line and are valid until the next call of one of these.
class KALDEX_MODEL_API Line : public SObject {
 public:
  Line();
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line() override;

  int Size() const;
  Point* First();
  /// The next point inside `box`; a null box takes all points.
  Point* Next(Box* box = nullptr);
  Point* Prev();
  Point* Last();

  char Type() const { return type_; }
  void Type(char type) { type_ = type; }

  /// Add a point at the end; with `dropRepeats` one that equals the last is not added. 0 when memory runs
  /// out.
  int Append(const Point& point, bool dropRepeats);
  /// Length in plane units; the projection doesn't convert (callers multiply by its metre factor).
  double CalcLength(const SProjection* projection = nullptr) const;
  /// Compute `box` from the points.
  void UpdateBox();
  /// Give an unset label point the middle of the line's length.
  void UpdateLabelPoint();
  /// Same points, in either direction, and from any start vertex when both lines are closed.
  bool Equal(const Line& other) const;
  /// Drop vertices nearer than `tolerance` (plane units) to the simplified line (Douglas and Peucker 1973).
  /// A `keepClosed` other than 0 keeps a ring of at least four points. Returns the new size.
  int Simplify(float tolerance, int keepClosed);
  /// Store what changed and drop the points; the line stays usable. The flag is accepted for the callers'
  /// sake.
  void Free(short flag = 1);
  /// As Free, and forget height, class, neighbours and label too when the line is detached.
  void FreeAll();

  /// The points as x, y pairs (2 * Size() doubles); valid until the line changes or is freed.
  const double* coordinates() const;
  /// Replace all points by `count` x, y pairs.
  void assign(const double* xy, int count);
  void reserve(int count) { xy_.reserve(2 * static_cast<size_t>(count)); }
  bool isClosed() const;

  int id = 0;  ///< 0 until a vector has given one.
  Box box;
  float height = 0.0f;
  int classId = 0;
  int leftPolygon = 0;   ///< above 0 when the line bounds a polygon on that side; 0 or -1: none
  int rightPolygon = 0;  ///< as leftPolygon
  Point labelPoint = Point::unset();
  short state = stateStored;
  float impedancePositive = 0.0f;
  float impedanceNegative = 0.0f;
  float demand = 0.0f;

 private:
  friend class kaldex::VectorStore;
  friend class SPolygon;

  void load() const;
  Point* at(int position);

  mutable std::vector<double> xy_;
  mutable bool loaded_ = true;
  bool pointsChanged_ = false;
  bool hasRow_ = false;  ///< state is the callers' to set; this tells whether INSERT or UPDATE is due
  char type_ = linePlain;
  int cursor_ = -1;
  Point current_;
  kaldex::VectorStore* store_ = nullptr;
};

class KALDEX_MODEL_API LineList : public TypedList<Line> {
 public:
  using TypedList<Line>::TypedList;
};

/// The point at half the segment from `a` to `b`; the height is ignored.
KALDEX_MODEL_API void GetMiddlePoint(const Point& a, const Point& b, Point& middle, float height);

/// Signed area of a closed line in plane units (positive when counter-clockwise); returns 1, or 0 with an
/// area of 0.0 for less than 3 points.
KALDEX_MODEL_API int calcula_area(const Line* line, double* area);

}  // namespace kaldex_v1

#endif
