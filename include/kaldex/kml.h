#ifndef KALDEX_KML_H
#define KALDEX_KML_H

#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <string>

#include "kaldex/extforma.h"

inline namespace kaldex_v1 {

namespace KdxOgc {
class OgKMLAbstractObject;
class OgKMLDocument;
}  // namespace KdxOgc

/// What a KML or KMZ file tells of itself. Reading it is most of the work of an import, so that a handler can
/// take it over: see IEKml::use.
class KALDEX_API KmlOutline {
 public:
  explicit KmlOutline(const QString& path);
  KmlOutline(const KmlOutline&) = delete;
  KmlOutline& operator=(const KmlOutline&) = delete;
  ~KmlOutline();

  /// Whether the file is a document; `error` says why not.
  bool isValid() const { return error_.isEmpty(); }
  const QString& error() const { return error_; }
  const QString& name() const { return name_; }
  long long points() const { return points_; }
  long long lines() const { return lines_; }
  long long polygons() const { return polygons_; }
  /// Names of the data that placemarks carry.
  const QStringList& dataNames() const { return dataNames_; }
  /// Of all geometry, degrees on WGS84; inverted when there is none.
  const Box& extent() const { return extent_; }

 private:
  friend class IEKml;

  void survey();

  QString path_;  ///< absolute
  QString error_;
  QString name_;
  long long points_ = 0;
  long long lines_ = 0;
  long long polygons_ = 0;
  QStringList dataNames_;
  Box extent_;
  std::unique_ptr<KdxOgc::OgKMLDocument> document_;
};

/// Moves points, lines and polygons between a vector and a KML document, or a KMZ file.
///
/// Documents are on WGS84. Imports carry it to the projection given to Init, which therefore has to be that
/// of the vector; exports carry the vector's coordinates to the datum of the projection given to Init, which
/// has to be on WGS84. The operations show no messages: what became of the document is in the job report.
class KALDEX_API IEKml : public SExtFormats {
 public:
  IEKml();
  ~IEKml() override;

  // Imports read the file that Init named, as it is. 0 for a null vector and for a file that is no document,
  // of which nothing is imported then. Placemarks that were imported are gone from the document. The
  // second argument is not used.

  int ImportLines(Vector* vec, SProjection* unused) override;
  int ImportPoint2d(Vector* vec, SProjection* unused) override;
  /// The rings of polygons, as lines.
  int ImportPolygons(Vector* vec, SProjection* unused);
  /// All three, the file being read once.
  int ImportAll(Vector* vec, SProjection* unused);
  /// These two open the document, and that is all: 0.
  int ImportSamples(Vector* vec, SProjection* unused) override;
  int ImportContourout(Vector* vec, SProjection* unused) override;
  /// Have the next import take what an outline of the same file has read.
  void use(std::shared_ptr<KmlOutline> outline);

  // Exports add placemarks to a document, with class or object as name and data; nothing is written before
  // WriteToFile. Arguments behind the vector have no effect.

  int ExportLines(Vector* vec, short unused) override;
  int ExportPoints(Vector* vec, Category* category, short unused) override;
  /// Polygons go out as their lines.
  int ExportPolygons(Vector* vec, short unused) override;
  /// Points, then lines.
  int ExportAll(Vector* vec, short unused);
  /// Write the document to the file that Init named with ".kml" behind its name, or ".kmz" if it is to be
  /// zipped, and drop the temporary vector. 0 when there is no document, or when writing failed.
  int WriteToFile();
  void setZipped(bool zipped) { zipped_ = zipped; }
  /// Not offered: 0.
  int ExportSample(Vector* vec) override;
  int ExportContourout(Vector* vec) override;
  int ExportTIN(Vector* vec) override;
  int ExportTIN3D(Vector* vec) override;

  /// Read the file into a new document. 0 when that can't be done.
  int InitDecoder(Vector* vec);
  /// Begin a document unless there is one; 1.
  int InitEncoder(Vector* vec);
  /// Insert the document's geometries of a type ("LineString", "Point", "Polygon") into the vector; 1.
  int FillVector(Vector* vec, std::string geometryType);

  // Conversions of the vector that InitDecoder or InitEncoder had in hand last, from its plane to degrees of
  // longitude and latitude and back. The results are new and the caller's; null for null.

  Point* ToWGS84(Point* point);
  Line* ToWGS84(Line* line);
  SPolygon* ToWGS84(SPolygon* polygon);
  Point2d* FromWGS84(Point2d* point);
  Line* FromWGS84(Line* line);
  SPolygon* FromWGS84(SPolygon* polygon);
  /// A copy of a vector in degrees, in a temporary folder. It is the handler's, which has one at a time,
  /// until WriteToFile. Null when it can't be made.
  Vector* ToWGS84(Vector* vec);

 private:
  class Fill;
  class Export;
  class TemporaryCopy;

  void updatePath();
  void dropDocument();
  void dropTemporaryVector();
  bool toDegrees(double* xy, std::size_t count) const;
  bool fromDegrees(double* pairs, std::size_t count) const;
  template <class Convert>
  Line* converted(const Line& line, Convert convert) const;
  template <class Convert>
  SPolygon* converted(SPolygon& polygon, Convert convert);
  int import(Vector* vec, const QStringList& types);

  QString filePath_;
  QVector<KdxOgc::OgKMLAbstractObject*> objects_;  ///< of the export's document, which borrows them
  std::unique_ptr<KdxOgc::OgKMLDocument> document_;
  SProjection* held_ = nullptr;
  QString temporaryFolder_;
  std::unique_ptr<Vector> temporaryVector_;
  std::shared_ptr<KmlOutline> outline_;
  bool zipped_ = false;
};

}  // namespace kaldex_v1

#endif
