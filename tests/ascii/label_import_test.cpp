#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class LabelImport : public AsciiFixture {
 protected:
  int import(InfoLayer* into, const QByteArray& content, int units = 0, SProjection* from = nullptr) {
    write("file.txt", content);
    in_ = handler(into, 0, units, from);
    const int result = importLabels(*in_);
    EXPECT_EQ(in_->file, nullptr);
    return result;
  }

  /// The label points as "x y class label|name|category nodes", one each.
  QString labels() const {
    QStringList list;
    for (const SExtLabelPoint* label : in_->labelPoints) {
      list << QString("%1 %2 %3 %4|%5|%6 %7")
                  .arg(label->Coordinate()->x)
                  .arg(label->Coordinate()->y)
                  .arg(label->Iclass)
                  .arg(label->Label(), label->Name(), label->Nclass())
                  .arg(label->Nodes);
    }
    return list.join('\n');
  }

  std::unique_ptr<OpenAscii> in_;
};

struct Case {
  QByteArray content;
  int result;
  QString shown;
  QString labels;
};

TEST_F(LabelImport, RecordsOfObjects) {
  const QByteArray separated = "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n";
  const QByteArray head = "CATEGORY_OBJ \"Lotes\"\nLABEL \"L1\"\n";
  const QString longName(32, 'n');
  const Case cases[] = {
      // The old form: what keywords say holds on, but for the name.
      {"POINTS\n" + head + "NAME 'Um'\n1 2\n3 4 5\nEND", 1, kOldForm,
       "1 2 -999 L1|Um|Lotes 0\n3 4 -999 L1|L1|Lotes 0"},
      {"x y\nPOINTS_AND_MORE\nCLASS Lotes\nLABELS L2\n1 2\nENDE\n", 1, kOldForm, "1 2 -999 L2|L2|Lotes 0"},
      {"POINTS\n//x\n" + head + "LINES\n1 2\nEND\n", 1, kOldForm, "1 2 -999 L1|L1|Lotes 0"},
      {separated + "1 ; 2;L1;Um;Lotes\n1,5;2;L2;;Ruas;LINES\nEND", 1, "",
       "1 2 -999 L1|Um|Lotes 0\n1.5 2 -999 L2|L2|Ruas 0"},
      {separated + "1;2;L1;" + QByteArray(40, 'n') + ";Lotes;NODES\n3;4;L2;a;Lotes\nEND", 1, "",
       "1 2 -999 L1|" + longName + "|Lotes 1\n3 4 -999 L2|a|Lotes 1"},
      {separated + "S 23 10 0.00 ; O 45 52 0.00;L1;;Lotes\nEND\n", 1, "", "*"},
      {"POINTS\n" + head + "S 23 10 0.00   O 45 52 0.00\nEND\n", 1, kOldForm, "*"},
      {"NETWORK_OBJECTS\n1 2\nEND\n", 0, "", ""},
      {"POINTS\n", 0, kBad + "END ???", ""},
      {"POINTS\n" + head + "NODES\n1 2\nEND\n", 0, kBad + "NODES", ""},
      {"POINTS\n// a comment of words\nEND\n", 0, kBad + "a", ""},
      {"POINTS\nABC\n", 0, kBad + "ABC", ""},
      {"POINTS\nLABEL\n1 2\n", 0, kBad + "LABEL", ""},
      {"POINTS\nLABEL 'x", 0, kBad + "FEOF\n" + kBad + "LABEL 'x", ""},
      {"POINTS\nLABEL L1\n1 2\nEND\n", 0, kOldForm + "\n" + kBad + "CATEGORY_OBJ ???", ""},
      {"POINTS\nCATEGORY_OBJ L1\n1 2\nEND\n", 0, kOldForm + "\n" + kBad + "OBJ.LABEL ???", ""},
      {separated + "1;2;;a;Lotes\nEND\n", 0, kBad + "OBJ.LABEL ???", ""},
      {separated + "1;2;L1\nEND\n", 0, kBad + "CATEGORY_OBJ ???", ""},
      {separated + "1;x;L1;a;Lotes\nEND\n", 0, kBad + "1;x;L1;a;Lotes", ""},
      {separated + "S 23 10 0.00;45;L1;a;Lotes\nEND\n", 0, kBad + "S 23 10 0.00;45;L1;a;Lotes", ""},
      {separated + "S;O;L1;a;Lotes\nEND\n", 0, kBad + "S;O;L1;a;Lotes", ""},
      {"POINTS\n" + head + "1\nEND\n", 0, kOldForm + "\n" + kBad + "1", ""},
      {"POINTS\n" + head + "1 2", 0, kBad + " FEOF", ""},
      {"POINTS\nINFO\n", 0, kBadHeader + "INFO_END ???", ""},
  };
  messages.answer(kOldForm, true);
  InfoLayer* const into = layer(CADASTRALMODEL, "Plano");
  for (const Case& one : cases) {
    EXPECT_EQ(import(into, one.content), one.result) << one.content.left(80).toStdString();
    EXPECT_EQ(messages.take(), one.shown) << one.content.left(80).toStdString();
    if (one.labels == "*") {
      ASSERT_EQ(in_->labelPoints.Size(), 1);
      EXPECT_NEAR(in_->labelPoints.at(0)->Coordinate()->y, 7437500, 1000);
    } else {
      EXPECT_EQ(labels(), one.labels) << one.content.left(80).toStdString();
    }
  }
  messages.forget();
  messages.answer(kOldForm, false);
  EXPECT_EQ(import(into, "POINTS\n" + head + "1 2\nEND\n"), 0);
  EXPECT_EQ(labels(), "");
}

TEST_F(LabelImport, NodesOfANetworkAndUnits) {
  InfoLayer* const into = layer(NETWORKMODEL, "Rede");
  messages.answer(kOldForm, true);
  EXPECT_EQ(import(into, "NETWORK_OBJECTS\nCATEGORY_OBJ C\nLABEL L\nNODES\n1 2\nLINES\n3 4\nEND\n", 1), 1);
  EXPECT_EQ(labels(), "1000 2000 -999 L|L|C 1\n3000 4000 -999 L|L|C 0");
  EXPECT_EQ(in_->labelPoints.Count(), 2);
  const auto degrees = latLong("SAD69");
  EXPECT_EQ(import(into, "NETWORK_OBJECTS\nCATEGORY_OBJ C\nLABEL L\n-45 -23\nEND\n", 4, degrees.get()), 1);
  EXPECT_NEAR(in_->labelPoints.at(0)->Coordinate()->x, 500000, 1e-3);
  EXPECT_EQ(report.read["labels"], 3);
}

TEST_F(LabelImport, ClassesKnownMissingAndMade) {
  InfoLayer* const into = layer(THEMATICMODEL, "Plano");
  Category& thematic = *into->category();
  addClass(thematic, "Mata");
  dataBase->storeCategories(dataBase->categoryList());
  dataBase->commit();
  const QByteArray head = "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n";
  const QByteArray records = "1;2;Mata\n3;4\n5;6;Brejo\n7;8;Brejo\n9;9;Mata\n";

  EXPECT_EQ(import(into, head + "1;2;Mata\n3;4\n2;2;Mata\nEND\n"), 1);
  EXPECT_EQ(messages.take(), "") << "nothing is missing";
  EXPECT_EQ(labels(), "1 2 1 |Mata| 0\n3 4 1 |Mata| 0\n2 2 1 |Mata| 0");

  messages.answer(kAddAll, false);
  EXPECT_EQ(import(into, head + records + "END\n"), 1);
  EXPECT_EQ(messages.take(), kAddAll + "Brejo\n" + classesText(2, 0));
  EXPECT_EQ(labels(), "1 2 1 |Mata| 0\n3 4 1 |Mata| 0\n5 6 0 |Brejo| 0\n7 8 0 |Brejo| 0\n9 9 1 |Mata| 0");
  EXPECT_EQ(thematic.classes.Size(), 1);

  // A failure behind the new class takes it back.
  messages.forget();
  messages.answer(kAddAll, true);
  EXPECT_EQ(import(into, head + records + "x\n"), 0);
  EXPECT_EQ(messages.take(), kAddAll + "Brejo\n" + kBad + "x");
  EXPECT_EQ(thematic.classes.Size(), 1);

  EXPECT_EQ(import(into, head + records + "5;5;Campo\nEND\n"), 1);
  EXPECT_EQ(messages.take(), kAddAll + "Brejo\n" + classesText(2, 2));
  ASSERT_EQ(thematic.classes.Size(), 3);
  EXPECT_EQ(thematic.classes.at(2)->name, "Campo");
  EXPECT_EQ(in_->labelPoints.at(3)->Iclass, thematic.classes.at(1)->id);
  dataBase->rollback();
  EXPECT_EQ(thematic.classes.Size(), 3) << "stored";

  EXPECT_EQ(import(into, head + "1;2\nEND\n"), 0);
  EXPECT_EQ(messages.take(), kBad + "CLASS_NAME ???");
  messages.answer(kOldForm, true);
  EXPECT_EQ(import(into, "POINTS\nCLASS_NAME \"Campo\"\n1 2\n3 4\nEND\n"), 1);
  EXPECT_EQ(messages.take(), kOldForm);
  EXPECT_EQ(in_->labelPoints.at(1)->Iclass, thematic.classes.at(2)->id);
}

// Class numbers have 16 bits: what can't have one is refused, not stored as a class that is none.
TEST_F(LabelImport, MoreClassesThanThereAreNumbers) {
  InfoLayer* const into = layer(THEMATICMODEL, "Plano");
  constexpr int most = 32767;
  into->category()->lastClassId = most - 1;
  for (int i = 2; i < most; ++i) {
    into->category()->classes.Append(new GeoClass(i, "x", THEMATICMODEL, "", i, nullptr));
  }
  messages.answer(kAddAll, true);
  messages.answer("Categoria sem classes", true);
  const QByteArray head = "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n";
  const QString refused = kAddAll + "A\n" + QString::fromUtf8("Problemas na atualização de Categorias!");
  EXPECT_EQ(import(into, head + "1;1;A\n2;2;B\n3;3;C\nEND\n"), 0);
  EXPECT_EQ(messages.take(), refused);
  EXPECT_EQ(into->category()->classes.findByName("C"), nullptr);
}

TEST_F(LabelImport, ClassesOfTheHeader) {
  InfoLayer* const into = layer(THEMATICMODEL, "Plano");
  messages.answer("Categoria sem classes", true);
  EXPECT_EQ(
      import(into, "POINTS\nINFO\nSEPARATOR ;\nTHEMACLASS\n1 2 3 4 5 6 Mata\nINFO_END\n1;2;Mata\nEND\n"), 1);
  const GeoClass& mata = *into->category()->classes.at(0);
  EXPECT_EQ(mata.visual.polygon.color, Color(1, 2, 3));
  EXPECT_EQ(mata.visual.line.color, Color(4, 5, 6));
  EXPECT_EQ(in_->labelPoints.at(0)->Iclass, mata.id);
}

}  // namespace

}  // namespace kaldex::test
