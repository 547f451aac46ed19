#include "arcinfo/arcinfo_fixture.h"

namespace kaldex::test {

namespace {

TEST_F(ArcInfoFixture, LinesGoOutAndComeBack) {
  InfoLayer* const from = layer(THEMATICMODEL, "De");
  Vector* const vector = from->vector(vectorLines, true);
  insertLine(*vector, {500000.1234, 7000000.5, 500010, 7000020.25});
  insertLine(*vector, {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(handler(from)->ExportLines(vector, 0), 1);
  EXPECT_EQ(read("file.gen"),
            "1\n500000.123  7000000.500\n500010.000  7000020.250\nEND\n"
            "2\n1.000  2.000\n3.000  4.000\n5.000  6.000\nEND\nEND\n");
  InfoLayer* const into = layer(THEMATICMODEL, "Para");
  Vector* const back = into->vector(vectorLines, true);
  EXPECT_EQ(handler(into)->ImportLines(back, project->projection()), 1);
  EXPECT_EQ(allPoints(*back).size(), allPoints(*vector).size());
  EXPECT_EQ(back->FirstLine()->coordinates()[2], 500010.0);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(ArcInfoFixture, AngularFormsAndTheOneThatThereIsNot) {
  InfoLayer* const from = layer(THEMATICMODEL, "De");
  Vector* const vector = from->vector(vectorLines, true);
  insertLine(*vector, {500000, 10000000, 500000, 9999000});
  const std::pair<short, QByteArray> cases[] = {{2, "1\n-45.00000000  0.00000000\n"},
                                                {3, "1\n-162000.00000  0.00000\n"},
                                                {1, "1\n-45.00000000  0.00000000\n"}};
  for (const auto& [form, first] : cases) {
    EXPECT_EQ(handler(from, form)->ExportLines(vector, 0), 1);
    const QByteArray text = read("file.gen").replace("-0.0", "0.0");
    EXPECT_EQ(text.left(first.size()), first);
    EXPECT_EQ(report.notes.size(), form == 1 ? 1 : 0);
  }
}

TEST_F(ArcInfoFixture, ClassesChooseLinesAndPolygons) {
  InfoLayer* const from = layer(THEMATICMODEL, "De");
  Vector* const vector = from->vector(vectorLines, true);
  Category& category = *from->category();
  addClass(category, "Argila", 7);
  insertPolygon(*vector, {0, 0, 10, 0, 10, 10, 0, 10, 0, 0}, 7);
  insertPolygon(*vector, {20, 0, 30, 0, 30, 10, 20, 10, 20, 0});
  insertLine(*vector, {50, 50, 60, 60}, linePlain, 7);
  insertLine(*vector, {70, 70, 80, 80});
  vector->flush();
  const auto records = [this] { return read("file.gen").count("END\n") - 1; };
  EXPECT_EQ(handler(from)->ExportLines(vector, 0), 1);
  EXPECT_EQ(records(), 4);
  EXPECT_EQ(handler(from)->ExportLines(vector, 1), 1);
  EXPECT_EQ(records(), 2) << "the line of the class, and the border of a polygon of it";
  EXPECT_EQ(handler(from)->ExportPolygons(vector, 0), 1);
  EXPECT_EQ(records(), 4) << "two outlines and two loose lines";
  EXPECT_EQ(handler(from)->ExportPolygons(vector, 1), 1);
  EXPECT_EQ(records(), 2);

  EXPECT_EQ(handler(from)->ExportLabelPoints(vector, &category, 0), 1);
  EXPECT_EQ(read("file.gen"), "7  5.000  5.000   \n7  55.000  55.000   \nEND\n");
}

TEST_F(ArcInfoFixture, LabelsOfObjectsAreOneLineEach) {
  InfoLayer* const of = layer(CADASTRALMODEL, "Lotes");
  Vector* const vector = of->vector(vectorLines, true);
  for (const QString label : {"P12", "", "L 1\nA"}) {
    const KaldexObject object = newObject(category(OBJECTMODEL, "Lote"), label, QString());
    Point2d place(1 + object.id, 2);
    ASSERT_NE(vector->Insert(place), 0);
    Anchor anchor;
    anchor.InsertPoint(place);
    if (label == "P12") anchor.InsertLine(project->projection(), *insertLine(*vector, {10, 0, 20, 0}));
    link(*of, anchor, object);
  }
  EXPECT_EQ(handler(of)->ExportLabelPoints(vector, of->category(), 0), 1);
  EXPECT_EQ(read("file.gen"),
            "P12  15.000  0.000   \nP12  2.000  2.000   \n  3.000  2.000   \nL 1 A  4.000  2.000   \nEND\n");
  ASSERT_EQ(report.notes.size(), 1);
  EXPECT_TRUE(report.notes[0].endsWith(": 2")) << report.notes[0].toStdString();
}

TEST_F(ArcInfoFixture, ContoursAndSamples) {
  InfoLayer* const numeric = layer(DIGITALMODEL, "N");
  Vector* const contours = numeric->vector(vectorContours, true);
  insertLine(*contours, {1, 2, 3, 4}, linePlain, 0, 12.5f);
  EXPECT_EQ(handler(numeric)->ExportContourout(contours), 1);
  EXPECT_EQ(read("file.gen"), "1\n1.000  2.000  12.500000\n3.000  4.000  12.500000\nEND\nEND\n");

  Vector* const samples = numeric->vector(vectorSamples, true);
  insertLine(*samples, {1, 2, 3, 4}, lineMaster, 0, 5);
  insertLine(*samples, {5, 6, 7, 8}, lineBreak);
  Point3d point(9, 10, 11.5f);
  samples->Insert(point, 0);
  EXPECT_EQ(handler(numeric)->ExportSample(samples), 1);
  EXPECT_EQ(read("file.gen"), "1\n1.000  2.000  5.000000\n3.000  4.000  5.000000\nEND\nEND\n");
  EXPECT_EQ(read("file_L2D.txt"), "1\n5.000  6.000\n7.000  8.000\nEND\nEND\n");
  EXPECT_EQ(read("file_P3D.txt"), "1  9.000  10.000  11.500000\nEND\n");
  EXPECT_EQ(report.files.size(), 3) << "contours and samples went to the same name";
  EXPECT_EQ(messages.take(), "");
}

TEST_F(ArcInfoFixture, RefusalsAndFullDisks) {
  InfoLayer* const thematic = layer(THEMATICMODEL, "T");
  Vector* const lines = thematic->vector(vectorLines, true);
  insertLine(*lines, {1, 2, 3, 4});
  Vector* const samples = layer(DIGITALMODEL, "N")->vector(vectorSamples, true);
  const auto out = handler(thematic);
  const QString logic = "Erro associado com uma restrição lógica!";
  const QString argument = "Um argumento inválido foi passado!arg : ";
  EXPECT_EQ(out->ExportLines(nullptr, 0) + out->ExportPolygons(nullptr, 0) + out->ExportSample(nullptr) +
                out->ExportContourout(nullptr) + out->ExportLabelPoints(nullptr, nullptr, 0),
            0);
  EXPECT_EQ(messages.take(), QStringList(QVector<QString>(5, argument + "vec").toList()).join('\n'));
  EXPECT_EQ(out->ExportLabelPoints(lines, nullptr, 0), 0);
  EXPECT_EQ(messages.take(), argument + "cat");
  EXPECT_EQ(out->ExportLines(samples, 0) + out->ExportPolygons(samples, 0), 0);
  EXPECT_EQ(messages.take(), logic + "No LINES in Vector\n" + logic + "No LINES in Vector");
  EXPECT_EQ(out->ExportContourout(lines) + out->ExportSample(lines), 0);
  EXPECT_EQ(messages.take(), logic + "No Contourout in Vector\n" + logic + "No SAMPLE in Vector");
  EXPECT_EQ(out->ImportSamples(samples, nullptr), 0);
  messages.take();

  out->DataHome("/dev");
  out->DataFile("full");
  EXPECT_EQ(out->ExportLines(lines, 0), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
}

TEST_F(ArcInfoFixture, IdentifiersBeginAnewWhereSixteenBitsEnd) {
  InfoLayer* const from = layer(THEMATICMODEL, "De");
  Vector* const vector = from->vector(vectorLines, true);
  for (int i = 0; i < 65537; ++i) insertLine(*vector, {0, 0, 1.0 + i, 1})->Free(1);
  const auto out = handler(from);
  EXPECT_EQ(out->ExportLines(vector, 0), 1);
  EXPECT_EQ(out->exportedRecords, 1);
  InfoLayer* const into = layer(THEMATICMODEL, "Para");
  EXPECT_EQ(handler(into)->ImportLines(into->vector(vectorLines, true), project->projection()), 1);
  EXPECT_EQ(into->vector(vectorLines)->lineCount(), 65537);
}

}  // namespace

}  // namespace kaldex::test
