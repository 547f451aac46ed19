#include "model/projection/crs_datum.h"

#include <proj_experimental.h>

#include <algorithm>

#include "kaldex/model/angle.h"
#include "model/projection/datum_shift.h"
#include "model/projection/epsg_registry.h"
#include "model/projection/known_datums.h"

namespace kaldex {
namespace {

struct Ellipsoid {
  double radius = 0.0;
  double flattening = 0.0;
};

/// Translation in metres, rotation in arc seconds, scale in parts per million; position vector convention.
using Helmert = std::array<double, 7>;

Ellipsoid readEllipsoid(PJ_CONTEXT* context, const PJ* base) {
  Ellipsoid result;
  double inverse = 0.0;
  const PjPtr ellipsoid(proj_get_ellipsoid(context, base));
  if (ellipsoid &&
      proj_ellipsoid_get_parameters(context, ellipsoid.get(), &result.radius, nullptr, nullptr, &inverse)) {
    result.flattening = inverse > 0.0 ? 1.0 / inverse : 0.0;
  }
  return result;
}

QString readDatumName(PJ_CONTEXT* context, const PJ* base) {
  const PjPtr datum(proj_crs_get_datum_forced(context, base));
  const char* name = datum ? proj_get_name(datum.get()) : nullptr;
  const QString text = QString::fromUtf8(name == nullptr ? "unknown" : name);
  // PROJ tells the shift again in the names that it makes up.
  return text.section(QStringLiteral(" using "), 0, 0);
}

bool readHelmert(PJ_CONTEXT* context, const PJ* bound, Helmert& values) {
  const PjPtr operation(proj_crs_get_coordoperation(context, bound));
  return operation && proj_coordoperation_get_towgs84_values(context, operation.get(), values.data(),
                                                             static_cast<int>(values.size()), 0);
}

/// The plain shift that does at one place what the whole transformation does there.
DatumShift shiftAt(const Geocentric& place, const Helmert& h) {
  const double second = Math_Deg_To_Rad(1.0 / 3600.0);
  const double rx = h[3] * second, ry = h[4] * second, rz = h[5] * second, growth = 1.0 + h[6] * 1e-6;
  const double x = h[0] + growth * (place.x - rz * place.y + ry * place.z) - place.x;
  const double y = h[1] + growth * (rz * place.x + place.y - rx * place.z) - place.y;
  const double z = h[2] + growth * (-ry * place.x + rx * place.y + place.z) - place.z;
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

DatumShift translationOf(const Helmert& h) {
  return {static_cast<float>(h[0]), static_cast<float>(h[1]), static_cast<float>(h[2])};
}

/// What PROJ's database has for the whole of a geographic system: nothing when there is no transformation, or
/// several that differ.
std::optional<DatumShift> registeredShift(PJ_CONTEXT* context, const PJ* base, const Ellipsoid& ellipsoid) {
  const PjPtr registered = registeredFor(context, base);
  if (!registered) return std::nullopt;
  const PjPtr bound(proj_crs_create_bound_crs_to_WGS84(context, registered.get(), nullptr));
  Helmert values{};
  if (!bound || !readHelmert(context, bound.get(), values)) return std::nullopt;
  const bool plain = std::all_of(values.begin() + 3, values.end(), [](double value) { return value == 0.0; });
  double west = 0.0, south = 0.0, east = 0.0, north = 0.0;
  if (plain || !proj_get_area_of_use(context, registered.get(), &west, &south, &east, &north, nullptr)) {
    return translationOf(values);
  }
  // Where the transformation turns as well, its three shifts alone would be off by tens of metres.
  const double middle = west <= east ? (west + east) / 2.0 : (west + east) / 2.0 + 180.0;
  return shiftAt(geocentricOf(ellipsoid.radius, ellipsoid.flattening, Math_Deg_To_Rad(middle),
                              Math_Deg_To_Rad((south + north) / 2.0)),
                 values);
}

}  // namespace

std::optional<DatumShift> statedShift(PJ_CONTEXT* context, const PJ* bound) {
  Helmert values{};
  if (!readHelmert(context, bound, values)) return std::nullopt;
  return translationOf(values);
}

Datum readDatum(PJ_CONTEXT* context, const PJ* base, const std::optional<DatumShift>& stated) {
  const Ellipsoid ellipsoid = readEllipsoid(context, base);
  QString name = readDatumName(context, base);
  short id = 0;
  DatumShift shift{};
  const KnownDatum* known = findKnownDatumByRegistry(name, ellipsoid.radius, ellipsoid.flattening);
  if (known != nullptr) {
    const Datum datum = known->datum();
    id = datum.id();
    name = datum.name();
    shift = {known->dx, known->dy, known->dz};
  }
  if (stated) {
    shift = *stated;
  } else if (known == nullptr && !isMadeUpDatumName(name)) {
    shift = registeredShift(context, base, ellipsoid).value_or(DatumShift{});
  }
  return Datum(id, name, ellipsoid.radius, ellipsoid.flattening, shift[0], shift[1], shift[2]);
}

}  // namespace kaldex
