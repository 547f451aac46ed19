#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

class ExchangeTest : public CliTest {
 protected:
  ExchangeTest() {
    importAscii("LINES\n500000 7400000\n500100 7400050\nEND\nEND\n", {"--crs", "EPSG:31983"});
  }
  static QByteArray document(const QByteArray& coordinates) {
    return "<kml><Document><name>Rios</name><Placemark><name>a</name><LineString><coordinates>" +
           coordinates + "</coordinates></LineString></Placemark></Document></kml>";
  }
};

TEST_F(ExchangeTest, LinesGoThroughEveryFormat) {
  for (const QString name : {"a.kml", "B.KMZ", "c.gen"}) {
    const QString format = name == "c.gen" ? "arcinfo" : "kml";
    const QJsonObject made = runJson({"export", format, "lines", "base.gpkg", "p/l", name}).json();
    EXPECT_EQ(made["written"].toObject()["lines"].toInt(), 1) << name.toStdString();
    EXPECT_EQ(made["files"].toArray(), QJsonArray({name}));
    EXPECT_EQ(runJson({"info", name}).json()["format"].toString(), format);
    const QString place = "p/" + name.left(1);
    const QJsonObject taken = runJson({"import", format, "features", name, "base.gpkg", place}).json();
    EXPECT_EQ(taken["written"].toObject()["lines"].toInt(), 1) << name.toStdString();
    EXPECT_EQ(count(place, "lines"), 1);
    const QJsonArray box = layer(place)["box"].toArray();
    EXPECT_NEAR(box[0].toDouble(), 500000.0, 1.0) << "in the project's plane";
  }
  for (const QString target : {"d.gen", "e.kdx", "f.kmz", "g.shp", "h.gpkg"}) {
    const QString source = target == "d.gen" ? "a.kml" : "c.gen";
    const QJsonObject done = runJson({"convert", source, target, "--crs", "EPSG:31983"}).json();
    EXPECT_EQ(done["written"].toObject()["lines"].toInt(), 1) << target.toStdString();
  }
}

TEST_F(ExchangeTest, PointsBesideTheLinesThatWereAskedForAreTold) {
  write("a.dxf", "0\nLINE\n8\nA\n10\n0\n20\n0\n11\n5\n21\n5\n0\nPOINT\n8\nA\n10\n1\n20\n2\n0\nEOF\n");
  const QJsonObject done =
      runJson({"convert", "a.dxf", "a.kdx", "--kind", "lines", "--crs", "NONE", "--yes"}).json();
  EXPECT_EQ(done["written"].toObject(), QJsonObject({{"lines", 1}}));
  EXPECT_EQ(done["left_out"].toObject(), QJsonObject({{"other_kind", 1}}));
}

TEST_F(ExchangeTest, PolygonLinesWithAPlaceForTheirLabelAreUngenerateLines) {
  write("a.gen", "7 20.5 20.5\n20 20\n30 20\n30 30\n20 20\nEND\nEND\n");
  EXPECT_EQ(runJson({"info", "a.gen"}).json()["format"].toString(), "arcinfo");
  EXPECT_EQ(runJson({"convert", "a.gen", "a.kdx", "--crs", "NONE", "--yes"}).json()["written"].toObject(),
            QJsonObject({{"lines", 1}}));
}

TEST_F(ExchangeTest, SeveralFilesDoNotFitIntoAPipe) {
  write("a.kdx", "SAMPLE\nLINE3D\nHEIGHT 5\n1 1\n9 9\nEND\nPOINT3D\n2 2 5\nEND\nEND\n");
  run({"import", "ascii", "samples", "a.kdx", "base.gpkg", "q/s", "--crs", "NONE", "--yes", "--quiet"});
  const Outcome refused = run({"export", "arcinfo", "samples", "base.gpkg", "q/s", "/dev/stdout", "--quiet"});
  EXPECT_EQ(refused.code, 1);
  EXPECT_TRUE(refused.out.isEmpty() && refused.err.contains(" 2 ")) << refused.err.toStdString();
}

TEST_F(ExchangeTest, BrokenDocumentsAreToldWithTheirPlace) {
  write("a.kml", "<kml>\n<Placemark><name>a & b</name></Placemark></kml>");
  const QJsonObject failed = runJson({"import", "kml", "features", "a.kml", "base.gpkg", "p/k"}, 1).json();
  const QString told = QJsonDocument(failed["messages"].toArray()).toJson();
  EXPECT_TRUE(told.contains("linha 2") || told.contains("line 2")) << told.toStdString();
  EXPECT_TRUE(runJson({"info", "a.kml"}).json().contains("error"));
  EXPECT_EQ(runJson({"info", "base.gpkg"}).json()["projects"].toArray().size(), 1);
}

TEST_F(ExchangeTest, NamesAndDataAreInTheReport) {
  write("a.kml", document("-45,-23 -45.1,-23.1"));
  const QJsonObject done = runJson({"import", "kml", "features", "a.kml", "base.gpkg", "q/k"}).json();
  EXPECT_EQ(done["notes"].toArray().size(), 3) << "project, layer, names";
  EXPECT_NEAR(layer("q/k")["box"].toArray()[0].toDouble(), -45.1, 1e-6) << "degrees without --crs";
}

}  // namespace
}  // namespace kaldex::test
