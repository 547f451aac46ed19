#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class AsciiInfo : public AsciiFixture {
 protected:
  struct Grid {
    unsigned lines = 99, columns = 99;
    double noData = 0, x = 0, y = 0, classes = -1;
    float resX = 0, resY = 0;
  };

  /// Read a header on a file of its own: the handler finds it behind "GRIDREG".
  int readGrid(const QByteArray& content, Grid& grid, int units = 0, SProjection* projection = nullptr) {
    write("file.txt", content);
    const auto in = handler(layer_, 0, units, projection);
    short formatted = 0;
    const int result =
        in->InfoSection(&grid.lines, &grid.columns, &grid.noData, nullptr, &formatted, nullptr, nullptr,
                        nullptr, &grid.x, &grid.y, &grid.resX, &grid.resY, &grid.classes);
    EXPECT_EQ(in->file, nullptr);
    return result;
  }

  /// Read a header behind its "INFO", which a caller has opened.
  int readBlock(const QByteArray& content, OpenAscii& in, unsigned* mode, Category* category,
                SFieldList* fields = nullptr, short* key = nullptr, short* name = nullptr) {
    write("file.txt", "INFO\n" + content);
    EXPECT_TRUE(in.openFile("r") && in.readWordIntoLine());
    short formatted = 0;
    return in.InfoSection(mode, nullptr, nullptr, category, &formatted, fields, key, name, nullptr, nullptr,
                          nullptr, nullptr, nullptr);
  }

  InfoLayer* layer_ = layer(THEMATICMODEL, "Plano");
};

TEST_F(AsciiInfo, GridsAndWhatIsWrongWithThem) {
  const struct {
    QByteArray content;
    int result;
    QString shown;
  } cases[] = {
      {"x GRIDREG\nINFO\n//c\nSEPARATOR ;\nUNFORMATED\nGRIDDEF 4 3 10.5 -20 1 2 -9999\nINFO_END\n", 1, ""},
      {"GRIDREG\nGRIDDEF 4 3 S 23 10 5.25 O 45 30 10.5 1 2 -9999\nINFO_END\n", 1, ""},
      {"GRIDREG\nGRIDDEF 4 3 10 20 1 2\nINFO_END\n", 0, kBad + "GRIDDEF 4 3 10 20 1 2"},
      {"GRIDREG\nGRIDDEF 4 3\nINFO_END\n", 0, kBad + "GRIDDEF 4 3"},
      {"GRIDREG\nGRIDDEF 4 x 1 2 3 4 5\nINFO_END\n", 0, kBad + "GRIDDEF 4 x 1 2 3 4 5"},
      {"GRIDREG\nGRIDDEF 4 3 S 23 10 5 O 45 30 10 1 2\nINFO_END\n", 0,
       kBad + "GRIDDEF 4 3 S 23 10 5 O 45 30 10 1 2"},
      {"GRIDREG\nGRIDDEF 4 3 S 99 10 5 O 45 30 10 1 2 3\nINFO_END\n", 0,
       kBad + "GRIDDEF 4 3 S 99 10 5 O 45 30 10 1 2 3"},
      {"GRIDREG\nSEPARATOR\nINFO_END\n", 0, kBad + "SEPARATOR"},
      {"GRIDREG\nGRIDDEF 4 3 1 2 1 2 -9999\n", 0, kBadHeader + "INFO_END ???"},
      {"GRIDREG", 0, kBad + "FEOF"},
      {"GRID REG", 0, kBad + "REG"},
      {"GRIDREG\nGRIDCLASS\n1\n// c\n2\nINFO_END\n", 1, ""},
      {"GRIDREG\nGRIDCLASS\n1\n", 0, ""},
  };
  for (const auto& one : cases) {
    Grid grid;
    EXPECT_EQ(readGrid(one.content, grid), one.result) << one.content.toStdString();
    EXPECT_EQ(messages.take(), one.shown) << one.content.toStdString();
    if (one.content.contains("GRIDCLASS")) {
      EXPECT_EQ(grid.classes, one.result == 1 ? 2 : -1);
    }
    if (one.result == 0 || !one.content.contains("GRIDDEF")) continue;
    EXPECT_EQ(grid.columns, 4u);
    EXPECT_EQ(grid.lines, 3u);
    EXPECT_EQ(grid.noData, -9999.0);
    EXPECT_EQ(grid.resX, 1.0f);
    EXPECT_EQ(grid.resY, 2.0f);
  }
}

TEST_F(AsciiInfo, CornersOfGrids) {
  Grid grid;
  EXPECT_EQ(readGrid("GRIDREG\nGRIDDEF 4 3 10.5 -20 1 2 0\nINFO_END\n", grid, 1), 1);
  EXPECT_EQ(grid.x, 10500.0);
  EXPECT_EQ(grid.y, -20000.0);
  const auto degrees = latLong();
  EXPECT_EQ(readGrid("GRIDREG\nGRIDDEF 4 3 10.5 -20 1 2 0\nINFO_END\n", grid, 4, degrees.get()), 1);
  EXPECT_EQ(grid.x, 10.5) << "plane degrees stay as they are";
  Point corner(Math_Deg_To_Rad(-45.5), Math_Deg_To_Rad(-23.25));
  project->projection()->geographicToPlane(corner);
  EXPECT_EQ(readGrid("GRIDREG\nGRIDDEF 4 3 -45.5 -23.25 1 2 0\nINFO_END\n", grid, 4), 1);
  EXPECT_NEAR(grid.x, corner.x, 1e-6);
  EXPECT_EQ(readGrid("GRIDREG\nGRIDDEF 4 3 S 23 15 0 O 45 30 0 1 2 0\nINFO_END\n", grid), 1);
  EXPECT_NEAR(grid.x, corner.x, 1e-6);
  EXPECT_NEAR(grid.y, corner.y, 1e-6);
}

TEST_F(AsciiInfo, ClassesTakeColoursAndAreAdded) {
  const auto in = handler(layer_);
  unsigned points = 4;
  unsigned areas = 7;
  messages.answer(kNoClasses, true);
  EXPECT_EQ(readBlock("THEMACLASS\n  1 2 3   Mata \t densa\n4 5 6 " + QByteArray(40, 'x') + "\nINFO_END\n",
                      *in, &points, nullptr),
            1);
  EXPECT_EQ(messages.take(), kNoClasses + "\n" + classesText(2, 2, 0) + "(THEMACLASS)");
  GeoClassList& classes = layer_->category()->classes;
  ASSERT_EQ(classes.Size(), 2);
  const GeoClass& forest = *classes.at(0);
  EXPECT_EQ(forest.name, "Mata densa");
  EXPECT_EQ(classes.at(1)->name, QString(32, 'x'));
  EXPECT_TRUE(forest.visual.point.color == Color(1, 2, 3));
  EXPECT_TRUE(forest.visual.polygon.color == Color(0, 0, 255));
  EXPECT_TRUE(forest.visual.line.color == Color(229, 91, 104));

  // A class that exists changes its colours; a new one is asked about, once.
  messages.answer(kAddAll, false);
  EXPECT_EQ(readBlock("THEMACLASS\n9 8 7 6 5 4 Mata densa\n1 1 1 1 1 1 A\n1 1 1 1 1 1 B\nINFO_END\n", *in,
                      &areas, nullptr),
            1);
  EXPECT_EQ(messages.take(), kAddAll + "1 1 1 1 1 1 A\n" + classesText(2, 0, 1) + "(THEMACLASS)");
  EXPECT_TRUE(forest.visual.polygon.color == Color(9, 8, 7));
  EXPECT_TRUE(forest.visual.line.color == Color(6, 5, 4));
  EXPECT_TRUE(forest.visual.point.color == Color(1, 2, 3));
  EXPECT_EQ(classes.Size(), 2);

  EXPECT_EQ(readBlock("THEMACLASS\n1 2 3\nINFO_END\n", *in, &points, nullptr), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!1 2 3");
  EXPECT_EQ(readBlock("THEMACLASS\n1 2 3 A\n", *in, &points, nullptr), 0);
  messages.take();
  in->FileClose();
  const auto numeric = handler(layer(DIGITALMODEL, "N"));
  EXPECT_EQ(readBlock("THEMACLASS\n", *numeric, &points, nullptr), 0);
  EXPECT_EQ(messages.take(), "Modelo da categoria é inválido para esta operação!");
}

TEST_F(AsciiInfo, AnEmptyCategoryMayRefuseClasses) {
  messages.answer(kNoClasses, false);
  unsigned points = 4;
  EXPECT_EQ(readBlock("THEMACLASS\n1 2 3 A\nINFO_END\n", *handler(layer_), &points, nullptr), 0);
  EXPECT_EQ(layer_->category()->classes.Size(), 0);
}

TEST_F(AsciiInfo, ColumnsMakeATable) {
  Category* const objects = category(OBJECTMODEL, "Municípios");
  const auto in = handler(layer_);
  SFieldList fields;
  short key = -1;
  short name = -1;
  messages.answer("Deseja inserir este(s) atributo(s)?", true);
  EXPECT_EQ(readBlock("SEPARATOR ;\nCATEGORY_OBJ   Munic\xEDpios \nUNFORMATED\nT_KEY ; TEXT ; 32 ; 0\n"
                      "area;REAL\nT_NAME;TEXT\n1st ; integer\n(x;Data;1\na-b ; Texto ; 12\nqint32;TEXT;1\n"
                      "abcdefghijk ; FLOAT\nABCDEFGHIJL ; INTEIRO\nINFO_END\n",
                      *in, nullptr, objects, &fields, &key, &name),
            1);
  in->FileClose();
  EXPECT_EQ(key, 0);
  EXPECT_EQ(name, 2);
  EXPECT_EQ(columnsTold(fields).join(' '),
            "T_KEY:3:32:0 area1:1:17:8 T_NAME:3:32:0 X1st:0:10:0 Xx:2:8:0 a_b:3:12:0 qint32_REN:3:1:0 "
            "abcdefghij:1:17:8 ABCDEFGHI2:0:10:0");
  std::vector<short> indexes;
  for (const SField* field : fields) indexes.push_back(field->index);
  EXPECT_EQ(indexes, (std::vector<short>{0, 1, 0, 2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(in->reservedNames, QVector<QString>({"area"}));
  EXPECT_EQ(in->replacementNames, QVector<QString>({"area1"}));
  SFieldList stored;
  EXPECT_EQ(dataBase->loadTableFields(stored, objects->attributeTable), 8);
  EXPECT_TRUE(stored.at(0)->hasName("GEOID"));

  // Now the table exists: columns must be its own, in any order, or be ignored.
  messages.take();
  messages.answer(kSkip, true);
  fields.Kill();
  EXPECT_EQ(
      readBlock(
          "SEPARATOR ;\nCATEGORY_OBJ Munic\xEDpios\nT_KEY ; TEXT\na_B ; TEXT ; 1\nnovo ; REAL\nINFO_END\n",
          *in, nullptr, objects, &fields),
      1);
  EXPECT_EQ(messages.take(), "Não existe esse atributo na tabela!novo ; REAL\n" + kSkip + "novo ; REAL");
  ASSERT_EQ(fields.Size(), 3);
  EXPECT_EQ(fields.at(1)->index, 4);
  EXPECT_EQ(fields.at(1)->size, 12);
  EXPECT_EQ(fields.at(2)->name, "IGNORARCOLUNA");
  EXPECT_EQ(report.leftOut["column_ignored"], 1);
}

TEST_F(AsciiInfo, ColumnsThatEndTheReading) {
  Category* const objects = category(OBJECTMODEL, "C");
  const struct {
    QByteArray content;
    bool makesTable;
    QString shown;
  } cases[] = {
      {"FORMATED\nCATEGORY_OBJ C\n", true, "Opção não disponível!FORMATED"},
      {"CATEGORY_OBJ D\n", true, kBad + "CATEGORY_OBJ D"},
      {"CATEGORY_OBJ C\nx ; REAL\nINFO_END\n", false, "Deseja inserir este(s) atributo(s)?"},
      {"SEPARATOR ;\nCATEGORY_OBJ C\nx ; NUMBER\n", true,
       "Deseja inserir este(s) atributo(s)?\n" + kBad + "x ; NUMBER"},
      {"SEPARATOR ;\nCATEGORY_OBJ C\nx ; TEXT ; 0\n", true,
       "Deseja inserir este(s) atributo(s)?\n" + kBad + "x ; TEXT ; 0"},
      {"SEPARATOR ;\nCATEGORY_OBJ C\nx ; TEXT ; 99999\n", true,
       "Deseja inserir este(s) atributo(s)?\n" + kBad + "x ; TEXT ; 99999"},
      {"SEPARATOR ;\nCATEGORY_OBJ C\nx\n", true, "Deseja inserir este(s) atributo(s)?\n" + kBad + "x"},
      {"CATEGORY_OBJ C\n", true, "Deseja inserir este(s) atributo(s)?\n" + kBadHeader + "INFO_END ???"},
  };
  for (const auto& one : cases) {
    RecordingPresenter answers;
    answers.answer("Deseja inserir", one.makesTable);
    SFieldList fields;
    EXPECT_EQ(readBlock(one.content, *handler(layer_), nullptr, objects, &fields), 0)
        << one.content.toStdString();
    EXPECT_EQ(answers.take(), one.shown) << one.content.toStdString();
    EXPECT_FALSE(dataBase->tableExists(objects->attributeTable));
  }
}

TEST_F(AsciiInfo, CategoryOfATable) {
  write("file.txt", "TABLE\nINFO\n  CATEGORY_OBJ   Rios do sul \nINFO_END\nEND\n");
  const auto in = handler(layer_);
  {
    RecordingPresenter answers;
    answers.answer(kNoCategory + "Rios do sul", false);
    EXPECT_EQ(in->InfoTable(1), nullptr);
  }
  messages.answer(kNoCategory, true);
  Category* const made = in->InfoTable(1);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->name, "Rios do sul");
  EXPECT_EQ(made->model, OBJECTMODEL);
  EXPECT_EQ(dataBase->GetKaldexObjCategory().Select("Rios do sul"), made);
  messages.take();
  EXPECT_EQ(in->InfoTable(1), made);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(in->InfoTable(2), nullptr);
  EXPECT_EQ(messages.take(), "Esta Categoria/Classe já existe!CATEGORY_OBJ   Rios do sul ");
  EXPECT_EQ(in->file, nullptr);
  write("file.txt", "TABLE\nINFO\nINFO_END\nEND\n");
  EXPECT_EQ(in->InfoTable(1), nullptr);
  EXPECT_EQ(messages.take(), "");
}

}  // namespace

}  // namespace kaldex::test
