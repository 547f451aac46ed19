#include <functional>
#include <map>

#include "ascii/ascii_fixture.h"
#include "kaldex/model/recordset.h"
#include "kaldex/model/text.h"

namespace kaldex::test {

namespace {

enum class Section {
  lines,
  contours,
  samples,
  classPoints,
  objectPoints,
  classLabels,
  objectLabels,
  table,
  texts,
  turns
};
enum Answer : bool { no, yes };

struct Case {
  Section section;
  QByteArray content;
  Answer answer;  ///< to every question
  int result;
  QString shown;
  QString stays;  ///< what the database has more than before
};

/// Whose transaction an import runs in.
enum class Caller { none, keeps, drops };

class WrongInput : public AsciiFixture {
 protected:
  using Counts = std::map<QString, int>;

  /// A new database with a layer for the section, a class "Mata", and a category "Lotes" with a column P and
  /// an object L0, whose P is 7.
  void make(Section section) {
    layer_ = nullptr;
    dataBase = DataBase::Create(path(QString("b%1.gpkg").arg(++bases_)));
    project = dataBase->createProject("Projeto", *utm());
    layer_ = layer(modelOf(section), "Plano", {0, 0, 1e6, 1e8});
    Category& its = *layer_->category();
    if (its.model == THEMATICMODEL) {
      addClass(its, "Mata");
      ASSERT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    }
    lots_ = category(OBJECTMODEL, "Lotes");
    ASSERT_EQ(dataBase->createAttributeTable(*lots_, fieldList({{"P", fieldInteger, 10, 0}})), 1);
    newObject(lots_, "L0", "L0", {"7"});
    vector_ = layer_->vector(section == Section::samples    ? vectorSamples
                             : section == Section::contours ? vectorContours
                                                            : vectorLines,
                             true);
    if (section == Section::texts) layer_->makeText();
    if (section == Section::objectLabels) {
      for (const double x : {100.0, 300.0}) {
        delete insertPolygon(*vector_, {x, 100, x + 100, 100, x + 100, 200, x, 200, x, 100});
      }
    }
    dataBase->commit();
  }
  static short modelOf(Section section) {
    if (section == Section::turns) return NETWORKMODEL;
    if (section == Section::contours || section == Section::samples) return DIGITALMODEL;
    const bool ofObjects = section == Section::objectPoints || section == Section::objectLabels;
    return ofObjects ? CADASTRALMODEL : THEMATICMODEL;
  }

  int import(Section section) {
    SProjection* const target = project->projection();
    const auto in = handler(layer_);
    const std::map<Section, std::function<int()>> imports = {
        {Section::lines, [&] { return in->ImportLines(vector_, target); }},
        {Section::contours, [&] { return in->ImportContourout(vector_, target); }},
        {Section::samples, [&] { return in->ImportSamples(vector_, target); }},
        {Section::classPoints, [&] { return in->ImportPoint2d(vector_, target); }},
        {Section::objectPoints, [&] { return in->ImportPoint2d(vector_, target); }},
        {Section::classLabels, [&] { return importLabels(*in); }},
        {Section::objectLabels, [&] { return importLabels(*in) == 1 ? in->ClassifyObj(vector_) : 0; }},
        {Section::table, [&] { return in->ImportAttributes(lots_); }},
        {Section::turns, [&] { return in->ImportTurns(vector_); }},
    };
    if (section != Section::texts) return imports.at(section)();
    EntitieList texts;
    if (in->ImportText(&texts, target, nullptr) == 0 || layer_->makeText()->store(texts) == 0) return 0;
    dataBase->commit();  // an import only reads them
    return 1;
  }

  Counts counts() {
    Counts all;
    all["lines"] = static_cast<int>(vector_->lineCount());
    all["points"] = static_cast<int>(vector_->point2dCount());
    all["samples"] = static_cast<int>(vector_->point3dCount());
    all["anchors"] = static_cast<int>(vector_->anchorCount());
    all["classes"] = layer_->category()->classes.Size();
    all["categories"] = dataBase->categoryList().Size();
    Text* texts = nullptr;
    if (layer_->Get(texts) != 0) all["texts"] = static_cast<int>(texts->count());
    SFieldList columns;
    all["columns"] = dataBase->loadTableFields(columns, lots_->attributeTable);
    for (const KaldexObject& object : objectsOf(*lots_)) {
      ++all["objects"];
      all["values"] += valuesOf(*lots_, object).section('|', 0, 0).toInt();
    }
    all["turns"] =
        RestrictionList((layer_->directory + "/" + layer_->fileName + ".turn").toStdString()).Size();
    return all;
  }
  static QString difference(const Counts& before, Counts after) {
    QStringList list;
    for (const auto& [what, count] : before) after[what] -= count;
    for (const auto& [what, count] : after) {
      if (count != 0) list << QString("%1 %2").arg(what).arg(count);
    }
    return list.join(", ");
  }

  void check(const Case& one, Caller caller) {
    ASSERT_NO_FATAL_FAILURE(make(one.section));
    write("file.txt", one.content);
    messages.forget();
    messages.answer(QString(), one.answer == yes);
    const Counts before = counts();
    {
      DBTransactionBlock block(caller == Caller::none ? nullptr : dataBase.get());
      if (caller != Caller::none) newObject(lots_, "caller", "caller", {"0"});
      EXPECT_EQ(import(one.section), one.result);
      EXPECT_EQ(messages.take(), one.shown);
      if (caller == Caller::keeps) block.enableCommit();
    }
    // What hasn't been stored goes.
    dataBase->rollback();
    const QString callers = difference({}, {{"objects", caller == Caller::keeps ? 1 : 0}});
    Counts after = counts();
    if (!callers.isEmpty()) --after["objects"];
    // Turns are kept in a file of their own, beyond any transaction.
    EXPECT_EQ(difference(before, after), caller == Caller::drops ? QString() : one.stays);
  }
  template <std::size_t N>
  void checkAll(const Case (&cases)[N]) {
    for (const Case& one : cases) {
      for (const Caller caller : {Caller::none, Caller::keeps, Caller::drops}) {
        SCOPED_TRACE(one.content.toStdString() + "\n# " + (one.answer == yes ? "yes" : "no") + ", caller " +
                     std::to_string(static_cast<int>(caller)));
        check(one, caller);
      }
    }
  }

  InfoLayer* layer_ = nullptr;
  Category* lots_ = nullptr;
  Vector* vector_ = nullptr;
  int bases_ = 0;
};

// What was read before the failure stays. All that can be wrong with a section stands in its own tests.
TEST_F(WrongInput, LinesAndSamples) {
  const QByteArray line = "1 1\n2 2\nEND\n";
  const QByteArray contour = "LINE3D\nHEIGHT 5\n1 1\n2 2\nEND\n";
  const Case cases[] = {
      {Section::lines, "LINES\n" + line, no, 0, kBad + "END ???", "lines 1"},
      {Section::lines, "LINES\n" + line + "S 99 0 0 O 45 0 0\nEND\nEND\n", no, 0, kBad + "S 99 0 0 O 45 0 0",
       "lines 1"},
      {Section::lines, "NETWORK\n" + line + "END\n", no, 0, "", ""},
      {Section::contours, "CONTOURLINES\n" + contour, no, 0, kBad + "END ???", "lines 1"},
      {Section::contours, "CONTOURLINES\n" + contour + "LINE3D\nHEIGHT x\nEND\nEND\n", no, 0, kBad + "x",
       "lines 1"},
      {Section::samples, "SAMPLE\nPOINT3D\n1 2 3\nEND\n" + contour, no, 0, kBad + "END ???",
       "lines 1, samples 1"},
      {Section::samples, "SAMPLE\nPOINT3D\n1 2 3\n1 2 alto\nEND\nEND\n", no, 0, kBad + "1 2 alto",
       "samples 1"},
      {Section::samples, "SAMPLE\nPOINT3D\n1;2;3\nEND\nEND\n", no, 0, kBad + "1;2;3", ""},
  };
  checkAll(cases);
}

// All or nothing, but for what the user has agreed to leave out.
TEST_F(WrongInput, PointsAndLabelsOfClasses) {
  const QByteArray points = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;1;Mata\n";
  const QByteArray labels = "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n1;1;Mata\n";
  const Section ofPoints = Section::classPoints;
  const Section ofLabels = Section::classLabels;
  const Case cases[] = {
      {ofPoints, points + "2;2;Nova\n", yes, 0, kAddAll + "Nova\n" + kBad + "END ???", ""},
      {ofPoints, points + "2;2;Nova\n3;3\nEND\n", yes, 1,
       kAddAll + "Nova\n" + classesText(1, 1) + "\n" + boundText(3, 0), "classes 1, points 3"},
      {ofPoints, points + "2;2;Nova\n3;3\nEND\n", no, 1,
       kAddAll + "Nova\n" + classesText(1, 0) + "\n" + boundText(1, 2), "points 3"},
      {ofPoints, points + "2,2,Mata\nEND\n", no, 0, kBad + "2.2,Mata", ""},
      {ofPoints, "POINT2D\nINFO\nTHEMACLASS\n1 2 Nova\nINFO_END\n1 1\nEND\n", yes, 0, kBad + "1 2 Nova", ""},
      {ofLabels, labels + "2;2;Nova\n", yes, 0, kAddAll + "Nova\n" + kBad + "END ???", ""},
      {ofLabels, labels + "2;2;Nova\nEND\n", yes, 1, kAddAll + "Nova\n" + classesText(1, 1), "classes 1"},
      {ofLabels, labels + "2;2;Nova\nEND\n", no, 1, kAddAll + "Nova\n" + classesText(1, 0), ""},
      {ofLabels, "POINTS\nCLASS_NAME \"\"\n1 1\nEND\n", no, 0, kBad + "CLASS_NAME \"\"", ""},
      {ofLabels, labels + "2,2,Mata\nEND\n", no, 0, kBad + "2.2,Mata", ""},
      {ofLabels, "POINTS\nINFO\nTHEMACLASS\n1 2 3 4 5 6 Nova\n1 2 Outra\nINFO_END\nEND\n", yes, 0,
       kAddAll + "1 2 3 4 5 6 Nova\n" + kBad + "1 2 Outra", ""},
  };
  checkAll(cases);
}

TEST_F(WrongInput, PointsAndLabelsOfObjects) {
  const QByteArray points = "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;1;P1;;Lotes\n";
  const QByteArray labels = "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n150;150;P1;;Lotes\n";
  const Section ofPoints = Section::objectPoints;
  const Section ofLabels = Section::objectLabels;
  const Case cases[] = {
      {ofPoints, points, no, 0, kBad + "END ???", ""},
      // Asked once, whatever the number of its records.
      {ofPoints, points + "2;2;P2;;Outra\n3;3;P3;;Outra\nEND\n", no, 1,
       kNoCategory + "Outra\n" + boundText(1, 0), "anchors 1, objects 1, points 3"},
      {ofPoints, points + "2;2;P2;;Outra\nEND\n", yes, 1, kNoCategory + "Outra\n" + boundText(2, 0),
       "anchors 2, categories 1, objects 1, points 2"},
      {ofPoints, points + "2;2;P2;;Outra\nx\n", yes, 0, kNoCategory + "Outra\n" + kBad + "x", ""},
      {ofPoints, "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;1;P1\nEND\n", no, 0, kBad + "CATEGORY_OBJ ???", ""},
      {ofLabels, labels, no, 0, kBad + "END ???", ""},
      {ofLabels, labels + "350;150;P2;;Outra\nEND\n", yes, 1, kNoCategory + "Outra\n" + boundText(2, 0),
       "anchors 2, categories 1, objects 1"},
      // What was bound before the user's No stays, unless a transaction of the caller's takes it back.
      {ofLabels, labels + "350;150;P2;;Outra\nEND\n", no, 0, kNoCategory + "Outra", "anchors 1, objects 1"},
      {ofLabels, "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n150;150;;;Lotes\nEND\n", no, 0, kBad + "OBJ.LABEL ???",
       ""},
  };
  checkAll(cases);
}

TEST_F(WrongInput, Tables) {
  const QByteArray head = "TABLE\nINFO\nSEPARATOR ;\nCATEGORY_OBJ Lotes\nT_KEY;TEXT;32;0\nT_NAME;TEXT;32;0\n";
  const QByteArray table = head + "P;INTEGER;10;0\nINFO_END\nL1;Um;1\nL0;L0;9\n";
  const Section of = Section::table;
  const Case cases[] = {
      {of, table + "END\n", no, 1, "", "objects 1, values 3"},
      {of, table + "L2;;5\nEND\n", no, 0, kSkip + "T_NAME", ""},
      {of, table + "L0;;5\nEND\n", yes, 1, kSkip + "T_NAME", "objects 1, values -1"},
      {of, head + "Q;TEXT;5\nP;INTEGER\nINFO_END\nL0;L0;a;9\nEND\n", no, 0,
       "Não existe esse atributo na tabela!Q;TEXT;5\n" + kSkip + "Q;TEXT;5", ""},
      {of, head + "Q;TEXT;5\nP;INTEGER\nINFO_END\nL0;L0;a;9\nEND\n", yes, 1,
       "Não existe esse atributo na tabela!Q;TEXT;5\n" + kSkip + "Q;TEXT;5", "values 2"},
      {of, table + "L2;Dois;x\nEND\n", yes, 1, kSkip + "T_KEY = L2  P = x --> não é um número inteiro",
       "objects 2, values 3"},
      // Of a number that is too long the last digits count.
      {of, table + "L2;Dois;9000000005\nEND\n", no, 1, "", "objects 2, values 8"},
      {of, table + "L2;Dois\nEND\n", yes, 0, kBad + "L2;Dois", ""},
  };
  checkAll(cases);
}

// Nothing of a file that fails; single lines that are no texts, and turns between lines that aren't there,
// are left out.
TEST_F(WrongInput, TextsAndTurns) {
  const QByteArray angles = "O 45 0 0 S 23 0 0 O 45 0 1 S 23 0 0 O 45 0 2 S ";
  const Case cases[] = {
      {Section::texts, "TEXT\n1;2;a\n1,2,a\n3;4; \nx;1;a\nEND\n", no, 1, "Formato inválido!3 linhas",
       "texts 1"},
      {Section::texts, "TEXT\nINFO\nSEPARATOR\nINFO_END\nEND\n", no, 0, kBad + "SEPARATOR", ""},
      {Section::turns, "TURNS\nINFO\nINFO_END\n" + angles + "99 0 0\nEND_TURNS\n", no, 0,
       "Falha na leitura do arquivo " + angles + "99 0 0.", ""},
      {Section::turns, "TURNS\nINFO\nINFO_END\n" + angles + "23 0 0\nEND_TURNS\n", no, 0, "", ""},
  };
  checkAll(cases);
}

}  // namespace

}  // namespace kaldex::test
