#include "ascii/ascii_fixture.h"
#include "kaldex/model/tin.h"

namespace kaldex::test {

namespace {

class AsciiTin : public AsciiFixture {
 protected:
  static QByteArray records(const QByteArray& file) { return file.mid(file.lastIndexOf("INFO_END") + 8); }
};

TEST_F(AsciiTin, EdgesAndTrianglesWithHeights) {
  InfoLayer* const source = layer(DIGITALMODEL, "S");
  Tin tin;
  const auto none = static_cast<float>(kUnsetValue);
  tin.assign({{1, 2, 3}, {4, 5, 6}, {7, 8, 9.5f}, {0, 0, none}},
             {{{{0, 1}}}, {{{1, 3}}}, {{{-1, 2}}}, {{{0, 5}}}, {{{2, 4}}}}, {{0, 1, 2}, {1, 2, 3}});
  EXPECT_EQ(handler(source)->ExportTIN(&tin), 1);
  EXPECT_EQ(messages.take(), "Ponteiro de arquivo inválido!(tin->Line())[i].Node > (tin->Node())size");
  EXPECT_TRUE(read("file.txt").startsWith("\nTIN\nINFO\n//Arquivo ASCII"));
  EXPECT_EQ(records(read("file.txt")),
            "\nEDGE \n1.000   2.000   3.000000 \n4.000   5.000   6.000000 \nEND\nEND");
  fileName = "three.txt";
  EXPECT_EQ(handler(source)->ExportTIN3D(&tin), 1);
  EXPECT_EQ(records(read("three.txt")),
            "\nEDGE\n1.000   2.000   3.000000\n4.000   5.000   6.000000\n7.000   8.000   9.500000\n"
            "1.000   2.000   3.000000\nEND\nEND");
  fileName = "none.txt";
  Tin empty;
  EXPECT_EQ(handler(source)->ExportTIN3D(&empty), 1);
  EXPECT_EQ(records(read("none.txt")), "\nEND");
  EXPECT_EQ(handler(source)->ExportTIN(nullptr), 0);
  EXPECT_EQ(handler(source)->ExportTIN3D(source->vector(vectorSamples, true)), 0);
  EXPECT_EQ(messages.take(),
            "Um argumento inválido foi passado!arg : vec\nErro associado com uma restrição lógica!No TIN in "
            "Vector");
}

TEST_F(AsciiTin, GeographicForms) {
  InfoLayer* const source = layer(DIGITALMODEL, "S");
  Tin tin;
  tin.assign({{500000, 7400000, 1}, {500100, 7400000, 2}}, {{{{0, 1}}}}, {});
  const std::pair<short, QByteArray> cases[] = {{1, "\nEDGE \nO 45 0 0.00000   S "},
                                                {2, "\nEDGE \n-45.00000000   -23."},
                                                {3, "\nEDGE \n-162000.00000   -8"}};
  for (const auto& [format, start] : cases) {
    fileName = QString("f%1").arg(format);
    EXPECT_EQ(handler(source, format)->ExportTIN(&tin), 1);
    EXPECT_TRUE(records(read(fileName)).startsWith(start)) << records(read(fileName)).constData();
  }
}

class AsciiTurns : public AsciiFixture {
 protected:
  AsciiTurns() : network_(layer(NETWORKMODEL, "Ruas")), vector_(*network_->vector(vectorLines, true)) {}

  int street(const std::vector<double>& xy) {
    Line* const line = insertLine(vector_, xy);
    const int id = line->id;
    delete line;
    return id;
  }
  std::string turnFile() const {
    return (network_->directory + "/" + network_->fileName + ".turn").toStdString();
  }
  QStringList turns() const {
    QStringList list;
    for (const Restriction* const one : RestrictionList(turnFile()))
      list << QString("%1>%2").arg(one->from).arg(one->to);
    return list;
  }
  void store(const std::vector<std::pair<int, int>>& pairs) const {
    RestrictionList list(turnFile());
    list.Kill();
    for (const auto& [from, to] : pairs) list.Append(new Restriction(from, to));
    ASSERT_EQ(list.Save(), 1);
  }

  InfoLayer* network_;
  Vector& vector_;
};

TEST_F(AsciiTurns, PointsOfEachWayToMeet) {
  const int a = street({1, 0, 0, 0});
  const int b = street({0, 0, 2, 0});
  const int c = street({3, 0, 0, 0});
  const int d = street({1, 0, 9, 9, 0, 0});
  const int e = street({2, 0, 5, 5});
  store({{a, b}, {a, c}, {b, e}, {b, a}, {b, c}, {e, b}, {a, d}, {a, e}, {a, 99}});
  EXPECT_EQ(handler(network_)->ExportTurns(&vector_), 1);
  const QByteArray file = read("file.txt");
  EXPECT_TRUE(
      file.startsWith("TURNS\nINFO\n// Restri\xE7\xF5"
                      "es de dire\xE7\xE3o\n\n//Arquivo"))
      << file.constData();
  EXPECT_TRUE(
      file.endsWith("\nINFO_END\n"
                    "1.000000 0.000000 0.000000 0.000000 2.000000 0.000000 \n"
                    "1.000000 0.000000 0.000000 0.000000 3.000000 0.000000 \n"
                    "0.000000 0.000000 2.000000 0.000000 5.000000 5.000000 \n"
                    "2.000000 0.000000 0.000000 0.000000 1.000000 0.000000 \n"
                    "2.000000 0.000000 0.000000 0.000000 3.000000 0.000000 \n"
                    "5.000000 5.000000 2.000000 0.000000 0.000000 0.000000 \n"
                    "0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 \n"
                    "0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 \n"
                    "END_TURNS\n"))
      << file.constData();
  // Numbers don't come back: only angles are read.
  store({});
  EXPECT_EQ(handler(network_)->ImportTurns(&vector_), 0);
  EXPECT_EQ(turns(), QStringList());
  EXPECT_EQ(messages.take(), "");
}

TEST_F(AsciiTurns, RoundTripInAngles) {
  std::vector<int> streets;
  for (int i = 0; i < 20; ++i) {
    const double x = 500000 + 100.0 * i;
    streets.push_back(street({x, 7400000, x + 50, 7400013.37, x + 100, 7400000}));
  }
  std::vector<std::pair<int, int>> pairs;
  for (std::size_t i = 1; i < streets.size(); ++i) {
    pairs.emplace_back(streets[i - 1], streets[i]);
    pairs.emplace_back(streets[i], streets[i - 1]);
  }
  store(pairs);
  const QStringList before = turns();
  // Behind another section the word still begins a line.
  write("file.txt", "LINES\nEND\nEND");
  EXPECT_EQ(handler(network_, 1)->ExportTurns(&vector_), 1);
  EXPECT_TRUE(read("file.txt").startsWith("LINES\nEND\nEND\nTURNS\n"));
  store({});
  EXPECT_EQ(handler(network_, 1)->ImportTurns(&vector_), 1);
  EXPECT_EQ(turns(), before);
  // They are added to what is there.
  EXPECT_EQ(handler(network_, 1)->ImportTurns(&vector_), 1);
  EXPECT_EQ(turns(), before + before);
}

TEST_F(AsciiTurns, FilesThatHoldNone) {
  const int a = street({1, 1, 2, 2});
  store({{a, a}});
  EXPECT_EQ(handler(network_, 1)->ImportTurns(&vector_), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!FEOF");
  EXPECT_TRUE(QFile::exists(path("file.txt")));
  const QByteArray head = "TURNS\nINFO\nINFO_END\n";
  const QByteArray bad = "O 45 0 0 S 23 0 0 O 45 0 0 S 23 0 0 O 45 0 0 S 99 0 0";
  const std::pair<QByteArray, QString> cases[] = {
      {"END_TURNS\n", ""},
      {"O 45 0 0 S 23 0 0 O 45 0 1 S 23 0 0 O 45 0 2 S 23 0 0 \nEND_TURNS", ""},
      {"O  45 0 0 S 23 0 0 O 45 0 1 S 23 0 0 O 45 0 2 S 23 0 0 \n", ""},
      {bad + " \n", "Falha na leitura do arquivo " + bad + " ."},
      {bad, "Falha na leitura do arquivo " + bad + "."}};
  for (const auto& [rest, shown] : cases) {
    write("file.txt", head + rest);
    EXPECT_EQ(handler(network_, 1)->ImportTurns(&vector_), 0) << rest.constData();
    EXPECT_EQ(messages.take(), shown) << rest.constData();
    EXPECT_EQ(turns().size(), 1);
  }
}

}  // namespace

}  // namespace kaldex::test
