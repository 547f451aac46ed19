#ifndef KALDEX_MODEL_PROJECTION_KNOWN_DATUMS_H
#define KALDEX_MODEL_PROJECTION_KNOWN_DATUMS_H

#include <QString>

#include "kaldex/model/datum.h"

namespace kaldex {

/// A datum that this library knows by a name of its own.
struct KnownDatum {
  const char* name;      ///< Ours, as written to files.
  const char* registry;  ///< The name in the EPSG registry.
  int geographicCode;    ///< EPSG code of its latitude and longitude system.
  double radius;
  double inverseFlattening;
  float dx, dy, dz;  ///< To WGS84, metres.

  Datum datum() const;
};

/// Null when there is none of that name.
const KnownDatum* findKnownDatum(const QString& name);
/// By the registry's name; the ellipsoid has to be the same.
const KnownDatum* findKnownDatumByRegistry(const QString& registryName, double radius, double flattening);

/// Names that PROJ makes up for a datum that is told by its ellipsoid only; no registry has them.
bool isMadeUpDatumName(const QString& name);

}  // namespace kaldex

#endif
