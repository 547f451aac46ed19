#include "csv/csv_fixture.h"
#include "kaldex/csv.h"

namespace kaldex::test {

namespace {

class CsvSurveyed : public CsvFixture {
 protected:
  /// "kind line:column", in order.
  QString survey(const QByteArray& content, const CsvQuestion& question = {}) {
    write("t.csv", content);
    const CsvSurvey found(path("t.csv"), question);
    EXPECT_TRUE(found.isReadable());
    QStringList list;
    for (const CsvFinding& one : found.findings()) {
      list << QString("%1 %2:%3").arg(one.kind).arg(one.line).arg(one.column);
    }
    return list.join("\n");
  }
  QString clean(const QByteArray& content, const CsvQuestion& question = {}) {
    write("t.csv", content);
    CsvCleaner cleaner(question);
    QString error;
    EXPECT_TRUE(cleaner.clean(path("t.csv"), path("out.csv"), error)) << error.toStdString();
    changes = QString("%1 %2").arg(cleaner.changedFields()).arg(cleaner.changedRows());
    const QByteArray plain = read("out.csv");
    EXPECT_EQ(survey(plain, question).remove(QRegExp("6 \\d+:\\d+")), "") << plain.toStdString();
    return QString::fromLatin1(plain);
  }

  QString changes;
};

TEST_F(CsvSurveyed, TellsWhatATableCantCarry) {
  CsvQuestion any, names, key, first, none, semicolon, tab;
  any.anySeparator = names.shortNames = first.needsFirst = true;
  key.key = "NUM";
  none.separator = "";
  semicolon.separator = ";";
  tab.separator = "\t";
  const int longest = 28671;
  const struct {
    QByteArray content;
    CsvQuestion question;
    QString found;
  } cases[] = {
      {"a;b\n1;2\n\n// ;;;\n  3;4", {}, ""},
      {"\357\273\277a;b\n1;2\n", {}, "0 1:1"},
      {QByteArray("\xff\xfe"
                  "a\0",
                  4),
       {},
       "1 1:1"},
      {QByteArray("a\0;\0b\0\n\0", 8), {}, "1 1:1"},
      {"a;b\n1;2\r\n3;4\r\n", {}, "2 2:4\n2 3:4"},
      {QByteArray("a;b\n1\0;2\n", 9), {}, "3 2:2"},
      {"a;b;c\n1;\"x;y\";2\n", {}, "4 2:5"},
      {"a;b\n1;\"x\ny\";2\n", {}, "5 2:3"},
      {"a;b\n1;\"x\"\n1;5\" pipe\n", {}, "6 2:3"},
      {"a;b\n1;2,5\n1;x|y\n", any, "7 2:4\n7 3:4"},
      {"a;b\n1;2,5\n", {}, ""},
      {"a;b\n1\n1;2;3\n1;\n", {}, "8 2:1\n8 3:1"},
      {"a;;b\n1;2;3\n", semicolon, "9 1:3"},
      {"populacao90;POPULACAO91\n1;2\n", names, "10 1:13"},
      {"populacao90;POPULACAO91\n1;2\n", {}, ""},
      {"num;b\n ;2\n1;\n", key, "11 2:2"},
      {"a;b\n;2\n", first, "12 2:1"},
      {"a;b\n1;" + QByteArray(40000, 'x') + "\n1\n", {}, "13 2:1\n8 3:1"},
      {"a;b\n1;" + QByteArray(longest - 1, 'x'), {}, "13 2:1"},
      {"a;b\n1;" + QByteArray(longest - 2, 'x') + "\n", {}, ""},
      {"a;b\n // " + QByteArray(40000, 'x') + "\n1;2\n", {}, ""},
      {"a;b\n1,2;3\n", none, ""},
      {"  a;;b\n1;2;3\n", semicolon, "9 1:5"},
      {"a;b\n  ,1;2\n  1,1;2\n", any, "7 3:4"},
      {"\"a,b\";c\n1;2\n", {}, "6 1:1"},
      {"a\tb\tc\n1\t\t\"x\"\n\t2\t3\n", tab, "6 2:4\n8 3:2"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(survey(one.content, one.question), one.found) << one.content.left(40).toStdString();
  }
  QByteArray many = "a;b\n";
  for (int i = 0; i < 100; ++i) many += "1\n";
  write("t.csv", many);
  const CsvSurvey survey(path("t.csv"), {});
  EXPECT_EQ(survey.findings().size(), 5u);
  EXPECT_EQ(survey.count(CsvFinding::ragged), 100);
  EXPECT_EQ(survey.rows(), 100);
  EXPECT_FALSE(survey.isPlain());
  EXPECT_FALSE(CsvSurvey(path("nothing"), {}).isReadable());
}

TEST_F(CsvSurveyed, LearnsColumns) {
  write("t.csv", "Nome longo ; Num\n Ana Maria;7\nB;12345\n");
  CsvQuestion question;
  question.key = "2";
  const CsvSurvey survey(path("t.csv"), question);
  ASSERT_EQ(survey.columns().size(), 2u);
  EXPECT_EQ(survey.separator(), ";");
  EXPECT_EQ(survey.columns()[0].name, "Nome longo");
  EXPECT_EQ(survey.columns()[0].longestValue, 9);
  EXPECT_EQ(survey.columns()[1].longestValue, 5);
  EXPECT_EQ(survey.keyColumn(), 2);
}

TEST_F(CsvSurveyed, CleansQuotes) {
  EXPECT_EQ(clean("\"a\";b\r\n\"x;y\";\"say \"\"hi\"\"\"\r\n\"two\nlines\" ; 5\" pipe\r\n"),
            "a;b\nx y;say \"hi\"\ntwo lines;5\" pipe");
  EXPECT_EQ(changes, "1 0");
  EXPECT_EQ(clean("a,b\n1\n1,2,,\n\"1\"\"2\",\n"), "a,b\n1,\n1,2\n1\"2,");
  EXPECT_EQ(changes, "0 2");
  CsvQuestion question;
  question.anySeparator = question.shortNames = question.needsFirst = question.wholeWords = true;
  EXPECT_EQ(clean("pop total 1;pop total 2;;0\n1,5;a|b;;\n;;;\n", question),
            "pop_total_1;pop_tot1;COL1;COL2\n1.5;a b;;\n0;;;");
  question.wholeWords = false;
  EXPECT_EQ(clean("sep=\t\na b\tc;d\n1,5\t2\n", question), "a b;c d\n1.5;2");
  CsvQuestion comma;
  comma.newSeparator = ";";
  write("t.csv", "a,b\n\"x,y\",u;v\n");
  QString error;
  EXPECT_TRUE(CsvCleaner(comma).clean(path("t.csv"), path("out.csv"), error));
  EXPECT_EQ(read("out.csv"), "a;b\nx y;u v");
  CsvQuestion tab;
  tab.separator = "\t";
  EXPECT_EQ(clean("a\tb\tc\n1\t\t\"x\ty\"\n", tab), "a\tb\tc\n1\t\tx y");
  write("t.csv", "a;b\n1;2\n1;\"x\ny\nz");
  EXPECT_FALSE(CsvCleaner(CsvQuestion()).clean(path("t.csv"), path("out.csv"), error));
  EXPECT_EQ(error, "Aspas ou linha sem fim, que começam na linha 3");
  EXPECT_FALSE(CsvCleaner(CsvQuestion()).clean(path("t.csv"), "/dev/full", error));
  // A quote that is closed too late for a record.
  write("t.csv", "a;b\n1;\"x" + QByteArray(40000, '\n') + "y\"\n");
  EXPECT_FALSE(CsvCleaner(CsvQuestion()).clean(path("t.csv"), path("out.csv"), error));
  EXPECT_EQ(error, "Aspas ou linha sem fim, que começam na linha 2");
}

TEST_F(CsvSurveyed, CleansWhatReadersWouldNotSee) {
  EXPECT_EQ(clean("// c\n\n a;b\n//" + QByteArray(60000, 'x') + "\n\"//y\";1\n//z\n"), "a;b\n/ y;1");
  EXPECT_EQ(changes, "1 0");
  EXPECT_EQ(clean("a\n\"\"\n1\n\"\"\n"), "a\n1");
  EXPECT_EQ(changes, "0 2");
  EXPECT_EQ(clean("x;\"//y\"\n1;2\n"), "x;/_y\n1;2");
  // What spreadsheets are told, and separators in a header's quotes.
  EXPECT_EQ(clean("SEP=|\r\na,b|c\n1|2\n"), "a b|c\n1|2");
  EXPECT_EQ(clean("\"a,b\";c\n1;2\n\"x,1\";2\n"), "a b;c\n1;2\nx,1;2");
  QByteArray header, row;
  for (int i = 0; i < 2000; ++i) {
    header += "quantid" + QByteArray::number(i) + ";";
    row += "1;";
  }
  clean(header + "\n" + row + "\n", [] {
    CsvQuestion question;
    question.shortNames = true;
    return question;
  }());
}

TEST_F(CsvSurveyed, AFileIsNotCleanedIntoItself) {
  write("t.csv", "a;b\n1;2\n");
  write("out.csv", "old");
  CsvCleaner cleaner{CsvQuestion()};
  QString error;
  EXPECT_FALSE(cleaner.clean(path("t.csv"), path("t.csv"), error));
  EXPECT_EQ(read("t.csv"), "a;b\n1;2\n");
  EXPECT_FALSE(cleaner.clean(path("nothing"), path("out.csv"), error));
  EXPECT_EQ(read("out.csv"), "old");
}

}  // namespace

}  // namespace kaldex::test
