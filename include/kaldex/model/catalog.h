#ifndef KALDEX_MODEL_CATALOG_H
#define KALDEX_MODEL_CATALOG_H

#include <QString>
#include <memory>

#include "kaldex/model/forward.h"
#include "kaldex/model/geometry.h"
#include "kaldex/model/list.h"
#include "kaldex/model/visual.h"

inline namespace kaldex_v1 {

/// Category models: the kind of data that the layers of a category hold.
enum CategoryModel : short {
  IMAGEMODEL = 1,
  DIGITALMODEL = 2,
  THEMATICMODEL = 4,
  NETWORKMODEL = 8,
  NOTSPACIALMODEL = 16,
  SYMBOLMODEL = 32,
  CADASTRALMODEL = 64,
  OBJECTMODEL = 128,
};

/// "THEMATICMODEL" and so on, or "undefined MODEL".
KALDEX_MODEL_API QString modelName(short model);

/// A class of a thematic category, with its look.
class KALDEX_MODEL_API GeoClass : public SObject {
 public:
  /// The identifier -1 asks for a new one; with a `category` it is drawn at once (1 to 32767, persistent,
  /// never one in use), so that features may refer to the class before its category is stored. The new class
  /// is not put into the category's list: the caller does.
  GeoClass(int id, const QString& name, short model, const QString& categoryName, int position,
           GeoClass* category);
  ~GeoClass() override;
  /// Take over the look; the class's own visual keeps its identifier.
  void SetVisual(const GeneralVisual& visual);

  int id;
  QString name;
  short model;
  QString categoryName;
  int position;
  GeneralVisual visual;  ///< has an identifier once it is stored
};

class KALDEX_MODEL_API GeoClassList : public TypedList<GeoClass> {
 public:
  GeoClassList() : TypedList<GeoClass>(Ownership::owns) {}
  /// The class of that identifier, or null; the cursor goes there.
  GeoClass* SelectFromIndex(int id);
  GeoClass* findByName(const QString& name) const;
};

/// A category: the meaning of layers. Its fourth argument is the name of a parent category and is only kept.
class KALDEX_MODEL_API Category : public GeoClass {
 public:
  Category(int id, const QString& name, short model, const QString& parentName, int position,
           GeoClass* category);
  ~Category() override;

  /// The next free class identifier of this category, 1 to 32767; 0 when all are in use.
  int drawClassId();

  GeoClassList classes;
  /// "CG%06d" of the identifier for object and non-spatial categories; the table itself may not exist yet.
  QString attributeTable;
  int lastClassId = 0;  ///< the highest class identifier ever drawn
};

/// Categories; the database's own lists own them and stay alive with it.
class KALDEX_MODEL_API CategoryList : public TypedList<Category> {
 public:
  explicit CategoryList(Ownership ownership = Ownership::borrows) : TypedList<Category>(ownership) {}
  /// The category of exactly that name, or identifier, or null. The cursor stays where it is.
  Category* Select(const QString& name) const;
  Category* Select(int id) const;
};

/// A geographic object: something with a name and a label that layers may show by anchors.
class KALDEX_MODEL_API KaldexObject : public SObject {
 public:
  const QString& Name() const { return name; }
  void Name(const QString& value) { name = value; }

  int id = 0;
  int categoryId = 0;
  QString name;
  QString label;
  int visualId = 0;
};

/// A project: a name and the projection of all its layers.
class KALDEX_MODEL_API Project : public SObject {
 public:
  Project(int id, const QString& name, std::unique_ptr<SProjection> projection);
  ~Project() override;

  int id;
  QString name;
  SProjection* projection() const { return projection_.get(); }

 private:
  std::unique_ptr<SProjection> projection_;
};

class KALDEX_MODEL_API ProjectList : public TypedList<Project> {
 public:
  ProjectList() : TypedList<Project>(Ownership::owns) {}
};

/// What a new layer is made from.
struct LayerDefinition {
  QString name;
  Category* category = nullptr;
  Box box;             ///< plane units
  double scale = 1.0;  ///< denominator of the map scale
  double resolution = 0.0;
};

/// An information layer of a project. Its representations (vectors, texts) are made when they are asked for
/// and live with the layer.
class KALDEX_MODEL_API InfoLayer : public SObject {
 public:
  InfoLayer(int id, const LayerDefinition& definition, Project& project, DataBase& dataBase);
  ~InfoLayer() override;

  QString GetCategoryName() const;
  short model() const;
  Category* category() const { return category_; }
  Project* project() const { return &project_; }
  DataBase* dataBase() const { return &dataBase_; }
  SProjection* projection() const { return project_.projection(); }
  /// "GA%06d" of the layer's identifier.
  QString associationTable() const;

  /// The vector representation of that kind (a VectorKind): null when there is none and `make` is false.
  Vector* vector(short kind, bool make = false);
  /// The layer's texts; 0 (and null) when it has none.
  int Get(Text*& text);
  Text* makeText();

  int id;
  QString name;
  Box box;            ///< plane units
  Box geographicBox;  ///< radians
  float scale = 1.0f;
  bool plotScale = false;  ///< of an image layer: texts are plotted by `resolution`, not by `scale`
  double resolution = 0.0;
  QString directory;  ///< for files beside the database; made when the first one is
  QString fileName;

  /// For the database: store what the representations still hold in memory.
  void flush();
  /// For the database: what was stored last may be gone.
  void afterRollback();

 private:
  friend class DataBase;

  Category* category_;
  Project& project_;
  DataBase& dataBase_;
  std::unique_ptr<Text> text_;
  struct Representations;
  std::unique_ptr<Representations> representations_;
};

class KALDEX_MODEL_API InfoLayerList : public TypedList<InfoLayer> {
 public:
  explicit InfoLayerList(Ownership ownership = Ownership::borrows) : TypedList<InfoLayer>(ownership) {}
};

}  // namespace kaldex_v1

#endif
