#include "model/projection/projection_methods.h"

#include <cmath>

#include "kaldex/model/angle.h"
#include "model/projection/projection_engine.h"

namespace kaldex {
namespace {

using Parameters = ProjectionParameters;

const MethodParameter kLatitude{8801, "Latitude of natural origin", Quantity::angle,
                                &Parameters::originLatitude};
const MethodParameter kLongitude{8802, "Longitude of natural origin", Quantity::angle,
                                 &Parameters::centralMeridian};
const MethodParameter kScale{8805, "Scale factor at natural origin", Quantity::ratio, &Parameters::scale};
const MethodParameter kEasting{8806, "False easting", Quantity::length, &Parameters::falseEasting};
const MethodParameter kNorthing{8807, "False northing", Quantity::length, &Parameters::falseNorthing};
const MethodParameter kFalseLatitude{8821, "Latitude of false origin", Quantity::angle,
                                     &Parameters::originLatitude};
const MethodParameter kFalseLongitude{8822, "Longitude of false origin", Quantity::angle,
                                      &Parameters::centralMeridian};
const MethodParameter kFirst{8823, "Latitude of 1st standard parallel", Quantity::angle,
                             &Parameters::firstParallel};
const MethodParameter kSecond{8824, "Latitude of 2nd standard parallel", Quantity::angle,
                              &Parameters::secondParallel};
const MethodParameter kEastingFalse{8826, "Easting at false origin", Quantity::length,
                                    &Parameters::falseEasting};
const MethodParameter kNorthingFalse{8827, "Northing at false origin", Quantity::length,
                                     &Parameters::falseNorthing};
const MethodParameter kParallel{8832, "Latitude of standard parallel", Quantity::angle,
                                &Parameters::firstParallel};
const MethodParameter kOriginLongitude{8833, "Longitude of origin", Quantity::angle,
                                       &Parameters::centralMeridian};

/// The first method of a type is the one that it is written as.
const std::vector<ProjectionMethod>& methods() {
  using Type = ProjectionType;
  static const std::vector<MethodParameter> conic{kFalseLatitude, kFalseLongitude, kFirst,
                                                  kSecond,        kEastingFalse,   kNorthingFalse};
  static const std::vector<MethodParameter> byScale{kLatitude, kLongitude, kScale, kEasting, kNorthing};
  static const std::vector<MethodParameter> byParallel{kFirst, kLongitude, kEasting, kNorthing};
  static const std::vector<MethodParameter> byMeridian{kLongitude, kEasting, kNorthing};
  static const std::vector<ProjectionMethod> all{
      {Type::gaussTm, MethodCode::transverseMercator, "Transverse Mercator", byScale},
      {Type::mercator, 9805, "Mercator (variant B)", byParallel},
      {Type::mercator, MethodCode::mercatorByScale, "Mercator (variant A)", byScale},
      {Type::lambert, 9802, "Lambert Conic Conformal (2SP)", conic},
      {Type::lambert, MethodCode::lambertOneParallel, "Lambert Conic Conformal (1SP)", byScale},
      {Type::polyconic, 9818, "American Polyconic", {kLatitude, kLongitude, kEasting, kNorthing}},
      {Type::cylindrical, 1028, "Equidistant Cylindrical", byParallel},
      {Type::cylindrical, 1029, "Equidistant Cylindrical (Spherical)", byParallel},
      {Type::stereographic, MethodCode::polarStereographicByScale, "Polar Stereographic (variant A)",
       byScale},
      {Type::stereographic,
       MethodCode::polarStereographicByParallel,
       "Polar Stereographic (variant B)",
       {kParallel, kOriginLongitude, kEasting, kNorthing}},
      {Type::albers, 9822, "Albers Equal Area", conic},
      {Type::miller, 0, "Miller Cylindrical", byMeridian},
      {Type::sinusoidal, 0, "Sinusoidal", byMeridian},
      {Type::bipolar, 0, "PROJ bipc", {}},
  };
  return all;
}

bool near(double a, double b, double tolerance) {
  return std::fabs(a - b) <= tolerance;
}

double eccentricitySquared(const Datum& datum) {
  return datum.flattening() * (2.0 - datum.flattening());
}

/// The parallel that a Mercator of that scale is true at; false when it enlarges everywhere.
bool mercatorParallel(Parameters& p) {
  if (p.originLatitude != 0.0 || !(p.scale > 0.0 && p.scale <= 1.0)) return false;
  const double k2 = p.scale * p.scale;
  p.firstParallel = std::asin(std::sqrt((1.0 - k2) / (1.0 - eccentricitySquared(p.datum) * k2)));
  p.scale = 1.0;
  return true;
}

/// The scale at the pole of a stereographic that is true at a parallel.
bool polarScale(Parameters& p) {
  const double parallel = std::fabs(p.firstParallel);
  p.hemisphere = p.firstParallel < 0.0 ? -1 : 1;
  p.originLatitude = p.hemisphere * kPi / 2.0;
  p.firstParallel = 0.0;
  p.scale = 1.0;
  if (near(parallel, kPi / 2.0, 1e-12)) return true;
  const double e = std::sqrt(eccentricitySquared(p.datum));
  const double eSine = e * std::sin(parallel);
  const double m = std::cos(parallel) / std::sqrt(1.0 - eSine * eSine);
  const double t = std::tan(kPi / 4.0 - parallel / 2.0) * std::pow((1.0 + eSine) / (1.0 - eSine), e / 2.0);
  p.scale = m * std::sqrt(std::pow(1.0 + e, 1.0 + e) * std::pow(1.0 - e, 1.0 - e)) / (2.0 * t);
  return true;
}

bool isUtm(const Parameters& p) {
  const double zone = (Math_Rad_To_Deg(p.centralMeridian) + 183.0) / 6.0;
  return p.originLatitude == 0.0 && near(p.scale, 0.9996, 1e-12) && near(p.falseEasting, 500000.0, 1e-6) &&
         (p.falseNorthing == 0.0 || near(p.falseNorthing, 1e7, 1e-6)) && near(zone, std::round(zone), 1e-9);
}

/// Which half of the world the parameters speak of, where the method doesn't say so.
short likelyHemisphere(const Parameters& p) {
  if (p.originLatitude != 0.0) return p.originLatitude < 0.0 ? -1 : 1;
  if (p.firstParallel != 0.0) return p.firstParallel < 0.0 ? -1 : 1;
  return p.falseNorthing >= 1e7 ? -1 : 1;
}

}  // namespace

const ProjectionMethod* findMethod(int code, const QString& name) {
  for (const ProjectionMethod& method : methods()) {
    if (code != 0 ? method.code == code : name == QLatin1String(method.name)) return &method;
  }
  return nullptr;
}

const ProjectionMethod* methodFor(const ProjectionParameters& p) {
  short type = p.type;
  if (type == ProjectionType::utm) type = ProjectionType::gaussTm;
  if (type == ProjectionType::lambertMillion) type = ProjectionType::lambert;
  // One that is true at the equator is usually told by its scale of 1.
  const bool byScale = type == ProjectionType::mercator && p.firstParallel == 0.0;
  for (const ProjectionMethod& method : methods()) {
    if (method.type == type && (!byScale || method.code == MethodCode::mercatorByScale)) return &method;
  }
  return nullptr;
}

bool adaptParameters(const ProjectionMethod& method, ProjectionParameters& p) {
  p.hemisphere = likelyHemisphere(p);
  switch (method.code) {
    case MethodCode::transverseMercator:
      if (isUtm(p)) p.type = ProjectionType::utm;
      return true;
    case MethodCode::mercatorByScale:
      return mercatorParallel(p);
    case MethodCode::lambertOneParallel:
      p.firstParallel = p.secondParallel = p.originLatitude;
      return p.scale == 1.0;
    case MethodCode::polarStereographicByScale:
      p.originLatitude = p.hemisphere * kPi / 2.0;
      return true;
    case MethodCode::polarStereographicByParallel:
      return polarScale(p);
    default:
      return true;
  }
}

ProjectionParameters writableParameters(const ProjectionParameters& parameters) {
  ProjectionParameters p = parameters;
  if (p.scale == 0.0) p.scale = 1.0;
  if (p.type == ProjectionType::utm) {
    p.originLatitude = 0.0;
    p.scale = 0.9996;
    p.falseEasting = utmFalseEasting(parameters);
    p.falseNorthing = utmFalseNorthing(parameters);
  }
  if (p.type == ProjectionType::mercator) {
    p.originLatitude = 0.0;
    p.scale = 1.0;
  }
  if (p.type == ProjectionType::stereographic) p.originLatitude = p.hemisphere < 0 ? -kPi / 2.0 : kPi / 2.0;
  return p;
}

}  // namespace kaldex
