#include <QObject>
#include <map>
#include <string>

#include "base/latin1.h"
#include "base/tracer.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/database.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/digital_export.h"
#include "lib/shapefile/shape_export.h"
#include "lib/shapefile/shape_parts.h"

namespace kaldex {

namespace {

constexpr int kClassWidth = 32;

// The names of the classes that an export may write, as the table takes them.
class ClassNames {
 public:
  // With a `layer` only the classes that are in use there.
  ClassNames(Category& category, DataBase& dataBase, InfoLayer* layer, bool usedOnly) {
    for (const GeoClass* one : category.classes) {
      if (usedOnly && (layer == nullptr || !dataBase.classInLayer(*layer, one->id, 0))) continue;
      names_[one->id].name = one->name;
    }
  }

  bool has(int id) const { return names_.count(id) != 0; }

  // Empty for 0 and for a class that isn't known. What a name loses is told the first time that it is
  // written.
  const QByteArray& inTable(int id) {
    const auto entry = id != 0 ? names_.find(id) : names_.end();
    if (entry == names_.end()) return none_;
    Name& name = entry->second;
    if (name.inTable.isNull()) encode(name);
    return name.inTable;
  }

  ValueLosses& losses() { return losses_; }

 private:
  struct Name {
    QString name;
    QByteArray inTable;
  };

  void encode(Name& name) {
    const QString column = QStringLiteral("KDXCLASSE");
    Latin1Loss loss;
    name.inTable = toLatin1(name.name, &loss);
    if (name.inTable.isNull()) name.inTable = QByteArray("");
    if (loss.count() != 0) losses_.characters(name.name, column, loss.characters().join(QString()));
    if (name.inTable.size() <= kClassWidth) return;
    name.inTable.truncate(kClassWidth);
    losses_.cutText(name.name, column, kClassWidth);
  }

  std::map<int, Name> names_;
  QByteArray none_;
  ValueLosses losses_;
};

// Lines, polygons or points with the name of their class.
class ThematicExport : public ShapeExport {
 public:
  ThematicExport(const ExportRequest& request, Category& category, short geometry, bool filterByPlan)
      : ShapeExport(request),
        names_(category, request.dataBase, request.vector.infoLayer(), filterByPlan),
        geometry_(geometry),
        filter_(filterByPlan) {}

 protected:
  void addColumns(SFieldList& columns) override {
    if (geometry_ == ExportGeometry::polygons)
      addColumn(columns, QStringLiteral("KDXAREA"), fieldReal, 20, 4);
    if (geometry_ != ExportGeometry::points)
      addColumn(columns, QStringLiteral("KDXPERIMETRO"), fieldReal, 20, 4);
    addColumn(columns, QStringLiteral("KDXCLASSE"), fieldText, kClassWidth);
  }

  long long stepCount() override {
    if (geometry_ == ExportGeometry::lines) return vector().lineCount();
    return geometry_ == ExportGeometry::polygons ? vector().polygonCount() : vector().point2dCount();
  }

  void writeRecords() override {
    switch (geometry_) {
      case ExportGeometry::lines:
        writeLines();
        break;
      case ExportGeometry::polygons:
        writePolygons();
        break;
      case ExportGeometry::points:
        writePoints();
        break;
      default:
        // No caller gets here: the geometry was looked at before. The files would stay without records.
        showMessage(QObject::tr("Opção não disponível!"));
    }
    names_.losses().finish();
  }

 private:
  // Without the filter all pass, those without a class and of a foreign one too.
  bool passes(int classId) const { return !filter_ || (classId != 0 && names_.has(classId)); }

  bool keeps(int classId, const char* kind) {
    countRead(kind);
    const bool kept = passes(classId);
    if (kept) {
      countWritten(kind);
    } else {
      countLeftOut("class_filter");
    }
    return kept;
  }

  void writeLines() {
    forEachLine([this](Line& line) {
      if (!keeps(line.classId, "lines")) return;
      writeLine(line);
      table().setReal(0, line.CalcLength(vector().projection()));
      table().setLatin1(1, names_.inTable(line.classId));
      table().nextRow();
    });
  }

  void writePolygons() {
    forEachPolygon([this](SPolygon& polygon) {
      if (!isMereHole(polygon)) writePolygon(polygon);
    });
  }

  // A son without a class is only a hole of its father; one with a class is written as its own record too.
  bool isMereHole(const SPolygon& polygon) const {
    return !filter_ && polygon.classId == 0 && polygon.parentId > 0;
  }

  void writePolygon(SPolygon& polygon) {
    countRead("polygons");
    if (!passes(polygon.classId)) return countLeftOut("class_filter");
    parts_.clear();
    if (!appendRings(vector(), polygon, parts_)) {
      sink().skipRecordNumber();
      return countLeftOut("degenerate");
    }
    sink().writeArc(coordinates().apply(polygon.box), parts_.view(coordinates()));
    table().setReal(0, polygon.area);
    table().setReal(1, polygon.perimeter);
    table().setLatin1(2, names_.inTable(polygon.classId));
    table().nextRow();
    countWritten("polygons");
  }

  void writePoints() {
    forEachPoint2d([this](const Point2d& point) {
      if (!keeps(point.classId, "points")) return;
      writePoint(point);
      table().setLatin1(0, names_.inTable(point.classId));
      table().nextRow();
    });
  }

  ClassNames names_;
  short geometry_;
  bool filter_;
  ShapeParts parts_;
};

}  // namespace

}  // namespace kaldex

inline namespace kaldex_v1 {

int ShapeFile::GenerateShapefile(DataBase& dataBase, Vector& vector, Category& category, const char* name,
                                 short geometry, short coordMode, short filterByPlan) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::GenerateShapefile");
  const kaldex::ExportRequest request{*this, dataBase, vector, name, coordMode};
  const kaldex::ExportOutcome outcome = kaldex::guarded([&] {
    // A numeric vector has no classes. That it has nothing of this geometry to export is no failure of this
    // operation.
    if (vector.modelKind() == DIGITALMODEL) {
      const kaldex::ExportOutcome numeric =
          kaldex::exportDigital(request, geometry, kaldex::HeightForm::shape);
      return numeric == kaldex::ExportOutcome::refused ? kaldex::ExportOutcome::done : numeric;
    }
    const std::int32_t shapeType = kaldex::flatShapeType(geometry);
    if (shapeType == ShapeKind::null) return kaldex::refuseGeometry();
    return kaldex::ThematicExport(request, category, geometry, filterByPlan != 0).run(shapeType);
  });
  return outcome == kaldex::ExportOutcome::done ? 1 : 0;
}

}  // namespace kaldex_v1
