#include "model/database/geopackage_database.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "kaldex/model/exception.h"
#include "kaldex/model/text.h"
#include "model/database/geopackage_schema.h"
#include "model/database/spatial_index.h"
#include "model/vector/vector_store.h"

namespace kaldex {

namespace {

// Files of a later version may hold what this one would damage.
constexpr int kSchemaVersion = 1;

bool isReadOnly(const QString& path) {
  return !QFileInfo(path).isWritable();
}

}  // namespace

GeoPackageDataBase::GeoPackageDataBase(const QString& url, Mode mode)
    : url_(url),
      // The absolute path keeps names that mean something to SQLite, as ":memory:", from meaning it here.
      qt_(QFileInfo(url).absoluteFilePath(), mode == Mode::open && isReadOnly(url)),
      connection_(qt_.handle()),
      context_{connection_, qt_.dataBase(), dialect_},
      projections_(context_),
      visuals_(context_),
      tables_(context_),
      categories_(context_, visuals_, tables_),
      layers_(context_, *this, projections_, categories_),
      attributes_(context_, tables_),
      objects_(context_, tables_, attributes_),
      associations_(context_, tables_),
      texts_(context_, layers_, visuals_),
      rowSets_(std::make_shared<RowSet::Registry>()) {
  registerGeometryFunctions(connection_.handle());
  if (mode == Mode::create) {
    createTables();
  } else {
    checkFile();
  }
  projections_.load();
  categories_.load();
  layers_.load();
  categories_.mark(0);
  connection_.addListener(this);
}

GeoPackageDataBase::~GeoPackageDataBase() {
  // What fails here can only be logged: whoever must know has called commit before.
  try {
    connection_.commit();
    layers_.closeLayers();
    connection_.commit();
  } catch (const std::exception& exception) {
    qWarning("%s: %s", qUtf8Printable(url_), exception.what());
    layers_.closeLayers();
  }
  connection_.removeListener(this);
  const RowSet::Registry open = *rowSets_;
  for (RowSet* rows : open) rows->close();
}

void GeoPackageDataBase::createTables() {
  connection_.beginChange();
  createGeoPackageTables(connection_);
  connection_.execSchema(
      "CREATE TABLE kdx_sequences (kdx_fid INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, value INTEGER NOT "
      "NULL);"
      "INSERT INTO kdx_sequences (name, value) VALUES ('schema', " +
      std::to_string(kSchemaVersion) + "), ('object', 0)");
  registerAttributeTable(connection_, "kdx_sequences", QStringLiteral("kdx_sequences"),
                         QStringLiteral("Version of these tables, last identifiers"));
  projections_.createTable();
  visuals_.createTable();
  tables_.createTables();
  categories_.createTables();
  layers_.createTables();
  connection_.commit();
}

void GeoPackageDataBase::checkFile() {
  if (!isGeoPackage(connection_) || !connection_.tableExists("kdx_projects")) {
    throw SException(
        QCoreApplication::translate("DataBase", "O arquivo %1 não é um banco de dados geográfico.")
            .arg(url_));
  }
  if (connection_.scalar("SELECT value FROM kdx_sequences WHERE name = 'schema'") > kSchemaVersion) {
    throw SException(
        QCoreApplication::translate("DataBase", "O banco de dados %1 foi criado por uma versão mais nova.")
            .arg(url_));
  }
}

Project* GeoPackageDataBase::createProject(const QString& name, const SProjection& projection) {
  return layers_.createProject(name, projection);
}

InfoLayer* GeoPackageDataBase::createLayer(Project& project, const LayerDefinition& definition) {
  return layers_.createLayer(project, definition);
}

bool GeoPackageDataBase::classInLayer(InfoLayer& layer, int classId, short) {
  layer.flush();
  // Exports ask for class after class: one scan serves them all as long as nothing is written.
  const int changes = sqlite3_total_changes(connection_.handle());
  if (classesInUse_.layerId != layer.id || classesInUse_.changes != changes) {
    classesInUse_ = {layer.id, changes, VectorStore::classesInUse(connection_, layer.id)};
  }
  return classesInUse_.classes.count(classId) > 0;
}

void GeoPackageDataBase::refreshClassVisual(InfoLayer& layer, GeoClass& geoClass) {
  categories_.refreshClassVisual(layer.id, geoClass);
}

int GeoPackageDataBase::loadTableFields(SFieldList& fields, const QString& table) {
  return tables_.loadFields(fields, table);
}

int GeoPackageDataBase::createAttributeTable(Category& category, const SFieldList& fields) {
  flushRows();
  return tables_.createAttributeTable(category, fields);
}

int GeoPackageDataBase::createTable(const QString& name, const SFieldList& fields) {
  return tables_.createTable(name, fields);
}

int GeoPackageDataBase::addColumns(const SFieldList& fields, const QString& table, short, short) {
  flushRows();
  return tables_.addColumns(fields, table);
}

int GeoPackageDataBase::finishColumns(const SFieldList& fields) {
  return tables_.insertCells(fields);
}

int GeoPackageDataBase::findObject(int id, Category& category, KaldexObject& object) {
  return objects_.find(id, category, object);
}

int GeoPackageDataBase::findObjectByLabel(const QString& label, Category& category, KaldexObject& object) {
  return objects_.findByLabel(label, category, object);
}

int GeoPackageDataBase::findObjectByName(const QString& name, Category& category, KaldexObject& object) {
  return objects_.findByName(name, category, object);
}

int GeoPackageDataBase::createObject(const ObjectDefinition& definition, KaldexObject& object) {
  return objects_.create(definition, object);
}

int GeoPackageDataBase::readObjectAttributes(const SFieldList&, SCellList& cells, const QString& table,
                                             int objectId) {
  return attributes_.read(cells, table, objectId);
}

int GeoPackageDataBase::writeObjectAttributes(const SFieldList&, SCellList& cells, const QString& table,
                                              int objectId) {
  return attributes_.write(cells, table, objectId);
}

std::unique_ptr<RecordSet> GeoPackageDataBase::selectRecords(const QString& tables, const QString& selection,
                                                             const QString& condition, const QString& join,
                                                             const QString& order, int, int) {
  flushRows();
  RecordQuery query = translateQuery({tables, selection, condition, join, order}, tables_);
  const auto settle = [this, table = query.tables.front()->name] {
    flushRows();
    tables_.ensureIndexes(table);
  };
  return std::make_unique<RowSet>(connection_, std::move(query), settle, rowSets_);
}

SProjection* GeoPackageDataBase::findOrMakeProjection(const ProjectionParameters& parameters) {
  return projections_.findOrMake(parameters);
}

std::unique_ptr<VectorStore> GeoPackageDataBase::openVectorStore(InfoLayer& layer, short kind, bool make) {
  if (!make && !hasVector(layer, kind)) return nullptr;
  VectorStore::Info info;
  info.layerId = layer.id;
  info.layer = &layer;
  info.projection = layer.projection();
  info.box = layer.box;
  info.kind = kind;
  info.modelKind = layer.model();
  info.directory = layer.directory;
  info.name = layer.name;
  info.title = layer.project()->name + QLatin1Char('/') + layer.name;
  return std::make_unique<VectorStore>(connection_, info);
}

bool GeoPackageDataBase::hasVector(InfoLayer& layer, short kind) {
  return VectorStore::exists(connection_, layer.id, kind);
}

}  // namespace kaldex
