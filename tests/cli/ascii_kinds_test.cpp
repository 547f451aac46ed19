#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

class AsciiKindsTest : public CliTest {
 protected:
  Outcome import(const char* kind, const QByteArray& text, const QString& place, const QStringList& more = {},
                 int code = 0) const {
    write("in.kdx", text);
    return runJson(QStringList{"import", "ascii", kind, "in.kdx", "base.gpkg", place} + more, code);
  }
  Outcome exportAs(const char* kind, const QString& place, const QString& file, const QStringList& more = {},
                   int code = 0) const {
    return runJson(QStringList{"export", "ascii", kind, "base.gpkg", place, file} + more, code);
  }
};

TEST_F(AsciiKindsTest, SamplesAndTheirTriangles) {
  import("samples",
         "SAMPLE\nPOINT3D\n0 0 1\n10 0 2\n10 10 3\n0 10 4\nEND\nLINE3D\nHEIGHT 5\n4 4\n5 6\nEND\nEND\n",
         "p/s");
  EXPECT_EQ(count("p/s", "samples"), 4);
  EXPECT_EQ(count("p/s", "lines"), 1);
  exportAs("tin", "p/s", "t.kdx", {}, 1);
  runJson({"triangulate", "base.gpkg", "p/s", "--dry-run"});
  exportAs("tin", "p/s", "t.kdx", {}, 1);
  const QJsonObject made = runJson({"triangulate", "base.gpkg", "p/s"}).json();
  EXPECT_EQ(made["written"].toObject()["triangles"].toInt(), 6);
  runJson({"triangulate", "base.gpkg", "p/s"});
  exportAs("tin", "p/s", "t.kdx");
  exportAs("tin3d", "p/s", "t.kdx", {"--append"});
  const QByteArray file = read("t.kdx");
  EXPECT_EQ(file.count("\nEDGE \n"), 11);
  EXPECT_EQ(file.count("\nEDGE\n"), 6);
  runJson({"triangulate", "base.gpkg", "p/none"}, 1);
  import("lines", "LINES\n0 0\n1 1\nEND\nEND\n", "p/l");
  runJson({"triangulate", "base.gpkg", "p/l"}, 1);
}

TEST_F(AsciiKindsTest, BreakLinesHaveAFileBesideThatOfTheSamples) {
  import("features", "SAMPLE\nPOINT3D\n0 0 1\n10 9 2\nEND\nEND\nLINES\n1 1\n2 2\nEND\nEND\n", "p/s");
  EXPECT_EQ(count("p/s", "lines"), 1);
  const Outcome first = exportAs("samples", "p/s", "x_L3D.kdx");
  EXPECT_EQ(first.json()["files"].toArray().size(), 2);
  const QByteArray lines = read("x_L2D.kdx");
  EXPECT_EQ(lines.count("\nLINES"), 1);
  exportAs("samples", "p/s", "x_L3D.kdx", {"--append"});
  EXPECT_EQ(read("x_L2D.kdx"), lines + lines);
  QFile::remove(path("x_L3D.kdx"));
  exportAs("samples", "p/s", "x_L3D.kdx", {}, 1);
  EXPECT_EQ(read("x_L2D.kdx"), lines + lines);
  EXPECT_FALSE(entries().contains("x_L3D.kdx"));
  exportAs("samples", "p/s", "x_L3D.kdx", {"--overwrite"});
  EXPECT_EQ(read("x_L2D.kdx"), lines);
}

TEST_F(AsciiKindsTest, PointsOfClassesAndObjects) {
  const QByteArray points = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;2;Mata\n30;40;Rio\nEND\n";
  // The box is that of the delimited coordinates.
  const QJsonObject made = import("points", points, "p/t", {"--yes"}).json();
  EXPECT_EQ(made["written"].toObject()["points"].toInt(), 2);
  EXPECT_EQ(count("p/t", "points"), 2);
  import("points", points, "p/no", {"--no"}, 3);
  import("points", points, "p/o", {"--model", "object", "--yes"}, 1);
  EXPECT_FALSE(runJson({"info", "base.gpkg"}).out.contains("\"o\""));
  import("points", "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;2;p1;Poste;Postes\nEND\n", "p/o",
         {"--model", "object", "--yes"});
  EXPECT_EQ(count("p/o", "objects"), 1);
  import("points", "LINES\n0 0\n1 1\nEND\nEND\n", "p/x", {}, 1);
}

TEST_F(AsciiKindsTest, TextsComeBack) {
  import("texts", "TEXT\n1;2;Rua A;30;;2\n30.5;40;Rua B\nEND\n", "p/t");
  EXPECT_EQ(count("p/t", "texts"), 2);
  exportAs("texts", "p/t", "t.kdx");
  EXPECT_TRUE(read("t.kdx").contains(";Rua A; 30.000000 ; 0.000000 ; 2.000000 ;"));
  runJson({"import", "ascii", "features", "t.kdx", "base.gpkg", "p/u"});
  EXPECT_EQ(count("p/u", "texts"), 2);
  import("lines", "LINES\n0 0\n1 1\nEND\nEND\n", "p/l");
  exportAs("texts", "p/l", "n.kdx", {}, 1);
}

TEST_F(AsciiKindsTest, TurnsOfANetwork) {
  const QByteArray lines =
      "NETWORK\n1 1 1 0\n500000 7400000\n500100 7400000\nEND\n2 1 1 0\n500100 7400000\n500200 "
      "7400050\nEND\nEND\n";
  import("lines", lines, "p/n", {"--crs", "EPSG:31983", "--model", "network"});
  const QByteArray turn =
      "O 45 0 0.00000 S 23 30 36.70098 O 44 59 56.47378 S 23 30 36.70097 "
      "O 44 59 52.94758 S 23 30 35.07502 \n";
  const QByteArray file = "TURNS\nINFO\nINFO_END\n" + turn + "END_TURNS\n";
  import("turns", file, "p/n", {"--dry-run"});
  exportAs("turns", "p/n", "none.kdx", {"--coords", "gms"});
  EXPECT_TRUE(read("none.kdx").startsWith("TURNS\nINFO\n"));
  EXPECT_TRUE(read("none.kdx").endsWith("\nINFO_END\nEND_TURNS\n"));
  EXPECT_EQ(import("turns", file, "p/n").json()["written"].toObject()["turns"].toInt(), 1);
  exportAs("turns", "p/n", "one.kdx", {"--coords", "gms"});
  EXPECT_TRUE(read("one.kdx").endsWith("\nINFO_END\n" + turn + "END_TURNS\n"));
  import("turns", "TURNS\nINFO\nINFO_END\nEND_TURNS\n", "p/n", {}, 1);
}

constexpr char kAllSections[] =
    "LINES\n0 0\n10 5\nEND\n20 20\n30 20\nEND\nEND\n"
    "POINT2D\nINFO\nSEPARATOR ;\nTHEMACLASS\n1 2 3 Mata\n4 5 6 Rio\nINFO_END\n1;2;Mata\nEND\n"
    "TEXT\nINFO\nSEPARATOR ;\nINFO_END\n3;4;Rua A\nEND\n"
    "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n25;20;Rio\nEND\n"
    "TABLE\nINFO\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   Lotes\nT_KEY ; TEXT ; 32 ; 0\n"
    "dono ; TEXT ; 40 ; 0\npreco ; REAL ; 17 ; 8\nINFO_END\nL1 ; Ana ; 2.5\nEND\n"
    "TIN\nINFO\nINFO_END\nEDGE\n1 1 5\n2 9 5\nEND\nEND\n"
    "TURNS\nINFO\nINFO_END\nEND_TURNS\n"
    "NETWORK_OBJECTS\nCATEGORY_OBJ \"Vias\"\nLABEL \"v1\"\nLINES\n7 8\nNODES\n9 10\nEND\n"
    "SAMPLE\nPOINT3D\n-1 -2 3\nEND\nEND\n";

TEST_F(AsciiKindsTest, FeaturesAreAllThatTheLayerCanTake) {
  const Outcome done =
      import("features", kAllSections, "p/t", {"--model", "thematic", "--yes", "--box", "0,0,50,50"});
  const QJsonObject written = done.json()["written"].toObject();
  for (const auto& [kind, number] : {std::pair{"lines", 2}, {"points", 1}, {"texts", 1}, {"labels", 1}})
    EXPECT_EQ(written[kind].toInt(), number) << kind;
  EXPECT_EQ(layer("p/t")["classes"].toArray(), QJsonArray({"Mata", "Rio"}));
  EXPECT_EQ(done.json()["left_out"].toObject()["unsupported"].toInt(), 5);
  EXPECT_TRUE(told(done).contains("kaldex import ascii table in.kdx base.gpkg Lotes"))
      << told(done).toStdString();
  const QJsonObject samples = import("features", kAllSections, "p/n").json()["written"].toObject();
  EXPECT_EQ(samples["samples"].toInt(), 1);
  // What it would take for a network is told of label points.
  const Outcome hidden =
      import("lines", "NETWORK_OBJECTS\nEND\nNETWORK\n1 1 1 1\n0 0\n1 1\nEND\nEND\n", "p/net", {}, 1);
  EXPECT_TRUE(told(hidden).contains("NETWORK_OBJECTS")) << told(hidden).toStdString();
}

// Sections of one file may have coordinates of different forms.
TEST_F(AsciiKindsTest, EachSectionHasItsOwnForm) {
  import("lines", "LINES\n500000 7400000\n500100 7400050\nEND\nEND\n", "p/t",
         {"--crs", "EPSG:31983", "--box", "499000,7399000,502000,7402000"});
  import("points", "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n500020;7400030;Nenhuma\nEND\n", "p/t", {"--yes"});
  exportAs("lines", "p/t", "both.kdx");
  exportAs("points", "p/t", "both.kdx", {"--append", "--coords", "deg", "--separator", ";"});
  runJson({"import", "ascii", "features", "both.kdx", "base.gpkg", "q/t", "--yes"});
  exportAs("points", "p/t", "before.kdx", {"--separator", ";"});
  exportAs("points", "q/t", "after.kdx", {"--separator", ";"});
  const auto records = [this](const char* file) {
    const QByteArray text = read(file);
    return text.mid(text.indexOf("INFO_END"));
  };
  EXPECT_TRUE(records("after.kdx").contains("500019.9999")) << records("after.kdx").toStdString();
  EXPECT_EQ(records("after.kdx").count('\n'), records("before.kdx").count('\n'));
}

TEST_F(AsciiKindsTest, InfoTellsEverySection) {
  write("all.kdx", kAllSections);
  const QJsonArray sections = runJson({"info", "all.kdx"}).json()["sections"].toArray();
  const struct {
    const char* keyword;
    int line;
    QJsonArray box;
  } wanted[] = {{"LINES", 1, {0, 0, 30, 20}},
                {"POINT2D", 9, {1, 2, 1, 2}},
                {"TEXT", 18, {3, 4, 3, 4}},
                {"POINTS", 24, {25, 20, 25, 20}},
                {"TABLE", 30, {}},
                {"TIN", 41, {1, 1, 2, 9}},
                {"TURNS", 49, {}},
                {"NETWORK_OBJECTS", 53, {7, 8, 9, 10}},
                {"SAMPLE", 61, {-1, -2, -1, -2}}};
  ASSERT_EQ(sections.size(), 9);
  for (int i = 0; i < sections.size(); ++i) {
    const QJsonObject section = sections[i].toObject();
    EXPECT_EQ(section["keyword"].toString(), QString(wanted[i].keyword));
    EXPECT_EQ(section["line"].toInt(), wanted[i].line) << wanted[i].keyword;
    EXPECT_EQ(section["box"].toArray(), wanted[i].box) << wanted[i].keyword;
  }
  EXPECT_EQ(sections[1].toObject()["classes"].toArray(), QJsonArray({"Mata", "Rio"}));
  EXPECT_EQ(sections[1].toObject()["separator"].toString(), QString(";"));
  const QJsonObject table = sections[4].toObject();
  EXPECT_EQ(table["category"].toString(), QString("Lotes"));
  ASSERT_EQ(table["columns"].toArray().size(), 2);
  EXPECT_EQ(table["columns"].toArray().at(0).toObject()["size"].toInt(), 40);
  EXPECT_EQ(table["columns"].toArray().at(1).toObject()["type"].toString(), QString("real"));
  const QByteArray text = run({"info", "all.kdx"}).out;
  EXPECT_TRUE(text.contains("dono text(40), preco real(17,8)")) << text.toStdString();
  EXPECT_EQ(text.count("\n  "), 1 + 9 + 7 + 2 + 1 + 1 + 3);
}

}  // namespace
}  // namespace kaldex::test
