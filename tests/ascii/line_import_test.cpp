#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

struct Case {
  QByteArray content;
  int result;
  QString shown;
  int lines;  ///< that stand afterwards
};

class AsciiImport : public AsciiFixture {
 protected:
  int import(InfoLayer* into, short kind, const QByteArray& content, int units = 0) {
    write("file.txt", content);
    Vector* const vector = into->vector(kind, true);
    const auto in = handler(into, 0, units);
    const int result = kind == vectorContours ? in->ImportContourout(vector, project->projection())
                                              : in->ImportLines(vector, project->projection());
    EXPECT_EQ(in->file, nullptr);
    return result;
  }
  /// Each into a layer of its own: NAME 0, NAME 1 ...
  template <std::size_t N>
  void checkAll(const Case (&cases)[N], short model, short kind, const QString& name) {
    int number = 0;
    for (const Case& one : cases) {
      InfoLayer* const into = layer(model, QString("%1 %2").arg(name).arg(number++));
      EXPECT_EQ(import(into, kind, one.content), one.result) << one.content.left(60).toStdString();
      EXPECT_EQ(messages.take(), one.shown) << one.content.left(60).toStdString();
      EXPECT_EQ(into->vector(kind)->lineCount(), one.lines) << one.content.left(60).toStdString();
    }
  }
};

TEST_F(AsciiImport, LinesAndTheirMessages) {
  const Case cases[] = {
      {"LINES\n1 2\n3 4\nEND\nEND\n", 1, "", 1},
      {"LINES\n1 2\n3 4\nEND\nEND", 1, "", 1},
      {"\nother words\nLINES_AND_MORE\n1 2\n3 4\nEND\nENDING\n", 1, "", 1},
      {"LINES\n  1\t2 rest\n// comment\n\n 3 4\nEND\nEND", 1, "", 1},
      {"LINES\nINFO\n//c\nSEPARATOR ;\nBOX\t1\nINFO_END\n-1 2e3\n3 .5\n+4 5\nEND\nEND", 1, "", 1},
      {"LINES\n// \n1 2\n3 4\nEND\nEND", 1, "", 1},
      {"LINES\nEND\n", 1, "", 0},
      {"LINES\n1 2\nEND\nEND", 1, "", 0},
      {"LINES\n1 2\n1 2\nEND\nEND", 1, "", 0},
      {"LINES\n1 2\n3 4\n1 2\nEND\nEND", 1, "", 1},
      {"LINES\nO 45 30 10   S 23 10 5\ns 23 10 6 w 45 30 11 z 7\nEND\nEND", 1, "", 1},
      {"", 0, "", 0},
      {"LINE\n1 2\n", 0, "", 0},
      {"LINES", 0, kBad + "END ???", 0},
      {"LINES\n1 2\n3 4\nEND\n", 0, kBad + "END ???", 1},
      {"LINES\n1 2\n3 4\nEND", 0, kBad + " FEOF", 0},
      {"LINES\n1 2\n3 4\n", 0, kBad + " FEOF", 0},
      {"LINES\n1 2", 0, "", 0},
      {"LINES\nabc\n", 0, kBad + "abc", 0},
      {"LINES\n1 2 3\n", 0, kBad + "1 2 3", 0},
      {"LINES\n1\n", 0, kBad + "1", 0},
      {"LINES\n1,5 2\n3 4\n", 0, kBad + "1,5 2", 0},
      {"LINES\n1 2\n3 4\nEND\n5 6\nx\nEND\n", 0, kBad + "x", 1},
      {"LINES\n1 2\nnan 4\nEND\n", 0, kBad + "nan 4", 0},
      {"LINES\n-\n", 0, kBad + "-", 0},
      {"LINES\nE\n", 0, kBad + "E", 0},
      {"LINES\nO 45 30 10 S 99 10 5\n", 0, kBad + "O 45 30 10 S 99 10 5", 0},
      {"LINES\n// 7 8\n1 2\n3 4\nEND\nEND", 1, "",
       1},  // a comment's words are read: its first number begins a record
      {"LINES\n// END\n1 2\n3 4\nEND\n", 1, "", 0},
      {"LINES\nINFO\n", 0, kBadHeader + "INFO_END ???", 0},
      {"LINES\nINFO", 0, kBad + "FEOF", 0},
      {"LINES\nINFO\nSEPARATOR ;;\nINFO_END\n", 0, kBad + "SEPARATOR ;;", 0},
      {"LINES\nINFO\nFORMATED\nGRIDDEF x\nTHEMACLASS\nCATEGORY_OBJ x\nINFO_END\nEND\n", 1, "", 0},
      {"LINES\r\n1 2\r\n", 0, "Arquivo no formato DOS, converter para UNIX!", 0},
      {"\nLINES\r\n1 2\r\n3 4\r\nEND\r\nEND\r\n", 1, "", 1},
      {"LINES\n1 2\n3 4" + QByteArray(40000, ' ') + "\nEND\nEND\n", 0, kBad + "3 4" + QString(997, ' '), 0},
      {"LINES\n" + QByteArray(500000, '7') + " 2\n3 4\nEND\nEND\n", 0, kBad + QString(1000, '7'), 0},
      {"LINES\nINFO\n" + QByteArray(40000, 'x') + "\nINFO_END\n1 2\n3 4\nEND\nEND\n", 0,
       kBad + QString(1000, 'x'), 0},
  };
  checkAll(cases, THEMATICMODEL, vectorLines, "Linhas");
}

TEST_F(AsciiImport, NetworkLines) {
  const Case cases[] = {
      {"LINES\nNETWORK\n 7 1.5 -5 0.25\n1 2\n3 4\nEND\nEND\n", 1, "", 1},
      {"NETWORK\n7 1 1 1\nEND\nEND\n", 1, "", 0},
      {"NETWORK\n7 1 1\n1 2\n3 4\nEND\nEND\n", 0, kBad + "7 1 1", 0},
      {"NETWORK\n7 1 nan 1\n1 2\n3 4\nEND\nEND\n", 0, kBad + "7 1 nan 1", 0},
      {"NETWORK\n7 1 1 1e39\n1 2\n3 4\nEND\nEND\n", 0, kBad + "7 1 1 1e39", 0},
      {"NETWORK\n7 1 1 1\n", 0, kBad + " FEOF", 0},
      {"NETWORK\n7 1 1 1\n8 1 1 1\n1 2\n3 4\nEND\nEND\n", 0, kBad + "8 1 1 1", 0},
      {"NETWORK_OBJECTS\nx\n", 0, kBad + "x", 0},  // taken for the section, whose keyword it begins with
      {"LINES\n1 2\n3 4\nEND\nEND\n", 0, "", 0},
  };
  checkAll(cases, NETWORKMODEL, vectorLines, "Rede");
  Line* const line = dataBase->findLayer(*project, "Rede 0")->vector(vectorLines)->FirstLine();
  EXPECT_EQ(line->impedancePositive, 1.5f);
  EXPECT_EQ(line->impedanceNegative, -1.0f);
  EXPECT_EQ(line->demand, 0.25f);
  EXPECT_EQ(line->id, 1) << "not the file's number";
  EXPECT_EQ(line->Type(), linePlain);
}

TEST_F(AsciiImport, VectorsMustSuitTheLayer) {
  InfoLayer* const thematic = layer(THEMATICMODEL, "T");
  InfoLayer* const numeric = layer(DIGITALMODEL, "N");
  EXPECT_EQ(handler(thematic)->ImportLines(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : vec");
  EXPECT_EQ(handler(thematic)->ImportContourout(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : vec");
  EXPECT_EQ(import(thematic, vectorSamples, ""), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a LINE Vector");
  EXPECT_EQ(import(numeric, vectorLines, ""), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a SAMPLE Vector");

  // In a numeric layer lines are break lines among the samples.
  EXPECT_EQ(import(numeric, vectorSamples, "LINES\n1 2\n3 4\nEND\nEND"), 1);
  EXPECT_EQ(numeric->vector(vectorSamples)->FirstLine()->Type(), lineBreak);

  // A vector that was never made is one of lines, and takes none.
  Vector unmade;
  EXPECT_EQ(handler(thematic)->ExportLines(&unmade, 0), 1);
  EXPECT_EQ(handler(thematic)->ExportPolygons(&unmade, 1), 1);
  EXPECT_EQ(messages.take(), "");
  write("file.txt", "LINES\n1 2\n3 4\nEND\nEND\n");
  EXPECT_EQ(handler(thematic)->ImportLines(&unmade, nullptr), 0);

  Vector other;
  QString folderName = folder();
  ASSERT_EQ(other.Init(project->projection(), Box(0, 0, 9, 9), 8, 4, folderName, "other"), 1);
  EXPECT_EQ(handler(thematic)->ImportContourout(&other, nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a CONTOUR Vector");
}

TEST_F(AsciiImport, ContoursAndTheirMessages) {
  const QByteArray open = "CONTOURLINES\n";
  const Case cases[] = {
      {open + "LINE3D\nHEIGHT 10.5\n1 2\n3 4\nEND\nEND", 1, "", 1},
      {open +
           "INFO\nINFO_END\nLINE3D HEIGHT 1 rest\n1 2\n3 4\nEND\n// \nLINE3D-MASTER\nHEIGHT 2\n1 2\nEND\nEND",
       1, "", 2},
      {open + "LINE3D\nHEIGHT 1\nO 45 30 10  S 23 10 5\nEND\nEND", 1, "", 1},
      {open + "LINE3D\nHEIGHT 1\n-1e9 5\n1e9 6\nEND\nEND", 1, "", 1},  // lines may leave the box
      {open + "LINE3D\nHEIGHT 1\nEND\nEND", 1, "", 0},
      {open + "POINT3D\nEND\nEND", 1, "", 0},
      {open, 0, kBad + "END ???", 0},
      {"SAMPLE\n", 0, "", 0},
      {open + "LINES\n", 0, kBad + "LINES", 0},
      {open + "LINE3D\nheight 1\n", 0, kBad + "height", 0},
      {open + "LINE3D\n", 0, kBad + "LINE3D", 0},
      {open + "LINE3D\nHEIGHT\n", 0, kBad + "HEIGHT", 0},
      {open + "LINE3D\nHEIGHT x\n", 0, kBad + "x", 0},
      {open + "LINE3D\nHEIGHT nan\n1 2\n3 4\nEND\nEND", 0, kBad + "nan", 0},
      {open + "LINE3D\nHEIGHT 1e39\n1 2\n3 4\nEND\nEND", 0, kBad + "1e39", 0},
      {open + "LINE3D\nHEIGHT 1", 0, kBad + "FEOF", 0},
      {open + "LINE3D\nHEIGHT 1\n", 0, "", 0},
      {open + "LINE3D\nHEIGHT 1\n1 2\n", 0, kBad + " FEOF", 0},
      {open + "LINE3D\nHEIGHT 1\n1 2 3\nEND\nEND", 0, kBad + "1 2 3", 0},
      {open + "LINE3D\nHEIGHT 1\n.5 2\n", 0, kBad + ".5 2", 0},
      {open + "LINE3D\nHEIGHT 1\n1 2\nxyz\n", 0, kBad + "xyz", 0},
      {open + "LINE3D\nHEIGHT 1\nO 45 30 10  S 23 10 5\nO 1\n", 0, kBad + "O 1", 0},
      {open + "POINT3D\n1 2\nEND\n", 0, kBad + "1 2", 0},
      {open + "POINT3D\n1 2 nan\nEND\nEND\n", 0, kBad + "1 2 nan", 0},
      {open + "POINT3D\n1 2 -1e39\nEND\nEND\n", 0, kBad + "1 2 -1e39", 0},
      {open + "POINT3D\nO 45 30 10  S 23 10 5 z nan\nEND\nEND\n", 0, kBad + "O 45 30 10  S 23 10 5 z nan", 0},
      {open + "POINT3D\nx 2 3\n", 0, kBad + "x 2 3", 0},
      {open + "POINT3D\nO 45 30 10  S 23 10 5\nEND\n", 0, kBad + "O 45 30 10  S 23 10 5", 0},
      {open + "POINT3D\nO 45 30 10  S 23 10 5 z 1\nO\n", 0, kBad + "O", 0},
      {open + "POINT3D\n1 2 3\nxyz\n", 0, kBad + "xyz", 0},
      {open + "POINT3D\n1 2 3\n", 0, kBad + " FEOF", 0},
      {open + "POINT3D\n", 0, kBad + " FEOF", 0},
      {open + "POINT3D", 0, kBad + "FEOF", 0},
  };
  checkAll(cases, DIGITALMODEL, vectorContours, "Isolinhas");
  Vector& second = *dataBase->findLayer(*project, "Isolinhas 1")->vector(vectorContours);
  EXPECT_EQ(second.FirstLine()->Type(), linePlain);
  EXPECT_EQ(second.FirstLine()->height, 1.0f);
  EXPECT_EQ(second.NextLine()->Type(), lineMaster);
}

TEST_F(AsciiImport, PointsOfContoursOutsideTheBoxAreDroppedSilently) {
  InfoLayer* const into = layer(DIGITALMODEL, "Amostras", {0, 0, 10, 10});
  EXPECT_EQ(
      import(into, vectorContours,
             "CONTOURLINES\nPOINT3D\n1 2 3\n10 10 5\n11 5 7\nEND\nLINE3D\nHEIGHT 1\n1 1\n2 2\nEND\nEND"),
      1);
  EXPECT_EQ(messages.take(), "");
  Vector& vector = *into->vector(vectorContours);
  EXPECT_EQ(vector.point3dCount(), 2);
  const std::unique_ptr<Point3d> first(vector.FirstPoint3d());
  EXPECT_EQ(first->z, 3.0f);
  EXPECT_EQ(report.leftOut["outside_box"], 1);
  EXPECT_EQ(report.written["samples"], 2);
  EXPECT_EQ(report.written["contours"], 1);
  // What stood before an error stays.
  EXPECT_EQ(import(into, vectorContours, "CONTOURLINES\nPOINT3D\n4 4 4\n5 5\nEND\nEND"), 0);
  EXPECT_EQ(vector.point3dCount(), 3);
}

TEST_F(AsciiImport, UnitsScaleTheNumbers) {
  InfoLayer* const into = layer(THEMATICMODEL, "km");
  EXPECT_EQ(import(into, vectorLines, "LINES\n1.5 2\n-3 4\nEND\nEND", 1), 1);
  EXPECT_EQ(allPoints(*into->vector(vectorLines)), std::vector<double>({1500, 2000, -3000, 4000}));
  // Degrees that are none leave their line out, and the user hears of it.
  EXPECT_EQ(import(into, vectorLines, "LINES\n-45 -23\n-45 -95\nEND\nEND", 4), 1);
  EXPECT_EQ(into->vector(vectorLines)->lineCount(), 1);
  EXPECT_EQ(report.leftOut["refused"], 1);
  EXPECT_EQ(report.notes.size(), 1);
}

TEST_F(AsciiImport, CountsProgressAndPlace) {
  InfoLayer* const into = layer(THEMATICMODEL, "P");
  ProgressRecorder progress;
  const QByteArray content = "LINES\n1 2\n3 4\nEND\n1 2\nEND\n1 2\n1 2\nEND\n5 6\n  7 x\nEND\nEND\n";
  EXPECT_EQ(import(into, vectorLines, content), 0);
  EXPECT_EQ(report.read["lines"], 3);
  EXPECT_EQ(report.written["lines"], 1);
  EXPECT_EQ(report.leftOut["few_points"], 1);
  EXPECT_EQ(report.leftOut["degenerate"], 1);
  EXPECT_EQ(report.place.line, 11);
  EXPECT_EQ(report.place.column, 3);
  EXPECT_EQ(progress.maxima, std::vector<int>({content.size() / 35}));
  EXPECT_EQ(progress.stops, std::vector<bool>({true}));
}

TEST_F(AsciiImport, CancellingEndsQuietlyAndKeepsWhatStands) {
  InfoLayer* const into = layer(THEMATICMODEL, "C");
  ProgressRecorder progress;
  progress.cancelAt = 20;
  EXPECT_EQ(import(into, vectorLines, "LINES\n" + QByteArray("1 2\n3 4\nEND\n").repeated(100) + "END\n"), 0);
  EXPECT_EQ(messages.take(), "");
  EXPECT_GT(into->vector(vectorLines)->lineCount(), 0);
  EXPECT_LT(into->vector(vectorLines)->lineCount(), 100);
}

// However short the file was cut: no crash, no success, and what was complete is in.
TEST_F(AsciiImport, FilesCutAtEveryByte) {
  const struct {
    short model, kind;
    QByteArray content;
    int accepted;  ///< bytes from the end that may be missing
  } cases[] = {
      {THEMATICMODEL, vectorLines,
       "\nLINES\nINFO\n//c\nSEPARATOR ;\nINFO_END\n1 2\n3 4\nEND\n5 6\n7 8\nEND\nEND\n", 1},
      {NETWORKMODEL, vectorLines, "NETWORK\n1 1 1 1\nO 45 3 1 S 2 1 5\nO 45 3 1 S 2 1 6\nEND\nEND\n", 1},
      {DIGITALMODEL, vectorContours,
       "CONTOURLINES\nPOINT3D\n1 2 3\nEND\nLINE3D\nHEIGHT 1\n1 2\n3 4\nEND\nEND\n", 1},
  };
  for (const auto& one : cases) {
    InfoLayer* const into = layer(one.model, QString("Corte %1").arg(one.model));
    for (int size = 0; size < one.content.size() - one.accepted; ++size) {
      EXPECT_EQ(import(into, one.kind, one.content.left(size)), 0) << size;
    }
    EXPECT_EQ(import(into, one.kind, one.content.left(one.content.size() - one.accepted)), 1);
  }
}

TEST_F(AsciiImport, NamesOfRecords) {
  write("file.txt", "NAME  \t\"Rio d'\xC1gua\"  \nNAME\nLABEL " + QByteArray(100, 'n') + "\nNAME x");
  const auto in = handler(layer(THEMATICMODEL, "L"));
  ASSERT_TRUE(in->openFile("r"));
  char name[40];
  const struct {
    int result;
    QByteArray name, record;
  } cases[] = {{1, "Rio d\xC1gua", "NAME  \t\"Rio d'\xC1gua\"  "},
               {1, "", "NAME"},
               {1, QByteArray(39, 'n'), "LABEL " + QByteArray(100, 'n')},
               {0, "", "NAME"}};
  for (const auto& one : cases) {
    ASSERT_TRUE(in->readWordIntoLine());
    EXPECT_EQ(in->ExtraiNome(name), one.result);
    EXPECT_EQ(QByteArray(name), one.name);
    if (one.result == 1) {
      EXPECT_EQ(QByteArray(in->line2), one.record);
    }
  }
  EXPECT_EQ(messages.take(), kBad + "FEOF");
  EXPECT_EQ(in->file, nullptr);
}

}  // namespace

}  // namespace kaldex::test
