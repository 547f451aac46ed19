#ifndef KALDEX_MODEL_GEOPACKAGE_SCHEMA_H
#define KALDEX_MODEL_GEOPACKAGE_SCHEMA_H

#include <string>

#include "kaldex/model/geometry.h"
#include "kaldex/model/projection.h"
#include "model/database/sqlite.h"

// The tables of OGC GeoPackage 1.3 (12-128r18) in which ours are registered, so that any GIS opens the file.

namespace kaldex {

/// Make the gpkg_* tables in an empty file and mark it as a GeoPackage. Inside the gathering transaction, but
/// for the file's marks (application_id, user_version), which SQLite writes with it.
void createGeoPackageTables(SqliteConnection& connection);
bool isGeoPackage(SqliteConnection& connection);

/// Identifier of the projection in gpkg_spatial_ref_sys, which gains a row when there is none: the EPSG code
/// where one is exact, a number from 100000 otherwise, -1 for the undefined plane.
int registerSpatialReference(SqliteConnection& connection, const SProjection& projection);

struct FeatureTableRegistration {
  std::string name;
  QString identifier;  ///< shown by other programs; must be unique
  QString description;
  std::string geometryType;  ///< "LINESTRING", "POLYGON", "POINT"
  bool hasZ = false;
  int srsId = -1;
  Box box;
};

/// Registers a table with a geometry column "geom" (which the caller has made).
void registerFeatureTable(SqliteConnection& connection, const FeatureTableRegistration& table);
/// Registers an ordinary table, so that other programs list it.
void registerAttributeTable(SqliteConnection& connection, const std::string& name, const QString& identifier,
                            const QString& description);
/// Extent and last change of a registered table.
void updateContents(SqliteConnection& connection, const std::string& table, const Box* extent);

}  // namespace kaldex

#endif
