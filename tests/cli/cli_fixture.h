#ifndef KALDEX_TESTS_CLI_FIXTURE_H
#define KALDEX_TESTS_CLI_FIXTURE_H

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "shapefile/byte_maker.h"
#include "support/dbf_maker.h"
#include "support/folder_fixture.h"

namespace kaldex::test {

/// What one run of the command gave.
struct Outcome {
  int code = -1;
  QByteArray out;
  QByteArray err;

  QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
};

/// A folder with an empty database "base.gpkg", in which the command is run.
class CliTest : public FolderFixture {
 protected:
  CliTest() {
    QDir(folder()).mkdir("tmp");
    EXPECT_EQ(run({"init", "base.gpkg", "--quiet"}).code, 0);
  }
  ~CliTest() override {
    // Whatever happened, no temporary copy stays.
    EXPECT_EQ(entries("tmp"), QStringList());
  }

  void start(QProcess& process, const QStringList& words) const {
    process.setWorkingDirectory(folder());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", path("tmp"));
    // Only sanitized builds look at this.
    environment.insert("LSAN_OPTIONS",
                       "print_suppressions=0:suppressions=" KALDEX_SOURCE_FOLDER "/tests/cli/leaks.supp");
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(KALDEX_COMMAND, words);
  }
  static Outcome finish(QProcess& process) {
    EXPECT_TRUE(process.waitForFinished(120000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
  }
  Outcome run(const QStringList& words) const {
    QProcess process;
    start(process, words);
    return finish(process);
  }
  /// Runs with "--json": every such run must print one object, and nothing else, on standard output.
  Outcome runJson(const QStringList& words, int code = 0) const {
    const Outcome done = run(words + QStringList{"--json"});
    EXPECT_EQ(done.code, code) << done.err.toStdString();
    QJsonParseError error;
    EXPECT_TRUE(QJsonDocument::fromJson(done.out, &error).isObject()) << done.out.toStdString();
    return done;
  }
  Outcome importAscii(const QByteArray& text, const QStringList& more = {}, int code = 0) const {
    write("in.kdx", text);
    return runJson(QStringList{"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/l"} + more, code);
  }

  /// Messages and notes of a report, for looking something up.
  static QString told(const Outcome& done) {
    QStringList all;
    for (const char* const key : {"messages", "notes"}) {
      for (const QJsonValue& one : done.json()[key].toArray()) all << one.toString();
    }
    return all.join('\n');
  }
  QJsonObject layer(const QString& place) const { return runJson({"info", "base.gpkg", place}).json(); }
  int count(const QString& place, const char* kind) const {
    return layer(place)["counts"].toObject()[kind].toInt();
  }
  bool isEmpty() const { return runJson({"info", "base.gpkg"}).json()["projects"].toArray().isEmpty(); }

  QStringList entries(const QString& folder = ".") const {
    return QDir(path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
  }
  /// "lots.shp" with its table: two squares, the second with a hole.
  void writeParcels() const {
    std::vector<double> rings = square(20, 0, 30, true);
    const std::vector<double> hole = square(25, 2, 5);
    rings.insert(rings.end(), hole.begin(), hole.end());
    const std::vector<QByteArray> contents = {arcContent(5, {0, 0, 10, 10}, {0}, square(0, 0, 10, true)),
                                              arcContent(5, {20, 0, 50, 30}, {0, 5}, rings)};
    write("lots.shp", ExpectedShapes(5, {0, 0, 50, 30}, contents).shp);
    DbfMaker dbf({{"OWNER", 'C', 12}, {"PRICE", 'N', 10, 2}});
    dbf.row({"Ana", "12.50"}).row({"Jo\xE3o", "7.00"});
    write("lots.dbf", dbf.bytes());
  }

  static constexpr char kTwoLines[] = "LINES\n0 0\n10 5\n20 0\nEND\n1 1\n2 2\nEND\nEND\n";
};

}  // namespace kaldex::test

#endif
