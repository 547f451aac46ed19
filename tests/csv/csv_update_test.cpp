#include "csv/csv_fixture.h"

namespace kaldex::test {

namespace {

const QString kRenamed =
    "Atenção os seguintes atributos tiveram seus nomes modificados pois eram palavras reservadas do "
    "sistema! ";

class CsvUpdate : public CsvFixture {
 protected:
  CsvUpdate() {
    SFieldList fields = columns({"pop:0", "nota"});
    fields.at(1)->size = 5;
    EXPECT_EQ(dataBase->createAttributeTable(*lots, fields), 1);
    for (const char* label : {"L1", "L2"}) newObject(lots, label, label);
  }
  QString rows() { return rowsOf(lots->attributeTable); }

  Category* lots = category(OBJECTMODEL, "Lotes");
};

TEST_F(CsvUpdate, UpdatesRowsByIdentifier) {
  const auto in = handlerFor(
      "t.csv",
      "id;POP;populacao90;populacao91;DATA;nota\n1;10;a1;b1;2001;abcdefg\n2;;x'y;1,5;;\n9;1;;;;\nz;1");
  messages.answer(kSkip, true);
  ASSERT_EQ(in->Import_CSV_TAB_UPDATE(lots), 1);
  EXPECT_EQ(columnsOf(lots->attributeTable),
            QStringList({"GEOID:0:10:0", "pop:0:17:8", "nota:3:5:8", "populaca:3:17:8", "populac1:3:17:8",
                         "DATA2:3:17:8"}));
  EXPECT_EQ(rows(), "1|10|abcde|a1|b1|2001\n2|||x'y|1.5|");
  EXPECT_EQ(messages.take(),
            kSkip + "2;;x'y;1,5;;\n" + kRenamed + "populaca para populac1  DATA para DATA2  ");
  EXPECT_EQ(report.leftOut["no_object"], 2);
  EXPECT_EQ(report.written["rows"], 2);
  EXPECT_EQ(in->file, nullptr);
}

TEST_F(CsvUpdate, AnUpdateCanBeRepeated) {
  EXPECT_EQ(handlerFor("t.csv", "id;populacao;AREA\n1;7;8\n")->Import_CSV_TAB_UPDATE(lots), 1);
  EXPECT_EQ(handlerFor("t.csv", "id;populacao;AREA\n1;9;0\n2;5;6\n")->Import_CSV_TAB_UPDATE(lots), 1);
  EXPECT_EQ(rows(), "1|||9|0\n2|||5|6");
  EXPECT_EQ(columnsOf(lots->attributeTable).mid(3), QStringList({"populaca:3:17:8", "AREA1:3:17:8"}));
}

TEST_F(CsvUpdate, AnUnwantedValueEndsItAndWhatWasStoredStays) {
  messages.answer(kSkip, false);
  EXPECT_EQ(handlerFor("t.csv", "id;nota;pop\n1;a;1\n2;b;x\n")->Import_CSV_TAB_UPDATE(lots), 0);
  EXPECT_EQ(messages.take(), kSkip + "2;b;x");
  EXPECT_EQ(rows(), "1|1|a\n2||b");
  DBTransactionBlock block(dataBase.get());
  EXPECT_EQ(handlerFor("t.csv", "id;nota;pop\n1;c;1\n2;b;x\n")->Import_CSV_TAB_UPDATE(lots), 0);
}

TEST_F(CsvUpdate, StatisticsHaveCommasAndNumbers) {
  const auto in = handlerFor("t.txt", "id,MORAN,LOCAL_I_1\n1,0.5,-1e-3\n2,,7\n");
  messages.answer(kSkip, true);
  ASSERT_EQ(in->Import_SPACESTAT_TAB(lots), 1);
  EXPECT_STREQ(in->separator, ",");
  EXPECT_EQ(columnsOf(lots->attributeTable).mid(3), QStringList({"MORAN:1:17:8", "LOCAL_I_:1:17:8"}));
  EXPECT_EQ(rows(), "1|||0.5|-0.001\n2||||7");
  EXPECT_EQ(messages.take(), kSkip + "2,,7");
  // Semicolons are no separators, whatever the handler was told.
  EXPECT_EQ(handlerFor("t.txt", "id;a\n1;5\n")->Import_SPACESTAT_TAB(lots), 1);
  EXPECT_EQ(columnsOf(lots->attributeTable).size(), 5);
}

TEST_F(CsvUpdate, WhatCannotBeUpdated) {
  Category* const bare = category(OBJECTMODEL, "Sem tabela");
  EXPECT_EQ(handlerFor("t.csv", "id;a\n1;2\n")->Import_CSV_TAB_UPDATE(bare), 0);
  EXPECT_EQ(handlerFor("t.csv", "id;a")->Import_CSV_TAB_UPDATE(lots), 0);
  // Two new columns of one name.
  EXPECT_EQ(handlerFor("t.csv", "id;a;A\n1;2;3\n")->Import_CSV_TAB_UPDATE(lots), 0);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(handlerFor("t.csv", "id;a\n1;2\n")->Import_CSV_TAB_UPDATE(nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : cat");
}

class CsvColumns : public CsvUpdate {
 protected:
  QByteArray head() const {
    return "\nTABLE\nINFO\n//c\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   Lotes\nT_KEY ; TEXT ; 32 ; 0\n"
           "T_NAME ; TEXT ; 32 ; 0\npop ; INTEGER ;\nnota ; TEXT ; 5 ;\nINFO_END\n";
  }
};

TEST_F(CsvColumns, FileAndTableGrowByColumns) {
  write("more.csv", "nova;AREA\n\n  x;1\ny;2");
  const auto in = handlerFor("t_TAB.kdx", head() + "L1;Um;1;a;\nL2;Dois;2;\nEND1;Fim;3;c\n\nEND");
  ASSERT_EQ(in->Import_CSV_TABUPDATE(lots, columns({"nova", "AREA:1", "POP:0"}), path("more.csv")), 1);
  EXPECT_EQ(messages.take(), kRenamed + "AREA para AREA1  ");
  EXPECT_EQ(columnsOf(lots->attributeTable).mid(3), QStringList({"nova:3:17:8", "AREA1:1:17:8"}));
  EXPECT_EQ(read("t_TAB.kdx"),
            "\nTABLE\nINFO\n//Tabela de Atributos ASCII convertido pelo Sistema KALDEX do arquivo CSV\n"
            "SEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   Lotes\nT_KEY ; TEXT ; 32 ; 0\nT_NAME ; TEXT ; 32 ; 0\n"
            "pop ; INTEGER ;\nnota ; TEXT ; 5 ;\nnova ; TEXT ; 17 ;\nAREA1 ; REAL ;\nINFO_END\n"
            "L1;Um;1;a; x;1 ;\nL2;Dois;2; ; y;2 ;\nEND1;Fim;3;c ;  ;\nEND\n");
  EXPECT_FALSE(QFile::exists(path("t_tempupdate_TAB.kdx")));
}

TEST_F(CsvColumns, WhatIsWrongLeavesTheTableAsItWas) {
  const QString badHead =
      "Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!INFO_END ???";
  const QByteArray whole = head() + "L1;Um;1;a\nEND\n";
  const QByteArray tooLong = "nova\n" + QByteArray(40000, 'x');
  const struct {
    QByteArray table;
    const char* values;
    QString shown;
  } cases[] = {
      {whole, "", kBad},
      {"\nTABLE\nINFO\n//c\n", "nova\n1\n", badHead},
      {head().left(head().indexOf("nota")), "nova\n1\n", badHead},
      {whole, nullptr, "Erro de I/O."},
      {whole, tooLong.constData(), kBad + QString(245, 'x')},
  };
  for (const auto& one : cases) {
    QFile::remove(path("more.csv"));
    if (one.values != nullptr) write("more.csv", one.values);
    const auto in = handlerFor("t_TAB.kdx", one.table);
    EXPECT_EQ(in->UpdateCsvTable(lots, columns({"GEOID:0", "pop:0", "nota"}), columns({"nova"}), SFieldList(),
                                 path("more.csv")),
              0);
    EXPECT_EQ(messages.take(), one.shown);
    EXPECT_EQ(read("t_TAB.kdx"), one.table);
    EXPECT_EQ(in->file, nullptr);
    EXPECT_TRUE(QFile::exists(path("t_tempupdate_TAB.kdx")));
  }
  // What a failed run has left does not come into the next one.
  write("more.csv", "nova\n1\n");
  const auto in = handlerFor("t_TAB.kdx", whole);
  ASSERT_EQ(in->UpdateCsvTable(lots, columns({"GEOID:0", "pop:0", "nota"}), columns({"nova"}), SFieldList(),
                               path("more.csv")),
            1);
  EXPECT_EQ(read("t_TAB.kdx").count("TABLE"), 1);
  Category* const bare = category(OBJECTMODEL, "Sem tabela");
  EXPECT_EQ(in->Import_CSV_TABUPDATE(bare, columns({"nova"}), path("more.csv")), 0);
}

class CsvNonSpatial : public CsvFixture {
 protected:
  Category* table = category(NOTSPACIALMODEL, "Tabela");
};

TEST_F(CsvNonSpatial, FillsATable) {
  const auto in =
      handlerFor("t.csv", "a;ID;ccc\n1;0;\n l'eau d'or ;1,5;12345678901234567890;too many\nshort\n");
  ASSERT_EQ(in->Import_CSV_TAB_NOTSPACIAL(table), 1);
  EXPECT_EQ(columnsOf(table->attributeTable), QStringList({"a:3:17:8", "ID1:3:17:8", "ccc:3:17:8"}));
  // Behind a separator at a line's end stands no value.
  EXPECT_EQ(rowsOf(table->attributeTable), "1|XXX|\nl'eau d_or|1.5|12345678901234567\nshort||");
  EXPECT_EQ(report.leftOut["bad_value"], 1);
  EXPECT_EQ(report.written["rows"], 3);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(handlerFor("t.csv", "a\n1\n")->Import_CSV_TAB_NOTSPACIAL(table), 0);
  EXPECT_EQ(messages.take(), "Esta Categoria contém uma tabela que não está vazia!");
}

TEST_F(CsvNonSpatial, AHeaderEndsAtItsFirstEmptyName) {
  ASSERT_EQ(handlerFor("t.csv", "a;b;0;d\n1;;3;4\n// no row")->Import_CSV_TAB_NOTSPACIAL(table), 1);
  EXPECT_EQ(rowsOf(table->attributeTable), "1|XXX");
}

TEST_F(CsvNonSpatial, WhatMakesNoTable) {
  EXPECT_EQ(handlerFor("t.csv", "a;A\n1;2\n")->Import_CSV_TAB_NOTSPACIAL(table), 0);
  EXPECT_EQ(messages.take(), "Erro ao tentar criar atributos na tabela");
  DBTransactionBlock block(dataBase.get());
  EXPECT_EQ(handlerFor("t.csv", "a;b\n1;2\n;\n")->Import_CSV_TAB_NOTSPACIAL(table), 0);
  EXPECT_EQ(messages.take(), kBad + ";");
  EXPECT_EQ(handlerFor("t.csv", "a;b\n1;2\n")->Import_CSV_TAB_NOTSPACIAL(table), 1);
}

}  // namespace

}  // namespace kaldex::test
