#include <QProcess>
#include <QStandardPaths>

#include "kaldex/model/database.h"
#include "kaldex/model/text.h"
#include "support/model_fixture.h"
#include "support/peek.h"

// What other programs see of a geographic database.

namespace {

using kaldex::test::ModelFixture;
using kaldex::test::Peek;

class SchemaTest : public ModelFixture {
 protected:
  // Something of every kind that can be stored.
  void fill() {
    InfoLayer* plan = layer(CADASTRALMODEL, "Quadras");
    Vector* vector = plan->vector(vectorLines, true);
    insertPolygon(*vector, {0, 0, 0, 10, 10, 10, 10, 0, 0, 0}, 1);
    Point2d point(5, 5);
    vector->Insert(point);
    InfoLayer* relief = layer(DIGITALMODEL, "Relevo");
    insertLine(*relief->vector(vectorContours, true), {1, 1, 5, 5}, linePlain, 0, 20.0f);
    Point3d sample(1, 2, 3.5f);
    relief->vector(vectorSamples, true)->Insert(sample, 0);
    layer(THEMATICMODEL, "Vazio")->vector(vectorLines, true);
    fillTables(*plan);
    EntitieList texts;
    auto* text = new EText();
    text->Position(Point(3, 4));
    text->String("Ladeira da Conceição");
    texts.Append(text);
    plan->makeText()->store(texts);
    dataBase->commit();
  }

  void fillTables(InfoLayer& plan) {
    Category* lots = category(OBJECTMODEL, "Lotes");
    const SFieldList fields = fieldList({{"POP", fieldInteger, 10, 0},
                                         {"RENDA", fieldReal, 17, 8},
                                         {"DESDE", fieldDate, 8, 0},
                                         {"RUA", fieldText, 20, 0}});
    dataBase->createAttributeTable(*lots, fields);
    Anchor anchor;
    anchor.polygons = {1};
    link(plan, anchor, newObject(lots, "", "", {"12", "1.5", "12/03/20", "São João"}));
    dataBase->createTable("PESSOAS", fields);
  }

  // The identifier under which a layer's projection is registered.
  QString srsOf(const SProjection& projection) {
    static int count = 0;
    const QString name = "srs" + QString::number(++count);
    InfoLayer* made = layer(THEMATICMODEL, name, Box(0, 0, 1, 1), dataBase->createProject(name, projection));
    insertLine(*made->vector(vectorLines, true), {0, 0, 1, 1});
    dataBase->commit();
    return Peek(path("base.gpkg"))
        .value("SELECT srs_id FROM gpkg_contents WHERE identifier LIKE '" + name + "/%'");
  }

  static std::unique_ptr<SProjection> changed(const SProjection& projection, short type, double meridian) {
    ProjectionParameters parameters = projection.toParameters();
    parameters.type = type;
    parameters.centralMeridian = Math_Deg_To_Rad(meridian);
    return projectionFromParameters(parameters);
  }
};

TEST_F(SchemaTest, TheFileIsMarkedAndHoldsTheRequiredRows) {
  Peek peek(path("base.gpkg"));
  EXPECT_EQ(peek.value("PRAGMA application_id").toInt(), 0x47504B47);
  EXPECT_EQ(peek.value("PRAGMA user_version"), "10300");
  EXPECT_EQ(
      peek.value("SELECT group_concat(srs_id) FROM (SELECT srs_id FROM gpkg_spatial_ref_sys WHERE srs_id IN "
                 "(-1, 0, 4326) ORDER BY srs_id)"),
      "-1,0,4326");
  EXPECT_EQ(peek.value("SELECT definition FROM gpkg_spatial_ref_sys WHERE srs_id = 0"), "undefined");
}

TEST_F(SchemaTest, EveryTableIsRegisteredUnderANameOfItsOwn) {
  fill();
  Peek peek(path("base.gpkg"));
  // R*Tree tables and those of the standard itself aren't content.
  EXPECT_EQ(
      peek.value(
          "SELECT group_concat(name) FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'gpkg!_%' "
          "ESCAPE '!' AND name NOT LIKE 'rtree!_%' ESCAPE '!' AND name NOT LIKE 'sqlite!_%' ESCAPE '!' "
          "AND name NOT IN (SELECT table_name FROM gpkg_contents)"),
      "");
  EXPECT_EQ(peek.value("SELECT count(*) FROM gpkg_contents WHERE identifier IS NULL OR identifier = ''"),
            "0");
  EXPECT_EQ(peek.value("SELECT identifier FROM gpkg_contents WHERE table_name LIKE 'CG%'"),
            "Lotes: attributes");
  EXPECT_EQ(peek.value("SELECT identifier FROM gpkg_contents WHERE table_name LIKE 'GA%'"),
            "Projeto/Quadras: objects");
  EXPECT_EQ(
      peek.value(
          "SELECT count(*) FROM gpkg_contents c WHERE data_type = 'features' AND NOT EXISTS (SELECT 1 FROM "
          "gpkg_geometry_columns g WHERE g.table_name = c.table_name AND g.srs_id = c.srs_id)"),
      "0");
  EXPECT_EQ(peek.value("PRAGMA foreign_key_check"), "(none)");
  EXPECT_EQ(
      peek.value(
          "SELECT count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name LIKE 'OJ%' AND sql NOTNULL"),
      "0")
      << "nobody has looked an object up";
  EXPECT_EQ(
      peek.value(
          "SELECT count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name LIKE 'GA%' AND sql NOTNULL"),
      "2");
}

TEST_F(SchemaTest, AUsersNameMayStandInTwoPlaces) {
  Project* other = dataBase->createProject("Projeto/A", *utm());
  InfoLayer* one = layer(THEMATICMODEL, "B", Box(0, 0, 9, 9), other);
  InfoLayer* two = layer(THEMATICMODEL, "A/B");
  for (InfoLayer* each : {one, two}) insertLine(*each->vector(vectorLines, true), {1, 1, 2, 2});
  ASSERT_NO_THROW(dataBase->commit());
  EXPECT_EQ(Peek(path("base.gpkg"))
                .value("SELECT count(DISTINCT identifier) FROM gpkg_contents WHERE data_type = 'features'"),
            "2");
}

TEST_F(SchemaTest, ProjectionsAreRegisteredOnceUnderTheirCode) {
  EXPECT_EQ(srsOf(*latLong()), "4326");
  EXPECT_EQ(srsOf(*utm()), "29193");
  EXPECT_EQ(srsOf(*utm()), "29193");
  const auto own = changed(*utm(), ProjectionType::gaussTm, -44.123);
  EXPECT_EQ(srsOf(*own), "100000");
  EXPECT_EQ(srsOf(*changed(*utm(), ProjectionType::gaussTm, -43.5)), "100001");
  EXPECT_EQ(srsOf(*own), "100000");
  EXPECT_EQ(srsOf(GeneralProjection()), "-1");
  Peek peek(path("base.gpkg"));
  EXPECT_EQ(
      peek.value(
          "SELECT organization || organization_coordsys_id FROM gpkg_spatial_ref_sys WHERE srs_id = 29193"),
      "EPSG29193");
  EXPECT_TRUE(
      peek.value("SELECT definition FROM gpkg_spatial_ref_sys WHERE srs_id = 100000").startsWith("PROJCS["));
  EXPECT_EQ(peek.value("SELECT count(*) FROM gpkg_spatial_ref_sys"), "6");
}

TEST_F(SchemaTest, OgrReadsEveryTableWithoutAWarning) {
  const QString ogrinfo = QStandardPaths::findExecutable("ogrinfo");
  if (ogrinfo.isEmpty()) GTEST_SKIP() << "ogrinfo is not installed";
  fill();
  for (const QStringList& options : {QStringList{"-so", "-al"}, QStringList{"-al"}}) {
    QProcess process;
    process.start(ogrinfo, options + QStringList{path("base.gpkg")});
    ASSERT_TRUE(process.waitForFinished());
    const QString out = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_EQ(QString::fromUtf8(process.readAllStandardError()), "");
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(out.contains("FID Column = GEOID"));
    EXPECT_TRUE(out.contains("RUA: String (20.0)"));
    EXPECT_TRUE(out.contains("ID[\"EPSG\",29193]"));
    if (options.size() == 1) {
      EXPECT_TRUE(out.contains("DESDE (String) = 12/03/20"));
      EXPECT_TRUE(out.contains("POINT (3 4)"));
      EXPECT_TRUE(out.contains("POINT Z (1 2 3.5)"));
    }
  }
}

}  // namespace
