#ifndef KALDEX_TESTS_CLI_FIXTURE_H
#define KALDEX_TESTS_CLI_FIXTURE_H

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <ostream>

#include "shapefile/byte_maker.h"
#include "support/dbf_maker.h"

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

namespace kaldex::test {

/// What one run of the command gave.
struct Outcome {
  int code = -1;
  QByteArray out;
  QByteArray err;

  QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
};

/// A folder with an empty database "base.gpkg", in which the command is run.
class CliTest : public ::testing::Test {
 protected:
  CliTest() {
    QDir(folder_.path()).mkdir("tmp");
    EXPECT_EQ(run({"init", "base.gpkg", "--quiet"}).code, 0);
  }
  ~CliTest() override {
    // Whatever happened, no temporary copy stays.
    EXPECT_EQ(entries("tmp"), QStringList());
  }

  void start(QProcess& process, const QStringList& words) const {
    process.setWorkingDirectory(folder_.path());
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

  QString path(const QString& name) const { return folder_.filePath(name); }
  QStringList entries(const QString& folder = ".") const {
    return QDir(path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
  }
  void write(const QString& name, const QByteArray& content) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(content), content.size());
  }
  QByteArray read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// "lots.shp" with its table: two squares, the second with a hole.
  void writeParcels() const {
    ByteMaker shp;
    shp.header(50 + 2 * 68 + 4 + 42, 5, {0, 0, 50, 30});
    square(shp, 1, {{0, 0, 10}});
    square(shp, 2, {{20, 0, 30}, {25, 2, -5}});
    write("lots.shp", shp);
    DbfMaker dbf({{"OWNER", 'C', 12}, {"PRICE", 'N', 10, 2}});
    dbf.row({"Ana", "12.50"}).row({"Jo\xE3o", "7.00"});
    write("lots.dbf", dbf.bytes());
  }

  static constexpr char kTwoLines[] = "LINES\n0 0\n10 5\n20 0\nEND\n1 1\n2 2\nEND\nEND\n";

 private:
  struct Ring {
    double x, y, side;  ///< a negative side is that of a hole
  };
  static void square(ByteMaker& shp, int number, const std::vector<Ring>& rings) {
    const int parts = static_cast<int>(rings.size());
    shp.big({number, (44 + 4 * parts + 80 * parts) / 2}).little({5});
    const Ring& outer = rings.front();
    shp.reals({outer.x, outer.y, outer.x + outer.side, outer.y + outer.side}).little({parts, 5 * parts});
    for (int part = 0; part < parts; ++part) shp.little({5 * part});
    for (const Ring& ring : rings) {
      const double x = ring.x, y = ring.y, side = ring.side;
      if (side < 0) {
        shp.reals({x, y, x - side, y, x - side, y - side, x, y - side, x, y});
      } else {
        shp.reals({x, y, x, y + side, x + side, y + side, x + side, y, x, y});
      }
    }
  }

  QTemporaryDir folder_;
};

}  // namespace kaldex::test

#endif
