#include "kaldex/model/transform.h"

#include <cmath>

inline namespace kaldex_v1 {

void Transform::Identity() {
  *this = Transform();
}

void Transform::Rotation(double angle) {
  const double sine = std::sin(angle);
  const double cosine = std::cos(angle);
  const Transform before = *this;
  xx_ = cosine * before.xx_ - sine * before.yx_;
  xy_ = cosine * before.xy_ - sine * before.yy_;
  x0_ = cosine * before.x0_ - sine * before.y0_;
  yx_ = sine * before.xx_ + cosine * before.yx_;
  yy_ = sine * before.xy_ + cosine * before.yy_;
  y0_ = sine * before.x0_ + cosine * before.y0_;
}

void Transform::Scale(double x, double y) {
  xx_ *= x;
  xy_ *= x;
  x0_ *= x;
  yx_ *= y;
  yy_ *= y;
  y0_ *= y;
}

void Transform::Translation(double x, double y) {
  x0_ += x;
  y0_ += y;
}

void Transform::Do(const Point& from, Point& to) const {
  const double x = from.x;
  const double y = from.y;
  to.x = xx_ * x + xy_ * y + x0_;
  to.y = yx_ * x + yy_ * y + y0_;
}

bool Transform::isIdentity() const {
  return xx_ == 1.0 && xy_ == 0.0 && x0_ == 0.0 && yx_ == 0.0 && yy_ == 1.0 && y0_ == 0.0;
}

}  // namespace kaldex_v1
