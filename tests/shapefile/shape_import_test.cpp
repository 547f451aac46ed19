#include "kaldex/model/projection_text.h"
#include "shapefile/import_fixture.h"

namespace kaldex::test {
namespace {

constexpr char kClean[] = "Limpa os polígonos internos duplicados ?";

using ShapeImportTest = ImportFixture;

TEST_F(ShapeImportTest, WhatIsMissingIsTold) {
  IEShp& importer = handler(THEMATICMODEL);
  EXPECT_EQ(importer.ImportLines(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Um argumento inválido foi passado!arg : vec"));
  EXPECT_EQ(importer.ImportSamples(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Um argumento inválido foi passado!arg : vec"));
  EXPECT_EQ(importer.ImportLines(vector(vectorSamples), nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Erro associado com uma restrição lógica!No LINES in Vector"));
  EXPECT_EQ(importer.ImportLines(vector(), nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Erro Open "));
  EXPECT_EQ(importer.ImportSamples(vector(vectorSamples), nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Erro Open "));
  importer.DataFile("");
  messages.take();
  EXPECT_EQ(importer.ImportLines(vector(), nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Defina o nome do arquivo!"));
  importer.DataHome("");
  EXPECT_EQ(importer.ImportLines(vector(), nullptr), 0);
  EXPECT_EQ(messages.take(), QString("Defina o diretório!"));
}

TEST_F(ShapeImportTest, TypesThatCanNotBeTaken) {
  for (int type : {SHPT_MULTIPOINT, SHPT_MULTIPATCH}) {
    writeShapes(type, {});
    EXPECT_EQ(importLines(), 0);
    const QString code = QString("%1").arg(type, 2);
    EXPECT_EQ(messages.take(), "não disponível SHAPE TYPE VALUE " + code + "\nValor inválido!");
    EXPECT_EQ(importSamples(), 0);
    EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!SHAPE TYPE VALUE " + code + "\nValor inválido!");
  }
  for (int type : {SHPT_POINT, SHPT_ARC, SHPT_POLYGON}) {
    writeShapes(type, {});
    EXPECT_EQ(importSamples(), 0);
    EXPECT_EQ(messages.take(),
              QString("SHAPE TYPE VALUE %1.Utilize interface Conversâo ASCII-KALDEX para definir o "
                      "atributo COTA e importe KDX\nValor inválido!")
                  .arg(type, 2));
  }
}

TEST_F(ShapeImportTest, LinesLoseShortAndEmptyParts) {
  writeShapes(SHPT_ARC, {{{{10, 10, 30, 10, 30, 50}, {7, 7}, {5, 5, 5, 5}, {1, 1, 2, 2}}},
                         {{}, {}, SHPT_NULL},
                         {{{-5000, 0, 5000, 0}}}});
  ASSERT_EQ(importLines(), 1);
  EXPECT_EQ(messages.take(), QString());
  EXPECT_EQ(lines(), QString("0/0:3 0/0:2 0/0:2")) << "no box test";
  EXPECT_EQ(report.read["lines"], 5);
  EXPECT_EQ(report.written["lines"], 3);
  EXPECT_EQ(leftOut(), QString("degenerate=1 few_points=1 null_shape=1"));
  Line* first = vector()->FirstLine();
  EXPECT_EQ(first->Type(), '3');
  EXPECT_EQ(first->labelPoint, Point(20, 10));
  EXPECT_EQ(first->classId, 0);
}

TEST_F(ShapeImportTest, PointsOutsideTheBox) {
  const QString none =
      "TODOS os dados FORA do projeto, NENHUM dado importado - VERIFICAR BOX ou PROJEçâO ou Unidade "
      "importação "
      "(m/km/graus/...";
  layer(THEMATICMODEL, "camada 4", Box(100, 100, 200, 200));
  writeShapes(SHPT_POINTZ, {{{{0, 0}}, {5}}, {{{100, 200}}, {5}}, {{{99, 150}}, {5}}, {{{-1, 0}}, {5}}});
  ASSERT_EQ(importLines(), 1);
  EXPECT_EQ(messages.take(),
            QString("Existem dados fora da área do projeto que não foram importados, 2 pontos ignorados "));
  EXPECT_EQ(points(), QString("100,200"));
  EXPECT_EQ(leftOut(), QString("null_shape=1 outside_box=2"));

  writeShapes(SHPT_POINT, {{{{0, 0}}}});
  ASSERT_EQ(importLines(), 1);
  EXPECT_EQ(messages.take(), QString()) << "null coordinates alone are not worth a word";
  writeShapes(SHPT_POINT, {{{{0, 0}}}, {{{150, 150}}}});
  ASSERT_EQ(importLines(THEMATICMODEL, 1), 1) << "kilometres";
  EXPECT_EQ(messages.take(), none);
  EXPECT_EQ(report.written["points"], 0);
}

TEST_F(ShapeImportTest, UnitsAndProjections) {
  layer(THEMATICMODEL, "camada 4", Box(0, 0, 1e6, 1e7));
  const auto geographic = latLong();
  const double degree = Math_Deg_To_Rad(1.0);
  writeShapes(SHPT_POINT, {{{{-44.5, -22.5}}}});
  ASSERT_EQ(importLines(THEMATICMODEL, 4, geographic.get()), 1);
  Point expected(-44.5 * degree, -22.5 * degree);
  const DestinationScope scope(geographic.get(), project->projection());
  geographic->ChangeLL(expected.x, expected.y);
  project->projection()->geographicToPlane(expected);
  const Point2d* point = vector()->FirstPoint2d();
  ASSERT_NE(point, nullptr);
  EXPECT_NEAR(point->x, expected.x, 1e-6);
  EXPECT_NEAR(point->y, expected.y, 1e-6);
}

// Answer No: each record by itself, the direction of a ring alone decides.
TEST_F(ShapeImportTest, NestedPolygons) {
  struct Case {
    const char* what;
    std::vector<Ring> rings;
    const char* polygons;
    const char* lines;
  };
  const Ring open = {0, 0, 0, 10, 10, 10, 10, 0};
  const Ring a = squareRing(0, 0, 10), b = squareRing(50, 0, 10), turned = squareRing(0, 0, 10, true);
  const Ring holeOfA = squareRing(2, 2, 4, true), holeOfB = squareRing(52, 2, 4, true);
  const Ring far = squareRing(80, 80, 4, true), three = {0, 0, 0, 9, 9, 9};
  const std::vector<Case> cases = {
      {"a lone ring is outer in any direction", {turned}, "1<0 100", "0/1:5"},
      {"hole", {a, holeOfA}, "1<0 84[2], 2<1 16", "0/1:5 2/1:5"},
      {"hole in the second of two", {a, b, holeOfB}, "1<0 100, 2<0 84[3], 3<2 16", "0/1:5 0/2:5 3/2:5"},
      {"hole in the first of two", {a, b, holeOfA}, "1<0 84[3], 2<0 100, 3<1 16", "0/1:5 0/2:5 3/1:5"},
      {"a hole far from its only outer ring", {a, far}, "1<0 84[2], 2<1 16", "0/1:5 2/1:5"},
      {"a hole in none of two", {a, b, far}, "1<0 100, 2<0 100, 3<0 16", "0/1:5 0/2:5 3/0:5"},
      {"holes alone", {turned, holeOfA}, "1<0 100, 2<0 16", "1/0:5 2/0:5"},
      {"a ring of three points", {three, a}, "1<0 100", "0/1:5"},
      {"a ring that does not close stays a line", {open, squareRing(20, 0, 10)}, "1<0 100", "0/0:4 0/1:5"},
  };
  messages.answer(kClean, false);
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    const QString name = QString("caso %1").arg(&one - cases.data());
    writeShapes(SHPT_POLYGON, {{one.rings}});
    IEShp& importer = handler(THEMATICMODEL);
    layer_ = layer(THEMATICMODEL, name, box_);
    ASSERT_EQ(importer.ImportLines(vector(), project->projection()), 1);
    EXPECT_EQ(polygons(), QString(one.polygons));
    EXPECT_EQ(lines(), QString(one.lines));
    EXPECT_EQ(messages.take(), QString(kClean));
  }
}

TEST_F(ShapeImportTest, OuterPolygonsGetALabelPointOutsideTheirHoles) {
  messages.answer(kClean, false);
  writeShapes(SHPT_POLYGON, {{{squareRing(0, 0, 10), squareRing(1, 1, 8, true)}}});
  ASSERT_EQ(importLines(), 1);
  SPolygon* outer = vector()->FirstPolygon();
  const Point label = outer->labelPoint;
  EXPECT_EQ(outer->Inside(label), 2);
  EXPECT_FALSE(Box(1, 1, 9, 9).Contains(label));
  EXPECT_NEAR(outer->perimeter, 40, 1e-9);
}

// Answer Yes: holes go to the last outer ring of their record, and a polygon of another record fills a hole.
TEST_F(ShapeImportTest, CleanedPolygons) {
  struct Case {
    const char* what;
    std::vector<std::vector<Ring>> records;
    const char* polygonsAndLines;
    int duplicates;
    int holes;
  };
  const Ring donut = squareRing(0, 0, 10), hole = squareRing(2, 2, 4, true), island = squareRing(2, 2, 4);
  const Ring islandTurned = {6, 6, 6, 2, 2, 2, 2, 6, 6, 6}, apart = squareRing(50, 0, 10);
  const Ring small = squareRing(7, 7, 2, true), turned = squareRing(0, 0, 10, true);
  const Ring flat = {0, 0, 5, 5, 0, 0, 0, 0};
  const std::vector<Case> cases = {
      {"hole", {{donut, hole}}, "1<0 84[2], 2<1 16; 1/-1:5 2/1:5", 0, 1},
      {"last takes the first's",
       {{donut, apart, hole}},
       "1<0 100, 2<0 84[3], 3<2 16; 1/-1:5 2/-1:5 3/2:5",
       0,
       1},
      {"an island before its lake", {{island}, {donut, hole}}, "1<2 16, 2<0 84[1]; 1/2:5 2/-1:5", 1, 0},
      {"an island behind, turned", {{donut, hole}, {islandTurned}}, "1<0 84[2], 2<1 16; 1/-1:5 2/1:5", 1, 0},
      {"one of two is filled",
       {{donut, hole, small}, {island}},
       "1<0 80[2][3], 2<1 16, 3<1 4; 1/-1:5 2/1:5 3/1:5",
       1,
       1},
      {"twice",
       {{donut, hole}, {donut, hole}},
       "1<0 84[3], 2<0 84[4], 3<1 16, 4<2 16; 1/-1:5 2/-1:5 3/1:5 4/2:5",
       0,
       2},
      {"a hole equal to its outer ring", {{donut, turned}}, "1<0 0[2], 2<1 100; 1/-1:5 2/1:5", 0, 1},
      {"a ring without area", {{donut, flat}}, "1<0 100; 1/-1:5", 0, 0},
      {"holes alone", {{turned, hole}}, "1<0 100, 2<0 16; 1/0:5 2/0:5", 0, 0},
      {"a lone ring is outer in any direction", {{hole}}, "1<0 16; 1/-1:5", 0, 0},
  };
  messages.answer(kClean, true);
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    std::vector<TestShape> shapes;
    for (const std::vector<Ring>& record : one.records) shapes.push_back({record});
    writeShapes(SHPT_POLYGON, shapes);
    IEShp& importer = handler(THEMATICMODEL);
    layer_ = layer(THEMATICMODEL, QString("caso %1").arg(&one - cases.data()), box_);
    ASSERT_EQ(importer.ImportLines(vector(), project->projection()), 1);
    EXPECT_EQ(polygons() + "; " + lines(), QString(one.polygonsAndLines));
    EXPECT_EQ(messages.take(),
              QString("%1\nSumário:\nPolig.internos duplicados limpos=%2 \"buracos\" importados=%3")
                  .arg(kClean)
                  .arg(one.duplicates)
                  .arg(one.holes));
  }
}

// Both ways agree on what an area is worth, on a file with many records that fill each other's holes.
TEST_F(ShapeImportTest, BothWaysKeepTheAreas) {
  std::vector<TestShape> shapes;
  for (int i = 0; i < 30; ++i) {
    for (int j = 0; j < 30; ++j) {
      const double x = 30.0 * i, y = 30.0 * j;
      shapes.push_back({{squareRing(x, y, 20), squareRing(x + 5, y + 5, 10, true)}});
      if ((i + j) % 3 == 0) shapes.push_back({{squareRing(x + 5, y + 5, 10)}});
    }
  }
  writeShapes(SHPT_POLYGON, shapes);
  messages.answer(kClean, true);
  ASSERT_EQ(importLines(), 1);
  EXPECT_EQ(report.leftOut["duplicate"], 300);
  EXPECT_EQ(report.written["polygons"], 900 + 900);
  EXPECT_EQ(report.written["lines"], 1800);
  EXPECT_EQ(vector()->polygonCount(), 1800);
  double whole = 0;
  for (SPolygon* polygon = vector()->FirstPolygon(); polygon != nullptr; polygon = vector()->NextPolygon()) {
    whole += polygon->area;
    EXPECT_EQ(polygon->parentId == 0, polygon->NumSons() == 1);
    delete polygon;
  }
  EXPECT_NEAR(whole, 900 * 400.0, 1e-6);
}

TEST_F(ShapeImportTest, CancellingLeavesNothing) {
  writeShapes(SHPT_ARC, std::vector<TestShape>(50, {{{1, 1, 2, 2}}}));
  ProgressRecorder progress;
  progress.cancelAt = 20;
  EXPECT_EQ(importLines(), 0);
  EXPECT_EQ(messages.take(), QString());
  EXPECT_EQ(progress.maxima.front(), 50);
  EXPECT_EQ(progress.stops, std::vector<bool>{true});
  EXPECT_EQ(vector()->lineCount(), 0);
  EXPECT_EQ(report.written["lines"], 0);
}

TEST_F(ShapeImportTest, SamplesAndContours) {
  writeShapes(SHPT_POINTZ, {{{{10, 10}}, {1.5}}, {{{-10, 10}}, {2.5}}, {{{20, 20}}, {3.5}}, {{{0, 0}}, {7}}});
  ASSERT_EQ(importSamples(), 1);
  EXPECT_EQ(messages.take(),
            QString("Existem dados fora da área do projeto que não foram importados, 1 pontos ignorados "));
  QStringList heights;
  while (Point3d* point = heights.isEmpty() ? vector(vectorSamples)->FirstPoint3d()
                                            : vector(vectorSamples)->NextPoint3d()) {
    heights << QString::number(static_cast<double>(point->z));
    delete point;
  }
  EXPECT_EQ(heights.join(' '), QString("1.5 3.5 7"));
  EXPECT_EQ(report.written["samples"], 3);

  // The line goes on behind what lies outside, and takes the height of its last vertex inside.
  writeShapes(SHPT_ARCZ, {{{{1, 1, -5, 5, 2, 2, 3, 3, -9, 9}, {4, 4, -4, 4}, {6, 6, 6, 6}},
                           {10, 20, 30, 40, 50, 60, 70, 80, 90}}});
  ASSERT_EQ(importSamples(vectorContours), 1);
  EXPECT_EQ(messages.take(),
            QString("Existem dados fora da área do projeto que não foram importados, 3 pontos ignorados "));
  EXPECT_EQ(lines(vectorContours), QString("0/0:3"));
  EXPECT_EQ(vector(vectorContours)->FirstLine()->height, 40.0f);
  EXPECT_EQ(leftOut(), QString("degenerate=1 few_points=1 outside_box=3"));

  writeShapes(SHPT_POINTZ, {{{{-10, 10}}, {1.5}}});
  ASSERT_EQ(importSamples(), 1);
  EXPECT_TRUE(messages.take().startsWith("TODOS os dados FORA do projeto, NENHUM dado importado -"));
}

TEST_F(ShapeImportTest, ProjectionOfThePrj) {
  QString error = "before";
  EXPECT_EQ(IEShp::sourceProjection(path("e.shp"), &error), nullptr);
  EXPECT_EQ(error, QString());
  write("e.PRJ", projectionToWkt(*utm(), WktVariant::gdal1).toUtf8());
  const auto found = IEShp::sourceProjection(path("e.shp"), &error);
  ASSERT_NE(found, nullptr) << error.toStdString();
  EXPECT_TRUE(*found == *utm());
  write("e.PRJ", "no projection");
  EXPECT_EQ(IEShp::sourceProjection(path("e.shp"), &error), nullptr);
  EXPECT_NE(error, QString());
}

}  // namespace
}  // namespace kaldex::test
