#ifndef KALDEX_SHAPEFILE_SHAPE_IMPORT_H
#define KALDEX_SHAPEFILE_SHAPE_IMPORT_H

#include <memory>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kaldex/job_report.h"
#include "kaldex/model/anchor.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "kaldex/model/dbf.h"
#include "kaldex/model/line.h"
#include "kaldex/model/polygon.h"
#include "kaldex/model/vector.h"
#include "kaldex/shapeie.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/progress_scope.h"
#include "lib/shapefile/attribute_names.h"
#include "lib/shapefile/shape_reader.h"

namespace kaldex {

// Ends an import from wherever it stands: its transaction goes back, and the user is told once more or not.
struct ImportStopped {
  enum class Tell { invalidValue, nothing };
  Tell tell = Tell::invalidValue;
};

// What an import did, for the job report.
struct ShapeTally {
  long long read = 0;
  long long lines = 0;
  long long polygons = 0;
  long long points = 0;
  long long objects = 0;
  long long nullShapes = 0;
  long long damaged = 0;
  long long fewPoints = 0;
  long long degenerate = 0;
  long long outside = 0;
  long long nullCoordinates = 0;  // outside too, but written as (0, 0) for want of any
  long long refused = 0;
  long long duplicates = 0;
  long long unplacedHoles = 0;
  long long withoutGeometry = 0;
};

}  // namespace kaldex

inline namespace kaldex_v1 {

/// Walks the records of the file that have a geometry, and turns their coordinates into the layer's plane.
class IEShp::ShapeSource {
 public:
  ShapeSource(IEShp& handler, kaldex::ShapeReader& shapes, SProjection* target, kaldex::ShapeTally& tally);

  /// To the next record with a geometry; false behind the last. Throws when the user has cancelled.
  bool next();
  /// The current record, counted from 0.
  int record() const { return record_; }

  int vertexCount() const { return shapes_.vertexCount(); }
  int partCount() const { return shapes_.partCount(); }
  int partStart(int part) const { return shapes_.partStart(part); }
  int partSize(int part) const { return shapes_.partEnd(part) - shapes_.partStart(part); }
  /// x, y pairs in the layer's plane, all vertices of the record.
  const double* xy() const { return xy_.data(); }
  Point point(int vertex) const { return {xy_[2 * at(vertex)], xy_[2 * at(vertex) + 1]}; }
  /// Height of a vertex; 0 in files without heights.
  float z(int vertex) const {
    return shapes_.z() == nullptr ? 0.0f : static_cast<float>(shapes_.z()[vertex]);
  }
  /// Whether both coordinates stand as 0 in the file, as writers put them where they had none.
  bool isNullCoordinate(int vertex) const { return shapes_.x()[vertex] == 0.0 && shapes_.y()[vertex] == 0.0; }

 private:
  static std::size_t at(int vertex) { return static_cast<std::size_t>(vertex); }
  void convert();

  kaldex::ShapeReader& shapes_;
  kaldex::ShapeTally& tally_;
  double factor_;
  kaldex::CoordinateTransfer transfer_;
  int record_ = -1;
  bool stepDue_ = false;
  std::vector<double> xy_;
};

/// The attributes of the file, and where they go: object category, attribute table, columns.
class IEShp::AttributeSource {
 public:
  explicit AttributeSource(IEShp& handler);

  /// Finds or makes all that attributes need, asking where something is missing. False: the import ends here.
  bool prepare();
  /// Whether shapes become objects with attributes.
  bool on() const { return on_; }
  Category& category() { return *category_; }
  bool categoryIsNew() const { return categoryIsNew_; }
  /// Write the row of that record for the object; throws when it can't be.
  void write(int record, int objectId);
  /// `shapes` is how many records the .shp has.
  void report(int shapes) const;

 private:
  void reportRows(JobReport& report, int shapes) const;
  bool layerTakesObjects() const;
  bool findCategory();
  void loadTable();
  bool nameColumns();
  void extendTable();

  IEShp& handler_;
  DbfImpExp dbf_;
  bool on_ = false;
  Category* category_ = nullptr;
  bool categoryIsNew_ = false;
  CategoryList newCategories_{List::Ownership::owns};
  SFieldList source_;
  SFieldList existing_;
  std::unique_ptr<kaldex::AttributeNames> names_;
  int unusableColumns_ = 0;
};

/// Makes or finds the object of each shape, and ties what is imported of the shape to the object's anchor.
class IEShp::ObjectMaker {
 public:
  ObjectMaker(IEShp& handler, AttributeSource& attributes, Vector& vector);

  void begin(int record);
  void take(const Point2d& point);
  void take(const Line& line);
  void take(const SPolygon& polygon);
  /// The shape is done; false when nothing of it was taken.
  bool end();
  long long made() const { return made_; }

 private:
  bool find(const QString& name);
  void create(const QString& name);
  void fetchAnchor();
  [[noreturn]] void stopWithoutAnchor();
  template <class InsertPiece>
  void attach(InsertPiece insertPiece);

  IEShp& handler_;
  AttributeSource& attributes_;
  Vector& vector_;
  KaldexObject object_;
  ObjectDefinition definition_;
  bool found_ = false;
  bool anchorChanged_ = false;
  std::unique_ptr<Anchor> anchor_;
  long long counter_ = 0;
  long long made_ = 0;
};

/// What the imports of all kinds of shapes share.
class IEShp::Import {
 public:
  Import(IEShp& handler, ShapeSource& shapes, Vector& vector, kaldex::ShapeTally& tally);
  virtual ~Import();

  /// Take the whole file; throws ImportStopped and SException.
  virtual void run() = 0;
  /// What the user is told of a file that was taken whole.
  virtual void tell() {}

  ObjectMaker* objects = nullptr;  ///< null without attributes

 protected:
  void beginObject();
  void endObject();
  std::unique_ptr<Line> newLine(const double* xy, int count);
  /// A line of the current record's part; null when it has too few points or no length.
  std::unique_ptr<Line> lineOf(int part);
  bool lineIsDegenerate(const double* xy, int count);
  /// Give it to the vector; null when that refuses it.
  Line* insert(std::unique_ptr<Line> line);
  void giveBackChanged(Line* line);
  void countOutside(int vertex);
  void tellOutside(bool anyImported, const QString& ignored);

  IEShp& handler_;
  ShapeSource& shapes_;
  Vector& vector_;
  kaldex::ShapeTally& tally_;
};

class IEShp::PointImport : public Import {
 public:
  using Import::Import;
  void run() override;
  void tell() override;

 private:
  void takeVertex(int vertex);
};

class IEShp::LineImport : public Import {
 public:
  using Import::Import;
  void run() override;

 private:
  void takePart(int part);
};

/// Rings as polygons; the two ways of nesting them differ in what they do with holes.
class IEShp::PolygonImport : public Import {
 public:
  using Import::Import;

 protected:
  std::unique_ptr<Line> ringOf(int part);
  /// A polygon of the vector, bounded by a ring of it; null when the vector refuses it. The ring is given
  /// back then.
  SPolygon* polygonOf(Line* ring, bool withLabelPoint);
  /// Make `son` a hole of `father`; throws when that fails.
  void place(SPolygon& father, SPolygon& son);
  void giveBack(SPolygon* polygon);
  static void markChanged(SPolygon& polygon);
};

/// Nests the rings of each record by themselves.
class IEShp::NestedPolygonImport : public PolygonImport {
 public:
  using PolygonImport::PolygonImport;
  void run() override;

 private:
  struct Ring {
    Line* line;
    SPolygon* polygon;
  };

  void takeRecord();
  void takePart(int part);
  void placeHole(Ring& hole);
  SPolygon* fatherOf(const Ring& hole);
  void finishRecord();

  std::vector<Ring> outers_;
  std::vector<Ring> holes_;
};

/// Holds holes back until all outer rings are stored, and takes a polygon of another record that fills a hole
/// as the hole's content instead of storing the ring twice.
class IEShp::CleanedPolygonImport : public PolygonImport {
 public:
  using PolygonImport::PolygonImport;
  void run() override;
  void tell() override;

 private:
  /// A ring's x, y pairs: what is left of it until the second pass.
  using HeldRing = std::vector<double>;
  struct Father {
    int polygonId;
    std::vector<HeldRing> rings;
  };

  void takeRecord();
  static bool isClockwise(Line& ring);
  void takeOuter(std::unique_ptr<Line> ring);
  void assignHeldRings();
  void takeUnplaced(const HeldRing& ring);

  void placeHeldRings();
  void placeRingsOf(Father& father);
  void placeRing(SPolygon& father, const HeldRing& ring);
  void takeDuplicate(SPolygon& father, SPolygon* son, Line* existing);
  void takeHole(SPolygon& father, std::unique_ptr<Line> ring);
  std::pair<Line*, SPolygon*> findDuplicate(const SPolygon& father, const Line& ring);
  SPolygon* fillingPolygon(const Line& line, const SPolygon& father, const Line& ring);
  void keep(SPolygon* son, Line* line);

  int lastOuter_ = 0;
  std::vector<HeldRing> held_;
  std::vector<Father> fathers_;
  /// Sons of the father at hand, with their lines: its outline needs theirs until it is given back.
  std::vector<SPolygon*> sons_;
  std::unordered_set<Line*> sonLines_;
  long long holes_ = 0;
};

class IEShp::HeightImport : public Import {
 public:
  using Import::Import;
  void tell() override;
};

class IEShp::ContourImport : public HeightImport {
 public:
  using HeightImport::HeightImport;
  void run() override;

 private:
  void takePart(int part, const Box& box);

  std::vector<double> inside_;
};

class IEShp::SampleImport : public HeightImport {
 public:
  using HeightImport::HeightImport;
  void run() override;

 private:
  void dropPointFile();
};

}  // namespace kaldex_v1

#endif
