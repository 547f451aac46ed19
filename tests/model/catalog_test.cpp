#include "kaldex/model/catalog.h"

#include "kaldex/model/database.h"
#include "kaldex/model/exception.h"
#include "kaldex/model/projection_text.h"
#include "kaldex/model/text.h"
#include "support/model_fixture.h"

namespace {

using kaldex::test::ModelFixture;

class CatalogTest : public ModelFixture {
 protected:
  void reopen() {
    dataBase.reset();
    dataBase = DataBase::Open(path("base.gpkg"));
    ASSERT_NE(dataBase, nullptr);
    project = dataBase->findProject("Projeto");
  }

  int store(Category* category) {
    CategoryList list;
    list.Append(category);
    return dataBase->storeCategories(list);
  }
};

TEST_F(CatalogTest, StoredCategoriesAreAdoptedInPlace) {
  CategoryList owning(List::Ownership::owns);
  auto* category = new Category(-1, "Lotes", OBJECTMODEL, "GA000001", 0, nullptr);
  owning.Append(category);
  ASSERT_EQ(dataBase->storeCategories(owning), 1);
  owning.Kill();
  EXPECT_GT(category->id, 0);
  EXPECT_EQ(category->attributeTable, QString("CG%1").arg(category->id, 6, 10, QLatin1Char('0')));
  EXPECT_TRUE(dataBase->tableExists(QString("OJ%1").arg(category->id, 6, 10, QLatin1Char('0'))));
  EXPECT_FALSE(dataBase->tableExists(category->attributeTable));
  EXPECT_GT(category->visual.id, 0);
  EXPECT_EQ(dataBase->categoryList().Select(QStringLiteral("Lotes")), category);
  EXPECT_EQ(dataBase->GetKaldexObjCategory().Select(category->id), category);
  EXPECT_EQ(dataBase->reloadCategory(*category), 1);

  auto* thematic = new Category(-1, "Uso", THEMATICMODEL, "", 0, nullptr);
  ASSERT_EQ(store(thematic), 1);
  EXPECT_EQ(dataBase->GetKaldexObjCategory().Select(QStringLiteral("Uso")), nullptr);
  EXPECT_TRUE(thematic->attributeTable.isEmpty());
  EXPECT_EQ(dataBase->storeCategories(dataBase->categoryList()), 1);
  EXPECT_EQ(dataBase->categoryList().Size(), 2);
}

TEST_F(CatalogTest, ANameCanBeUsedOncePerModel) {
  ASSERT_EQ(store(new Category(-1, "Uso", THEMATICMODEL, "", 0, nullptr)), 1);
  CategoryList owning(List::Ownership::owns);
  owning.Append(new Category(-1, "Outra", THEMATICMODEL, "", 0, nullptr));
  owning.Append(new Category(-1, "Uso", THEMATICMODEL, "", 0, nullptr));
  EXPECT_EQ(dataBase->storeCategories(owning), 0);
  EXPECT_TRUE(owning.ownsItems());
  EXPECT_EQ(dataBase->categoryList().Select(QStringLiteral("Outra")), nullptr);
  owning.Kill();
  owning.Append(new Category(-1, "", THEMATICMODEL, "", 0, nullptr));
  EXPECT_EQ(dataBase->storeCategories(owning), 0);
  EXPECT_EQ(store(new Category(-1, "Uso", OBJECTMODEL, "", 0, nullptr)), 1);
}

TEST_F(CatalogTest, ClassesGetTheirIdentifierAtOnceAndKeepIt) {
  Category* use = category(THEMATICMODEL, "Uso");
  GeoClass* water = addClass(*use, "água");
  GeoClass* wood = addClass(*use, "mata");
  EXPECT_EQ(water->id, 1);
  EXPECT_EQ(wood->id, 2);
  water->visual.SetPolygonColor(1, 2, 3);
  wood->visual = water->visual;  // copies the identifier with it
  ASSERT_EQ(store(use), 1);
  EXPECT_NE(water->visual.id, wood->visual.id);
  wood->visual.SetPolygonColor(4, 5, 6);
  ASSERT_EQ(store(use), 1);
  // Drawn but never stored: features may refer to it, so no later session gives the same again.
  addClass(*use, "sem registro");
  reopen();
  use = dataBase->categoryList().Select(QStringLiteral("Uso"));
  ASSERT_EQ(use->classes.Size(), 2);
  EXPECT_EQ(use->classes.SelectFromIndex(1)->visual.polygon.color.blue, 3);
  EXPECT_EQ(use->classes.SelectFromIndex(2)->visual.polygon.color.blue, 6);
  EXPECT_EQ(use->classes.findByName("mata")->position, 2);
  EXPECT_EQ(addClass(*use, "nova")->id, 4);
  use->lastClassId = 32767;
  EXPECT_EQ(addClass(*use, "depois da última")->id, 3);
}

TEST_F(CatalogTest, NewVisualsHaveTheDefaultColours) {
  Category* use = category(THEMATICMODEL, "Uso");
  addClass(*use, "a");
  ASSERT_EQ(store(use), 1);
  reopen();
  const GeneralVisual& visual =
      dataBase->categoryList().Select(QStringLiteral("Uso"))->classes.First()->visual;
  EXPECT_TRUE(visual.polygon.color == Color(0, 0, 255));
  EXPECT_TRUE(visual.line.color == Color(229, 91, 104));
  EXPECT_TRUE(visual.point.color == Color(147, 122, 73));
  EXPECT_EQ(visual.line.width, 0.25f);
  EXPECT_EQ(visual.text.fontName, "Sans");
  GeneralVisual loaded;
  EXPECT_EQ(dataBase->loadVisual(visual.id, loaded), 1);
  EXPECT_EQ(dataBase->loadVisual(visual.id + 1000, loaded), 0);
}

TEST_F(CatalogTest, RefreshedVisualsBelongToTheLayerAlone) {
  InfoLayer* plan = layer(THEMATICMODEL, "Plano");
  Category* use = plan->category();
  GeoClass* water = addClass(*use, "água");
  ASSERT_EQ(store(use), 1);
  const int own = water->visual.id;
  for (short blue : {short{10}, short{20}}) {
    water->visual.SetLineColor(0, 0, blue);
    dataBase->beginVisualRefresh();
    dataBase->refreshClassVisual(*plan, *water);
    dataBase->endVisualRefresh();
  }
  EXPECT_EQ(water->visual.id, own);
  reopen();
  const auto rows = dataBase->selectRecords("kdx_layer_visuals,kdx_visuals", "line_blue",
                                            "kdx_layer_visuals->visual_id = kdx_visuals->id", "", "");
  EXPECT_EQ(rows->integer(0), 20);
  rows->next();
  EXPECT_TRUE(rows->atEnd());
  EXPECT_EQ(dataBase->categoryList().First()->classes.First()->visual.line.color.blue, 104);
}

TEST_F(CatalogTest, ARollbackTakesNewCategoriesAndClassesOutOfTheListsButNotTheirMemory) {
  Category* use = category(THEMATICMODEL, "Uso");
  GeoClass* stored = addClass(*use, "antes");
  ASSERT_EQ(store(use), 1);
  GeoClass* unstored = addClass(*use, "antes, sem registro");
  dataBase->commit();
  auto* fallen = new Category(-1, "Nova", OBJECTMODEL, "", 0, nullptr);
  GeoClass* inBlock = nullptr;
  {
    DBTransactionBlock block(dataBase.get());
    ASSERT_EQ(store(fallen), 1);
    inBlock = addClass(*use, "no bloco");
    GeoClass* storedInBlock = addClass(*use, "no bloco, registrada");
    stored->name = "outro nome";
    ASSERT_EQ(store(use), 1);
    addClass(*use, "no bloco, depois");
    EXPECT_EQ(storedInBlock->id, inBlock->id + 1);
  }
  EXPECT_EQ(dataBase->categoryList().Select(QStringLiteral("Nova")), nullptr);
  EXPECT_EQ(dataBase->GetKaldexObjCategory().Size(), 0);
  EXPECT_EQ(dataBase->categoryList().Select(QStringLiteral("Uso")), use);
  ASSERT_EQ(use->classes.Size(), 2);
  EXPECT_EQ(use->classes.at(0), stored);
  EXPECT_EQ(stored->name, "antes");
  EXPECT_EQ(use->classes.at(1), unstored);
  // A caller may still hold them.
  EXPECT_EQ(fallen->name, "Nova");
  EXPECT_EQ(fallen->id, -1);
  EXPECT_EQ(inBlock->name, "no bloco");
  // Features of other layers could carry the identifiers that were drawn.
  EXPECT_GT(addClass(*use, "depois")->id, inBlock->id);
  EXPECT_EQ(store(fallen), 1);
  EXPECT_EQ(dataBase->GetKaldexObjCategory().Select(QStringLiteral("Nova")), fallen);
}

TEST_F(CatalogTest, NestedBlocksGoBackToTheirOwnBeginning) {
  Category* use = category(THEMATICMODEL, "Uso");
  dataBase->commit();
  {
    DBTransactionBlock outer(dataBase.get());
    addClass(*use, "fora");
    {
      DBTransactionBlock inner(dataBase.get());
      addClass(*use, "dentro");
    }
    ASSERT_EQ(use->classes.Size(), 1);
    EXPECT_EQ(use->classes.First()->name, "fora");
    dataBase->rollback();
    EXPECT_EQ(use->classes.Size(), 0);
    addClass(*use, "fora de novo");
    ASSERT_EQ(store(use), 1);
    outer.enableCommit();
  }
  dataBase->rollback();
  ASSERT_EQ(use->classes.Size(), 1);
  EXPECT_EQ(use->classes.First()->name, "fora de novo");
}

TEST_F(CatalogTest, ProjectsAndLayersComeBackTheSame) {
  const Box box(300000, 7300000, 350000, 7400000);
  InfoLayer* made = layer(CADASTRALMODEL, "Quadras", box);
  EXPECT_EQ(dataBase->createProject("Projeto", *utm()), nullptr);
  EXPECT_EQ(dataBase->createProject("", *utm()), nullptr);
  LayerDefinition twice;
  twice.name = "Quadras";
  twice.category = made->category();
  EXPECT_EQ(dataBase->createLayer(*project, twice), nullptr);
  twice.name = "Outra";
  twice.category = nullptr;
  EXPECT_EQ(dataBase->createLayer(*project, twice), nullptr);
  const QString table = made->associationTable();
  // The corner of zone 23 at 47 W, 24 S: radians.
  EXPECT_NEAR(made->geographicBox.x1, Math_Deg_To_Rad(-46.97), 0.001);
  EXPECT_NEAR(made->geographicBox.y1, Math_Deg_To_Rad(-24.41), 0.001);
  reopen();
  ASSERT_NE(project, nullptr);
  EXPECT_TRUE(*project->projection() == *utm());
  EXPECT_GT(project->projection()->identifier(), 0);
  ASSERT_EQ(dataBase->layers(*project).Size(), 1);
  InfoLayer* found = dataBase->findLayer(*project, "Quadras");
  ASSERT_NE(found, nullptr);
  EXPECT_TRUE(found->box == box);
  EXPECT_EQ(found->scale, 25000.0f);
  EXPECT_EQ(found->associationTable(), table);
  EXPECT_EQ(found->model(), CADASTRALMODEL);
  EXPECT_EQ(found->GetCategoryName(), "Categoria 64");
  EXPECT_EQ(found->category(), dataBase->categoryList().Select(QStringLiteral("Categoria 64")));
  EXPECT_EQ(found->directory, folder() + "/base.files");
}

TEST_F(CatalogTest, ARolledBackLayerLeavesTheListAndStaysUsable) {
  dataBase->commit();
  InfoLayer* fallen = nullptr;
  {
    DBTransactionBlock block(dataBase.get());
    Project* other = dataBase->createProject("Outro", *latLong());
    fallen = layer(CADASTRALMODEL, "Some", Box(-50, -30, -40, -20), other);
    ASSERT_NE(fallen->vector(vectorLines, true), nullptr);
    insertLine(*fallen->vector(vectorLines), {-45, -25, -44, -24});
    fallen->makeText();
  }
  EXPECT_EQ(dataBase->findProject("Outro"), nullptr);
  EXPECT_EQ(dataBase->projects().Size(), 1);
  EXPECT_EQ(fallen->name, "Some");
  EXPECT_EQ(fallen->project()->name, "Outro");
  EXPECT_EQ(fallen->vector(vectorLines), nullptr);
  EXPECT_TRUE(dataBase->check().isEmpty());
}

TEST_F(CatalogTest, VectorsLiveWithTheirLayer) {
  InfoLayer* plan = layer(THEMATICMODEL, "Plano");
  EXPECT_EQ(plan->vector(vectorLines), nullptr);
  Vector* lines = plan->vector(vectorLines, true);
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(plan->vector(vectorLines), lines);
  EXPECT_EQ(lines->infoLayer(), plan);
  EXPECT_EQ(lines->modelKind(), THEMATICMODEL);
  EXPECT_TRUE(lines->BoundingBox() == plan->box);
  insertLine(*lines, {1, 1, 2, 2}, linePlain, 7);
  EXPECT_TRUE(dataBase->classInLayer(*plan, 7));
  EXPECT_FALSE(dataBase->classInLayer(*plan, 8));
  Point2d point(5, 5);
  point.classId = 8;
  lines->Insert(point);
  EXPECT_TRUE(dataBase->classInLayer(*plan, 8));
  EXPECT_FALSE(dataBase->classInLayer(*layer(THEMATICMODEL, "Outro"), 7));
  reopen();
  plan = dataBase->findLayer(*project, "Plano");
  ASSERT_NE(plan->vector(vectorLines), nullptr);
  EXPECT_EQ(plan->vector(vectorLines)->lineCount(), 1);
  EXPECT_EQ(plan->vector(vectorSamples), nullptr);
}

TEST_F(CatalogTest, SystemsWhoseNumbersAlmostAgreeStayApart) {
  // SIRGAS2000 has the ellipsoid GRS80, which is WGS84 but for the eleventh digit of the flattening.
  const QStringList codes = {"EPSG:32723", "EPSG:31983"};
  for (const QString& code : codes)
    ASSERT_NE(dataBase->createProject(code, *projectionFromText(code, nullptr)), nullptr);
  dataBase->commit();
  reopen();
  for (const QString& code : codes) {
    const Project* const stored = dataBase->findProject(code);
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ("EPSG:" + QString::number(projectionEpsgCode(*stored->projection())), code);
  }
}

TEST_F(CatalogTest, EqualProjectionsAreStoredOnce) {
  ProjectionParameters parameters = utm()->toParameters();
  SProjection* stored = dataBase->findOrMakeProjection(parameters);
  EXPECT_EQ(stored->identifier(), project->projection()->identifier());
  parameters.name = "Outro nome";
  EXPECT_EQ(dataBase->findOrMakeProjection(parameters), stored);
  parameters.centralMeridian += 0.1;
  SProjection* other = dataBase->findOrMakeProjection(parameters);
  EXPECT_NE(other, stored);
  const int id = other->identifier();
  reopen();
  EXPECT_EQ(dataBase->findOrMakeProjection(parameters)->identifier(), id);
  dataBase->commit();
  SProjection* fallen = nullptr;
  {
    DBTransactionBlock block(dataBase.get());
    parameters.centralMeridian += 0.1;
    fallen = dataBase->findOrMakeProjection(parameters);
  }
  EXPECT_EQ(fallen->name(), "Outro nome");
  EXPECT_NE(dataBase->findOrMakeProjection(parameters), fallen);
}

TEST(ModelNameTest, NamesTheModelsAndNothingElse) {
  EXPECT_EQ(modelName(1), "IMAGEMODEL");
  EXPECT_EQ(modelName(16), "NOTSPACIALMODEL");
  EXPECT_EQ(modelName(128), "OBJECTMODEL");
  EXPECT_EQ(modelName(3), "undefined MODEL");
}

}  // namespace
