#include <QProcess>
#include <QStandardPaths>
#include <cmath>

#include "kaldex/kml.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

namespace {

class KmlFixture : public HandlerFixture {
 protected:
  /// For imports the projection has to be the layer's, for exports one on WGS84.
  std::unique_ptr<IEKml> handler(InfoLayer* of, const QString& file, SProjection* projection) {
    return open<IEKml>(file, of, 0, 0, projection);
  }
  std::unique_ptr<IEKml> importer(InfoLayer* of, const QByteArray& content) {
    write("in.kml", content);
    return handler(of, "in.kml", of->projection());
  }
  Vector* lines(const QString& name) { return layer(THEMATICMODEL, name)->vector(vectorLines, true); }

  static QByteArray document(const QByteArray& features) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">" +
           features + "</kml>\n";
  }
  static QByteArray placemark(const QByteArray& geometry) {
    return "<Placemark>" + geometry + "</Placemark>";
  }
  static QByteArray line(const QByteArray& coordinates) {
    return "<LineString><coordinates>" + coordinates + "</coordinates></LineString>";
  }

  std::unique_ptr<SProjection> wgs84 = latLong();
};

const QByteArray kMixed =
    "<Document><name>Tudo</name><Folder><Folder><Placemark><name>Rio</name><ExtendedData><Data name='COD'>"
    "<value>7</value></Data></ExtendedData><LineString><coordinates>-45,-23,5 -45.1,-23.1</coordinates>"
    "</LineString></Placemark></Folder></Folder><Placemark><MultiGeometry><Point><coordinates>-45,-23"
    "</coordinates></Point><Polygon><outerBoundaryIs><LinearRing><coordinates>-45,-23 -44,-23 -44,-22 -45,-23"
    "</coordinates></LinearRing></outerBoundaryIs><innerBoundaryIs><LinearRing><coordinates>-44.5,-22.9 "
    "-44.4,-22.9 -44.4,-22.8 "
    "-44.5,-22.9</coordinates></LinearRing></innerBoundaryIs></Polygon></MultiGeometry>"
    "</Placemark><NetworkLink/></Document>";

TEST_F(KmlFixture, EachImportTakesItsGeometries) {
  InfoLayer* const into = layer(THEMATICMODEL, "L");
  Vector* const vector = into->vector(vectorLines, true);
  EXPECT_EQ(importer(into, document(kMixed))->ImportLines(vector, nullptr), 1);
  EXPECT_EQ(vector->lineCount(), 1);
  EXPECT_EQ(importer(into, document(kMixed))->ImportPoint2d(vector, nullptr), 1);
  EXPECT_EQ(vector->point2dCount(), 1);
  EXPECT_EQ(importer(into, document(kMixed))->ImportPolygons(vector, nullptr), 1);
  EXPECT_EQ(vector->lineCount(), 3) << "a line for each ring";
  EXPECT_EQ(vector->polygonCount(), 0);
  EXPECT_EQ(importer(into, document(kMixed))->ImportSamples(vector, nullptr), 0);
  EXPECT_EQ(importer(into, document(kMixed))->ImportContourout(vector, nullptr), 0);
  EXPECT_EQ(messages.take(), "");

  JobReport all;
  const JobReportScope scope(all);
  EXPECT_EQ(importer(into, document(kMixed))->ImportAll(vector, nullptr), 1);
  EXPECT_EQ(vector->lineCount(), 6);
  EXPECT_EQ(all.written.value("lines"), 3);
  EXPECT_EQ(all.written.value("points"), 1);
  EXPECT_EQ(all.leftOut.value("unsupported"), 1) << "the link";
  const QString notes = all.notes.join('\n');
  for (const char* part : {"NetworkLink (1)", "COD (1)", "altitude", "Nomes de placemarks"}) {
    EXPECT_TRUE(notes.contains(part)) << part << " in " << notes.toStdString();
  }
}

TEST_F(KmlFixture, NothingIsShownAndNothingHalf) {
  InfoLayer* const into = layer(THEMATICMODEL, "L");
  Vector* const vector = into->vector(vectorLines, true);
  EXPECT_EQ(importer(into, document(kMixed))->ImportLines(nullptr, nullptr), 0);
  EXPECT_EQ(importer(into, document(kMixed))->ImportPoint2d(nullptr, nullptr), 0);
  EXPECT_EQ(importer(into, document(kMixed))->ImportPolygons(nullptr, nullptr), 0);
  const QByteArray broken = document(kMixed).replace("</Document>", "\n</Dokument>");
  EXPECT_EQ(importer(into, broken)->ImportAll(vector, nullptr), 0);
  EXPECT_EQ(vector->lineCount() + vector->point2dCount(), 0);
  EXPECT_EQ(report.place.line, 3);
  EXPECT_FALSE(report.notes.isEmpty());
  const auto out = handler(into, "out", wgs84.get());
  EXPECT_EQ(out->ExportLines(nullptr, 0) + out->ExportPoints(nullptr, nullptr, 0) +
                out->ExportPolygons(nullptr, 0) + out->ExportAll(nullptr, 0),
            0);
  EXPECT_EQ(out->ExportSample(vector) + out->ExportContourout(vector) + out->ExportTIN(vector) +
                out->ExportTIN3D(vector),
            0);
  EXPECT_EQ(handler(into, "out", wgs84.get())->WriteToFile(), 0) << "there is no document";
  EXPECT_EQ(messages.take(), "");
}

TEST_F(KmlFixture, WhatIsNoPlaceIsLeftOutAndTold) {
  InfoLayer* const into = layer(THEMATICMODEL, "L");
  Vector* const vector = into->vector(vectorLines, true);
  const QByteArray content =
      document("<Document>" + placemark(line("-45,-23")) + placemark(line("500000,7400000 500010,7400000")) +
               placemark(line("a,b c,d")) + placemark(line("-45,-23 -45,-22")) + placemark("") +
               placemark("<Point/>") + "</Document>");
  EXPECT_EQ(importer(into, content)->ImportAll(vector, nullptr), 1);
  EXPECT_EQ(vector->lineCount(), 1);
  EXPECT_EQ(report.leftOut.value("few_points"), 3);
  EXPECT_EQ(report.leftOut.value("refused"), 1);
  EXPECT_EQ(report.leftOut.value("null_shape"), 1);
  EXPECT_EQ(report.notes.size(), 2) << report.notes.join('\n').toStdString();
}

double largestDifference(Vector& one, Vector& other) {
  double largest = 0.0;
  Line* right = other.FirstLine();
  for (Line* left = one.FirstLine(); left != nullptr; left = one.NextLine(), right = other.NextLine()) {
    if (right == nullptr || left->Size() != right->Size()) return HUGE_VAL;
    for (int i = 0; i < 2 * left->Size(); ++i) {
      largest = std::max(largest, std::fabs(left->coordinates()[i] - right->coordinates()[i]));
    }
  }
  return largest;
}

TEST_F(KmlFixture, ThereAndBackThroughTheDatum) {
  for (const char* datum : {"WGS84", "SAD69"}) {
    Project* const of = dataBase->createProject(datum, *utmProjection(datum));
    InfoLayer* const from = layer(THEMATICMODEL, "De", {0, 0, 1e7, 1e8}, of);
    Vector* const vector = from->vector(vectorLines, true);
    for (int i = 0; i < 200; ++i) {
      insertLine(*vector,
                 {300000.0 + 1777.7 * i, 7400000.123 + 931.1 * i, 300010.5 + 1777.7 * i, 7400020.75});
    }
    Point2d place(512345.678, 7412345.678);
    vector->Insert(place);
    for (const bool zipped : {false, true}) {
      const auto out = handler(from, "out", wgs84.get());
      out->setZipped(zipped);
      ASSERT_EQ(out->ExportLines(vector, 0), 1);
      ASSERT_EQ(out->ExportPoints(vector, nullptr, 0), 1);
      ASSERT_EQ(out->WriteToFile(), 1);
      InfoLayer* const into = layer(THEMATICMODEL, zipped ? "Kmz" : "Kml", {0, 0, 1e7, 1e8}, of);
      Vector* const back = into->vector(vectorLines, true);
      const auto in = handler(into, zipped ? "out.kmz" : "out.kml", into->projection());
      ASSERT_EQ(in->ImportAll(back, nullptr), 1);
      EXPECT_EQ(back->lineCount(), 200);
      EXPECT_LT(largestDifference(*vector, *back), 0.001) << datum;
      const Point2d* const point = back->FirstPoint2d();
      ASSERT_NE(point, nullptr);
      EXPECT_LT(std::hypot(point->x - place.x, point->y - place.y), 0.001) << datum;
    }
  }
  EXPECT_EQ(messages.take(), "");
}

TEST_F(KmlFixture, WhatHasNoProjectionGoesOutAsDegreesOrNot) {
  Project* const of = dataBase->createProject("Sem", GeneralProjection());
  Vector* const vector = layer(THEMATICMODEL, "S", {0, 0, 1e7, 1e8}, of)->vector(vectorLines, true);
  insertLine(*vector, {10, 20, 11, 20.5});
  insertLine(*vector, {500000, 7400000, 500100, 7400000});
  for (const Point& place : {Point(10, 20), Point(500000, 7400000)}) {
    Point2d point(place.x, place.y);
    vector->Insert(point);
  }
  const auto out = handler(vector->infoLayer(), "out", wgs84.get());
  ASSERT_EQ(out->ExportAll(vector, 0), 1);
  EXPECT_EQ(report.written.value("lines"), 1);
  EXPECT_EQ(report.written.value("points"), 1);
  EXPECT_EQ(report.leftOut.value("refused"), 2);
  EXPECT_TRUE(report.notes.join('\n').contains("como graus")) << report.notes.join('\n').toStdString();
}

TEST_F(KmlFixture, DatumsAreShiftedOnce) {
  InfoLayer* const from = layer(THEMATICMODEL, "De");  // SAD69
  const auto out = handler(from, "out", wgs84.get());
  out->InitEncoder(from->vector(vectorLines, true));
  Point plane(500000, 7400000);
  const std::unique_ptr<Point> degrees(out->ToWGS84(&plane));
  Point own = plane;
  project->projection()->planeToGeographic(own);
  Point expected = own;
  {
    const DestinationScope scope(project->projection(), wgs84.get());
    project->projection()->ChangeLL(expected.x, expected.y);
  }
  EXPECT_NEAR(degrees->x, Math_Rad_To_Deg(expected.x), 1e-12);
  EXPECT_NEAR(degrees->y, Math_Rad_To_Deg(expected.y), 1e-12);
  EXPECT_GT(std::fabs(expected.y - own.y), 1e-6) << "some tens of metres";
  Point2d there(degrees->x, degrees->y);
  const std::unique_ptr<Point2d> back(out->FromWGS84(&there));
  EXPECT_NEAR(back->x, plane.x, 0.001);
  EXPECT_NEAR(back->y, plane.y, 0.001);
}

TEST_F(KmlFixture, PolygonsAreConvertedWithTheirSons) {
  InfoLayer* const from = layer(THEMATICMODEL, "De", {400000, 7000000, 600000, 8000000});
  Vector* const vector = from->vector(vectorLines, true);
  SPolygon* const father =
      insertPolygon(*vector, {500000, 7400000, 500100, 7400000, 500100, 7400100, 500000, 7400000}, 3);
  SPolygon* const son =
      insertPolygon(*vector, {500050, 7400010, 500060, 7400010, 500060, 7400020, 500050, 7400010});
  father->AppendSon(son, 1);
  father->changed = stateChanged;
  Point2d place(500000, 7400000);
  place.classId = 5;
  vector->Insert(place);
  vector->flush();
  const auto out = handler(from, "out", wgs84.get());
  out->InitEncoder(vector);
  const std::unique_ptr<SPolygon> degrees(out->ToWGS84(father));
  ASSERT_NE(degrees->Points(), nullptr);
  EXPECT_EQ(degrees->Points()->Size(), 4);
  EXPECT_NEAR(degrees->Points()->coordinates()[0], -45.0, 0.01);
  const std::unique_ptr<SPolygon> back(out->FromWGS84(degrees.get()));
  EXPECT_NEAR(back->Points()->coordinates()[2], 500100, 0.001);

  // The whole vector, in a folder that goes with the next file.
  const QString home = qEnvironmentVariable("HOME");
  qputenv("HOME", folder().toLocal8Bit());
  Vector* const copy = out->ToWGS84(vector);
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(QDir(path(".Kaldex/base/tempkml")).exists());
  EXPECT_EQ(copy->lineCount(), 2);
  EXPECT_EQ(copy->polygonCount(), 2);
  EXPECT_EQ(copy->FirstPolygon()->NumSons(), 1);
  EXPECT_EQ(copy->FirstPoint2d()->classId, 5);
  EXPECT_NEAR(copy->BoundingBox().x1, -46.0, 0.1);
  EXPECT_EQ(out->ExportPolygons(vector, 0), 1);
  EXPECT_EQ(out->WriteToFile(), 1);
  EXPECT_FALSE(QDir(path(".Kaldex/base/tempkml")).exists());
  qputenv("HOME", home.toLocal8Bit());
  EXPECT_EQ(read("out.kml").count("<LineString>"), 2) << "lines, no polygon";
  EXPECT_EQ(read("out.kml").count("<Polygon>"), 0);
}

TEST_F(KmlFixture, ClassesObjectsAndAttributesGoOut) {
  InfoLayer* const thematic = layer(THEMATICMODEL, "Solos");
  Category& soils = *thematic->category();
  addClass(soils, "Argila São", 7);
  Vector* const borders = thematic->vector(vectorLines, true);
  insertPolygon(*borders, {500000, 7400000, 500100, 7400000, 500100, 7400100, 500000, 7400000}, 7);
  borders->flush();
  ASSERT_EQ(handler(thematic, "solos", wgs84.get())->ExportLines(borders, 0), 1);
  const auto out = handler(thematic, "solos", wgs84.get());
  ASSERT_EQ(out->ExportLines(borders, 0), 1);
  ASSERT_EQ(out->WriteToFile(), 1);
  const QByteArray classes = read("solos.kml");
  EXPECT_TRUE(classes.contains("<name>Solos</name>")) << classes.toStdString();
  EXPECT_TRUE(classes.contains(
      "<name>Argila S\xC3\xA3o</name><ExtendedData><Data name=\"CLASSE\"><value>Argila S\xC3\xA3o</value>"))
      << classes.toStdString();

  InfoLayer* const cadastral = layer(CADASTRALMODEL, "Postes");
  Vector* const poles = cadastral->vector(vectorLines, true);
  Category* const objects = category(OBJECTMODEL, "Poste");
  ASSERT_NE(dataBase->createAttributeTable(*objects, fieldList({{"ALTURA", fieldReal, 8, 2}})), 0);
  const KaldexObject object = newObject(objects, "P12", "Poste 12", {"9.5"});
  Point2d place(500000, 7400000);
  ASSERT_NE(poles->Insert(place), 0);
  Anchor anchor;
  anchor.InsertPoint(place);
  link(*cadastral, anchor, object);
  const auto second = handler(cadastral, "postes", wgs84.get());
  ASSERT_EQ(second->ExportAll(poles, 0), 1);
  ASSERT_EQ(second->WriteToFile(), 1);
  const QByteArray text = read("postes.kml");
  for (const char* part : {"<name>Poste 12</name>", "\"ROTULO\"><value>P12<", "\"CATEGORIA\"><value>Poste<",
                           "\"ALTURA\"><value>9.5<"}) {
    EXPECT_TRUE(text.contains(part)) << part << " in " << text.toStdString();
  }
}

TEST_F(KmlFixture, OutlinesAreTakenOverByImports) {
  write("in.kml", document(kMixed));
  const auto outline = std::make_shared<KmlOutline>(path("in.kml"));
  ASSERT_TRUE(outline->isValid());
  EXPECT_EQ(outline->name(), "Tudo");
  EXPECT_EQ(outline->points(), 1);
  EXPECT_EQ(outline->lines(), 1);
  EXPECT_EQ(outline->polygons(), 1);
  EXPECT_EQ(outline->dataNames(), QStringList("COD"));
  EXPECT_EQ(outline->extent(), Box(-45.1, -23.1, -44, -22));
  InfoLayer* const into = layer(THEMATICMODEL, "L");
  const auto in = handler(into, "in.kml", into->projection());
  in->use(outline);
  QFile::remove(path("in.kml"));
  EXPECT_EQ(in->ImportAll(into->vector(vectorLines, true), nullptr), 1);
  EXPECT_EQ(into->vector(vectorLines)->lineCount(), 3);
  EXPECT_FALSE(KmlOutline(path("in.kml")).isValid());
}

TEST_F(KmlFixture, OtherProgramsReadWhatIsWritten) {
  const QString reader = QStandardPaths::findExecutable("ogrinfo");
  if (reader.isEmpty()) GTEST_SKIP() << "there is no ogrinfo";
  InfoLayer* const from = layer(THEMATICMODEL, "Linhas");
  Vector* const vector = from->vector(vectorLines, true);
  insertLine(*vector, {500000, 7400000, 500100, 7400000});
  Point2d place(500000, 7400000);
  vector->Insert(place);
  for (const bool zipped : {false, true}) {
    const auto out = handler(from, "out", wgs84.get());
    out->setZipped(zipped);
    ASSERT_EQ(out->ExportAll(vector, 0), 1);
    ASSERT_EQ(out->WriteToFile(), 1);
    QProcess process;
    process.start(reader, {"-ro", "-al", "-so", path(zipped ? "out.kmz" : "out.kml")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), QByteArray());
    const QByteArray told = process.readAllStandardOutput();
    EXPECT_TRUE(told.contains("Feature Count: 2") || told.count("Feature Count: 1") == 2)
        << told.toStdString();
  }
}

}  // namespace

}  // namespace kaldex::test
