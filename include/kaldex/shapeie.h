#ifndef KALDEX_SHAPEIE_H
#define KALDEX_SHAPEIE_H

#include <QString>
#include <QStringList>
#include <memory>

#include "kaldex/extforma.h"
#include "kaldex/model/field.h"

namespace kaldex {
class ShapeReader;
struct ShapeTally;
}  // namespace kaldex

inline namespace kaldex_v1 {

/// Imports a shapefile: points, lines or polygons with their attributes, or shapes with heights as samples
/// and contour lines. `dataFile` names the .shp; its companions stand beside it under the same base name,
/// with extensions of either case. A .shx that is missing or doesn't fit the .shp is made up in memory;
/// damaged records are left out and told to the job report.
///
/// The file's projection is that of Init, `target` the one of the layer.
class KALDEX_API IEShp : public SExtFormats {
 public:
  IEShp();
  ~IEShp() override;

  /// Points, lines or polygons, as the file holds them; heights are dropped. In a layer of a network or
  /// cadastral category every shape becomes an object with a row of attributes, in the object category called
  /// after the file, which is made after a question when it is missing. All of the file's geometry and
  /// objects, or nothing of it.
  int ImportLines(Vector* vec, SProjection* target) override;
  /// Points with z as samples, lines and polygons with z or m as contour lines of a single height.
  int ImportSamples(Vector* vec, SProjection* target) override;
  /// Write the current row of `dbf` into the object's row of the category's attribute table, and go to the
  /// next row. `fields` has an entry for each column of `dbf`, with type, width and position of its table
  /// column (below 0: none). At the end of the rows nothing is done: 1. 0 when the object has no row, or when
  /// the user wants no wrong values.
  int ImportAttrValueFromDbf(DbfImpExp& dbf, SFieldList* fields, Category* category, int objectId);

  /// The encoding of the .dbf's texts, over what the file says of it; empty leaves it to the file.
  void setEncoding(const QString& name) { encoding_ = name; }

  /// The projection that the .prj beside a shapefile tells; null when there is none, or none that is
  /// understood, with the reason in `error` (empty when there is no .prj).
  static std::unique_ptr<SProjection> sourceProjection(const QString& path, QString* error = nullptr);

 protected:
  /// Attribute names that were reserved words, cut, and what they became.
  QStringList reservedNames;
  QStringList replacementNames;

 private:
  class ShapeSource;
  class AttributeSource;
  class ObjectMaker;
  class Import;
  class PointImport;
  class LineImport;
  class PolygonImport;
  class NestedPolygonImport;
  class CleanedPolygonImport;
  class HeightImport;
  class ContourImport;
  class SampleImport;

  QString path() const;
  int importFile(Vector& vector, SProjection* target,
                 void (IEShp::*import)(Vector&, kaldex::ShapeReader&, SProjection*));
  void importFeatures(Vector& vector, kaldex::ShapeReader& shapes, SProjection* target);
  std::unique_ptr<Import> featureImport(int type, ShapeSource& source, Vector& vector,
                                        kaldex::ShapeTally& tally);
  void importHeights(Vector& vector, kaldex::ShapeReader& shapes, SProjection* target);
  void runImport(Import& import, const kaldex::ShapeTally& tally, const char* kind);
  int writeRow(DbfImpExp& dbf, const SFieldList& fields, Category& category, int objectId);
  bool writeCell(const SField& field, QString value);

  QString encoding_;
  SCellList row_;
  long long badValues_ = 0;
};

}  // namespace kaldex_v1

#endif
