#include "kaldex/model/dbf.h"
#include "shapefile/import_fixture.h"

namespace kaldex::test {
namespace {

constexpr char kClean[] = "Limpa os polígonos internos duplicados ?";
constexpr char kCreate[] = "Categoria objeto inexistente Cria e continua ?";
constexpr char kContinueWithout[] = "Continuar sem importar atributos do .dbf ? ";
constexpr char kIgnoreItem[] = "Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?";
constexpr char kRenamed[] =
    "Atenção os seguintes atributos tiveram seus nomes modificados pois eram palavras reservadas do "
    "sistema! ";

/// Imports into cadastral layers, with attributes.
class ShapeImportObjectsTest : public ImportFixture {
 protected:
  ShapeImportObjectsTest() { messages.answer(kCreate, true); }
  void writeTable(const DbfMaker& table) { write("e.dbf", table.bytes()); }
  void writePoints(int count) {
    std::vector<TestShape> shapes;
    for (int i = 1; i <= count; ++i) shapes.push_back({{{10.0 * i, 10.0 * i}}});
    writeShapes(SHPT_POINT, shapes);
  }
};

TEST_F(ShapeImportObjectsTest, NamesThatTheDatabaseCanTake) {
  writePoints(1);
  DbfMaker table({{"nome", 'C', 5},
                  {"CATEGORIA", 'C', 5},
                  {"1ST", 'C', 5},
                  {"2345678901", 'C', 5},
                  {"-a-b.c", 'C', 5},
                  {"_x_", 'N', 4},
                  {"A_VERYLONGN", 'N', 8, 2},
                  {"A_VERYLONGM", 'D', 8},
                  {"A-VERYLONGN", 'N', 9},
                  {"pop", 'C', 5},
                  {"POP", 'C', 5},
                  {"Pop", 'C', 5},
                  {"nome1", 'C', 5}});
  table.row({"v"});
  writeTable(table);
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(columns(),
            QString("nome1:3:5:0 CATEGOR1:3:5:0 X1ST:3:5:0 X234567890:3:5:0 Xa_b_c:3:5:0 Xx_:0:4:0 "
                    "A_VERYLONG:1:8:2 A_VERYLON1:2:8:0 A_VERYLON2:0:9:0 pop:3:5:0 POP1:3:5:0 Pop2:3:5:0 "
                    "nome11:3:5:0"));
  EXPECT_EQ(messages.take(),
            QString(kCreate) + "e_O\n" + kRenamed + "nome para nome1  CATEGOR para CATEGOR1  ");
  ASSERT_EQ(report.renamed.size(), 12);
  EXPECT_EQ(report.renamed[1], qMakePair(QString("CATEGORIA"), QString("CATEGOR1")));

  // The same names are found again, each by the column that it has come from.
  ASSERT_EQ(importLines(NETWORKMODEL), 1);
  EXPECT_EQ(columns().count(' '), 12);
}

TEST_F(ShapeImportObjectsTest, TheTableGrowsByWhatItLacks) {
  writePoints(1);
  writeTable(DbfMaker({{"A", 'C', 4}, {"N", 'N', 4}}).row({"abcd", "12"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  writePoints(2);
  writeTable(DbfMaker({{"NEW", 'N', 6, 2}, {"a", 'C', 9}, {"n", 'N', 9}})
                 .row({"1.25", "ABCDEFGHI", "-123456"})
                 .row({"2.5", "xyz", ""}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(columns(), QString("A:3:4:0 N:0:4:0 NEW:1:6:2"));
  // What the table has keeps its width: texts lose their end, integers their high digits, but not the sign.
  EXPECT_EQ(objects(), QString("1 2: ABCD|-456|1.25\n2 1: xyz||2.5"));
  EXPECT_EQ(leftOut(), QString("bad_value=2"));
  EXPECT_EQ(report.written["objects"], 1);
}

TEST_F(ShapeImportObjectsTest, RowsKeepStepWithShapes) {
  writeShapes(SHPT_POINT,
              {{{{10, 10}}}, {{}, {}, SHPT_NULL}, {{{5000, 10}}}, {{{40, 40}}}, {{{50, 50}}}, {{{60, 60}}}});
  writeTable(DbfMaker({{"ID_", 'N', 3}}).row({"1"}).row({"2"}).row({"3"}).row({"4"}, '*').row({"5"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(objects(), QString("1 1: 1\n2 1: 4\n3 1: 5\n4 1: "))
      << "a deleted row counts, a missing one is no values";
  EXPECT_EQ(report.written["objects"], 4);
  EXPECT_EQ(report.read["rows"], 5);
  EXPECT_EQ(leftOut(), QString("null_shape=1 outside_box=1"));
}

TEST_F(ShapeImportObjectsTest, AnchorsHoldAllPiecesOfAShape) {
  writeShapes(SHPT_ARC, {{{{1, 1}, {10, 0, 10, 30}, {20, 0, 20, 40}}}, {{{3, 3}}}});
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"x"}).row({"y"}));
  ASSERT_EQ(importLines(NETWORKMODEL), 1);
  EXPECT_EQ(objects(), QString("1 2: x\n2 0: y"));
  EXPECT_EQ(leftOut(), QString("few_points=2 no_geometry=1"));
  const std::unique_ptr<Anchor> anchor(vector()->FirstAnchor());
  ASSERT_NE(anchor, nullptr);
  EXPECT_NEAR(anchor->perimeter, 70, 1e-9);
  const auto links = dataBase->selectRecords(layer_->associationTable(), "*", "", "", "");
  EXPECT_NEAR(links->real(links->columnIndex("PERIMETRO")), 70, 1e-9)
      << "the association knows of the second piece";
}

TEST_F(ShapeImportObjectsTest, PolygonsOfBothWaysBecomeObjects) {
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"x"}).row({"y"}));
  writeShapes(SHPT_POLYGON, {{{squareRing(0, 0, 10), squareRing(20, 0, 10), squareRing(2, 2, 4, true)}},
                             {{squareRing(2, 2, 4)}}});
  for (bool clean : {false, true}) {
    SCOPED_TRACE(clean);
    messages.answer(kClean, clean);
    ASSERT_EQ(importLines(clean ? NETWORKMODEL : CADASTRALMODEL), 1);
    EXPECT_EQ(objects(), QString("1 2: x\n2 1: y"));
    for (SPolygon* polygon = vector()->FirstPolygon(); polygon != nullptr;
         polygon = vector()->NextPolygon()) {
      EXPECT_EQ(polygon->labelPoint.isUnset(), polygon->parentId != 0 && !clean) << polygon->id;
    }
    messages.forget();
    messages.answer(kCreate, true);
  }
}

TEST_F(ShapeImportObjectsTest, ObjectsOfAnEarlierImportAreTakenUp) {
  writePoints(2);
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"one"}).row({"two"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  writePoints(3);
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"ONE"}).row({""}).row({"SIX"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(objects(), QString("1 2: ONE\n2 2: \n3 1: SIX")) << "an empty value takes the old one's place";
  // In another layer the objects are known and have no anchor yet.
  ASSERT_EQ(importLines(NETWORKMODEL), 1);
  EXPECT_EQ(objects(), QString("1 1: ONE\n2 1: \n3 1: SIX"));
  EXPECT_EQ(report.written["objects"], 0);

  // An association that leads to no anchor.
  const auto link = dataBase->selectRecords(layer_->associationTable(), "*", "", "", "");
  link->edit();
  link->setText(link->columnIndex("GANCHORID"), "4711");
  ASSERT_NE(link->post(), 0);
  messages.take();
  EXPECT_EQ(importLines(NETWORKMODEL), 0);
  EXPECT_EQ(messages.take(), QString("Erro de I/O.Erro ao carregar âncora!"));
  EXPECT_EQ(vector()->point2dCount(), 3);
}

TEST_F(ShapeImportObjectsTest, NoTableToRead) {
  writePoints(2);
  QFile::remove(path("e.dbf"));
  const QString told = "Arquivo .dbf corrompido ou aberto, fechar para ter acesso a lista de atributos  " +
                       path("e.shp") + "\n";
  messages.answer(kContinueWithout, false);
  EXPECT_EQ(importLines(CADASTRALMODEL), 0);
  EXPECT_EQ(messages.take(), told + kContinueWithout);
  messages.forget();
  messages.answer(kContinueWithout, true);
  EXPECT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(messages.take(), told + kContinueWithout);
  EXPECT_EQ(points(), QString("10,10 20,20"));
  EXPECT_EQ(vector()->anchorCount(), 0);
}

TEST_F(ShapeImportObjectsTest, NoCategoryWanted) {
  writePoints(2);
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"x"}));
  messages.forget();
  messages.answer(kCreate, false);
  EXPECT_EQ(importLines(CADASTRALMODEL), 0);
  EXPECT_EQ(messages.take(), QString(kCreate) + "e_O");
  EXPECT_EQ(dataBase->categoryList().Select("e_O"), nullptr);
  EXPECT_EQ(vector()->point2dCount(), 0);
  EXPECT_EQ(importLines(THEMATICMODEL), 1) << "other models take the geometry alone and ask nothing";
  EXPECT_EQ(messages.take(), QString());
}

TEST_F(ShapeImportObjectsTest, ACategoryThatHoldsNoObjects) {
  writePoints(2);
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"x"}));
  category(THEMATICMODEL, "e_O");
  EXPECT_EQ(importLines(CADASTRALMODEL), 0);
  EXPECT_EQ(messages.take(), QString("Valor inválido!"));
  EXPECT_EQ(vector()->point2dCount(), 0);
}

TEST_F(ShapeImportObjectsTest, WrongValuesAreAskedAbout) {
  messages.answer(kIgnoreItem, true);
  writePoints(3);
  writeTable(DbfMaker({{"R", 'N', 8, 2}, {"D", 'D', 8}, {"S", 'C', 4}})
                 .row({"  1,5", "20240229", "a"})
                 .row({"x1", "20230229", "b"})
                 .row({"", "", "c"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(messages.take(), QString("%1e_O\n%2R x1\n%2D 20230229").arg(kCreate, kIgnoreItem));
  EXPECT_EQ(objects(), QString("1 1: 1.5|20240229|a\n2 1: ||b\n3 1: ||c"));
  EXPECT_EQ(leftOut(), QString("bad_value=2"));

  messages.forget();
  messages.answer(kIgnoreItem, false);
  EXPECT_EQ(importLines(NETWORKMODEL), 0);
  EXPECT_EQ(messages.take(), QString("%1R x1\nValor inválido!").arg(kIgnoreItem));
  EXPECT_EQ(vector()->point2dCount(), 0) << "all or nothing";
  EXPECT_EQ(vector()->anchorCount(), 0);
  EXPECT_EQ(report.written["points"], 0);
}

TEST_F(ShapeImportObjectsTest, ObjectsWithoutARowEndTheImport) {
  writePoints(1);
  writeTable(DbfMaker({{"A", 'C', 4}}).row({"x"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  DbfImpExp dbf(path("e.dbf"), OpenMode::read);
  SFieldList fields;
  dbf.ReadAttr(path("e.dbf"), &fields);
  EXPECT_EQ(handler_->ImportAttrValueFromDbf(dbf, &fields, &objectCategory(), 4711), 0);
  EXPECT_EQ(dbf.IsEOF(), false);
  fields.at(0)->index = 99;
  EXPECT_EQ(handler_->ImportAttrValueFromDbf(dbf, &fields, &objectCategory(), 1), 1) << "no such cell";
  EXPECT_TRUE(dbf.IsEOF());
  EXPECT_EQ(handler_->ImportAttrValueFromDbf(dbf, &fields, &objectCategory(), 4711), 1)
      << "nothing left to write";
  EXPECT_EQ(objects(), QString("1 1: x"));
}

TEST_F(ShapeImportObjectsTest, RowsAndShapesWithoutCounterpartAreTold) {
  writePoints(2);
  const std::pair<int, const char*> tables[] = {
      {1, "O .dbf só tem 1 registros para 2 do .shp: os outros ficaram sem atributos."},
      {2, ""},
      {3, "O .dbf tem 3 registros para 2 do .shp: os outros não foram importados."},
  };
  for (const auto& [rows, told] : tables) {
    DbfMaker dbf({{"A", 'C', 4}});
    for (int row = 0; row < rows; ++row) dbf.row({"x"});
    writeTable(dbf);
    ASSERT_EQ(importLines(CADASTRALMODEL), 1);
    EXPECT_EQ(report.notes.join('\n'), QString(told)) << rows;
  }
}

TEST_F(ShapeImportObjectsTest, EncodingIsToldAndCanBeOverridden) {
  writePoints(1);
  writeTable(DbfMaker({{"A", 'C', 10}}).row({"S\xC3\xA3o \xE2\x82\xAC"}));
  ASSERT_EQ(importLines(CADASTRALMODEL), 1);
  EXPECT_EQ(objects(), QString::fromUtf8("1 1: São €")) << "more than Latin-1 is kept";
  EXPECT_EQ(report.encoding.name + ' ' + report.encoding.reason, QString("UTF-8 bytes"));
  IEShp& importer = handler(CADASTRALMODEL);
  importer.setEncoding("ISO-8859-1");
  ASSERT_EQ(importer.ImportLines(vector(), project->projection()), 1);
  EXPECT_EQ(objects(), QString::fromUtf8("1 2: S\u00C3\u00A3o \u00E2\u0082\u00AC"));
  EXPECT_EQ(report.encoding.reason, QString("override"));

  // The language that the table names counts for more than its bytes, and a .cpg for more than both.
  importer.setEncoding("");
  const auto dos = [](const char* text) {
    DbfMaker maker({{"A", 'C', 10}});
    maker.languageDriver = 0x02;
    return maker.row({text});
  };
  writeTable(dos("S\xC6o"));
  ASSERT_EQ(importer.ImportLines(vector(), project->projection()), 1);
  EXPECT_EQ(objects(), QString("1 3: São"));
  EXPECT_EQ(report.encoding.name + ' ' + report.encoding.reason, QString("IBM850 ldid"));

  report = JobReport();
  importer.setEncoding("klingon");
  write("e.cpg", "UTF-8");
  writeTable(dos("S\xE3o"));
  ASSERT_EQ(importer.ImportLines(vector(), project->projection()), 1);
  EXPECT_EQ(report.notes.join('\n'),
            QString("A codificação indicada não é conhecida: override: klingon\n"
                    "1 textos do .dbf têm bytes que nada significam na codificação UTF-8."));
}

}  // namespace
}  // namespace kaldex::test
