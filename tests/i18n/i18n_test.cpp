#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>
#include <algorithm>
#include <stdexcept>

#include "i18n/translation_rules.h"
#include "i18n/ts_file.h"

namespace kaldex::test {
namespace {

// KALDEX_SOURCE_DIR, KALDEX_LUPDATE and KALDEX_TRANSLATIONS come from the build.

// The texts that the sources hold now, all of them untranslated.
Translations textsOfSources() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("sources.ts"));
  const QString root = QStringLiteral(KALDEX_SOURCE_DIR "/");
  const int code = QProcess::execute(
      QStringLiteral(KALDEX_LUPDATE),
      {"-silent", "-recursive", root + "src", root + "apps", root + "include", "-ts", path});
  if (code != 0) throw std::runtime_error("lupdate failed");
  return readTsFile(path);
}

class Language : public ::testing::TestWithParam<const char*> {
 protected:
  static void SetUpTestSuite() { sources_ = textsOfSources(); }

  static Translations translations() {
    return readTsFile(QStringLiteral(KALDEX_SOURCE_DIR "/i18n/kaldex_%1.ts").arg(GetParam()));
  }

  static Translations sources_;
};

Translations Language::sources_;

TEST_P(Language, EveryTextIsTranslatedAndKeepsWhatProgramsRead) {
  for (const char* context : {"QObject", "kaldex", "DataBase", "SProjection"}) {
    EXPECT_TRUE(std::any_of(sources_.keyBegin(), sources_.keyEnd(),
                            [&](const auto& key) { return key.first == QLatin1String(context); }))
        << "no text was found in the context " << context;
  }
  const Translations known = translations();
  for (auto text = sources_.keyBegin(); text != sources_.keyEnd(); ++text) {
    const QString& source = text->second;
    const QString translation = known.value(*text);
    if (translation.isEmpty()) {
      ADD_FAILURE() << "not translated: " << qPrintable(source);
      continue;
    }
    EXPECT_EQ(flawsOf(source, translation).join(", ").toStdString(), "")
        << qPrintable(source) << "\n  became\n"
        << qPrintable(translation);
  }
}

TEST_P(Language, TheCompiledFileSaysTheSame) {
  QTranslator translator;
  ASSERT_TRUE(translator.load(QStringLiteral("kaldex_%1.qm").arg(GetParam()), KALDEX_TRANSLATIONS));
  const Translations known = translations();
  ASSERT_FALSE(known.isEmpty());
  for (auto text = known.begin(); text != known.end(); ++text) {
    const QByteArray context = text.key().first.toUtf8();
    const QByteArray source = text.key().second.toUtf8();
    EXPECT_EQ(translator.translate(context.constData(), source.constData()).toStdString(),
              text->toStdString());
  }
}

INSTANTIATE_TEST_SUITE_P(I18n, Language, ::testing::Values("en", "es"),
                         [](const auto& info) { return std::string(info.param); });

struct Pair {
  const char* source;
  const char* translation;
  const char* flaws;
};

TEST(TranslationRules, JudgeAPair) {
  const Pair pairs[] = {
      {"%1, coluna %2: %3 de 10\n", "%3 of 10: %1, column %2\n", ""},
      {"%1 de %2", "%1 of %1", "numbered placeholders"},
      {"%d classes e %s", "%s and %d classes", "printf placeholders"},
      {"%ld pontos ignorados ", "%ld points ignored", "blanks at the end"},
      {"  faltam %1", "%1 left", "blanks at the beginning"},
      {"Problemas!\n(%1)", "Problems! (%1)", "line feeds"},
      {"limite de 2 GB", "limit of 4 GB", "numbers"},
      {"use --append ou --overwrite", "use --append or --override", "options"},
      {"PERGUNTA=yes ou =no", "PREGUNTA=s\u00ed o =no", "options"},
      {"o .shx e o .shp", "the .shx and the .dbf", "file name endings"},
      {"se\u00e7\u00e3o INFO do KALDEX", "INFORMATION section of KALDEX", "names"},
      {"//Isolinhas", "Contour lines", "comment mark"},
      {"//Isolinhas", "//Isol\u00edneas", ""},
      {"//Isolinhas", "//Contour lines \u2014 heights", "Latin-1"},
      {"Cota \u2014 altura", "Height \u2014 altitude", ""},
      {"%sUNITS Metros", "%sUNITS Meters", ""},
      {"%sUNITS Metros", "%sUNITS METERS (NOT DEGREES)", "readers' words"},
      {"%sUNITS Geogr\u00e1ficas %s", "%sUnits geographic %s", "readers' words"},
  };
  for (const Pair& pair : pairs) {
    const QStringList flaws = flawsOf(QString::fromUtf8(pair.source), QString::fromUtf8(pair.translation));
    EXPECT_EQ(flaws.join(", ").toStdString(), pair.flaws) << pair.source << " -> " << pair.translation;
  }
}

}  // namespace
}  // namespace kaldex::test
