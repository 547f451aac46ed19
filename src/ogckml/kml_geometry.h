#ifndef KALDEX_OGCKML_KML_GEOMETRY_H
#define KALDEX_OGCKML_KML_GEOMETRY_H

#include <memory>
#include <string>
#include <vector>

#include "kaldex/model/line.h"
#include "kaldex/model/polygon.h"
#include "kaldex/model/projection.h"
#include "ogckml/kml_object.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

/// Places on WGS84, pairs of longitude and latitude in degrees; altitudes are not kept. A document holds many
/// of these, so they take little room: documents print few decimals, and from place to place whole numbers of
/// these are half as long as what they stand for.
class OgKMLPositions {
 public:
  void assign(const double* pairs, int count);
  int size() const { return count_; }
  /// What was assigned, without loss.
  void copyTo(std::vector<double>& pairs) const;
  /// Whether all are angles of a place on earth. Documents with metres exist.
  bool areGeographic() const { return areGeographic_; }
  /// Repeat the first place at the end unless it stands there.
  void close();
  /// As a line in the plane of a projection; see Wgs84Transfer. False when a place has no image there.
  bool toLine(Line& line, const SProjection* projection) const;

 private:
  bool pack(const double* pairs);

  std::unique_ptr<char[]> bytes_;
  int count_ = 0;
  bool areGeographic_ = true;
  bool isPacked_ = false;
};

class OgKMLAbstractGeometry : public OgKMLAbstractObject {};

class OgKMLPoint : public OgKMLAbstractGeometry {
 public:
  OgKMLPoint() = default;
  /// A point in degrees.
  explicit OgKMLPoint(const Point& degrees) : place_(degrees) {}
  const char* typeName() const override { return "Point"; }

  /// Unset until it is known.
  const Point& place() const { return place_; }
  void setPlace(double longitude, double latitude) { place_ = Point(longitude, latitude); }
  /// Whether it is an angle of a place on earth.
  bool isGeographic() const;
  /// Carry the place into the plane of a projection; false when it has no image there.
  bool getTePoint(Point2d& point, const SProjection* projection) const;

 private:
  Point place_ = Point::unset();
};

class OgKMLLineString : public OgKMLAbstractGeometry {
 public:
  OgKMLLineString() = default;
  /// A line in degrees.
  explicit OgKMLLineString(const Line& degrees) { positions.assign(degrees.coordinates(), degrees.Size()); }
  const char* typeName() const override { return "LineString"; }

  /// Carry the line into the plane of a projection; false when a vertex has no image there.
  bool getTeLine2D(Line& line, const SProjection* projection) const {
    return positions.toLine(line, projection);
  }

  OgKMLPositions positions;
};

/// A ring that stands by itself, not as the border of a polygon.
class OgKMLLinearRing : public OgKMLLineString {
 public:
  using OgKMLLineString::OgKMLLineString;
  const char* typeName() const override { return "LinearRing"; }
};

/// A polygon that is in no vector, with its own lines and sons. The domain model knows lines and sons of a
/// polygon by their identifiers in a vector, which these don't have; the outline is lent to `Points()`.
class OgKMLDetachedPolygon : public SPolygon {
 public:
  ~OgKMLDetachedPolygon() override;

  /// Have the outline, or without one the first line, for `Points()`.
  void lendOutline();

  std::unique_ptr<Line> outline;  ///< of a polygon of several lines
  std::vector<std::unique_ptr<Line>> lines;
  std::vector<std::unique_ptr<OgKMLDetachedPolygon>> sons;
};

class OgKMLPolygon : public OgKMLAbstractGeometry {
 public:
  const char* typeName() const override { return "Polygon"; }

  /// The polygon in the plane of a projection, each ring closed, inner rings as sons; null when it has no
  /// outer ring or a vertex without an image there.
  std::unique_ptr<OgKMLDetachedPolygon> getSPolygon(const SProjection* projection) const;

  OgKMLPositions outer;
  std::vector<OgKMLPositions> inner;
};

class OgKMLMultiGeometry : public OgKMLAbstractGeometry {
 public:
  ~OgKMLMultiGeometry() override;
  const char* typeName() const override { return "MultiGeometry"; }

  std::vector<std::unique_ptr<OgKMLAbstractGeometry>> children;
};

/// A geometry of which no more is known than its name.
class OgKMLOtherGeometry : public OgKMLAbstractGeometry {
 public:
  explicit OgKMLOtherGeometry(std::string name) : name_(std::move(name)) {}
  const char* typeName() const override { return name_.c_str(); }

 private:
  std::string name_;
};

}  // namespace KdxOgc
}  // namespace kaldex_v1

#endif
