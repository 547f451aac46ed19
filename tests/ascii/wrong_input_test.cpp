#include <map>

#include "ascii/ascii_fixture.h"
#include "kaldex/model/recordset.h"
#include "kaldex/model/text.h"

namespace kaldex::test {

namespace {

const QString kBad = "Arquivo INCONSISTENTE!";
const QString kTorn = "Arquivo INCONSISTENTE! FEOF";
const QString kBadHeader = "Arquivo INCONSISTENTE. Falta de informação ou erro nos parâmetros da seção INFO!";
const QString kSkip = "Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?";
const QString kAddAll = "Classe não encontrada. Adiciona TODAS as classes não encontradas ?";
const QString kNoCategory = "Categoria objeto inexistente Cria e continua ?";
const QString kOldForm = "Dados de entrada no formato antigo (sem SEPARATOR). Continua ?";

QString bound(int associated, int not_) {
  return QString("Sumário:Classes/Objetos: associados=%1, não associados=%2, já estavam associados=0")
      .arg(associated)
      .arg(not_);
}
QString made(int missing, int added) {
  return QString("Sumário:Classes não encontradas=%1 e classes adicionadas=%2 e visual alterados=0 ")
      .arg(missing)
      .arg(added);
}

enum class Section {
  lines,
  network,
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
      its.classes.Append(new GeoClass(-1, "Mata", THEMATICMODEL, its.name, 1, &its));
      ASSERT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    }
    lots_ = category(OBJECTMODEL, "Lotes");
    SFieldList columns;
    columns.Append(new SField("P", fieldInteger, 10, 0, 1, lots_->attributeTable));
    ASSERT_EQ(dataBase->createAttributeTable(*lots_, columns), 1);
    makeObject("L0", "7");
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
    switch (section) {
      case Section::network:
      case Section::turns:
        return NETWORKMODEL;
      case Section::contours:
      case Section::samples:
        return DIGITALMODEL;
      case Section::objectPoints:
      case Section::objectLabels:
        return CADASTRALMODEL;
      default:
        return THEMATICMODEL;
    }
  }
  void makeObject(const QString& label, const char* value) {
    KaldexObject object;
    ASSERT_NE(dataBase->createObject({lots_, label, label, STime()}, object), 0);
    SFieldList columns;
    SCellList cells;
    dataBase->loadTableFields(columns, lots_->attributeTable);
    dataBase->readObjectAttributes(columns, cells, lots_->attributeTable, object.id);
    cells.at(1)->ChangeCell(value);
    ASSERT_NE(dataBase->writeObjectAttributes(columns, cells, lots_->attributeTable, object.id), 0);
  }

  int import(Section section) {
    SProjection* const target = project->projection();
    const auto in = handler(layer_);
    switch (section) {
      case Section::lines:
      case Section::network:
        return in->ImportLines(vector_, target);
      case Section::contours:
        return in->ImportContourout(vector_, target);
      case Section::samples:
        return in->ImportSamples(vector_, target);
      case Section::classPoints:
      case Section::objectPoints:
        return in->ImportPoint2d(vector_, target);
      case Section::classLabels:
        return importLabels(*in);
      case Section::objectLabels:
        return importLabels(*in) == 1 ? in->ClassifyObj(vector_) : 0;
      case Section::table:
        return in->ImportAttributes(lots_);
      case Section::texts: {
        EntitieList texts;
        if (in->ImportText(&texts, target, nullptr) == 0 || layer_->makeText()->store(texts) == 0) return 0;
        dataBase->commit();  // an import only reads them
        return 1;
      }
      case Section::turns:
        return in->ImportTurns(vector_);
    }
    return -1;
  }
  int importLabels(IEAsc& in) {
    return in.ImportLabelPoints(project->projection(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr);
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
    KaldexObject object;
    SCellList cells;
    for (int walk = dataBase->firstObject(*lots_, object); walk == objectFound;
         walk = dataBase->nextObject(*lots_, object)) {
      ++all["objects"];
      dataBase->readObjectAttributes(columns, cells, lots_->attributeTable, object.id);
      all["values"] += cells.at(1)->value().toInt();
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
      if (caller != Caller::none) makeObject("caller", "0");
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

// What was read before the failure stays.
TEST_F(WrongInput, LinesAndSamples) {
  const QByteArray line = "1 1\n2 2\nEND\n";
  const QByteArray contour = "LINE3D\nHEIGHT 5\n1 1\n2 2\nEND\n";
  const Case cases[] = {
      {Section::lines, "LINES\n" + line, no, 0, kBad + "END ???", "lines 1"},
      {Section::lines, "LINES\n" + line + "3 3\n4 4\n", no, 0, kTorn, "lines 1"},
      {Section::lines, "LINES\n" + line + "3 3 3\n4 4\nEND\nEND\n", no, 0, kBad + "3 3 3", "lines 1"},
      {Section::lines, "LINES\n" + line + "3,5 3\n4 4\nEND\nEND\n", no, 0, kBad + "3,5 3", "lines 1"},
      {Section::lines, "LINES\n" + line + "S 99 0 0 O 45 0 0\nEND\nEND\n", no, 0, kBad + "S 99 0 0 O 45 0 0",
       "lines 1"},
      {Section::lines, "LINES\nINFO\nSEPARATOR ;;\nINFO_END\n" + line + "END\n", no, 0, kBad + "SEPARATOR ;;",
       ""},
      {Section::lines, "LINES\nINFO\n" + line + "END\n", no, 0, kBadHeader + "INFO_END ???", ""},
      {Section::lines, "NETWORK\n" + line + "END\n", no, 0, "", ""},
      {Section::network, "NETWORK\n1 2 3\n" + line + "END\n", no, 0, kBad + "1 2 3", ""},
      {Section::contours, "CONTOURLINES\n" + contour, no, 0, kBad + "END ???", "lines 1"},
      {Section::contours, "CONTOURLINES\n" + contour + "LINE3D\n1 1\n2 2\nEND\nEND\n", no, 0, kBad + "1",
       "lines 1"},
      {Section::contours, "CONTOURLINES\n" + contour + "LINE3D\nHEIGHT x\nEND\nEND\n", no, 0, kBad + "x",
       "lines 1"},
      {Section::samples, "SAMPLE\nPOINT3D\n1 2 3\nEND\n", no, 0, kBad + "END ???", "samples 1"},
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
      {ofPoints, points, no, 0, kBad + "END ???", ""},
      {ofPoints, points + "2;2;Nova\n", yes, 0, kAddAll + "Nova\n" + kBad + "END ???", ""},
      {ofPoints, points + "2;2;Nova\n3;3\nEND\n", yes, 1,
       kAddAll + "Nova\n" + made(1, 1) + "\n" + bound(3, 0), "classes 1, points 3"},
      {ofPoints, points + "2;2;Nova\n3;3\nEND\n", no, 1, kAddAll + "Nova\n" + made(1, 0) + "\n" + bound(1, 2),
       "points 3"},
      {ofPoints, points + "2,2,Mata\nEND\n", no, 0, kBad + "2.2,Mata", ""},
      {ofPoints, points + "2;x;Mata\nEND\n", no, 0, kBad + "2;x;Mata", ""},
      {ofPoints, "POINT2D\n1 1\nEND\n", no, 0, kOldForm, ""},
      {ofPoints, "POINT2D\nINFO\nTHEMACLASS\n1 2 Nova\nINFO_END\n1 1\nEND\n", yes, 0, kBad + "1 2 Nova", ""},
      {ofLabels, labels, no, 0, kBad + "END ???", ""},
      {ofLabels, labels + "2;2;Nova\n", yes, 0, kAddAll + "Nova\n" + kBad + "END ???", ""},
      {ofLabels, labels + "2;2;Nova\nEND\n", yes, 1, kAddAll + "Nova\n" + made(1, 1), "classes 1"},
      {ofLabels, labels + "2;2;Nova\nEND\n", no, 1, kAddAll + "Nova\n" + made(1, 0), ""},
      {ofLabels, "POINTS\nINFO\nSEPARATOR ;\nINFO_END\n1;1;\nEND\n", no, 0, kBad + "CLASS_NAME ???", ""},
      {ofLabels, "POINTS\nCLASS_NAME \"\"\n1 1\nEND\n", no, 0, kBad + "CLASS_NAME \"\"", ""},
      {ofLabels, labels + "2,2,Mata\nEND\n", no, 0, kBad + "2.2,Mata", ""},
      {ofLabels, labels + "2;x;Mata\nEND\n", no, 0, kBad + "2;x;Mata", ""},
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
      {ofPoints, points + "2;2;P2;;Outra\nEND\n", no, 1, kNoCategory + "Outra\n" + bound(1, 0),
       "anchors 1, objects 1, points 2"},
      {ofPoints, points + "2;2;P2;;Outra\nEND\n", yes, 1, kNoCategory + "Outra\n" + bound(2, 0),
       "anchors 2, categories 1, objects 1, points 2"},
      {ofPoints, points + "2;2;P2;;Outra\nx\n", yes, 0, kNoCategory + "Outra\n" + kBad + "x", ""},
      {ofPoints, "POINT2D\nINFO\nSEPARATOR ;\nINFO_END\n1;1;P1\nEND\n", no, 0, kBad + "CATEGORY_OBJ ???", ""},
      {ofLabels, labels, no, 0, kBad + "END ???", ""},
      {ofLabels, labels + "350;150;P2;;Outra\nEND\n", yes, 1, kNoCategory + "Outra\n" + bound(2, 0),
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
      {of, table, no, 0, kBad + "END ???", ""},
      {of, table + "L2;;5\nEND\n", no, 0, kSkip + "T_NAME", ""},
      {of, table + "L0;;5\nEND\n", yes, 1, kSkip + "T_NAME", "objects 1, values -1"},
      {of, table + ";Dois;5\nEND\n", yes, 0, kBad + ";Dois;5", ""},
      {of, head + "Q;TEXT;5\nP;INTEGER\nINFO_END\nL0;L0;a;9\nEND\n", no, 0,
       "Não existe esse atributo na tabela!Q;TEXT;5\n" + kSkip + "Q;TEXT;5", ""},
      {of, head + "Q;TEXT;5\nP;INTEGER\nINFO_END\nL0;L0;a;9\nEND\n", yes, 1,
       "Não existe esse atributo na tabela!Q;TEXT;5\n" + kSkip + "Q;TEXT;5", "values 2"},
      {of, table + "L0;L0;x\nEND\n", no, 0, kSkip + "T_KEY = L0  P = x --> não é um número inteiro", ""},
      {of, table + "L2;Dois;x\nEND\n", yes, 1, kSkip + "T_KEY = L2  P = x --> não é um número inteiro",
       "objects 2, values 3"},
      // Of a number that is too long the last digits count.
      {of, table + "L2;Dois;9000000005\nEND\n", no, 1, "", "objects 2, values 8"},
      {of, table + "L2,Dois,5\nEND\n", yes, 0, kBad + "L2,Dois,5", ""},
      {of, table + "L2;Dois\nEND\n", yes, 0, kBad + "L2;Dois", ""},
      {of, "TABLE\nINFO\nSEPARATOR ;\nCATEGORY_OBJ Lotes\nP;INTEGER\nINFO_END\n1\nEND\n", yes, 0,
       kBadHeader + "T_KEY", ""},
      {of, "TABLE\nINFO\nSEPARATOR ;\nCATEGORY_OBJ Ruas\nINFO_END\nEND\n", yes, 0, kBad + "CATEGORY_OBJ Ruas",
       ""},
      {of, head + "P;NUMERO;10\nINFO_END\nEND\n", yes, 0, kBad + "P;NUMERO;10", ""},
      {of, "TABLE\nINFO\nFORMATED\nCATEGORY_OBJ Lotes\nINFO_END\nEND\n", yes, 0,
       "Opção não disponível!FORMATED", ""},
  };
  checkAll(cases);
}

// Nothing of a file that fails; single lines that are no texts, and turns between lines that aren't there,
// are left out.
TEST_F(WrongInput, TextsAndTurns) {
  const QByteArray angles = "O 45 0 0 S 23 0 0 O 45 0 1 S 23 0 0 O 45 0 2 S ";
  const Case cases[] = {
      {Section::texts, "TEXT\n1;2;a\n", no, 0, kBad + "END ???", ""},
      {Section::texts, "TEXT\n1;2;a\n1,2,a\n3;4; \nx;1;a\nEND\n", no, 1, "Formato inválido!3 linhas",
       "texts 1"},
      {Section::texts, "TEXT\nINFO\nSEPARATOR\nINFO_END\nEND\n", no, 0, kBad + "SEPARATOR", ""},
      {Section::turns, "TURNS\nINFO\nINFO_END\n" + angles + "99 0 0\nEND_TURNS\n", no, 0,
       "Falha na leitura do arquivo " + angles + "99 0 0.", ""},
      {Section::turns, "TURNS\nINFO\nINFO_END\n" + angles + "23 0 0\nEND_TURNS\n", no, 0, "", ""},
      {Section::turns, "TURNS\nINFO\n" + angles, no, 0, kBadHeader + "INFO_END ???", ""},
  };
  checkAll(cases);
}

}  // namespace

}  // namespace kaldex::test
