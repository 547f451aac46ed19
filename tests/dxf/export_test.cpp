#include "dxf/dxf_fixture.h"
#include "kaldex/model/tin.h"

namespace kaldex::test {
namespace {

QByteArray layerRecord(const QByteArray& name) {
  return "  0\nLAYER\n  2\n" + name + "\n 70\n     0\n 62\n     7\n  6\nCONTINUOUS\n";
}

QByteArray head(const QByteArray& count, const QByteArray& records,
                const QByteArray& box =
                    " 10\n   0.000\n 20\n   0.000\n 30\n0.0\n  9\n$EXTMAX\n 10\n 500.000\n 20\n 800.000\n") {
  return "  0\nSECTION\n  2\nHEADER\n  9\n$EXTMIN\n" + box +
         " 30\n0.0\n  0\nENDSEC\n  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n " + count + "\n" +
         records + "  0\nENDTAB\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
}

const QByteArray kEnd = "  0\nENDSEC\n  0\nEOF\n";

QByteArray polyline(const QByteArray& layer, const QByteArray& height, const std::vector<QByteArray>& xy) {
  QByteArray text =
      "  0\nPOLYLINE\n  8\n" + layer + "\n 66\n     1\n 10\n0.0\n 20\n0.0\n 30\n" + height + "\n";
  for (std::size_t i = 0; i < xy.size(); i += 2)
    text +=
        "  0\nVERTEX\n  8\n" + layer + "\n 10\n" + xy[i] + "\n 20\n" + xy[i + 1] + "\n 30\n" + height + "\n";
  return text + "  0\nSEQEND\n  8\n" + layer + "\n";
}

class DxfExport : public DxfFixture {
 protected:
  std::unique_ptr<OpenDxf> exporter(short coordFormat = 0) {
    auto dxf = handler(into, coordFormat);
    dxf->SetLayerName("base");
    return dxf;
  }
  void makeLayer(short model, short kind) { DxfFixture::makeLayer(model, kind, {0, 0, 500, 800}); }
  QByteArray written() const { return read("in.dxf"); }

  const QByteArray plain = head("    1", layerRecord("base"));
};

TEST_F(DxfExport, LinesAreAppended) {
  makeLayer(THEMATICMODEL, vectorLines);
  EXPECT_EQ(exporter()->ExportLines(vector, 0), 1);
  EXPECT_EQ(written(), plain + kEnd);
  EXPECT_TRUE(report.notes.isEmpty());
  insertLine(*vector, {1, 2, 3.00049, 4})->Free(1);
  insertLine(*vector, {9, 9})->Free(1);
  EXPECT_EQ(exporter()->ExportLines(vector, 0), 1);
  EXPECT_EQ(written(),
            plain + kEnd + plain + polyline("base", "0.000000", {"1.000", "2.000", "3.000", "4.000"}) + kEnd);
  EXPECT_EQ(report.leftOut["few_points"], 1);
  write("in.dxf", "  0\nSECTION\n  2\nENTI");
  EXPECT_EQ(exporter()->ExportLines(vector, 0), 1);
  EXPECT_TRUE(written().startsWith("  0\nSECTION\n  2\nENTI\n" + plain));
  EXPECT_EQ(report.notes.filter("já tinha conteúdo").size(), 1);
}

TEST_F(DxfExport, NamesOfLayers) {
  makeLayer(THEMATICMODEL, vectorLines);
  const std::pair<const char*, QByteArray> cases[] = {
      {" ", "0"}, {"\xC1gua Limpa", "\xC1guaLimpa"}, {"a:b", "a_b"}, {"ok", "ok"}, {nullptr, "0"}};
  for (const auto& [asked, name] : cases) {
    const auto dxf = exporter();
    dxf->SetLayerName(asked);
    EXPECT_EQ(dxf->ExportPoints(vector, nullptr, 0), 1);
    EXPECT_EQ(written(), head("    1", layerRecord(name)) + kEnd);
  }
  ASSERT_EQ(report.renamed.size(), 3);
  EXPECT_EQ(report.renamed[2], qMakePair(QString("a:b"), QString("a_b")));
}

TEST_F(DxfExport, PolygonsWithLooseLines) {
  makeLayer(THEMATICMODEL, vectorLines);
  insertPolygon(*vector, {0, 0, 0, 10, 10, 10, 0, 0});
  insertLine(*vector, {1, 2, 3, 4})->Free(1);
  EXPECT_EQ(exporter()->ExportPolygons(vector, 0), 1);
  EXPECT_EQ(written().count("POLYLINE"), 2);
  EXPECT_TRUE(written().endsWith(polyline("base", "0.000000", {"1.000", "2.000", "3.000", "4.000"}) + kEnd));
  EXPECT_EQ(exporter()->ExportPolygons(vector, 0), 1);
  EXPECT_EQ(written().count("EOF"), 1);
}

TEST_F(DxfExport, OnlyUsedClasses) {
  makeLayer(THEMATICMODEL, vectorLines);
  Category* const category = into->category();
  for (const int id : {1, 2}) addClass(*category, QString("class %1").arg(id), id);
  ASSERT_EQ(dataBase->storeCategories(dataBase->categoryList()), 1);
  insertLine(*vector, {1, 1, 2, 2}, linePlain, 1)->Free(1);
  insertLine(*vector, {3, 3, 4, 4}, linePlain, 77)->Free(1);
  insertPolygon(*vector, {5, 5, 5, 6, 6, 6, 5, 5}, 2);
  Point2d point(7, 7);
  point.classId = 77;
  vector->Insert(point);
  vector->flush();
  EXPECT_EQ(exporter()->ExportLines(vector, 1), 1);
  EXPECT_EQ(written().count("POLYLINE"), 2);
  EXPECT_FALSE(written().contains("3.000"));
  EXPECT_EQ(report.read["lines"], report.written["lines"] + report.leftOut["class_filter"]);
  report.leftOut.clear();
  EXPECT_EQ(exporter()->ExportPolygons(vector, 1), 1);
  EXPECT_EQ(written().count("POLYLINE"), 2);
  EXPECT_EQ(report.written["polygons"], 1);
  EXPECT_EQ(report.leftOut["class_filter"], 1);
  EXPECT_EQ(exporter()->ExportPoints(vector, category, 1), 1);
  EXPECT_EQ(written(), plain + kEnd);
  EXPECT_EQ(exporter()->ExportPoints(vector, category, 0), 1);
  EXPECT_EQ(written(), plain + "  0\nPOINT\n  8\nbase\n 10\n7.000\n 20\n7.000\n" + kEnd);
}

TEST_F(DxfExport, ContoursAndSamples) {
  makeLayer(DIGITALMODEL, vectorContours);
  insertLine(*vector, {1, 1, 2, 2}, linePlain, 0, 40.5f)->Free(1);
  EXPECT_EQ(exporter()->ExportContourout(vector), 1);
  EXPECT_EQ(written(),
            plain + polyline("base_CON", "40.500000", {"1.000", "1.000", "2.000", "2.000"}) + kEnd);

  makeLayer(DIGITALMODEL, vectorSamples);
  const QByteArray three =
      head("    3", layerRecord("base_P3D") + layerRecord("base_L3D") + layerRecord("base_BKL"));
  EXPECT_EQ(exporter()->ExportSample(vector), 1);
  EXPECT_EQ(written(), three + kEnd);
  insertLine(*vector, {5, 5, 6, 6}, lineBreak, 0, 9.0f)->Free(1);
  insertLine(*vector, {1, 1, 2, 2}, linePlain, 0, 40.0f)->Free(1);
  Point3d sample(3, 4, 7.25f);
  vector->Insert(sample, 0);
  EXPECT_EQ(exporter()->ExportSample(vector), 1);
  EXPECT_EQ(written(), three + "  0\nPOINT\n  8\nbase_P3D\n 10\n3.000\n 20\n4.000\n 30\n7.250000\n" +
                           polyline("base_L3D", "40.000000", {"1.000", "1.000", "2.000", "2.000"}) +
                           polyline("base_BKL", "0.000000", {"5.000", "5.000", "6.000", "6.000"}) + kEnd);
}

TEST_F(DxfExport, FormsOfCoordinates) {
  into = layer(THEMATICMODEL, "geographic", {300000, 7400000, 310000, 7410000});
  vector = into->vector(vectorLines, true);
  insertLine(*vector, {300000, 7400000, 310000, 7410000})->Free(1);
  Point place(300000, 7400000);
  ASSERT_TRUE(project->projection()->planeToGeographic(place));
  const double degrees = Math_Rad_To_Deg(place.x);
  const std::pair<short, QByteArray> cases[] = {{1, QByteArray::number(degrees, 'f', 8)},
                                                {2, QByteArray::number(degrees, 'f', 8)},
                                                {3, QByteArray::number(degrees * 3600, 'f', 5)}};
  for (const auto& [form, x] : cases) {
    EXPECT_EQ(exporter(form)->ExportPolygons(vector, 0), 1);
    EXPECT_TRUE(written().contains("VERTEX\n  8\nbase\n 10\n" + x + "\n")) << x.toStdString();
    EXPECT_EQ(written().contains(form == 3 ? "$EXTMIN\n 10\n-1" : "$EXTMIN\n 10\n-4"), true);
  }
  EXPECT_EQ(report.notes.filter("graus decimais").size(), 1);

  project = dataBase->createProject("Graus", *latLong());
  into = layer(THEMATICMODEL, "degrees", {-46, -24, -45, -23}, project);
  vector = into->vector(vectorLines, true);
  insertLine(*vector, {-45.123456789, -23.5, -45.2, -23.6})->Free(1);
  for (const short form : {2, 0}) EXPECT_EQ(exporter(form)->ExportPolygons(vector, 0), 1);
  EXPECT_TRUE(written().contains("\n-45.123\n"));
  EXPECT_EQ(report.notes.filter("Graus gravados com 3 casas").size(), 1);
}

TEST_F(DxfExport, Surfaces) {
  makeLayer(DIGITALMODEL, vectorTin);
  auto* const tin = dynamic_cast<Tin*>(vector);
  ASSERT_NE(tin, nullptr);
  const float none = static_cast<float>(kUnsetValue);
  tin->assign({{1, 1, 10}, {2, 1, 20}, {1, 2, 30}, {9, 9, none}}, {{{0, 1}}, {{-1, 9}}, {{2, 3}}, {{0, 9}}},
              {{{0, 1, 2}}, {{0, 1, 3}}});
  EXPECT_EQ(exporter()->ExportTIN(tin), 1);
  EXPECT_EQ(messages.take(), "Ponteiro de arquivo inválido!(tin->Line())[i].Node > (tin->Node())size");
  EXPECT_EQ(written(),
            plain +
                "  0\nPOLYLINE\n  8\nbase\n 66\n     1\n 10\n0.0\n 20\n0.0\n 30\n0.0\n"
                "  0\nVERTEX\n  8\nbase\n 10\n1.000\n 20\n1.000\n 30\n10.000000\n"
                "  0\nVERTEX\n  8\nbase\n 10\n2.000\n 20\n1.000\n 30\n20.000000\n  0\nSEQEND\n  8\nbase\n" +
                kEnd);
  EXPECT_EQ(exporter()->ExportTIN3D(tin), 1);
  EXPECT_EQ(
      written(),
      plain +
          "  0\n3DFACE\n  8\nbase\n 10\n1.000\n 20\n1.000\n 30\n10.000000\n 11\n2.000\n 21\n1.000\n"
          " 31\n20.000000\n 12\n1.000\n 22\n2.000\n 32\n30.000000\n 13\n1.000\n 23\n2.000\n 33\n30.000000\n" +
          kEnd);
}

TEST_F(DxfExport, TextsComeBack) {
  makeLayer(THEMATICMODEL, vectorLines);
  into->makeText()->visual.text.height = 3.0f;
  EntitieList texts;
  for (const char* const words : {"layer's look", "own look", " ", "a\u00E7\u4E2D\u00B0"}) {
    auto* const text = new EText;
    text->String(QString::fromUtf8(words));
    text->Position(Point(10, 20));
    text->Height(50);
    text->Angle(45);
    text->Own(texts.Size() == 0 ? 0 : 1);
    texts.Append(text);
  }
  EXPECT_EQ(exporter()->ExportText(&texts), 1);
  EXPECT_TRUE(
      written().startsWith(plain +
                           "  0\nTEXT\n  8\nbase\n 10\n10.000\n 20\n20.000\n 30\n0.0\n 40\n3.000000\n  1\n"
                           "layer's look\n 50\n0.000000\n  0\nTEXT\n  8\nbase\n 10\n10.000\n 20\n20.000\n"
                           " 30\n0.0\n 40\n2.000000\n  1\nown look\n 50\n45.000000\n"));
  EntitieList back;
  EXPECT_EQ(handler(into)->ImportText(&back, nullptr, nullptr), 1);
  ASSERT_EQ(back.Size(), 3);
  const auto& own = *static_cast<EText*>(back.at(1));
  EXPECT_EQ(own.Height(), 50.0f);
  EXPECT_EQ(own.Angle(), 45.0f);
  EXPECT_EQ(static_cast<EText*>(back.at(0))->Own(), 0);
  EXPECT_EQ(static_cast<EText*>(back.at(2))->String(), QString::fromUtf8("a\u00E7\u4E2D\u00B0"));
}

TEST_F(DxfExport, LabelsOfClassesAndObjects) {
  makeLayer(THEMATICMODEL, vectorLines);
  Category* const category = into->category();
  addClass(*category, "Mata", 1);
  insertPolygon(*vector, {0, 0, 0, 10, 10, 10, 10, 0, 0, 0}, 1);
  insertLine(*vector, {100, 100, 200, 100}, linePlain, 1)->Free(1);
  Point2d point(7, 8);
  point.classId = 1;
  vector->Insert(point);
  EXPECT_EQ(exporter()->ExportLabelPoints(vector, category, 0), 1);
  EXPECT_EQ(written().count("TEXT"), 3);
  EXPECT_TRUE(written().endsWith(
      "  0\nTEXT\n  8\nbase\n 10\n7.000000\n 20\n8.000000\n 30\n0.0\n 40\n60.000000\n  1\nMata\n"
      " 50\n0.0\n" +
      kEnd));
  EXPECT_TRUE(written().contains(" 10\n150.000000\n 20\n100.000000\n"));

  makeLayer(CADASTRALMODEL, vectorLines);
  const KaldexObject object = newObject(this->category(OBJECTMODEL, "Lotes"), " 12-A ", "name");
  Line* const line = insertLine(*vector, {0, 0, 10, 0});
  Anchor anchor, unknown;
  anchor.InsertLine(nullptr, *line);
  unknown.InsertLine(nullptr, *line);
  line->Free(1);
  link(*into, anchor, object);
  ASSERT_EQ(vector->Insert(unknown), 1);
  EXPECT_EQ(exporter()->ExportLabelPoints(vector, into->category(), 0), 1);
  EXPECT_EQ(written(), plain +
                           "  0\nTEXT\n  8\nbase\n 10\n5.000000\n 20\n0.000000\n 30\n0.0\n 40\n60.000000\n  "
                           "1\n12-A\n 50\n0.0\n" +
                           kEnd);
}

TEST_F(DxfExport, WhatIsRefused) {
  makeLayer(DIGITALMODEL, vectorTin);
  Vector& wrong = *vector;
  const auto dxf = exporter();
  const QString logic = "Erro associado com uma restrição lógica!";
  const QString argument = "Um argumento inválido foi passado!arg : ";
  const std::pair<int, QString> cases[] = {
      {dxf->ExportLines(nullptr, 0), argument + "vec"},
      {dxf->ExportPolygons(nullptr, 0), argument + "vec"},
      {dxf->ExportPoints(nullptr, nullptr, 0), argument + "vec"},
      {dxf->ExportContourout(nullptr), argument + "vec"},
      {dxf->ExportSample(nullptr), argument + "vec"},
      {dxf->ExportTIN(nullptr), argument + "vec"},
      {dxf->ExportTIN3D(nullptr), argument + "vec"},
      {dxf->ExportLabelPoints(nullptr, into->category(), 0), argument + "vec"},
      {dxf->ExportLabelPoints(&wrong, nullptr, 0), argument + "cat"},
      {dxf->ExportText(nullptr), argument + "list"},
      {dxf->ExportLines(&wrong, 0), "Não existe linhas neste vetor!"},
      {dxf->ExportPolygons(&wrong, 0), "Não existe linhas neste vetor!"},
      {dxf->ExportPoints(&wrong, nullptr, 0), logic + "No LINES in Vector"},
      {dxf->ExportContourout(&wrong), logic + "No CONTOUROUT in Vector"},
      {dxf->ExportSample(&wrong), logic + "No SAMPLE in Vector"},
      {dxf->ExportLabelPoints(&wrong, into->category(), 0), logic + "No LINES in Vector"},
  };
  QStringList expected;
  for (const auto& one : cases) {
    EXPECT_EQ(one.first, 0) << one.second.toStdString();
    expected << one.second;
  }
  EXPECT_EQ(messages.take(), expected.join('\n'));
  EXPECT_FALSE(QFile::exists(path("in.dxf")));
  makeLayer(THEMATICMODEL, vectorLines);
  insertLine(*vector, {1, 1, 2, 2})->Free(1);
  const auto full = exporter();
  full->DataHome("/dev");
  full->DataFile("full");
  EXPECT_EQ(full->ExportLines(vector, 0), 0);
  EXPECT_EQ(messages.take(), "Erro de I/O.");
}

TEST_F(DxfExport, PiecesByThemselves) {
  makeLayer(THEMATICMODEL, vectorLines);
  const auto dxf = exporter();
  EXPECT_EQ(dxf->PrintEOF(), 0);
  ASSERT_EQ(dxf->FileOpen("w+"), 1);
  Line line;
  line.height = 5;
  EXPECT_EQ(dxf->PrintPolyline(&line, "%0.3lf\n", ""), 1);
  line.Append(Point(1, 2), false);
  line.Append(Point(3, 4), false);
  const Point3d sample(1, 2, 3);
  EXPECT_EQ(dxf->PrintDefaultHeader(1), 1);
  EXPECT_EQ(dxf->PrintPolyline(&line, "%0.1lf  %0.1lf\n", "_L3D"), 1);
  EXPECT_EQ(dxf->PrintPolyline(&line, "%0.1lf\n", nullptr), 1);
  EXPECT_EQ(dxf->PrintPoint2d(&sample, "%lf"), 1);
  EXPECT_EQ(dxf->PrintPoint3d(&sample, "%8.0lf"), 1);
  EXPECT_EQ(dxf->PrintEOF(), 1);
  dxf->FileClose();
  EXPECT_EQ(written(), plain + polyline("base_L3D", "5.000000", {"1.0", "2.0", "3.0", "4.0"}) +
                           polyline("base", "0.000000", {"1.0", "2.0", "3.0", "4.0"}) +
                           "  0\nPOINT\n  8\nbase\n 10\n1.000000\n 20\n2.000000\n"
                           "  0\nPOINT\n  8\nbase_P3D\n 10\n1\n 20\n2\n 30\n3.000000\n" +
                           kEnd);
}

}  // namespace
}  // namespace kaldex::test
