#ifndef KALDEX_MODEL_DATUM_H
#define KALDEX_MODEL_DATUM_H

#include <QString>

#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

/// A geodetic datum: an ellipsoid (radius in metres, flattening) and the three shifts in metres that carry
/// geocentric coordinates of the datum to WGS84. Without arguments it is "NONE": all zero, and nothing is
/// ever carried from or to it.
class KALDEX_MODEL_API Datum : public SObject {
 public:
  Datum();
  /// `owned` tells that the datum belongs to whoever holds it, not to the list of known datums.
  Datum(short id, const QString& name, double radius, double flattening, float dx, float dy, float dz,
        bool owned = true);
  Datum(const Datum&) = default;
  Datum& operator=(const Datum&) = default;
  ~Datum() override;

  short id() const { return id_; }
  const QString& name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  double radius() const { return radius_; }
  double flattening() const { return flattening_; }
  float dx() const { return dx_; }
  float dy() const { return dy_; }
  float dz() const { return dz_; }
  bool owned() const { return owned_; }

  /// True when there is nothing to carry coordinates by: the name "NONE", or no usable ellipsoid.
  bool isNone() const;
  /// Same ellipsoid and shifts: radius within 1 mm, flattening within 1e-10, shifts within 0.1 mm. Names
  /// don't count.
  bool operator==(const Datum& other) const;
  bool operator!=(const Datum& other) const { return !(*this == other); }

 private:
  short id_ = 0;
  bool owned_ = true;
  float dx_ = 0.0f, dy_ = 0.0f, dz_ = 0.0f;
  double radius_ = 0.0, flattening_ = 0.0;
  QString name_;
};

/// A list of datums; owns them when told so.
class KALDEX_MODEL_API DatumList : public TypedList<Datum> {
 public:
  using TypedList<Datum>::TypedList;
  ~DatumList() override;
  /// The datum of exactly that name, or null; the cursor stays.
  Datum* find(const QString& name) const;
  /// Appends a copy of every datum that this library knows by name. Only for owning lists.
  void appendKnown();
};

/// A well-known datum by this library's name for it ("WGS84", "SIRGAS2000", "SAD69", ...), "NONE" when there
/// is none.
KALDEX_MODEL_API Datum knownDatum(const QString& name);

}  // namespace kaldex_v1

#endif
