#ifndef KALDEX_MODEL_LAYER_STORE_H
#define KALDEX_MODEL_LAYER_STORE_H

#include <map>
#include <memory>
#include <vector>

#include "kaldex/model/catalog.h"
#include "model/database/category_store.h"
#include "model/database/projection_store.h"
#include "model/database/store_context.h"

namespace kaldex {

/// Projects and layers, as live objects and in kdx_projects and kdx_layers.
class LayerStore {
 public:
  LayerStore(const StoreContext& context, DataBase& dataBase, ProjectionStore& projections,
             CategoryStore& categories)
      : context_(context), dataBase_(dataBase), projections_(projections), categories_(categories) {}

  void createTables();
  /// Take what is stored into the lists. Projects and layers that are known stay the same objects; those that
  /// are no longer stored leave the lists and stay alive.
  void load();

  ProjectList& projects() { return projects_; }
  Project* findProject(const QString& name) const;
  /// Null when the name is taken or empty.
  Project* createProject(const QString& name, const SProjection& projection);

  InfoLayerList& layers(Project& project) { return lists_[project.id]; }
  InfoLayer* findLayer(Project& project, const QString& name);
  /// Null when the project has a layer of that name, or the definition lacks a name or a stored category.
  InfoLayer* createLayer(Project& project, const LayerDefinition& definition);

  int textVisual(const InfoLayer& layer) const;
  void setTextVisual(const InfoLayer& layer, int visualId);
  /// Every layer that lives, stored or fallen.
  template <class Action>
  void forEachLayer(Action action) {
    for (auto& [id, layer] : layers_) action(*layer);
    for (auto& layer : fallenLayers_) action(*layer);
  }
  /// Delete the layers, with the vectors that they hold open.
  void closeLayers();

 private:
  void loadProjects();
  void loadLayers();
  void dropFallenProjects(const std::vector<int>& stored);
  void insert(InfoLayer& layer);
  std::unique_ptr<InfoLayer> makeLayer(int id, const LayerDefinition& definition, Project& project);

  const StoreContext& context_;
  DataBase& dataBase_;
  ProjectionStore& projections_;
  CategoryStore& categories_;
  ProjectList projects_;
  std::map<int, std::unique_ptr<InfoLayer>> layers_;
  std::map<int, InfoLayerList> lists_;  ///< by project
  std::vector<std::unique_ptr<Project>> fallenProjects_;
  std::vector<std::unique_ptr<InfoLayer>> fallenLayers_;
};

}  // namespace kaldex

#endif
