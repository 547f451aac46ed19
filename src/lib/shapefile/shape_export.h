#ifndef KALDEX_SHAPEFILE_SHAPE_EXPORT_H
#define KALDEX_SHAPEFILE_SHAPE_EXPORT_H

#include <QString>
#include <functional>
#include <map>
#include <string>

#include "kaldex/model/vector.h"
#include "lib/frame/progress_scope.h"
#include "lib/shapefile/coordinate_output.h"
#include "lib/shapefile/shape_sink.h"
#include "lib/shapefile/vector_leases.h"

namespace kaldex {

// The `geometry` argument of export operations.
struct ExportGeometry {
  enum : short { points = 1, lines = 2, polygons = 3 };
};

enum class ExportOutcome {
  done,
  refused,  // the vector or the arguments don't suit the export; told where there are words for it
  failed,   // told, or cancelled
};

struct ExportRequest {
  ShapeFile& file;
  DataBase& dataBase;
  Vector& vector;
  const char* name;  // path of the files without ending
  short coordMode;
};

// Shows a message under the system's title.
void showMessage(const QString& text);
// Runs an operation that may throw: a failure of the database or a lack of memory is told, and is `failed`.
ExportOutcome guarded(const std::function<ExportOutcome()>& operation);
// Tells that the format has no such geometry: `refused`.
ExportOutcome refuseGeometry();
// The shape type of a geometry in flat shapes, or ShapeKind::null when it is none.
std::int32_t flatShapeType(short geometry);

// The frame of every export: files with empty headers, the table, the records of a derived class, final
// headers, the files beside them, and the report.
class ShapeExport {
 public:
  explicit ShapeExport(const ExportRequest& request);
  virtual ~ShapeExport();
  ShapeExport(const ShapeExport&) = delete;
  ShapeExport& operator=(const ShapeExport&) = delete;

  ExportOutcome run(std::int32_t shapeType);

 protected:
  virtual void addColumns(SFieldList& columns) = 0;
  // How many steps writeRecords will report.
  virtual long long stepCount() = 0;
  // Writes all records; ends early once goOn() is false.
  virtual void writeRecords() = 0;

  static void addColumn(SFieldList& columns, const QString& name, short type, int width, int decimals = 0);
  // Reports a step of the progress; false when the export is cancelled or a file has failed.
  bool goOn();
  // Hand every line, polygon or point of the vector to `write` and give it back; end early with the export.
  template <class Write>
  void forEachLine(Write&& write) {
    const LineReturn giveBack(vector());
    for (Line* line = vector().FirstLine(); line != nullptr; line = goOn() ? vector().NextLine() : nullptr) {
      const LineLease lease(line, giveBack);
      write(*line);
    }
  }
  template <class Write>
  void forEachPolygon(Write&& write) {
    const PolygonReturn giveBack(vector());
    SPolygon* polygon = vector().FirstPolygon();
    for (; polygon != nullptr; polygon = goOn() ? vector().NextPolygon() : nullptr) {
      const PolygonLease lease(polygon, giveBack);
      write(*polygon);
    }
  }
  template <class Write>
  void forEachPoint2d(Write&& write) {
    Point2d* point = vector().FirstPoint2d();
    for (; point != nullptr; point = goOn() ? vector().NextPoint2d() : nullptr) write(*point);
  }
  // A whole line as a record of one part.
  void writeLine(const Line& line);
  void writePoint(const Point& point);

  void countRead(const char* kind, long long count = 1) { read_[kind] += count; }
  void countWritten(const char* kind, long long count = 1) { written_[kind] += count; }
  void countLeftOut(const char* reason) { ++leftOut_[reason]; }

  Vector& vector() { return request_.vector; }
  DataBase& dataBase() { return request_.dataBase; }
  ShapeSink& sink() { return sink_; }
  AttributeTable& table() { return sink_.table(); }
  CoordinateOutput& coordinates() { return coordinates_; }

 private:
  using Counts = std::map<const char*, long long>;

  bool nameIsGood() const;
  ExportOutcome tellProblem();
  ExportOutcome finish();
  void report(bool withProjection);

  ExportRequest request_;
  CoordinateOutput coordinates_;
  ShapeSink sink_;
  std::string base_;
  ProgressScope* progress_ = nullptr;
  Counts read_, written_, leftOut_;
};

}  // namespace kaldex

#endif
