#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

/// Delimited tables, and the attribute tables that they become.
class CsvTest : public CliTest {
 protected:
  Outcome import(const char* kind, const QByteArray& text, const QString& category,
                 const QStringList& more = {}, int code = 0) const {
    write("in.csv", text);
    return runJson(QStringList{"import", "csv", kind, "in.csv", "base.gpkg", category} + more, code);
  }
  /// The table of a category as text: declarations and rows.
  QByteArray table(const QString& category) const {
    runJson({"export", "ascii", "table", "base.gpkg", category, "out.kdx", "--separator", ";"});
    const QByteArray text = read("out.kdx");
    QFile::remove(path("out.kdx"));
    return text.mid(text.indexOf("UNFORMATED\n") + 11);
  }
};

TEST_F(CsvTest, ATableMakesObjectsAndNothingBesideItsFile) {
  const QByteArray people = "code;pop;born;who\nb7;12;01/02/1990;Ana\na2;7;;Jos\xE9 da Silva\n";
  const QStringList typed{"--key", "code", "--types", "pop=integer,born=date,who=text:40"};
  import("table", people, "people", typed + QStringList{"--dry-run", "--keep-table"});
  EXPECT_EQ(entries(), QStringList({"base.gpkg", "in.csv", "tmp"}));
  runJson({"export", "ascii", "table", "base.gpkg", "people", "out.kdx"}, 1);

  const Outcome made = import("table", people, "people", typed);
  EXPECT_TRUE(made.json()["questions"].toArray().at(0).toObject()["answer"] == "yes");
  EXPECT_EQ(made.json()["written"].toObject()["objects"].toInt(), 2);
  const QByteArray stored = table("people");
  EXPECT_TRUE(stored.contains("\npop ; INTEGER ; 10 ; 0\nborn ; DATE ; 8 ; 0\nwho ; TEXT ; 40 ; 0\n"))
      << stored.toStdString();
  EXPECT_TRUE(stored.contains("\nb7 ; b7 ; b7 ; 12 ; ")) << stored.toStdString();
  EXPECT_EQ(entries(), QStringList({"base.gpkg", "in.csv", "tmp"}));

  const QJsonArray tables = runJson({"info", "base.gpkg"}).json()["tables"].toArray();
  EXPECT_EQ(tables.size(), 1);
  EXPECT_EQ(tables.at(0).toObject()["columns"].toArray().size(), 4);
  EXPECT_TRUE(run({"info", "base.gpkg"}).out.contains("pop integer(10)"));

  // The table that stays can be imported as it is.
  const Outcome kept = import("table", people, "others", typed + QStringList{"--keep-table"});
  EXPECT_EQ(kept.json()["files"].toArray().size(), 1);
  EXPECT_TRUE(entries().contains("in_TAB.kdx"));
  run({"init", "second.gpkg"});
  runJson({"import", "ascii", "table", "in_TAB.kdx", "second.gpkg", "others"});
  const Outcome wrong = runJson({"import", "ascii", "table", "in_TAB.kdx", "base.gpkg", "people"}, 1);
  EXPECT_TRUE(told(wrong).contains("others")) << told(wrong).toStdString();
  // Without a key they are numbered.
  import("table", "x\n1\n2\n", "numbers", {"--separator", "none"});
  EXPECT_TRUE(table("numbers").contains("\n0000002 ; 0000002 ; 2"));
  EXPECT_TRUE(told(import("table", people, "k", {"--key", "none"}, 1)).contains("none"));
  EXPECT_TRUE(told(import("table", people, "k", {"--types", "none=real"}, 1)).contains("none"));
}

TEST_F(CsvTest, TablesGrowAndChange) {
  import("table", "name,pop\nAna,5\nBia,7\n", "t", {"--key", "name", "--types", "pop=integer"});
  const struct {
    const char* kind;
    const char* text;
    const char* row;  ///< what the first one ends with then; null: nothing changes
  } steps[] = {{"append-columns", "x;y\n1;2\n3;4\n", "; 5 ; 1 ; 2\n"},
               {"append-columns", "z\n1\n", nullptr},       // a row is missing
               {"append-columns", "pop\n1\n2\n", nullptr},  // there is one
               {"update", "id;pop;w\n2;70;q\n1;50;p\n", "; 50 ; 1 ; 2 ; p\n"},
               {"update", "id;pop\n99;5\n", nullptr},  // no such object
               {"statistics", "id,mean\n1,2.5\n2,7.5\n", "; p ; 2.5\n"}};
  for (const auto& step : steps) {
    const QByteArray before = table("t");
    import(step.kind, step.text, "t", {"--no", "--dry-run"}, step.row == nullptr ? 1 : 0);
    EXPECT_EQ(table("t"), before) << step.kind;
    const int code = step.row == nullptr ? 1 : 0;
    import(step.kind, step.text, "t", {"--yes"}, code);
    const QByteArray after = table("t");
    EXPECT_EQ(after == before, step.row == nullptr) << step.kind;
    if (step.row != nullptr) {
      EXPECT_TRUE(after.contains(step.row)) << after.toStdString();
    }
  }
  import("update", "id;pop\n1;many\n", "t", {"--no"}, 3);
  import("update", "id;pop\n1;many\n", "t", {}, 3);
  for (const char* const kind : {"append-columns", "update", "statistics"})
    import(kind, "a;b\n1;2\n", "u", {}, 1);
}

TEST_F(CsvTest, NewColumnsLeaveTheOthersAsTheyAre) {
  const QStringList cadastral{"base.gpkg", "p/l", "--model", "cadastral", "--crs", "NONE", "--yes"};
  writeParcels();
  // A comma that a table that is read would change, and a separator that would take its row apart.
  write("lots.dbf", DbfMaker({{"OWNER", 'C', 12}}).row({"Lote 2,7"}).row({"a;b"}).bytes());
  runJson(QStringList{"import", "shapefile", "features", "lots.shp"} + cadastral);
  const QByteArray before = table("lots_O");
  import("append-columns", "pop\n5\n6\n", "lots_O", {"--types", "pop=integer", "--yes"}, 1);
  EXPECT_EQ(table("lots_O"), before);
}

TEST_F(CsvTest, TablesWithoutObjects) {
  const QByteArray text = "code;name\n7;Ana\n8;Bia\n";
  import("nonspatial", text, "list", {"--dry-run"});
  import("nonspatial", text, "list");
  import("nonspatial", text, "list", {}, 1);
  import("table", text, "other", {"--model", "nonspatial"});
  for (const char* const category : {"list", "other"})
    EXPECT_TRUE(table(category).endsWith("INFO_END\n 7 ; Ana ;\n 8 ; Bia ;\nEND"))
        << table(category).toStdString();
  // No import reads such a section.
  runJson({"export", "ascii", "table", "base.gpkg", "list", "list.kdx"});
  const Outcome refused = runJson({"import", "ascii", "table", "list.kdx", "base.gpkg", "fresh"}, 1);
  EXPECT_TRUE(told(refused).contains("csv")) << told(refused).toStdString();
  runJson({"export", "ascii", "table", "base.gpkg", "fresh", "f.kdx"}, 1);
}

// What a table can't carry is told with its place; what can be mended is, and told as well.
TEST_F(CsvTest, FilesThatAreNotPlain) {
  QByteArray wide("\xFF\xFE", 2);
  for (const char c : QByteArray("a;b\n1;2\n")) wide.append(c).append('\0');
  const struct {
    const char* name;
    QByteArray text;
    const char* place;  ///< in what is told
    int code;           ///< of an import as it is
    int quotedCode;     ///< of one that cleans first
    const char* row;    ///< of the table then
  } cases[] = {
      {"ragged", "a;b\n1;2\n3\n", "in.csv:3:", 1, 0, "\n0000002 ; 0000002 ; 3 ; "},
      {"long", "a;b\n1;2;3\n", "in.csv:2:", 1, 1, nullptr},
      {"quoted separator", "a;b\n\"x;y\";2\n", "in.csv:2:3:", 1, 0, "; x y ; 2"},
      {"quoted line end", "a;b\n\"x\ny\";2\n", "in.csv:2:1:", 1, 0, "; x y ; 2"},
      {"quotes", "a;b\n\"x\";2\n", "--quoted", 0, 0, "; x ; 2"},
      {"decimal comma", "a;b\n1,5;2\n", "in.csv:2:2:", 1, 0, "; 1.5 ; 2"},
      {"zero byte", QByteArray("a;b\n1\0x;2\n", 10), "in.csv:2:2:", 1, 0, "; 1 x ; 2"},
      {"mark", "\357\273\277a;b\n1;2\n", " 1, ", 0, 0, "; 1 ; 2"},
      {"wide", wide, " 1, ", 0, 0, "; 1 ; 2"},
      {"carriage returns", "a;b\r\n1;2\r\n", " 1, ", 0, 0, "; 1 ; 2"},
  };
  for (const auto& one : cases) {
    const QByteArray before = read("base.gpkg");
    const Outcome plain = import("table", one.text, "plain", {"--dry-run", "--yes"}, one.code);
    EXPECT_TRUE(told(plain).contains(one.place)) << one.name << '\n' << told(plain).toStdString();
    const Outcome cleaned = import("table", one.text, one.name, {"--quoted", "--yes"}, one.quotedCode);
    EXPECT_EQ(read("base.gpkg") == before, one.quotedCode != 0) << one.name;
    if (one.row != nullptr) {
      EXPECT_TRUE(table(one.name).contains(one.row)) << one.name << table(one.name).toStdString();
    }
  }
  EXPECT_EQ(entries(), QStringList({"base.gpkg", "in.csv", "tmp"}));
}

}  // namespace
}  // namespace kaldex::test
