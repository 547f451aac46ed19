#ifndef KALDEX_ARCINFO_H
#define KALDEX_ARCINFO_H

#include <cstdint>

#include "kaldex/extforma.h"
#include "kaldex/model/geometry.h"

inline namespace kaldex_v1 {

/// What an ungenerate file tells of itself.
class KALDEX_API UngenerateOutline {
 public:
  enum class Form { unknown, lines, linesWithHeights, pointsWithHeights, labelPoints };

  /// Looks at the first records; the file's line ends must be those that handlers take.
  explicit UngenerateOutline(const QString& path);

  Form form() const { return form_; }
  /// The box of all coordinates in the target's plane, by reading the file once; inverted when there are none.
  /// `source` and `target` may be null, `units` are as for SExtFormats::Units2Meter.
  Box extent(SProjection* source, SProjection* target, int units) const;

 private:
  QByteArray path_;
  Form form_ = Form::unknown;
};

/// Handler of ArcInfo's text form of lines, points and label points ("ungenerate"): records that begin with
/// an identifier, "END" behind each line and behind the last record. Exports make the file anew.
///
/// The form has plane coordinates, decimal degrees and seconds; exports asked for degrees, minutes and
/// seconds write decimal degrees and tell the job report.
class KALDEX_API IEArcInfo : public SExtFormats {
 public:
  IEArcInfo();
  ~IEArcInfo() override;

  /// Lines, as break lines of a sample vector in a numeric layer. What was inserted before a failure stays.
  int ImportLines(Vector* vec, SProjection* target) override;
  /// Label points with an identifier, into the handler's list. One that names a class of the layer's category
  /// is that class, any other is none.
  int ImportLabelPoints(SProjection* target, SProjection* unused, char*, short*, char*, char*, char*,
                        char*) override;
  /// A file of points or of lines with heights, which the first line tells apart: a line file begins with an
  /// identifier by itself.
  int ImportSamples(Vector* vec, SProjection* target) override;
  /// The two branches of ImportSamples. Each goes on from the line in hand, or opens the file.
  int ImpArcInfoPoint3D(Vector* vec, SProjection* target);
  int ImpArcInfoLine3D(Vector* vec, SProjection* target);

  /// With `onlyUsedClasses` other than 0, only lines (or polygons) of classes that the layer uses.
  int ExportLines(Vector* vec, short onlyUsedClasses) override;
  /// Outlines of polygons, then the lines that bound none.
  int ExportPolygons(Vector* vec, short onlyUsedClasses) override;
  int ExportContourout(Vector* vec) override;
  /// Lines with a height into the handler's file; break lines and points, if there are any, into files beside
  /// it, whose names end in "_L2D.txt" and "_P3D.txt".
  int ExportSample(Vector* vec) override;
  /// Label points with the identifier of their class, or with the label of their object.
  int ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) override;

 protected:
  /// Of the file that is being written; the identifier of the last record. Begins anew after 65535.
  std::uint16_t exportedRecords = 0;

 private:
  class Reader;
  class LineImport;
  class PointImport;
  class LabelImport;
  class Writer;
  class LineExport;
  class SampleExport;
  class LabelExport;
};

}  // namespace kaldex_v1

#endif
