#include "kaldex/model/text.h"

#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class AsciiTexts : public AsciiFixture {
 protected:
  /// Scale 1:25000: a millimetre on paper is 25 metres.
  InfoLayer* textLayer(const QString& name, Project* of = nullptr) {
    InfoLayer* const made = layer(THEMATICMODEL, name, {0, 0, 1e7, 1e8}, of);
    TextVisual& look = made->makeText()->visual.text;
    look.height = 3.0f;
    look.angle = 30.0f;
    look.thickness = 0.2f;
    look.fontName = "Serif";
    look.color = Color(9, 8, 7);
    return made;
  }
  int import(InfoLayer* into, const QByteArray& content, EntitieList& texts,
             GeneralVisual* visual = nullptr) {
    write("file.txt", content);
    return handler(into)->ImportText(&texts, project->projection(), visual);
  }
  static const EText& at(EntitieList& texts, int position) {
    return *static_cast<EText*>(texts.at(position));
  }
};

TEST_F(AsciiTexts, Records) {
  InfoLayer* const into = textLayer("T");
  EntitieList texts;
  EXPECT_EQ(import(into,
                   "TEXT\nINFO\nINFO_END\n"
                   "1;2;so o texto\n"
                   "3;4;do plano;30.000000;0.200000;;9;8;7;0;0; Mono\n"
                   "5;6;altura;;;3\n"
                   "7;8;tudo;45;0.4;2;1;2;3;4;5;Mono;mais\n"
                   "o 45 30 10 ; s 23 10 5 ; \xE1ngulo\n"
                   "0;2;x\n1;0;x\n1;2; \n1;2\nx;1;2\no 99;s 1;x\n"
                   "END",
                   texts),
            1);
  EXPECT_EQ(messages.take(), "Formato inválido!6 linhas");
  ASSERT_EQ(texts.Size(), 5);
  EXPECT_EQ(at(texts, 0).Own(), 0);
  EXPECT_EQ(at(texts, 0).String(), "so o texto");
  EXPECT_EQ(at(texts, 1).Own(), 0);
  EXPECT_EQ(at(texts, 1).FontName(), "Mono");
  EXPECT_EQ(at(texts, 2).Own(), 1);
  EXPECT_EQ(at(texts, 2).Height(), 75.0f);
  EXPECT_EQ(at(texts, 2).Angle(), 30.0f);
  const EText& whole = at(texts, 3);
  EXPECT_EQ(whole.Own(), 1);
  EXPECT_EQ(whole.Angle(), 45.0f);
  EXPECT_EQ(whole.Thickness(), 10.0f);
  EXPECT_EQ(whole.Height(), 50.0f);
  EXPECT_TRUE(whole.look().color == Color(1, 2, 3));
  EXPECT_EQ(whole.look().horizontalAlignment, 4);
  EXPECT_EQ(whole.look().verticalAlignment, 5);
  EXPECT_EQ(at(texts, 4).String(), "ángulo");
  EXPECT_GT(at(texts, 4).Position().y, 7e6);
}

TEST_F(AsciiTexts, ReplacedLook) {
  GeneralVisual visual;
  visual.text.height = 4.0f;
  visual.text.angle = 10.0f;
  visual.text.fontName = "Outra";
  EntitieList texts;
  EXPECT_EQ(import(textLayer("T"), "TEXT\n1;2;a;45;;9;1;1;1\nEND", texts, &visual), 1);
  ASSERT_EQ(texts.Size(), 1);
  EXPECT_EQ(at(texts, 0).Height(), 100.0f);
  EXPECT_EQ(at(texts, 0).Angle(), 10.0f);
  EXPECT_EQ(at(texts, 0).FontName(), "Outra");
  EXPECT_TRUE(at(texts, 0).look().color == visual.text.color);
}

TEST_F(AsciiTexts, Failures) {
  InfoLayer* const into = textLayer("T");
  EntitieList texts;
  const std::pair<QByteArray, QString> cases[] = {
      {"LINES\n1;2;a\nEND", ""}, {"TEXT\n1;2;a\n", kBad + "END ???"}, {"TEXT\n1;2;a", kBad + " FEOF"}};
  for (const auto& [content, shown] : cases) {
    EXPECT_EQ(import(into, content, texts), 0) << content.constData();
    EXPECT_EQ(messages.take(), shown) << content.constData();
  }
  EXPECT_EQ(import(layer(THEMATICMODEL, "sem"), "TEXT\n1;2;a\nEND", texts), 0);
  EXPECT_EQ(messages.take(), "Não existe representação no Plano de Informação!text");
  EXPECT_EQ(handler(into)->ExportText(nullptr), 0);
  EXPECT_EQ(handler(into)->ImportText(nullptr, nullptr, nullptr), 0);
  messages.take();
}

TEST_F(AsciiTexts, TellsWhatDoesNotComeBackAsItWas) {
  EntitieList texts;
  for (const char* string : {"km 1,5", "a, b,1", "x;y", "a\nb"}) {
    auto text = std::make_unique<EText>();
    text->Position(Point(1, 2));
    text->String(string);
    texts.Append(text.release());
  }
  EXPECT_EQ(handler(textLayer("T"))->ExportText(&texts), 1);
  EXPECT_TRUE(read("file.txt").contains(";a b; "));
  EXPECT_EQ(report.notes,
            QStringList({"Textos com o separador ou com fim de linha, que não voltarão como são: 2",
                         "Valores com uma vírgula entre dígitos, que a leitura troca por um ponto: 1"}));
}

TEST_F(AsciiTexts, RecordsOfBothKindsOfLooks) {
  EntitieList texts;
  for (const short own : {1, 0}) {
    auto text = std::make_unique<EText>();
    text->Position(Point(500000, 7000000));
    text->String(QString("Rua %1, nº 3").arg(1 - own));
    text->Own(own);
    text->Height(50.0f);
    text->Thickness(5.0f);
    text->FontName("Mono");
    const Color color(10, 20, 0);
    text->SetColor(&color);
    text->SetAlignment(1, 2);
    texts.Append(text.release());
  }
  EXPECT_EQ(handler(textLayer("T"))->ExportText(&texts), 1);
  const QByteArray file = read("file.txt");
  EXPECT_TRUE(
      file.contains("\nSEPARATOR ;\n//Formato coordx ; coordy ; texto ; ang ; espessura ; altura ; "
                    "cor-R ; cor-G ; cor-B ; alinha-H ; alinha-V ; fonte\n//Campos obrigat\xF3rios - "
                    "coordx ; coordy ; texto\nINFO_END\n"));
  EXPECT_TRUE(
      file.contains("\n500000.000000  ;  7000000.000000;Rua 0, n\xBA 3; 0.000000 ; 0.200000 ; 2.000000 "
                    "; 10 ; 20 ; 0 ; 1 ; 2 ; Mono"));
  EXPECT_TRUE(file.contains(";Rua 1, n\xBA 3; 30.000000 ; 0.200000 ; 3.000000 ; 9 ; 8 ; 7 ; 0 ; 0 ; Serif"));
}

}  // namespace

}  // namespace kaldex::test
