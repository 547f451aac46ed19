#ifndef KALDEX_MODEL_GEOPACKAGE_DATABASE_H
#define KALDEX_MODEL_GEOPACKAGE_DATABASE_H

#include <QSqlDatabase>
#include <set>

#include "kaldex/model/database.h"
#include "model/database/association_store.h"
#include "model/database/attribute_rows.h"
#include "model/database/category_store.h"
#include "model/database/layer_store.h"
#include "model/database/object_store.h"
#include "model/database/projection_store.h"
#include "model/database/row_set.h"
#include "model/database/store_context.h"
#include "model/database/table_store.h"
#include "model/database/text_store.h"
#include "model/database/visual_store.h"

namespace kaldex {

/// A Qt SQL connection with a name of its own, closed and removed with the object.
class QtConnection {
 public:
  /// Throws SException when the file can't be opened.
  QtConnection(const QString& path, bool readOnly);
  QtConnection(const QtConnection&) = delete;
  QtConnection& operator=(const QtConnection&) = delete;
  ~QtConnection();

  const QSqlDatabase& dataBase() const { return dataBase_; }
  /// The driver's own handle.
  sqlite3* handle() const;

 private:
  QString name_;
  QSqlDatabase dataBase_;
};

/// The geographic database in one GeoPackage file.
class GeoPackageDataBase : public DataBase, private TransactionListener {
 public:
  enum class Mode { create, open };

  /// Throws SException for a file that can't be opened or isn't a geographic database.
  GeoPackageDataBase(const QString& url, Mode mode);
  ~GeoPackageDataBase() override;

  QString name() const override { return url_; }

  ProjectList& projects() override { return layers_.projects(); }
  Project* findProject(const QString& name) override { return layers_.findProject(name); }
  Project* createProject(const QString& name, const SProjection& projection) override;
  InfoLayerList& layers(Project& project) override { return layers_.layers(project); }
  InfoLayer* findLayer(Project& project, const QString& name) override {
    return layers_.findLayer(project, name);
  }
  InfoLayer* createLayer(Project& project, const LayerDefinition& definition) override;

  CategoryList& categoryList() override { return categories_.all(); }
  CategoryList& GetKaldexObjCategory() override { return categories_.objectCategories(); }
  int storeCategories(CategoryList& list) override { return categories_.store(list); }
  int reloadCategory(Category& category) override { return categories_.reload(category); }
  bool classInLayer(InfoLayer& layer, int classId, short flag) override;
  void beginVisualRefresh() override {}
  void refreshClassVisual(InfoLayer& layer, GeoClass& geoClass) override;
  void endVisualRefresh() override {}
  int loadVisual(int id, GeneralVisual& visual) override { return visuals_.load(id, visual) ? 1 : 0; }

  bool tableExists(const QString& name) override { return tables_.find(name) != nullptr; }
  int createLayerAssociationTable(int layerId) override { return associations_.createTable(layerId); }
  int loadTableFields(SFieldList& fields, const QString& table) override;
  int createAttributeTable(Category& category, const SFieldList& fields) override;
  int createTable(const QString& name, const SFieldList& fields) override;
  int addColumns(const SFieldList& fields, const QString& table, short, short) override;
  int finishColumns(const SFieldList& fields) override;

  int findObject(int id, Category& category, KaldexObject& object) override;
  int findObjectByLabel(const QString& label, Category& category, KaldexObject& object) override;
  int findObjectByName(const QString& name, Category& category, KaldexObject& object) override;
  int createObject(const ObjectDefinition& definition, KaldexObject& object) override;
  int updateObjectName(const KaldexObject& object) override { return objects_.updateName(object); }
  int firstObject(Category& category, KaldexObject& object) override {
    return objects_.first(category, object);
  }
  int nextObject(Category& category, KaldexObject& object) override {
    return objects_.next(category, object);
  }
  int readObjectAttributes(const SFieldList& fields, SCellList& cells, const QString& table,
                           int objectId) override;
  int writeObjectAttributes(const SFieldList& fields, SCellList& cells, const QString& table,
                            int objectId) override;

  int anchorOfObject(int objectId, InfoLayer& layer) override {
    return associations_.anchorOf(objectId, layer);
  }
  int saveAnchor(InfoLayer& layer, const Anchor& anchor) override {
    return associations_.save(layer, anchor);
  }
  int linkAnchor(InfoLayer& layer, const Anchor& anchor, const KaldexObject& object) override {
    return associations_.link(layer, anchor, object);
  }

  std::unique_ptr<RecordSet> selectRecords(const QString& tables, const QString& selection,
                                           const QString& condition, const QString& join,
                                           const QString& order, int flag, int flag2) override;
  SProjection* findOrMakeProjection(const ProjectionParameters& parameters) override;

  void commit() override;
  void rollback() override;
  QStringList check() override;

 private:
  void beginBlock() override;
  void endBlock(bool keep) override;
  std::unique_ptr<VectorStore> openVectorStore(InfoLayer& layer, short kind, bool make) override;
  bool hasVector(InfoLayer& layer, short kind) override;
  void openTexts(InfoLayer& layer, Text& text) override { texts_.open(layer, text); }
  int loadTexts(InfoLayer& layer, EntitieList& list) override { return texts_.load(layer, list); }
  int storeTexts(InfoLayer& layer, Text& text, EntitieList& list) override {
    return texts_.store(layer, text, list);
  }
  long long textCount(InfoLayer& layer) override { return texts_.count(layer); }
  bool hasTexts(InfoLayer& layer) override { return texts_.exists(layer); }

  // TransactionListener
  void beforeCommit() override;
  void releaseCursors() override;
  void afterRollback() override;

  void createTables();
  void checkFile();
  void flushRows();
  /// Mark what a rollback outside all blocks goes back to.
  void markCommitted();

  QString url_;
  QtConnection qt_;
  SqliteConnection connection_;
  SqliteDialect dialect_;
  StoreContext context_;
  ProjectionStore projections_;
  VisualStore visuals_;
  TableStore tables_;
  CategoryStore categories_;
  LayerStore layers_;
  AttributeRows attributes_;
  ObjectStore objects_;
  AssociationStore associations_;
  TextStore texts_;
  std::shared_ptr<RowSet::Registry> rowSets_;
  int rollbackDepth_ = 0;  ///< of the block that is being rolled back, 0 outside all blocks

  struct ClassesInUse {
    int layerId = 0;
    int changes = -1;
    std::set<int> classes;
  };
  ClassesInUse classesInUse_;
};

}  // namespace kaldex

#endif
