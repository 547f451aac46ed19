#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

const QString kInsert = "Deseja inserir este(s) atributo(s)?";

class AsciiTable : public AsciiFixture {
 protected:
  AsciiTable() : lots(category(OBJECTMODEL, "Lotes")) { messages.answer(kInsert, true); }

  /// The head of a section with a key, a name and the columns given, and a semicolon.
  static QByteArray section(const QByteArray& columns, const QByteArray& rows, const char* end = "\nEND\n") {
    return "\nTABLE\nINFO\n//c\nSEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ\tLotes\nT_KEY ; TEXT ; 32 ; 0\n"
           "T_NAME ; TEXT ; 32 ; 0\n" +
           columns + "\nINFO_END\n" + rows + end;
  }
  int import(const QByteArray& content) {
    write("file.txt", content);
    const auto in = handler(nullptr);
    const int result = in->ImportAttributes(lots);
    EXPECT_EQ(in->file, nullptr);
    return result;
  }
  /// "label/name: value|value", a row a line; "-" without a table.
  QString table() {
    SFieldList columns;
    if (dataBase->loadTableFields(columns, lots->attributeTable) == 0) return "-";
    QStringList rows;
    for (const KaldexObject& one : objectsOf(*lots)) {
      rows << one.label + "/" + one.name + ": " + valuesOf(*lots, one);
    }
    return rows.join("\n");
  }

  Category* lots;
};

TEST_F(AsciiTable, TakesValuesInTheirForms) {
  messages.answer(kSkip + "T_NAME", true);
  const QByteArray columns = "POP ; INTEGER\nVAL;REAL\nDIA ; DATA\nTXT ; TEXT ; 5 ; 0";
  ASSERT_EQ(import(section(columns,
                           "L1 ; Um ; 7 ; 1,5 ; 20010312 ; abcdefg\n// a ; comment\nL2;;;;;\n"
                           "L3;\xc1gua;-12345678901;-123456789.25;12/03/2001;a\n")),
            1);
  EXPECT_EQ(table(), "L1/Um: 7|1.5|20010312|abcde\nL2/L2: |||\nL3/Água: -345678901|-3456789.25|12/03/20|a");
  EXPECT_EQ(report.written["objects"], 3);
  EXPECT_EQ(report.leftOut["bad_value"], 4);
  messages.take();

  // Only what the file declares is changed, and a new name is taken.
  ASSERT_EQ(import(section("TXT;TEXT;5;0\nPOP;INTEGER", "L3;Mar;zz;2\nL4;Quatro;;\n")), 1);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(table(),
            "L1/Um: 7|1.5|20010312|abcde\nL2/L2: |||\nL3/Mar: 2|-3456789.25|12/03/20|zz\nL4/Quatro: |||");
}

TEST_F(AsciiTable, AKeyAloneIsNameToo) {
  ASSERT_EQ(import("TABLE x\nINFO\nCATEGORY_OBJ Lotes\nT_KEY,TEXT,32,0\nP,INTEIRO\nINFO_END\nL1,1\nEND"), 1);
  EXPECT_EQ(table(), "L1/L1: 1");
}

TEST_F(AsciiTable, OnlyALabelKeepsItsDecimalComma) {
  ASSERT_EQ(import(section("TXT;TEXT;9", "1,5;Lote 2,5;3,5\n2.5;2.5;b\n")), 1);
  ASSERT_EQ(import(section("TXT;TEXT;9", "1,5;Lote 2,5;4,5\n2,5;2,5;a\n")), 1);
  EXPECT_EQ(table(), "1,5/Lote 2.5: 4.5\n2.5/2.5: a");
}

TEST_F(AsciiTable, NamesThatTheSystemUsesAreChangedAndTold) {
  ASSERT_EQ(
      import(section("area;REAL\n1st;TEXT;3\na-b;TEXT;3\n(x;TEXT;3\nabcdefghijk;TEXT;3\nabcdefghijl;TEXT;3",
                     "L1;Um;1;a;b;c;d;e\n")),
      1);
  EXPECT_EQ(columnsOf(lots->attributeTable).join(' '),
            "GEOID:0:10:0 area1:1:17:8 X1st:3:3:0 a_b:3:3:0 Xx:3:3:0 abcdefghij:3:3:0 abcdefghi2:3:3:0");
  EXPECT_EQ(messages.take(), kInsert +
                                 "\nAtenção os seguintes atributos tiveram seus nomes modificados pois eram "
                                 "palavras reservadas do sistema! area para area1 ");
  EXPECT_EQ(table(), "L1/Um: 1|a|b|c|d|e");
}

TEST_F(AsciiTable, WhatIsWrongIsToldAndNothingStays) {
  const QByteArray columns = "P;INTEGER\nQ;TEXT;5";
  const std::pair<QByteArray, QString> cases[] = {
      {"LINES\nEND\n", ""},
      {"TABLE\nCATEGORY_OBJ Lotes\n", kBad + "END ???"},
      {"TABLE\nINFO\nSEPARATOR ;\nCATEGORY_NOSPATIAL Lotes\nINFO_END\nEND\n", kBadHeader + "CATEGORY_OBJ"},
      {"TABLE\nINFO\nCATEGORY_OBJ Outra\nINFO_END\nEND\n", kBad + "CATEGORY_OBJ Outra"},
      {"TABLE\nINFO\nCATEGORY_OBJ Lotes\nP,INTEGER\nINFO_END\nEND\n", kInsert + "\n" + kBadHeader + "T_KEY"},
      {"TABLE\nINFO\nCATEGORY_OBJ Lotes\nT_KEY,TEXT,32,0\nINFO_END\nL1\nEND\n", kInsert + "\n" + kBadHeader},
      {section(columns, "L1;Um;1;a\n", ""), kInsert + "\n" + kBad + "END ???"},
      {section(columns, "L1;Um;1;a\nL2;Do", ""), kInsert + "\nArquivo INCONSISTENTE! FEOF"},
      {section(columns, "L1;Um;1;a\nL2;Dois;1\n"), kInsert + "\n" + kBad + "L2;Dois;1"},
      {section(columns, "L1;Um;1;a\nL2\n"), kInsert + "\n" + kBad + "L2"},
      {section(columns, "L1;Um;1;a\n ; Um;1;a\n"), kInsert + "\n" + kBad + "; Um;1;a"},
      {section(columns, "L1,Um,1,a\n"), kInsert + "\n" + kBad + "L1,Um,1,a"},
      {section(columns, "L1;Um;1;a\nL2;Dois;x;b\n"),
       kInsert + "\n" + kSkip + "T_KEY = L2  P = x --> não é um número inteiro"},
      {section(columns, "L1;Um;1;" + QByteArray(4096, 'a') + "\n"),
       kInsert + "\n" + kBad + "L1;Um;1;" + QString(237, 'a')},
  };
  messages.answer(kSkip, false);
  for (const auto& [content, shown] : cases) {
    EXPECT_EQ(import(content), 0) << content.left(200).toStdString();
    EXPECT_EQ(messages.take(), shown) << content.left(200).toStdString();
    EXPECT_EQ(table(), "-") << content.left(200).toStdString();
    EXPECT_EQ(objectsOf(*lots).size(), 0u);
  }
}

TEST_F(AsciiTable, ARowWithAWrongValueIsLeftOutWholeIfTheUserAgrees) {
  messages.answer(kSkip, true);
  ASSERT_EQ(import(section("Q;TEXT;5\nP;INTEGER", "L1;Um;a;1\nL2;Dois;b;x\nL3;Tr\xeas;c;3\n")), 1);
  EXPECT_EQ(table(), "L1/Um: a|1\nL2/Dois: |\nL3/Três: c|3");
  EXPECT_EQ(report.leftOut["bad_value"], 1);
}

TEST_F(AsciiTable, ProgressIsThatOfRowsAndCanBeStopped) {
  QByteArray rows;
  for (int i = 1000; i < 2000; ++i) rows += "L" + QByteArray::number(i) + ";Nome;1\n";
  ProgressRecorder progress;
  ASSERT_EQ(import(section("P;INTEGER", rows)), 1);
  ASSERT_EQ(progress.maxima.size(), 2u);
  EXPECT_EQ(progress.maxima[0], 999);
  EXPECT_NEAR(progress.maxima[1], 1000, 15);
  EXPECT_EQ(progress.stops.size(), 1u);
  progress.cancelAt = 500;
  EXPECT_EQ(import(section("P;INTEGER", rows.replace(";1\n", ";2\n"))), 0);
  EXPECT_TRUE(table().startsWith("L1000/Nome: 1\n"));
}

TEST_F(AsciiTable, ComesBackFromItsExport) {
  messages.answer(kSkip, true);
  const QByteArray columns = "POP;INTEGER\nVAL;REAL\nDIA;DATE\nTXT;TEXT;9;0";
  ASSERT_EQ(import(section(columns, "L1;Um;7;1.5;20010312;abc\nL 2;Dois e;;;;\nL3;\xc1;-1;1e20;;x,y\n")), 1);
  fileName = "out.txt";
  ASSERT_EQ(handler(nullptr, 0, 0, nullptr, ";")->ExportTable(lots), 1);
  EXPECT_EQ(read("out.txt"),
            "\nTABLE\nINFO\n//Tabela de Atributos ASCII gerada pelo Sistema KALDEX\nSEPARATOR ;\nUNFORMATED\n"
            "CATEGORY_OBJ\tLotes\nT_KEY ; TEXT ; 32 ; 0\nT_NAME ; TEXT ; 32 ; 0\nPOP ; INTEGER ; 10 ; 0\n"
            "VAL ; REAL ; 17 ; 8\nDIA ; DATE ; 8 ; 0\nTXT ; TEXT ; 9 ; 0\nINFO_END\n"
            "L1 ; Um ; 7 ; 1.5 ; 20010312 ; abc\nL 2 ; Dois e ;  ;  ;  ; \n"
            "L3 ; \xc1 ; -1 ; 1e+20 ;  ; x,y\nEND");
  EXPECT_EQ(report.written["rows"], 6);
  const QByteArray first = read("out.txt");
  const QString before = table();
  write("file.txt", first);
  fileName = "file.txt";
  ASSERT_EQ(handler(nullptr)->ImportAttributes(lots), 1);
  EXPECT_EQ(table(), before);
}

TEST_F(AsciiTable, ExportsWhatNoImportReads) {
  Category* const other = category(NOTSPACIALMODEL, "Tabela");
  const auto out = handler(nullptr);
  ASSERT_EQ(out->ExportTable(other), 1);
  EXPECT_STREQ(out->separator, ",");
  EXPECT_TRUE(
      read("file.txt").endsWith("\nSEPARATOR ,\nUNFORMATED\nCATEGORY_NOSPATIAL\tTabela\nINFO_END\nEND"));
  SFieldList columns;
  columns.Append(new SField("A", fieldText, 5, 0, 0, other->attributeTable));
  columns.Append(new SField("KALDEX_ID", fieldInteger, 10, 0, 1, other->attributeTable));
  columns.Append(new SField("B", fieldReal, 17, 8, 2, other->attributeTable));
  ASSERT_EQ(dataBase->createTable(other->attributeTable, columns), 1);
  for (SField* column : columns) {
    for (const char* value : {"1", "2.5"}) {
      auto* const cell = new SCell(column->table, column->type, value);
      cell->setModify(cellInserted);
      column->cells.Append(cell);
    }
  }
  ASSERT_EQ(dataBase->finishColumns(columns), 1);
  fileName = "out.txt";
  ASSERT_EQ(handler(nullptr)->ExportTable(other), 1);
  EXPECT_TRUE(
      read("out.txt").endsWith("\nCATEGORY_NOSPATIAL\tTabela\nA , TEXT , 5 , 0\nB , REAL , 17 , "
                               "8\nINFO_END\n 1 , 1 ,\n 2.5 , 2.5 ,\nEND"));
}

TEST_F(AsciiTable, AFullDiskIsTold) {
  ASSERT_EQ(import(section("P;INTEGER", "L1;Um;1\n")), 1);
  messages.take();
  auto out = std::make_unique<OpenAscii>();
  out->Init("/dev", 0, "full", project, nullptr, dataBase.get(), nullptr, 0, nullptr, nullptr, nullptr);
  EXPECT_EQ(out->ExportTable(lots), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  EXPECT_EQ(out->ExportTable(nullptr), 0);
  EXPECT_EQ(out->ImportAttributes(nullptr), 0);
}

}  // namespace

}  // namespace kaldex::test
