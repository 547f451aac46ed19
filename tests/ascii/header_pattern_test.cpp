#include "lib/ascii/header_pattern.h"

#include <gtest/gtest.h>

#include <QRegExp>
#include <QStringList>

namespace kaldex::test {

namespace {

QStringList byPattern(const HeaderPattern& pattern, const QString& text) {
  QStringList values;
  for (const std::string& value : pattern.match(text.toLatin1().toStdString())) {
    values << QString::fromLatin1(value.c_str());
  }
  return values;
}

QStringList byExpression(const QString& expression, const QString& text) {
  QRegExp matcher(expression);
  matcher.indexIn(text);
  QStringList values;
  for (const QString& value : matcher.capturedTexts().mid(1)) values << value.trimmed();
  return values;
}

// The walk backwards gives what the regular expressions that define the values give, also on texts with
// several headers and on torn ones.
TEST(HeaderPattern, AgreesWithItsRegularExpression) {
  const QString box = "BOX\t1.5, -2, 3, 4.25\nUNITS Metros\n";
  const QString datum =
      "DATUM\tSAD69, Prd 6378160.0, Pflt 0.003, Pdx -67.3, Pdy 3.8, Pdz -41.20000000\nOFFSETX ";
  const QStringList texts = {box,
                             "x" + box + "12 13\n, " + box,
                             "BOX\t1, 2, 3\nUNITS",
                             "BOX\t1, 2, 3, 4",
                             "BOX\t, , , , , , ,\n\nUNITS\nUNITS",
                             datum,
                             datum + datum,
                             "DATUM\tA, Prd 1, Pflt 2, Pdx 3, Pdy 4, Pdz 5\nOFFSETX",
                             "DATUM\tA, Prd 1, Pflt 2, Pdx 3, Pdy 4, Pdz --567",
                             "DATUM\tA, Prd 1, Pflt 2, Pdx 3, Pdy 4, Pdz 56",
                             ""};
  const HeaderPattern plane({"BOX\t", ",~", ",~", ",~", "\nUNITS"});
  const HeaderPattern shifts({"DATUM\t", ",~Prd~", ",~Pflt~", ",~Pdx~", ",~Pdy~", ",~Pdz~"},
                             HeaderPattern::Tail::number);
  for (const QString& text : texts) {
    EXPECT_EQ(byPattern(plane, text), byExpression("BOX\\t(.+),\\s(.+),\\s(.+),\\s(.+)\\nUNITS", text))
        << text.toStdString();
    EXPECT_EQ(
        byPattern(shifts, text),
        byExpression(
            "DATUM\\t(.+),\\sPrd\\s(.+),\\sPflt\\s(.+),\\sPdx\\s(.+),\\sPdy\\s(.+),\\sPdz\\s([-]*\\w+.\\w+)",
            text))
        << text.toStdString();
  }
}

}  // namespace

}  // namespace kaldex::test
