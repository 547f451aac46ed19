#ifndef KALDEX_ASCII_H
#define KALDEX_ASCII_H

#include <QString>
#include <QVector>

#include "kaldex/extforma.h"

inline namespace kaldex_v1 {

/// Handler of the system's own text format: sections that begin with a keyword and end with "END", each with
/// an optional header between "INFO" and "INFO_END". Exports append their section to the file; imports take
/// the first section with their keyword.
class KALDEX_API IEAsc : public SExtFormats {
 public:
  IEAsc();
  ~IEAsc() override;

  /// A "LINES" section ("NETWORK" in a network layer). In a numeric layer the lines are break lines of a
  /// sample vector.
  int ImportLines(Vector* vec, SProjection* target) override;
  /// A "CONTOURLINES" section; points of its POINT3D blocks that lie outside the vector's box are dropped.
  int ImportContourout(Vector* vec, SProjection* target) override;
  /// A "SAMPLE" section: points with heights and lines of one height. Points outside the vector's box are
  /// left out and told at the end; that is no failure.
  int ImportSamples(Vector* vec, SProjection* target) override;
  /// A "POINT2D" section: in a thematic layer points of classes, in any other places of objects, which are
  /// made when they are missing. All or nothing.
  int ImportPoint2d(Vector* vec, SProjection* target) override;
  /// A "TEXT" section; the texts are appended to the list. `visual`, unless null, replaces the look of each.
  /// The layer must have texts. Lines that are none are told at the end; that is no failure.
  int ImportText(EntitieList* texts, SProjection* target, GeneralVisual* visual) override;
  /// A file of turns, in degrees, minutes and seconds; turns between lines of the vector are added to the
  /// layer's. 0, and nothing is stored, when there is none.
  int ImportTurns(Vector* vec);
  /// A "POINTS" section ("NETWORK_OBJECTS" in a network layer) into the handler's label points, for a
  /// classification to use. Classes that are missing in a thematic category are made if the user agrees:
  /// these and what the header changes are stored together or not at all.
  int ImportLabelPoints(SProjection* target, SProjection* unused, char*, short*, char*, char*, char*,
                        char*) override;
  /// With `onlyUsedClasses` other than 0, only lines (or polygons) of classes that the layer uses.
  int ExportLines(Vector* vec, short onlyUsedClasses) override;
  int ExportContourout(Vector* vec) override;
  /// The first "TABLE" section, into the objects and attributes of the category, which the section must name:
  /// objects and, where the category has no table yet, columns are made. All or nothing.
  int ImportAttributes(Category* category) override;
  /// Append a "TABLE" section: label, name and attributes of each object. The table of a category of another
  /// model is written too, but no import reads it.
  int ExportTable(Category* category) override;
  /// Outlines of polygons, then the lines that bound none.
  int ExportPolygons(Vector* vec, short onlyUsedClasses) override;
  /// Points and contours, and behind them, as a section of its own, the break lines: in the same file, or,
  /// when its name holds "_L3D.kdx", in that of "_L2D.kdx", which the handler has from then on.
  int ExportSample(Vector* vec) override;
  int ExportText(EntitieList* texts) override;
  /// The edges, or the triangles, of a triangulation (a Tin), but for those with a node without height.
  int ExportTIN(Vector* vec) override;
  int ExportTIN3D(Vector* vec) override;
  /// The turns of a network layer.
  int ExportTurns(Vector* vec);
  /// One label point for each polygon and line that has a class of the category; in object categories one for
  /// each place of each object.
  int ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) override;
  /// One with a name made of the file's and a number for each polygon and each line that bounds none; into a
  /// file called *_CEN.kdx as a "CENTER" section with the class, area and perimeter of each polygon.
  int ExportLabelPointsAuto(Vector* vec, Category* category) override;
  /// The places of polygons without class or object.
  int ExportLabelPointsSem(Vector* vec, Category* category) override;
  /// The places of polygons that have a class, or more than one object.
  int ExportLabelPointsMais(Vector* vec, Category* category) override;
  /// Classes as objects, with their names in a table beside the file (*_CADLAB.typ, *_CADTAB.kdx), or object
  /// names as classes. The directory must end in a slash.
  int ExportLabelPointsTroca(Vector* vec, Category* category, short onlyUsedClasses) override;
  /// 2D points with the name of their class, or with the objects that stand there.
  int ExportPoints(Vector* vec, Category* category, short onlyUsedClasses) override;
  int ExportPointsAuto(Vector* vec, Category* category) override;

  /// Write the header lines (project, layer, projection, box, units, scale) at the end of the open file. 0
  /// when a write failed, without a message.
  int InfoPrint();
  /// Read a header block up to its "INFO_END", behind the word "INFO"; without an open file, that of the
  /// first "GRIDREG" section. What is null is not filled.
  ///
  /// `linesOrMode` takes the number of lines of a grid; with a class block it says whose colours its lines
  /// carry: 4 those of points, 7 those of polygons and lines. `category` asks for the block of columns: these
  /// go into `fields`, with the positions of key and name in `keyColumn` and `nameColumn`.
  int InfoSection(unsigned* linesOrMode, unsigned* columns, double* noData, Category* category,
                  short* formatted, SFieldList* fields, short* keyColumn, short* nameColumn, double* x,
                  double* y, float* resX, float* resY, double* classCount);
  /// The object category that the file's table belongs to, made after a question when it is missing. With
  /// `mode` 2 an existing one is refused. Null after a failure; the category belongs to the database.
  Category* InfoTable(short mode);
  /// The box that a file's header tells; (0, 0, 0, 0) without one. Radians when `planar` is false, but for a
  /// header of plane form in degrees, whose numbers are taken as they stand.
  static Box GetBox(const QString& path, bool& planar);
  /// The projection that a file's header tells, or null; the caller's.
  static SProjection* GetProjection(const QString& path);
  /// Read the rest of the file's line as a name, without quotes, into `name` (40 bytes, a longer name is
  /// cut); the whole record stands in `line2`, for messages. 0 at the end of the file.
  int ExtraiNome(char* name);
  /// Whether a line of the file begins with the word.
  bool AscEntitie(const char* keyword);

 protected:
  /// Column names of the tables read so far that were reserved words, as the files gave them, and what they
  /// became.
  QVector<QString> reservedNames;
  QVector<QString> replacementNames;

 private:
  class InfoReader;
  class ColumnBlock;
  class ClassBlock;
  class SectionWriter;
  class LineExport;
  class SectionReader;
  class LineImport;
  class SampleImport;
  class TableImport;
  class TableExport;
  class SampleExport;
  class PointImport;
  class PointObjects;
  class TextImport;
  class TextExport;
  class TinExport;
  class TurnImport;
  class TurnExport;
  class LabelImport;
  class LabelExport;

  bool findCategoryLine();
};

}  // namespace kaldex_v1

#endif
