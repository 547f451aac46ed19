#include "csv/csv_fixture.h"

namespace kaldex::test {

namespace {

class CsvConversion : public CsvFixture {
 protected:
  static QByteArray head(const QByteArray& key = "T_KEY ; TEXT ; 32 ;\n") {
    return "\nTABLE\nINFO\n//Tabela de Atributos ASCII convertido pelo Sistema KALDEX do arquivo CSV\n"
           "SEPARATOR ;\nUNFORMATED\nCATEGORY_OBJ   Lotes\n" +
           key;
  }

  Category* lots = category(OBJECTMODEL, "Lotes");
};

TEST_F(CsvConversion, ProposesTextColumns) {
  const struct {
    QByteArray header;
    const char* separator;
    QStringList names;
  } cases[] = {
      {"nome;ID;area", ";", {"nome", "ID1", "area"}},
      {" POPULACAO1 ;PERIMETROS;\xc1rea", ";", {"POPULACA", "PERIMETR", "Área"}},
      {"a;;b;", ";", {"a", "", "b", ""}},
      {"MYSQL_ID;DBID", ";", {"MYSQL_I1", "DBID2"}},
      {"a;b,c", ",", {"a;b", "c"}},
      {"a;1,5", ";", {"a", "1.5"}},
      {"ID;ID;ID;ID;ID;ID;ID;ID;ID;IDENTIFI;ID;CATEGORI;MYSQL_ID",
       ";",
       {"ID1", "ID2", "ID3", "ID4", "ID5", "ID6", "ID7", "ID8", "ID9", "IDENTIFI", "ID10", "CATEGORI",
        "MYSQL_11"}},
      {"a;b", "", {"a;b"}},
  };
  for (const auto& one : cases) {
    const auto in = handlerFor("t.csv", one.header + "\n1;2\n", one.separator);
    SFieldList list;
    ASSERT_EQ(in->GetAttTab(&list), 1) << one.header.toStdString();
    EXPECT_EQ(namesOf(list), one.names);
    EXPECT_NE(in->file, nullptr);
    in->FileClose();
    short index = 0;
    for (const SField* column : list) {
      EXPECT_EQ(column->type, fieldText);
      EXPECT_EQ(column->size, 17);
      EXPECT_EQ(column->decimals, 8);
      EXPECT_EQ(column->index, index++);
    }
  }
  EXPECT_EQ(messages.take(), "");
  SFieldList list;
  EXPECT_EQ(handlerFor("t.csv", "a;b")->GetAttTab(&list), 0);
  const auto none = handlerFor("t.csv", ";\n1;2\n");
  EXPECT_EQ(none->GetAttTab(&list), 1);  // behind the separator stands an empty name
  none->FileClose();
  const auto dos = handlerFor("t.csv", "a;b\r\n1;2\r\n");
  EXPECT_EQ(dos->GetAttTab(&list), 0);
  EXPECT_EQ(dos->file, nullptr);
  EXPECT_EQ(messages.take(), "Arquivo no formato DOS, converter para UNIX!");
  EXPECT_EQ(handlerFor("t.csv", QByteArray(30000, 'a') + "\n")->GetAttTab(&list), 0);
  EXPECT_TRUE(messages.take().startsWith(kBad + "aaa"));
}

TEST_F(CsvConversion, RewritesRowsAsASection) {
  const struct {
    QByteArray content;
    QStringList columns;
    short key;
    QByteArray table;
  } cases[] = {
      {"a;b;c\n1;2,5;x|y\n,z;4;5",
       {"a", "b:1", "c:2", "d:0"},
       0,
       head() + "a ; TEXT ; 17 ;\nb ; REAL ;\nc ; DATE ;\nd ; INTEGER ;\nINFO_END\n0000001 ;1;2;5;x;y\n"
                "0000002 ;,z;4;5\n\nEND"},
      {"a;b;c\na;b;c", {"a"}, 2, head() + "a ; TEXT ; 17 ;\nINFO_END\nb ;a;b;c\n\nEND"},
      {"a;b;c\na;; k ", {"a"}, 3, head() + "a ; TEXT ; 17 ;\nINFO_END\nk ;a;; k\n\nEND"},
      {"T_KEY;b\nk;1,5\n// c\nm;2",
       {"T_KEY", "b"},
       2,
       head("") + "T_KEY ; TEXT ; 17 ;\nb ; TEXT ; 17 ;\nINFO_END\nk;1;5\nm;2\n\nEND"},
      {"a;b;c\n;k;1\n,x;k;2\n// end",
       {"a"},
       2,
       head() + "a ; TEXT ; 17 ;\nINFO_END\nk ;;k;1\nk ;,x;k;2\n\nEND"},
      {"b;//a\n1;2",
       {"b", "//a"},
       0,
       head() + "b ; TEXT ; 17 ;\nX/a ; TEXT ; 17 ;\nINFO_END\n0000001 ;1;2\n\nEND"},
      // The empty last row of a final line end.
      {"a\n1\n", {"a"}, 0, head() + "a ; TEXT ; 17 ;\nINFO_END\n0000001 ;1\n0000002 ;\n\nEND"},
  };
  for (const auto& one : cases) {
    const auto in = handlerFor("t.csv", one.content);
    EXPECT_EQ(in->ConvertCsvToAscii(lots, columns(one.columns), one.key), 1);
    EXPECT_EQ(read("t_TAB.kdx"), one.table);
    EXPECT_EQ(read("t.csv"), one.content);
    EXPECT_EQ(in->dataFile, "t_TAB.kdx");
    EXPECT_EQ(in->file, nullptr);
  }
  EXPECT_EQ(messages.take(), "");
}

TEST_F(CsvConversion, FailuresLeaveTheHandlerAtTheDelimitedFile) {
  auto in = handlerFor("t.csv", "a;b\n1;2\n");
  EXPECT_EQ(in->ConvertCsvToAscii(lots, columns({"a", "b"}), 2), 0);  // the empty row has no key
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  EXPECT_EQ(in->dataFile, "t.csv");
  EXPECT_EQ(in->Import_CSV_TABCREATE(lots, columns({"a", "b"}), 2), 1);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
  EXPECT_EQ(in->ConvertCsvToAscii(lots, columns({"a", "b"}), 3), 0);
  EXPECT_EQ(messages.take(), kBad + "1;2");
  EXPECT_EQ(handlerFor("t.csv", "a;b\n1;//x")->ConvertCsvToAscii(lots, columns({"a", "b"}), 2), 0);
  EXPECT_EQ(messages.take(), kBad + "1;//x");
  QFile::remove(path("t.csv"));
  EXPECT_EQ(in->ConvertCsvToAscii(lots, columns({"a"}), 0), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.\nErro de I/O.");
  QDir(folder()).mkdir("t_TAB.kdx");
  in = handlerFor("t.csv", "a\n1");
  QFile::remove(path("t_TAB.kdx"));
  QDir(folder()).mkdir("t_TAB.kdx");
  EXPECT_EQ(in->ConvertCsvToAscii(lots, columns({"a"}), 0), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
}

TEST_F(CsvConversion, TheTableIsImported) {
  messages.answer("Deseja inserir este(s) atributo(s)?", true);
  const auto in = handlerFor("t.csv", "NUM;area;T\nA1;1,5;x\nA2;2;y");
  ASSERT_EQ(in->Import_CSV_TABCREATE(lots, columns({"NUM", "area:1", "T"}), 1), 1);
  messages.answer(kSkip, false);
  // The comma became a separator: one value too many, which is nobody's.
  EXPECT_EQ(in->ImportAttributes(lots), 1);
  EXPECT_EQ(columnsOf(lots->attributeTable),
            QStringList({"GEOID:0:10:0", "NUM:3:17:0", "area1:1:17:8", "T:3:17:0"}));
  EXPECT_EQ(rowsOf(lots->attributeTable), "1|A1|1|5\n2|A2|2|y");
}

}  // namespace

}  // namespace kaldex::test
