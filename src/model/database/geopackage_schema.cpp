#include "model/database/geopackage_schema.h"

#include "kaldex/model/projection_text.h"

namespace kaldex {

namespace {

constexpr std::int64_t kApplicationId = 0x47504B47;  // "GPKG"
// "GP10" and "GP11" mark the files of the first two versions of the standard.
constexpr std::int64_t kApplicationId10 = 0x47503130;
constexpr std::int64_t kApplicationId11 = 0x47503131;
constexpr int kUndefinedPlane = -1;
constexpr int kFirstOwnSrs = 100000;

const char* const kTables = R"sql(
CREATE TABLE gpkg_spatial_ref_sys (
  srs_name TEXT NOT NULL,
  srs_id INTEGER PRIMARY KEY,
  organization TEXT NOT NULL,
  organization_coordsys_id INTEGER NOT NULL,
  definition TEXT NOT NULL,
  description TEXT
);
CREATE TABLE gpkg_contents (
  table_name TEXT NOT NULL PRIMARY KEY,
  data_type TEXT NOT NULL,
  identifier TEXT UNIQUE,
  description TEXT DEFAULT '',
  last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
  min_x DOUBLE,
  min_y DOUBLE,
  max_x DOUBLE,
  max_y DOUBLE,
  srs_id INTEGER,
  CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);
CREATE TABLE gpkg_geometry_columns (
  table_name TEXT NOT NULL,
  column_name TEXT NOT NULL,
  geometry_type_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL,
  z TINYINT NOT NULL,
  m TINYINT NOT NULL,
  CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
  CONSTRAINT uk_gc_table_name UNIQUE (table_name),
  CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
  CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys (srs_id)
);
CREATE TABLE gpkg_extensions (
  table_name TEXT,
  column_name TEXT,
  extension_name TEXT NOT NULL,
  definition TEXT NOT NULL,
  scope TEXT NOT NULL,
  CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
);
INSERT INTO gpkg_spatial_ref_sys VALUES
  ('Undefined Cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined Cartesian coordinate reference system'),
  ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
  ('WGS 84 geodetic', 4326, 'EPSG', 4326,
   'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]',
   'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');
)sql";

// The identifier that other programs show must be unique, while a user may give a layer any name.
QString uniqueIdentifier(SqliteConnection& connection, const std::string& table, const QString& wanted) {
  QString name = QString::fromStdString(table);
  if (wanted.isEmpty()) return name;
  Statement taken = connection.prepare(
      "SELECT 1 FROM gpkg_contents WHERE identifier = ?1 AND table_name <> ?2 COLLATE NOCASE");
  taken.bind(1, wanted);
  taken.bind(2, table);
  return taken.step() ? wanted + QStringLiteral(" (") + name + QLatin1Char(')') : wanted;
}

int srsOfDefinition(SqliteConnection& connection, const QString& wkt) {
  Statement find =
      connection.prepare("SELECT srs_id FROM gpkg_spatial_ref_sys WHERE definition = ?1 AND srs_id > 0");
  find.bind(1, wkt);
  return find.step() ? static_cast<int>(find.integer(0)) : 0;
}

int srsOfCode(SqliteConnection& connection, int code) {
  Statement find = connection.prepare(
      "SELECT srs_id FROM gpkg_spatial_ref_sys WHERE organization_coordsys_id = ?1 AND "
      "organization = 'EPSG' COLLATE NOCASE");
  find.bind(1, code);
  return find.step() ? static_cast<int>(find.integer(0)) : 0;
}

bool srsTaken(SqliteConnection& connection, int id) {
  Statement find = connection.prepare("SELECT 1 FROM gpkg_spatial_ref_sys WHERE srs_id = ?1");
  find.bind(1, id);
  return find.step();
}

QString srsName(const SProjection& projection) {
  const QString name =
      projection.name().isEmpty() ? projectionTypeName(projection.type()) : projection.name();
  return name + QStringLiteral(" / ") + projection.datum().name();
}

int addSpatialReference(SqliteConnection& connection, const SProjection& projection, const QString& wkt,
                        int code) {
  const auto highest = connection.scalar("SELECT max(srs_id) FROM gpkg_spatial_ref_sys");
  const int own = static_cast<int>(highest < kFirstOwnSrs ? kFirstOwnSrs : highest + 1);
  const int id = code > 0 && !srsTaken(connection, code) ? code : own;
  Statement insert = connection.prepare("INSERT INTO gpkg_spatial_ref_sys VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
  insert.bind(1, srsName(projection));
  insert.bind(2, id);
  insert.bind(3, QString(code > 0 ? QStringLiteral("EPSG") : QStringLiteral("KALDEX")));
  insert.bind(4, code > 0 ? code : id);
  insert.bind(5, wkt);
  insert.bind(6, projection.name());
  insert.run();
  return id;
}

void bindBox(Statement& statement, int parameter, const Box& box) {
  if (box.isInverted()) return;  // parameters that nobody bound are null
  statement.bind(parameter, box.x1);
  statement.bind(parameter + 1, box.y1);
  statement.bind(parameter + 2, box.x2);
  statement.bind(parameter + 3, box.y2);
}

}  // namespace

void createGeoPackageTables(SqliteConnection& connection) {
  connection.execSchema(kTables);
  connection.exec("PRAGMA application_id=" + std::to_string(kApplicationId));
  connection.exec("PRAGMA user_version=10300");
}

bool isGeoPackage(SqliteConnection& connection) {
  const std::int64_t id = connection.scalar("PRAGMA application_id");
  const bool marked = id == kApplicationId || id == kApplicationId10 || id == kApplicationId11;
  return marked && connection.tableExists("gpkg_contents");
}

int registerSpatialReference(SqliteConnection& connection, const SProjection& projection) {
  QString wkt = projectionToWkt(projection, WktVariant::gdal1);
  // A few projections have no name in the older form; readers take the newer one in its place.
  if (wkt.isEmpty()) wkt = projectionToWkt(projection, WktVariant::wkt2);
  if (wkt.isEmpty()) return kUndefinedPlane;
  if (const int known = srsOfDefinition(connection, wkt)) return known;
  const int code = projectionEpsgCode(projection);
  if (code > 0) {
    if (const int known = srsOfCode(connection, code)) return known;
  }
  connection.beginChange();
  return addSpatialReference(connection, projection, wkt, code);
}

void registerFeatureTable(SqliteConnection& connection, const FeatureTableRegistration& table) {
  connection.beginChange();
  Statement contents = connection.prepare(
      "INSERT INTO gpkg_contents (table_name, data_type, identifier, description, srs_id, min_x, min_y, "
      "max_x, max_y) "
      "VALUES (?1, 'features', ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
  contents.bind(1, table.name);
  contents.bind(2, uniqueIdentifier(connection, table.name, table.identifier));
  contents.bind(3, table.description.isNull() ? QStringLiteral("") : table.description);
  contents.bind(4, table.srsId);
  bindBox(contents, 5, table.box);
  contents.run();
  Statement column =
      connection.prepare("INSERT INTO gpkg_geometry_columns VALUES (?1, 'geom', ?2, ?3, ?4, 0)");
  column.bind(1, table.name);
  column.bind(2, table.geometryType);
  column.bind(3, table.srsId);
  column.bind(4, table.hasZ ? 1 : 0);
  column.run();
}

void registerAttributeTable(SqliteConnection& connection, const std::string& name, const QString& identifier,
                            const QString& description) {
  connection.beginChange();
  Statement contents = connection.prepare(
      "INSERT INTO gpkg_contents (table_name, data_type, identifier, description) VALUES (?1, 'attributes', "
      "?2, ?3)");
  contents.bind(1, name);
  contents.bind(2, uniqueIdentifier(connection, name, identifier));
  contents.bind(3, description.isNull() ? QStringLiteral("") : description);
  contents.run();
}

void updateContents(SqliteConnection& connection, const std::string& table, const Box* extent) {
  connection.beginChange();
  const std::string box = extent != nullptr ? ", min_x = ?2, min_y = ?3, max_x = ?4, max_y = ?5" : "";
  Statement update =
      connection.prepare("UPDATE gpkg_contents SET last_change = strftime('%Y-%m-%dT%H:%M:%fZ','now')" + box +
                         " WHERE table_name = ?1");
  update.bind(1, table);
  if (extent != nullptr) bindBox(update, 2, *extent);
  update.run();
}

}  // namespace kaldex
