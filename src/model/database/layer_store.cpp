#include "model/database/layer_store.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "kaldex/model/database.h"
#include "model/database/catalogue_query.h"
#include "model/database/geopackage_schema.h"

namespace kaldex {

namespace {

// Edges of a box in the plane are curves on the globe: this many points follow one closely enough.
constexpr int kPointsPerEdge = 21;

Box geographicBoxOf(const Box& box, const SProjection* projection) {
  if (projection == nullptr) return box;
  Box result = Box::inverted();
  for (int i = 0; i < kPointsPerEdge; ++i) {
    const double part = static_cast<double>(i) / (kPointsPerEdge - 1);
    const double x = box.x1 + (box.x2 - box.x1) * part;
    const double y = box.y1 + (box.y2 - box.y1) * part;
    for (Point point : {Point(x, box.y1), Point(x, box.y2), Point(box.x1, y), Point(box.x2, y)}) {
      if (projection->planeToGeographic(point) && !point.isUnset()) result.extend(point.x, point.y);
    }
  }
  return result.isInverted() ? Box() : result;
}

template <class Item>
Item* findById(const std::vector<SObject*>& items, int id) {
  for (SObject* item : items) {
    if (static_cast<Item*>(item)->id == id) return static_cast<Item*>(item);
  }
  return nullptr;
}

const char* const kLayerColumns =
    "id, project_id, category_id, name, x1, y1, x2, y2, scale, plot_scale, resolution";

}  // namespace

void LayerStore::createTables() {
  context_.connection.execSchema(
      "CREATE TABLE kdx_projects (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, projection_id INTEGER "
      "NOT NULL);"
      "CREATE TABLE kdx_layers (id INTEGER PRIMARY KEY, project_id INTEGER NOT NULL, category_id INTEGER NOT "
      "NULL, "
      "name TEXT NOT NULL, x1 REAL, y1 REAL, x2 REAL, y2 REAL, scale REAL, plot_scale INTEGER, resolution "
      "REAL, "
      "text_visual_id INTEGER, UNIQUE (project_id, name))");
  registerAttributeTable(context_.connection, "kdx_projects", QStringLiteral("kdx_projects"),
                         QStringLiteral("Projects"));
  registerAttributeTable(context_.connection, "kdx_layers", QStringLiteral("kdx_layers"),
                         QStringLiteral("Information layers of the projects"));
}

void LayerStore::load() {
  loadProjects();
  loadLayers();
}

void LayerStore::loadProjects() {
  std::vector<int> stored;
  CatalogueQuery all(context_.dataBase,
                     QStringLiteral("SELECT id, name, projection_id FROM kdx_projects ORDER BY id"));
  all.run();
  while (all.next()) {
    const int id = all.integer(0);
    stored.push_back(id);
    if (findById<Project>(projects_.items(), id) != nullptr) continue;
    const SProjection* projection = projections_.find(all.integer(2));
    std::unique_ptr<SProjection> own =
        projection != nullptr ? projection->clone() : std::make_unique<GeneralProjection>();
    projects_.Append(new Project(id, all.text(1), std::move(own)));
  }
  dropFallenProjects(stored);
}

void LayerStore::dropFallenProjects(const std::vector<int>& stored) {
  for (int position = projects_.Size() - 1; position >= 0; --position) {
    if (std::binary_search(stored.begin(), stored.end(), projects_.at(position)->id)) continue;
    projects_.Get(position);
    fallenProjects_.emplace_back(static_cast<Project*>(projects_.Take()));
  }
}

void LayerStore::loadLayers() {
  std::map<int, std::unique_ptr<InfoLayer>> known;
  known.swap(layers_);
  for (auto& [project, list] : lists_) list.Kill();
  CatalogueQuery all(
      context_.dataBase,
      QStringLiteral("SELECT %1 FROM kdx_layers ORDER BY id").arg(QLatin1String(kLayerColumns)));
  all.run();
  while (all.next()) {
    Project* project = findById<Project>(projects_.items(), all.integer(1));
    if (project == nullptr) continue;
    const int id = all.integer(0);
    std::unique_ptr<InfoLayer>& layer = layers_[id];
    const auto old = known.find(id);
    if (old != known.end() && old->second->project() == project) {
      layer = std::move(old->second);
    } else {
      LayerDefinition definition;
      definition.category = categories_.find(all.integer(2));
      definition.name = all.text(3);
      definition.box = Box(all.real(4), all.real(5), all.real(6), all.real(7));
      definition.scale = all.real(8);
      definition.resolution = all.real(10);
      layer = makeLayer(id, definition, *project);
      layer->plotScale = all.integer(9) != 0;
    }
    lists_[project->id].Append(layer.get());
  }
  for (auto& [id, layer] : known) {
    if (layer != nullptr) fallenLayers_.push_back(std::move(layer));
  }
}

Project* LayerStore::findProject(const QString& name) const {
  for (Project* project : projects_) {
    if (project->name == name) return project;
  }
  return nullptr;
}

Project* LayerStore::createProject(const QString& name, const SProjection& projection) {
  if (name.isEmpty() || findProject(name) != nullptr) return nullptr;
  const SProjection* stored = projections_.findOrMake(projection.toParameters());
  context_.connection.beginChange();
  const int id = static_cast<int>(context_.connection.scalar("SELECT max(id) FROM kdx_projects")) + 1;
  CatalogueQuery insert(context_.dataBase, QStringLiteral("INSERT INTO kdx_projects VALUES (?, ?, ?)"));
  insert.with(id).with(name).with(stored->identifier()).run();
  auto* project = new Project(id, name, projection.clone());
  project->projection()->setIdentifier(stored->identifier());
  projects_.Append(project);
  return project;
}

InfoLayer* LayerStore::findLayer(Project& project, const QString& name) {
  for (InfoLayer* layer : layers(project)) {
    if (layer->name == name) return layer;
  }
  return nullptr;
}

InfoLayer* LayerStore::createLayer(Project& project, const LayerDefinition& definition) {
  const bool categoryStored =
      definition.category != nullptr && categories_.find(definition.category->id) == definition.category;
  if (definition.name.isEmpty() || !categoryStored || findLayer(project, definition.name) != nullptr)
    return nullptr;
  context_.connection.beginChange();
  const int id = static_cast<int>(context_.connection.scalar("SELECT max(id) FROM kdx_layers")) + 1;
  std::unique_ptr<InfoLayer> layer = makeLayer(id, definition, project);
  layer->plotScale = layer->model() == IMAGEMODEL;
  insert(*layer);
  InfoLayer* result = layer.get();
  layers_[id] = std::move(layer);
  layers(project).Append(result);
  return result;
}

std::unique_ptr<InfoLayer> LayerStore::makeLayer(int id, const LayerDefinition& definition,
                                                 Project& project) {
  auto layer = std::make_unique<InfoLayer>(id, definition, project, dataBase_);
  layer->geographicBox = geographicBoxOf(layer->box, project.projection());
  const QFileInfo file(dataBase_.name());
  layer->directory = file.absoluteDir().filePath(file.completeBaseName() + QStringLiteral(".files"));
  layer->fileName = QStringLiteral("L%1").arg(id, 6, 10, QLatin1Char('0'));
  return layer;
}

void LayerStore::insert(InfoLayer& layer) {
  CatalogueQuery insert(context_.dataBase,
                        QStringLiteral("INSERT INTO kdx_layers (%1) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                            .arg(QLatin1String(kLayerColumns)));
  insert.with(layer.id).with(layer.project()->id).with(layer.category()->id).with(layer.name);
  insert.with(layer.box.x1).with(layer.box.y1).with(layer.box.x2).with(layer.box.y2);
  insert.with(double{layer.scale}).with(layer.plotScale ? 1 : 0).with(layer.resolution);
  insert.run();
}

int LayerStore::textVisual(const InfoLayer& layer) const {
  return static_cast<int>(context_.connection.scalar("SELECT text_visual_id FROM kdx_layers WHERE id = " +
                                                     std::to_string(layer.id)));
}

void LayerStore::setTextVisual(const InfoLayer& layer, int visualId) {
  context_.connection.beginChange();
  CatalogueQuery update(context_.dataBase,
                        QStringLiteral("UPDATE kdx_layers SET text_visual_id = ? WHERE id = ?"));
  update.with(visualId).with(layer.id).run();
}

void LayerStore::closeLayers() {
  for (auto& [project, list] : lists_) list.Kill();
  layers_.clear();
  fallenLayers_.clear();
}

}  // namespace kaldex
