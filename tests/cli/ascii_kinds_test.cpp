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

}  // namespace
}  // namespace kaldex::test
