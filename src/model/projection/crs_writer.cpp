#include "model/projection/crs_writer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <charconv>
#include <cmath>
#include <iterator>

#include "kaldex/model/angle.h"
#include "model/projection/crs_datum.h"
#include "model/projection/epsg_registry.h"
#include "model/projection/known_datums.h"
#include "model/projection/projection_engine.h"
#include "model/projection/projection_methods.h"

// Systems are put together as PROJJSON, which lets the registry's own geographic systems in as they are.

namespace kaldex {
namespace {

struct NamedEllipsoid {
  const char* name;
  double radius;
  double inverseFlattening;
};

constexpr NamedEllipsoid kEllipsoids[] = {
    {"WGS 84", 6378137.0, 298.257223563},      {"GRS 1980", 6378137.0, 298.257222101},
    {"GRS 1967 Modified", 6378160.0, 298.25},  {"GRS 1967", 6378160.0, 298.247167427},
    {"International 1924", 6378388.0, 297.0},  {"Clarke 1866", 6378206.4, 294.978698213898},
    {"Bessel 1841", 6377397.155, 299.1528128}, {"Airy 1830", 6377563.396, 299.3249646},
    {"Krassowsky 1940", 6378245.0, 298.3},
};

QString ellipsoidName(double radius, double inverseFlattening) {
  for (const NamedEllipsoid& known : kEllipsoids) {
    if (known.radius == radius && std::fabs(known.inverseFlattening - inverseFlattening) < 1e-9) {
      return QString::fromLatin1(known.name);
    }
  }
  return QStringLiteral("unknown");
}

QJsonObject epsgId(int code) {
  return {{QStringLiteral("authority"), QStringLiteral("EPSG")}, {QStringLiteral("code"), code}};
}

QJsonObject axis(const char* name, const char* abbreviation, const char* direction, const char* unit) {
  return {{QStringLiteral("name"), QLatin1String(name)},
          {QStringLiteral("abbreviation"), QLatin1String(abbreviation)},
          {QStringLiteral("direction"), QLatin1String(direction)},
          {QStringLiteral("unit"), QLatin1String(unit)}};
}

QJsonObject coordinateSystem(const char* subtype, const QJsonObject& first, const QJsonObject& second) {
  return {{QStringLiteral("subtype"), QLatin1String(subtype)},
          {QStringLiteral("axis"), QJsonArray{first, second}}};
}

QJsonObject ellipsoidJson(const Datum& datum) {
  const double inverse = datum.flattening() > 0.0 ? snapped(1.0 / datum.flattening()) : 0.0;
  QJsonObject ellipsoid{{QStringLiteral("name"), ellipsoidName(datum.radius(), inverse)}};
  if (inverse > 0.0) {
    ellipsoid[QStringLiteral("semi_major_axis")] = datum.radius();
    ellipsoid[QStringLiteral("inverse_flattening")] = inverse;
  } else {
    ellipsoid[QStringLiteral("radius")] = datum.radius();
  }
  return ellipsoid;
}

PjPtr createFromJson(PJ_CONTEXT* context, const QJsonObject& json) {
  return PjPtr(proj_create(context, QJsonDocument(json).toJson(QJsonDocument::Compact).constData()));
}

QJsonObject jsonOf(PJ_CONTEXT* context, const PJ* object) {
  return QJsonDocument::fromJson(QByteArray(proj_as_projjson(context, object, nullptr))).object();
}

PjPtr unregisteredGeographic(PJ_CONTEXT* context, const Datum& datum) {
  const QJsonObject frame{{QStringLiteral("type"), QStringLiteral("GeodeticReferenceFrame")},
                          {QStringLiteral("name"), datum.name()},
                          {QStringLiteral("ellipsoid"), ellipsoidJson(datum)}};
  return createFromJson(context, {{QStringLiteral("type"), QStringLiteral("GeographicCRS")},
                                  {QStringLiteral("name"), datum.name()},
                                  {QStringLiteral("datum"), frame},
                                  {QStringLiteral("coordinate_system"),
                                   coordinateSystem("ellipsoidal", axis("Latitude", "lat", "north", "degree"),
                                                    axis("Longitude", "lon", "east", "degree"))}});
}

PjPtr makeGeographic(PJ_CONTEXT* context, const Datum& datum) {
  const KnownDatum* known = findKnownDatum(datum.name());
  if (known != nullptr && std::fabs(known->radius - datum.radius()) < 1e-3 &&
      std::fabs(1.0 / known->inverseFlattening - datum.flattening()) < 1e-10) {
    PjPtr registered = registeredCrs(context, known->geographicCode);
    if (registered) return registered;
  }
  PjPtr made = unregisteredGeographic(context, datum);
  if (!made || isMadeUpDatumName(datum.name())) return made;
  // A datum that carries the name of the registry gets the registry's system.
  PjPtr registered = registeredFor(context, made.get());
  return registered ? std::move(registered) : std::move(made);
}

QJsonObject parameterJson(const MethodParameter& parameter, const ProjectionParameters& values) {
  const double value = values.*parameter.member;
  const bool angle = parameter.quantity == Quantity::angle;
  const char* unit = angle ? "degree" : parameter.quantity == Quantity::length ? "metre" : "unity";
  return {{QStringLiteral("name"), QLatin1String(parameter.name)},
          {QStringLiteral("value"), angle ? snapped(Math_Rad_To_Deg(value)) : value},
          {QStringLiteral("unit"), QLatin1String(unit)},
          {QStringLiteral("id"), epsgId(parameter.code)}};
}

/// The zone of customary UTM parameters, 0 if they aren't.
int utmZone(const ProjectionParameters& p) {
  const double zone = (snapped(Math_Rad_To_Deg(p.centralMeridian)) + 183.0) / 6.0;
  const double northing = p.hemisphere < 0 ? 1e7 : 0.0;
  const bool customary = zone == std::round(zone) && zone >= 1.0 && zone <= 60.0 &&
                         p.falseEasting == 500000.0 && p.falseNorthing == northing;
  return p.type == ProjectionType::utm && customary ? static_cast<int>(zone) : 0;
}

/// "UTM zone 23S" where there is such a zone, otherwise the name that the user has given, otherwise the
/// method's.
QString conversionName(const ProjectionMethod& method, const ProjectionParameters& p) {
  if (const int zone = utmZone(p)) {
    return QStringLiteral("UTM zone %1%2").arg(zone).arg(QLatin1Char(p.hemisphere < 0 ? 'S' : 'N'));
  }
  const bool ownName = !p.name.isEmpty() && p.name != projectionTypeName(p.type);
  return ownName ? p.name : QString::fromLatin1(method.name);
}

QJsonObject conversionJson(const ProjectionMethod& method, const ProjectionParameters& values) {
  QJsonObject methodJson{{QStringLiteral("name"), QLatin1String(method.name)}};
  if (method.code != 0) methodJson[QStringLiteral("id")] = epsgId(method.code);
  QJsonArray parameters;
  for (const MethodParameter& parameter : method.parameters)
    parameters.append(parameterJson(parameter, values));
  return {{QStringLiteral("name"), conversionName(method, values)},
          {QStringLiteral("method"), methodJson},
          {QStringLiteral("parameters"), parameters}};
}

PjPtr makeProjected(PJ_CONTEXT* context, const ProjectionParameters& parameters) {
  const ProjectionMethod* method = methodFor(parameters);
  // What can't be computed with has no reference system either.
  if (method == nullptr || projOperationText(parameters).isEmpty()) return nullptr;
  const PjPtr base = makeGeographic(context, parameters.datum);
  if (!base) return nullptr;
  const ProjectionParameters values = writableParameters(parameters);
  const QString name =
      QString::fromUtf8(proj_get_name(base.get())) + QStringLiteral(" / ") + conversionName(*method, values);
  return createFromJson(context, {{QStringLiteral("type"), QStringLiteral("ProjectedCRS")},
                                  {QStringLiteral("name"), name},
                                  {QStringLiteral("base_crs"), jsonOf(context, base.get())},
                                  {QStringLiteral("conversion"), conversionJson(*method, values)},
                                  {QStringLiteral("coordinate_system"),
                                   coordinateSystem("Cartesian", axis("Easting", "E", "east", "metre"),
                                                    axis("Northing", "N", "north", "metre"))}});
}

/// The double that prints like the float: -67.35f widened would print as -67.3499984741.
double shortest(float metres) {
  char buffer[32];
  const auto written = std::to_chars(buffer, std::end(buffer), metres);
  double value = 0.0;
  std::from_chars(buffer, written.ptr, value);
  return value;
}

QJsonObject translationJson(const char* axisName, int code, float metres) {
  return {{QStringLiteral("name"), QLatin1String(axisName)},
          {QStringLiteral("value"), shortest(metres)},
          {QStringLiteral("unit"), QStringLiteral("metre")},
          {QStringLiteral("id"), epsgId(code)}};
}

QJsonObject shiftJson(const Datum& datum) {
  const QJsonObject method{
      {QStringLiteral("name"), QStringLiteral("Geocentric translations (geog2D domain)")},
      {QStringLiteral("id"), epsgId(9603)}};
  const QJsonArray parameters{translationJson("X-axis translation", 8605, datum.dx()),
                              translationJson("Y-axis translation", 8606, datum.dy()),
                              translationJson("Z-axis translation", 8607, datum.dz())};
  return {{QStringLiteral("name"), QStringLiteral("Transformation to WGS84")},
          {QStringLiteral("method"), method},
          {QStringLiteral("parameters"), parameters}};
}

DatumShift foundWithoutStatement(PJ_CONTEXT* context, const PJ* plain) {
  const PjPtr base = baseGeographic(context, plain);
  const Datum found = base ? readDatum(context, base.get(), std::nullopt) : Datum();
  return {found.dx(), found.dy(), found.dz()};
}

}  // namespace

PjPtr makePlainCrs(PJ_CONTEXT* context, const ProjectionParameters& parameters) {
  if (parameters.epsg != 0) {
    PjPtr registered = registeredCrs(context, parameters.epsg);
    if (registered) return registered;
  }
  if (parameters.type == ProjectionType::foreign) {
    if (parameters.definition.isEmpty()) return nullptr;
    return PjPtr(proj_create(context, parameters.definition.toUtf8().constData()));
  }
  if (parameters.datum.isNone()) return nullptr;
  const bool degrees =
      parameters.type == ProjectionType::latLong || parameters.type == ProjectionType::latLong2;
  return degrees ? makeGeographic(context, parameters.datum) : makeProjected(context, parameters);
}

PjPtr stateShift(PJ_CONTEXT* context, PjPtr plain, const ProjectionParameters& parameters, bool namesDatum) {
  const Datum& datum = parameters.datum;
  if (!plain || datum.isNone()) return plain;
  const DatumShift wanted{datum.dx(), datum.dy(), datum.dz()};
  if (wanted == (namesDatum ? foundWithoutStatement(context, plain.get()) : DatumShift{})) return plain;
  const PjPtr world = registeredCrs(context, 4326);
  if (!world) return plain;
  PjPtr bound = createFromJson(context, {{QStringLiteral("type"), QStringLiteral("BoundCRS")},
                                         {QStringLiteral("source_crs"), jsonOf(context, plain.get())},
                                         {QStringLiteral("target_crs"), jsonOf(context, world.get())},
                                         {QStringLiteral("transformation"), shiftJson(datum)}});
  return bound ? std::move(bound) : std::move(plain);
}

}  // namespace kaldex
