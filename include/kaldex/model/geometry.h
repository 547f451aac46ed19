#ifndef KALDEX_MODEL_GEOMETRY_H
#define KALDEX_MODEL_GEOMETRY_H

#include "kaldex/model/sobject.h"

inline namespace kaldex_v1 {

/// Coordinates above this on both axes are unset; a single value above it is "no value".
constexpr double kUnsetLimit = 3.4e35;
/// What an unset coordinate is filled with; also the label point that could not be generated.
constexpr double kUnsetValue = 3.4e37;

/// A place in the plane: x, y in plane units (metres, or decimal degrees in a latitude and longitude layer).
class KALDEX_MODEL_API Point {
 public:
  Point() = default;
  Point(double x, double y) : x(x), y(y) {}
  Point(const Point&) = default;
  Point& operator=(const Point&) = default;
  virtual ~Point();

  /// Exact comparison of both axes.
  bool operator==(const Point& other) const { return x == other.x && y == other.y; }
  bool operator!=(const Point& other) const { return !(*this == other); }
  bool isUnset() const { return x > kUnsetLimit && y > kUnsetLimit; }
  static Point unset() { return {kUnsetValue, kUnsetValue}; }

  double x = 0.0;
  double y = 0.0;
};

/// A point of a vector layer. Shares its identifier space with the ends of lines (the network's nodes).
class KALDEX_MODEL_API Point2d : public SObject, public Point {
 public:
  Point2d() = default;
  Point2d(double x, double y) : Point(x, y) {}
  /// Copies the place; a null point is ignored.
  void SetPoint(const Point* point);

  int id = 0;  ///< 0 until the vector has given one.
  int classId = 0;
  short flag = 0;
};

/// A sample: a point with a height, in the units of the data.
class KALDEX_MODEL_API Point3d : public SObject, public Point {
 public:
  Point3d() = default;
  Point3d(double x, double y, float z) : Point(x, y), z(z) {}

  int id = 0;
  float z = 0.0f;
};

/// A rectangle, (x1, y1) its lower left corner and (x2, y2) its upper right one.
class KALDEX_MODEL_API Box {
 public:
  Box() = default;
  Box(double x1, double y1, double x2, double y2) : x1(x1), y1(y1), x2(x2), y2(y2) {}

  /// Borders belong to the box. A null point is outside.
  bool Contains(const Point* point) const { return point != nullptr && Contains(*point); }
  bool Contains(const Point& point) const {
    return point.x >= x1 && point.x <= x2 && point.y >= y1 && point.y <= y2;
  }
  bool intersects(const Box& other) const {
    return x1 <= other.x2 && other.x1 <= x2 && y1 <= other.y2 && other.y1 <= y2;
  }
  /// An inside-out box, the neutral element of `extend`.
  static Box inverted() { return {kUnsetValue, kUnsetValue, -kUnsetValue, -kUnsetValue}; }
  bool isInverted() const { return x1 > x2 || y1 > y2; }
  void extend(double x, double y) {
    x1 = x < x1 ? x : x1;
    y1 = y < y1 ? y : y1;
    x2 = x > x2 ? x : x2;
    y2 = y > y2 ? y : y2;
  }
  void extend(const Box& other) {
    x1 = other.x1 < x1 ? other.x1 : x1;
    y1 = other.y1 < y1 ? other.y1 : y1;
    x2 = other.x2 > x2 ? other.x2 : x2;
    y2 = other.y2 > y2 ? other.y2 : y2;
  }
  bool operator==(const Box& other) const {
    return x1 == other.x1 && y1 == other.y1 && x2 == other.x2 && y2 == other.y2;
  }

  double x1 = 0.0, y1 = 0.0, x2 = 0.0, y2 = 0.0;
};

}  // namespace kaldex_v1

#endif
