#ifndef KALDEX_TESTS_SHAPEFILE_IMPORT_FIXTURE_H
#define KALDEX_TESTS_SHAPEFILE_IMPORT_FIXTURE_H

#include <shapefil.h>

#include <string>

#include "kaldex/shapeie.h"
#include "shapefile/byte_maker.h"
#include "support/dbf_maker.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

using Ring = std::vector<double>;  ///< x, y pairs

/// A closed square; clockwise, as outer rings are, unless told.
inline Ring squareRing(double x, double y, double side, bool hole = false) {
  return square(x, y, side, !hole);
}

/// A record: the type -1 stands for the file's, 0 for a null shape.
struct TestShape {
  std::vector<Ring> parts;
  std::vector<double> z = {};
  int type = -1;
};

/// Imports shapefiles made with the library's own writer.
class ImportFixture : public HandlerFixture {
 protected:
  const Box box_{0, 0, 1000, 2000};

  void writeShapes(int type, const std::vector<TestShape>& shapes, const QString& name = "e") {
    const SHPHandle file = SHPCreate(QFile::encodeName(path(name)).constData(), type);
    ASSERT_NE(file, nullptr);
    for (const TestShape& shape : shapes) {
      std::vector<double> x, y;
      std::vector<int> starts;
      for (const Ring& part : shape.parts) {
        starts.push_back(static_cast<int>(x.size()));
        for (std::size_t i = 0; i < part.size(); i += 2) {
          x.push_back(part[i]);
          y.push_back(part[i + 1]);
        }
      }
      const bool parted = type % 10 == 3 || type % 10 == 5;
      SHPObject* object = SHPCreateObject(shape.type < 0 ? type : shape.type, -1,
                                          parted ? static_cast<int>(starts.size()) : 0, starts.data(),
                                          nullptr, static_cast<int>(x.size()), x.data(), y.data(),
                                          shape.z.empty() ? nullptr : shape.z.data(), nullptr);
      SHPWriteObject(file, -1, object);
      SHPDestroyObject(object);
    }
    SHPClose(file);
  }

  /// A handler at e.shp, with a layer of that model (one per model).
  IEShp& handler(short model, int units = 0, SProjection* source = nullptr) {
    layer_ = dataBase->findLayer(*project, QString("camada %1").arg(model));
    if (layer_ == nullptr) layer_ = layer(model, QString("camada %1").arg(model), box_);
    handler_ = open<IEShp>("e.shp", layer_, 0, units, source);
    return *handler_;
  }
  int importLines(short model = THEMATICMODEL, int units = 0, SProjection* source = nullptr) {
    IEShp& importer = handler(model, units, source);
    report = JobReport();
    return importer.ImportLines(vector(), project->projection());
  }
  int importSamples(short kind = vectorSamples) {
    IEShp& importer = handler(DIGITALMODEL);
    report = JobReport();
    return importer.ImportSamples(vector(kind), project->projection());
  }
  Vector* vector(short kind = vectorLines) { return layer_->vector(kind, true); }

  /// Each line as "left/right: points", in order.
  QString lines(short kind = vectorLines) {
    QStringList told;
    for (Line* line = vector(kind)->FirstLine(); line != nullptr; line = vector(kind)->NextLine()) {
      told << QString("%1/%2:%3").arg(line->leftPolygon).arg(line->rightPolygon).arg(line->Size());
      delete line;
    }
    return told.join(' ');
  }
  /// Each polygon as "id<parent area", with its sons in brackets.
  QString polygons() {
    QStringList told;
    for (SPolygon* polygon = vector()->FirstPolygon(); polygon != nullptr;
         polygon = vector()->NextPolygon()) {
      QString one = QString("%1<%2 %3").arg(polygon->id).arg(polygon->parentId).arg(polygon->area);
      for (int son : polygon->sonIds()) one += QString("[%1]").arg(son);
      told << one;
      delete polygon;
    }
    return told.join(", ");
  }
  QString points() {
    QStringList told;
    for (Point2d* point = vector()->FirstPoint2d(); point != nullptr; point = vector()->NextPoint2d()) {
      told << QString("%1,%2").arg(point->x).arg(point->y);
    }
    return told.join(' ');
  }
  Category& objectCategory() { return *dataBase->categoryList().Select(QString("e_O")); }
  QString columns() { return columnsOf(objectCategory().attributeTable).mid(1).join(' '); }
  /// Each object as "name anchorPieces: values".
  QString objects() {
    QStringList told;
    for (const KaldexObject& one : objectsOf(objectCategory())) {
      const QString values = valuesOf(objectCategory(), one);
      told << QString("%1 %2: %3").arg(one.name.toInt()).arg(piecesOf(one.id)).arg(values);
    }
    return told.join('\n');
  }
  int piecesOf(int objectId) {
    const int id = dataBase->anchorOfObject(objectId, *layer_);
    const std::unique_ptr<Anchor> anchor(id == 0 ? nullptr : vector()->anchorSet()->Get(id));
    if (anchor == nullptr) return 0;
    return static_cast<int>(anchor->points.size() + anchor->lines.size() + anchor->polygons.size());
  }
  /// The report's reasons as "reason=count".
  QString leftOut() const {
    QStringList told;
    for (auto one = report.leftOut.begin(); one != report.leftOut.end(); ++one) {
      told << QString("%1=%2").arg(one.key()).arg(one.value());
    }
    return told.join(' ');
  }

  InfoLayer* layer_ = nullptr;
  std::unique_ptr<IEShp> handler_;
};

}  // namespace kaldex::test

#endif
