#include <cmath>

#include "intake/intake_fixture.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/projection_text.h"
#include "shapefile/byte_maker.h"

namespace kaldex::test {
namespace {

const char kHeader[] =
    "INFO\n//Arcos sem Topologia\n"
    "PROJECTION\tUTM, HEMIS -1, ORIG.LAT N 0 0 0.00000, ORIG.LONG O 45 0 0.00000, LAT1 N 0 0 0.00000, "
    "LAT2 N 0 0 0.00000\n"
    "DATUM\tWGS84, Prd 6378137.000000, Pflt 0.003352810665, Pdx 0.00000000, Pdy 0.00000000, Pdz 0.00000000\n"
    "OFFSETX  500000.000000   OFFSETY  10000000.000000   SCALEFACTOR  0.999600\n";

QByteArray section(const char* keyword, const QByteArray& box, const QByteArray& records) {
  return QByteArray("\n") + keyword + "\n" + kHeader + box + "SCALE\t25000.000000\nINFO_END\n" + records +
         "\nEND\n";
}

class OutlineTest : public IntakeFixture {
 protected:
  QString sections(const QByteArray& content) {
    QStringList told;
    const AsciiOutline outline(write(content));
    for (const AsciiSection& one : outline.sections())
      told << QString("%1:%2").arg(one.keyword).arg(one.line);
    return told.join(' ');
  }
};

TEST_F(OutlineTest, FindsSectionsWithTheirLines) {
  EXPECT_EQ(sections("\nLINES\nINFO\n//LINES\nLINES\nINFO_END\n1 2\nEND\nEND\n"
                     "SAMPLE\nPOINT3D\n1 2 3\nEND\nEND\n \tNETWORK \nEND\nNETWORK_OBJECTS\nEND\nPOINT3D\n"),
            QString("LINES:2 SAMPLE:10 NETWORK:15 NETWORK_OBJECTS:17 POINT3D:19"));
  EXPECT_EQ(sections("1 2 3\nnothing here\n"), QString());
  EXPECT_EQ(sections(""), QString());
}

// In label points these words say what the next record is about.
TEST_F(OutlineTest, LabelPointsHaveBlocksOfTheirOwn) {
  EXPECT_EQ(sections("NETWORK_OBJECTS\nLINES\n1 2\nNODES\n3 4\nEND\nLINES\n1 2\nEND\nEND\nNODES\nEND\n"),
            QString("NETWORK_OBJECTS:1 LINES:7 NODES:11"));
  // What is cut off ends where the next section begins.
  const AsciiOutline outline(write("LINES\n1 2\n3 4\nPOINT2D\n9 9\nEND\n"));
  EXPECT_EQ(outline.extent(outline.sections()[0], nullptr, nullptr, 0), Box(1, 2, 3, 4));
}

TEST_F(OutlineTest, HeadersTellClassesAndColumns) {
  const AsciiOutline outline(write(
      "POINTS\nINFO\nSEPARATOR |\nTHEMACLASS\n//r g b\n1 2 3  4 5 6  Mata densa\nINFO_END\n1|2|x\nEND\n"
      "TABLE\nINFO\nSEPARATOR ;\nUNFORMATED\nCATEGORY_NOSPATIAL\t lista \nnome;TEXTO;12;0\nx ; REAL ; 17 ; "
      "8\nbad ; TEXT ; 0 ; 0\nINFO_END\ny ; REAL ; 17 ; 8\nEND\n"));
  const AsciiHeader points = outline.header(outline.sections()[0]);
  EXPECT_EQ(points.separator, QString("|"));
  EXPECT_EQ(points.classes, QStringList("Mata densa"));
  EXPECT_TRUE(points.category.isEmpty());
  const AsciiHeader table = outline.header(outline.sections()[1]);
  EXPECT_EQ(table.category, QString("lista"));
  EXPECT_FALSE(table.spatial);
  ASSERT_EQ(table.columns.size(), 2U);
  EXPECT_EQ(table.columns[0].name, QString("nome"));
  EXPECT_EQ(table.columns[0].size, 12);
  EXPECT_EQ(table.columns[1].type, fieldReal);
  EXPECT_TRUE(outline.extent(outline.sections()[1], nullptr, nullptr, 0).isInverted());
}

TEST_F(OutlineTest, CountsLinesAcrossBlocks) {
  QByteArray records;
  for (int i = 0; i < 40000; ++i) records += "350000.123456     7400000.654321\n";
  EXPECT_EQ(sections("LINES\n" + records + "END\nEND\nCONTOURLINES\nEND\n"),
            QString("LINES:1 CONTOURLINES:40004"));
}

TEST_F(OutlineTest, EachSectionHasItsOwnHeader) {
  const AsciiOutline outline(
      write(section("LINES", "BOX\t1.000000, 2.000000, 3.000000, 4.000000\nUNITS Metros\n", "") +
            section("POLYGONS", "BOX\t5.000000, 6.000000, 7.000000, 8.000000\nUNITS Metros\n", "") +
            "TABLE\nEND\n"));
  const AsciiHeader lines = outline.header(*outline.find("LINES"));
  ASSERT_NE(lines.projection, nullptr);
  EXPECT_EQ(lines.projection->type(), ProjectionType::utm);
  EXPECT_TRUE(lines.hasBox);
  EXPECT_EQ(lines.box, Box(1, 2, 3, 4));
  EXPECT_EQ(lines.scale, 25000.0);
  EXPECT_EQ(lines.units, 0);
  EXPECT_EQ(outline.header(*outline.find("POLYGONS")).box, Box(5, 6, 7, 8));
  const AsciiHeader none = outline.header(*outline.find("TABLE"));
  EXPECT_EQ(none.projection, nullptr);
  EXPECT_FALSE(none.hasBox);
}

TEST_F(OutlineTest, TheExtentOfASectionWithoutABox) {
  const AsciiOutline outline(
      write("LINES\n1 20\n3 -4\nEND\n5 6\n7 8\nEND\nEND\nLINES\n900 900\nEND\n"
            "NETWORK\n1 9 9 9\n10 10\n20 30\nEND\nEND\nTABLE\nEND\n"));
  const AsciiSection& lines = outline.sections()[0];
  EXPECT_EQ(outline.extent(lines, nullptr, nullptr, 0), Box(1, -4, 7, 20));
  EXPECT_EQ(outline.extent(lines, nullptr, nullptr, 1), Box(1000, -4000, 7000, 20000));
  EXPECT_EQ(outline.extent(*outline.find("NETWORK"), nullptr, nullptr, 0), Box(10, 10, 20, 30));
  EXPECT_TRUE(outline.extent(*outline.find("TABLE"), nullptr, nullptr, 0).isInverted());
}

TEST_F(OutlineTest, AnExtentOfAngleTexts) {
  auto degrees = projectionFromText("EPSG:4326");
  const AsciiOutline outline(
      write("LINES\nO 45 30 0.00   S 23 0 0.00\nO 44 0 0.00   S 22 30 0.00\nEND\nEND\n"));
  const Box box = outline.extent(outline.sections()[0], degrees.get(), degrees.get(), 0);
  const Box expected(-45.5, -23.0, -44.0, -22.5);
  for (const auto side : {&Box::x1, &Box::y1, &Box::x2, &Box::y2})
    EXPECT_NEAR(box.*side, expected.*side, 1e-9);
}

TEST_F(OutlineTest, AShapefileTellsTypeBoxAndCount) {
  ByteMaker shp;
  shp.header(50 + 14 + 6 + 14, 1, {0, 0, 1, 1}).big({1, 10}).little({1}).reals({-5, 7});
  shp.big({2, 2}).little({0}).big({3, 10}).little({1}).reals({11, 3});
  write(shp, "e.shp");
  const ShapeOutline outline(path("e.shp"));
  ASSERT_TRUE(outline.isValid());
  EXPECT_TRUE(outline.isPoints());
  EXPECT_EQ(outline.box(), Box(0, 0, 1, 1));
  long long count = 0;
  EXPECT_EQ(outline.extent(&count), Box(-5, 3, 11, 7));
  EXPECT_EQ(count, 3);
  EXPECT_FALSE(ShapeOutline(path("absent.shp")).isValid());
  EXPECT_FALSE(
      ShapeOutline(write("no shapefile at all, though it is long enough to have a header of one hundred "
                         "bytes and more behind it",
                         "x.shp"))
          .isValid());
}

TEST_F(OutlineTest, RecordsThatLieAboutTheirLengthEndTheWalk) {
  ByteMaker shp;
  shp.header(100, 1, {0, 0, 1, 1}).big({1, 10}).little({1}).reals({1, 2}).big({2, 1 << 30}).little({1});
  write(shp, "e.shp");
  long long count = 0;
  EXPECT_EQ(ShapeOutline(path("e.shp")).extent(&count), Box(1, 2, 1, 2));
  EXPECT_EQ(count, 1);
}

TEST_F(OutlineTest, KnowsFilesByTheirContent) {
  struct Case {
    QByteArray content;
    FileFormat format;
    const char* description;  // a part of it
  };
  const Case cases[] = {
      {"\nLINES\n1 2\n", FileFormat::ascii, "ASCII"},
      {"LINES\r1 2\r", FileFormat::ascii, "ASCII"},
      {ByteMaker().header(50, 1, {0, 0, 0, 0}), FileFormat::shapefile, "shapefile"},
      {QByteArray("SQLite format 3\0", 16) + QByteArray(84, '\0'), FileFormat::unknown, "SQLite"},
      {QByteArray("SQLite format 3\0", 16) + QByteArray(52, '\0') + "GPKG" + QByteArray(28, '\0'),
       FileFormat::geographicDatabase, "GeoPackage"},
      {"  0\nSECTION\n  2\nHEADER\n", FileFormat::drawing, "DXF"},
      {"999\nmade by\n0\nSECTION\n", FileFormat::drawing, "DXF"},
      {"a;b;c\n1;2;3\n4;5;6\n", FileFormat::delimitedTable, "delimitado"},
      {"\x89PNG\r\n\x1a\n....", FileFormat::unknown, "PNG"},
      {"just words\n", FileFormat::unknown, "texto"},
      {QByteArray("\x01\x00\xFF\x00\x07", 5), FileFormat::unknown, "bin"},
      {"", FileFormat::unknown, "vazio"},
  };
  for (const Case& one : cases) {
    const FileGuess guess = guessFile(write(one.content, "guess"));
    EXPECT_EQ(guess.format, one.format) << one.content.left(20).toHex().toStdString();
    EXPECT_TRUE(guess.description.contains(one.description)) << guess.description.toStdString();
  }
}

TEST(PlaneBoxes, ABoxIsCopiedOrHoldsWhatItHeldBefore) {
  const auto utm = projectionFromText("EPSG:32723");
  const auto degrees = projectionFromText("EPSG:4326");
  const Box told(300000, 7400000, 420000, 7500000);
  EXPECT_EQ(transferredBox(told, utm.get(), utm.get(), 0), told);
  const Box inDegrees = transferredBox(told, utm.get(), degrees.get(), 0);
  const Box back = transferredBox(inDegrees, degrees.get(), utm.get(), 0);
  EXPECT_TRUE(back.Contains(Point(told.x1, told.y1)) && back.Contains(Point(told.x2, told.y2)));
  EXPECT_LT(back.x2 - back.x1, 1.1 * (told.x2 - told.x1));
}

TEST(PlaneBoxes, ScalesAreRoundNumbers) {
  const auto degrees = projectionFromText("EPSG:4326");
  EXPECT_EQ(suggestedScale(Box(0, 0, 1500, 100), nullptr), 2000.0);
  EXPECT_EQ(suggestedScale(Box(0, 0, 5000, 100), nullptr), 5000.0);
  EXPECT_EQ(suggestedScale(Box(-180, -90, 180, 90), degrees.get()), 50000000.0);
  EXPECT_EQ(suggestedScale(Box(3, 3, 3, 3), nullptr), 1.0);
}

}  // namespace
}  // namespace kaldex::test
