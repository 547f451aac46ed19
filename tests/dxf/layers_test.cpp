#include "dxf/dxf_fixture.h"

namespace kaldex::test {
namespace {

class DxfLayers : public DxfFixture {
 protected:
  /// "name:color ..." of what GetLayers gives; "null" for null.
  QString layersOf(const QByteArray& content) {
    write("in.dxf", content);
    const std::unique_ptr<SDataLayerList> list(handler(nullptr)->GetLayers());
    if (list == nullptr) return "null";
    QStringList all;
    for (const SDataLayer* layer : *list) all << QString("%1:%2").arg(layer->Label()).arg(layer->flag1);
    return all.join(' ');
  }
  static QByteArray tables(const QByteArray& records) {
    return pairs("0 SECTION|2 TABLES" + records + "|0 ENDSEC|0 EOF");
  }
};

TEST_F(DxfLayers, TheTable) {
  const QByteArray header = pairs("0 SECTION|2 HEADER|9 $DWGCODEPAGE|3 ANSI_1251|0 ENDSEC");
  const struct {
    QByteArray content;
    QString layers;
    const char* message;
  } cases[] = {
      {tables("|0 TABLE|2 LTYPE|0 ENDTAB|0 TABLE|2 LAYER|70 2|0 LAYER|2 0|70 0|62 7|6 CONTINUOUS|0 LAYER|2 "
              "Roads|62 -3|0 ENDTAB"),
       "0 { DXF Default Layer }:7 Roads:253", ""},
      {header + tables("|0 TABLE|2 LAYER|0 LAYER|2 \xCF\xEB\xE0\xED|62 300|0 LAYER|2 \\U+4E2D|0 ENDTAB"),
       "\u041F\u043B\u0430\u043D:44 \u4E2D:0", ""},
      {tables("|0 TABLE|2 LAYER|0 ENDTAB"), "", ""},
      {pairs("0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 A|0 EOF"), "null", ""},
      {pairs("0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 A"), "null",
       "Arquivo INCONSISTENTE!in.dxf - linha 13"},
      // No table of layers: what the pairs say, without consecutive repeats.
      {pairs("0 SECTION|2 TABLES|0 ENDSEC|0 SECTION|2 ENTITIES|0 LINE|8 A|0 LINE|8 A|0 LINE|8 0|0 LINE|8 A|0 "
             "EOF"),
       "A:0 0 { DXF Default Layer }:0 A:0", ""},
      {tables(""), "null", "Arquivo sem \"SECTION TABLE\", digite o nome do plano requerido no campo PI."},
      {drawing("0 LINE|8 A"), "null",
       "Arquivo sem \"SECTION TABLE\", digite o nome do plano requerido no campo PI."},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(layersOf(one.content), one.layers) << one.content.toStdString();
    EXPECT_EQ(messages.take(), one.message);
  }
}

TEST_F(DxfLayers, Contents) {
  const QByteArray entities =
      "0 LINE|8 A|0 LWPOLYLINE|8 A|0 POLYLINE|8 A|0 VERTEX|8 A|0 VERTEX|8 A|0 SEQEND|8 A|0 ARC|8 B|0 "
      "CIRCLE|8 A"
      "|0 POINT|8 A|0 INSERT|8 B|0 ATTRIB|8 A|0 TEXT|8 A|0 TEXT|8 C";
  write("in.dxf", drawing(entities, pairs("0 SECTION|2 BLOCKS|0 BLOCK|8 A|0 LINE|8 A|0 ENDBLK|0 ENDSEC")));
  const struct {
    const char* single;
    const char* listed;
    const char* counts;
  } cases[] = {{nullptr, nullptr, "1 3 2 3"},
               {"A", nullptr, "1 2 1 2"},
               {"A", "B", "1 3 2 2"},
               {"none", nullptr, "0 0 0 0"}};
  for (const auto& one : cases) {
    const auto dxf = handler(nullptr);
    if (one.single != nullptr) dxf->SetLayerName(one.single);
    SDataLayerList list;
    if (one.listed != nullptr) list.Append(new SDataLayer(one.listed));
    dxf->SetLayerList(&list);
    int lines = -1, polylines = -1, points = -1, texts = -1;
    EXPECT_EQ(dxf->GetLayerContents(lines, polylines, points, texts), 1);
    EXPECT_EQ(QString("%1 %2 %3 %4").arg(lines).arg(polylines).arg(points).arg(texts), one.counts);
  }
  int counts[4];
  write("in.dxf", pairs("0 LINE|8 A"));
  EXPECT_EQ(handler(nullptr)->GetLayerContents(counts[0], counts[1], counts[2], counts[3]), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!in.dxf - linha 5");
}

TEST_F(DxfLayers, NamesOfWrittenLayers) {
  const struct {
    QByteArray name;
    QByteArray read;
    QByteArray written;
  } cases[] = {
      {"Rio Grande", "Rio Grande", "RioGrande"},
      {"0 { DXF Default Layer }", "0", "0_DXFDefaultLayer_"},
      {"a!@#$%&*()+=|{}[];:\"'<>,.?/\\b-_~", "a!@#$%&*()+=|{}[];:\"'<>,.?/\\b-_~",
       "a" + QByteArray(27, '_') + "b-_~"},
      {QByteArray(200, 'x'), QByteArray(200, 'x'), QByteArray(150, 'x')},
  };
  for (const auto& one : cases) {
    const auto dxf = handler(nullptr);
    dxf->SetLayerName(one.name.constData());
    EXPECT_EQ(QByteArray(dxf->GetLayerName()), one.read);
    EXPECT_EQ(QByteArray(dxf->IEDlayerok.get()), one.written);
  }
}

TEST_F(DxfLayers, PairsOneByOne) {
  write("in.dxf", pairs("0 SECTION|2 HEADER|9 $X|1 |0 ENDSEC") + drawing("0 LINE|8 A"));
  const auto dxf = handler(nullptr);
  EXPECT_EQ(dxf->ReadLine(), 0);
  ASSERT_EQ(dxf->FileOpen("r"), 1);
  EXPECT_EQ(dxf->NextSection(), 1);
  EXPECT_EQ(dxf->currentSection(), 'H');
  EXPECT_STREQ(dxf->line, "HEADER");
  EXPECT_EQ(dxf->ReadLine(), 1);
  EXPECT_EQ(dxf->groupCode(), 9);
  EXPECT_EQ(dxf->SearchSection('T'), 0);
  EXPECT_EQ(dxf->currentSection(), 'E');
  EXPECT_EQ(dxf->NextSection(), 1);
  EXPECT_STREQ(dxf->line, "LINE");
  EXPECT_EQ(dxf->SearchSection('F'), 1);
  EXPECT_EQ(dxf->lineCount(), 22);
  EXPECT_EQ(dxf->ReadLine(), 0);
  dxf->FileClose();
}

TEST_F(DxfLayers, Outline) {
  write("in.dxf",
        pairs("0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|9 $INSUNITS|70 4|0 ENDSEC"
              "|0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 A|62 -3|0 LAYER|2 empty|0 ENDTAB|0 ENDSEC"
              "|0 SECTION|2 BLOCKS|0 LINE|8 A|10 99|20 99|11 98|21 98|0 ENDSEC") +
            drawing("0 LINE|8 A|10 1|20 2|11 3|21 9|0 CIRCLE|8 B|10 0|20 0|40 5|0 MTEXT|8 B|10 77|20 77"
                    "|0 POLYLINE|8 A|10 0|20 0|0 VERTEX|8 A|10 -4|20 4|0 SEQEND|0 POINT|10 6|20 6"));
  const DxfOutline outline(path("in.dxf"));
  QStringList all;
  for (const DxfOutline::Layer& layer : outline.layers()) {
    QStringList counts;
    for (auto kind = layer.entities.begin(); kind != layer.entities.end(); ++kind)
      counts << QString("%1 %2").arg(kind.value()).arg(kind.key());
    all << QString("%1 %2 %3: %4")
               .arg(layer.name)
               .arg(layer.color)
               .arg(layer.declared)
               .arg(counts.join(", "));
  }
  EXPECT_EQ(all.join("; "),
            "A -3 1: 1 LINE, 1 POLYLINE; empty 0 1: ; B 0 0: 1 CIRCLE, 1 MTEXT; 0 0 0: 1 POINT");
  EXPECT_TRUE(outline.box({"A"}) == Box(-4, 2, 3, 9));
  EXPECT_TRUE(outline.box() == Box(-5, -5, 6, 9));
  EXPECT_TRUE(outline.box({"empty"}).isInverted());
  EXPECT_EQ(outline.count("LINE", {"A", "B"}), 1);
  EXPECT_EQ(outline.version(), "AC1009");
  EXPECT_EQ(outline.unitsCode(), 4);
  EXPECT_TRUE(outline.has("empty"));
  EXPECT_FALSE(outline.has("C"));
  EXPECT_TRUE(outline.has("0 { DXF Default Layer }"));
  EXPECT_EQ(outline.count("POINT", {"0 { DXF Default Layer }"}), 1);
}

TEST_F(DxfLayers, OutlineOfWhatCanBeTaken) {
  write("in.dxf", drawing("0 POINT|8 A|10 1|20 2|0 POINT|8 A|10 1e400|20 2|0 CIRCLE|8 A|10 1|20 2|40 1e400"
                          "|0 ATTRIB|8 B|1 |0 TEXT|8 A|1 x|0 TEXT|8 B|1 y|0 TEXT|8 C|1 "));
  const DxfOutline outline(path("in.dxf"));
  EXPECT_TRUE(outline.box() == Box(1, 2, 1, 2));
  EXPECT_TRUE(outline.hasTexts({"A"}));
  EXPECT_TRUE(outline.hasTexts({"A", "C"}));
  EXPECT_FALSE(outline.hasTexts({"A", "B"}));
  EXPECT_FALSE(outline.hasTexts({"C"}));
  EXPECT_FALSE(outline.hasTexts());
  write("in.dxf", pairs("0 SECTION|2 HEADER|9 $X|1 |0 ENDSEC|0 POINT|8 A|10 1|20 2|0 EOF"));
  EXPECT_EQ(DxfOutline(path("in.dxf")).count("POINT"), 1);
  EXPECT_TRUE(DxfOutline(path("in.dxf")).isComplete());
  write("in.dxf", pairs("0 POINT|8 A|10 1|20 2"));
  EXPECT_FALSE(DxfOutline(path("in.dxf")).isComplete());
}

}  // namespace
}  // namespace kaldex::test
