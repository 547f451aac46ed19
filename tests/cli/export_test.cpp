#include <sys/stat.h>

#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

class ExportTest : public CliTest {
 protected:
  ExportTest() {
    importAscii(kTwoLines, {"--crs", "EPSG:31983"});
    writeParcels();
    EXPECT_EQ(run({"import", "shapefile", "features", "lots.shp", "base.gpkg", "p/lots", "--model",
                   "cadastral", "--yes"})
                  .code,
              0);
    QDir(path(".")).mkdir("out");
  }
  Outcome exportAs(const QStringList& words, const QString& file, const QStringList& more = {},
                   int code = 0) const {
    return runJson(QStringList{"export"} + words + QStringList{file} + more, code);
  }
  const QStringList lines_{"ascii", "lines", "base.gpkg", "p/l"};
};

TEST_F(ExportTest, AnExistingFileIsOnlyTouchedWhenAsked) {
  const Outcome made = exportAs(lines_, "out/a.kdx");
  EXPECT_EQ(made.json()["files"].toArray(), QJsonArray({"out/a.kdx"}));
  EXPECT_EQ(made.json()["written"].toObject()["lines"].toInt(), 2);
  const QByteArray once = read("out/a.kdx");
  EXPECT_EQ(once.count("\nLINES"), 1);
  EXPECT_FALSE(exportAs(lines_, "out/a.kdx", {}, 1).json()["messages"].toArray().isEmpty());
  EXPECT_EQ(read("out/a.kdx"), once);
  exportAs(lines_, "out/a.kdx", {"--append"});
  EXPECT_EQ(read("out/a.kdx"), once + once);
  exportAs(lines_, "out/a.kdx", {"--overwrite"});
  EXPECT_EQ(read("out/a.kdx"), once);
  exportAs(lines_, "out/b.kdx", {"--dry-run"});
  exportAs(lines_, "out/c.kdx", {"--append"});
  EXPECT_EQ(entries("out"), QStringList({"a.kdx", "c.kdx"}));
}

TEST_F(ExportTest, AFailedExportLeavesNothingAndNothingChanged) {
  write("out/a.kdx", "mine");
  exportAs(lines_, "out/a.kdx", {"--overwrite", "--used-classes"}, 1);
  exportAs(lines_, "out/new.kdx", {"--used-classes"}, 1);
  exportAs({"ascii", "contours", "base.gpkg", "p/l"}, "out/a.kdx", {"--append"}, 1);
  exportAs({"shapefile", "samples", "base.gpkg", "p/l"}, "out/s.shp", {}, 1);
  exportAs({"shapefile", "lines", "base.gpkg", "p/l"}, "out/s.shp", {"--by", "object"}, 1);
  exportAs({"ascii", "lines", "base.gpkg", "p/none"}, "out/n.kdx", {}, 1);
  exportAs({"ascii", "lines", "base.gpkg", "none/l"}, "out/n.kdx", {}, 1);
  exportAs(lines_, "nowhere/n.kdx", {}, 1);
  exportAs(lines_, "/dev/full", {}, 1);
  EXPECT_EQ(entries("out"), QStringList("a.kdx"));
  EXPECT_EQ(read("out/a.kdx"), QByteArray("mine"));
}

TEST_F(ExportTest, AShapefileIsMadeAndReplacedAsAWhole) {
  const QStringList lots{"shapefile", "polygons", "base.gpkg", "p/lots"};
  const Outcome made = exportAs(lots, "out/lots");
  EXPECT_EQ(made.json()["files"].toArray().size(), 5);
  // Reasons are codes in any language.
  EXPECT_EQ(made.json()["projection"].toObject()["reason"].toString(), QString("layer"));
  EXPECT_EQ(made.json()["encoding"].toObject()["reason"].toString(), QString("format"));
  EXPECT_EQ(made.json()["written"].toObject()["polygons"].toInt(), 2);
  EXPECT_EQ(entries("out"), QStringList({"lots.cpg", "lots.dbf", "lots.prj", "lots.shp", "lots.shx"}));
  // Any of its files is in the way; and what the new one doesn't have would speak for the old one.
  QFile::remove(path("out/lots.shp"));
  exportAs(lots, "out/lots.shp", {}, 1);
  write("out/lots.qix", "old");
  exportAs(lots, "out/lots.shp", {"--overwrite", "--coords", "sec"});
  EXPECT_EQ(entries("out"), QStringList({"lots.cpg", "lots.dbf", "lots.shp", "lots.shx"}));
  exportAs(lots, "out/lots.SHP", {"--overwrite"});
  EXPECT_TRUE(entries("out").contains("lots.prj"));
}

TEST_F(ExportTest, RecordsStandForClassesOrObjects) {
  const QStringList lots{"shapefile", "polygons", "base.gpkg", "p/lots"};
  exportAs(lots, "out/c.shp");
  exportAs(lots, "out/o.shp", {"--by", "object"});
  const auto columns = [this](const char* file) {
    QStringList names;
    for (const QJsonValue& column : runJson({"info", file}).json()["columns"].toArray())
      names << column.toObject()["name"].toString();
    return names;
  };
  EXPECT_TRUE(columns("out/c.shp").contains("KDXCLASSE"));
  EXPECT_TRUE(columns("out/o.shp").contains("OWNER"));
  EXPECT_TRUE(columns("out/o.shp").contains("KDXROTULO"));
}

TEST_F(ExportTest, LinksAndRightsStay) {
  exportAs(lines_, "out/a.kdx");
  ASSERT_TRUE(QFile::link("a.kdx", path("out/link.kdx")));
  QFile::setPermissions(path("out/a.kdx"), QFile::ReadOwner | QFile::WriteOwner);
  exportAs(lines_, "out/link.kdx", {"--append"});
  EXPECT_TRUE(QFileInfo(path("out/link.kdx")).isSymLink());
  EXPECT_EQ(read("out/a.kdx").count("\nLINES"), 2);
  struct stat status {};
  ASSERT_EQ(stat(path("out/a.kdx").toLocal8Bit().constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
}

// Whatever was asked: neither what is read nor a folder with all that it holds may be replaced.
TEST_F(ExportTest, SourcesAndFoldersAreNeverReplaced) {
  QDir(path(".")).mkpath("out/full.kdx");
  QDir(path(".")).mkpath("out/lots.prj");
  write("out/full.kdx/precious", "mine");
  ASSERT_TRUE(QFile::link("../base.gpkg", path("out/link.kdx")));
  ASSERT_TRUE(QFile::link("base.gpkg", path("base.dbf")));
  const QByteArray base = read("base.gpkg");
  const QByteArray parcels = read("lots.shp") + read("lots.dbf");
  const QStringList lots{"export", "shapefile", "polygons", "base.gpkg", "p/lots"};
  const QList<QStringList> wrong = {
      QStringList{"export"} + lines_ + QStringList{"base.gpkg", "--overwrite"},
      QStringList{"export"} + lines_ + QStringList{"out/../base.gpkg", "--append"},
      QStringList{"export"} + lines_ + QStringList{"out/link.kdx", "--overwrite"},
      QStringList{"export"} + lines_ + QStringList{"out/full.kdx", "--overwrite"},
      QStringList{"export"} + lines_ + QStringList{"out/"},
      lots + QStringList{"base.shp", "--overwrite"},
      lots + QStringList{"out/lots.shp", "--overwrite"},
      lots + QStringList{"."},
      lots + QStringList{"out/"},
      {"convert", "lots.shp", "./lots.shp", "--overwrite", "--yes"},
      {"convert", "lots.dbf", "lots.shp", "--overwrite", "--yes"},
      {"convert", "lots.shp", "out/full.kdx", "--overwrite", "--yes"},
      {"draw", "base.gpkg", "p", "base.gpkg", "--overwrite"},
      {"draw", "base.gpkg", "p", "out", "--overwrite"},
  };
  for (const QStringList& words : wrong) {
    const Outcome done = runJson(words, 1);
    EXPECT_EQ(done.json()["messages"].toArray().size(), 1) << words.join(' ').toStdString();
    EXPECT_TRUE(read("base.gpkg") == base) << words.join(' ').toStdString();
  }
  EXPECT_TRUE(read("lots.shp") + read("lots.dbf") == parcels);
  EXPECT_EQ(read("out/full.kdx/precious"), QByteArray("mine"));
  EXPECT_EQ(entries("out"), QStringList({"full.kdx", "link.kdx", "lots.prj"}));
}

TEST_F(ExportTest, AMapGoesIntoADeviceAndDoesNotReplaceIt) {
  ASSERT_EQ(mkfifo(path("out/pipe.png").toLocal8Bit().constData(), 0600), 0);
  QProcess reader;
  reader.start("cat", {path("out/pipe.png")});
  EXPECT_EQ(run({"draw", "base.gpkg", "p", "out/pipe.png", "--overwrite", "--size", "64x64"}).code, 0);
  ASSERT_TRUE(reader.waitForFinished(30000));
  EXPECT_TRUE(reader.readAllStandardOutput().startsWith("\x89PNG"));
  struct stat status {};
  ASSERT_EQ(stat(path("out/pipe.png").toLocal8Bit().constData(), &status), 0);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(ExportTest, CanGoToStandardOutput) {
  const Outcome done = run({"export", "ascii", "lines", "base.gpkg", "p/l", "/dev/stdout", "--quiet"});
  EXPECT_EQ(done.code, 0);
  EXPECT_TRUE(done.out.startsWith("\nLINES\nINFO\n")) << done.out.left(40).toStdString();
}

}  // namespace
}  // namespace kaldex::test
