#ifndef KALDEX_SHAPEFILE_H
#define KALDEX_SHAPEFILE_H

#include <QString>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "kaldex/api.h"
#include "kaldex/model/forward.h"

namespace kaldex {
class ShapeStream;
}

inline namespace kaldex_v1 {

/// Shape types of the files, as headers and records hold them.
struct ShapeKind {
  enum : std::int32_t {
    null = 0,
    point = 1,
    arc = 3,
    polygon = 5,
    multiPoint = 8,
    pointZ = 11,
    arcZ = 13,
  };
};

/// The 100 bytes at the start of a .shp and of a .shx file. The ranges of height and measure are always zero.
struct KALDEX_API ShapeHeader {
  void Print(FILE* out) const;

  std::int32_t FileCode = 9994;
  std::int32_t FileLength = 0;  ///< of the whole file, in 16-bit words
  std::int32_t Version = 1000;
  std::int32_t ShapeType = ShapeKind::null;
  double XMinimum = 0.0;
  double YMinimum = 0.0;
  double XMaximum = 0.0;
  double YMaximum = 0.0;
};

/// The 8 bytes ahead of each record of a .shp file.
struct RecordHeader {
  std::int32_t RecordNumber = 0;   ///< from 1
  std::int32_t ContentLength = 0;  ///< in 16-bit words, without this header
};

/// The 8 bytes of each record in a .shx file.
struct IndexRecordHeader {
  std::int32_t Offset = 0;  ///< of the record's header in the .shp file, in 16-bit words
  std::int32_t ContentLength = 0;
};

struct KALDEX_API PointRecord {
  void Print(FILE* out) const;

  std::int32_t shapeType = ShapeKind::point;
  double x = 0.0;
  double y = 0.0;
};

struct KALDEX_API PointZRecord : PointRecord {
  PointZRecord() { shapeType = ShapeKind::pointZ; }

  double z = 0.0;
  double m = 0.0;
};

/// Several points as one shape.
struct KALDEX_API MultiPointRecord {
  /// Make room for `numPoints` points, all zero. False for less than one, or if memory is short.
  bool Alloc();
  void Print(FILE* out) const;

  std::int32_t shapeType = ShapeKind::multiPoint;
  double XMinimum = 0.0;
  double YMinimum = 0.0;
  double XMaximum = 0.0;
  double YMaximum = 0.0;
  std::int32_t numPoints = 0;
  std::vector<double> points;  ///< x, y pairs
};

/// A shape of one or more parts. Blocks are reused when a record is allocated again.
struct KALDEX_API ArcRecord {
  /// Make room for `numParts` part starts and `numPoints` points, all zero. False when either is below one,
  /// or if memory is short.
  bool Alloc();
  /// The x, y pair at that position from 0, or null outside the block.
  double* GetPoints(int position);
  void Print(FILE* out) const;

  std::int32_t shapeType = ShapeKind::arc;
  double XMinimum = 0.0;
  double YMinimum = 0.0;
  double XMaximum = 0.0;
  double YMaximum = 0.0;
  std::int32_t numParts = 0;
  std::int32_t numPoints = 0;
  std::vector<std::int32_t> parts;  ///< position of each part's first point
  std::vector<double> points;       ///< x, y pairs
};

struct KALDEX_API PolygonRecord : ArcRecord {
  PolygonRecord() { shapeType = ShapeKind::polygon; }
};

struct KALDEX_API ArcZRecord : ArcRecord {
  ArcZRecord() { shapeType = ShapeKind::arcZ; }
  /// Make room for `numPoints` heights, or measures, all zero. False as for Alloc.
  bool AllocZ();
  bool AllocM();

  double ZMinimum = 0.0;
  double ZMaximum = 0.0;
  std::vector<double> z;
  double MMinimum = 0.0;
  double MMaximum = 0.0;
  std::vector<double> m;  ///< empty when the record carries no measures
};

/// Writes vectors of the geographic database as shapefiles: "NAME.shp", "NAME.shx" and "NAME.dbf", and beside
/// them "NAME.cpg" (the table's encoding, ISO-8859-1) and, where the reference system can be told,
/// "NAME.prj".
///
/// All operations that write or read return false on a closed stream, an unknown byte-order mode and at the
/// first field that comes short. Data is buffered: a full disk may be told as late as by CloseFile.
///
/// Export operations return 1, or 0 after a message ("Erro de I/O." when a file can't be made or written
/// whole; "Banco de Dados com problemas!" when the database fails). Cancelling through SGError ends them with
/// 0 and without a message. `geometry` is 1 points, 2 lines, 3 polygons; `coordMode` is that of ExpCoordShp;
/// `name` is the files' path without ending, at most kMaxName bytes. What they did goes to the current
/// JobReport. The files of a failed export are closed and stay as far as they got.
class KALDEX_API ShapeFile {
 public:
  /// Longest base name: with the ending and a terminator it fills 4096 bytes.
  static constexpr int kMaxName = 4091;

  ShapeFile();
  ShapeFile(const ShapeFile&) = delete;
  ShapeFile& operator=(const ShapeFile&) = delete;
  ~ShapeFile();

  /// Make an empty file, or empty an existing one; it is not open afterwards.
  bool CreateFile(const char* path);
  bool CreateIndexFile(const char* path);
  /// True at once when the stream is open already. A null mode opens for reading, any other for writing from
  /// empty.
  bool OpenFile(const char* path, const char* mode);
  bool OpenIndexFile(const char* path, const char* mode);
  /// False when what was written did not reach the file whole. Closing a closed stream is true.
  bool CloseFile();
  bool CloseIndexFile();

  /// Write MainHeader or IndexHeader at the start of its stream.
  bool WriteHeader();
  bool WriteIndexHeader();
  bool WriteRecordHeader(const RecordHeader& header);
  bool WriteIndexRecordHeader(const IndexRecordHeader& header);
  bool WritePointRecord(const PointRecord& record);
  bool WritePointZRecord(const PointZRecord& record);
  /// With `withData` 0 writes type, box and counts only: WritePartsData and WritePointsData follow.
  bool WriteArcRecord(const ArcRecord& record, short withData);
  bool WritePolygonRecord(const PolygonRecord& record, short withData);
  bool WriteArcZRecord(const ArcZRecord& record);
  /// Part starts, and x, y pairs. False for a null array and a negative count; a count of zero is nothing to
  /// do.
  bool WritePartsData(int count, const std::int32_t* parts);
  bool WritePointsData(int count, const double* xy);
  /// This shape type is not written: always false.
  bool WriteMultiPointRecord(const MultiPointRecord& record);

  bool ReadHeader();
  bool ReadIndexHeader();
  bool ReadRecordHeader(RecordHeader& header);
  bool ReadIndexRecordHeader(IndexRecordHeader& header);
  /// The readers of records take a null shape too: the record is then cleared. Counts are checked against
  /// what the file still holds; a shape of another family is refused.
  bool ReadPointRecord(PointRecord& record);
  bool ReadPointZRecord(PointZRecord& record);
  bool ReadMultiPointRecord(MultiPointRecord& record);
  bool ReadArcRecord(ArcRecord& record);
  bool ReadPolygonRecord(PolygonRecord& record);
  /// The measures are optional: `contentLength` (16-bit words, of the record's header) tells whether they are
  /// there.
  bool ReadArcZRecord(ArcZRecord& record, int contentLength);

  /// Lines, polygons or 2D points with the name of their class. With a `filterByPlan` other than 0 only those
  /// whose class is in use in the vector's layer. A numeric vector goes to ExportDigitalShape; what that
  /// refuses for its geometry is still 1 here.
  int GenerateShapefile(DataBase& dataBase, Vector& vector, Category& category, const char* name,
                        short geometry, short coordMode, short filterByPlan);
  /// One record for each geographic object of the category that the layer shows (for points one for each of
  /// its points), with its attributes; then what belongs to no object.
  int ExportObjShape(DataBase& dataBase, Vector& vector, Category& category, const char* name, short geometry,
                     short coordMode);
  /// Samples or contours of a numeric vector as flat shapes, with the height as a column.
  int ExportDigital2DShape(DataBase& dataBase, Vector& vector, Category& category, const char* name,
                           short geometry, short coordMode);
  /// The polygons of a labelled image: each polygon's outer ring, with polygon and region identifiers.
  /// Removes every
  /// ".shp" from `name`, in the caller's text too.
  int ExportImageLabelShape(DataBase& dataBase, Vector& vector, QString& name, short coordMode);
  /// Texts are not exported to shapefiles: does nothing, 1.
  int ExportTextShape(EntitieList* texts, const char* name, short coordMode);

  std::int32_t byteOrderMode =
      1;  ///< 1 this is a little-endian machine, 2 a big-endian one; nothing else works
  ShapeHeader MainHeader;
  ShapeHeader IndexHeader;

 private:
  std::unique_ptr<kaldex::ShapeStream> main_;
  std::unique_ptr<kaldex::ShapeStream> index_;
};

/// Samples (geometry 1, shape type 11) or contours (geometry 2, shape type 13) of a numeric vector, with
/// their heights. A vector without a store of that kind is 0, without message or file. Otherwise as the
/// class's exports.
KALDEX_API int ExportDigitalShape(ShapeFile& file, DataBase& dataBase, Vector& vector, const char* name,
                                  short geometry, short coordMode);

/// Make the table "NAME.dbf" with these columns and no rows. Names are cut to 10 characters, texts to 255.
/// False for a null name, a file that can't be made or written, and columns that a table can't have.
KALDEX_API bool CreateDBaseTable(const char* name, const SFieldList& fields);

/// A place in the plane of `projection`, in the coordinates of an export: 0 as it is; 1 as it is, and `sx`,
/// `sy` get its longitude and latitude as degree texts; 2 decimal degrees; any other decimal seconds of arc.
/// A null projection leaves everything as it is.
KALDEX_API void ExpCoordShp(double* x, double* y, QString& sx, QString& sy, const SProjection* projection,
                            short coordMode);

}  // namespace kaldex_v1

#endif
