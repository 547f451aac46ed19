#ifndef KALDEX_MODEL_PROJECTION_TEXT_H
#define KALDEX_MODEL_PROJECTION_TEXT_H

#include <QString>
#include <memory>

#include "kaldex/model/projection.h"

inline namespace kaldex_v1 {

/// The projection of a reference system told as "EPSG:n", PROJ string, WKT 1 (as in .prj files, of either
/// dialect) or WKT 2. It becomes one of the fifteen types when method, parameters, units and prime meridian
/// allow it and the conversions agree within a micrometre; any other horizontal system becomes a foreign
/// projection that keeps its definition. Heights of a compound system are left out. Datum shifts come from
/// the text, else from the known datums, else from PROJ's database. Null for what is no horizontal reference
/// system, with the reason in `error` if that is given.
KALDEX_MODEL_API std::unique_ptr<SProjection> projectionFromText(const QString& text,
                                                                 QString* error = nullptr);

enum class WktVariant { gdal1, esri1, wkt2 };

/// The projection as one line of WKT; empty when there is none (type NONE, no usable datum or parameters).
/// The ESRI variant has no place for datum shifts, nor for the type BIPOLAR, which gives an empty text there.
KALDEX_MODEL_API QString projectionToWkt(const SProjection& projection, WktVariant variant);

/// The projection as a PROJ string ending in "+type=crs"; empty when there is none.
KALDEX_MODEL_API QString projectionToProj4(const SProjection& projection);

/// The EPSG code of exactly this reference system, or 0. Without a kept code the search takes up to some 0.1
/// s.
KALDEX_MODEL_API int projectionEpsgCode(const SProjection& projection);

}  // namespace kaldex_v1

#endif
