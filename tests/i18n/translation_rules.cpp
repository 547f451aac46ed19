#include "i18n/translation_rules.h"

#include <QRegularExpression>

namespace kaldex::test {

namespace {

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

}  // namespace

QStringList flawsOf(const QString& source, const QString& translation) {
  QStringList flaws;
  for (const Kept& what : kept) compare(what, source, translation, flaws);
  const bool isExported = source.startsWith(QLatin1String("//")) || source.startsWith(QLatin1String("%s"));
  if (!isExported) return flaws;
  compare(readersWords, source, translation, flaws);
  if (QString::fromLatin1(translation.toLatin1()) != translation) flaws << QStringLiteral("Latin-1");
  return flaws;
}

}  // namespace kaldex::test
