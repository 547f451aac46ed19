#include <QFile>

#include "base/tracer.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/shape_export.h"
#include "lib/shapefile/shape_parts.h"

namespace kaldex {

namespace {

// The polygons of a labelled image, parents and sons alike. A record counts the polygon's holes in its parts,
// all of which start at 0, and holds the points of the outer ring alone: readers of these files go by the
// count.
class RegionExport : public ShapeExport {
 public:
  using ShapeExport::ShapeExport;

 protected:
  void addColumns(SFieldList& columns) override {
    addColumn(columns, QStringLiteral("KDXAREA"), fieldReal, 20, 4);
    addColumn(columns, QStringLiteral("KDXPERIMETRO"), fieldReal, 20, 4);
    addColumn(columns, QStringLiteral("POLID"), fieldInteger, 32);
    addColumn(columns, QStringLiteral("REGID"), fieldInteger, 32);
  }

  long long stepCount() override { return vector().polygonCount(); }

  void writeRecords() override {
    forEachPolygon([this](SPolygon& polygon) { writePolygon(polygon); });
  }

 private:
  void writePolygon(SPolygon& polygon) {
    countRead("polygons");
    parts_.clear();
    if (!appendOuterRing(polygon, parts_)) {
      sink().skipRecordNumber();
      return countLeftOut("degenerate");
    }
    parts_.setStarts(polygon.NumSons() + 1);
    sink().writeArc(coordinates().apply(polygon.box), parts_.view(coordinates()));
    table().setReal(0, polygon.area);
    table().setReal(1, polygon.perimeter);
    table().setInteger(2, polygon.id);
    // The region that a polygon of the image belongs to is kept where other layers keep the class.
    table().setInteger(3, polygon.classId);
    table().nextRow();
    countWritten("polygons");
  }

  ShapeParts parts_;
};

}  // namespace

}  // namespace kaldex

inline namespace kaldex_v1 {

int ShapeFile::ExportImageLabelShape(DataBase& dataBase, Vector& vector, QString& name, short coordMode) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ExportImageLabelShape");
  name.remove(QStringLiteral(".shp"));
  const QByteArray path = QFile::encodeName(name);
  const kaldex::ExportRequest request{*this, dataBase, vector, path.constData(), coordMode};
  const kaldex::ExportOutcome outcome =
      kaldex::guarded([&] { return kaldex::RegionExport(request).run(ShapeKind::polygon); });
  return outcome == kaldex::ExportOutcome::done ? 1 : 0;
}

int ShapeFile::ExportTextShape(EntitieList*, const char*, short) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ExportTextShape");
  return 1;
}

}  // namespace kaldex_v1
