#include <QElapsedTimer>
#include <csignal>

#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

class ImportTest : public CliTest {};

QStringList texts(const QJsonValue& array) {
  QStringList list;
  for (const QJsonValue& value : array.toArray()) list << value.toString();
  return list;
}

TEST_F(ImportTest, ReportsInTheOrderThatReadersCountOn) {
  const Outcome done = importAscii(kTwoLines);
  int before = -1;
  for (const char* const key : {"result", "messages", "questions", "read", "written", "left_out", "renamed",
                                "encoding", "projection", "files", "seconds"}) {
    const int at = done.out.indexOf(QByteArray("\n  \"") + key + "\":");
    EXPECT_GT(at, before) << key;
    before = at;
  }
  const QJsonObject report = done.json();
  EXPECT_EQ(report["result"].toString(), QString("done"));
  EXPECT_EQ(report["read"].toObject()["lines"].toInt(), 2);
  EXPECT_EQ(report["written"].toObject()["lines"].toInt(), 2);
  EXPECT_EQ(report["projection"].toObject()["reason"].toString(), QString("unknown"));
  EXPECT_TRUE(report["messages"].toArray().isEmpty());
  EXPECT_TRUE(done.err.isEmpty()) << done.err.toStdString();
}

TEST_F(ImportTest, MakesProjectAndLayerFromOptionsOrTheFile) {
  importAscii(kTwoLines,
              {"--crs", "EPSG:31983", "--model", "network", "--category", "vias", "--box", "-5,-6,70,80.5",
               "--scale", "1:2500"},
              1);  // a network layer takes NETWORK sections
  EXPECT_TRUE(isEmpty());
  importAscii(kTwoLines,
              {"--crs", "EPSG:31983", "--category", "vias", "--box", "-5,-6,70,80.5", "--scale", "1:2500"});
  QJsonObject made = layer("p/l");
  EXPECT_EQ(made["model"].toString(), QString("thematic"));
  EXPECT_EQ(made["category"].toString(), QString("vias"));
  EXPECT_EQ(made["scale"].toDouble(), 2500.0);
  EXPECT_EQ(made["box"].toArray(), QJsonArray({-5, -6, 70, 80.5}));
  EXPECT_TRUE(made["projection"].toString().contains("UTM"));
  EXPECT_EQ(made["counts"].toObject()["lines"].toInt(), 2);

  runJson({"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/other"});
  made = layer("p/other");
  EXPECT_EQ(made["category"].toString(), QString("other"));
  EXPECT_EQ(made["box"].toArray(), QJsonArray({0, 0, 20, 5}));
  // What is there already isn't changed, and not silently used for something else.
  for (const QStringList& clash : {QStringList{"--crs", "EPSG:4326"}, QStringList{"--model", "cadastral"},
                                   QStringList{"--category", "x"}}) {
    const Outcome refused =
        runJson(QStringList{"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/l"} + clash, 1);
    EXPECT_EQ(texts(refused.json()["messages"]).size(), 1);
  }
  EXPECT_EQ(count("p/l", "lines"), 2);
}

TEST_F(ImportTest, KindsMakeTheirRepresentations) {
  write("c.kdx", "CONTOURLINES\nLINE3D\nHEIGHT 10\n0 0\n5 5\nEND\nEND\nLINES\n1 1\n2 3\nEND\nEND\n");
  runJson({"import", "ascii", "contours", "c.kdx", "base.gpkg", "p/contours"});
  EXPECT_EQ(layer("p/contours")["model"].toString(), QString("numeric"));
  EXPECT_EQ(count("p/contours", "lines"), 1);
  runJson({"import", "ascii", "features", "c.kdx", "base.gpkg", "p/all"});
  EXPECT_EQ(count("p/all", "lines"), 2);
  write("n.kdx", "NETWORK\n1 0.5 0.5 3\n0 0\n5 5\nEND\nEND\n");
  runJson({"import", "ascii", "lines", "n.kdx", "base.gpkg", "p/net"});
  EXPECT_EQ(layer("p/net")["model"].toString(), QString("network"));
}

TEST_F(ImportTest, AFailureNamesItsPlaceAndLeavesTheDatabaseAsItWas) {
  const QByteArray broken = "LINES\n0 0\n1 1\nEND\n2 2\n x 3\nEND\nEND\n";
  const Outcome failed = importAscii(broken, {}, 1);
  EXPECT_EQ(failed.json()["result"].toString(), QString("failed"));
  const QStringList told = texts(failed.json()["messages"]);
  ASSERT_EQ(told.size(), 1);
  EXPECT_TRUE(told[0].startsWith("in.kdx:6:")) << told[0].toStdString();
  EXPECT_TRUE(failed.err.contains("in.kdx:6:"));
  EXPECT_TRUE(failed.json()["written"].toObject().isEmpty());
  EXPECT_TRUE(isEmpty());
  importAscii(broken, {"--keep-partial"}, 1);
  EXPECT_EQ(count("p/l", "lines"), 1);
}

// The copy that was mended must not be what messages are about.
TEST_F(ImportTest, PlacesAreThoseOfTheFileThatWasGiven) {
  const Outcome failed = importAscii("LINES\r\n0 0\r\n1 x\r\nEND\r\nEND\r\n", {}, 1);
  EXPECT_TRUE(texts(failed.json()["messages"]).value(0).startsWith("in.kdx:3:")) << failed.out.toStdString();
}

TEST_F(ImportTest, SaysItselfWhatWasMissing) {
  const Outcome failed = importAscii("TABLE\nEND\n", {}, 1);
  const QString told = texts(failed.json()["messages"]).join("\n");
  EXPECT_TRUE(told.contains("LINES") && told.contains("in.kdx")) << told.toStdString();
  EXPECT_TRUE(isEmpty());
  EXPECT_EQ(run({"import", "ascii", "lines", "absent.kdx", "base.gpkg", "p/l"}).code, 1);
  EXPECT_EQ(run({"import", "ascii", "lines", ".", "base.gpkg", "p/l"}).code, 1);
  const Outcome nowhere = run({"import", "ascii", "lines", "in.kdx", "absent.gpkg", "p/l"});
  EXPECT_EQ(nowhere.code, 1);
  EXPECT_TRUE(nowhere.err.contains("kaldex init absent.gpkg")) << nowhere.err.toStdString();
  EXPECT_FALSE(entries().contains("absent.gpkg"));
}

TEST_F(ImportTest, ReadingWithoutWritingIsAFailure) {
  const Outcome failed = importAscii("LINES\n1 1\n1 1\nEND\n5 5\nEND\nEND\n", {}, 1);
  EXPECT_EQ(failed.json()["result"].toString(), QString("failed"));
  EXPECT_FALSE(failed.json()["messages"].toArray().isEmpty());
  EXPECT_TRUE(isEmpty());
}

// A shapefile that holds null shapes only, with a definition of its projection that is nonsense.
TEST_F(ImportTest, WhatIsLeftOutWasReadAndNonsenseIsToldBriefly) {
  ByteMaker shp;
  shp.header(50 + 2 * 6, 5, {0, 0, 1, 1});
  for (const int number : {1, 2}) shp.big({number, 2}).little({0});
  write("void.shp", shp);
  write("void.prj", QByteArray(50000, 'A'));
  const Outcome failed =
      runJson({"import", "shapefile", "features", "void.shp", "base.gpkg", "p/l", "--no"}, 1);
  EXPECT_EQ(failed.json()["left_out"].toObject()["null_shape"].toInt(), 2);
  EXPECT_TRUE(isEmpty());
  for (const QString& note : texts(failed.json()["notes"])) EXPECT_LE(note.size(), 500);
}

TEST_F(ImportTest, ADryRunKeepsNothing) {
  const Outcome done = importAscii(kTwoLines, {"--dry-run"});
  EXPECT_EQ(done.json()["written"].toObject()["lines"].toInt(), 2);
  EXPECT_TRUE(isEmpty());
  EXPECT_EQ(importAscii("LINES\nx\n", {"--dry-run", "--keep-partial"}, 1).code, 1);
  EXPECT_TRUE(isEmpty());
}

TEST_F(ImportTest, SectionsThatStayBehindAreTold) {
  const Outcome done = importAscii(QByteArray(kTwoLines) + kTwoLines);
  EXPECT_TRUE(texts(done.json()["notes"]).join("\n").contains("LINES")) << done.out.toStdString();
  EXPECT_EQ(count("p/l", "lines"), 2);
}

TEST_F(ImportTest, TextsAreBroughtIntoFormUnlessStrict) {
  const QByteArray dos = "//a\xE7\xE3o\r\nLINES\r\n0 0\r\n10 5\r\nEND\r\nEND\r\n";
  importAscii(dos, {"--strict"}, 1);
  EXPECT_TRUE(isEmpty());
  // Told, in addition to what was made in the database.
  EXPECT_FALSE(texts(importAscii(dos).json()["notes"]).filter("Prepar").isEmpty());
  const Outcome plain = importAscii(QByteArray(dos).replace("\r", ""));
  EXPECT_TRUE(texts(plain.json()["notes"]).filter("Prepar").isEmpty()) << plain.out.toStdString();
  EXPECT_EQ(count("p/l", "lines"), 2);
}

TEST_F(ImportTest, AnInterruptionTakesEverythingBack) {
  const QByteArray record = "350000.123456     7400000.654321\n350001.5     7400002.5\nEND\n";
  write("in.kdx", "LINES\n" + record.repeated(400000) + "END\n");
  const QByteArray before = read("base.gpkg");
  QProcess process;
  start(process, {"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/l", "--json"});
  // It has begun when its changes need a journal.
  QElapsedTimer waited;
  waited.start();
  while (!QFile::exists(path("base.gpkg-journal")) && process.state() != QProcess::NotRunning &&
         waited.elapsed() < 60000)
    process.waitForFinished(1);
  ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
  const Outcome cancelled = finish(process);
  EXPECT_EQ(cancelled.code, 130) << cancelled.err.toStdString();
  EXPECT_EQ(cancelled.json()["result"].toString(), QString("cancelled"));
  EXPECT_TRUE(isEmpty());
}

TEST_F(ImportTest, NamesInAnyEncoding) {
  for (const QByteArray& name : {QByteArray("dados \xC3\xA7.kdx"), QByteArray("dados \xE7.kdx")}) {
    const QByteArray full = path(".").toLocal8Bit() + "/" + name;
    FILE* const file = std::fopen(full.constData(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs(kTwoLines, file);
    std::fclose(file);
    // QProcess can't pass bytes on that are none of the locale's.
    const QByteArray command = "cd '" + path(".").toLocal8Bit() +
                               "' && '" KALDEX_COMMAND "' import ascii lines '" + name +
                               "' base.gpkg p/l --quiet";
    EXPECT_EQ(std::system(command.constData()), 0) << name.toHex().toStdString();
    std::remove(full.constData());
  }
  EXPECT_EQ(count("p/l", "lines"), 4);
}

// What comes back out must be what went in, in every form of coordinates.
TEST_F(ImportTest, RoundTripsByteForByte) {
  const QByteArray text =
      "LINES\n300100.5 7400200.25\n300900.125 7400900\n299999 7399999\nEND\n310000 7410000\n310001 "
      "7410002\nEND\nEND\n";
  importAscii(text, {"--crs", "EPSG:31983", "--scale", "25000"});
  for (const char* const form : {"planar", "gms", "deg", "sec"}) {
    const QString first = QString("%1_1.kdx").arg(form);
    const QString second = QString("%1_2.kdx").arg(form);
    const QString dataBase = QString("%1.gpkg").arg(form);
    EXPECT_EQ(run({"export", "ascii", "lines", "base.gpkg", "p/l", first, "--coords", form}).code, 0);
    EXPECT_EQ(run({"init", dataBase}).code, 0);
    const Outcome in = runJson({"import", "ascii", "lines", first, dataBase, "p/l"});
    EXPECT_EQ(in.json()["projection"].toObject()["reason"].toString(), QString("header"));
    EXPECT_EQ(run({"export", "ascii", "lines", dataBase, "p/l", second, "--coords", form}).code, 0);
    EXPECT_EQ(read(first), read(second)) << form;
    EXPECT_FALSE(read(first).isEmpty());
  }
}

}  // namespace
}  // namespace kaldex::test
