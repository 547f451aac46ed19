#ifndef KALDEX_MODEL_DATABASE_H
#define KALDEX_MODEL_DATABASE_H

#include <QString>
#include <QStringList>
#include <memory>

#include "kaldex/model/catalog.h"
#include "kaldex/model/field.h"
#include "kaldex/model/projection.h"
#include "kaldex/model/recordset.h"
#include "kaldex/model/stime.h"

namespace kaldex {
class VectorStore;
}

inline namespace kaldex_v1 {

/// What an object is created from. The label identifies it within its category.
struct ObjectDefinition {
  Category* category = nullptr;
  QString name;
  QString label;
  STime time;
};

/// Answers of firstObject and nextObject.
enum ObjectWalk : int { objectError = 0, objectFound = 1, objectNone = 998, objectEnd = 999 };

/// A geographic database: projects, layers, categories, objects and their attributes, and the storage below
/// vectors.
///
/// Changes gather in one transaction that commit() (an operation's end), a DBTransactionBlock that ends with
/// no other block around it, or the destructor ends. Operations return 0 on failure where they say so; a
/// failure of the storage itself (disk full, lock, damage) throws SException. Lists and objects handed out
/// belong to the database and stay valid, and the same, as long as it is open; a rollback refreshes them.
class KALDEX_MODEL_API DataBase {
 public:
  /// Open what `url` names (today a path to a GeoPackage). Null on failure, with the reason in `error`.
  static std::unique_ptr<DataBase> Open(const QString& url, QString* error = nullptr);
  /// Make a new database; refuses an existing file.
  static std::unique_ptr<DataBase> Create(const QString& url, QString* error = nullptr);
  DataBase(const DataBase&) = delete;
  DataBase& operator=(const DataBase&) = delete;
  virtual ~DataBase();

  virtual QString name() const = 0;  ///< the url it was opened with

  // Projects and layers
  virtual ProjectList& projects() = 0;
  virtual Project* findProject(const QString& name) = 0;
  virtual Project* createProject(const QString& name, const SProjection& projection) = 0;
  /// All layers of a project in order of identifier, as a borrowing list of live layers.
  virtual InfoLayerList& layers(Project& project) = 0;
  virtual InfoLayer* findLayer(Project& project, const QString& name) = 0;
  /// Makes the layer without representations; null when the name is taken or the definition has no category.
  virtual InfoLayer* createLayer(Project& project, const LayerDefinition& definition) = 0;

  // Categories
  virtual CategoryList& categoryList() = 0;
  /// The object categories (model 128) alone.
  virtual CategoryList& GetKaldexObjCategory() = 0;
  /// Store the categories of a list with their classes and visuals: gives new ones their identifier in place
  /// and takes them over, so that an owning list only borrows from then on; makes the object table of an
  /// object category. 0, with nothing stored, for a name that another category of the same model has.
  virtual int storeCategories(CategoryList& list) = 0;
  /// Read the category's record again; 0 when it isn't stored.
  virtual int reloadCategory(Category& category) = 0;
  virtual bool classInLayer(InfoLayer& layer, int classId, short flag = 0) = 0;
  virtual void beginVisualRefresh() = 0;
  virtual void refreshClassVisual(InfoLayer& layer, GeoClass& geoClass) = 0;
  virtual void endVisualRefresh() = 0;
  /// 0 when there is no visual of that identifier.
  virtual int loadVisual(int id, GeneralVisual& visual) = 0;

  // Tables
  virtual bool tableExists(const QString& name) = 0;
  /// The association table "GA%06d"; 1 also when it exists.
  virtual int createLayerAssociationTable(int layerId) = 0;
  /// Append the table's columns; an absent table appends nothing. Returns the number of columns.
  virtual int loadTableFields(SFieldList& fields, const QString& table) = 0;
  /// Make the attribute table of an object category: the list's columns, behind a key GEOID that is added
  /// when the list doesn't begin with it. Every object of the category gets a row.
  virtual int createAttributeTable(Category& category, const SFieldList& fields) = 0;
  virtual int createTable(const QString& name, const SFieldList& fields) = 0;
  virtual int addColumns(const SFieldList& fields, const QString& table, short, short) = 0;
  /// Insert rows from columns that carry their cells: row n is the n-th cell of each column, missing ones
  /// null. Columns without cells: nothing to do, 1.
  virtual int finishColumns(const SFieldList& fields) = 0;

  // Objects
  virtual int findObject(int id, Category& category, KaldexObject& object) = 0;
  virtual int findObjectByLabel(const QString& label, Category& category, KaldexObject& object) = 0;
  virtual int findObjectByName(const QString& name, Category& category, KaldexObject& object) = 0;
  /// Object identifiers are unique in the whole database. Also inserts the object's (empty) attribute row
  /// when the category has an attribute table.
  virtual int createObject(const ObjectDefinition& definition, KaldexObject& object) = 0;
  virtual int updateObjectName(const KaldexObject& object) = 0;
  /// An ObjectWalk; objects come in ascending identifier.
  virtual int firstObject(Category& category, KaldexObject& object) = 0;
  virtual int nextObject(Category& category, KaldexObject& object) = 0;
  /// The object's row of `table` as one cell a column of the table (GEOID first), whatever `fields` lists;
  /// cells that are already in `cells` are used again. An absent row leaves `cells` empty and is 0.
  virtual int readObjectAttributes(const SFieldList& fields, SCellList& cells, const QString& table,
                                   int objectId) = 0;
  /// Store the cells that were changed, by their position, and mark them stored; 0 when the object has no
  /// row.
  virtual int writeObjectAttributes(const SFieldList& fields, SCellList& cells, const QString& table,
                                    int objectId) = 0;

  // Anchors
  /// Identifier of the anchor of an object in a layer, or 0.
  virtual int anchorOfObject(int objectId, InfoLayer& layer) = 0;
  /// Write the anchor's measures into its association row, in metres and square metres also where the plane's
  /// unit is the degree; 0 when it has none.
  virtual int saveAnchor(InfoLayer& layer, const Anchor& anchor) = 0;
  /// Add the association row of object and anchor (makes the table when it is missing).
  virtual int linkAnchor(InfoLayer& layer, const Anchor& anchor, const KaldexObject& object) = 0;

  /// Rows of tables. `tables` are comma-separated; "a->b" names column b of table a; commas in `condition`
  /// mean AND; with a condition `join` is redundant. Throws SException on failure.
  virtual std::unique_ptr<RecordSet> selectRecords(const QString& tables, const QString& selection,
                                                   const QString& condition, const QString& join,
                                                   const QString& order, int flag = 1, int flag2 = 0) = 0;

  /// The stored projection equal to these values, made when there is none.
  virtual SProjection* findOrMakeProjection(const ProjectionParameters& parameters) = 0;

  // Transactions
  /// End the gathering transaction (spatial indexes of touched layers included); no effect inside a block.
  virtual void commit() = 0;
  /// Forget everything since the last commit, or inside a block since its start.
  virtual void rollback() = 0;
  /// Run SQLite's own integrity check and rtreecheck of every index; empty when all is well.
  virtual QStringList check() = 0;

 protected:
  DataBase() = default;
  friend class DBTransactionBlock;
  virtual void beginBlock() = 0;
  virtual void endBlock(bool keep) = 0;

  friend class InfoLayer;
  friend class Text;
  virtual std::unique_ptr<kaldex::VectorStore> openVectorStore(InfoLayer& layer, short kind, bool make) = 0;
  virtual bool hasVector(InfoLayer& layer, short kind) = 0;
  /// Give the representation its stored look; makes its table, when there is none, only with the first text.
  virtual void openTexts(InfoLayer& layer, Text& text) = 0;
  virtual int loadTexts(InfoLayer& layer, EntitieList& list) = 0;
  virtual int storeTexts(InfoLayer& layer, Text& text, EntitieList& list) = 0;
  virtual long long textCount(InfoLayer& layer) = 0;
  virtual bool hasTexts(InfoLayer& layer) = 0;
};

/// A block of changes that stays only when enableCommit was called: all or nothing. Blocks nest; a block
/// inside another one stands or falls with it.
class KALDEX_MODEL_API DBTransactionBlock {
 public:
  /// A null database makes a block without effect.
  explicit DBTransactionBlock(DataBase* dataBase);
  DBTransactionBlock(const DBTransactionBlock&) = delete;
  DBTransactionBlock& operator=(const DBTransactionBlock&) = delete;
  /// Rolls the block back unless enableCommit was called.
  ~DBTransactionBlock();
  /// Keep the block's changes and end it, here and now; an outermost block is committed. Call it once, as the
  /// last change: what follows no longer belongs to the block. When the storage fails (a full disk) the block
  /// is rolled back and SException thrown.
  void enableCommit();

 private:
  DataBase* dataBase_;
};

}  // namespace kaldex_v1

#endif
