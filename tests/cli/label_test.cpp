#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

/// Two parcels, the second with a hole (which is a polygon of its own), and what labels say of them.
class LabelTest : public CliTest {
 protected:
  LabelTest() { writeParcels(); }

  void importParcels(const QString& place, const QStringList& more = {}) const {
    runJson(QStringList{"import", "shapefile", "polygons", "lots.shp", "base.gpkg", place, "--no"} + more);
  }
  Outcome classify(const QByteArray& records, const QString& place, const QStringList& more = {},
                   int code = 0) const {
    write("labels.kdx", "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n" + records + "END\n");
    return runJson(QStringList{"classify", "ascii", "labels.kdx", "base.gpkg", place} + more, code);
  }
  QByteArray exported(const char* kind, const QString& place, const QString& file = "l_out.kdx") const {
    runJson({"export", "ascii", kind, "base.gpkg", place, file, "--separator", ";", "--overwrite"});
    const QByteArray text = read(file);
    return text.mid(text.indexOf("INFO_END\n"));
  }
};

TEST_F(LabelTest, ClassesOfAThematicLayer) {
  importParcels("p/t");
  const QByteArray labels = "5 ; 5 ; Mata\n40 ; 20 ; Rio\n";
  const QByteArray before = read("base.gpkg");
  const Outcome refused = classify(labels, "p/t", {}, 3);
  EXPECT_TRUE(refused.json()["questions"].toArray().at(0).toObject()["answer"].isNull());
  classify(labels, "p/t", {"--no"}, 1);  // nothing is left to classify by
  classify(labels, "p/none", {"--yes"}, 1);
  EXPECT_EQ(read("base.gpkg"), before);
  // Identifiers of classes that fell are not given again: that much of the file changes.
  classify(labels, "p/t", {"--yes", "--dry-run"});
  const Outcome broken = classify("5 ; 5 ; Mata\n5 ; nowhere ; Mata\n", "p/t", {"--yes"}, 1);
  EXPECT_TRUE(told(broken).startsWith("labels.kdx:6:1:")) << told(broken).toStdString();
  EXPECT_TRUE(layer("p/t")["classes"].toArray().isEmpty());
  EXPECT_EQ(exported("labels", "p/t").count('\n'), 1);

  const Outcome done = classify(labels, "p/t", {"--yes"});
  EXPECT_EQ(done.json()["written"].toObject()["labels"].toInt(), 2);
  EXPECT_EQ(layer("p/t")["classes"].toArray(), QJsonArray({"Mata", "Rio"}));
  // A No leaves out the class that is missing, and only that.
  const Outcome some = classify("5 ; 5 ; Rio\n40 ; 20 ; Cerrado\n", "p/t", {"--no"});
  EXPECT_EQ(some.json()["left_out"].toObject()["not_associated"].toInt(), 1);
  EXPECT_EQ(layer("p/t")["classes"].toArray().size(), 2);
  const QByteArray out = exported("labels", "p/t");
  EXPECT_EQ(out.count(" ; Rio"), 2) << out.toStdString();
}

TEST_F(LabelTest, ObjectsOfACadastralLayer) {
  runJson({"import", "shapefile", "polygons", "lots.shp", "base.gpkg", "p/c", "--model", "cadastral", "--no",
           "--answer", "Categoria objeto=yes"});
  const QByteArray before = read("base.gpkg");
  const QByteArray labels = "5 ; 5 ; L1 ; Ana ; Lotes\n40 ; 20 ; L2 ; Bia ; Lotes\n";
  classify(labels, "p/c", {}, 3);
  classify(labels, "p/c", {"--no"}, 3);
  EXPECT_EQ(read("base.gpkg"), before);
  const int objects = count("p/c", "objects");
  classify(labels, "p/c", {"--yes"});
  EXPECT_EQ(count("p/c", "objects"), objects + 2);
  const QByteArray out = exported("labels", "p/c");
  EXPECT_TRUE(out.contains(" ; L1 ; Ana ; Lotes")) << out.toStdString();
  // And the other way round: what there is, as labels of classes.
  EXPECT_TRUE(exported("labels-swapped", "p/c").contains(" ; Ana\n"));
  EXPECT_EQ(exported("labels-more", "p/c").count("//num.objs 0000002"), 2);
}

TEST_F(LabelTest, EveryExportOfLabels) {
  importParcels("p/t");
  classify("5 ; 5 ; Mata\n", "p/t", {"--yes"});
  const struct {
    const char* kind;
    const char* file;
    int records;
    const char* text;
  } kinds[] = {{"labels", "l_out.kdx", 1, " ; Mata\n"},
               {"labels-auto", "l_out.kdx", 3, " ; l_pol1 "},
               {"labels-auto", "l_CEN.kdx", 3, " ; Mata ; 100.000000 ; 40.000000 "},
               {"labels-unclassified", "l_out.kdx", 2, " ; "},
               {"labels-more", "l_out.kdx", 1, " ; "},
               {"labels-swapped", "l_CADLAB.typ", 1, " ; 00000001 ;     ; l_O"}};
  for (const auto& one : kinds) {
    const QByteArray out = exported(one.kind, "p/t", one.file);
    EXPECT_TRUE(out.endsWith("\nEND")) << one.kind << out.toStdString();
    EXPECT_EQ(out.count('\n'), one.records + 1) << one.kind << out.toStdString();
    EXPECT_TRUE(out.contains(one.text)) << one.kind << out.toStdString();
  }
  EXPECT_TRUE(read("l_CADTAB.kdx").contains("\n00000001 ; Mata\n")) << read("l_CADTAB.kdx").toStdString();
  // A name that the table's can't be made of.
  runJson({"export", "ascii", "labels-swapped", "base.gpkg", "p/t", "x.kdx", "--separator", ";"}, 1);
  runJson({"export", "ascii", "labels", "base.gpkg", "p/t", "x.kdx", "--separator", "tab"}, 1);
  EXPECT_FALSE(entries().contains("x.kdx"));
  write("points.kdx", "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;2;Mata\n3;4;Nenhuma\nEND\n");
  runJson({"import", "ascii", "points", "points.kdx", "base.gpkg", "p/t"});
  EXPECT_EQ(exported("points", "p/t").count('\n'), 3);
  EXPECT_TRUE(exported("points-auto", "p/t").contains(" ; l2"));
}

}  // namespace
}  // namespace kaldex::test
