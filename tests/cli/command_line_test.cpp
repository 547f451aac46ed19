#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

const QStringList kCommands = {"init", "import", "export",   "convert",
                               "info", "draw",   "classify", "triangulate"};

class CommandLineTest : public CliTest {
 protected:
  static QByteArray source(const QString& name) {
    QFile file(QStringLiteral(KALDEX_SOURCE_FOLDER "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
  }
  static QSet<QString> longOptions(const QString& text) {
    static const QRegularExpression form("--[a-z][a-z-]*");
    QSet<QString> found;
    for (auto match = form.globalMatch(text); match.hasNext();) found << match.next().captured();
    return found;
  }
  // What a function of the completion prints.
  static QString completion(const QString& call) {
    QProcess bash;
    bash.start(
        "bash",
        {"-c",
         QString("source '%1/apps/cli/kaldex.bash-completion'; echo $(%2)").arg(KALDEX_SOURCE_FOLDER, call)});
    EXPECT_TRUE(bash.waitForFinished());
    return QString::fromUtf8(bash.readAllStandardOutput()).trimmed();
  }
};

TEST_F(CommandLineTest, WrongUseIsTwoAndChangesNothing) {
  write("in.kdx", kTwoLines);
  QList<QStringList> wrong = {{},
                              {"draw", "base.gpkg", "p", ""},
                              {"init", ""},
                              {"import", "csv", "table", "in.kdx", "base.gpkg", ""}};
  for (const QString words :
       {"fetch", "import", "import ascii lines in.kdx base.gpkg", "import ascii lines in.kdx base.gpkg p",
        "import ascii lines in.kdx base.gpkg p/", "import dgn lines in.kdx base.gpkg p/l",
        "import ascii clouds in.kdx base.gpkg p/l", "import csv lines in.kdx base.gpkg p/l",
        "export shapefile lines base.gpkg p/l o.shp --append",
        "export ascii lines base.gpkg p/l o.kdx --append --overwrite",
        "export ascii lines base.gpkg p/l o.kdx --by object", "export csv table base.gpkg p o.csv",
        "draw base.gpkg p o.png --size 10", "classify shapefile in.shp base.gpkg p/l",
        "classify ascii in.kdx base.gpkg p", "triangulate base.gpkg p"}) {
    wrong << words.split(' ');
  }
  for (const QString options :
       {"--box 1,2,3", "--box 1,2,3,x", "--box 9,9,1,1", "--scale 0", "--units parsec", "--coords polar",
        "--separator ;;", "--separator €", "--types a=number", "--types a=real:5", "--types =text",
        "--model nonspatial", "--model fashion", "--encoding klingon", "--lang fr", "--yes --no",
        "--answer maybe", "--answer =yes", "--unknown"}) {
    wrong << QStringList{"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/l"} + options.split(' ');
  }
  for (const QStringList& words : wrong) {
    const Outcome done = run(words);
    EXPECT_EQ(done.code, 2) << words.join(' ').toStdString();
    EXPECT_FALSE(done.err.isEmpty());
    EXPECT_TRUE(done.out.isEmpty());
  }
  EXPECT_TRUE(isEmpty());
  EXPECT_EQ(entries(), QStringList({"base.gpkg", "in.kdx", "tmp"}));
}

TEST_F(CommandLineTest, OptionsMayStandAnywhereAndBoxesMayBeNegative) {
  write("in.kdx", kTwoLines);
  const Outcome done = run({"--json", "import", "--box", "-9,-9,99,99", "ascii", "lines", "--answer", "x=yes",
                            "in.kdx", "base.gpkg", "--answer=y=no", "p/l"});
  EXPECT_EQ(done.code, 0) << done.err.toStdString();
  EXPECT_EQ(done.json()["result"].toString(), QString("done"));
  EXPECT_EQ(layer("p/l")["box"].toArray(), QJsonArray({-9, -9, 99, 99}));
}

// Man page and completion are written by hand.
TEST_F(CommandLineTest, HelpManPageAndCompletionAgree) {
  QSet<QString> all;
  for (const QString& command : QStringList{QString()} + kCommands) {
    const Outcome help = run(command.isEmpty() ? QStringList{"--help"} : QStringList{command, "--help"});
    EXPECT_EQ(help.code, 0);
    const QSet<QString> options = longOptions(QString::fromLocal8Bit(help.out));
    all += options;
    QSet<QString> offered = longOptions(completion(QString("_kaldex_options '%1'").arg(command)));
    if (command.isEmpty()) offered << "--size";  // of the examples
    EXPECT_EQ(offered, options) << command.toStdString();
    EXPECT_TRUE(source("docs/man/kaldex.1").contains((".B " + command).toUtf8()));
  }
  const QString manual = QString::fromUtf8(source("docs/man/kaldex.1")).replace("\\-", "-");
  EXPECT_EQ(longOptions(manual), all);
  EXPECT_TRUE(run({"--version"}).out.startsWith("kaldex "));
}

TEST_F(CommandLineTest, CompletionAndManPageKnowTheKindsOfEachFormat) {
  const QString manual = QString::fromUtf8(source("docs/man/kaldex.1")).replace("\\-", "-");
  const QList<QPair<QString, QStringList>> wrong = {{"import", {"", "none", "f", "base.gpkg", "p/l"}},
                                                    {"export", {"", "none", "base.gpkg", "p/l", "f"}}};
  for (const auto& [command, words] : wrong) {
    for (const char* const format : {"ascii", "shapefile", "csv", "dxf", "arcinfo", "kml"}) {
      QStringList line = QStringList(command) + words + QStringList{"--lang", "pt"};
      line[1] = format;
      const QString told = QString::fromLocal8Bit(run(line).err).section('\n', 0, 0);
      const QString kinds = told.section("; há: ", 1).remove(',');
      EXPECT_EQ(completion(QString("_kaldex_kinds %1 %2").arg(command, format)), kinds) << format;
      for (const QString& kind : kinds.split(' ', Qt::SkipEmptyParts)) {
        EXPECT_TRUE(manual.contains(QRegularExpression(QString("\\n\\.BR? %1( |\\n)").arg(kind))))
            << kind.toStdString();
      }
    }
  }
}

// What operations count must have a word for people.
TEST_F(CommandLineTest, EveryCodeOfAReportHasAWord) {
  static const QRegularExpression form(
      R"re(count(?:Read|Written|LeftOut)\((?:\*?\w+, )?(?:QStringLiteral\()?"([a-z_]+)")re");
  const QString words = QString::fromUtf8(source("apps/cli/texts.cpp"));
  int codes = 0;
  for (QDirIterator files(KALDEX_SOURCE_FOLDER "/src/lib", {"*.cpp"}, QDir::Files,
                          QDirIterator::Subdirectories);
       files.hasNext();) {
    files.next();
    const QString text = QString::fromUtf8(
        source("src/lib/" + QDir(KALDEX_SOURCE_FOLDER "/src/lib").relativeFilePath(files.filePath())));
    for (auto match = form.globalMatch(text); match.hasNext(); ++codes) {
      const QString code = match.next().captured(1);
      EXPECT_TRUE(words.contains("{\"" + code + "\",")) << code.toStdString();
    }
  }
  EXPECT_GT(codes, 20);
}

TEST_F(CommandLineTest, TheLanguageFollowsTheEnvironmentOrTheOption) {
  const auto told = [this](const QStringList& more) {
    return run(QStringList{"import", "ascii", "lines", "absent.kdx", "base.gpkg", "p/l"} + more).err;
  };
  const QByteArray portuguese = told({"--lang", "pt"});
  const QByteArray english = told({"--lang", "en"});
  const QByteArray spanish = told({"--lang=es"});
  EXPECT_TRUE(portuguese.contains("Não há arquivo absent.kdx")) << portuguese.toStdString();
  EXPECT_NE(english, portuguese);
  EXPECT_NE(spanish, portuguese);
  EXPECT_NE(spanish, english);
  EXPECT_EQ(told({}), qgetenv("LC_ALL").startsWith("pt") ? portuguese : english);
}

TEST_F(CommandLineTest, InitRefusesWhatExists) {
  const QByteArray before = read("base.gpkg");
  EXPECT_EQ(run({"init", "base.gpkg"}).code, 1);
  EXPECT_EQ(read("base.gpkg"), before);
  EXPECT_EQ(run({"init", "nowhere/base.gpkg"}).code, 1);
}

TEST_F(CommandLineTest, InfoTellsOfLayersAndFiles) {
  importAscii(kTwoLines, {"--crs", "EPSG:31983"});
  const Outcome told = runJson({"info", "base.gpkg", "p/l"});
  int before = -1;
  for (const char* const key : {"model", "box", "projection", "counts", "classes", "columns"}) {
    const int at = told.out.indexOf(QByteArray("\n  \"") + key + "\":");
    EXPECT_GT(at, before) << key;
    before = at;
  }
  QStringList kinds = told.json()["counts"].toObject().keys();
  EXPECT_EQ(kinds, QStringList({"lines", "objects", "points", "polygons", "samples", "texts"}));
  EXPECT_TRUE(run({"info", "base.gpkg"}).out.contains("EPSG:31983"));
  EXPECT_EQ(run({"info", "base.gpkg", "p/none"}).code, 1);
  EXPECT_EQ(run({"info", "absent"}).code, 1);
  EXPECT_EQ(run({"info", "in.kdx", "p"}).code, 1);

  const QJsonObject ascii = runJson({"info", "in.kdx"}).json();
  EXPECT_EQ(ascii["format"].toString(), QString("ascii"));
  EXPECT_EQ(ascii["sections"].toArray().at(0).toObject()["line"].toInt(), 1);
  writeParcels();
  const QJsonObject shape = runJson({"info", "lots.shp"}).json();
  EXPECT_EQ(shape["format"].toString(), QString("shapefile"));
  EXPECT_EQ(shape["type"].toInt(), 5);
  EXPECT_EQ(shape["count"].toInt(), 2);
  EXPECT_EQ(shape["box"].toArray(), QJsonArray({0, 0, 50, 30}));
  EXPECT_EQ(shape["columns"].toArray().size(), 2);
  write("words.txt", "Nothing that is known here.\n");
  EXPECT_FALSE(runJson({"info", "words.txt"}).json()["description"].toString().isEmpty());
}

TEST_F(CommandLineTest, FailuresAreObjectsToo) {
  QDir(path(".")).mkdir("folder");
  write("broken.gpkg", "SQLite format 3 or so");
  for (const QStringList& words : QList<QStringList>{{"init", "base.gpkg"},
                                                     {"init", "nowhere/b.gpkg"},
                                                     {"info", "absent"},
                                                     {"info", "folder"},
                                                     {"info", "base.gpkg", "none"},
                                                     {"info", "base.gpkg", "none/none"},
                                                     {"draw", "base.gpkg", "none", "map.png"},
                                                     {"draw", "broken.gpkg", "p", "map.png"},
                                                     {"draw", "base.gpkg", "none", "nowhere/map.png"}}) {
    const Outcome done = runJson(words, 1);
    EXPECT_EQ(done.json()["result"].toString(), QString("failed")) << words.join(' ').toStdString();
    EXPECT_EQ(done.json()["messages"].toArray().size(), 1) << words.join(' ').toStdString();
  }
}

// A shell does what programs do to the command's streams.
TEST_F(CommandLineTest, OutputThatIsLostIsToldAndClosedStreamsHoldNoFile) {
  importAscii(kTwoLines);
  const auto shell = [this](const QString& words, const QString& streams) {
    QProcess process;
    process.setWorkingDirectory(path("."));
    process.start("sh", {"-c", QString("'%1' %2 %3").arg(KALDEX_COMMAND, words, streams)});
    return finish(process);
  };
  EXPECT_EQ(shell("info base.gpkg", ">/dev/full").code, 1);
  EXPECT_EQ(shell("--help", ">/dev/full").code, 1);
  const Outcome made = shell("export ascii lines base.gpkg p/l full.kdx", ">/dev/full");
  EXPECT_EQ(made.code, 0);
  EXPECT_FALSE(made.err.isEmpty());
  EXPECT_EQ(shell("export ascii lines base.gpkg p/l closed.kdx", ">&- 2>&- <&-").code, 0);
  EXPECT_EQ(read("closed.kdx"), read("full.kdx"));
  EXPECT_EQ(shell("info base.gpkg", ">&-").code, 0);
}

TEST_F(CommandLineTest, ConvertGoesThroughADatabaseThatNobodySees) {
  writeParcels();
  const Outcome shape = runJson({"convert", "lots.shp", "copy.shp", "--yes"});
  EXPECT_EQ(shape.json()["written"].toObject()["objects"].toInt(), 2);
  EXPECT_TRUE(runJson({"info", "copy.shp"}).out.contains("OWNER"));
  runJson({"convert", "lots.shp", "copy.kdx", "--yes"});
  EXPECT_TRUE(read("copy.kdx").startsWith("\nPOLYGONS\n"));
  runJson({"convert", "lots.shp", "copy.gpkg", "--yes"});
  EXPECT_TRUE(run({"info", "copy.gpkg", "lots/lots"}).out.contains("OWNER"));
  runJson({"convert", "lots.shp", "copy.kdx", "--yes"}, 1);
  runJson({"convert", "lots.shp", "other.kdx"}, 3);
  runJson({"convert", "lots.shp", "other.xyz", "--yes"}, 1);
  runJson({"convert", "lots.dbf", "other.shp", "--yes", "--dry-run"});
  write("both.kdx", "LINES\n0 0\n1 1\nEND\nEND\nCONTOURLINES\nLINE3D\nHEIGHT 5\n0 0\n4 4\nEND\nEND\n");
  runJson({"convert", "both.kdx", "lines.shp"}, 1);
  runJson({"convert", "both.kdx", "lines.shp", "--kind", "contours"});
  EXPECT_EQ(runJson({"info", "lines.shp"}).json()["type"].toInt(), 13);
  for (const QString& name : entries()) EXPECT_FALSE(name.startsWith("other")) << name.toStdString();
}

TEST_F(CommandLineTest, DrawsAMap) {
  writeParcels();
  ASSERT_EQ(run({"import", "shapefile", "polygons", "lots.shp", "base.gpkg", "p/lots", "--yes"}).code, 0);
  EXPECT_EQ(run({"draw", "base.gpkg", "p", "map.png", "--size", "500x300"}).code, 0);
  const QImage map(path("map.png"));
  ASSERT_EQ(map.size(), QSize(500, 300));
  // The hole shows the ground, and each parcel has a colour of its own. The data (50 by 30) fill the height
  // of the frame, which leaves 16 points above and 20.8 below, but for a margin.
  const auto at = [&](double x, double y) {
    const double inside = 300 - 16 - 20.8;
    const double scale = inside / (30 * 1.04);
    return map.pixel(static_cast<int>(250 + (x - 25) * scale),
                     static_cast<int>(16 + inside / 2 - (y - 15) * scale));
  };
  EXPECT_EQ(at(27, 4), at(15, 28));
  EXPECT_NE(at(40, 20), at(15, 28));
  EXPECT_NE(at(5, 5), at(15, 28));
  EXPECT_NE(at(5, 5), at(40, 20));
  EXPECT_EQ(run({"draw", "base.gpkg", "p", "map.png"}).code, 1);
  EXPECT_EQ(run({"draw", "base.gpkg", "p/lots", "map.png", "--overwrite"}).code, 0);
  EXPECT_EQ(run({"draw", "base.gpkg", "none", "other.png"}).code, 1);
}

}  // namespace
}  // namespace kaldex::test
