#include "kaldex/model/recordset.h"

#include "kaldex/model/database.h"
#include "kaldex/model/exception.h"
#include "support/model_fixture.h"

namespace {

using kaldex::test::ModelFixture;

// Three objects, of which the second has two anchors and the third none; the anchors come in descending
// order.
class RecordSetTest : public ModelFixture {
 protected:
  RecordSetTest() {
    lots = category(OBJECTMODEL, "Lotes");
    plan = layer(CADASTRALMODEL, "Quadras");
    dataBase->createAttributeTable(*lots, fieldList({{"POP", fieldInteger, 10, 0},
                                                     {"RENDA, em R$", fieldReal, 17, 8},
                                                     {"RENDA", fieldDate, 8, 0}}));
    for (int i = 1; i <= 3; ++i) {
      const QString number = QString::number(i);
      objects[i] = newObject(lots, "r" + number, "n" + number,
                             {number + "00", number + ".5", "0" + number + "/02/01"});
    }
    link(2, 30);
    link(1, 20);
    link(2, 10);
  }

  void link(int object, int anchorId) {
    Anchor anchor;
    anchor.id = anchorId;
    anchor.visualId = lots->visual.id;
    dataBase->linkAnchor(*plan, anchor, objects[object]);
  }

  std::unique_ptr<RecordSet> associations() {
    return dataBase->selectRecords(plan->associationTable(), "*", "", "", "");
  }

  static QStringList column(RecordSet& rows, int index) {
    QStringList values;
    for (; !rows.atEnd(); rows.next()) values << rows.text(index);
    return values;
  }

  Category* lots = nullptr;
  InfoLayer* plan = nullptr;
  KaldexObject objects[4];
};

TEST_F(RecordSetTest, JoinsTablesAsTheExportAsksForThem) {
  const QString selection =
      "OJ000001->ID,OJ000001->NOME,OJ000001->ROTULO,OJ000001->VISID,OJ000001->DATA,OJ000001->HORA,"
      "GA000001->GEOID,GA000001->CATEGORIA,GA000001->GANCHORID,GA000001->GVISID,GA000001->AREA,GA000001->"
      "PERIMETRO,"
      "GA000001->IMPEDANCIA,GA000001->DEMANDA,CG000001->GEOID,CG000001->POP,CG000001->RENDA, em "
      "R$,CG000001->RENDA ";
  const auto rows =
      dataBase->selectRecords("OJ000001,GA000001,CG000001", selection,
                              "OJ000001->ID = GA000001->GEOID,GA000001->GEOID = CG000001->GEOID",
                              "OJ000001->ID = GA000001->GEOID", "GA000001->GANCHORID", 1);
  ASSERT_EQ(rows->columnCount(), 18);
  EXPECT_EQ(rows->columnName(14), "GEOID");
  EXPECT_EQ(rows->columnName(16), "RENDA, em R$");
  EXPECT_EQ(rows->columnType(15), fieldInteger);
  EXPECT_EQ(rows->columnType(16), fieldReal);
  EXPECT_EQ(rows->columnType(17), fieldDate);
  EXPECT_EQ(rows->columnSize(2), 32);
  EXPECT_EQ(rows->columnIndex("geoid"), 6);
  EXPECT_EQ(rows->columnIndex("nada"), -1);
  EXPECT_EQ(rows->integer("GANCHORID"), 10);
  EXPECT_EQ(rows->text("ROTULO"), "r2");
  EXPECT_EQ(rows->real(16), 2.5);
  EXPECT_EQ(rows->text(17), "02/02/01");
  EXPECT_EQ(column(*rows, 8), (QStringList{"10", "20", "30"}));
  EXPECT_EQ(rows->text(0), "");
  EXPECT_EQ(rows->integer(0), 0);
  // Without a condition the join serves.
  const auto joined =
      dataBase->selectRecords("OJ000001,GA000001", "ROTULO", "", "OJ000001->ID = GA000001->GEOID",
                              "GA000001->GANCHORID DESC,OJ000001->ID");
  EXPECT_EQ(column(*joined, 0), (QStringList{"r2", "r1", "r2"}));
}

TEST_F(RecordSetTest, TakesConditionsWithTextsBracketsAndCommas) {
  const struct {
    const char* condition;
    QStringList found;
  } cases[] = {
      {"", {"1", "2", "3"}},
      {"ROTULO = 'r2'", {"2"}},
      {"oj000001->rotulo = 'r2'", {"2"}},
      {"OJ000001->ROTULO = 'r2,OJ000001->NOME'", {}},
      {"OJ000001->ID IN (1,3)", {"1", "3"}},
      {"OJ000001->ID > 1,OJ000001->NOME = 'n3'", {"3"}},
      {"OJ000001->ID = 1 OR OJ000001->ID = 2, OJ000001->ID < 2", {"1"}},
      {"ROTULO = 'it''s, no'", {}},
  };
  for (const auto& c : cases) {
    const auto rows = dataBase->selectRecords("OJ000001", "ID", c.condition, "", "OJ000001->ID");
    EXPECT_EQ(column(*rows, 0), c.found) << c.condition;
  }
}

TEST_F(RecordSetTest, WrongRequestsThrow) {
  const struct {
    const char *tables, *selection, *condition;
  } cases[] = {{"OJ999999", "*", ""},
               {"", "*", ""},
               {"OJ000001", "", ""},
               {"OJ000001", "OJ000001->NADA", ""},
               {"OJ000001", "kdx_fid", ""},
               {"OJ000001", "count(*)", ""},
               {"OJ000001", "*", "OJ000001->NADA = 1"},
               {"OJ000001", "*", "this is no SQL"},
               {"OJ000001", "*", "ROTULO = 'open"}};
  for (const auto& c : cases) {
    EXPECT_THROW(dataBase->selectRecords(c.tables, c.selection, c.condition, "", ""), SException)
        << c.condition;
  }
}

TEST_F(RecordSetTest, TheHiddenKeyIsNowhereSeen) {
  const auto rows = associations();
  EXPECT_EQ(rows->columnCount(), 8);
  EXPECT_EQ(rows->columnIndex("kdx_fid"), -1);
  SFieldList fields;
  EXPECT_EQ(dataBase->loadTableFields(fields, plan->associationTable()), 8);
  EXPECT_EQ(fields.First()->name, "GEOID");
}

TEST_F(RecordSetTest, RowsAreEditedWhileWalking) {
  DBTransactionBlock block(dataBase.get());
  const auto rows = associations();
  int seen = 0;
  for (; !rows->atEnd(); rows->next()) {
    ++seen;
    rows->edit();
    rows->setText(4, "1.23457e+08");
    rows->setText(5, QString::number(rows->integer(2)));
    EXPECT_EQ(rows->post(), 1);
    EXPECT_EQ(rows->real(4), 123457000.0);
    EXPECT_EQ(rows->text(5), rows->text(2));
    EXPECT_EQ(rows->text("geoid"), QString::number(objects[seen == 2 ? 1 : 2].id));
  }
  EXPECT_EQ(seen, 3);
  EXPECT_EQ(rows->post(), 0);
  block.enableCommit();
  const auto again = associations();
  EXPECT_EQ(again->real(5), 30.0);
  EXPECT_EQ(column(*again, 4), (QStringList{"123457000", "123457000", "123457000"}));
}

TEST_F(RecordSetTest, NewRowsAreFoundAndChangedAtOnce) {
  // As objects are bound to labels: look the row up, change it, or add one.
  const auto rows = associations();
  while (!rows->atEnd()) rows->next();
  for (int i = 0; i < 200; ++i) {
    const QString object = QString::number(1000 + i % 100);
    if (i < 100) {
      EXPECT_FALSE(rows->findRow("geoid", object));
      rows->addNew();
      rows->setText(0, object);
      rows->setText(2, QString::number(i));
    } else {
      ASSERT_TRUE(rows->findRow("geoid", object));
      EXPECT_EQ(rows->integer(2), i - 100);
      rows->edit();
      rows->setText(4, "0.5");
    }
    EXPECT_EQ(rows->post(), 1);
  }
  link(3, 7777);  // waits in memory
  EXPECT_TRUE(rows->findRow("GANCHORID", "7777"));
  EXPECT_EQ(rows->integer("GEOID"), objects[3].id);
  EXPECT_EQ(column(*dataBase->selectRecords(plan->associationTable(), "*", "AREA = 0.5", "", ""), 0).size(),
            100);
}

TEST_F(RecordSetTest, FindingNothingLeavesTheSetWhereItIs) {
  for (const char* order : {"", "GA000001->GANCHORID"}) {
    const auto rows = dataBase->selectRecords(plan->associationTable(), "*", "", "", order);
    rows->next();
    const QString second = rows->text(2);
    EXPECT_FALSE(rows->findRow("geoid", "999"));
    EXPECT_FALSE(rows->findRow("nada", "1"));
    EXPECT_EQ(rows->text(2), second);
    ASSERT_TRUE(rows->findRow("GANCHORID", second));
    rows->next();
    EXPECT_FALSE(rows->atEnd());
    rows->next();
    EXPECT_TRUE(rows->atEnd());
    ASSERT_TRUE(rows->findRow("GANCHORID", second));
    EXPECT_EQ(rows->text(2), second);
  }
}

TEST_F(RecordSetTest, TheWalkOutlivesChangesOfTablesAndRollbacks) {
  for (const char* order : {"", "GA000001->GEOID"}) {
    const auto rows = dataBase->selectRecords(plan->associationTable(), "*", "", "", order);
    QStringList anchors{rows->text(2)};
    {
      DBTransactionBlock block(dataBase.get());
      const SFieldList more = fieldList({{"COTA", fieldReal, 9, 2}});
      ASSERT_EQ(dataBase->addColumns(more, lots->attributeTable, 1, 0), 1);
      EXPECT_EQ(rows->text(2), anchors.last());
      rows->next();
      anchors << rows->text(2);
    }
    EXPECT_EQ(rows->text(2), anchors.last());
    dataBase->commit();
    rows->next();
    anchors << rows->text(2);
    anchors.sort();
    EXPECT_EQ(anchors, (QStringList{"10", "20", "30"}));
  }
}

TEST_F(RecordSetTest, ASetThatOutlivesItsDataBaseIsAtItsEnd) {
  auto rows = associations();
  dataBase.reset();
  EXPECT_TRUE(rows->atEnd());
  rows->next();
  rows->addNew();
  rows->setText(0, "1");
  EXPECT_EQ(rows->post(), 0);
  EXPECT_FALSE(rows->findRow("geoid", "1"));
  EXPECT_EQ(rows->text(0), "");
  EXPECT_EQ(rows->columnName(0), "GEOID");
}

TEST_F(RecordSetTest, JoinedRowsCannotBeChanged) {
  const auto rows =
      dataBase->selectRecords("OJ000001,GA000001", "*", "OJ000001->ID = GA000001->GEOID", "", "");
  rows->edit();
  rows->setText(1, "x");
  EXPECT_EQ(rows->post(), 0);
  rows->addNew();
  EXPECT_EQ(rows->post(), 0);
  ASSERT_TRUE(rows->findRow("ROTULO", "r1"));
  EXPECT_EQ(rows->integer("GANCHORID"), 20);
}

}  // namespace
