#include <QObject>
#include <algorithm>
#include <memory>
#include <vector>

#include "base/tracer.h"
#include "kaldex/model/anchor.h"
#include "kaldex/shapefile.h"
#include "lib/shapefile/id_set.h"
#include "lib/shapefile/object_query.h"
#include "lib/shapefile/shape_export.h"
#include "lib/shapefile/shape_parts.h"

namespace kaldex {

namespace {

constexpr int kNameWidth = 32;
constexpr int kMaxTextWidth = 255;

// Geographic objects with their attributes, a record for each row of objects and anchors; then what belongs
// to none. Each geometry has its own rows and its own rest.
class ObjectExport : public ShapeExport {
 public:
  ObjectExport(const ExportRequest& request, RecordSet& records, int firstAttribute)
      : ShapeExport(request),
        records_(records),
        anchorColumn_(records.columnIndex(QStringLiteral("GANCHORID"))),
        labelColumn_(records.columnIndex(QStringLiteral("ROTULO"))),
        nameColumn_(records.columnIndex(QStringLiteral("NOME"))) {
    for (int column = firstAttribute; column < records.columnCount(); ++column) {
      attributes_.push_back({column, records.columnType(column)});
    }
  }

 protected:
  // Columns of the geometry's measures, ahead of all others.
  virtual void addMeasures(SFieldList& columns) = 0;
  virtual long long shapeCount() = 0;
  // Whether the anchor lists any, be they in the vector or not.
  virtual bool hasShapes(const Anchor& anchor) const = 0;
  // The records of the row at hand, whose anchor this is.
  virtual void writeObject(const Anchor& anchor) = 0;
  virtual void writeRest() = 0;

  void addColumns(SFieldList& columns) override {
    addMeasures(columns);
    measures_ = columns.Size();
    addColumn(columns, QStringLiteral("KDXROTULO"), fieldText, kNameWidth);
    addColumn(columns, QStringLiteral("KDXNOME"), fieldText, kNameWidth);
    for (const Attribute& attribute : attributes_) addAttribute(columns, attribute);
  }

  long long stepCount() override { return vector().anchorCount() + shapeCount(); }

  void writeRecords() override {
    bool more = true;
    for (; more && !records_.atEnd(); more = goOn()) {
      writeRow();
      records_.next();
    }
    if (more) writeRest();
  }

  // The columns of the object at hand, from the row.
  void setObject() {
    const QString label = records_.text(labelColumn_);
    table().setOwner(label);
    table().setText(measures_, label);
    table().setText(measures_ + 1, records_.text(nameColumn_));
    int column = measures_ + 2;
    for (const Attribute& attribute : attributes_) setAttribute(column++, attribute);
  }

  // The columns of what belongs to no object.
  void setNoObject() {
    table().setLatin1(measures_, QByteArray(""));
    table().setLatin1(measures_ + 1, QByteArray(""));
    int column = measures_ + 2;
    for (const Attribute& attribute : attributes_) {
      if (attribute.type == fieldReal || attribute.type == fieldInteger) {
        table().setReal(column++, 0.0);
      } else {
        table().setLatin1(column++, QByteArray(""));
      }
    }
  }

  ShapeParts& parts() { return parts_; }
  // What objects have taken already.
  IdSet& taken() { return taken_; }

 private:
  struct Attribute {
    int column;  // of the record set
    short type;
  };

  void writeRow() {
    countRead("objects");
    const std::unique_ptr<Anchor> anchor(vector().GetAnchor(records_.integer(anchorColumn_)));
    if (anchor == nullptr || !hasShapes(*anchor)) return countLeftOut("no_geometry");
    writeObject(*anchor);
    countWritten("objects");
  }

  void addAttribute(SFieldList& columns, const Attribute& attribute) {
    const QString name = records_.columnName(attribute.column);
    switch (attribute.type) {
      case fieldReal:
        return addColumn(columns, name, fieldReal, 20, 4);
      case fieldDate:
        return addColumn(columns, name, fieldDate, 8);
      case fieldInteger:
        return addColumn(columns, name, fieldInteger, 10);
      default:
        return addColumn(columns, name, fieldText,
                         std::clamp(records_.columnSize(attribute.column), 1, kMaxTextWidth));
    }
  }

  void setAttribute(int column, const Attribute& attribute) {
    switch (attribute.type) {
      case fieldReal:
        return table().setReal(column, records_.real(attribute.column));
      case fieldInteger:
        return table().setInteger(column, records_.integer(attribute.column));
      default:
        return table().setText(column, records_.text(attribute.column));
    }
  }

  RecordSet& records_;
  int anchorColumn_;
  int labelColumn_;
  int nameColumn_;
  int measures_ = 0;
  std::vector<Attribute> attributes_;
  ShapeParts parts_;
  IdSet taken_;
};

class ObjectLines : public ObjectExport {
 public:
  using ObjectExport::ObjectExport;

 protected:
  void addMeasures(SFieldList& columns) override {
    addColumn(columns, QStringLiteral("KDXPERIMETRO"), fieldReal, 20, 4);
  }
  long long shapeCount() override { return vector().lineCount(); }
  bool hasShapes(const Anchor& anchor) const override { return !anchor.lines.empty(); }

  void writeObject(const Anchor& anchor) override {
    // The column takes the length of the last line, not of all of them: what reads these tables knows it so.
    double length = 0.0;
    parts().clear();
    for (int id : anchor.lines) {
      const LineLease line(vector().GetLine(id), LineReturn(vector()));
      if (line == nullptr) continue;
      parts().append(line->coordinates(), line->Size());
      length = line->CalcLength(vector().projection());
      taken().insert(id);
    }
    countLines(parts().numParts());
    sink().writeArc(coordinates().apply(anchor.box), parts().view(coordinates()));
    table().setReal(0, length);
    setObject();
    table().nextRow();
  }

  void writeRest() override {
    forEachLine([this](const Line& line) {
      if (taken().contains(line.id)) return;
      countLines(1);
      writeLine(line);
      table().setReal(0, 0.0);
      setNoObject();
      table().nextRow();
    });
  }

 private:
  void countLines(int count) {
    countRead("lines", count);
    countWritten("lines", count);
  }
};

class ObjectPolygons : public ObjectExport {
 public:
  using ObjectExport::ObjectExport;

 protected:
  void addMeasures(SFieldList& columns) override {
    addColumn(columns, QStringLiteral("KDXAREA"), fieldReal, 20, 4);
    addColumn(columns, QStringLiteral("KDXPERIMETRO"), fieldReal, 20, 4);
  }
  long long shapeCount() override { return vector().polygonCount(); }
  bool hasShapes(const Anchor& anchor) const override { return !anchor.polygons.empty(); }

  void writeObject(const Anchor& anchor) override {
    parts().clear();
    for (int id : anchor.polygons) {
      const PolygonLease polygon(vector().GetPolygon(id), PolygonReturn(vector()));
      if (polygon == nullptr) continue;
      taken().insert(id);
      countPolygon(appendRings(vector(), *polygon, parts()));
    }
    writeParts(anchor.box, anchor.area, anchor.perimeter);
    setObject();
    table().nextRow();
  }

  void writeRest() override {
    forEachPolygon([this](SPolygon& polygon) {
      if (polygon.parentId <= 0 && !taken().contains(polygon.id)) writeUntaken(polygon);
    });
  }

 private:
  void writeUntaken(SPolygon& polygon) {
    parts().clear();
    const bool hasOutline = appendRings(vector(), polygon, parts());
    countPolygon(hasOutline);
    if (!hasOutline) return sink().skipRecordNumber();
    writeParts(polygon.box, 0.0, 0.0);
    setNoObject();
    table().nextRow();
  }

  void writeParts(const Box& box, double area, double perimeter) {
    sink().writeArc(coordinates().apply(box), parts().view(coordinates()));
    table().setReal(0, area);
    table().setReal(1, perimeter);
  }

  void countPolygon(bool hasOutline) {
    countRead("polygons");
    if (hasOutline) {
      countWritten("polygons");
    } else {
      countLeftOut("degenerate");
    }
  }
};

class ObjectPoints : public ObjectExport {
 public:
  using ObjectExport::ObjectExport;

 protected:
  void addMeasures(SFieldList&) override {}
  long long shapeCount() override { return vector().point2dCount(); }
  bool hasShapes(const Anchor& anchor) const override { return !anchor.points.empty(); }

  // Each point is a record of its own, so an object of several has several rows.
  void writeObject(const Anchor& anchor) override {
    for (int id : anchor.points) {
      const Point2d* const point = vector().GetPoint2d(id);
      if (point == nullptr) continue;
      taken().insert(id);
      writeCounted(*point);
      setObject();
      table().nextRow();
    }
  }

  void writeRest() override {
    forEachPoint2d([this](const Point2d& point) {
      if (taken().contains(point.id)) return;
      writeCounted(point);
      setNoObject();
      table().nextRow();
    });
  }

 private:
  void writeCounted(const Point2d& point) {
    countRead("points");
    writePoint(point);
    countWritten("points");
  }
};

std::unique_ptr<ObjectExport> makeExport(const ExportRequest& request, short geometry, RecordSet& records,
                                         int firstAttribute) {
  switch (geometry) {
    case ExportGeometry::lines:
      return std::make_unique<ObjectLines>(request, records, firstAttribute);
    case ExportGeometry::polygons:
      return std::make_unique<ObjectPolygons>(request, records, firstAttribute);
    default:
      return std::make_unique<ObjectPoints>(request, records, firstAttribute);
  }
}

ExportOutcome exportObjects(const ExportRequest& request, const Category& category, short geometry) {
  const std::int32_t shapeType = flatShapeType(geometry);
  if (shapeType == ShapeKind::null) return refuseGeometry();
  const InfoLayer* const layer = request.vector.infoLayer();
  if (layer == nullptr) {
    // Only a layer of the database shows objects.
    showMessage(QObject::tr("Um argumento inválido foi passado!") + "arg : vector");
    return ExportOutcome::refused;
  }
  const ObjectQuery query = objectQuery(request.dataBase, category, *layer);
  const RecordSetLease records = openRecords(request.dataBase, query);
  return makeExport(request, geometry, *records, query.firstAttribute)->run(shapeType);
}

}  // namespace

}  // namespace kaldex

inline namespace kaldex_v1 {

int ShapeFile::ExportObjShape(DataBase& dataBase, Vector& vector, Category& category, const char* name,
                              short geometry, short coordMode) {
  const Tracer tracer(__FILE__, __LINE__, "ShapeFile::ExportObjShape");
  const kaldex::ExportRequest request{*this, dataBase, vector, name, coordMode};
  const kaldex::ExportOutcome outcome =
      kaldex::guarded([&] { return kaldex::exportObjects(request, category, geometry); });
  return outcome == kaldex::ExportOutcome::done ? 1 : 0;
}

}  // namespace kaldex_v1
