#include <QRegularExpression>
#include <functional>

#include "docs/ascii_examples.h"
#include "kaldex/model/text.h"

namespace kaldex::test {

namespace {

// An example is a fenced text behind a comment with its name.
const QRegularExpression kExample("<!-- example: ([a-z0-9-]+) -->\n```text\n(.*?)\n```\n",
                                  QRegularExpression::DotMatchesEverythingOption);

class AsciiPage : public AsciiExamples {
 protected:
  static QString page() {
    QFile file(KALDEX_ASCII_PAGE);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
  }
  static QMap<QString, QString> shown() {
    QMap<QString, QString> found;
    for (auto matches = kExample.globalMatch(page()); matches.hasNext();) {
      const QRegularExpressionMatch one = matches.next();
      EXPECT_FALSE(found.contains(one.captured(1))) << one.captured(1).toStdString();
      found.insert(one.captured(1), one.captured(2));
    }
    return found;
  }
};

// When the program's files have changed on purpose, a run with KALDEX_WRITE_PAGE set puts them into the page.
TEST_F(AsciiPage, ShowsWhatTheProgramWrites) {
  const QMap<QString, QString> made = examples();
  if (qEnvironmentVariableIsSet("KALDEX_WRITE_PAGE")) {
    QString text = page();
    for (auto one = made.begin(); one != made.end(); ++one) {
      const QString head = "<!-- example: " + one.key() + " -->\n```text\n";
      const int from = text.indexOf(head) + head.size();
      if (from >= head.size()) text.replace(from, text.indexOf("\n```\n", from - 1) - from, one.value());
    }
    QFile file(KALDEX_ASCII_PAGE);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
  }
  const QMap<QString, QString> found = shown();
  EXPECT_EQ(QStringList(found.keys()), QStringList(made.keys()));
  for (auto one = made.begin(); one != made.end(); ++one) {
    EXPECT_EQ(found.value(one.key()), one.value()) << one.key().toStdString();
  }
}

// What the page says is read can be read as it stands there: a reader passes over the dots in the header.
TEST_F(AsciiPage, ShowsWhatTheProgramReads) {
  messages.answer(QString(), true);
  SProjection* const target = project->projection();
  const auto lines = [&](IEAsc& in, Vector* into) { return in.ImportLines(into, target); };
  const auto points = [&](IEAsc& in, Vector* into) { return in.ImportPoint2d(into, target); };
  const auto labels = [&](IEAsc& in, Vector*) {
    return in.ImportLabelPoints(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  };
  const struct {
    const char* name;
    short model;
    std::function<int(IEAsc&, Vector*)> read;
    const char* kind;  ///< what is counted as read
    int count;
    int units = 0;
  } cases[] = {
      {"lines", THEMATICMODEL, lines, "lines", 1},
      {"lines-gms", THEMATICMODEL, lines, "lines", 1},
      {"lines-deg", THEMATICMODEL, lines, "lines", 1, 4},
      {"lines-seg", THEMATICMODEL, lines, "lines", 1, 5},
      {"network", NETWORKMODEL, lines, "lines", 2},
      {"contours", DIGITALMODEL, [&](IEAsc& in, Vector* into) { return in.ImportContourout(into, target); },
       "contours", 1},
      {"samples", DIGITALMODEL, [&](IEAsc& in, Vector* into) { return in.ImportSamples(into, target); },
       "samples", 2},
      {"points-of-classes", THEMATICMODEL, points, "points", 2},
      {"points-of-classes-by-keywords", THEMATICMODEL, points, "points", 2},
      {"points-of-objects", CADASTRALMODEL, points, "points", 2},
      {"points-of-objects-by-keywords", CADASTRALMODEL, points, "points", 2},
      {"labels-of-classes", THEMATICMODEL, labels, "labels", 2},
      {"labels-of-classes-by-keywords", THEMATICMODEL, labels, "labels", 2},
      {"labels-of-objects", CADASTRALMODEL, labels, "labels", 2},
      {"labels-of-objects-by-keywords", CADASTRALMODEL, labels, "labels", 2},
      {"swapped", CADASTRALMODEL, labels, "labels", 2},
      {"network-objects", NETWORKMODEL, labels, "labels", 2},
      {"table", CADASTRALMODEL, [&](IEAsc& in, Vector*) { return in.ImportAttributes(lots()); }, "rows", 3},
      {"texts", THEMATICMODEL,
       [&](IEAsc& in, Vector* into) {
         EntitieList texts;
         into->infoLayer()->makeText();
         return in.ImportText(&texts, target, nullptr);
       },
       "texts", 2},
  };
  const QMap<QString, QString> found = shown();
  for (const auto& one : cases) {
    report.read.clear();
    InfoLayer* const into = exampleLayer(one.model, one.name);
    const short kind = one.model != DIGITALMODEL               ? vectorLines
                       : QLatin1String(one.name) == "contours" ? vectorContours
                                                               : vectorSamples;
    fileName = one.name;
    write(fileName, found.value(one.name).toLatin1() + '\n');
    const auto in = handler(into, 0, one.units);
    EXPECT_EQ(one.read(*in, into->vector(kind, true)), 1)
        << one.name << ": " << messages.take().toStdString();
    EXPECT_EQ(report.read[one.kind], one.count) << one.name;
  }
}

}  // namespace

}  // namespace kaldex::test
