#include "shapefile/export_fixture.h"

namespace kaldex::test {
namespace {

class ShapeObjectsTest : public ExportFixture {
 protected:
  ShapeObjectsTest() {
    shapes = vector(CADASTRALMODEL);
    objects = category(OBJECTMODEL, "Lotes");
  }

  /// An attribute table of one column of each type, the last with a name that is too long.
  void makeAttributeTable() {
    ASSERT_EQ(dataBase->createAttributeTable(*objects, fieldList({{"VALOR", fieldReal, 20, 4},
                                                                  {"ANO", fieldInteger, 10, 0},
                                                                  {"DATA", fieldDate, 8, 0},
                                                                  {"PROPRIETARIO", fieldText, 12, 0}})),
              1);
  }

  KaldexObject object(const QString& label, const QStringList& values = {}) {
    return newObject(objects, label, "nome " + label, values);
  }
  void link(Anchor& anchor, const KaldexObject& to) { HandlerFixture::link(*layer_, anchor, to); }
  void linkLines(const KaldexObject& to, const std::vector<Line*>& lines) {
    Anchor anchor;
    for (Line* line : lines) anchor.InsertLine(nullptr, *line);
    link(anchor, to);
  }

  int exportObjects(short geometry) {
    return file.ExportObjShape(*dataBase, *shapes, *objects, base().c_str(), geometry, 0);
  }

  Vector* shapes;
  Category* objects;
};

TEST_F(ShapeObjectsTest, ObjectsOfLinesComeFirstAndLinesOfNoObjectAfterThem) {
  makeAttributeTable();
  Line* a = insertLine(*shapes, {0, 0, 3, 4});
  Line* free = insertLine(*shapes, {7, 7, 8, 7});
  Line* b = insertLine(*shapes, {10, 10, 10, 12, 10, 20});
  linkLines(object("L1", {"12.5", "1998", "20010312", "Ana"}), {a, b});
  Anchor gone;
  gone.lines = {4711};
  gone.box = Box(1, 1, 2, 2);
  link(gone, object("L2"));
  Anchor empty;
  link(empty, object("L3"));
  ASSERT_GT(free->id, 0);
  ASSERT_EQ(exportObjects(2), 1) << messages.take().toStdString();
  expectShapes({3,
                boxValues_,
                {arcContent(3, {0, 0, 10, 20}, {0, 2}, {0, 0, 3, 4, 10, 10, 10, 12, 10, 20}),
                 arcContent(3, {1, 1, 2, 2}, {}, {}), arcContent(3, {7, 7, 8, 7}, {0}, {7, 7, 8, 7})}});
  // The length is that of the object's last line.
  EXPECT_EQ(tableText(),
            "KDXPERIMET N(20,4)|KDXROTULO C(32,0)|KDXNOME C(32,0)|VALOR N(20,4)|ANO N(10,0)|DATA D(8,0)|"
            "PROPRIETAR C(12,0)\n"
            "10.0000|L1|nome L1|12.5000|1998|20010312|Ana\n"
            "0.0000|L2|nome L2|0.0000|0||\n"
            "0.0000|||0.0000|0||");
  EXPECT_EQ(report.read["objects"], 3);
  EXPECT_EQ(report.written["objects"], 2);
  EXPECT_EQ(report.leftOut["no_geometry"], 1);
  EXPECT_EQ(report.renamed.size(), 2);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(ShapeObjectsTest, ObjectsOfPolygonsTakeAllTheirRings) {
  SPolygon* father = insertPolygon(*shapes, square(0, 0, 10));
  SPolygon* son = insertPolygon(*shapes, square(1, 1, 2, true));
  SPolygon* apart = insertPolygon(*shapes, square(20, 0, 5, true));
  SPolygon* bare = insertPolygon(*shapes, square(30, 0, 5));
  SPolygon* free = insertPolygon(*shapes, square(40, 0, 5));
  father->AppendSon(son, 1);
  Anchor anchor;
  anchor.area = 123;
  anchor.perimeter = 45;
  anchor.InsertPolygon(*father, nullptr);
  anchor.InsertPolygon(*apart, nullptr);
  link(anchor, object("L1"));
  for (SPolygon* polygon : {father, son, apart, free}) delete polygon;
  // A polygon whose outline is gone takes a record number, and no record.
  dataBase->commit();
  Line none;
  bare->SetPoints(&none);

  ASSERT_EQ(exportObjects(3), 1) << messages.take().toStdString();
  std::vector<double> rings = square(0, 0, 10, true);
  for (const auto& ring : {square(1, 1, 2), square(20, 0, 5, true)})
    rings.insert(rings.end(), ring.begin(), ring.end());
  expectShapes({5,
                boxValues_,
                {arcContent(5, {0, 0, 25, 10}, {0, 5, 10}, rings), QByteArray(),
                 arcContent(5, {40, 0, 45, 5}, {0}, square(40, 0, 5, true))}});
  EXPECT_EQ(tableText(),
            "KDXAREA N(20,4)|KDXPERIMET N(20,4)|KDXROTULO C(32,0)|KDXNOME C(32,0)\n"
            "123.0000|45.0000|L1|nome L1\n0.0000|0.0000||");
}

TEST_F(ShapeObjectsTest, AnObjectOfSeveralPointsHasARowForEach) {
  makeAttributeTable();
  std::vector<Point2d> points;
  for (double x : {1, 2, 3, 4}) {
    points.emplace_back(x, 5);
    shapes->Insert(points.back());
  }
  Anchor anchor;
  anchor.InsertPoint(points[0]);
  anchor.InsertPoint(points[2]);
  anchor.points.push_back(4711);
  link(anchor, object("L1", {"-1", "-7", "", ""}));
  ASSERT_EQ(exportObjects(1), 1) << messages.take().toStdString();
  std::vector<QByteArray> contents;
  for (double x : {1, 3, 2, 4}) contents.push_back(ByteMaker().little({1}).reals({x, 5}));
  expectShapes({1, boxValues_, contents});
  EXPECT_EQ(tableText().section('\n', 1),
            "L1|nome L1|-1.0000|-7||\nL1|nome L1|-1.0000|-7||\n||0.0000|0||\n||0.0000|0||");
}

TEST_F(ShapeObjectsTest, ValuesThatDoNotFitAreTold) {
  makeAttributeTable();
  Line* line = insertLine(*shapes, {0, 0, 3, 4});
  linkLines(object(QString(33, 'r'),
                   {"1e300", "-1234567890", "12/03/2001", QString::fromUtf8("João Жучков da Silva")}),
            {line});
  linkLines(object("L2", {"123456789012345.67", "-123456789", "", ""}), {line});
  ASSERT_EQ(exportObjects(2), 1) << messages.take().toStdString();
  EXPECT_EQ(tableText().section('\n', 1), "5.0000|" + QString(32, 'r') + "|nome " + QString(27, 'r') +
                                              QString::fromUtf8("|||12/03/20|João ??????\n") +
                                              "5.0000|L2|nome L2|123456789012345.6719|-123456789||");
  // Label, name, real, integer, date and text of the first object; its text twice, for its characters too.
  EXPECT_EQ(report.leftOut["bad_value"], 6);
  EXPECT_EQ(report.notes.size(), 7);
  EXPECT_EQ(report.notes.filter(QString(33, 'r')).size(), 7);
}

TEST_F(ShapeObjectsTest, ATroubledDatabaseIsTold) {
  // Nothing was ever linked in the layer: its association table doesn't exist.
  EXPECT_EQ(exportObjects(2), 0);
  const QString told = messages.take();
  EXPECT_TRUE(told.startsWith("Banco de Dados com problemas!\n(")) << told.toStdString();
  EXPECT_TRUE(told.endsWith(")"));
  EXPECT_FALSE(QFile::exists(path("e.shp")));

  // A vector outside the database shows no objects.
  Vector alone;
  ASSERT_EQ(alone.Init(project->projection(), box_, vectorLines, CADASTRALMODEL, folder(), "alone.gpkg"), 1);
  EXPECT_EQ(file.ExportObjShape(*dataBase, alone, *objects, base().c_str(), 2, 0), 0);
  EXPECT_EQ(messages.take(), QString::fromUtf8("Um argumento inválido foi passado!arg : vector"));
}

}  // namespace
}  // namespace kaldex::test
