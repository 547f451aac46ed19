#include "arcinfo/arcinfo_fixture.h"

namespace kaldex::test {

namespace {

struct Case {
  QByteArray content;
  int result;
  QString shown;
  int count;  ///< of what stands afterwards
};

TEST_F(ArcInfoFixture, LinesAndTheirMessages) {
  const Case cases[] = {
      {"1\n1 2\n3 4\nEND\nEND\n", 1, "", 1},
      {"1\n1 2\n3 4\nEND\nEND", 1, "", 1},
      {"  7 a name 1.5\n\n  1\t2\n// comment\n3 4 \nEND  \n8\n5 6\n7 8\n9 10\nEND\nEND\nrest", 1, "", 2},
      {"1\n-1 2e3\n3 .5\nEND\n2\n1 2\nEND\n3\n1 2\n1 2\nEND\n4\n1 2\n1 2\n1 2\nEND\nEND\n", 1, "", 2},
      {"END\n", 1, "", 0},
      {"", 0, kBad + "END ???", 0},
      {"1\n1 2\n3 4\nEND\n", 0, kBad + "END ???", 1},
      {"1\n1 2\n3 4\n", 0, kBad + "END ???", 0},
      {"1\n1 2\n3 4\nEND", 0, kBad + "END ???", 0},
      {"1", 0, kBad + "FEOF", 0},
      {"1.5\n1 2\n3 4\nEND\nEND\n", 0, kBad + "1.5", 0},
      {"a\n1 2\n3 4\nEND\nEND\n", 0, kBad + "a", 0},
      {"-1\n1 2\n3 4\nEND\nEND\n", 0, kBad + "-1", 0},
      {"ENDE\n", 0, kBad + "ENDE", 0},
      {"1\nEND\nEND\n", 0, kBad + "END", 0},
      {"1\n.5 2\n3 4\nEND\nEND\n", 0, kBad + ".5 2", 0},
      {"1\n1 2 3\n3 4 5\nEND\nEND\n", 0, kBad + "1 2 3", 0},
      {"1\n1 2\n3\nEND\nEND\n", 0, kBad + "3", 0},
      {"1\n1 2\nx\nEND\nEND\n", 0, kBad + "x", 0},
      {"1\n1 2\nnan 2\nEND\nEND\n", 0, kBad + "nan 2", 0},
      {"1\n1 2\n3 4\nEND\n2\n1 2\nENDE\n", 0, kBad + "ENDE", 1},
      {"1\r\n1 2\r\n", 0, "Arquivo no formato DOS, converter para UNIX!", 0},
  };
  int number = 0;
  for (const Case& one : cases) {
    InfoLayer* const into = layer(THEMATICMODEL, QString("Linhas %1").arg(number++));
    write("file.gen", one.content);
    const auto in = handler(into);
    Vector* const vector = into->vector(vectorLines, true);
    EXPECT_EQ(in->ImportLines(vector, project->projection()), one.result) << one.content.toStdString();
    EXPECT_EQ(in->file, nullptr);
    EXPECT_EQ(messages.take(), one.shown) << one.content.toStdString();
    EXPECT_EQ(vector->lineCount(), one.count) << one.content.toStdString();
  }
  EXPECT_EQ(report.leftOut.value("few_points"), 1);
  EXPECT_EQ(report.leftOut.value("degenerate"), 1);
  EXPECT_EQ(report.notes.size(), 1) << "what follows the last END";
}

TEST_F(ArcInfoFixture, VectorsMustSuitTheLayer) {
  InfoLayer* const thematic = layer(THEMATICMODEL, "T");
  InfoLayer* const numeric = layer(DIGITALMODEL, "N");
  Vector* const lines = thematic->vector(vectorLines, true);
  Vector* const samples = numeric->vector(vectorSamples, true);
  write("file.gen", "1\n1 2\n3 4\nEND\nEND\n");
  EXPECT_EQ(handler(thematic)->ImportLines(nullptr, nullptr), 0);
  EXPECT_EQ(handler(thematic)->ImportSamples(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(),
            "Um argumento inválido foi passado!arg : vec\n"
            "Um argumento inválido foi passado!arg : vec");
  EXPECT_EQ(handler(thematic)->ImportLines(samples, nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a LINE Vector");
  EXPECT_EQ(handler(numeric)->ImportLines(lines, nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a SAMPLE Vector");
  EXPECT_EQ(handler(numeric)->ImportLines(samples, nullptr), 1);
  EXPECT_EQ(samples->FirstLine()->Type(), lineBreak);
}

TEST_F(ArcInfoFixture, SamplesOfBothForms) {
  const struct {
    QByteArray content;
    int result;
    QString shown;
    int lines, points;
  } cases[] = {
      {"1\n1 2 10\n3 4 20\nEND\n2 name\n1 2 5\n3 4 5\nEND\nEND\n", 1, "", 2, 0},
      {"1  1 2 10\n-2  3 4 20\nEND\n", 1, "", 0, 2},
      {"END\n", 1, "", 0, 0},
      {"END", 1, "", 0, 0},
      {"1 1 2 10\n2 3 4 20\n", 0, kBad + "END ???", 0, 2},
      {"1 1 2 10\n2 3 4\nEND\n", 0, kBad + "2 3 4", 0, 1},
      {"1 1 2 10\nEND 1\n", 0, kBad + "END 1", 0, 1},
      {"1 1 2 inf\nEND\n", 0, kBad + "1 1 2 inf", 0, 0},
      {"s 23 10 5\nEND\n", 0, kBad + "lat-qint32", 0, 0},
      {"x 1 2 3\nEND\n", 0, kBad + "x 1 2 3", 0, 0},
      {"1\n1 2\n3 4\nEND\nEND\n", 0, kBad + "1 2", 0, 0},
      {"", 0, kBad, 0, 0},
      {"1", 0, kBad + "FEOF", 0, 0},
      {QByteArray(40000, '7'), 0, kBad + QString(1000, '7'), 0, 0},
  };
  int number = 0;
  for (const auto& one : cases) {
    InfoLayer* const into = layer(DIGITALMODEL, QString("Amostras %1").arg(number++));
    Vector* const vector = into->vector(vectorSamples, true);
    write("file.gen", one.content);
    EXPECT_EQ(handler(into)->ImportSamples(vector, project->projection()), one.result)
        << one.content.toStdString();
    EXPECT_EQ(messages.take(), one.shown) << one.content.toStdString();
    EXPECT_EQ(vector->lineCount(), one.lines) << one.content.toStdString();
    EXPECT_EQ(vector->point3dCount(), one.points) << one.content.toStdString();
  }
  Vector* const first = dataBase->findLayer(*project, "Amostras 0")->vector(vectorSamples);
  EXPECT_EQ(first->FirstLine()->height, 20.0f) << "the last vertex decides";
  EXPECT_EQ(first->FirstLine()->Type(), linePlain);
  ASSERT_EQ(report.notes.size(), 1);
  EXPECT_TRUE(report.notes[0].startsWith("Linhas com alturas diferentes")) << report.notes[0].toStdString();
}

TEST_F(ArcInfoFixture, BranchesOfSamplesOpenTheFileByThemselves) {
  InfoLayer* const into = layer(DIGITALMODEL, "N");
  Vector* const vector = into->vector(vectorSamples, true);
  write("file.gen", "1 1 2 10\nEND\n");
  EXPECT_EQ(handler(into, 0, 1)->ImpArcInfoPoint3D(vector, project->projection()), 1);
  const std::unique_ptr<Point3d> point(vector->FirstPoint3d());
  EXPECT_EQ(point->x, 1000.0) << "kilometres";
  EXPECT_EQ(point->z, 10.0f);
  write("file.gen", "1\n1 2 3\n3 4 5\nEND\nEND\n");
  EXPECT_EQ(handler(into)->ImpArcInfoLine3D(vector, project->projection()), 1);
  EXPECT_EQ(vector->lineCount(), 1);
}

TEST_F(ArcInfoFixture, LabelPointsOfClassesAndOfNone) {
  InfoLayer* const into = layer(THEMATICMODEL, "T");
  Category& soils = *into->category();
  addClass(soils, "Argila", 7);
  write("file.gen", "7 1 2\n8 3 4  \n-7 5 6\nEND\n");
  const auto in = handler(into, 0, 1);
  ASSERT_EQ(importLabels(*in), 1);
  ASSERT_EQ(in->labelPoints.Size(), 3);
  EXPECT_EQ(in->labelPoints.at(0)->Iclass, 7);
  EXPECT_EQ(in->labelPoints.at(1)->Iclass, 0);
  EXPECT_EQ(in->labelPoints.at(2)->Iclass, 0);
  EXPECT_EQ(*in->labelPoints.at(0)->Coordinate(), Point(1000, 2000));

  const Case cases[] = {{"7 1 2\n", 0, kBad + "END ???", 1}, {"7 1 2 3\nEND\n", 0, kBad + "7 1 2 3", 0},
                        {"7 1\nEND\n", 0, kBad + "7 1", 0},  {"a 1 2\nEND\n", 0, kBad + "a 1 2", 0},
                        {"END\n", 0, kBad + "END", 0},       {"", 0, kBad + "END ???", 0}};
  for (const Case& one : cases) {
    write("file.gen", one.content);
    const auto other = handler(into);
    EXPECT_EQ(importLabels(*other), one.result);
    EXPECT_EQ(messages.take(), one.shown);
    EXPECT_EQ(other->labelPoints.Size(), one.count);
  }
}

TEST_F(ArcInfoFixture, OutlinesTellFormAndBox) {
  using Form = UngenerateOutline::Form;
  const struct {
    QByteArray content;
    Form form;
    Box box;
  } cases[] = {
      {"1\n1 2\n3 4\nEND\n2\n-5 9\n0 0\nEND\nEND\n", Form::lines, {-5, 0, 3, 9}},
      {"1\n1 2 7\n3 4 7\nEND\nEND\n", Form::linesWithHeights, {1, 2, 3, 4}},
      {"100 1 2 7\n100 3 4 7\nEND\n", Form::pointsWithHeights, {1, 2, 3, 4}},
      {"100 1 2\n100 3 4\nEND\n", Form::labelPoints, {1, 2, 3, 4}},
      {"words\n", Form::unknown, Box::inverted()},
      {"7 20 20\n1 2\n3 4\nEND\n\n// 9 9\n8 30 30\n5 6\n0 0\nEND\nEND\n70 70\n", Form::lines, {0, 0, 5, 6}},
  };
  for (const auto& one : cases) {
    write("file.gen", one.content);
    const UngenerateOutline outline(path("file.gen"));
    EXPECT_EQ(outline.form(), one.form) << one.content.toStdString();
    EXPECT_EQ(outline.extent(nullptr, nullptr, 0), one.box) << one.content.toStdString();
  }
}

}  // namespace

}  // namespace kaldex::test
