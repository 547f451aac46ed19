#include "kaldex/model/datum.h"

#include <cmath>
#include <iterator>

#include "model/projection/known_datums.h"

namespace kaldex {
namespace {

// Shifts as published by the national agencies; for SAD69, Corrego Alegre and Chua those of Brazil to
// SIRGAS2000, which is WGS84 at their precision, for the others the means of the whole region.
constexpr KnownDatum kKnownDatums[] = {
    {"WGS84", "World Geodetic System 1984", 4326, 6378137.0, 298.257223563, 0.0f, 0.0f, 0.0f},
    {"SIRGAS2000", "Sistema de Referencia Geocentrico para las AmericaS 2000", 4674, 6378137.0, 298.257222101,
     0.0f, 0.0f, 0.0f},
    {"SAD69", "South American Datum 1969", 4618, 6378160.0, 298.25, -67.35f, 3.88f, -38.22f},
    {"CORREGO ALEGRE", "Corrego Alegre 1970-72", 4225, 6378388.0, 297.0, -206.05f, 168.28f, -3.82f},
    {"CHUA", "Chua", 4224, 6378388.0, 297.0, -144.35f, 242.88f, -33.2f},
    {"PSAD56", "Provisional South American Datum 1956", 4248, 6378388.0, 297.0, -288.0f, 175.0f, -376.0f},
    {"NAD27", "North American Datum 1927", 4267, 6378206.4, 294.978698213898, -8.0f, 160.0f, 176.0f},
    {"NAD83", "North American Datum 1983", 4269, 6378137.0, 298.257222101, 0.0f, 0.0f, 0.0f},
    {"ED50", "European Datum 1950", 4230, 6378388.0, 297.0, -87.0f, -98.0f, -121.0f},
    {"ETRS89", "European Terrestrial Reference System 1989", 4258, 6378137.0, 298.257222101, 0.0f, 0.0f,
     0.0f},
};

}  // namespace

Datum KnownDatum::datum() const {
  const auto id = static_cast<short>(this - std::begin(kKnownDatums) + 1);
  return Datum(id, QString::fromLatin1(name), radius, 1.0 / inverseFlattening, dx, dy, dz, false);
}

const KnownDatum* findKnownDatum(const QString& name) {
  for (const KnownDatum& known : kKnownDatums) {
    if (name == QLatin1String(known.name)) return &known;
  }
  return nullptr;
}

const KnownDatum* findKnownDatumByRegistry(const QString& registryName, double radius, double flattening) {
  for (const KnownDatum& known : kKnownDatums) {
    if (registryName != QLatin1String(known.registry)) continue;
    const Datum datum = known.datum();
    const bool sameEllipsoid =
        std::fabs(datum.radius() - radius) < 1e-3 && std::fabs(datum.flattening() - flattening) < 1e-10;
    return sameEllipsoid ? &known : nullptr;
  }
  return nullptr;
}

bool isMadeUpDatumName(const QString& name) {
  return name.startsWith(QLatin1String("unknown"), Qt::CaseInsensitive);
}

}  // namespace kaldex

inline namespace kaldex_v1 {
namespace {

bool within(double a, double b, double tolerance) {
  return std::fabs(a - b) <= tolerance;
}

const QString& noneName() {
  static const QString name = QStringLiteral("NONE");
  return name;
}

}  // namespace

Datum::Datum() : name_(noneName()) {}

Datum::Datum(short id, const QString& name, double radius, double flattening, float dx, float dy, float dz,
             bool owned)
    : id_(id),
      owned_(owned),
      dx_(dx),
      dy_(dy),
      dz_(dz),
      radius_(radius),
      flattening_(flattening),
      name_(name) {}

Datum::~Datum() = default;

bool Datum::isNone() const {
  const bool usable = std::isfinite(radius_) && radius_ > 0.0 && flattening_ >= 0.0 && flattening_ < 1.0;
  const bool shiftable = std::isfinite(dx_) && std::isfinite(dy_) && std::isfinite(dz_);
  return !usable || !shiftable || name_ == noneName();
}

bool Datum::operator==(const Datum& other) const {
  if (this == &other) return true;
  return within(radius_, other.radius_, 1e-3) && within(flattening_, other.flattening_, 1e-10) &&
         within(dx_, other.dx_, 1e-4) && within(dy_, other.dy_, 1e-4) && within(dz_, other.dz_, 1e-4);
}

DatumList::~DatumList() = default;

Datum* DatumList::find(const QString& name) const {
  for (Datum* datum : *this) {
    if (datum->name() == name) return datum;
  }
  return nullptr;
}

void DatumList::appendKnown() {
  if (!ownsItems()) return;
  for (const kaldex::KnownDatum& known : kaldex::kKnownDatums) Append(new Datum(known.datum()));
}

Datum knownDatum(const QString& name) {
  const kaldex::KnownDatum* known = kaldex::findKnownDatum(name);
  return known == nullptr ? Datum() : known->datum();
}

}  // namespace kaldex_v1
