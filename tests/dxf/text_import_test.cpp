#include "dxf/dxf_fixture.h"

namespace kaldex::test {
namespace {

class DxfTexts : public DxfFixture {
 protected:
  /// Scale 1:25000: a millimetre on paper is 25 metres. The look: 3 mm at 30 degrees.
  DxfTexts() {
    into = layer(THEMATICMODEL, "texts");
    TextVisual& look = into->makeText()->visual.text;
    look.height = 3.0f;
    look.angle = 30.0f;
    look.fontName = "Serif";
    look.color = Color(9, 8, 7);
  }
  int import(const QByteArray& content, EntitieList& texts) {
    write("in.dxf", content);
    return handler(into)->ImportText(&texts, project->projection(), nullptr);
  }
  static const EText& at(EntitieList& texts, int position) {
    return *static_cast<EText*>(texts.at(position));
  }
};

TEST_F(DxfTexts, Looks) {
  EntitieList texts;
  EXPECT_EQ(import(drawing("0 TEXT|8 A|10 1|20 2|40 3|1 as it is|50 30|0 ATTRIB|8 A|10 3|20 4|40 2|1 "
                           "45%%d|41 0.5|50 90|2 TAG"
                           "|0 LINE|8 A|10 1|20 1|11 2|21 2|0 TEXT|8 A|10 5|20 6|1 \xE7\\U+4E2D"
                           "|0 TEXT|8 A|10 1|20 1|40 1e39|41 1e400|50 nan|1 odd"),
                   texts),
            1);
  ASSERT_EQ(texts.Size(), 4);
  EXPECT_EQ(at(texts, 0).String(), "as it is");
  EXPECT_EQ(at(texts, 0).Own(), 0);
  EXPECT_EQ(at(texts, 0).FontName(), "Serif");
  EXPECT_TRUE(at(texts, 0).look().color == Color(9, 8, 7));
  EXPECT_EQ(at(texts, 0).Position(), Point(1, 2));
  EXPECT_EQ(at(texts, 1).String(), "45\u00B0");
  EXPECT_EQ(at(texts, 1).Own(), 1);
  EXPECT_EQ(at(texts, 1).Height(), 50.0f);
  EXPECT_EQ(at(texts, 1).Angle(), 90.0f);
  EXPECT_EQ(at(texts, 1).Expansion(), 0.5f);
  EXPECT_EQ(at(texts, 2).String(), "\u00E7\u4E2D");
  EXPECT_EQ(at(texts, 3).Own(), 0);
  EXPECT_EQ(at(texts, 3).Height(), at(texts, 0).Height());
  EXPECT_EQ(at(texts, 3).Expansion(), 1.0f);
  EXPECT_EQ(messages.take(), "");
}

TEST_F(DxfTexts, Ends) {
  EntitieList texts;
  EXPECT_EQ(
      import(drawing("0 TEXT|8 A|10 1|20 2|1 a|0 TEXT|8 A|10 1|20 2|1  |0 TEXT|8 A|10 1|20 2|1 c"), texts),
      1);
  EXPECT_EQ(texts.Size(), 1);
  EXPECT_TRUE(report.notes.join(' ').contains("linha 24"));
  EXPECT_EQ(import(drawing("0 TEXT|8 A|10 1|20 2|1 "), texts), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!in.dxf - layer vazio A");
  EXPECT_EQ(import(pairs("0 SECTION|2 ENTITIES|0 TEXT|8 A|10 1|20 2|1 a"), texts), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!in.dxf - linha 15");
  into = layer(THEMATICMODEL, "no texts");
  EXPECT_EQ(import(drawing("0 TEXT|8 A|10 1|20 2|1 a"), texts), 0);
  EXPECT_EQ(messages.take(), "Não existe representação no Plano de Informação!text");
}

class DxfLabels : public DxfFixture {
 protected:
  /// "label:name:class ..." of what an import collects in a layer with the box 0 to 100.
  QString labelsOf(short model, const QByteArray& entities, short kind = 0, const char* prefix = "",
                   const char* suffix = "", const char* before = "", const char* behind = "") {
    write("in.dxf", drawing(entities));
    into = layer(model, QString("labels %1").arg(++made_), {0, 0, 100, 100});
    const auto dxf = handler(into);
    QByteArray words[] = {"Lotes", prefix, suffix, before, behind};
    result = dxf->ImportLabelPoints(project->projection(), nullptr, words[0].data(), &kind, words[1].data(),
                                    words[2].data(), words[3].data(), words[4].data());
    QStringList all;
    for (const SExtLabelPoint* label : dxf->labelPoints) {
      const GeoClass* const geoClass = into->category()->classes.SelectFromIndex(label->Iclass);
      all << QString("%1:%2:%3")
                 .arg(label->Label(), label->Nclass(),
                      geoClass != nullptr ? geoClass->name : QString::number(label->Iclass));
    }
    return all.join(' ');
  }
  int result = -1;

 private:
  int made_ = 0;
};

TEST_F(DxfLabels, OfObjects) {
  EXPECT_EQ(labelsOf(CADASTRALMODEL,
                     "0 TEXT|8 A|10 1|20 2|1 L1|0 TEXT|8 A|10 1|20 2|1 12|0 TEXT|8 A|10 1|20 2|1 "
                     "|0 ATTRIB|8 A|10 3|20 4|1 NAOSELECIONAR|0 TEXT|8 A|10 3|20 4|1 " +
                         QByteArray(40, 'x')),
            "L1:Lotes:-999 12:Lotes:-999 " + QString(32, 'x') + ":Lotes:-999");
  EXPECT_EQ(result, 1);
  EXPECT_EQ(messages.take(), "");
  EXPECT_EQ(labelsOf(CADASTRALMODEL,
                     "0 TEXT|8 A|10 1|20 2|1 Q1-A|0 TEXT|8 A|10 1|20 2|1 Q2|0 TEXT|8 A|10 1|20 2|1 R-A", 0,
                     "Q", "-A", "<", ">"),
            "<Q1-A>:Lotes:-999");
  EXPECT_EQ(labelsOf(CADASTRALMODEL, "0 TEXT|8 A|10 1|20 2|1 abc|0 TEXT|8 A|10 1|20 2|1 123", 2),
            "123:Lotes:-999");
  EXPECT_EQ(labelsOf(CADASTRALMODEL, "0 TEXT|8 A|10 1|20 2|1 a|0 TEXT|8 A|10 1|20 200|1 b"), "a:Lotes:-999");
  EXPECT_EQ(messages.take(), "Existem dados fora da área do projeto! 1");
  EXPECT_EQ(labelsOf(CADASTRALMODEL, "0 TEXT|8 A|10 1|20 200|1 b"), "");
  EXPECT_EQ(result, 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!in.dxf - layer vazio A");
}

TEST_F(DxfLabels, OfClasses) {
  const QByteArray entities =
      "0 TEXT|8 A|10 1|20 2|1 Mata|0 TEXT|8 A|10 2|20 2|1 Mata|0 TEXT|8 A|10 3|20 2|1 Campo";
  messages.answer("Categoria sem classes", false);
  EXPECT_EQ(labelsOf(THEMATICMODEL, entities), "");
  EXPECT_EQ(result, 0);
  EXPECT_EQ(messages.take(), "Categoria sem classes. Cria e continua ?");
  messages.forget();
  messages.answer("Categoria sem classes", true);
  messages.answer("Classe não encontrada", false);
  EXPECT_EQ(labelsOf(THEMATICMODEL, entities), "Mata:Lotes:0 Mata:Lotes:0 Campo:Lotes:0");
  EXPECT_EQ(messages.take(),
            "Categoria sem classes. Cria e continua ?\n"
            "Classe não encontrada. Adiciona TODAS as classes não encontradas ?\n"
            "Sumário:Classes não encontradas=3 e classes adicionadas=0 e visual alterados=0 ");
  messages.forget();
  messages.answer("Categoria sem classes", true);
  messages.answer("Classe não encontrada", true);
  EXPECT_EQ(labelsOf(THEMATICMODEL, entities), "Mata:Lotes:Mata Mata:Lotes:Mata Campo:Lotes:Campo");
  messages.take();
  // The classes are stored now.
  EXPECT_EQ(labelsOf(THEMATICMODEL, entities), "Mata:Lotes:Mata Mata:Lotes:Mata Campo:Lotes:Campo");
  EXPECT_EQ(messages.take(), "");
}

}  // namespace
}  // namespace kaldex::test
