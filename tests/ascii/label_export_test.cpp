#include <unistd.h>

#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

const char* const kNoLabelPoint = " ; ***pol.erro***";

std::vector<double> square(double x, double y) {
  return {x, y, x + 10, y, x + 10, y + 10, x, y + 10, x, y};
}

/// A ring without area, which no label point lies in.
std::vector<double> flatRing(double x, double y) {
  return {x, y, x + 10, y, x + 20, y, x, y};
}

class LabelExport : public AsciiFixture {
 protected:
  LabelExport() { fileName = "mapa_LAB.kdx"; }

  void make(short model) {
    layer_ = layer(model, "Plano");
    category_ = layer_->category();
    vector_ = layer_->vector(vectorLines, true);
  }
  int addClass(const QString& name, const Color& polygon = {}) {
    GeoClass* const fresh = AsciiFixture::addClass(*category_, name);
    fresh->visual.polygon.color = polygon;
    fresh->visual.line.color = fresh->visual.point.color = Color(1, 20, 255);
    EXPECT_NE(dataBase->storeCategories(dataBase->categoryList()), 0);
    return fresh->id;
  }
  SPolygon* addPolygon(const std::vector<double>& ring, int classId = 0, Point label = Point::unset()) {
    SPolygon* const polygon = insertPolygon(*vector_, ring, classId);
    polygon->labelPoint = label;
    polygon->changed = stateChanged;
    polygon->Free();
    return polygon;
  }
  /// An object of the category "Lotes" with an anchor that holds these.
  void addObject(const QString& label, const QString& name, const std::vector<int>& polygons,
                 const std::vector<int>& lines = {}, const std::vector<int>& points = {}) {
    Anchor anchor;
    anchor.polygons = polygons;
    anchor.lines = lines;
    anchor.points = points;
    anchor.box = Box(0, 0, 1e4, 1e4);
    link(*layer_, anchor, newObject(category(OBJECTMODEL, "Lotes"), label, name));
  }

  enum class Kind { plain, generated, unclassified, more, swapped, points, generatedPoints };
  int run(Kind kind, const char* separator = nullptr, short restrict = 0, short coordFormat = 0) {
    QFile::remove(path(fileName));
    const auto out = handler(layer_, coordFormat, 0, nullptr, separator);
    out->DataHome(folder() + "/");
    const int result = exported(*out, kind, restrict);
    EXPECT_EQ(out->file, nullptr);
    return result;
  }
  int exported(IEAsc& out, Kind kind, short restrict) {
    return kind == Kind::plain          ? out.ExportLabelPoints(vector_, category_, restrict)
           : kind == Kind::generated    ? out.ExportLabelPointsAuto(vector_, category_)
           : kind == Kind::unclassified ? out.ExportLabelPointsSem(vector_, category_)
           : kind == Kind::more         ? out.ExportLabelPointsMais(vector_, category_)
           : kind == Kind::swapped      ? out.ExportLabelPointsTroca(vector_, category_, restrict)
           : kind == Kind::points       ? out.ExportPoints(vector_, category_, restrict)
                                        : out.ExportPointsAuto(vector_, category_);
  }
  /// What was written up to the file's general header, a "|", and what is behind that.
  QByteArray written() const {
    QByteArray text = read(fileName);
    const int from = text.indexOf("\n//Arquivo ASCII");
    const int to = text.indexOf('\n', text.indexOf("\nSCALE") + 1);
    EXPECT_GT(from, 0);
    return text.replace(from, to - from, "|");
  }
  QByteArray records(Kind kind, const char* separator = nullptr, short restrict = 0, short coordFormat = 0) {
    EXPECT_EQ(run(kind, separator, restrict, coordFormat), 1);
    const QByteArray text = written();
    EXPECT_TRUE(text.endsWith("\nEND"));
    const int from = text.indexOf("\nINFO_END") + 9;
    return text.mid(from, text.size() - from - 4);
  }

  InfoLayer* layer_ = nullptr;
  Category* category_ = nullptr;
  Vector* vector_ = nullptr;
};

TEST_F(LabelExport, Classes) {
  make(THEMATICMODEL);
  const int mata = addClass("Mata", {0, 128, 7});
  addClass(QString::fromUtf8("Água"));
  addPolygon(square(100, 100), mata, Point(101, 102));
  addPolygon(square(200, 200), mata);    // gets a label point
  addPolygon(square(300, 300), 99);      // of an unknown class
  addPolygon(flatRing(400, 400), mata);  // has no inside
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10}, linePlain, mata);
  delete insertLine(*vector_, {0, 0, 10, 0});

  EXPECT_EQ(records(Kind::plain),
            "\nCLASS_NAME   \"Mata\"\n101.000000     102.000000"
            "\nCLASS_NAME   \"Mata\"\n205.000000     205.000000"
            "\nCLASS_NAME   \"Mata\"\n10.000000     0.000000");
  EXPECT_TRUE(written().startsWith(
      "\nPOINTS\nINFO\n//Identificadores dos Pol\xEDgonos e das Linhas Classificadas|\nINFO_END\n"));
  EXPECT_EQ(report.written["labels"], 3);
  EXPECT_EQ(report.leftOut["no_label_point"], 1);
  EXPECT_TRUE(vector_->GetPolygon(2)->labelPoint.isUnset()) << "an export changes nothing";

  const QByteArray separated =
      "\n101.000000  ;  102.000000 ; Mata\n205.000000  ;  205.000000 ; Mata\n10.000000  ;  0.000000 ; Mata";
  EXPECT_EQ(records(Kind::plain, ";"), separated);
  const QByteArray head =
      "\nPOINTS\nINFO\n//Identificadores dos Pol\xEDgonos e das Linhas Classificadas|"
      "\nSEPARATOR ;\n//Formato THEMACLASS <polcolorR> <polcolorG> <polcolorB> <lincolorR> <lincolorG> "
      "<lincolorB> <nameclass> (PARAMETRO OPCIONAL)\nTHEMACLASS\n  0  128    7    1   20  255  Mata";
  const QByteArray tail = "\n//Formato coordx ; coordy ; class_name\nINFO_END";
  EXPECT_TRUE(written().startsWith(head + "\n  0    0    0    1   20  255  \xC1gua" + tail));
  EXPECT_EQ(records(Kind::plain, ";", 1), separated);
  EXPECT_TRUE(written().startsWith(head + tail)) << "only classes in use";
  EXPECT_EQ(records(Kind::plain, nullptr, 1), "") << "the classes in use stand in the header alone";

  addPolygon(square(500000, 7400000), mata);
  EXPECT_TRUE(records(Kind::plain, nullptr, 0, 1).contains("\n O 44 59 59."));
  EXPECT_TRUE(records(Kind::plain, "|", 0, 1).contains(" | S 23 "));
  EXPECT_TRUE(records(Kind::plain, "|", 0, 2).contains("\n-44.99"));
}

TEST_F(LabelExport, Objects) {
  make(CADASTRALMODEL);
  EXPECT_EQ(records(Kind::plain), "") << "no anchor";
  addPolygon(square(100, 100), 0, Point(101, 102));
  addPolygon(square(200, 200), 0, Point(201, 202));
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10});
  addObject(" L1 ", "Um", {1, 2, 77}, {3});
  addObject("label", "Dois", {}, {3});
  const QByteArray first = "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L1\"\nNAME   \"Um\"\n";
  EXPECT_EQ(records(Kind::plain),
            first + "101.000000     102.000000" + first + "201.000000     202.000000" + first +
                "10.000000     0.000000\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"Dois\"\nNAME   \"Dois\"\n"
                "10.000000     0.000000");
  EXPECT_EQ(records(Kind::plain, ";"),
            "\n101.000000  ;  102.000000 ; L1 ; Um ; Lotes\n201.000000  ;  202.000000 ; L1 ; Um ; Lotes"
            "\n10.000000  ;  0.000000 ; L1 ; Um ; Lotes ; \n10.000000  ;  0.000000 ; Dois ; Dois ; Lotes ; ");
  EXPECT_TRUE(
      written().contains("|\nSEPARATOR ;\n//Formato coordx ; coordy ; label ; name ; category_obj\n"));
  EXPECT_EQ(records(Kind::swapped, ";"),
            "\n101.000000  ;  102.000000 ; Um\n201.000000  ;  202.000000 ; Um\n10.000000  ;  0.000000 ; Um"
            "\n10.000000  ;  0.000000 ; Dois");
  EXPECT_TRUE(written().contains("|\nSEPARATOR ;\n//Formato coordx ; coordy ; class_name (obj_name)\nINFO"));
}

TEST_F(LabelExport, ObjectsOfANetwork) {
  make(NETWORKMODEL);
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10});
  Point2d node(10, 10);
  ASSERT_NE(vector_->Insert(node), 0);
  addObject("L1", "Um", {}, {1}, {node.id});
  const QByteArray first = "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L1\"\nNAME   \"Um\"\n";
  EXPECT_EQ(records(Kind::plain),
            first + "LINES\n10.000000     0.000000" + first + "NODES\n10.000000     10.000000");
  EXPECT_TRUE(written().startsWith("\nNETWORK_OBJECTS\nINFO\n"));
  EXPECT_EQ(records(Kind::plain, ";"),
            "\n10.000000  ;  0.000000 ; L1 ; Um ; Lotes ; LINES\n10.000000  ;  10.000000 ; L1 ; Um ; Lotes ; "
            "NODES");
}

TEST_F(LabelExport, GeneratedNames) {
  make(THEMATICMODEL);
  const int mata = addClass("Mata");
  SPolygon* const polygon = addPolygon(square(100, 100), mata, Point(101, 102));
  polygon->area = 100;
  polygon->perimeter = 40.5;
  polygon->changed = stateChanged;
  polygon->Free();
  addPolygon(flatRing(400, 400));
  addPolygon(square(300, 300), 99, Point(301, 302));
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10});
  EXPECT_EQ(records(Kind::generated),
            "\nCLASS_NAME   \"mapa_pol1\"\n101.000000     102.000000"
            "\nCLASS_NAME   \"mapa_pol2\"\n400.000000     400.000000"
            "\nCLASS_NAME   \"mapa_pol3\"\n301.000000     302.000000"
            "\nCLASS_NAME   \"mapa_lin4\"\n10.000000     0.000000");
  EXPECT_EQ(records(Kind::generated, ";"),
            QByteArray("\n101.000000  ;  102.000000 ; mapa_pol1 \n400.000000  ;  400.000000 ; mapa_pol2 ") +
                kNoLabelPoint +
                "\n301.000000  ;  302.000000 ; mapa_pol3 \n10.000000  ;  0.000000 ; mapa_lin4");
  fileName = "mapa_do_sul_CEN.kdx";
  EXPECT_EQ(records(Kind::generated, ";"),
            QByteArray("\n101.000000  ;  102.000000 ; Mata ; 100.000000 ; 40.500000 "
                       "\n400.000000  ;  400.000000 ; Nenhuma ; 0.000000 ; 0.000000 ") +
                kNoLabelPoint + "\n301.000000  ;  302.000000");
  EXPECT_TRUE(written().startsWith(
      "\nCENTER\nINFO\n//Identificadores dos Pol\xEDgonos com classe, \xE1rea e per\xEDmetro\n|\nSEPARATOR "
      ";\n"
      "//Formato coordx ; coordy ; class_name ; \xE1rea(m2) ; per\xEDmetro(m2)\nINFO_END"));
}

TEST_F(LabelExport, GeneratedObjects) {
  make(CADASTRALMODEL);
  addPolygon(square(100, 100), 0, Point(101, 102));
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10});
  EXPECT_EQ(records(Kind::generated),
            "\nCATEGORY_OBJ   \"mapa\"\nLABEL   \"mapa_pol1\"\n101.000000     102.000000"
            "\nCATEGORY_OBJ   \"mapa\"\nLABEL   \"mapa_lin2\"\n10.000000     0.000000");
  EXPECT_EQ(
      records(Kind::generated, ";"),
      "\n101.000000  ;  102.000000 ; mapa_pol1 ;  ; mapa \n10.000000  ;  0.000000 ; mapa_lin2 ;  ; mapa");
}

TEST_F(LabelExport, PolygonsToLookAt) {
  make(THEMATICMODEL);
  const int mata = addClass("Mata");
  EXPECT_EQ(records(Kind::more), "");
  addPolygon(square(100, 100), mata, Point(101, 102));
  addPolygon(square(200, 200), 0, Point(201, 202));
  EXPECT_EQ(records(Kind::unclassified), "\n201.000000     202.000000");
  EXPECT_TRUE(written().startsWith("\nPOINT2D\nINFO|\nINFO_END"));
  EXPECT_EQ(records(Kind::unclassified, ";"), "\n201.000000  ;  202.000000 ; ");
  EXPECT_EQ(records(Kind::more, ";"), "\n101.000000  ;  102.000000 ; ");
  EXPECT_EQ(run(Kind::more), 0);
  EXPECT_EQ(messages.take(), QString::fromUtf8("opção <Separador: Nenhum> não disponível"));
  EXPECT_TRUE(read(fileName).endsWith("INFO_END"));
}

TEST_F(LabelExport, ObjectsToLookAt) {
  make(CADASTRALMODEL);
  const int both = addPolygon(square(100, 100), 0, Point(101, 102))->id;
  addPolygon(square(500, 500), 0, Point(501, 502));  // nothing around it: goes by the one before
  addPolygon(square(105, 105), 0, Point(106, 107));  // others around it: has none of its own
  const int single = addPolygon(square(300, 300), 0, Point(301, 302))->id;
  addObject("L1", "Um", {both, single});
  addObject("L2", "Dois", {both});
  EXPECT_EQ(records(Kind::unclassified, ";"), "\n501.000000  ;  502.000000 ; \n106.000000  ;  107.000000 ; ");
  EXPECT_EQ(records(Kind::more, ";"),
            "\n101.000000  ;  102.000000 ;  0000001 ;  ; pol_objs ;     //num.objs 0000002"
            "\n501.000000  ;  502.000000 ;  0000002 ;  ; pol_objs ;     //num.objs 0000002");
}

TEST_F(LabelExport, ClassesAsObjects) {
  make(THEMATICMODEL);
  const int mata = addClass("Mata");
  addPolygon(square(100, 100), mata, Point(101, 102));
  delete insertLine(*vector_, {0, 0, 10, 0, 10, 10}, linePlain, mata);
  EXPECT_EQ(run(Kind::swapped, ";"), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : dataFile");
  fileName = "mapa_CADLAB.typ";
  EXPECT_EQ(records(Kind::swapped, ";"),
            "\n101.000000  ;  102.000000 ; 00000001 ;     ; mapa_O\n10.000000  ;  0.000000 ; 00000002 ;     "
            "; mapa_O");
  EXPECT_TRUE(written().contains("coordx ; coordy ; label ; name ; category_obj (PI_O)\nINFO_END"));
  const QByteArray table =
      "\nTABLE\nINFO\n//Tabela de Atributos ASCII gerada pelo Sistema KALDEX\nSEPARATOR ;\nUNFORMATED"
      "\nCATEGORY_OBJ   mapa_O\nT_KEY ; TEXT ; 32 ; 0\nKDXCLASSE ; TEXT ; 70 ; 0\nINFO_END"
      "\n00000001 ; Mata\n00000002 ; Mata\nEND";
  EXPECT_EQ(read("mapa_CADTAB.kdx"), table);

  const QString question = QString::fromUtf8("Arquivo já existe. Sobrepor?");
  messages.answer(question, false);
  EXPECT_EQ(run(Kind::swapped, ";"), 0);
  EXPECT_EQ(messages.take(), question + path("mapa_CADTAB.kdx"));
  EXPECT_EQ(read("mapa_CADTAB.kdx"), table);
  messages.forget();
  messages.answer(question, true);
  EXPECT_EQ(records(Kind::swapped, ";", 1), "") << "no class is chosen";
  EXPECT_TRUE(read("mapa_CADTAB.kdx").endsWith("INFO_END\nEND"));
  messages.take();
  EXPECT_EQ(run(Kind::swapped), 0);
  EXPECT_TRUE(messages.take().endsWith(QString::fromUtf8("opção <Separador: Nenhum> não disponível")));
}

TEST_F(LabelExport, Points) {
  make(THEMATICMODEL);
  const int mata = addClass("Mata");
  int x = 0;
  for (const int classId : {mata, 99, 0, 99}) {
    Point2d point(++x, 5);
    point.classId = classId;
    ASSERT_NE(vector_->Insert(point), 0);
  }
  EXPECT_EQ(
      records(Kind::points),
      "\nCLASS_NAME   \"Mata\"\n1.000000     5.000000\nCLASS_NAME   \"Mata\"\n2.000000     5.000000"
      "\nCLASS_NAME   \"Nenhuma\"\n3.000000     5.000000\nCLASS_NAME   \"Nenhuma\"\n4.000000     5.000000");
  EXPECT_EQ(records(Kind::points, ";", 1), "\n1.000000  ;  5.000000 ; Mata");
  EXPECT_TRUE(written().startsWith(
      "\nPOINT2D\nINFO\n//Ponto 2D e Identificadores se Ponto Classificado|\nSEPARATOR ;\n//Formato "
      "THEMACLASS "
      "<ptcolorR> <ptcolorG> <ptcolorB> <nameclass> (PARAMETRO OPCIONAL)\nTHEMACLASS\n  1   20  255  Mata\n"
      "//Formato coordx ; coordy ; class_name\nINFO_END"));
  EXPECT_TRUE(records(Kind::generatedPoints, ";").startsWith("\n1.000000  ;  5.000000 ; mapa1\n2."));
  EXPECT_TRUE(records(Kind::generatedPoints).startsWith("\nCLASS_NAME   \"mapa1\"\n1.000000"));
}

TEST_F(LabelExport, PointsOfObjects) {
  make(CADASTRALMODEL);
  int ids[2];
  for (int& id : ids) {
    Point2d point(&id - ids + 1, 5);
    ASSERT_NE(vector_->Insert(point), 0);
    id = point.id;
  }
  addObject("L1", "Um", {}, {}, {ids[0]});
  addObject("L2", "Dois", {}, {}, {ids[0]});
  // So near that it is the place of the same objects, over the border of a cell of what is searched.
  Point2d beside(0.9995, 5.0005), away(1.0, 4.9989);
  ASSERT_NE(vector_->Insert(beside), 0);
  ASSERT_NE(vector_->Insert(away), 0);
  EXPECT_EQ(records(Kind::points),
            "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L1\"\nNAME   \"Um\"\n1.000000     5.000000"
            "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L2\"\nNAME   \"Dois\"\n1.000000     5.000000"
            "\nLABEL   \"Nenhuma\"\n2.000000     5.000000"
            "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L1\"\nNAME   \"Um\"\n0.999500     5.000500"
            "\nCATEGORY_OBJ  \"Lotes\"\nLABEL  \"L2\"\nNAME   \"Dois\"\n0.999500     5.000500"
            "\nLABEL   \"Nenhuma\"\n1.000000     4.998900");
  EXPECT_EQ(records(Kind::points, ";"),
            "\n1.000000  ;  5.000000 ; L1 ; Um ; Lotes\n1.000000  ;  5.000000 ; L2 ; Dois ; Lotes"
            "\n2.000000  ;  5.000000 ; Nenhuma\n0.999500  ;  5.000500 ; L1 ; Um ; Lotes"
            "\n0.999500  ;  5.000500 ; L2 ; Dois ; Lotes\n1.000000  ;  4.998900 ; Nenhuma");
  EXPECT_TRUE(records(Kind::generatedPoints)
                  .startsWith("\nCATEGORY_OBJ   \"mapa\"\nLABEL   \"mapa1\"\n1.000000     5"));
  EXPECT_TRUE(records(Kind::generatedPoints, ";").startsWith("\n1.000000  ;  5.000000 ; mapa1 ;  ; mapa\n"));
}

TEST_F(LabelExport, ArgumentsAndFullDisk) {
  make(THEMATICMODEL);
  EXPECT_EQ(handler(layer_)->ExportLabelPoints(nullptr, nullptr, 0), 0);
  EXPECT_EQ(messages.take(),
            "Um argumento inválido foi passado!arg : vec\nUm argumento inválido foi passado!arg : cat");
  Vector* const samples = layer_->vector(vectorSamples, true);
  EXPECT_EQ(handler(layer_)->ExportPointsAuto(samples, category_), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!No LINES in Vector");
  for (const Kind kind : {Kind::plain, Kind::generated, Kind::unclassified, Kind::points}) {
    QFile::remove(path(fileName));
    ASSERT_EQ(symlink("/dev/full", path(fileName).toUtf8().constData()), 0);
    EXPECT_EQ(exported(*handler(layer_), kind, 0), 0);
    EXPECT_EQ(messages.take(), "Erro de I/O.");
  }
}

}  // namespace

}  // namespace kaldex::test
