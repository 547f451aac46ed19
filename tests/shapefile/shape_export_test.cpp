#include <QProcess>
#include <QStandardPaths>

#include "shapefile/export_fixture.h"

namespace kaldex::test {
namespace {

class ShapeExportTest : public ExportFixture {
 protected:
  int generate(Vector& from, short geometry, short coordMode = 0, short filter = 0) {
    return file.GenerateShapefile(*dataBase, from, *layer_->category(), base().c_str(), geometry, coordMode,
                                  filter);
  }
};

TEST_F(ShapeExportTest, AVectorWithoutShapesGivesBareHeadersAndATableWithoutRows) {
  Vector* empty = vector(THEMATICMODEL);
  empty->KeepFilesOpen(0);
  for (short geometry : {1, 2, 3}) {
    report = JobReport();
    EXPECT_EQ(generate(*empty, geometry), 1);
    expectShapes({geometry == 1 ? 1 : geometry == 2 ? 3 : 5, boxValues_, {}});
    EXPECT_EQ(read("e.shp").size(), 100);
    EXPECT_EQ(report.files.size(), 5);
    EXPECT_EQ(report.renamed.size(), geometry == 1 ? 0 : 1);
  }
  EXPECT_EQ(tableText(), "KDXAREA N(20,4)|KDXPERIMET N(20,4)|KDXCLASSE C(32,0)");
  EXPECT_EQ(read("e.dbf").right(1), "\x1a");
  EXPECT_EQ(read("e.cpg"), "ISO-8859-1");
  EXPECT_EQ(empty->KeepsFilesOpen(), 0);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(ShapeExportTest, LinesGoOutWithLengthAndClass) {
  Vector* lines = vector(THEMATICMODEL);
  Category& category = *layer_->category();
  addClass(category, QString::fromUtf8("Água"), 3);
  addClass(category, "nunca usada", 4);
  insertLine(*lines, {1, 2, 4, 6}, linePlain, 3);
  insertLine(*lines, {10, 20, 10, 21.5, 10, 30}, linePlain, 0);
  insertLine(*lines, {0, 0, 1, 0}, linePlain, 77);
  ASSERT_EQ(generate(*lines, 2), 1);
  const QByteArray first = arcContent(3, {1, 2, 4, 6}, {0}, {1, 2, 4, 6});
  const QByteArray second = arcContent(3, {10, 20, 10, 30}, {0}, {10, 20, 10, 21.5, 10, 30});
  const QByteArray third = arcContent(3, {0, 0, 1, 0}, {0}, {0, 0, 1, 0});
  expectShapes({3, boxValues_, {first, second, third}});
  EXPECT_EQ(tableText(),
            QString::fromUtf8("KDXPERIMET N(20,4)|KDXCLASSE C(32,0)\n5.0000|Água\n10.0000|\n1.0000|"));
  EXPECT_EQ(report.read["lines"], 3);
  EXPECT_EQ(report.written["lines"], 3);
  EXPECT_EQ(report.renamed.value(0), qMakePair(QString("KDXPERIMETRO"), QString("KDXPERIMET")));

  // Of the filtered ones those go that have a class which the layer uses and the category knows.
  ASSERT_EQ(generate(*lines, 2, 0, 1), 1);
  expectShapes({3, boxValues_, {first}});
  EXPECT_EQ(report.leftOut["class_filter"], 2);
}

TEST_F(ShapeExportTest, PolygonsGoOutWithTheirHolesEachRingInItsDirection) {
  Vector* polygons = vector(THEMATICMODEL);
  addClass(*layer_->category(), "lago", 3);
  SPolygon* father = insertPolygon(*polygons, square(0, 0, 10), 0);
  SPolygon* hole = insertPolygon(*polygons, square(1, 1, 2, true), 0);
  SPolygon* island = insertPolygon(*polygons, square(5, 5, 2), 3);
  SPolygon* apart = insertPolygon(*polygons, square(50, 0, 1, true), 3);
  father->AppendSon(hole, 1);
  father->AppendSon(island, 1);
  for (SPolygon* polygon : {father, hole, island, apart}) {
    polygon->UpdateArea();
    polygon->UpdatePerimeter();
    polygon->changed = stateChanged;
    delete polygon;
  }
  ASSERT_EQ(generate(*polygons, 3), 1);
  std::vector<double> rings = square(0, 0, 10, true);
  for (const std::vector<double>& ring : {square(1, 1, 2), square(5, 5, 2)}) {
    rings.insert(rings.end(), ring.begin(), ring.end());
  }
  const QByteArray whole = arcContent(5, {0, 0, 10, 10}, {0, 5, 10}, rings);
  const QByteArray own = arcContent(5, {5, 5, 7, 7}, {0}, square(5, 5, 2, true));
  const QByteArray last = arcContent(5, {50, 0, 51, 1}, {0}, square(50, 0, 1, true));
  // The hole without a class is no record; the island with one is both.
  expectShapes({5, boxValues_, {whole, own, last}});
  const QString columns = "KDXAREA N(20,4)|KDXPERIMET N(20,4)|KDXCLASSE C(32,0)\n";
  EXPECT_EQ(tableText(), columns + "100.0000|40.0000|\n4.0000|8.0000|lago\n1.0000|4.0000|lago");

  ASSERT_EQ(generate(*polygons, 3, 0, 1), 1);
  expectShapes({5, boxValues_, {own, last}});
}

TEST_F(ShapeExportTest, RegionsCountTheirHolesInThePartsAlone) {
  Vector* polygons = vector(THEMATICMODEL);
  SPolygon* father = insertPolygon(*polygons, square(0, 0, 10), 41);
  SPolygon* son = insertPolygon(*polygons, square(1, 1, 2), 42);
  father->AppendSon(son, 1);
  QString name = path("e.shp");
  name.replace("e.shp", ".shpe.shp");
  ASSERT_EQ(file.ExportImageLabelShape(*dataBase, *polygons, name, 0), 1);
  EXPECT_EQ(name, path("e"));
  expectShapes({5,
                boxValues_,
                {arcContent(5, {0, 0, 10, 10}, {0, 0}, square(0, 0, 10, true)),
                 arcContent(5, {1, 1, 3, 3}, {0}, square(1, 1, 2, true))}});
  EXPECT_EQ(tableText().section('\n', 0, 0),
            "KDXAREA N(20,4)|KDXPERIMET N(20,4)|POLID N(32,0)|REGID N(32,0)");
  EXPECT_EQ(tableText().section('\n', 2, 2).section('|', 2), "2|42");
}

TEST_F(ShapeExportTest, PointsGoOutWithTheirClass) {
  Vector* points = vector(THEMATICMODEL);
  addClass(*layer_->category(), "poste", 3);
  for (int classId : {3, 0}) {
    Point2d point(7.5, 8 + classId);
    point.classId = classId;
    points->Insert(point);
  }
  ASSERT_EQ(generate(*points, 1), 1);
  expectShapes(
      {1, boxValues_, {ByteMaker().little({1}).reals({7.5, 11}), ByteMaker().little({1}).reals({7.5, 8})}});
  EXPECT_EQ(tableText(), "KDXCLASSE C(32,0)\nposte\n");
}

TEST_F(ShapeExportTest, NumericVectorsGoOutWithHeightsOrFlat) {
  Vector* numeric = vector(DIGITALMODEL, vectorSamples);
  insertLine(*numeric, {1, 2, 4, 6}, lineMaster, 0, 12.5f);
  for (float z : {0.1f, -3.0f}) {
    Point3d sample(5, 6, z);
    numeric->Insert(sample, 0);
  }
  const double tenth = static_cast<double>(0.1f);
  // A numeric vector goes this way from the thematic export too.
  ASSERT_EQ(generate(*numeric, 1), 1);
  expectShapes(
      {11,
       boxValues_,
       {ByteMaker().little({11}).reals({5, 6, tenth, 0}), ByteMaker().little({11}).reals({5, 6, -3, 0})}});
  EXPECT_EQ(tableText(), "FID N(10,0)|Avg_z N(20,4)\n1|0.1000\n2|-3.0000");
  EXPECT_EQ(report.written["samples"], 2);

  ASSERT_EQ(ExportDigitalShape(file, *dataBase, *numeric, base().c_str(), 2, 0), 1);
  const QByteArray flat = arcContent(3, {1, 2, 4, 6}, {0}, {1, 2, 4, 6});
  QByteArray high = flat;
  high[0] = 13;
  expectShapes({13, boxValues_, {high + QByteArray(ByteMaker().reals({0, 0, 12.5, 12.5}))}});
  EXPECT_EQ(tableText(), "FID N(10,0)|Length N(20,4)|Avg_z N(20,4)\n1|5.0000|12.5000");

  Category& category = *layer_->category();
  ASSERT_EQ(file.ExportDigital2DShape(*dataBase, *numeric, category, base().c_str(), 1, 0), 1);
  expectShapes(
      {1, boxValues_, {ByteMaker().little({1}).reals({5, 6}), ByteMaker().little({1}).reals({5, 6})}});
  EXPECT_EQ(tableText(), "KDXCOTA N(20,4)\n0.1000\n-3.0000");
  ASSERT_EQ(file.ExportDigital2DShape(*dataBase, *numeric, category, base().c_str(), 2, 0), 1);
  expectShapes({3, boxValues_, {flat}});
  EXPECT_EQ(tableText(), "KDXPERIMET N(20,4)|KDXCOTA N(20,4)\n5.0000|12.5000");
}

TEST_F(ShapeExportTest, OtherGeometriesAreRefusedWithoutAFile) {
  Vector* thematic = vector(THEMATICMODEL);
  Category& category = *layer_->category();
  const QString refused = QString::fromUtf8("Formato inválido!");
  for (short geometry : {0, 4, -1}) {
    EXPECT_EQ(generate(*thematic, geometry), 0);
    EXPECT_EQ(messages.take(), refused);
    EXPECT_EQ(file.ExportObjShape(*dataBase, *thematic, category, base().c_str(), geometry, 0), 0);
    EXPECT_EQ(messages.take(), refused);
  }
  InfoLayer* numericLayer = layer(DIGITALMODEL, "alturas", box_);
  Vector* numeric = numericLayer->vector(vectorSamples, true);
  EXPECT_EQ(ExportDigitalShape(file, *dataBase, *numeric, base().c_str(), 3, 0), 0);
  EXPECT_EQ(messages.take(), refused);
  EXPECT_EQ(file.ExportDigital2DShape(*dataBase, *numeric, category, base().c_str(), 3, 0), 0);
  EXPECT_EQ(messages.take(), refused);
  // Told, and yet no failure of the thematic export.
  EXPECT_EQ(generate(*numeric, 3), 1);
  EXPECT_EQ(messages.shown.size(), 1u);
  EXPECT_EQ(messages.shown.front().title, "KALDEX");
  messages.take();
  Vector bare;
  EXPECT_EQ(ExportDigitalShape(file, *dataBase, bare, base().c_str(), 1, 0), 0);
  EXPECT_EQ(ExportDigitalShape(file, *dataBase, bare, base().c_str(), 2, 0), 0);
  EXPECT_EQ(messages.take(), "");
  EXPECT_FALSE(QFile::exists(path("e.shp")));
}

TEST_F(ShapeExportTest, CoordinatesGoOutInThePlaneInDegreesOrInSeconds) {
  layer_ = layer(THEMATICMODEL, "camada", {500000, 7000000, 600000, 7100000});
  Vector* lines = layer_->vector(vectorLines, true);
  const std::vector<double> xy{510000, 7010000, 520000, 7050000};
  insertLine(*lines, xy);
  ASSERT_EQ(generate(*lines, 2, 0), 1);
  const QByteArray plane = read("e.shp");
  EXPECT_TRUE(read("e.prj").startsWith("PROJCS["));
  ASSERT_EQ(generate(*lines, 2, 1), 1);
  EXPECT_EQ(read("e.shp"), plane);

  std::vector<double> degrees = xy;
  QString none;
  for (std::size_t i = 0; i < degrees.size(); i += 2) {
    Point place(xy[i], xy[i + 1]);
    ASSERT_TRUE(project->projection()->planeToGeographic(place));
    degrees[i] = place.x * 180.0 / 3.141592653589793;
    degrees[i + 1] = place.y * 180.0 / 3.141592653589793;
    double x = xy[i];
    double y = xy[i + 1];
    ExpCoordShp(&x, &y, none, none, project->projection(), 2);
    EXPECT_EQ(x, degrees[i]);
    EXPECT_EQ(y, degrees[i + 1]);
  }
  ASSERT_EQ(generate(*lines, 2, 2), 1);
  EXPECT_EQ(read("e.shp").mid(108).toHex(), arcContent(3, degrees, {0}, degrees).toHex());
  EXPECT_TRUE(read("e.prj").startsWith("GEOGCS["));
  ASSERT_EQ(generate(*lines, 2, 3), 1);
  EXPECT_FALSE(QFile::exists(path("e.prj")));  // nothing tells of seconds, and an older file would lie
  double second = 0;
  std::memcpy(&second, read("e.shp").constData() + 100 + 8 + 44 + 4, sizeof second);
  EXPECT_NEAR(second, degrees[0] * 3600, 1e-7);
}

TEST_F(ShapeExportTest, ExpCoordShpWritesTextsInModeOneOnly) {
  double x = 510000;
  double y = 7010000;
  QString sx = "velho";
  QString sy = "velho";
  ExpCoordShp(&x, &y, sx, sy, project->projection(), 0);
  EXPECT_EQ(sx, "velho");
  ExpCoordShp(&x, &y, sx, sy, project->projection(), 1);
  EXPECT_TRUE(sx.startsWith("O 44 ") || sx.startsWith("O 45 ")) << sx.toStdString();
  EXPECT_TRUE(sy.startsWith("S 27 ") || sy.startsWith("S 26 ")) << sy.toStdString();
  EXPECT_EQ(x, 510000);
  EXPECT_EQ(y, 7010000);
  ExpCoordShp(&x, &y, sx, sy, nullptr, 2);
  EXPECT_EQ(x, 510000);
}

TEST_F(ShapeExportTest, FilesThatCannotBeWrittenWholeAreTold) {
  if (!QFile::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  Vector* lines = vector(THEMATICMODEL);
  for (int i = 0; i < 10; ++i) insertLine(*lines, {1.0 * i, 0, 4, 6});
  for (const char* ending : {".shp", ".shx", ".dbf", ".prj"}) {
    const QString target = path("e") + ending;
    QFile::remove(target);
    ASSERT_TRUE(QFile::link("/dev/full", target));
    EXPECT_EQ(generate(*lines, 2), 0) << ending;
    EXPECT_EQ(messages.take(), "Erro de I/O.") << ending;
    QFile::remove(target);
  }
  EXPECT_EQ(generate(*lines, 2), 1);
  QFile::remove(path("e.cpg"));
  ASSERT_TRUE(QDir().mkpath(path("e.cpg/in the way")));
  EXPECT_EQ(generate(*lines, 2), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  for (const std::string& name :
       {std::string("/no/such/folder/e"), std::string(ShapeFile::kMaxName + 1, 'x')}) {
    EXPECT_EQ(file.GenerateShapefile(*dataBase, *lines, *layer_->category(), name.c_str(), 2, 0, 0), 0);
    EXPECT_EQ(messages.take(), "Erro de I/O.");
  }
  EXPECT_EQ(file.GenerateShapefile(*dataBase, *lines, *layer_->category(), nullptr, 2, 0, 0), 0);
  EXPECT_EQ(messages.take(), QString::fromUtf8("Um argumento inválido foi passado!arg : name"));
  // A numeric vector's failure is one of the thematic export too.
  InfoLayer* numeric = layer(DIGITALMODEL, "alturas", box_);
  layer_ = numeric;
  EXPECT_EQ(file.GenerateShapefile(*dataBase, *numeric->vector(vectorSamples, true), *numeric->category(),
                                   "/no/such/folder/e", 1, 0, 0),
            0);
}

TEST_F(ShapeExportTest, CancellingEndsQuietly) {
  Vector* lines = vector(THEMATICMODEL);
  for (int i = 0; i < 10; ++i) insertLine(*lines, {1.0 * i, 0, 4, 6});
  lines->KeepFilesOpen(0);
  ProgressRecorder progress;
  progress.cancelAt = 4;
  EXPECT_EQ(generate(*lines, 2), 0);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(progress.maxima, std::vector<int>{10});
  EXPECT_EQ(progress.values.back(), 4);
  EXPECT_EQ(progress.stops, std::vector<bool>{true});
  EXPECT_EQ(lines->KeepsFilesOpen(), 0);
  EXPECT_TRUE(file.OpenFile(path("other.shp").toLocal8Bit().constData(), "w"));  // the stream was closed
}

TEST_F(ShapeExportTest, NothingIsLostInSilence) {
  Vector* lines = vector(THEMATICMODEL);
  Category& category = *layer_->category();
  addClass(category, QString::fromUtf8("Ωmega"), 3);
  addClass(category, QString(40, 'x'), 4);
  addClass(category, QString::fromUtf8("Ж unused"), 5);
  for (int classId : {3, 3, 4}) insertLine(*lines, {1, 2, 4, 6}, linePlain, classId);
  ASSERT_EQ(generate(*lines, 2), 1);
  EXPECT_EQ(tableText().section('\n', 1).remove("5.0000|"), "?mega\n?mega\n" + QString(32, 'x'));
  // Each once, whatever the number of records, and with the class.
  ASSERT_EQ(report.notes.size(), 2);
  EXPECT_TRUE(report.notes.filter(QString::fromUtf8("Ωmega")).value(0).endsWith(QString::fromUtf8("Ω")));
  EXPECT_EQ(report.notes.filter(QString(40, 'x')).size(), 1);
  EXPECT_EQ(report.encoding.name, "ISO-8859-1");
}

TEST_F(ShapeExportTest, OtherProgramsReadIt) {
  const QString ogrinfo = QStandardPaths::findExecutable("ogrinfo");
  if (ogrinfo.isEmpty()) GTEST_SKIP() << "ogrinfo is not installed";
  Vector* polygons = vector(THEMATICMODEL);
  addClass(*layer_->category(), QString::fromUtf8("água"), 3);
  SPolygon* father = insertPolygon(*polygons, square(0, 0, 10), 3);
  SPolygon* hole = insertPolygon(*polygons, square(1, 1, 2), 0);
  father->AppendSon(hole, 1);
  father->changed = stateChanged;
  father->UpdateArea();
  ASSERT_EQ(generate(*polygons, 3), 1);
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(ogrinfo, {"-al", path("e.shp")});
  ASSERT_TRUE(process.waitForFinished());
  const QString output = QString::fromUtf8(process.readAll());
  EXPECT_FALSE(output.contains("arning")) << output.toStdString();
  EXPECT_TRUE(output.contains("Feature Count: 1\n"));
  EXPECT_TRUE(output.contains("Extent: (0.000000, 0.000000) - (1000.000000, 2000.000000)"));
  EXPECT_TRUE(output.contains("POLYGON ((0 0,0 10,10 10,10 0,0 0),(1 1,3 1,3 3,1 3,1 1))"))
      << output.toStdString();
  EXPECT_TRUE(output.contains(QString::fromUtf8("KDXCLASSE (String) = água")));
  EXPECT_TRUE(output.contains("UTM") && output.contains("KDXAREA (Real) = 100.0000"));
}

TEST_F(ShapeExportTest, TablesTakeColumnsByTheirTypeAndRefuseTheRest) {
  SFieldList columns;
  columns.Append(new SField("REAL", fieldReal, 12, 3, 0));
  columns.Append(new SField("DATA", fieldDate, 8, 0, 1));
  columns.Append(new SField("TEXTO_MUITO_LONGO", fieldText, 300, 0, 2));
  columns.Append(new SField("INTEIRO", fieldInteger, 7, 0, 3));
  columns.Append(new SField("OUTRO", 9, 6, 0, 4));
  EXPECT_TRUE(CreateDBaseTable(base().c_str(), columns));
  EXPECT_EQ(tableText(), "REAL N(12,3)|DATA D(8,0)|TEXTO_MUIT C(255,0)|INTEIRO N(7,0)|OUTRO N(6,0)");
  EXPECT_EQ(static_cast<unsigned char>(read("e.dbf")[29]), 0x57);  // the language byte of ISO 8859-1
  EXPECT_FALSE(CreateDBaseTable(nullptr, columns));
  EXPECT_FALSE(CreateDBaseTable("/no/such/folder/e", columns));
  columns.Append(new SField("VAZIO", fieldText, 0, 0, 5));
  EXPECT_FALSE(CreateDBaseTable(base().c_str(), columns));
}

}  // namespace
}  // namespace kaldex::test
