#include "lib/shapefile/digital_export.h"

#include <memory>

#include "base/tracer.h"
#include "kaldex/shapefile.h"

namespace kaldex {

namespace {

class DigitalExport : public ShapeExport {
 public:
  DigitalExport(const ExportRequest& request, short geometry, HeightForm form)
      : ShapeExport(request),
        ofLines_(geometry == ExportGeometry::lines),
        flat_(form == HeightForm::column) {}

  std::int32_t shapeType() const {
    if (flat_) return ofLines_ ? ShapeKind::arc : ShapeKind::point;
    return ofLines_ ? ShapeKind::arcZ : ShapeKind::pointZ;
  }

 protected:
  void addColumns(SFieldList& columns) override {
    if (!flat_) addColumn(columns, QStringLiteral("FID"), fieldInteger, 10);
    if (ofLines_) {
      addColumn(columns, flat_ ? QStringLiteral("KDXPERIMETRO") : QStringLiteral("Length"), fieldReal, 20, 4);
    }
    addColumn(columns, flat_ ? QStringLiteral("KDXCOTA") : QStringLiteral("Avg_z"), fieldReal, 20, 4);
  }

  long long stepCount() override { return ofLines_ ? vector().lineCount() : vector().point3dCount(); }

  void writeRecords() override {
    if (ofLines_) {
      forEachLine([this](const Line& line) { writeContour(line); });
    } else {
      writeSamples();
    }
  }

 private:
  // Columns are filled from left to right.
  void beginRow() {
    column_ = 0;
    if (!flat_) table().setInteger(column_++, sink().recordNumber());
  }

  void endRow(double height, const char* kind) {
    table().setReal(column_, height);
    table().nextRow();
    countRead(kind);
    countWritten(kind);
  }

  void writeSamples() {
    std::unique_ptr<Point3d> sample(vector().FirstPoint3d());
    for (; sample != nullptr; sample.reset(goOn() ? vector().NextPoint3d() : nullptr)) writeSample(*sample);
  }

  void writeSample(const Point3d& sample) {
    const double height = static_cast<double>(sample.z);
    beginRow();
    if (flat_) {
      writePoint(sample);
    } else {
      double x = sample.x;
      double y = sample.y;
      coordinates().apply(x, y);
      sink().writePointZ(x, y, height);
    }
    endRow(height, "samples");
  }

  void writeContour(const Line& line) {
    const double height = static_cast<double>(line.height);
    beginRow();
    if (flat_) {
      writeLine(line);
    } else {
      const int count = line.Size();
      sink().writeArcZ(coordinates().apply(line.box), coordinates().applied(line.coordinates(), count), count,
                       height);
    }
    table().setReal(column_++, line.CalcLength(vector().projection()));
    endRow(height, "contours");
  }

  bool ofLines_;
  bool flat_;
  int column_ = 0;
};

bool hasStore(Vector& vector, short geometry) {
  return geometry == ExportGeometry::lines ? vector.lineSet() != nullptr : vector.point3dSet() != nullptr;
}

}  // namespace

ExportOutcome exportDigital(const ExportRequest& request, short geometry, HeightForm form) {
  if (geometry != ExportGeometry::points && geometry != ExportGeometry::lines) return refuseGeometry();
  if (!hasStore(request.vector, geometry)) return ExportOutcome::refused;
  DigitalExport numeric(request, geometry, form);
  return numeric.run(numeric.shapeType());
}

}  // namespace kaldex

inline namespace kaldex_v1 {

int ExportDigitalShape(ShapeFile& file, DataBase& dataBase, Vector& vector, const char* name, short geometry,
                       short coordMode) {
  const Tracer tracer(__FILE__, __LINE__, "ExportDigitalShape");
  const kaldex::ExportRequest request{file, dataBase, vector, name, coordMode};
  const kaldex::ExportOutcome outcome =
      kaldex::guarded([&] { return kaldex::exportDigital(request, geometry, kaldex::HeightForm::shape); });
  return outcome == kaldex::ExportOutcome::done ? 1 : 0;
}

int ShapeFile::ExportDigital2DShape(DataBase& dataBase, Vector& vector, Category&, const char* name,
                                    short geometry, short coordMode) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ExportDigital2DShape");
  const kaldex::ExportRequest request{*this, dataBase, vector, name, coordMode};
  const kaldex::ExportOutcome outcome =
      kaldex::guarded([&] { return kaldex::exportDigital(request, geometry, kaldex::HeightForm::column); });
  return outcome == kaldex::ExportOutcome::done ? 1 : 0;
}

}  // namespace kaldex_v1
