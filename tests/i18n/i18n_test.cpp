#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <algorithm>
#include <stdexcept>

namespace kaldex::test {
namespace {

// Translations by context and source text; an unfinished one is empty.
using Translations = QMap<QPair<QString, QString>, QString>;

// The messages of a Qt translation source file. Throws std::runtime_error when it can't be read.
Translations readTsFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + path.toStdString());
  QXmlStreamReader xml(&file);
  Translations all;
  QString context, source;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QLatin1String("name")) {
      context = xml.readElementText();
    } else if (xml.name() == QLatin1String("source")) {
      source = xml.readElementText();
    } else if (xml.name() == QLatin1String("translation")) {
      const bool finished = xml.attributes().value(QLatin1String("type")).isEmpty();
      const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
      all.insert({context, source}, finished ? text : QString());
    }
  }
  if (xml.hasError()) throw std::runtime_error(path.toStdString() + ": " + xml.errorString().toStdString());
  return all;
}

enum class Order { matters, isFree };

// Something that a text and its translation must hold alike.
struct Kept {
  Kept(const char* name, const char* pattern, Order order)
      : what(QString::fromLatin1(name)),
        expression(QString::fromLatin1(pattern), QRegularExpression::UseUnicodePropertiesOption),
        order(order) {}

  QString what;
  QRegularExpression expression;
  Order order;
};

const Kept kept[] = {
    {"blanks at the beginning", R"(\A\s+)", Order::matters},
    {"blanks at the end", R"(\s+\z)", Order::matters},
    {"comment mark", R"(\A//)", Order::matters},
    {"line feeds", R"(\n)", Order::matters},
    // Filled in one after the other.
    {"printf placeholders", R"(%l?[a-z])", Order::matters},
    {"numbered placeholders", R"(%L?\d{1,2})", Order::isFree},
    {"numbers", R"((?<![%\d])\d+)", Order::isFree},
    {"options", R"((?<![\w-])--?[a-z][a-z-]*|=(?:yes|no)\b)", Order::isFree},
    {"file name endings", R"(\.[a-z]{3,4}\b)", Order::isFree},
    {"names", R"(\b(?:KALDEX|kaldex|KDX|COTA|INFO|BOX|EPSG|PROJ|WKT|JSON|SHAPE TYPE VALUE)\b)",
     Order::isFree},
};

// What readers look for anywhere in a header, be it part of another word.
const Kept readersWords = {"readers' words",
                           "UNITS|DEG|SEG|GMS|BOX|PROJECTION|DATUM|HEMIS|Prd|OFFSETX|OFFSETY|SCALE|INFO|END|"
                           "GRIDDEF|GRIDCLASS",
                           Order::matters};

QStringList found(const Kept& what, const QString& text) {
  QStringList all;
  auto matches = what.expression.globalMatch(text);
  while (matches.hasNext()) all << matches.next().captured();
  if (what.order == Order::isFree) all.sort();
  return all;
}

void compare(const Kept& what, const QString& source, const QString& translation, QStringList& flaws) {
  if (found(what, source) != found(what, translation)) flaws << what.what;
}

// What a translation changes that programs, and not only people, depend on; empty when it is all right. Texts
// of exported files, which are those that begin with "//" or "%s", must besides go into Latin-1 and neither
// lose nor gain a word that a reader of such files looks for.
QStringList flawsOf(const QString& source, const QString& translation) {
  QStringList flaws;
  for (const Kept& what : kept) compare(what, source, translation, flaws);
  const bool isExported = source.startsWith(QLatin1String("//")) || source.startsWith(QLatin1String("%s"));
  if (!isExported) return flaws;
  compare(readersWords, source, translation, flaws);
  if (QString::fromLatin1(translation.toLatin1()) != translation) flaws << QStringLiteral("Latin-1");
  return flaws;
}

// KALDEX_SOURCE_DIR and KALDEX_LUPDATE come from the build.

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
