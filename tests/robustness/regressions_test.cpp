#include <sys/resource.h>

#include <QElapsedTimer>
#include <limits>

#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

constexpr int kLongest = 20000;  // milliseconds; each takes a fraction of a second

/// Small files of a kind that once crashed a reader, kept it busy, or made it ask for memory by what they
/// claim. The command has to say its word about each, soon, and leave the database as it was unless it could
/// read the file.
class Regressions : public CliTest {
 protected:
  Regressions() {
#ifndef KALDEX_SANITIZED  // which map far more than they use
    const rlimit limit{1u << 30, 1u << 30};
    EXPECT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
#endif
  }

  struct Case {
    const char* name;
    QByteArray text;
    int code;
    const char* said;  ///< a part of the messages or notes
  };
  void expectSaid(const Case& one, const QString& layer, const QStringList& words) {
    QElapsedTimer timer;
    timer.start();
    const Outcome done = run(words + QStringList{"--json", "--yes", "--lang", "pt"});
    EXPECT_EQ(done.code, one.code) << one.name << '\n' << done.err.toStdString() << done.out.toStdString();
    EXPECT_TRUE((done.out + done.err).contains(one.said)) << one.name << '\n' << done.out.toStdString();
    EXPECT_LT(timer.elapsed(), kLongest) << one.name;
    const QStringList made{"info", "base.gpkg", "p/" + layer};
    EXPECT_EQ(run(made).code, one.code)
        << one.name << ": a layer is there when the import is done, only then";
  }
};

TEST_F(Regressions, Texts) {
  const QByteArray good = "0 0\n1 1\nEND\nEND\n";
  const QByteArray box = "LINES\nINFO\nPROJECTION UTM\nBOX X1=1e999, Y1=nan, X2=-inf, Y2=1\nINFO_END\n";
  const Case cases[] = {
      {"nothing", "", 1, "Não há seção LINES em in.kdx."},
      {"only a keyword", "LINES", 1, "Arquivo INCONSISTENTE"},
      {"a header that does not end", "LINES\nINFO\n", 1, "INFO_END ???"},
      {"a header without line ends", "LINES\nINFO\n//" + QByteArray(4 << 20, 'x'), 1, "INFO_END ???"},
      {"a line without an end", "LINES\n" + QByteArray(1 << 20, '7'), 1,
       "in.kdx:2:1: Arquivo INCONSISTENTE!777"},
      {"a tail of feeds and end marks", "LINES\n" + good + QByteArray("\n\x1A").repeated(200000), 0,
       "marca DOS de fim de arquivo retirada"},
      {"a zero in UTF-16", QByteArray("\xFF\xFE\x4C\x80\0\0", 6), 1, "Não há seção LINES em in.kdx."},
      {"half a character of UTF-16", QByteArray("\xFF\xFEL", 3), 1, "Não há seção LINES em in.kdx."},
      {"numbers beyond all", "LINES\n1e999 -1e999\n1 1\nEND\nEND\n", 1,
       "in.kdx:2:1: Arquivo INCONSISTENTE!1e999 -1e999"},
      {"numbers that are none", "LINES\nnan inf\n1 1\nEND\nEND\n", 1,
       "in.kdx:2:1: Arquivo INCONSISTENTE!nan"},
      {"a box that is none", box + good, 0, "caixa 0,0,1,1 (das coordenadas)"},
      {"sections only", QByteArray("LINES\n").repeated(20000), 1, "in.kdx:2:1: Arquivo INCONSISTENTE!LINES"},
      {"zeros", QByteArray(4096, '\0'), 1, "Não há seção LINES em in.kdx."},
  };
  int number = 0;
  for (const Case& one : cases) {
    const QString layer = QString("l%1").arg(number++);
    write("in.kdx", one.text);
    expectSaid(one, layer, {"import", "ascii", "lines", "in.kdx", "base.gpkg", "p/" + layer});
  }
}

/// One polygon; its record says that it has this many parts and points, and begins its part there.
QByteArray polygonFile(int parts, int points, int start, double x) {
  ByteMaker file;
  file.header(50 + 68, 5, {0, 0, 9, 9}).big({1, 64}).little({5}).reals({0, 0, 9, 9});
  file.little({parts, points, start}).reals({x, 0, 0, 9, 9, 9, 9, 0, x, 0});
  return file;
}

TEST_F(Regressions, Shapefiles) {
  constexpr int kHuge = std::numeric_limits<int>::max();
  const QByteArray whole = polygonFile(1, 5, 0, 0);
  const Case cases[] = {
      {"nothing", "", 1, "Erro Open"},
      {"half a head", whole.left(50), 1, "Erro Open"},
      {"a head alone", whole.left(100), 0, "136 bytes no fim do .shp"},
      {"a cut record", whole.left(180), 0, "136 bytes no fim do .shp"},
      {"as many parts as there can be", polygonFile(kHuge, 5, 0, 0), 1, "\"unsupported\": 1"},
      {"as many points as there can be", polygonFile(1, kHuge, 0, 0), 1, "\"unsupported\": 1"},
      {"less than no points", polygonFile(1, -5, 0, 0), 1, "\"unsupported\": 1"},
      {"a part that begins astray", polygonFile(1, 5, kHuge, 0), 1, "\"unsupported\": 1"},
      {"a point at no place", polygonFile(1, 5, 0, std::numeric_limits<double>::quiet_NaN()), 1,
       "Nada do que foi lido foi gravado."},
      {"zeros", QByteArray(4096, '\0'), 1, "Erro Open"},
  };
  int number = 0;
  for (const Case& one : cases) {
    const QString layer = QString("s%1").arg(number++);
    write("in.shp", one.text);
    expectSaid(one, layer, {"import", "shapefile", "features", "in.shp", "base.gpkg", "p/" + layer});
  }
}

TEST_F(Regressions, TablesOfShapefiles) {
  writeParcels();
  DbfMaker wide({{"A", 'C', 255}}), rows({{"A", 'N', 5}}), head({{"A", 'N', 5}}), noRecord({{"A", 'N', 5}});
  wide.row({"x"}).declaredHeader = 33;
  rows.row({"1"}).row({"2"}).declaredRows = 0x7FFFFFFF;
  head.row({"1"}).declaredHeader = 65535;
  noRecord.row({"1"}).row({"2"}).declaredRecord = 0;
  const Case cases[] = {
      {"two thousand million rows", rows.bytes(), 0, "\"rows\": 2"},
      {"a head longer than the file", head.bytes(), 0, "\"rows\": 1"},
      {"a head without columns", wide.bytes(), 0, "\"bad_value\": 1"},
      {"records of no length", noRecord.bytes(), 0, "\"rows\": 2"},
      {"a head cut", rows.bytes().left(20), 0, "Arquivo .dbf corrompido"},
  };
  int number = 0;
  for (const Case& one : cases) {
    const QString layer = QString("t%1").arg(number++);
    write("lots.dbf", one.text);
    expectSaid(
        one, layer,
        {"import", "shapefile", "features", "lots.shp", "base.gpkg", "p/" + layer, "--model", "cadastral"});
  }
}

}  // namespace
}  // namespace kaldex::test
