#include "kaldex/model/database.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "kaldex/model/exception.h"
#include "kaldex/model/text.h"
#include "support/model_fixture.h"
#include "support/peek.h"

namespace {

using kaldex::test::ModelFixture;
using kaldex::test::Peek;

class DataBaseTest : public ModelFixture {
 protected:
  DataBaseTest() {
    lots = category(OBJECTMODEL, "Lotes");
    plan = layer(CADASTRALMODEL, "Quadras");
  }

  void makeAttributes() {
    ASSERT_EQ(dataBase->createAttributeTable(*lots, fieldList({{"POP", fieldInteger, 10, 0},
                                                               {"RENDA", fieldReal, 17, 8},
                                                               {"DESDE", fieldDate, 8, 0},
                                                               {"RUA, no", fieldText, 20, 0}})),
              1);
  }

  KaldexObject newObject(const QString& label) {
    return ModelFixture::newObject(lots, label, "nome " + label);
  }

  QStringList attributesOf(int objectId) {
    SCellList cells;
    QStringList texts;
    dataBase->readObjectAttributes(SFieldList(), cells, lots->attributeTable, objectId);
    for (const SCell* cell : cells) texts << (cell->value().isNull() ? "null" : cell->value());
    return texts;
  }

  int change(int objectId, int column, const QString& value) {
    SCellList cells;
    dataBase->readObjectAttributes(SFieldList(), cells, lots->attributeTable, objectId);
    if (cells.Size() > column) cells.at(column)->ChangeCell(value);
    return dataBase->writeObjectAttributes(SFieldList(), cells, lots->attributeTable, objectId);
  }

  void reopen() {
    dataBase.reset();
    QString error;
    dataBase = DataBase::Open(path("base.gpkg"), &error);
    ASSERT_NE(dataBase, nullptr) << error.toStdString();
    project = dataBase->findProject("Projeto");
    lots = dataBase->categoryList().Select(QStringLiteral("Lotes"));
    plan = project != nullptr ? dataBase->findLayer(*project, "Quadras") : nullptr;
  }

  Category* lots = nullptr;
  InfoLayer* plan = nullptr;
};

TEST_F(DataBaseTest, RefusesWhatItCantOpenAndTellsWhy) {
  QString error;
  EXPECT_EQ(DataBase::Create(path("base.gpkg"), &error), nullptr);
  EXPECT_TRUE(error.contains("já existe")) << error.toStdString();
  EXPECT_EQ(DataBase::Create(path("no/such/folder/x.gpkg"), &error), nullptr);
  EXPECT_EQ(DataBase::Open(path("absent.gpkg"), &error), nullptr);
  EXPECT_FALSE(QFileInfo::exists(path("absent.gpkg")));
  EXPECT_EQ(DataBase::Open("postgresql://host/base", &error), nullptr);
  EXPECT_TRUE(error.contains("PostgreSQL")) << error.toStdString();
  EXPECT_EQ(DataBase::Create("postgresql://host/base", &error), nullptr);

  const QByteArray rubbish =
      "not a database, but long enough for a header that someone might read: " + QByteArray(200, 'x');
  write("rubbish.gpkg", rubbish);
  EXPECT_EQ(DataBase::Open(path("rubbish.gpkg"), &error), nullptr);
  EXPECT_EQ(read("rubbish.gpkg"), rubbish);
  write("empty.gpkg", "");
  EXPECT_EQ(DataBase::Open(path("empty.gpkg"), &error), nullptr);
  EXPECT_EQ(read("empty.gpkg"), "");
  Peek(path("other.gpkg")).run("PRAGMA application_id = 1196444487; CREATE TABLE gpkg_contents (x)");
  EXPECT_EQ(DataBase::Open(path("other.gpkg"), &error), nullptr);
  EXPECT_TRUE(error.contains("não é um banco de dados geográfico")) << error.toStdString();
}

TEST_F(DataBaseTest, AFileOfALaterVersionIsLeftAlone) {
  dataBase.reset();
  Peek(path("base.gpkg")).run("UPDATE kdx_sequences SET value = 999 WHERE name = 'schema'");
  QString error;
  EXPECT_EQ(DataBase::Open(path("base.gpkg"), &error), nullptr);
  EXPECT_TRUE(error.contains("versão mais nova")) << error.toStdString();
}

TEST_F(DataBaseTest, ObjectsAreFoundAgainByIdentifierLabelAndName) {
  const KaldexObject a = newObject("rótulo 'a'");
  const KaldexObject b = newObject("b");
  EXPECT_LT(a.id, b.id);
  for (int round = 0; round < 2; ++round) {
    KaldexObject found;
    EXPECT_EQ(dataBase->findObjectByLabel("rótulo 'a'", *lots, found), 1);
    EXPECT_EQ(found.id, a.id);
    EXPECT_EQ(found.categoryId, lots->id);
    EXPECT_EQ(found.visualId, lots->visual.id);
    EXPECT_EQ(dataBase->findObjectByName("nome b", *lots, found), 1);
    EXPECT_EQ(found.id, b.id);
    EXPECT_EQ(dataBase->findObject(a.id, *lots, found), 1);
    EXPECT_EQ(found.label, "rótulo 'a'");
    EXPECT_EQ(dataBase->findObjectByLabel("B", *lots, found), 0);
    EXPECT_EQ(dataBase->findObject(b.id + 1, *lots, found), 0);
    if (round == 0) reopen();
  }
}

TEST_F(DataBaseTest, EveryLookUpSeesTheNewestObject) {
  // Rows gather in memory before they are stored: none of the ways to an object may miss them.
  makeAttributes();
  KaldexObject found;
  for (int i = 0; i < 100; ++i) {
    const QString label = QString::number(i);
    EXPECT_EQ(dataBase->findObjectByLabel(label, *lots, found), 0);
    const KaldexObject object = newObject(label);
    const int seen = i % 5 == 0   ? dataBase->findObjectByLabel(label, *lots, found)
                     : i % 5 == 1 ? dataBase->findObjectByName("nome " + label, *lots, found)
                     : i % 5 == 2 ? dataBase->findObject(object.id, *lots, found)
                     : i % 5 == 3 ? attributesOf(object.id).size() - 4
                                  : change(object.id - (i % 3), 1, label);
    EXPECT_EQ(seen, 1) << i;
  }
  const std::vector<KaldexObject> all = objectsOf(*lots);
  ASSERT_EQ(all.size(), 100u);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(all[static_cast<std::size_t>(i)].label, QString::number(i));
  const auto changed = dataBase->selectRecords(lots->attributeTable, "GEOID", "POP = 99", "", "");
  EXPECT_EQ(changed->integer(0), all.back().id);
}

TEST_F(DataBaseTest, WalkOfObjectsTellsNoneEndAndError) {
  KaldexObject object;
  EXPECT_EQ(dataBase->firstObject(*lots, object), objectNone);
  const int id = newObject("x").id;
  EXPECT_EQ(dataBase->firstObject(*lots, object), objectFound);
  EXPECT_EQ(object.id, id);
  EXPECT_EQ(dataBase->nextObject(*lots, object), objectEnd);
  Category unknown(-1, "x", OBJECTMODEL, "", 0, nullptr);
  EXPECT_EQ(dataBase->firstObject(unknown, object), objectError);
  object.name = "outro";
  object.id = id;
  object.categoryId = lots->id;
  EXPECT_EQ(dataBase->updateObjectName(object), 1);
  EXPECT_EQ(dataBase->findObjectByName("outro", *lots, object), 1);
  object.id = id + 1;
  EXPECT_EQ(dataBase->updateObjectName(object), 0);
}

TEST_F(DataBaseTest, AWalkGoesOnThroughCommitsRollbacksAndChangesOfTables) {
  for (int i = 0; i < 5; ++i) newObject(QString::number(i));
  KaldexObject object;
  QStringList labels;
  for (int walk = dataBase->firstObject(*lots, object); walk == objectFound;
       walk = dataBase->nextObject(*lots, object)) {
    labels << object.label;
    if (object.label == "0") makeAttributes();
    if (object.label == "1") dataBase->commit();
    DBTransactionBlock block(dataBase.get());
    if (object.label == "2") newObject("fallen");
    if (object.label == "3") dataBase->createTable("EXTRA", SFieldList());
    if (object.label == "4") block.enableCommit();
  }
  EXPECT_EQ(labels.join(""), "01234");
  // Nothing keeps another program out once the operation has ended.
  EXPECT_EQ(dataBase->firstObject(*lots, object), objectFound);
  dataBase->commit();
  EXPECT_TRUE(Peek(path("base.gpkg")).run("UPDATE OJ000001 SET NOME = 'x'"));
}

TEST_F(DataBaseTest, CheckFindsADamagedSpatialIndex) {
  InfoLayer* lines = layer(THEMATICMODEL, "Linhas");
  for (int i = 0; i < 10; ++i) insertLine(*lines->vector(vectorLines, true), {1.0 * i, 1, 2, 2});
  dataBase->commit();
  EXPECT_TRUE(dataBase->check().isEmpty());
  const QString tree =
      Peek(path("base.gpkg")).value("SELECT name FROM sqlite_master WHERE name LIKE 'rtree%_rowid'");
  EXPECT_TRUE(Peek(path("base.gpkg")).run("DELETE FROM " + tree + " WHERE rowid = 3"));
  EXPECT_FALSE(dataBase->check().isEmpty());
}

TEST_F(DataBaseTest, ObjectIdentifiersAreUniqueInTheWholeDataBase) {
  Category* trees = category(OBJECTMODEL, "Árvores");
  const int first = newObject("1").id;
  EXPECT_NE(ModelFixture::newObject(trees, "", "").id, first);
  dataBase->commit();
  // Another program adds a row without a word to us.
  Peek(path("base.gpkg")).run("INSERT INTO OJ000001 (ID, NOME) VALUES (5000, 'x')");
  reopen();
  EXPECT_GT(newObject("2").id, 5000);
}

TEST_F(DataBaseTest, ANewObjectHasAnEmptyAttributeRowAtOnce) {
  const KaldexObject before = newObject("before the table");
  makeAttributes();
  EXPECT_EQ(attributesOf(before.id),
            (QStringList{QString::number(before.id), "null", "null", "null", "null"}));
  const KaldexObject object = newObject("x");
  SCellList cells;
  EXPECT_EQ(dataBase->readObjectAttributes(SFieldList(), cells, lots->attributeTable, object.id), 1);
  EXPECT_EQ(cells.Size(), 5);
  EXPECT_EQ(dataBase->readObjectAttributes(SFieldList(), cells, lots->attributeTable, object.id + 1), 0);
  EXPECT_EQ(cells.Size(), 0);
  EXPECT_EQ(dataBase->readObjectAttributes(SFieldList(), cells, "CG999999", object.id), 0);
  dataBase->commit();
  EXPECT_EQ(Peek(path("base.gpkg")).value("SELECT count(*) FROM " + lots->attributeTable), "2");
}

TEST_F(DataBaseTest, CellsAreStoredByTypeAndComeBackAsTheyWere) {
  makeAttributes();
  const struct {
    int column;
    const char* text;
    const char* back;
    const char* stored;
  } cases[] = {{1, "12", "12", "integer"},
               {1, "-7", "-7", "integer"},
               {1, "abc", "abc", "text"},
               {1, "", "null", "null"},
               {2, "1.5", "1.5", "real"},
               {2, "1.23457e+08", "123457000", "real"},
               {2, "0.1", "0.1", "real"},
               {2, "1,5", "1,5", "text"},
               {2, "nan", "nan", "text"},
               {2, "12345678.12345678", "12345678.12345678", "real"},
               {3, "12/03/20", "12/03/20", "text"},
               {3, "20010312", "20010312", "text"},
               {4, "São João", "São João", "text"},
               {4, "", "", "text"},
               {4, "007", "007", "text"}};
  for (const auto& c : cases) {
    const KaldexObject object = newObject(c.text);
    // Through the insert of a new row, then through the change of a stored one.
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(change(object.id, c.column, c.text), 1);
      EXPECT_EQ(attributesOf(object.id).value(c.column), c.back) << c.text;
      dataBase->commit();
      const QString name = QStringList{"GEOID", "POP", "RENDA", "DESDE", "RUA, no"}.value(c.column);
      EXPECT_EQ(Peek(path("base.gpkg"))
                    .value(QString("SELECT typeof(\"%1\") FROM %2 WHERE GEOID = %3")
                               .arg(name, lots->attributeTable)
                               .arg(object.id)),
                c.stored)
          << c.text;
    }
  }
}

TEST_F(DataBaseTest, OnlyChangedCellsAreWritten) {
  makeAttributes();
  const KaldexObject object = newObject("x");
  change(object.id, 2, "0.25");
  dataBase->commit();
  Peek(path("base.gpkg")).run("UPDATE CG000001 SET POP = 5");
  SCellList cells;
  dataBase->readObjectAttributes(SFieldList(), cells, lots->attributeTable, object.id);
  EXPECT_EQ(dataBase->writeObjectAttributes(SFieldList(), cells, lots->attributeTable, object.id), 1);
  EXPECT_FALSE(dataBase->createProject("Projeto", *utm()));
  cells.at(4)->ChangeCell("rua");
  EXPECT_EQ(dataBase->writeObjectAttributes(SFieldList(), cells, lots->attributeTable, object.id), 1);
  EXPECT_EQ(cells.at(4)->modify(), cellStored);
  EXPECT_EQ(attributesOf(object.id).mid(1), (QStringList{"5", "0.25", "null", "rua"}));
  // An object that isn't there has no row to change.
  cells.at(4)->ChangeCell("outra");
  EXPECT_EQ(dataBase->writeObjectAttributes(SFieldList(), cells, lots->attributeTable, 12345), 0);
}

TEST_F(DataBaseTest, AnchorsAreLinkedAndSavedWithTheirFinalMeasures) {
  const KaldexObject object = newObject("x");
  const KaldexObject other = newObject("y");
  Anchor anchor;
  anchor.id = 41;
  anchor.visualId = lots->visual.id;
  EXPECT_EQ(dataBase->anchorOfObject(object.id, *plan), 0);
  EXPECT_EQ(dataBase->saveAnchor(*plan, anchor), 0);
  EXPECT_EQ(dataBase->linkAnchor(*plan, anchor, object), 1);
  EXPECT_EQ(dataBase->anchorOfObject(object.id, *plan), 41);
  anchor.area = 12.5;
  EXPECT_EQ(dataBase->saveAnchor(*plan, anchor), 1);
  Anchor second;
  second.id = 42;
  EXPECT_EQ(dataBase->linkAnchor(*plan, second, other), 1);
  EXPECT_EQ(dataBase->anchorOfObject(object.id, *plan), 41);
  EXPECT_EQ(dataBase->anchorOfObject(other.id, *plan), 42);
  anchor.perimeter = 3.5;
  EXPECT_EQ(dataBase->saveAnchor(*plan, anchor), 1);
  second.id = 43;
  EXPECT_EQ(dataBase->saveAnchor(*plan, second), 0);
  const auto rows = dataBase->selectRecords(plan->associationTable(), "*", "", "", "");
  EXPECT_EQ(rows->integer("geoid"), object.id);
  EXPECT_EQ(rows->integer(1), lots->id);
  EXPECT_EQ(rows->integer(2), 41);
  EXPECT_EQ(rows->integer(3), lots->visual.id);
  EXPECT_EQ(rows->real(4), 12.5);
  EXPECT_EQ(rows->real(5), 3.5);
  GeneralVisual visual;
  EXPECT_EQ(dataBase->loadVisual(rows->integer(3), visual), 1);
}

TEST_F(DataBaseTest, TheAssociationTableHoldsMetresAlsoWhereThePlaneIsInDegrees) {
  Project* degrees = dataBase->createProject("Graus", *latLong());
  InfoLayer* layer = this->layer(CADASTRALMODEL, "Graus", Box(-50, -20, -40, -10), degrees);
  Anchor anchor;
  anchor.id = 1;
  anchor.area = 2.0;
  anchor.perimeter = 3.0;
  dataBase->linkAnchor(*layer, anchor, newObject("x"));
  const auto rows = dataBase->selectRecords(layer->associationTable(), "*", "", "", "");
  EXPECT_NEAR(rows->real(4), 2.0 * 111319.490793 * 111319.490793, 1000.0);
  EXPECT_NEAR(rows->real(5), 3.0 * 111319.490793, 0.01);
}

TEST_F(DataBaseTest, TablesKeepTheirColumnsAsDeclared) {
  makeAttributes();
  const SFieldList more = fieldList({{"COTA", fieldReal, 9, 2}});
  EXPECT_EQ(dataBase->addColumns(more, lots->attributeTable, 1, 0), 1);
  EXPECT_EQ(dataBase->addColumns(more, lots->attributeTable, 1, 0), 0);
  EXPECT_EQ(dataBase->addColumns(more, "CG999999", 1, 0), 0);
  const SFieldList twice = fieldList({{"nova", fieldText, 9, 0}, {"NOVA", fieldText, 9, 0}});
  EXPECT_EQ(dataBase->addColumns(twice, lots->attributeTable, 1, 0), 0);
  EXPECT_EQ(dataBase->createAttributeTable(*lots, more), 0);
  reopen();
  EXPECT_EQ(columnsOf(lots->attributeTable.toLower()).join(' '),
            "GEOID:0:10:0 POP:0:10:0 RENDA:1:17:8 DESDE:2:8:0 RUA, no:3:20:0 COTA:1:9:2");
  SFieldList fields;
  dataBase->loadTableFields(fields, lots->attributeTable);
  for (int i = 0; i < fields.Size(); ++i) EXPECT_EQ(fields.at(i)->index, i);
  EXPECT_EQ(dataBase->loadTableFields(fields, "absent"), 0);
}

TEST_F(DataBaseTest, ColumnsMayBeAddedWhileObjectsAreMade) {
  makeAttributes();
  const KaldexObject before = newObject("a");
  const SFieldList more = fieldList({{"COTA", fieldReal, 9, 2}});
  ASSERT_EQ(dataBase->addColumns(more, lots->attributeTable, 1, 0), 1);
  const KaldexObject after = newObject("b");
  EXPECT_EQ(change(after.id, 5, "2.5"), 1);
  EXPECT_EQ(change(before.id, 5, "1.5"), 1);
  EXPECT_EQ(attributesOf(before.id).value(5), "1.5");
  EXPECT_EQ(attributesOf(after.id).value(5), "2.5");
}

TEST_F(DataBaseTest, NonSpatialTablesTakeTheirRowsByColumn) {
  Category* persons = category(NOTSPACIALMODEL, "Pessoas");
  SFieldList fields = fieldList({{"NOME", fieldText, 17, 8}, {"IDADE", fieldInteger, 10, 0}});
  ASSERT_EQ(dataBase->createTable(persons->attributeTable, fields), 1);
  EXPECT_EQ(dataBase->createTable(persons->attributeTable, fields), 0);
  EXPECT_EQ(dataBase->finishColumns(fields), 1);  // no cells, nothing to do
  for (SField* field : fields) field->setTablename(persons->attributeTable);
  const auto add = [](SField* field, const QString& value) {
    auto* cell = new SCell(field->table, field->type, value);
    cell->setModify(cellInserted);
    field->cells.Append(cell);
  };
  add(fields.at(0), "Ana");
  add(fields.at(0), "Rui");
  add(fields.at(1), "31");
  EXPECT_EQ(dataBase->finishColumns(fields), 1);
  EXPECT_EQ(dataBase->finishColumns(fields), 1);  // stored rows aren't stored again
  SFieldList loaded;
  EXPECT_EQ(dataBase->loadTableFields(loaded, persons->attributeTable), 2);
  const auto rows = dataBase->selectRecords(persons->attributeTable, "*", "", "", "");
  ASSERT_EQ(rows->columnCount(), 2);
  EXPECT_EQ(rows->text(0) + rows->text(1), "Ana31");
  rows->next();
  EXPECT_EQ(rows->text(0) + rows->text(1), "Rui");
  rows->next();
  EXPECT_TRUE(rows->atEnd());
}

TEST_F(DataBaseTest, ABlockStaysOnlyWhenItIsCommitted) {
  makeAttributes();
  const int kept = newObject("kept").id;
  {
    DBTransactionBlock block(dataBase.get());
    newObject("fallen");
    {
      DBTransactionBlock inner(dataBase.get());
      newObject("fallen with the outer one");
      inner.enableCommit();
    }
  }
  KaldexObject object;
  EXPECT_EQ(dataBase->findObjectByLabel("kept", *lots, object), 1);
  EXPECT_EQ(dataBase->findObjectByLabel("fallen", *lots, object), 0);
  EXPECT_EQ(dataBase->findObjectByLabel("fallen with the outer one", *lots, object), 0);
  {
    DBTransactionBlock block(dataBase.get());
    {
      DBTransactionBlock inner(dataBase.get());
      EXPECT_EQ(newObject("inner").id, kept + 1);
    }
    EXPECT_EQ(newObject("outer").id, kept + 1);
    block.enableCommit();
  }
  // Committed, with all that came before it, when the outermost block ended.
  Peek peek(path("base.gpkg"));
  EXPECT_EQ(peek.value("SELECT group_concat(ROTULO) FROM OJ000001"), "kept,outer");
  EXPECT_EQ(peek.value("SELECT count(*) FROM CG000001"), "2");
  DBTransactionBlock nothing(nullptr);
  nothing.enableCommit();
}

TEST_F(DataBaseTest, ARollbackTakesTablesAndColumnsBack) {
  makeAttributes();
  dataBase->commit();
  const SFieldList more = fieldList({{"COTA", fieldReal, 9, 2}});
  {
    DBTransactionBlock block(dataBase.get());
    ASSERT_EQ(dataBase->addColumns(more, lots->attributeTable, 1, 0), 1);
    ASSERT_EQ(dataBase->createTable("EXTRA", more), 1);
    ASSERT_EQ(dataBase->createLayerAssociationTable(plan->id), 1);
    newObject("x");
  }
  SFieldList fields;
  EXPECT_EQ(dataBase->loadTableFields(fields, lots->attributeTable), 5);
  EXPECT_FALSE(dataBase->tableExists("EXTRA"));
  EXPECT_FALSE(dataBase->tableExists(plan->associationTable()));
  EXPECT_EQ(change(newObject("y").id, 4, "rua"), 1);
  Anchor anchor;
  anchor.id = 1;
  EXPECT_EQ(dataBase->linkAnchor(*plan, anchor, newObject("z")), 1);
  dataBase->commit();
  dataBase->rollback();
  EXPECT_EQ(dataBase->anchorOfObject(newObject("w").id - 1, *plan), 1);
  EXPECT_TRUE(dataBase->check().isEmpty()) << dataBase->check().join("\n").toStdString();
}

TEST_F(DataBaseTest, AFullDiskIsToldAndTheBlockFallsWhole) {
  makeAttributes();
  dataBase->commit();
  dataBase.reset();
  // Files may not grow: that is what a full disk looks like from here. The database itself is stopped at the
  // end of the block, its journal in the midst of it. The limit holds for a process.
  for (const rlim_t most : {static_cast<rlim_t>(QFileInfo(path("base.gpkg")).size() + 65536), rlim_t{4096}}) {
    const pid_t child = fork();
    if (child == 0) {
      reopen();
      struct rlimit limit;
      getrlimit(RLIMIT_FSIZE, &limit);
      const rlim_t unlimited = limit.rlim_cur;
      limit.rlim_cur = most;
      setrlimit(RLIMIT_FSIZE, &limit);
      signal(SIGXFSZ, SIG_IGN);
      int failures = 0;
      const auto tryTo = [&](const std::function<void()>& change) {
        try {
          change();
        } catch (const SException& exception) {
          if (exception.kind() == SException::Kind::diskFull) ++failures;
        }
      };
      tryTo([&] {
        DBTransactionBlock block(dataBase.get());
        tryTo([&] {
          for (int i = 0; i < 20000; ++i)
            change(newObject("objeto " + QString::number(i)).id, 4, "uma rua qualquer");
        });
        // Room again, for somebody who has not heard of the failure and goes on.
        if (failures > 0) limit.rlim_cur = unlimited;
        setrlimit(RLIMIT_FSIZE, &limit);
        if (failures > 0) newObject("later");
        block.enableCommit();
      });
      KaldexObject object;
      bool left = false;
      for (const char* name : {"objeto 0", "later"})
        left = left || dataBase->findObjectByLabel(name, *lots, object) != 0;
      _exit(left ? 2 : failures > 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << most;
  }
  reopen();
  EXPECT_TRUE(dataBase->check().isEmpty());
  EXPECT_EQ(newObject("x").id, 1);
}

TEST_F(DataBaseTest, AKilledProcessLeavesWhatWasCommitted) {
  makeAttributes();
  newObject("before");
  dataBase.reset();
  const pid_t child = fork();
  if (child == 0) {
    reopen();
    newObject("committed");
    dataBase->commit();
    for (int i = 0; i < 50000; ++i) change(newObject("lost").id, 4, "rua");
    kill(getpid(), SIGKILL);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  reopen();
  EXPECT_TRUE(dataBase->check().isEmpty());
  KaldexObject object;
  EXPECT_EQ(dataBase->findObjectByLabel("committed", *lots, object), 1);
  EXPECT_EQ(dataBase->findObjectByLabel("lost", *lots, object), 0);
  EXPECT_EQ(attributesOf(object.id).size(), 5);
}

TEST_F(DataBaseTest, AChangeWaitsForAnotherWriter) {
  makeAttributes();
  dataBase->commit();
  Peek other(path("base.gpkg"));
  ASSERT_TRUE(other.run("BEGIN IMMEDIATE"));
  std::thread release([&other] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    other.run("COMMIT");
  });
  EXPECT_NO_THROW({
    newObject("late");
    dataBase->commit();
  });
  release.join();
}

TEST_F(DataBaseTest, AReadOnlyFileCanBeRead) {
  makeAttributes();
  change(newObject("x").id, 4, "rua");
  Anchor anchor;
  anchor.id = 7;
  KaldexObject object;
  dataBase->findObjectByLabel("x", *lots, object);
  dataBase->linkAnchor(*plan, anchor, object);
  dataBase.reset();
  const QByteArray before = read("base.gpkg");
  QFile(path("base.gpkg")).setPermissions(QFileDevice::ReadOwner | QFileDevice::ReadGroup);
  QFile(folder()).setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadGroup |
                                 QFileDevice::ExeGroup);
  const pid_t child = fork();
  if (child == 0) {
    // Root may write everything; the group stays, and may read.
    if (geteuid() == 0 && setuid(65534) != 0) _exit(1);
    reopen();
    if (HasFatalFailure()) _exit(2);
    EXPECT_EQ(dataBase->findObjectByLabel("x", *lots, object), 1);
    EXPECT_EQ(attributesOf(object.id).value(4), "rua");
    EXPECT_EQ(dataBase->anchorOfObject(object.id, *plan), 7);
    EXPECT_EQ(dataBase->selectRecords(plan->associationTable(), "*", "", "", "")->integer("GEOID"),
              object.id);
    EXPECT_EQ(plan->vector(vectorLines), nullptr);
    EXPECT_TRUE(dataBase->check().isEmpty());
    EXPECT_THROW(change(object.id, 4, "outra"), SException);
    dataBase.reset();
    _exit(HasFailure() ? 3 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(read("base.gpkg"), before);
}

TEST_F(DataBaseTest, TextsOfALayerComeBackAndCanBeChanged) {
  Text* texts = nullptr;
  EXPECT_EQ(plan->Get(texts), 0);
  texts = plan->makeText();
  texts->visual.text.height = 7.5f;
  EntitieList list;
  for (int i = 0; i < 3; ++i) {
    auto* text = new EText();
    text->Position(Point(100.5 + i, 200.25));
    text->String(QString("Ladeira da Conceição %1").arg(i));
    text->Own(1);
    text->EntitieType(50);
    text->LayerName("NUVTEXT");
    list.Append(text);
  }
  EXPECT_EQ(texts->store(list), 1);
  static_cast<EText*>(list.First())->String("mudado");
  EXPECT_EQ(texts->store(list), 1);
  EXPECT_EQ(texts->count(), 3);
  reopen();
  ASSERT_EQ(plan->Get(texts), 1);
  EXPECT_EQ(texts->visual.text.height, 7.5f);
  EntitieList stored;
  ASSERT_EQ(texts->load(stored), 3);
  auto* first = static_cast<EText*>(stored.at(0));
  auto* last = static_cast<EText*>(stored.at(2));
  EXPECT_EQ(first->String(), "mudado");
  EXPECT_EQ(last->String(), "Ladeira da Conceição 2");
  EXPECT_TRUE(last->Position() == Point(102.5, 200.25));
  EXPECT_EQ(last->EntitieType(), 50);
  EXPECT_EQ(last->LayerName(), "NUVTEXT");
  EXPECT_TRUE(dataBase->check().isEmpty()) << dataBase->check().join("\n").toStdString();
}

}  // namespace
