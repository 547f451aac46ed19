#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class AsciiSamples : public AsciiFixture {
 protected:
  int import(InfoLayer* into, const QByteArray& content) {
    write("file.txt", content);
    return handler(into)->ImportSamples(into->vector(vectorSamples, true), project->projection());
  }
  static std::vector<double> points(Vector& vector) {
    std::vector<double> all;
    for (std::unique_ptr<Point3d> point(vector.FirstPoint3d()); point != nullptr;
         point.reset(vector.NextPoint3d())) {
      all.insert(all.end(), {point->x, point->y, static_cast<double>(point->z)});
    }
    return all;
  }
};

// The blocks are read as those of contours are, whose tests show what can be wrong with them.
TEST_F(AsciiSamples, SectionsAndTheirMessages) {
  const QString allOutside =
      "TODOS os dados FORA do projeto, nenhum dado importado - Conferir BOX ou PROJEçâO ou Unidade "
      "importação (m/km/graus/...";
  const QString someOutside = "Existem dados fora da área do projeto que não foram importados ";
  const struct {
    QByteArray content;
    int result;
    QString shown;
    int samples, lines;
  } cases[] = {
      {"SAMPLE\nEND\n", 1, "", 0, 0},
      {"SAMPLE\nINFO\nBOX\t1\nINFO_END\nPOINT3D\nEND\nEND\n", 1, "", 0, 0},
      {"SAMPLE\nPOINT3D\n1 2 3\n// c\n4 5 -6.5e1\nEND\nLINE3D\nHEIGHT 7\n1 1\n2 2\nEND\nEND\n", 1, "", 2, 1},
      {"SAMPLE\nLINE3D-MASTER\nHEIGHT 7\n1 1\n2 2\nEND\nLINE3D\nHEIGHT 8\nEND\nPOINT3D\n1 2 3\nEND\nEND", 1,
       "", 1, 1},
      {"SAMPLE\nPOINT3D\n-1 2 3\n-5 5 5\nEND\nEND\n", 1, allOutside, 0, 0},
      {"SAMPLE\nPOINT3D\n-1 2 3\n5 5 5\nEND\nEND\n", 1, someOutside, 1, 0},
      // Vertices outside are dropped one by one; a line that has none left is refused.
      {"SAMPLE\nLINE3D\nHEIGHT 1\n-1 1\n1 1\n2 2\nEND\nEND\n", 1, someOutside, 0, 1},
      {"SAMPLE\nLINE3D\nHEIGHT 1\n-1 1\n-1 2\nEND\nEND\n", 1, allOutside, 0, 0},
      {"SAMPLE\nPOINT3D\no 45 30 10   s 23 10 5   z 612.5\nEND\nEND\n", 1, "", 1, 0},
      {"SAMPLE\nINFO\n", 0, kBadHeader + "INFO_END ???", 0, 0},
      {"CONTOURLINES\nEND\n", 0, "", 0, 0},
  };
  int number = 0;
  for (const auto& one : cases) {
    InfoLayer* const into = layer(DIGITALMODEL, QString("A%1").arg(++number));
    EXPECT_EQ(import(into, one.content), one.result) << one.content.constData();
    EXPECT_EQ(messages.take(), one.shown) << one.content.constData();
    EXPECT_EQ(into->vector(vectorSamples)->point3dCount(), one.samples) << one.content.constData();
    EXPECT_EQ(into->vector(vectorSamples)->lineCount(), one.lines) << one.content.constData();
  }
}

TEST_F(AsciiSamples, Arguments) {
  InfoLayer* const into = layer(DIGITALMODEL, "A");
  EXPECT_EQ(handler(into)->ImportSamples(nullptr, nullptr), 0);
  EXPECT_EQ(handler(into)->ExportSample(nullptr), 0);
  const QString invalid = "Um argumento inválido foi passado!arg : vec";
  EXPECT_EQ(messages.take(), invalid + "\n" + invalid);
  EXPECT_EQ(handler(into)->ImportSamples(into->vector(vectorTin, true), nullptr), 0);
  EXPECT_EQ(handler(into)->ExportSample(into->vector(vectorContours, true)), 0);
  const QString restriction = "Erro associado com uma restrição lógica!";
  EXPECT_EQ(messages.take(), restriction + "Not a CONTOUR Vector\n" + restriction + "No SAMPLE in Vector");
}

TEST_F(AsciiSamples, BreakLinesGoIntoAFileOfTheirOwn) {
  InfoLayer* const source = layer(DIGITALMODEL, "Relevo");
  Vector& vector = *source->vector(vectorSamples, true);
  delete insertLine(vector, {1, 2, 3, 4}, lineBreak);
  delete insertLine(vector, {5, 6, 7, 8}, linePlain, 0, 2.0f);
  fileName = "x_L3D.kdx";
  const auto out = handler(source);
  EXPECT_EQ(out->ExportSample(&vector), 1);
  const QByteArray samples = read("x_L3D.kdx");
  EXPECT_TRUE(
      samples.endsWith("\nINFO_END\nPOINT3D\nEND\nLINE3D\nHEIGHT 2.000000\n5.000000     6.000000\n"
                       "7.000000     8.000000\nEND\nEND"))
      << samples.constData();
  const QByteArray lines = read("x_L2D.kdx");
  EXPECT_TRUE(lines.startsWith("\nLINES\nINFO\n//Linhas de Quebra exportadas de PI Num\xE9rico\n"));
  EXPECT_TRUE(lines.endsWith("\nINFO_END\n1.000000     2.000000\n3.000000     4.000000\nEND\nEND"));

  fileName = "plain.kdx";
  InfoLayer* const empty = layer(DIGITALMODEL, "Vazio");
  EXPECT_EQ(handler(empty)->ExportSample(empty->vector(vectorSamples, true)), 1);
  const QByteArray both = read("plain.kdx");
  EXPECT_TRUE(both.contains("\nPOINT3D\nEND\nEND\nLINES\nINFO\n"));
  EXPECT_TRUE(both.endsWith("\nINFO_END\nEND"));
}

}  // namespace

}  // namespace kaldex::test
