#include <unistd.h>

#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

/// The header of the fixture's layers as it stands between a section's comment and what the section adds.
QByteArray headerOf(const char* layer, int model, const char* modelName, const char* box) {
  return QByteArray(
             "\n//Arquivo ASCII gerado pelo Sistema KALDEX"
             "\n//Projeto: Projeto - Plano de informa\xE7\xE3o: ") +
         layer + "\n//Categoria: Categoria " + QByteArray::number(model) + " - Modelo: " + modelName +
         "\nPROJECTION\tUTM/SAD69, HEMIS -1, ORIG.LAT N 0 0 0.00000, ORIG.LONG O 45 0 0.00000, "
         "LAT1 N 0 0 0.00000, LAT2 N 0 0 0.00000"
         "\nDATUM\tSAD69, Prd 6378160.000000, Pflt 0.003352891869, Pdx -67.34999847, Pdy 3.88000011, "
         "Pdz -38.22000122"
         "\nOFFSETX  500000.000000   OFFSETY  10000000.000000   SCALEFACTOR  0.999600" +
         box + "\nSCALE\t25000.000000";
}

const char* const kPlaneBox =
    "\nBOX\t400000.000000, 7400000.000000, 500000.000000, 7500000.000000\nUNITS Metros";

class AsciiExport : public AsciiFixture {
 protected:
  Vector* vectorIn(short model, short kind = vectorLines) {
    layer_ = layer(model, "Plano", {400000, 7400000, 500000, 7500000});
    return layer_->vector(kind, true);
  }

  InfoLayer* layer_ = nullptr;
};

TEST_F(AsciiExport, LinesToTheByte) {
  Vector* const vector = vectorIn(THEMATICMODEL);
  delete insertLine(*vector, {400001, 7400001.5, 400002.123456499, 7400003});
  delete insertLine(*vector, {5, 5});  // too short: nothing is written for it
  delete insertLine(*vector, {-1.5, 0, 1e12, 2e-7, 3, 4});
  EXPECT_EQ(handler(layer_)->ExportLines(vector, 0), 1);
  const QByteArray first =
      "\nLINES\nINFO\n//Arcos sem Topologia" + headerOf("Plano", 4, "THEMATICMODEL", kPlaneBox) +
      "\nINFO_END"
      "\n400001.000000     7400001.500000\n400002.123456     7400003.000000\nEND"
      "\n-1.500000     0.000000\n1000000000000.000000     0.000000\n3.000000     4.000000\nEND"
      "\nEND";
  EXPECT_EQ(read("file.txt"), first);
  EXPECT_EQ(report.read["lines"], 3);
  EXPECT_EQ(report.written["lines"], 2);
  EXPECT_EQ(report.leftOut["few_points"], 1);
  EXPECT_EQ(report.files, QStringList(path("file.txt")));

  // A further export appends its own section.
  EXPECT_EQ(handler(layer_)->ExportLines(vector, 0), 1);
  EXPECT_EQ(read("file.txt"), first + first);
}

TEST_F(AsciiExport, NoLineGivesAHeaderAndOneEnd) {
  Vector* const vector = vectorIn(THEMATICMODEL);
  EXPECT_EQ(handler(layer_)->ExportLines(vector, 1), 1);
  EXPECT_TRUE(read("file.txt").endsWith("\nSCALE\t25000.000000\nINFO_END\nEND"));
}

TEST_F(AsciiExport, NetworkRecordsStandBeforeTheClassTest) {
  Vector* const vector = vectorIn(NETWORKMODEL);
  Line* const line = insertLine(*vector, {1, 1, 2, 2});
  line->impedancePositive = 1.5f;
  line->impedanceNegative = -1.0f;
  line->demand = 0.1f;
  line->state = stateChanged;
  delete line;
  delete insertLine(*vector, {1, 1});
  const auto out = handler(layer_, 0, 0, nullptr, ";");
  EXPECT_EQ(out->ExportLines(vector, 0), 1);
  const QByteArray head = QByteArray("\nNETWORK\nINFO\n//Arcos sem Topologia") +
                          headerOf("Plano", 8, "NETWORKMODEL", kPlaneBox) +
                          "\n//Formato Num_linha Impedancia_positiva Impedancia_negativa Demanda"
                          "\n//Formato (turns) linha_1 ; linha_2 ; custo_1_2 ; custo_2_1"
                          "\nINFO_END\n 1   1.500000   -1.000000   0.100000";
  EXPECT_EQ(read("file.txt"), head + "\n1.000000     1.000000\n2.000000     2.000000\nEND\nEND");
  QFile::remove(path("file.txt"));
  EXPECT_EQ(out->ExportLines(vector, 1), 1);
  EXPECT_EQ(read("file.txt"), head + "\nEND");
  EXPECT_EQ(report.leftOut["class_filter"], 1);
}

TEST_F(AsciiExport, UsedClassesOnly) {
  Vector* const vector = vectorIn(THEMATICMODEL);
  Category& thematic = *layer_->category();
  for (const char* name : {"Mata", "Campo", "Sem uso"}) {
    addClass(thematic, name);
  }
  ASSERT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
  const int mata = thematic.classes.at(0)->id;
  const int campo = thematic.classes.at(1)->id;
  delete insertLine(*vector, {0, 0, 1, 1}, linePlain, mata);  // of a class in use
  delete insertLine(*vector, {2, 2, 3, 3}, linePlain, 0);     // of none
  delete insertLine(*vector, {4, 4, 5, 5}, linePlain, 9999);  // of an unknown one
  insertPolygon(*vector, {6, 6, 7, 6, 7, 7, 6, 6}, campo);    // its border has no class, the polygon has
  SPolygon* const father = insertPolygon(*vector, {10, 10, 20, 10, 20, 20, 10, 10}, campo);
  SPolygon* const son = insertPolygon(*vector, {15, 12, 16, 12, 16, 13, 15, 12}, 0);
  father->AppendSon(son, 1);
  father->changed = son->changed = stateChanged;
  son->Free();
  father->Free();
  vector->flush();

  EXPECT_EQ(handler(layer_)->ExportLines(vector, 1), 1);
  const auto records = [&] {
    const QByteArray text = read("file.txt");
    QFile::remove(path("file.txt"));
    const int end = text.indexOf("INFO_END") + 8;
    return text.mid(end).replace(".000000", "").replace("     ", " ");
  };
  EXPECT_EQ(records(), "\n0 0\n1 1\nEND\n6 6\n7 6\n7 7\n6 6\nEND\n10 10\n20 10\n20 20\n10 10\nEND\nEND");
  // A son that isn't wanted itself is written with its father; loose lines pass by their own class.
  EXPECT_EQ(handler(layer_)->ExportPolygons(vector, 1), 1);
  EXPECT_EQ(records(),
            "\n6 6\n7 6\n7 7\n6 6\nEND\n10 10\n20 10\n20 20\n10 10\nEND\n15 12\n16 12\n16 13\n15 12\nEND"
            "\n0 0\n1 1\nEND\nEND");
  EXPECT_EQ(handler(layer_)->ExportPolygons(vector, 0), 1);
  EXPECT_EQ(records(),
            "\n6 6\n7 6\n7 7\n6 6\nEND\n10 10\n20 10\n20 20\n10 10\nEND\n15 12\n16 12\n16 13\n15 12\nEND"
            "\n0 0\n1 1\nEND\n2 2\n3 3\nEND\n4 4\n5 5\nEND\nEND");
}

TEST_F(AsciiExport, ContoursToTheByte) {
  Vector* const vector = vectorIn(DIGITALMODEL, vectorContours);
  delete insertLine(*vector, {1, 1, 2, 2}, linePlain, 0, 10.5f);
  delete insertLine(*vector, {3, 3, 4, 4}, lineMaster, 0, 100.0f);
  delete insertLine(*vector, {5, 5, 6, 6}, lineBreak, 0, 7.0f);
  delete insertLine(*vector, {7, 7}, linePlain, 0, 7.0f);
  EXPECT_EQ(handler(layer_)->ExportContourout(vector), 1);
  EXPECT_EQ(read("file.txt"),
            "\nCONTOURLINES\nINFO\n//Isolinhas" + headerOf("Plano", 2, "DIGITALMODEL", kPlaneBox) +
                "\nINFO_END"
                "\nLINE3D\nHEIGHT 10.500000\n1.000000     1.000000\n2.000000     2.000000\nEND"
                "\nLINE3D-MASTER\nHEIGHT 100.000000\n3.000000     3.000000\n4.000000     4.000000"
                "\nEND\nEND");
}

TEST_F(AsciiExport, GeographicFormsOfBoxAndCoordinates) {
  Project* const degrees = dataBase->createProject("Graus", *latLong());
  layer_ = layer(THEMATICMODEL, "LL", {-46, -24, -45, -23}, degrees);
  project = degrees;
  Vector* const vector = layer_->vector(vectorLines, true);
  delete insertLine(*vector, {-45.5, -23.25, -45.25, -23.125});
  const struct {
    short format;
    const char* box;
    const char* units;
    const char* record;
  } cases[] = {
      {0, "-46.000000, -24.000000, -45.000000, -23.000000", "DEG", "-45.500000     -23.250000"},
      {1, "X1 O 46 0 0.00000, Y1 S 24 0 0.00000, X2 O 45 0 0.00000, Y2 S 23 0 0.00000", "GMS",
       " O 45 30 0.00000   S 23 15 0.00000"},
      {2, "X1 -46.000000, Y1 -24.000000, X2 -45.000000, Y2 -23.000000", "DEG",
       "-45.50000000     -23.25000000"},
      {3, "X1 -165600.000000, Y1 -86400.000000, X2 -162000.000000, Y2 -82800.000000", "SEG",
       "-163800.00000     -83700.00000"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(handler(layer_, one.format)->ExportLines(vector, 0), 1);
    const QByteArray text = read("file.txt");
    EXPECT_TRUE(text.contains(QByteArray("\nBOX\t") + one.box + "\nUNITS Geogr\341ficas " + one.units + '\n'))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QByteArray("\n") + one.record + '\n')) << text.toStdString();
    QFile::remove(path("file.txt"));
  }
}

TEST_F(AsciiExport, WhatLatin1LacksIsTold) {
  project->name = QString::fromUtf8("Šum ação");
  Vector* const vector = vectorIn(THEMATICMODEL);
  EXPECT_EQ(handler(layer_)->ExportLines(vector, 0), 1);
  EXPECT_TRUE(read("file.txt").contains("//Projeto: ?um a\xE7\xE3o - "));
  ASSERT_EQ(report.notes.size(), 1);
  EXPECT_TRUE(report.notes[0].contains(QString::fromUtf8("Š")));
}

TEST_F(AsciiExport, UnsuitableVectorsAreRefused) {
  Vector* const lines = vectorIn(THEMATICMODEL);
  Vector* const samples = layer(DIGITALMODEL, "Amostras")->vector(vectorSamples, true);
  const auto out = handler(layer_);
  EXPECT_EQ(out->ExportLines(nullptr, 0) + out->ExportPolygons(nullptr, 0) + out->ExportContourout(nullptr),
            0);
  EXPECT_EQ(messages.texts(),
            QStringList(QVector<QString>(3, "Um argumento inválido foi passado!arg : vec").toList()));
  messages.take();
  EXPECT_EQ(out->ExportLines(samples, 0), 0);
  EXPECT_EQ(messages.take(), "Não existe linhas neste vetor!");
  EXPECT_EQ(out->ExportPolygons(samples, 0), 0);
  EXPECT_EQ(messages.take(), "Não existe linhas neste vetor!");
  EXPECT_EQ(out->ExportContourout(lines), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!No Contourout in Vector");
  EXPECT_FALSE(QFile::exists(path("file.txt")));
}

// A full disk shows at the last flush when little is written, and in the middle when it is much.
TEST_F(AsciiExport, AFullDiskIsTold) {
  ASSERT_EQ(symlink("/dev/full", path("file.txt").toLocal8Bit().constData()), 0);
  Vector* const vector = vectorIn(THEMATICMODEL);
  for (const int vertices : {2, 50000}) {
    std::vector<double> xy(static_cast<size_t>(2 * vertices));
    for (size_t i = 0; i < xy.size(); ++i) xy[i] = static_cast<double>(i);
    delete insertLine(*vector, xy);
    EXPECT_EQ(handler(layer_)->ExportLines(vector, 0), 0);
    EXPECT_EQ(messages.take(), "Erro de I/O.");
    EXPECT_EQ(handler(layer_)->ExportPolygons(vector, 0), 0);
    EXPECT_EQ(messages.take(), "Erro de I/O.");
  }
  EXPECT_TRUE(report.files.isEmpty());
}

TEST_F(AsciiExport, HeaderAlone) {
  vectorIn(THEMATICMODEL);
  const auto out = handler(layer_);
  EXPECT_EQ(out->InfoPrint(), 0) << "no open file";
  ASSERT_TRUE(out->openFile("a+"));
  EXPECT_EQ(out->InfoPrint(), 1);
  out->FileClose();
  EXPECT_EQ(read("file.txt"), headerOf("Plano", 4, "THEMATICMODEL", kPlaneBox));
}

}  // namespace

}  // namespace kaldex::test
