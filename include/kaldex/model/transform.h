#ifndef KALDEX_MODEL_TRANSFORM_H
#define KALDEX_MODEL_TRANSFORM_H

#include "kaldex/model/api.h"
#include "kaldex/model/geometry.h"

inline namespace kaldex_v1 {

/// An affine transformation of the plane. It begins as the identity; each of the calls below adds a step
/// behind those that were given before.
class KALDEX_MODEL_API Transform {
 public:
  void Identity();
  /// Counter-clockwise around the origin, in radians.
  void Rotation(double angle);
  void Scale(double x, double y);
  void Translation(double x, double y);
  /// `to` may be `from`.
  void Do(const Point& from, Point& to) const;
  bool isIdentity() const;

 private:
  // x' = xx x + xy y + x0, y' = yx x + yy y + y0
  double xx_ = 1.0, xy_ = 0.0, x0_ = 0.0;
  double yx_ = 0.0, yy_ = 1.0, y0_ = 0.0;
};

}  // namespace kaldex_v1

#endif
