#include "model/database/projection_store.h"

#include <algorithm>

#include "model/database/catalogue_query.h"
#include "model/database/geopackage_schema.h"

namespace kaldex {

namespace {

const char* const kColumns =
    "type, name, datum_id, datum_name, radius, flattening, dx, dy, dz, hemisphere, origin_latitude, "
    "central_meridian, "
    "first_parallel, second_parallel, false_easting, false_northing, scale, definition, epsg, id";

void bindProjection(CatalogueQuery& query, const ProjectionParameters& parameters) {
  const Datum& datum = parameters.datum;
  query.with(parameters.type).with(parameters.name).with(datum.id()).with(datum.name());
  query.with(datum.radius()).with(datum.flattening());
  query.with(double{datum.dx()}).with(double{datum.dy()}).with(double{datum.dz()});
  query.with(parameters.hemisphere).with(parameters.originLatitude).with(parameters.centralMeridian);
  query.with(parameters.firstParallel).with(parameters.secondParallel);
  query.with(parameters.falseEasting).with(parameters.falseNorthing).with(parameters.scale);
  query.with(parameters.definition).with(parameters.epsg);
}

std::unique_ptr<SProjection> readProjection(const CatalogueQuery& row) {
  ProjectionParameters parameters;
  parameters.type = row.small(0);
  parameters.name = row.text(1);
  parameters.datum = Datum(row.small(2), row.text(3), row.real(4), row.real(5), row.single(6), row.single(7),
                           row.single(8), true);
  parameters.hemisphere = row.small(9);
  parameters.originLatitude = row.real(10);
  parameters.centralMeridian = row.real(11);
  parameters.firstParallel = row.real(12);
  parameters.secondParallel = row.real(13);
  parameters.falseEasting = row.real(14);
  parameters.falseNorthing = row.real(15);
  parameters.scale = row.real(16);
  parameters.definition = row.text(17);
  parameters.epsg = row.integer(18);
  std::unique_ptr<SProjection> projection = projectionFromParameters(parameters);
  projection->setIdentifier(row.integer(19));
  return projection;
}

}  // namespace

void ProjectionStore::createTable() {
  context_.connection.execSchema(
      "CREATE TABLE kdx_projections (id INTEGER PRIMARY KEY, type INTEGER NOT NULL, name TEXT, datum_id "
      "INTEGER, "
      "datum_name TEXT, radius REAL, flattening REAL, dx REAL, dy REAL, dz REAL, hemisphere INTEGER, "
      "origin_latitude "
      "REAL, central_meridian REAL, first_parallel REAL, second_parallel REAL, false_easting REAL, "
      "false_northing REAL, "
      "scale REAL, definition TEXT, epsg INTEGER)");
  registerAttributeTable(context_.connection, "kdx_projections", QStringLiteral("kdx_projections"),
                         QStringLiteral("Projections of the projects; angles in radians"));
}

void ProjectionStore::load() {
  std::vector<std::unique_ptr<SProjection>> known;
  known.swap(projections_);
  CatalogueQuery all(
      context_.dataBase,
      QStringLiteral("SELECT %1 FROM kdx_projections ORDER BY id").arg(QLatin1String(kColumns)));
  all.run();
  while (all.next()) {
    std::unique_ptr<SProjection> stored = readProjection(all);
    const auto same = std::find_if(known.begin(), known.end(), [&](const auto& other) {
      return other != nullptr && other->identifier() == stored->identifier() && *other == *stored;
    });
    projections_.push_back(same != known.end() ? std::move(*same) : std::move(stored));
  }
  for (auto& projection : known) {
    if (projection != nullptr) fallen_.push_back(std::move(projection));
  }
}

SProjection* ProjectionStore::findOrMake(const ProjectionParameters& parameters) {
  std::unique_ptr<SProjection> wanted = projectionFromParameters(parameters);
  for (const auto& projection : projections_) {
    // Datums whose numbers are as good as equal (WGS84, SIRGAS2000) are two reference systems all the same: a
    // project made in one must not come back in the other.
    const bool sameDatum = projection->datum().name() == wanted->datum().name();
    if (sameDatum && *projection == *wanted) return projection.get();
  }
  wanted->setIdentifier(insert(*wanted));
  projections_.push_back(std::move(wanted));
  return projections_.back().get();
}

SProjection* ProjectionStore::find(int id) const {
  for (const auto& projection : projections_) {
    if (projection->identifier() == id) return projection.get();
  }
  return nullptr;
}

int ProjectionStore::insert(const SProjection& projection) {
  context_.connection.beginChange();
  const int id = static_cast<int>(context_.connection.scalar("SELECT max(id) FROM kdx_projections")) + 1;
  CatalogueQuery insert(
      context_.dataBase,
      QStringLiteral("INSERT INTO kdx_projections (%1) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                     "?, ?, ?, ?, ?, ?, ?)")
          .arg(QLatin1String(kColumns)));
  bindProjection(insert, projection.toParameters());
  insert.with(id).run();
  return id;
}

}  // namespace kaldex
