#ifndef KALDEX_MODEL_PROJECTION_H
#define KALDEX_MODEL_PROJECTION_H

#include <QString>
#include <cstddef>
#include <memory>
#include <vector>

#include "kaldex/model/datum.h"
#include "kaldex/model/geometry.h"

namespace kaldex {
class ProjectionEngine;
}

inline namespace kaldex_v1 {

/// The numbers of the projection types, as files and tables hold them.
struct ProjectionType {
  enum : short {
    none = 0,
    utm = 1,
    mercator = 2,
    gaussTm = 3,
    lambertMillion = 4,
    lambert = 5,
    polyconic = 6,
    cylindrical = 7,
    stereographic = 8,
    bipolar = 9,
    albers = 10,
    miller = 11,
    latLong2 = 12,  ///< The second latitude and longitude type; the only one that is no `GeneralProjection`.
    foreign = 13,   ///< Any other reference system that PROJ knows, kept by its definition text.
    latLong = 14,
    sinusoidal = 15,
  };
};

/// The own name of a type, as written to files ("UTM", "GAUSS - TM", "LATLONG", ...); empty for a foreign or
/// unknown one.
KALDEX_MODEL_API QString projectionTypeName(short type);

/// All that a projection consists of, for storing it and getting the same one back.
struct ProjectionParameters {
  short type = ProjectionType::none;
  QString name;
  Datum datum;
  short hemisphere = 1;         ///< 1 north, -1 south.
  double originLatitude = 0.0;  ///< This and the next three in radians.
  double centralMeridian = 0.0;
  double firstParallel = 0.0;
  double secondParallel = 0.0;
  double falseEasting = 0.0;  ///< Metres, as the next.
  double falseNorthing = 0.0;
  double scale = 1.0;  ///< 0 counts as 1.
  QString definition;  ///< WKT of a foreign reference system, otherwise empty.
  int epsg = 0;        ///< The EPSG code that it was made from, 0 for none.
};

/// A map projection on a datum. The plane is in metres (decimal degrees for types 12 and 14, the reference
/// system's own units for type 13), x to the east and y to the north; geographic coordinates are radians, x
/// the longitude from Greenwich. Making one and setting parameters never fails, whatever the values;
/// conversions then do. The first conversion sets up the machinery, further ones reuse it, so one object
/// isn't to be used by two threads at once; clones are independent.
class KALDEX_MODEL_API SProjection : public SObject {
 public:
  explicit SProjection(short type = ProjectionType::none);
  /// Copies take the parameters and the identifier, not the destination.
  SProjection(const SProjection& other);
  SProjection& operator=(const SProjection& other);
  ~SProjection() override;
  virtual std::unique_ptr<SProjection> clone() const;

  /// Sets type, name and datum and leaves the rest.
  void Init(short type, const QString& name, const Datum& datum);

  /// In place. Of NONE both are the identity. False for what has no image: the point is then unset.
  /// While a `DestinationScope` is open, planeToGeographic also carries the result to the destination's
  /// datum.
  virtual bool planeToGeographic(Point& point) const;
  virtual bool geographicToPlane(Point& point) const;
  /// The same for `count` pairs x, y; pairs that fail become unset. True when none failed.
  virtual bool planeToGeographicAll(double* xy, std::size_t count) const;
  virtual bool geographicToPlaneAll(double* xy, std::size_t count) const;

  /// Carries geographic coordinates (radians) from this projection's datum to that of its destination. Leaves
  /// them untouched without a destination, when either datum is NONE, and when the datums are equal.
  void ChangeLL(double& longitude, double& latitude) const;
  /// Borrows `destination`; null takes it away. Only `ChangeLL` goes by it, see also `DestinationScope`.
  void SetDestination(const SProjection* destination) { destination_ = destination; }
  const SProjection* destination() const { return destination_; }

  /// Metres of one degree at the equator, and its inverse; both 1 for projections whose plane is in metres.
  double DegreeToMeterMultFactor() const;
  double MeterToDegreeMultFactor() const;
  /// Renames the datum.
  void DatumName(const QString& name);

  bool isLatLong() const { return type() == ProjectionType::latLong2 || type() == ProjectionType::latLong; }
  short type() const { return parameters_.type; }
  const QString& name() const { return parameters_.name; }
  short hemisphere() const { return parameters_.hemisphere; }
  double originLatitude() const { return parameters_.originLatitude; }
  double centralMeridian() const { return parameters_.centralMeridian; }
  double firstParallel() const { return parameters_.firstParallel; }
  double secondParallel() const { return parameters_.secondParallel; }
  double falseEasting() const { return parameters_.falseEasting; }
  double falseNorthing() const { return parameters_.falseNorthing; }
  double scale() const { return parameters_.scale; }
  const Datum& datum() const { return parameters_.datum; }
  double radius() const { return parameters_.datum.radius(); }
  double flattening() const { return parameters_.datum.flattening(); }
  float offsetX() const { return parameters_.datum.dx(); }
  float offsetY() const { return parameters_.datum.dy(); }
  float offsetZ() const { return parameters_.datum.dz(); }
  const QString& definition() const { return parameters_.definition; }

  /// The number under which a database keeps it; 0 for none. No part of the comparison.
  int identifier() const { return identifier_; }
  void setIdentifier(int identifier) { identifier_ = identifier; }

  const ProjectionParameters& toParameters() const { return parameters_; }

  /// Same type and parameters up to what survives printing: angles within 1e-9 rad, false origin within 1 mm,
  /// scale within 1e-6, and the datums' own comparison. Names don't count. Types 12 and 14 compare by type
  /// and datum alone, foreign ones by datum and definition. An object is equal to itself even if its
  /// parameters are no numbers.
  bool operator==(const SProjection& other) const;
  bool operator!=(const SProjection& other) const { return !(*this == other); }

 protected:
  void setParameters(const ProjectionParameters& parameters);

 private:
  friend class DestinationScope;
  friend KALDEX_MODEL_API std::unique_ptr<SProjection> projectionFromParameters(const ProjectionParameters&);

  kaldex::ProjectionEngine& engine() const;
  bool carries() const;

  ProjectionParameters parameters_;
  int identifier_ = 0;
  const SProjection* destination_ = nullptr;
  bool carryInPlaneToGeographic_ = false;
  mutable std::unique_ptr<kaldex::ProjectionEngine> engine_;
};

/// Every projection but type 12.
class KALDEX_MODEL_API GeneralProjection : public SProjection {
 public:
  explicit GeneralProjection(short type = ProjectionType::none) : SProjection(type) {}
  ~GeneralProjection() override;
  std::unique_ptr<SProjection> clone() const override;

  using SProjection::Init;
  /// Angles in radians, false origin in metres. Copies the datum; a null one leaves the datum as it is.
  void Init(const Datum* datum, short hemisphere, double originLatitude, double centralMeridian,
            double firstParallel, double secondParallel, double falseEasting, double falseNorthing,
            double scale);
};

/// While it lives, `projection` carries to the datum of `destination`: in `ChangeLL` and, unless
/// `Carry::onlyInChangeLL` is given, in `planeToGeographic` too. What was set before comes back at the end.
/// Both are borrowed and may be null.
class KALDEX_MODEL_API DestinationScope {
 public:
  enum class Carry { everywhere, onlyInChangeLL };

  DestinationScope(SProjection* projection, const SProjection* destination, Carry carry = Carry::everywhere);
  DestinationScope(const DestinationScope&) = delete;
  DestinationScope& operator=(const DestinationScope&) = delete;
  ~DestinationScope();

 private:
  SProjection* projection_;
  const SProjection* previousDestination_ = nullptr;
  bool previousCarry_ = false;
};

/// A new projection of that type with its own name, the datum NONE and no parameters; the caller owns it. A
/// number that is no type gives NONE.
KALDEX_MODEL_API SProjection* GetNewInstance(short type);

/// The projection with exactly these parameters.
KALDEX_MODEL_API std::unique_ptr<SProjection> projectionFromParameters(
    const ProjectionParameters& parameters);

/// One projection of each type that a user can choose, as prototypes to look names up in; owns them.
class KALDEX_MODEL_API SProjectionList : public TypedList<SProjection> {
 public:
  SProjectionList();
  ~SProjectionList() override;
  /// A fresh projection of that type, which the list keeps for its own lifetime without being an item of it.
  SProjection* GetAnInstance(short type);

 private:
  std::vector<std::unique_ptr<SProjection>> instances_;
};

}  // namespace kaldex_v1

#endif
