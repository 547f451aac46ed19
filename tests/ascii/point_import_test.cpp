#include "ascii/ascii_fixture.h"
#include "kaldex/model/recordset.h"

namespace kaldex::test {

namespace {

class AsciiPoints : public AsciiFixture {
 protected:
  AsciiPoints() {
    messages.answer(kOldForm, true);
    messages.answer(kAddAll, true);
    messages.answer(kNoClasses, true);
    messages.answer(kNoCategory, true);
  }
  int import(InfoLayer* into, const QByteArray& content) {
    write("file.txt", content);
    return handler(into)->ImportPoint2d(into->vector(vectorLines, true), project->projection());
  }
  InfoLayer* thematic(const QString& name, const QStringList& classNames) {
    Category* const made = category(THEMATICMODEL, "T" + name);
    for (const QString& one : classNames) addClass(*made, one);
    EXPECT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    LayerDefinition definition;
    definition.name = name;
    definition.category = made;
    definition.box = {0, 0, 1e7, 1e8};
    return dataBase->createLayer(*project, definition);
  }
  /// "x class" of each point.
  static QStringList pointsOf(InfoLayer* of) {
    QStringList list;
    Vector& vector = *of->vector(vectorLines);
    for (Point2d* point = vector.FirstPoint2d(); point != nullptr; point = vector.NextPoint2d()) {
      const GeoClass* const one = of->category()->classes.SelectFromIndex(point->classId);
      list << QString("%1 %2").arg(point->x).arg(one != nullptr ? one->name : "-");
    }
    return list;
  }
};

TEST_F(AsciiPoints, ClassesInBothForms) {
  const struct {
    QByteArray content;
    QString shown;
    QStringList points;
  } cases[] = {
      {"POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;2;Mata\n3 ; 4 ; mata\n5;6;Nenhuma\n7;8;NENHUMA\n9;9;\nEND\n",
       kAddAll + "mata\n" + classesText(1, 1) + "\n" + boundText(3, 2),
       {"1 Mata", "3 mata", "5 -", "7 -", "9 mata"}},
      {"POINT2D\n1 2\nCLASS_NAME \"Mata\"\n3 4\n5 6\nCLASS Nova\n7 8\nNAME\n9 9\nEND",
       kOldForm + "\n" + kAddAll + "Nova\n" + classesText(1, 1) + "\n" + boundText(4, 1),
       {"1 -", "3 Mata", "5 Mata", "7 Nova", "9 Nova"}},
      // A comma between digits is a decimal one where it doesn't part fields.
      {"POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1,5;2;Mata\n-1;2;Mata\nEND", boundText(1, 0), {"1.5 Mata"}},
      {"POINT2D\nINFO\nSEPARATOR ,\nINFO_END\n1,5,Mata\nEND", boundText(1, 0), {"1 Mata"}},
      {QByteArray("POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;2;") + QByteArray(31, 'a') + "\xE9" + "b\nEND",
       kAddAll + QString(31, 'a') + "é\n" + classesText(1, 1) + "\n" + boundText(1, 0),
       {"1 " + QString(31, 'a') + "é"}},
      {"POINT2D\nEND\n", boundText(0, 0), {}},
  };
  int number = 0;
  for (const auto& one : cases) {
    InfoLayer* const into = thematic(QString("P%1").arg(++number), {"Outra", "Mata"});
    EXPECT_EQ(import(into, one.content), 1) << one.content.constData();
    EXPECT_EQ(messages.take(), one.shown) << one.content.constData();
    EXPECT_EQ(pointsOf(into), one.points) << one.content.constData();
  }
}

TEST_F(AsciiPoints, AnswersNo) {
  messages.forget();
  messages.answer(kAddAll, false);
  messages.answer(kNoClasses, false);
  messages.answer(kOldForm, false);
  InfoLayer* const into = thematic("P", {"Mata"});
  const QByteArray head = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n";
  EXPECT_EQ(import(into, head + "1;1;x\n2;2;y\n3;3;x\n4;4;Mata\nEND"), 1);
  EXPECT_EQ(messages.take(), kAddAll + "x\n" + classesText(3, 0) + "\n" + boundText(1, 3));
  EXPECT_EQ(into->category()->classes.Size(), 1);
  EXPECT_EQ(import(thematic("Q", {}), head + "1;1;x\nEND"), 0);
  EXPECT_EQ(messages.take(), kNoClasses);
  EXPECT_EQ(import(into, "POINT2D\n1 2\nEND"), 0);
  EXPECT_EQ(messages.take(), kOldForm);
}

TEST_F(AsciiPoints, ColoursOfTheHeader) {
  InfoLayer* const into = thematic("P", {"Mata"});
  EXPECT_EQ(import(into,
                   "POINT2D\nINFO\nSEPARATOR ;\nTHEMACLASS\n1 2 3 Mata\n4 5 6 Nova\nINFO_END\n"
                   "1;1;Nova\nEND"),
            1);
  messages.take();
  EXPECT_TRUE(into->category()->classes.findByName("Mata")->visual.point.color == Color(1, 2, 3));
  EXPECT_TRUE(into->category()->classes.findByName("Nova")->visual.point.color == Color(4, 5, 6));
  EXPECT_EQ(pointsOf(into), QStringList("1 Nova"));
}

TEST_F(AsciiPoints, FailuresLeaveNothing) {
  const QByteArray head = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;1;Nova\n";
  const std::pair<QByteArray, QString> cases[] = {
      {"1;x;Mata\nEND", kBad + "1;x;Mata"},
      {"1;;Mata\nEND", kBad + "1;;Mata"},
      {"1 2\nEND", kBad + "1 2"},
      {"1;2;Mata", "Arquivo INCONSISTENTE! FEOF"},
      {"1;2;Mata\n", kBad + "END ???"},
      {"LABEL\n", kBad + "LABEL"},
      {"CATEGORY_OBJ \"\"\n", kBad + "CATEGORY_OBJ \"\""},
      {"CLASS x", kBad + "FEOF\n" + kBad + "CLASS x"},
      {"LABELS x\n", kBad + "LABELS"},
      {"o 45 30 10;s 99 10 5;Mata\nEND", kBad + "o 45 30 10;s 99 10 5;Mata"},
      {"o;s;Mata\nEND", kBad + "o;s;Mata"},
  };
  InfoLayer* const into = thematic("P", {"Mata"});
  for (const auto& [rest, shown] : cases) {
    EXPECT_EQ(import(into, head + rest), 0) << rest.constData();
    EXPECT_EQ(messages.take(), kAddAll + "Nova\n" + shown) << rest.constData();
    EXPECT_EQ(into->vector(vectorLines)->point2dCount(), 0) << rest.constData();
    EXPECT_EQ(into->category()->classes.Size(), 1) << rest.constData();
  }
}

TEST_F(AsciiPoints, GeographicRecords) {
  InfoLayer* const into = thematic("P", {"Mata"});
  EXPECT_EQ(import(into,
                   "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\no 45 30 10 ; s 23 10 5 ; Mata\n"
                   "S 23 10 5;W 45 30 10;Mata\nEND"),
            1);
  EXPECT_EQ(messages.take(), boundText(2, 0));
  Vector& vector = *into->vector(vectorLines);
  const Point first = *vector.FirstPoint2d();
  EXPECT_TRUE(first == *vector.NextPoint2d());
  EXPECT_EQ(import(into, "POINT2D\nCLASS Mata\no 45 30 10 s 23 10 5\nEND"), 1);
  EXPECT_EQ(messages.take(), kOldForm + "\n" + boundText(1, 0));
}

TEST_F(AsciiPoints, PlacesOfObjects) {
  InfoLayer* const into = layer(CADASTRALMODEL, "Rede");
  const QByteArray head = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n";
  EXPECT_EQ(
      import(into, head + "1;1;p1;Poste 1;Postes\n2;2;p1;Poste 1;Postes\n1;1;p1;;\n1;1;p2\n3;3;Nenhuma\n"
                          "-5;1;fora;;\nEND"),
      1);
  EXPECT_EQ(messages.take(), kNoCategory + "Postes\n" + boundText(3, 1, 1));
  Vector& vector = *into->vector(vectorLines);
  EXPECT_EQ(vector.point2dCount(), 3);
  Category* const posts = dataBase->categoryList().Select("Postes");
  ASSERT_NE(posts, nullptr);
  EXPECT_EQ(posts->model, OBJECTMODEL);
  KaldexObject first, second, outside;
  ASSERT_NE(dataBase->findObjectByLabel("p1", *posts, first), 0);
  ASSERT_NE(dataBase->findObjectByLabel("p2", *posts, second), 0);
  ASSERT_NE(dataBase->findObjectByLabel("fora", *posts, outside), 0);
  EXPECT_EQ(first.name, "Poste 1");
  EXPECT_EQ(second.name, "p2");
  EXPECT_EQ(dataBase->anchorOfObject(outside.id, *into), 0);
  const std::unique_ptr<Anchor> anchor(vector.GetAnchor(dataBase->anchorOfObject(first.id, *into)));
  ASSERT_NE(anchor, nullptr);
  EXPECT_EQ(anchor->points.size(), 2u);

  // A second file adds to the anchors that are there.
  EXPECT_EQ(
      import(into,
             "POINT2D\nCATEGORY_OBJ Postes\nLABEL p1\n7 7\n8 8\n2 2\nLABEL p9\nNAME \"Novo\"\n9 9\nEND"),
      1);
  EXPECT_EQ(messages.take(), kOldForm + "\n" + boundText(3, 0, 1));
  const std::unique_ptr<Anchor> grown(vector.GetAnchor(anchor->id));
  EXPECT_EQ(grown->points.size(), 4u);
  EXPECT_EQ(vector.anchorCount(), 3);
  EXPECT_EQ(dataBase->selectRecords(into->associationTable(), "*", "", "", "")->columnCount(), 8);

  EXPECT_EQ(import(into, head + "1;1;p1\nEND"), 0);
  EXPECT_EQ(messages.take(), kBad + "CATEGORY_OBJ ???");
}

// Records that go back and forth between objects add to the same anchors.
TEST_F(AsciiPoints, ObjectsByTurns) {
  InfoLayer* const into = layer(CADASTRALMODEL, "Rede");
  QByteArray content = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n";
  for (int i = 0; i < 60; ++i) {
    content += QString("%1;1;p%2;;%3\n").arg(i).arg(i % 3).arg(i % 2 == 0 ? "Postes" : "Caixas").toLatin1();
  }
  for (const int associated : {60, 0}) {
    EXPECT_EQ(import(into, content + "END"), 1);
    EXPECT_TRUE(messages.take().endsWith(boundText(associated, 0, 60 - associated)));
  }
  Vector& vector = *into->vector(vectorLines);
  EXPECT_EQ(vector.anchorCount(), 6);
  for (const char* name : {"Postes", "Caixas"}) {
    KaldexObject object;
    ASSERT_NE(dataBase->findObjectByLabel("p1", *dataBase->categoryList().Select(name), object), 0);
    const std::unique_ptr<Anchor> anchor(vector.GetAnchor(dataBase->anchorOfObject(object.id, *into)));
    ASSERT_NE(anchor, nullptr);
    EXPECT_EQ(anchor->points.size(), 10u);
  }
}

TEST_F(AsciiPoints, PlacesThatAreNone) {
  InfoLayer* const into = thematic("P", {"Mata"});
  EXPECT_EQ(import(into, "POINT2D\n1 1e999\nEND"), 0);
  EXPECT_EQ(messages.take(), kOldForm + "\n" + kBad + "1 1e999");
  project = dataBase->createProject("Graus", *latLong());
  InfoLayer* const degrees = layer(CADASTRALMODEL, "G", {-180, -90, 180, 90}, project);
  EXPECT_EQ(import(degrees, "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\nN 0 0 0;E 0 0 0;a;;X\nEND"), 0);
  EXPECT_EQ(messages.take(), kBad + "N 0 0 0;E 0 0 0;a;;X");
}

TEST_F(AsciiPoints, OnlyItsSection) {
  InfoLayer* const into = thematic("P", {"Mata"});
  EXPECT_EQ(import(into, "POINTS\n1 2\nEND"), 0);
  EXPECT_EQ(handler(into)->ImportPoint2d(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : vec");
  write("file.txt", "a\n POINT2D x\nPOINT3D");
  EXPECT_TRUE(handler(into)->AscEntitie("POINT2D"));
  EXPECT_TRUE(handler(into)->AscEntitie("POINT"));
  EXPECT_FALSE(handler(into)->AscEntitie("x"));
}

}  // namespace

}  // namespace kaldex::test
