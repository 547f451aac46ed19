#ifndef KALDEX_DXF_H
#define KALDEX_DXF_H

#include <QMap>
#include <QString>
#include <QStringList>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

#include "kaldex/extforma.h"
#include "kaldex/model/transform.h"

namespace kaldex {
class DrawingOutput;
class DrawingReader;
}  // namespace kaldex

inline namespace kaldex_v1 {

/// Handler of drawings (DXF, in text form).
///
/// What it reads: the entities POINT, INSERT (its place; blocks are never read), LINE, POLYLINE with its
/// VERTEX entities (polyface meshes as the lines of their visible edges), ARC and CIRCLE in steps of a
/// degree, TEXT and ATTRIB. What an import leaves out is told to the job report by kind of entity and layer.
/// A file without sections may begin with its first entity.
///
/// Which layers an import takes: that of SetLayerName and those of the layer list, or all when there are
/// neither. Coordinates are scaled by Units2Meter, go through the transformation of SetTransf and then to the
/// target's projection.
class KALDEX_API IEDXF : public SExtFormats {
 public:
  IEDXF();
  ~IEDXF() override;

  // The file, pair by pair. It must be open.

  /// Read the next pair; its value stands in `line`, without blanks at its ends. 0 at the end of the file.
  /// Comments are passed over.
  int ReadLine();
  /// Go on to the next section, bare entity or end of the drawing; 0 at the end of the file.
  int NextSection();
  /// Go on to the section of that letter: H header, T tables, B blocks, E entities, F end. 0 when there is
  /// none ahead, or when entities begin before it.
  int SearchSection(short kind);
  char currentSection() const;
  int groupCode() const;
  long lineCount() const;

  /// The layers that the drawing's table tells, or else those of its pairs, with their colour numbers in
  /// `flag1`; the caller's. Layer "0" is called "0 { DXF Default Layer }". Null after a failure.
  SDataLayerList* GetLayers();
  /// Count what the chosen layers hold; arcs and circles count as polylines. Without SetLayerName everything
  /// counts. 0 after a failure.
  int GetLayerContents(int& lines, int& polylines, int& points, int& texts);

  /// The layer to read, and, with blanks removed and other characters replaced, the one to write. Latin-1.
  void SetLayerName(const char* name);
  /// The layer that was set, or that an import has read from last; null without one.
  const char* GetLayerName() const { return IEDlayer.get(); }

  /// Turn by `angle` (radians), then scale, then move (metres).
  void SetTransf(double tx, double ty, double angle, double scale);
  void ResetTransf() { transform.Identity(); }
  /// Leaves the point as it is when `units` is an angle.
  void TransfDxf(Point& point) const;

  /// The encoding of names and texts, over what the drawing says; empty leaves it to that.
  void setEncoding(const QString& name) { encoding_ = name; }
  /// Entities of these kinds are left out because something else takes them: nothing to report.
  void setUntold(const QStringList& entities) { untold_ = entities; }

  /// Lines, polylines, arcs and circles as lines; points, unless they lie outside the vector's box. In a
  /// numeric layer the lines are break lines of a sample vector.
  int ImportLines(Vector* vec, SProjection* target) override;
  /// Points with heights, and lines of one height.
  int ImportSamples(Vector* vec, SProjection* target) override;
  /// Texts into the handler's label points. `valueKind` 1 takes only those of letters, 2 of digits, 3 of
  /// either; `prefix` and `suffix`, unless empty, must begin and end a text; `addPrefix` and `addSuffix` are
  /// put around it. `className` is the category of objects. Each pointer may be null.
  int ImportLabelPoints(SProjection* target, SProjection* unused, char* className, short* valueKind,
                        char* prefix, char* suffix, char* addPrefix, char* addSuffix) override;
  /// Texts are appended to the list, at the file's coordinates. An empty text ends the import.
  int ImportText(EntitieList* texts, SProjection* target, GeneralVisual* visual) override;

  /// Append a drawing to the file; all other exports replace it.
  int ExportLines(Vector* vec, short onlyUsedClasses) override;
  int ExportPolygons(Vector* vec, short onlyUsedClasses) override;
  int ExportPoints(Vector* vec, Category* category, short onlyUsedClasses) override;
  int ExportContourout(Vector* vec) override;
  /// Samples, contours and break lines in layers of their own.
  int ExportSample(Vector* vec) override;
  int ExportText(EntitieList* texts) override;
  /// The edges, or the triangles, of a triangulation (a Tin), but for those with a node without height.
  int ExportTIN(Vector* vec) override;
  int ExportTIN3D(Vector* vec) override;
  /// Texts with the names of classes, or the labels of objects, at their places.
  int ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) override;

  // Pieces of a drawing onto the open file, coordinates as they stand. `format` is a printf format for a
  // coordinate, of which the decimals of the first conversion count. 0 when a write failed, without a
  // message.

  /// Header and layer table up to the first entity; with 3 layers those of samples.
  int PrintDefaultHeader(short layers);
  int PrintEOF();
  int PrintPoint2d(const Point* point, const char* format);
  int PrintPoint3d(const Point3d* point, const char* format);
  /// Nothing for a line of fewer than two points: 1.
  int PrintPolyline(const Line* line, const char* format, const char* suffix);

 protected:
  struct FreeText {
    void operator()(char* text) const { std::free(text); }
  };
  using CText = std::unique_ptr<char, FreeText>;

  CText IEDlayer;
  CText IEDlayerok;
  Transform transform;

 private:
  class LayerTable;
  class EntityImport;
  class GeometryImport;
  class LineImport;
  class SampleImport;
  class TextWalk;
  class TextImport;
  class LabelImport;
  class DrawingExport;
  class LineExport;
  class PointExport;
  class SampleExport;
  class TextExport;
  class TinExport;
  class LabelExport;

  bool openDrawing();
  bool next();
  int badLine();
  void holdLayer(const char* name);
  QStringList chosenNames() const;
  int print(const std::function<void(kaldex::DrawingOutput&)>& write);

  std::unique_ptr<kaldex::DrawingReader> reader_;
  CText chosenLayer_;
  QString encoding_;
  QStringList untold_;
};

/// What a drawing tells of itself, in one pass over it. Blocks are not looked into.
class KALDEX_API DxfOutline {
 public:
  struct Layer {
    QString name;
    int color = 0;                      ///< 0: the table doesn't tell it; negative for a layer that is off
    bool declared = false;              ///< by the table of layers
    QMap<QString, long long> entities;  ///< by kind, in the section of entities
    Box box = Box::inverted();  ///< of what IEDXF reads, in the file's coordinates; inverted without any
    /// The first text with words, and the first blank one, by their order in the drawing from 1; 0: none.
    long long firstText = 0;
    long long firstBlankText = 0;
  };

  /// `encoding` as for IEDXF::setEncoding. The file's line ends must be those that handlers take.
  explicit DxfOutline(const QString& path, const QString& encoding = QString());

  /// In the order of their appearance; of very many the last stands for the rest.
  const std::vector<Layer>& layers() const { return layers_; }
  // Layer "0" may be named here as GetLayers calls it.
  bool has(const QString& layer) const;
  /// How many entities of a kind the layers of these names hold; no names: all layers.
  long long count(const QString& entity, const QStringList& names = QStringList()) const;
  Box box(const QStringList& names = QStringList()) const;
  /// Whether IEDXF::ImportText finds any before the first blank one, which ends it.
  bool hasTexts(const QStringList& names = QStringList()) const;
  QStringList entityKinds() const;
  /// Whether the drawing has its end; imports refuse it without.
  bool isComplete() const { return complete_; }
  QString version() const { return version_; }
  QString encoding() const { return encodingName_; }
  QString encodingReason() const { return encodingReason_; }
  /// What the drawing says its unit is, as its header has it; 0 when it doesn't.
  int unitsCode() const { return unitsCode_; }

 private:
  class Survey;

  template <typename Action>
  void forEach(const QStringList& names, Action&& action) const;

  std::vector<Layer> layers_;
  QString version_;
  QString encodingName_;
  QString encodingReason_;
  int unitsCode_ = 0;
  bool complete_ = false;
};

}  // namespace kaldex_v1

#endif
