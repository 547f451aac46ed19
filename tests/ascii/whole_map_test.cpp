#include "ascii/map_fixture.h"
#include "kaldex/model/text.h"

namespace kaldex::test {

namespace {

/// A map of classes: lines, polygons, label points, 2D points and texts, one section behind the other in one
/// file.
class ThematicMap : public MapFixture {
 protected:
  static constexpr CellMap kCells{40, 25};
  static constexpr int kClassCount = 20;
  static constexpr int kFreeLines = 30;
  static constexpr int kPoints = 500;
  static constexpr int kTexts = 200;

  void make() {
    from_ = mapLayer(THEMATICMODEL);
    Category& category = *from_->category();
    for (short i = 0; i < kClassCount; ++i) {
      GeoClass* const fresh = addClass(category, QString("Floresta nº %1").arg(i));
      fresh->visual.SetPolygonColor(i, 100, static_cast<short>(255 - i));
      fresh->visual.SetLineColor(0, i, 7);
      fresh->visual.SetPointColor(static_cast<short>(10 * i), 255, i);
    }
    ASSERT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    Vector& vector = *from_->vector(vectorLines, true);
    makeBorders(vector, kCells);
    makeFreeLines(vector, kFreeLines, category.classes.at(3)->id);
    makePolygons(vector, kCells);
    for (SPolygon* polygon = vector.FirstPolygon(); polygon != nullptr; polygon = vector.NextPolygon()) {
      if (polygon->id % 37 == 0) continue;  // nobody has classified it yet
      polygon->classId = category.classes.at(polygon->id % kClassCount)->id;
      polygon->changed = stateChanged;
      ++classified_;
      delete polygon;
    }
    for (int i = 0; i < kPoints; ++i) {
      std::vector<double> xy;
      CellMap::append(xy, 7213 * i, -1000000 - 31 * i);
      Point2d point(xy[0], xy[1]);
      point.classId = i % 9 == 0 ? 0 : category.classes.at(i % kClassCount)->id;
      ASSERT_NE(vector.Insert(point), 0);
    }
    makeTexts();
    dataBase->commit();
  }
  void makeTexts() const {
    EntitieList texts;
    TextVisual& look = from_->makeText()->visual.text;
    look.height = 3.5f;
    look.fontName = "Serif";
    for (int i = 0; i < kTexts; ++i) {
      auto text = std::make_unique<EText>();
      text->Position(Point(400000.125 + 100 * i, 7300000.5 + 3 * i));
      text->String(QString("Praça %1, nº 3").arg(i));
      text->Own(i % 2 == 0 ? 1 : 0);
      text->Angle(static_cast<float>(i));
      text->Height(static_cast<float>(25 + i));
      text->Thickness(5.0f);
      text->FontName("Mono");
      const Color color(10, 20, static_cast<short>(i));
      text->SetColor(&color);
      text->SetAlignment(1, 2);
      texts.Append(text.release());
    }
    ASSERT_NE(from_->makeText()->store(texts), 0);
  }
  QByteArray exported(InfoLayer& layer, const QString& name, short format) {
    fileName = name;
    Vector* const vector = layer.vector(vectorLines);
    const auto out = handler(&layer, format, 0, nullptr, ";");
    EXPECT_EQ(out->ExportLines(vector, 0), 1);
    EXPECT_EQ(out->ExportPolygons(vector, 0), 1);
    EXPECT_EQ(out->ExportLabelPoints(vector, layer.category(), 0), 1);
    EXPECT_EQ(out->ExportPoints(vector, layer.category(), 0), 1);
    EntitieList texts;
    EXPECT_EQ(layer.makeText()->load(texts), kTexts);
    EXPECT_EQ(out->ExportText(&texts), 1);
    EXPECT_EQ(messages.take(), "");
    return read(name);
  }
  void import(InfoLayer& layer, short format) {
    Vector* const vector = layer.vector(vectorLines, true);
    SProjection* const target = project->projection();
    const auto in = handler(&layer, 0, unitsOf(format));
    ASSERT_EQ(in->ImportLines(vector, target), 1);
    makePolygons(*vector, kCells);
    ASSERT_EQ(importLabels(*in), 1);
    ASSERT_EQ(in->Classify(vector), 1);
    EXPECT_EQ(messages.take(), kNoClasses + "\n" + classesText(kClassCount, kClassCount) + "(THEMACLASS)\n" +
                                   boundText(classified_ + kFreeLines, 0));
    ASSERT_EQ(in->ImportPoint2d(vector, target), 1);
    EXPECT_TRUE(messages.take().startsWith(classesText(0, 0, kClassCount) + "(THEMACLASS)"));
    EntitieList texts;
    layer.makeText();
    ASSERT_EQ(in->ImportText(&texts, target, nullptr), 1);
    ASSERT_NE(layer.makeText()->store(texts), 0);
    dataBase->commit();
    EXPECT_EQ(messages.take(), "");
  }
  /// "name colours" of each class.
  static QStringList classesOf(const InfoLayer& layer) {
    QStringList list;
    for (const GeoClass* const one : layer.category()->classes) {
      QString text = one->name;
      const GeneralVisual& visual = one->visual;
      for (const Color* const colour : {&visual.polygon.color, &visual.line.color, &visual.point.color}) {
        text += QString(" %1,%2,%3").arg(colour->red).arg(colour->green).arg(colour->blue);
      }
      list << text;
    }
    return list;
  }

  InfoLayer* from_ = nullptr;
  int classified_ = 0;
};

TEST_F(ThematicMap, ComesBackInEveryFormOfCoordinates) {
  make();
  const QStringList classes = classesOf(*from_);
  ASSERT_EQ(classes.size(), kClassCount);
  std::vector<double> measures;
  const QStringList polygons = polygonsOf(*from_, measures);
  ASSERT_EQ(polygons.size(), kCells.polygons());
  ASSERT_GT(*std::min_element(measures.begin(), measures.end()), 100.0);
  for (const short format : {0, 1, 2, 3}) {
    openEmpty(QString("empty%1").arg(format));
    const QByteArray first = exported(*from_, QString("first%1").arg(format), format);
    cross();
    InfoLayer* const into = mapLayer(THEMATICMODEL);
    ASSERT_NO_FATAL_FAILURE(import(*into, format));
    EXPECT_EQ(classesOf(*into), classes);
    std::vector<double> measuresBack;
    EXPECT_TRUE(polygonsOf(*into, measuresBack) == polygons) << format;
    expectNear(measures, measuresBack, format == 0 ? 0.0 : 1e-4);
    EXPECT_TRUE(exported(*into, QString("second%1").arg(format), format) == first) << format;
    EXPECT_EQ(dataBase->check(), QStringList());
    cross();
  }
}

/// A map of objects with attributes: lines, polygons, label points, 2D points and a table.
class CadastralMap : public MapFixture {
 protected:
  static constexpr CellMap kCells{100, 100};
  static constexpr int kFreeLines = 50;
  static constexpr int kPoints = 200;
  static constexpr int kBare = 10;  ///< objects that stand in the table alone

  void make() {
    from_ = mapLayer(CADASTRALMODEL);
    Vector& vector = *from_->vector(vectorLines, true);
    makeBorders(vector, kCells);
    makeFreeLines(vector, kFreeLines, 0);
    makePolygons(vector, kCells);
    lots_ = category(OBJECTMODEL, "Lotes");
    makeTable();
    // Lines before polygons before points: the order in which label points are bound.
    for (int i = 0; i < kFreeLines; ++i) {
      const std::unique_ptr<Line> line(vector.GetLine(kCells.borders() + kCells.ponds() + 1 + i));
      Anchor anchor;
      ASSERT_EQ(anchor.InsertLine(nullptr, *line), 1);
      place(anchor);
    }
    for (int id = 1; id <= kCells.polygons(); ++id) {
      if (id % 100 == 0) continue;  // nobody's
      Anchor anchor;
      claim(vector, anchor, id);
      if (id % 30 == 1) claim(vector, anchor, ++id);
      place(anchor);
    }
    for (int i = 0; i < kPoints; ++i) {
      std::vector<double> xy;
      CellMap::append(xy, 7213 * i, -1000000);
      Point2d point(xy[0], xy[1]);
      ASSERT_NE(vector.Insert(point), 0);
      if (i % 10 == 0) continue;  // a place without object
      Anchor anchor;
      ASSERT_EQ(anchor.InsertPoint(point), 1);
      place(anchor);
    }
    for (int i = 0; i < kBare; ++i) makeObject();
    dataBase->commit();
  }
  void makeTable() {
    const SFieldList fields = fieldList({{"MORADORES", fieldInteger, 10, 0},
                                         {"VALOR", fieldReal, 17, 8},
                                         {"VISTORIA", fieldDate, 8, 0},
                                         {"RUA", fieldText, 40, 0},
                                         {"ZONA", fieldText, 5, 0},
                                         {"OBS", fieldText, 70, 0}});
    ASSERT_EQ(dataBase->createAttributeTable(*lots_, fields), 1);
  }
  static void claim(Vector& vector, Anchor& anchor, int id) {
    const std::unique_ptr<SPolygon> polygon(vector.GetPolygon(id));
    ASSERT_NE(polygon, nullptr);
    ASSERT_EQ(anchor.InsertPolygon(*polygon, nullptr), 1);
  }
  KaldexObject makeObject() {
    const int i = ++objects_;
    const QString name = i % 3 == 0 ? QString("Lote %1 - João").arg(i) : QString("Lote %1").arg(i);
    return newObject(lots_, QString("L-%1").arg(i, 5, 10, QLatin1Char('0')), name,
                     {QString::number(i % 12), QString::number(i * 12.25), QString::number(20010101 + i % 28),
                      QString("Rua %1, nº %2").arg(i % 40).arg(i), i % 2 == 0 ? "ZR1" : "",
                      i % 5 == 0 ? "São João d'El Rei; não" : "x"});
  }
  void place(Anchor& anchor) {
    link(*from_, anchor, makeObject());
    ++anchors_;
  }
  QByteArray exported(InfoLayer& layer, const QString& name) {
    fileName = name;
    Vector* const vector = layer.vector(vectorLines);
    const auto out = handler(&layer, 0, 0, nullptr, "|");
    EXPECT_EQ(out->ExportLines(vector, 0), 1);
    EXPECT_EQ(out->ExportPolygons(vector, 0), 1);
    EXPECT_EQ(out->ExportTable(dataBase->categoryList().Select("Lotes")), 1);
    EXPECT_EQ(out->ExportLabelPoints(vector, layer.category(), 0), 1);
    EXPECT_EQ(out->ExportPoints(vector, layer.category(), 0), 1);
    EXPECT_EQ(messages.take(), "");
    return read(name);
  }
  void import(InfoLayer& layer) {
    Vector* const vector = layer.vector(vectorLines, true);
    SProjection* const target = project->projection();
    const auto in = handler(&layer);
    ASSERT_EQ(in->ImportLines(vector, target), 1);
    makePolygons(*vector, kCells);
    Category* const lots = in->InfoTable(1);
    ASSERT_NE(lots, nullptr);
    ASSERT_EQ(in->ImportAttributes(lots), 1);
    EXPECT_EQ(messages.take(),
              "Categoria objeto inexistente Cria e continua ?Lotes\nDeseja inserir este(s) "
              "atributo(s)?");
    ASSERT_EQ(importLabels(*in), 1);
    ASSERT_EQ(in->ClassifyObj(vector), 1);
    const int pairs = (kCells.polygons() + 29) / 30;
    EXPECT_EQ(messages.take(), boundText(anchors_ - (kPoints - kPoints / 10) + pairs, 0));
    ASSERT_EQ(in->ImportPoint2d(vector, target), 1);
    EXPECT_EQ(messages.take().section('=', 0, 1), boundText(kPoints - kPoints / 10, 0).section('=', 0, 1));
    dataBase->commit();
  }
  /// "label/name: values" of each object, and the names of the columns.
  QStringList objectsOf() {
    Category& lots = *dataBase->categoryList().Select("Lotes");
    QStringList list;
    for (const KaldexObject& one : HandlerFixture::objectsOf(lots)) {
      list << one.label + "/" + one.name + ":" + valuesOf(lots, one);
    }
    SFieldList columns;
    dataBase->loadTableFields(columns, lots.attributeTable);
    for (const SField* const column : columns) list << column->name;
    return list;
  }
  /// Area and perimeter of each anchor, in the order of the anchors.
  std::vector<double> measuresOf(InfoLayer& layer) {
    std::vector<double> measures;
    const auto rows = dataBase->selectRecords(layer.associationTable(), "*", "", "", "");
    for (; !rows->atEnd(); rows->next()) {
      for (const int column : {4, 5}) measures.push_back(rows->text(column).toDouble());
    }
    return measures;
  }

  InfoLayer* from_ = nullptr;
  Category* lots_ = nullptr;
  int objects_ = 0;
  int anchors_ = 0;
};

TEST_F(CadastralMap, ComesBackWithObjectsAndAttributes) {
  ASSERT_NO_FATAL_FAILURE(make());
  openEmpty("empty");
  const QByteArray first = exported(*from_, "first");
  const QStringList objects = objectsOf();
  const std::vector<double> areas = measuresOf(*from_);
  ASSERT_EQ(objects.size(), anchors_ + kBare + 7);
  cross();
  InfoLayer* const into = mapLayer(CADASTRALMODEL);
  ASSERT_NO_FATAL_FAILURE(import(*into));
  EXPECT_TRUE(objectsOf() == objects);
  expectNear(areas, measuresOf(*into), 1e-5);
  EXPECT_EQ(into->vector(vectorLines)->anchorCount(), anchors_);
  EXPECT_TRUE(exported(*into, "second") == first);
  EXPECT_EQ(dataBase->check(), QStringList());
}

/// A network with objects on its lines and nodes, and its turns.
class NetworkMap : public MapFixture {
 protected:
  static constexpr int kStreets = 200;

  static std::vector<double> street(int i) {
    std::vector<double> xy;
    CellMap::append(xy, 100000 * i, 0);
    CellMap::append(xy, 100000 * i + 50000, 13371);
    CellMap::append(xy, 100000 * (i + 1), 0);
    return xy;
  }
  QByteArray exported(InfoLayer& layer, const QString& name) {
    fileName = name;
    Vector* const vector = layer.vector(vectorLines);
    const auto out = handler(&layer, 1, 0, nullptr, ";");
    EXPECT_EQ(out->ExportLines(vector, 0), 1);
    EXPECT_EQ(out->ExportLabelPoints(vector, layer.category(), 0), 1);
    out->DataFile(name + ".turns");
    EXPECT_EQ(out->ExportTurns(vector), 1);
    EXPECT_EQ(messages.take(), "");
    return read(name) + read(name + ".turns");
  }
  static RestrictionList turnsOf(const InfoLayer& layer) {
    return RestrictionList((layer.directory + "/" + layer.fileName + ".turn").toStdString());
  }
};

TEST_F(NetworkMap, ComesBackWithItsTurns) {
  InfoLayer* const from = mapLayer(NETWORKMODEL);
  Vector& vector = *from->vector(vectorLines, true);
  Category* const streets = category(OBJECTMODEL, "Ruas");
  RestrictionList turns = turnsOf(*from);
  for (int i = 0; i < kStreets; ++i) {
    Line* const line = insertLine(vector, street(i));
    line->impedancePositive = 0.5f * static_cast<float>(i);
    line->impedanceNegative = -1.0f;
    line->demand = 7.25f;
    line->state = stateChanged;
    Anchor anchor;
    ASSERT_EQ(anchor.InsertLine(nullptr, *line), 1);
    delete line;
    if (i % 5 == 0) {
      Point2d node(street(i)[0], street(i)[1]);
      ASSERT_NE(vector.Insert(node), 0);
      ASSERT_EQ(anchor.InsertPoint(node), 1);
    }
    link(*from, anchor, newObject(streets, QString("R%1").arg(i), QString("Rua %1").arg(i)));
    if (i > 0) turns.Append(new Restriction(i + 1, i));
  }
  ASSERT_EQ(turns.Save(), 1);
  dataBase->commit();
  openEmpty("empty");
  const QByteArray first = exported(*from, "first");
  EXPECT_EQ(first.count("; NODES\n"), kStreets / 5);
  cross();
  InfoLayer* const into = mapLayer(NETWORKMODEL);
  Vector* const back = into->vector(vectorLines, true);
  const auto in = handler(into);
  in->DataFile("first");
  ASSERT_EQ(in->ImportLines(back, project->projection()), 1);
  ASSERT_EQ(importLabels(*in), 1);
  ASSERT_EQ(in->ClassifyObj(back), 1);
  EXPECT_TRUE(messages.take().endsWith(boundText(kStreets + kStreets / 5, 0)));
  in->DataFile("first.turns");
  ASSERT_EQ(in->ImportTurns(back), 1);
  EXPECT_EQ(turnsOf(*into).Size(), kStreets - 1);
  dataBase->commit();
  EXPECT_TRUE(exported(*into, "second") == first);
}

/// Samples, contours with masters and break lines.
class NumericMap : public MapFixture {
 protected:
  static constexpr int kSamples = 100000;
  static constexpr int kLines = 300;

  QByteArray exported(InfoLayer& layer, const QString& name, short format) {
    fileName = name + QString::number(format);
    EXPECT_EQ(handler(&layer, format)->ExportSample(layer.vector(vectorSamples)), 1);
    EXPECT_EQ(handler(&layer, format)->ExportContourout(layer.vector(vectorContours)), 1);
    EXPECT_EQ(messages.take(), "");
    return read(fileName);
  }
  static std::vector<double> heightsOf(Vector& vector) {
    std::vector<double> heights;
    for (std::unique_ptr<Point3d> point(vector.FirstPoint3d()); point != nullptr;
         point.reset(vector.NextPoint3d())) {
      heights.push_back(static_cast<double>(point->z));
    }
    return heights;
  }
  /// Type, and height of those that have one, of each line; in the order of both, since break lines come
  /// from a section of their own.
  static QStringList linesOf(Vector& vector) {
    QStringList list;
    for (Line* line = vector.FirstLine(); line != nullptr; line = vector.NextLine()) {
      list << QString("%1 %2").arg(QChar(line->Type())).arg(line->Type() == lineBreak ? 0.0f : line->height);
    }
    list.sort();
    return list;
  }
};

TEST_F(NumericMap, ComesBackInEveryFormOfCoordinates) {
  InfoLayer* const from = mapLayer(DIGITALMODEL);
  Vector& samples = *from->vector(vectorSamples, true);
  for (int i = 0; i < kSamples; ++i) {
    std::vector<double> xy;
    CellMap::append(xy, i % 1000 * 20003LL, i / 1000 * 20011LL);
    Point3d point(xy[0], xy[1], 0.125f * static_cast<float>(i % 9973));
    ASSERT_NE(samples.Insert(point, 0), 0);
  }
  for (const short kind : {short(vectorSamples), short(vectorContours)}) {
    for (int i = 0; i < kLines; ++i) {
      const char type = i % 5 == 0 ? lineMaster : kind == vectorSamples && i % 7 == 0 ? lineBreak : linePlain;
      std::vector<double> xy;
      for (const long long step : {0, 1, 2}) {
        CellMap::append(xy, 30011 * i + 50000 * step, 3000 * step * step);
      }
      delete insertLine(*from->vector(kind, true), xy, type, 0, 10.25f * static_cast<float>(i));
    }
  }
  dataBase->commit();
  for (const short format : {0, 1, 2, 3}) {
    openEmpty(QString("empty%1").arg(format));
    const QByteArray first = exported(*from, "first", format);
    cross();
    InfoLayer* const into = mapLayer(DIGITALMODEL);
    Vector* const back = into->vector(vectorSamples, true);
    SProjection* const target = project->projection();
    const auto in = handler(into, 0, unitsOf(format));
    ASSERT_EQ(in->ImportSamples(back, target), 1);
    ASSERT_EQ(in->ImportLines(back, target), 1);
    ASSERT_EQ(in->ImportContourout(into->vector(vectorContours, true), target), 1);
    EXPECT_EQ(messages.take(), "");
    dataBase->commit();
    EXPECT_TRUE(heightsOf(*back) == heightsOf(samples)) << format;
    EXPECT_TRUE(linesOf(*back) == linesOf(samples)) << format;
    EXPECT_TRUE(linesOf(*into->vector(vectorContours)) == linesOf(*from->vector(vectorContours))) << format;
    EXPECT_TRUE(exported(*into, "second", format) == first) << format;
    EXPECT_EQ(dataBase->check(), QStringList());
    cross();
  }
}

}  // namespace

}  // namespace kaldex::test
