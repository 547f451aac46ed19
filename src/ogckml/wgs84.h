#ifndef KALDEX_OGCKML_WGS84_H
#define KALDEX_OGCKML_WGS84_H

#include <cstddef>

#include "kaldex/model/projection.h"

namespace kaldex {

// The way of places on WGS84, in degrees, into the plane of a projection. The projection is borrowed; without
// one, and for one of type NONE, places stay what they are.
class Wgs84Transfer {
 public:
  explicit Wgs84Transfer(const SProjection* target);

  // In place, `count` pairs of longitude and latitude. False when one has no image; it is then unset.
  bool toPlane(double* pairs, std::size_t count) const;

 private:
  const SProjection* target_;
  bool isIdentity_;
};

}  // namespace kaldex

#endif
