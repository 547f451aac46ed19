#include "dxf/dxf_fixture.h"

namespace kaldex::test {
namespace {

using DxfLines = DxfFixture;

TEST_F(DxfLines, Entities) {
  const struct {
    const char* entities;
    const char* lines;
    const char* points;
  } cases[] = {
      {"0 LINE|8 A|10 1|20 2|30 9|11 3|21 4|31 9", "1,2 3,4", ""},
      {"0 LINE|10 1|20 2|11 3|21 4", "1,2 3,4", ""},
      {"0 LINE|8 A|10 1|20 2|11 1|21 2", "1,2 1,2", ""},
      {"0 POINT|8 A|10 1|20 2|0 INSERT|8 A|2 B|10 3|20 4", "", "1,2 3,4"},
      // Vertices without a coordinate or with a zero, and those of a spline's frame, are no vertices.
      {"0 POLYLINE|8 A|66 1|70 0|0 VERTEX|8 A|10 1|20 2|0 VERTEX|10 3|20 0|0 VERTEX|10 5"
       "|0 VERTEX|8 A|10 7|20 7|70 16|0 VERTEX|8 A|10 3|20 4|0 SEQEND|8 A",
       "1,2 3,4", ""},
      {"0 POLYLINE|8 A|70 1|0 VERTEX|8 A|10 1|20 2|0 VERTEX|8 A|10 3|20 4|0 SEQEND", "1,2 3,4 1,2", ""},
      {"0 POLYLINE|8 A|70 129|0 VERTEX|8 A|10 1|20 2|0 VERTEX|8 A|10 3|20 4|0 SEQEND", "1,2 3,4 1,2", ""},
      {"0 POLYLINE|8 A|70 9|0 VERTEX|8 A|10 1|20 2|0 VERTEX|8 A|10 3|20 4|70 32|0 SEQEND", "1,2 3,4 1,2", ""},
      {"0 POLYLINE|8 A|70 9|0 VERTEX|8 A|10 1|20 2|0 VERTEX|8 A|10 3|20 4|0 SEQEND", "1,2 3,4", ""},
      {"0 POLYLINE|8 A|70 64|71 4|72 1|0 VERTEX|8 A|10 1|20 1|70 192|0 VERTEX|8 A|10 2|20 1|70 192"
       "|0 VERTEX|8 A|10 2|20 2|70 192|0 VERTEX|8 A|10 1|20 2|70 192"
       "|0 VERTEX|8 A|10 0|20 0|70 128|71 -1|72 2|73 -3|74 4|0 SEQEND",
       "2,1 2,2", ""},
      {"0 ARC|8 A|10 0|20 0|40 100|50 0|51 1.5", "100,0 99.9848,1.74524 99.9657,2.61769", ""},
      // Not read, and what follows is.
      {"0 LWPOLYLINE|8 A|90 2|10 1|20 1|10 2|20 2|0 MTEXT|8 A|1 text|0 LINE|8 A|10 1|20 2|11 3|21 4",
       "1,2 3,4", ""},
      {"0 LINE|8 A|10 1|20 2|11 3|0 LINE|8 A|10 5|20 6|11 7|21 8", "5,6 7,8", ""},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(importLines(drawing(one.entities)), 1) << one.entities;
    EXPECT_EQ(lines(), one.lines) << one.entities;
    EXPECT_EQ(points(), one.points) << one.entities;
    EXPECT_EQ(messages.take(), "");
  }
}

TEST_F(DxfLines, ACircleHas361Points) {
  EXPECT_EQ(importLines(drawing("0 CIRCLE|8 A|10 50|20 60|40 1000")), 1);
  ASSERT_EQ(vector->lineCount(), 1);
  Line* const circle = vector->FirstLine();
  EXPECT_EQ(circle->Size(), 361);
  EXPECT_EQ(circle->First()->x, 1050.0);
  EXPECT_NEAR(circle->Last()->y, 60.0, 1e-3);
}

TEST_F(DxfLines, FormsOfFiles) {
  const QByteArray line = "0 LINE|8 A|10 1|20 2|11 3|21 4";
  const QByteArray rest = pairs("0 SECTION|2 OBJECTS|0 DICTIONARY|3 |300 |0 XRECORD|1 |0 ENDSEC|0 EOF");
  const std::pair<const char*, QByteArray> cases[] = {
      {"no section", pairs(line + "|0 EOF")},
      {"no section behind another",
       pairs("0 SECTION|2 BLOCKS|0 BLOCK|2 B|0 ENDBLK|0 ENDSEC|" + line + "|0 EOF")},
      {"blank lines",
       "  0\nSECTION\n  2\nENTITIES\n\n  0\n\n\nLINE\n  8\n A \n\n 10\n1\n 20\n2\n\n 11\n3\n 21\n4\n  "
       "0\nENDSEC\n  0\nEOF\n"},
      {"blank value in the header", drawing(line, pairs("0 SECTION|2 HEADER|9 $PROJECTNAME|1 |0 ENDSEC"))},
      {"blank values behind", pairs("0 SECTION|2 ENTITIES|" + line + "|0 ENDSEC") + rest},
      {"entities of blocks",
       drawing(
           line,
           pairs("0 SECTION|2 BLOCKS|0 BLOCK|2 ENTITIES|0 LINE|8 A|10 8|20 8|11 9|21 9|0 ENDBLK|0 ENDSEC"))},
      {"comments", "999\nhello\n" + drawing("0 LINE|8 A|999 |10 1|20 2|999 0|11 3|21 4")},
      {"a second drawing behind", drawing(line) + drawing("0 LINE|8 A|10 8|20 8|11 9|21 9")},
  };
  for (const auto& [name, content] : cases) {
    EXPECT_EQ(importLines(content), 1) << name;
    EXPECT_EQ(lines(), "1,2 3,4") << name;
    EXPECT_EQ(messages.take(), "") << name;
  }
}

TEST_F(DxfLines, Failures) {
  const std::pair<QByteArray, QString> cases[] = {
      {drawing(""), kBad + "in.dxf - Plano vazio "},
      {drawing("0 MTEXT|8 A|1 x"), kBad + "in.dxf - Plano vazio "},
      {"", kBad + "in.dxf - linha 1"},
      {pairs("0 SECTION|2 ENTITIES"), kBad + "in.dxf - linha 5"},
      {pairs("0 LINE|8 A|10 1|20 2|11 3|21 4"), kBad + "in.dxf - linha 13"},
      {drawing("0 VERTEX|8 A|10 1|20 2|0 POINT"), kBad + "in.dxf - linha 14"},
      {drawing("0 POLYLINE|8 A|70 1|0 VERTEX|8 A|10 1|20 2|0 SEQEND"), kBad + "in.dxf - Plano vazio A"},
      {drawing("0 LINE|8 A|10 1|20 2|11 3|21 nan"), ""},
      {"0\r\nEOF\r\n", "Arquivo no formato DOS, converter para UNIX!"},
  };
  for (const auto& [content, message] : cases) {
    EXPECT_EQ(importLines(content), 0) << content.toStdString();
    EXPECT_EQ(messages.take(), message) << content.toStdString();
  }
  EXPECT_EQ(handler(into)->ImportLines(nullptr, nullptr), 0);
  EXPECT_EQ(messages.take(), "Um argumento inválido foi passado!arg : vec");
  EXPECT_EQ(handler(into)->ImportLines(into->vector(vectorContours, true), nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a LINE Vector");
  write("in.dxf", drawing("0 LINE|8 A|10 1|20 2|11 3|21 4"));
  makeLayer(DIGITALMODEL, vectorSamples);
  EXPECT_EQ(handler(into)->ImportLines(into->vector(vectorLines, true), nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!Not a SAMPLE Vector");
  EXPECT_EQ(handler(into)->ImportLines(vector, project->projection()), 1);
  EXPECT_EQ(vector->FirstLine()->Type(), lineBreak);
}

TEST_F(DxfLines, PointsOutsideTheBox) {
  const Box box(10, 10, 20, 20);
  const QByteArray inside = "0 POINT|8 A|10 15|20 15";
  EXPECT_EQ(importLines(drawing(inside + "|0 POINT|8 A|10 0|20 0"), box), 1);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(report.leftOut["outside_box"], 1);
  EXPECT_EQ(importLines(drawing(inside + "|0 POINT|8 A|10 0|20 5"), box), 1);
  EXPECT_EQ(messages.take(), "Existem dados fora da área do projeto!POINTS");
  EXPECT_EQ(points(), "15,15");
}

TEST_F(DxfLines, ChosenLayers) {
  write("in.dxf", drawing("0 LINE|8 A|10 1|20 1|11 2|21 2|0 LINE|8 B|10 3|20 3|11 4|21 4"
                          "|0 LINE|8 0|10 5|20 5|11 6|21 6|0 LINE|8 D\xE7|10 7|20 7|11 8|21 8|0 MTEXT|8 B"));
  const struct {
    const char* single;
    QStringList list;
    const char* lines;
    const char* last;
  } cases[] = {
      {nullptr, {}, "1,1 2,2; 3,3 4,4; 5,5 6,6; 7,7 8,8", "D\xE7"},
      {"A", {}, "1,1 2,2", "A"},
      {"B", {"A"}, "1,1 2,2; 3,3 4,4", "A"},
      {nullptr, {"0 { DXF Default Layer }", "D\u00E7"}, "5,5 6,6; 7,7 8,8", "D\xE7"},
      {"0 { DXF Default Layer }", {}, "5,5 6,6", "0"},
  };
  for (const auto& one : cases) {
    makeLayer(THEMATICMODEL, vectorLines);
    const auto dxf = handler(into);
    if (one.single != nullptr) dxf->SetLayerName(one.single);
    SDataLayerList list;
    for (const QString& name : one.list) list.Append(new SDataLayer(name));
    dxf->SetLayerList(&list);
    EXPECT_EQ(dxf->ImportLines(vector, project->projection()), 1);
    EXPECT_EQ(lines(), one.lines);
    EXPECT_STREQ(dxf->GetLayerName(), one.last);
  }
  const auto dxf = handler(into);
  dxf->SetLayerName("none");
  EXPECT_EQ(dxf->ImportLines(vector, project->projection()), 0);
  EXPECT_EQ(messages.take(), kBad + "in.dxf - Plano vazio none");
}

TEST_F(DxfLines, VerticesOfOtherLayers) {
  write("in.dxf",
        drawing(
            "0 POLYLINE|8 B|0 VERTEX|8 A|10 1|20 1|0 VERTEX|8 A|10 2|20 2|0 SEQEND|8 A"
            "|0 POLYLINE|8 A|0 VERTEX|8 A|10 1|20 1|0 VERTEX|8 B|10 9|20 9|0 VERTEX|8 A|10 2|20 2|0 SEQEND"));
  makeLayer(THEMATICMODEL, vectorLines);
  const auto dxf = handler(into);
  dxf->SetLayerName("A");
  EXPECT_EQ(dxf->ImportLines(vector, project->projection()), 1);
  EXPECT_EQ(lines(), "1,1 2,2");
}

TEST_F(DxfLines, UnitsAndTransformation) {
  write("in.dxf", drawing("0 LINE|8 A|10 1|20 0|11 2|21 0"));
  makeLayer(THEMATICMODEL, vectorLines);
  const auto dxf = handler(into, 0, 1);
  dxf->SetTransf(10, 20, kPi / 2, 2);
  EXPECT_EQ(dxf->ImportLines(vector, project->projection()), 1);
  const double* const xy = vector->FirstLine()->coordinates();
  EXPECT_NEAR(xy[0], 10, 1e-9);
  EXPECT_NEAR(xy[1], 2020, 1e-9);
  EXPECT_NEAR(xy[3], 4020, 1e-9);
  Point point(1, 1);
  handler(into, 0, 4)->TransfDxf(point);
  EXPECT_EQ(point, Point(1, 1));
}

TEST_F(DxfLines, WhatIsNotTakenIsTold) {
  EXPECT_EQ(importLines(
                drawing("0 LWPOLYLINE|8 A|0 HATCH|8 A|0 LWPOLYLINE|8 B|0 TEXT|8 A|1 x|0 SPLINE"
                        "|0 LINE|8 A|10 1|20 2|11 3|21 4|0 ARC|8 A|10 1|0 POLYLINE|8 A|0 VERTEX|8 A|10 1|20 1"
                        "|0 INSERT|8 A|10 1|20 1|0 POLYLINE|8 A|0 VERTEX|8 A|10 0|20 1|0 SEQEND")),
            1);
  EXPECT_EQ(report.written["lines"], 1);
  EXPECT_EQ(report.leftOut["unsupported"], 5);
  EXPECT_EQ(report.leftOut["null_shape"], 2);
  EXPECT_EQ(report.leftOut["few_points"], 1);
  const QString notes = report.notes.join('\n');
  for (const char* words : {"2 LWPOLYLINE (A: 1, B: 1)", "1 HATCH (A: 1)", "1 SPLINE (0: 1)", "1 TEXT (A: 1)",
                            "inseridos: 1", "zero, que não se tomam: 1"})
    EXPECT_TRUE(notes.contains(words)) << words << " in " << notes.toStdString();
}

TEST_F(DxfLines, WhatIsTakenOtherwiseThanDrawnIsTold) {
  const QByteArray header = pairs("0 SECTION|2 HEADER|9 $DWGCODEPAGE|3 ANSI_99|0 ENDSEC");
  const QByteArray vertices = "|0 VERTEX|8 A|10 1|20 1|0 VERTEX|10 2|20 2|0 VERTEX|8 B|10 3|20 3|0 SEQEND";
  const QByteArray line = "|10 1|20 2|11 3|21 4";
  const std::pair<QByteArray, const char*> cases[] = {
      {"0 LINE|67 1|8 A" + line + "|0 LINE|67 1|8 B" + line, "papel, lidas como as outras: 1"},
      {"0 CIRCLE|8 A|10 5|20 5|40 1|230 -1.0|0 LINE|8 A" + line + "|230 -1", "como est\u00E3o: 1"},
      {"0 POLYLINE|8 A|0 VERTEX|10 1|20 1|42 .5|0 VERTEX|10 2|20 2|42 0|0 SEQEND", "lidos como retos: 1"},
      {"0 POLYLINE|8 A|70 5" + vertices, "que ficam abertas: 1"},
      {"0 POLYLINE|8 A|70 17" + vertices, "por seus v\u00E9rtices: 1"},
      {"0 POLYLINE|8 A" + vertices, "que faltam em suas polilinhas: 1"},
      {"0 LINE|8 A|10 1|20 2|11 3,5|21 1.0E 20", "at\u00E9 onde o s\u00E3o: 2, o primeiro na linha 24"},
      {"0 LINE|8 A|10 1|20 2|11 |3 |21 4", "a linha seguinte: 1, o primeiro na linha 24"},
      {"0 LINE|8 A\xE7" + line, "indicada n\u00E3o \u00E9 conhecida: ANSI_99"},
      {"0 LINE|8 A|10 1|20 2|11 1e400|21 4|0 LINE|8 A" + line, "est\u00E1 na linha 26, e a importa"},
  };
  for (const auto& [entities, note] : cases) {
    report = JobReport();
    write("in.dxf", drawing(entities, header));
    makeLayer(THEMATICMODEL, vectorLines);
    const auto dxf = handler(into);
    dxf->SetLayerName("A");
    dxf->ImportLines(vector, project->projection());
    const QString notes = report.notes.join('\n');
    EXPECT_TRUE(notes.contains(note)) << note << " in " << notes.toStdString();
  }
}

TEST_F(DxfLines, SamplesTakeHeights) {
  EXPECT_EQ(importSamples(
                drawing("0 POINT|8 A|10 1|20 2|30 5.5|0 POINT|8 A|10 3|20 4|38 7|0 POINT|8 A|10 9|20 9"
                        "|0 POINT|8 A|38 8|10 5|20 6"
                        "|0 LINE|8 A|10 1|20 2|30 1|11 3|21 4|31 20|0 LINE|8 A|10 1|20 2|11 3|21 4"
                        "|0 POLYLINE|8 A|30 3|0 VERTEX|8 A|10 1|20 1|30 40|0 VERTEX|8 A|10 2|20 2|0 SEQEND"
                        "|0 POLYLINE|8 A|38 50|0 VERTEX|8 A|10 1|20 1|0 VERTEX|8 A|10 2|20 2|0 SEQEND"
                        "|0 CIRCLE|8 A|10 5|20 5|30 60|40 1|0 ARC|8 A|10 5|20 5|40 1|50 0|51 9"
                        "|0 POINT|8 A|10 1|20 2|30 1e400|0 CIRCLE|8 A|10 5|20 5|30 nan|40 1")),
            1);
  QStringList heights;
  while (Point3d* next = heights.isEmpty() ? vector->FirstPoint3d() : vector->NextPoint3d()) {
    const std::unique_ptr<Point3d> point(next);
    heights << QString("%1,%2,%3").arg(point->x).arg(point->y).arg(static_cast<double>(point->z));
  }
  EXPECT_EQ(heights.join(' '), "1,2,5.5 3,4,7 5,6,8");
  heights.clear();
  for (Line* line = vector->FirstLine(); line != nullptr; line = vector->NextLine())
    heights << QString("%1%2").arg(line->Type()).arg(static_cast<double>(line->height));
  EXPECT_EQ(heights.join(' '), "320 340 350 360 30");
  EXPECT_EQ(report.leftOut["null_shape"], 2);
  EXPECT_EQ(report.leftOut["refused"], 2);
}

TEST_F(DxfLines, SamplesOfOtherVectors) {
  // A vector of contours takes the points, and has no place for lines.
  EXPECT_EQ(importSamples(drawing("0 POINT|8 A|10 1|20 2|30 5|0 LINE|8 A|10 1|20 2|11 3|21 4|31 20"),
                          vectorContours),
            1);
  EXPECT_EQ(vector->point3dCount(), 1);
  EXPECT_EQ(vector->lineCount(), 0);
  EXPECT_EQ(importSamples(drawing("0 POLYLINE|8 A|0 VERTEX|8 A|10 1|20 1|0 SEQEND"), vectorContours), 0);
  EXPECT_EQ(messages.take(), kBad + "in.dxf - linha 18");
  EXPECT_EQ(handler(into)->ImportSamples(into->vector(vectorTin, true), nullptr), 0);
  EXPECT_EQ(messages.take(), "Erro associado com uma restrição lógica!No SAMPLES in Vector");
}

}  // namespace
}  // namespace kaldex::test
