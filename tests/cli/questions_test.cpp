#include "cli/cli_fixture.h"

namespace kaldex::test {
namespace {

/// The question is whether inner polygons that are there twice are to be cleaned.
class QuestionsTest : public CliTest {
 protected:
  QuestionsTest() { writeParcels(); }

  Outcome import(const QStringList& more, int code) const {
    return runJson(QStringList{"import", "shapefile", "polygons", "lots.shp", "base.gpkg", "p/l"} + more,
                   code);
  }
  static QJsonObject onlyQuestion(const Outcome& done) {
    const QJsonArray questions = done.json()["questions"].toArray();
    EXPECT_EQ(questions.size(), 1) << done.out.toStdString();
    return questions.at(0).toObject();
  }
};

constexpr char kQuestion[] = "Limpa os polígonos internos duplicados ?";

TEST_F(QuestionsTest, WhatNobodyAnswersStopsEverything) {
  const Outcome refused = import({"--lang", "pt", "--keep-partial"}, 3);
  EXPECT_EQ(refused.json()["result"].toString(), QString("refused"));
  EXPECT_EQ(onlyQuestion(refused)["text"].toString(), QString(kQuestion));
  EXPECT_TRUE(onlyQuestion(refused)["answer"].isNull());
  EXPECT_TRUE(refused.err.contains(kQuestion)) << refused.err.toStdString();
  EXPECT_TRUE(isEmpty());
}

TEST_F(QuestionsTest, YesAndNoAnswerAndSpecialAnswersWin) {
  EXPECT_EQ(onlyQuestion(import({"--yes"}, 0))["answer"].toString(), QString("yes"));
  // A No after which the import goes on is no refusal.
  const Outcome no = import({"--no"}, 0);
  EXPECT_EQ(onlyQuestion(no)["answer"].toString(), QString("no"));
  EXPECT_EQ(no.json()["result"].toString(), QString("done"));
  EXPECT_EQ(onlyQuestion(import({"--no", "--answer", "Limpa os=yes"}, 0))["answer"].toString(),
            QString("yes"));
  EXPECT_EQ(onlyQuestion(import({"--yes", "--answer", "Outra=yes", "--answer", "Limpa=não"}, 0))["answer"]
                .toString(),
            QString("no"));
}

TEST_F(QuestionsTest, AnswersGoByTheShownTextOrItsSource) {
  for (const char* const language : {"en", "es"}) {
    const QString shown = onlyQuestion(import({"--lang", language}, 3))["text"].toString();
    EXPECT_NE(shown, QString(kQuestion)) << "no translation was loaded";
    import({"--lang", language, "--answer", shown.left(8) + "=yes"}, 0);
    import({"--lang", language, "--answer", "Limpa os=no"}, 0);
    import({"--lang", language, "--answer", "Something else=yes"}, 3);
  }
}

TEST_F(QuestionsTest, ANoThatEndsTheImportIsARefusal) {
  const Outcome refused = import({"--model", "cadastral", "--no"}, 3);
  EXPECT_EQ(refused.json()["result"].toString(), QString("refused"));
  EXPECT_EQ(onlyQuestion(refused)["answer"].toString(), QString("no"));
  EXPECT_TRUE(isEmpty());
}

TEST_F(QuestionsTest, ObjectsComeWithTheirAttributes) {
  const Outcome done = import({"--model", "cadastral", "--yes"}, 0);
  EXPECT_EQ(done.json()["questions"].toArray().size(), 2);
  EXPECT_EQ(done.json()["encoding"].toObject()["reason"].toString(), QString("bytes"));
  const QJsonObject made = layer("p/l");
  EXPECT_EQ(made["counts"].toObject()["objects"].toInt(), 2);
  const QJsonArray columns = made["columns"].toArray();
  ASSERT_EQ(columns.size(), 2);
  EXPECT_EQ(columns[0].toObject()["name"].toString(), QString("OWNER"));
  EXPECT_EQ(columns[0].toObject()["type"].toString(), QString("text"));
  EXPECT_EQ(columns[0].toObject()["size"].toInt(), 12);
  EXPECT_EQ(columns[1].toObject()["type"].toString(), QString("real"));
  EXPECT_EQ(columns[1].toObject()["decimals"].toInt(), 2);
}

TEST_F(QuestionsTest, AKindThatTheFileDoesNotHold) {
  const Outcome failed =
      runJson({"import", "shapefile", "points", "lots.shp", "base.gpkg", "p/l", "--yes"}, 1);
  EXPECT_EQ(failed.json()["messages"].toArray().size(), 1);
  EXPECT_TRUE(isEmpty());
}

}  // namespace
}  // namespace kaldex::test
