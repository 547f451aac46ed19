#include "model/projection/projection_engine.h"

#include <cmath>

#include "kaldex/model/angle.h"

namespace kaldex {
namespace {

constexpr double kMaxLatitude = kPi / 2.0 + 1e-12;
constexpr double kMaxLongitude = 10.0;  // radians; PROJ's own limit

/// Builds a conversion text and remembers whether every number in it was usable.
class OperationText {
 public:
  explicit OperationText(const char* method) : text_(QByteArray("+proj=") + method) {}

  OperationText& angle(const char* key, double radians) {
    return number(key, snapped(Math_Rad_To_Deg(radians)), std::fabs(radians) <= kMaxLongitude);
  }
  OperationText& length(const char* key, double metres) {
    return number(key, metres, std::fabs(metres) < kUnsetLimit);
  }
  OperationText& scale(double factor) {
    return number("k_0", factor == 0.0 ? 1.0 : factor, factor >= 0.0 && factor < kUnsetLimit);
  }
  OperationText& flag(const char* key) {
    text_ += QByteArray(" +") + key;
    return *this;
  }
  OperationText& ellipsoid(const Datum& datum) {
    const bool usable = datum.radius() > 0.0 && datum.flattening() >= 0.0 && datum.flattening() < 1.0;
    length(datum.flattening() == 0.0 ? "R" : "a", datum.radius());
    usable_ = usable_ && usable;
    return datum.flattening() == 0.0 ? *this : number("f", datum.flattening(), true);
  }
  QByteArray text() const { return usable_ ? text_ : QByteArray(); }

 private:
  // The conditions are false for what is no number.
  OperationText& number(const char* key, double value, bool usable) {
    text_ += QByteArray(" +") + key + '=' + numberText(value);
    usable_ = usable_ && usable;
    return *this;
  }

  QByteArray text_;
  bool usable_ = true;
};

bool hasOwnFalseOrigin(const ProjectionParameters& p) {
  return p.falseEasting != 0.0 || p.falseNorthing != 0.0;
}

OperationText methodText(const ProjectionParameters& p) {
  const double pole = p.hemisphere < 0 ? -kPi / 2.0 : kPi / 2.0;
  switch (p.type) {
    case ProjectionType::utm:
      return OperationText("tmerc").angle("lon_0", p.centralMeridian).scale(0.9996);
    case ProjectionType::mercator:
      return OperationText("merc").angle("lon_0", p.centralMeridian).angle("lat_ts", p.firstParallel);
    case ProjectionType::gaussTm:
      return OperationText("tmerc")
          .angle("lat_0", p.originLatitude)
          .angle("lon_0", p.centralMeridian)
          .scale(p.scale);
    case ProjectionType::lambertMillion:
    case ProjectionType::lambert:
    case ProjectionType::albers:
      return OperationText(p.type == ProjectionType::albers ? "aea" : "lcc")
          .angle("lat_0", p.originLatitude)
          .angle("lon_0", p.centralMeridian)
          .angle("lat_1", p.firstParallel)
          .angle("lat_2", p.secondParallel);
    case ProjectionType::polyconic:
      return OperationText("poly").angle("lat_0", p.originLatitude).angle("lon_0", p.centralMeridian);
    case ProjectionType::cylindrical:
      return OperationText("eqc").angle("lon_0", p.centralMeridian).angle("lat_ts", p.firstParallel);
    case ProjectionType::stereographic:
      return OperationText("stere").angle("lat_0", pole).angle("lon_0", p.centralMeridian).scale(p.scale);
    case ProjectionType::miller:
      // Miller's is a projection of the sphere; reference systems mean the one with the ellipsoid's area.
      return OperationText("mill").angle("lon_0", p.centralMeridian).flag("R_A");
    case ProjectionType::sinusoidal:
      return OperationText("sinu").angle("lon_0", p.centralMeridian);
    default:
      return OperationText("bipc");
  }
}

bool isAngle(double longitude, double latitude) {
  return std::fabs(latitude) <= kMaxLatitude && std::fabs(longitude) <= kMaxLongitude;
}

bool unset(double& x, double& y) {
  x = y = kUnsetValue;
  return false;
}

}  // namespace

double utmFalseEasting(const ProjectionParameters& p) {
  return hasOwnFalseOrigin(p) ? p.falseEasting : 500000.0;
}

double utmFalseNorthing(const ProjectionParameters& p) {
  if (hasOwnFalseOrigin(p)) return p.falseNorthing;
  return p.hemisphere < 0 ? 10000000.0 : 0.0;
}

QByteArray projOperationText(const ProjectionParameters& p) {
  const bool inMetres = (p.type >= ProjectionType::utm && p.type <= ProjectionType::miller) ||
                        p.type == ProjectionType::sinusoidal;
  if (!inMetres) return QByteArray();
  // Bipolar has everything fixed, the origin too.
  if (p.type == ProjectionType::bipolar) return methodText(p).ellipsoid(p.datum).text();
  const bool utm = p.type == ProjectionType::utm;
  return methodText(p)
      .length("x_0", utm ? utmFalseEasting(p) : p.falseEasting)
      .length("y_0", utm ? utmFalseNorthing(p) : p.falseNorthing)
      .ellipsoid(p.datum)
      .text();
}

PjPtr baseGeographic(PJ_CONTEXT* context, const PJ* horizontal) {
  PjPtr base(proj_crs_get_geodetic_crs(context, horizontal));
  while (base && proj_crs_is_derived(context, base.get()))
    base.reset(proj_get_source_crs(context, base.get()));
  return base;
}

ProjectionEngine::ProjectionEngine(const ProjectionParameters& parameters) {
  switch (parameters.type) {
    case ProjectionType::none:
      kind_ = Kind::identity;
      break;
    case ProjectionType::latLong:
    case ProjectionType::latLong2:
      kind_ = Kind::degrees;
      break;
    case ProjectionType::foreign:
      setUpForeign(parameters);
      break;
    default:
      setUpProjected(parameters);
  }
}

void ProjectionEngine::setUpProjected(const ProjectionParameters& parameters) {
  const QByteArray text = projOperationText(parameters);
  if (text.isEmpty()) return;
  context_ = makePjContext();
  operation_.reset(proj_create(context_.get(), text.constData()));
  if (operation_) kind_ = Kind::projected;
}

void ProjectionEngine::setUpForeign(const ProjectionParameters& parameters) {
  if (parameters.definition.isEmpty()) {
    kind_ = Kind::identity;
    return;
  }
  context_ = makePjContext();
  PJ_CONTEXT* context = context_.get();
  const PjPtr plane(proj_create(context, parameters.definition.toUtf8().constData()));
  if (!plane) return;
  const PjPtr base = baseGeographic(context, plane.get());
  if (!base || !readAngularFrame(base.get())) return;
  const PjPtr raw(proj_create_crs_to_crs_from_pj(context, plane.get(), base.get(), nullptr, nullptr));
  if (raw) operation_.reset(proj_normalize_for_visualization(context, raw.get()));
  if (operation_) kind_ = Kind::foreign;
}

bool ProjectionEngine::readAngularFrame(const PJ* base) {
  PJ_CONTEXT* context = context_.get();
  const PjPtr system(proj_crs_get_coordinate_system(context, base));
  if (!system || !proj_cs_get_axis_info(context, system.get(), 0, nullptr, nullptr, nullptr, &radiansPerUnit_,
                                        nullptr, nullptr, nullptr)) {
    return false;
  }
  const PjPtr meridian(proj_get_prime_meridian(context, base));
  double longitude = 0.0, radians = 0.0;
  if (meridian &&
      proj_prime_meridian_get_parameters(context, meridian.get(), &longitude, &radians, nullptr)) {
    primeMeridian_ = longitude * radians;
  }
  return radiansPerUnit_ > 0.0;
}

bool ProjectionEngine::transform(PJ_DIRECTION direction, double& x, double& y) const {
  const PJ_COORD result = proj_trans(operation_.get(), direction, proj_coord(x, y, 0.0, 0.0));
  x = result.xy.x;
  y = result.xy.y;
  return std::isfinite(x) && std::isfinite(y);
}

bool ProjectionEngine::toGeographic(double& x, double& y) const {
  if (kind_ == Kind::identity) return true;
  if (kind_ == Kind::broken || !(std::fabs(x) < kUnsetLimit && std::fabs(y) < kUnsetLimit))
    return unset(x, y);
  bool done = true;
  if (kind_ == Kind::degrees) {
    x = Math_Deg_To_Rad(x);
    y = Math_Deg_To_Rad(y);
  } else if (kind_ == Kind::projected) {
    done = transform(PJ_INV, x, y);
  } else {
    done = transform(PJ_FWD, x, y);
    x = x * radiansPerUnit_ + primeMeridian_;
    y *= radiansPerUnit_;
  }
  return (done && isAngle(x, y)) || unset(x, y);
}

bool ProjectionEngine::toPlane(double& x, double& y) const {
  if (kind_ == Kind::identity) return true;
  if (kind_ == Kind::broken || !isAngle(x, y)) return unset(x, y);
  if (kind_ == Kind::degrees) {
    x = Math_Rad_To_Deg(x);
    y = Math_Rad_To_Deg(y);
    return true;
  }
  if (kind_ == Kind::projected) return transform(PJ_FWD, x, y) || unset(x, y);
  x = (x - primeMeridian_) / radiansPerUnit_;
  y /= radiansPerUnit_;
  return transform(PJ_INV, x, y) || unset(x, y);
}

}  // namespace kaldex
