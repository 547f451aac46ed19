#include <QFileInfo>

#include "intake/intake_fixture.h"

namespace kaldex::test {
namespace {

class TextIntakeTest : public IntakeFixture {
 protected:
  /// What a handler reads of these bytes; "(same)" when it reads the file itself.
  QByteArray prepared(const QByteArray& content, TextForm form = TextForm::sections,
                      const QString& encoding = QString()) {
    report = JobReport();
    const TextIntake intake(write(content), form, false, encoding);
    EXPECT_TRUE(intake.isReady()) << intake.error().toStdString();
    EXPECT_EQ(QFileInfo(intake.path()).fileName(), QString("in.txt"));
    return intake.isCopy() ? read(intake.path()) : QByteArray("(same)");
  }
};

TEST_F(TextIntakeTest, WhatHandlersTakeIsLeftAlone) {
  for (const QByteArray& text :
       {QByteArray(), QByteArray("\nLINES\n1 2\nEND\nEND"), QByteArray("LINES\nEND\n"),
        QByteArray("//Pr\xE9-cadastro\nLINES\nEND\n"), QByteArray("\x01\x00\x02\r\n", 5)}) {
    EXPECT_EQ(prepared(text), QByteArray("(same)")) << text.toHex().toStdString();
    EXPECT_TRUE(report.notes.isEmpty());
  }
}

TEST_F(TextIntakeTest, BringsTextsIntoTheFormThatHandlersTake) {
  struct Case {
    const char* what;
    QByteArray in;
    QByteArray out;
    int notes;
  };
  const QByteArray latin1 = "//a\xE7\xE3o\nEND\n";
  const Case cases[] = {
      {"DOS", "LINES\r\n1 2\r\nEND\r\n", "LINES\n1 2\nEND\n", 1},
      {"DOS from the second line on", "\nLINES\r\nEND\r\n", "\nLINES\nEND\n", 1},
      {"Mac", "LINES\r1 2\rEND\r", "LINES\n1 2\nEND\n", 1},
      {"both", "a\r\nb\rc\r", "a\nb\nc\n", 2},
      {"end mark of DOS", "LINES\r\nEND\r\n\x1A", "LINES\nEND\n", 2},
      {"end marks to fill a block", "END\r\n\x1A\x1A\x1A", "END\n", 2},
      {"end marks among line ends", "END\x1A\r\n\x1A", "END\n", 2},
      {"end mark that is none", "a\x1A\r\nb\n", "a\x1A\nb\n", 1},
      {"no end of the last line", "LINES\n1 2", "LINES\n1 2\n", 1},
      {"UTF-8 with a mark", "\xEF\xBB\xBF//a\xC3\xA7\xC3\xA3o\nEND\n", latin1, 2},
      {"mark before ASCII", QByteArray("\xEF\xBB\xBF") + "END\n", "END\n", 1},
      {"UTF-8", "//a\xC3\xA7\xC3\xA3o\nEND\n", latin1, 1},
      {"accents of their own", QByteArray("//ac\xCC\xA7") + "a\xCC\x83o\nEND\n", latin1, 1},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(prepared(one.in), one.out) << one.what;
    EXPECT_EQ(report.notes.size(), one.notes) << one.what << ": " << report.notes.join("|").toStdString();
  }
}

TEST_F(TextIntakeTest, DrawingsKeepTheirBytesAndHaveToBeTexts) {
  EXPECT_EQ(prepared("0\r\nSECTION\r\n8\r\n\xC3\xA7\r\n", TextForm::drawing), "0\nSECTION\n8\n\xC3\xA7\n");
  for (const QByteArray& content :
       {QByteArray("AutoCAD Binary DXF\r\n\x1A\0", 22), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)}) {
    const TextIntake intake(write(content), TextForm::drawing);
    EXPECT_FALSE(intake.isReady());
    EXPECT_TRUE(intake.error().contains("DXF")) << intake.error().toStdString();
  }
}

TEST_F(TextIntakeTest, Utf16OfBothOrdersWithAndWithoutMark) {
  const QString text = QString::fromUtf8("LINES\r\n//ação\r\n1 2\r\nEND\r\n");
  for (const bool big : {false, true}) {
    for (const bool mark : {false, true}) {
      QByteArray bytes;
      for (const QChar c : (mark ? QString(QChar(0xFEFF)) : QString()) + text) {
        const char high = static_cast<char>(c.unicode() >> 8);
        const char low = static_cast<char>(c.unicode() & 0xFF);
        bytes.append(big ? high : low).append(big ? low : high);
      }
      EXPECT_EQ(prepared(bytes), QByteArray("LINES\n//a\xE7\xE3o\n1 2\nEND\n")) << big << mark;
      EXPECT_EQ(report.encoding.name, QString(big ? "UTF-16BE" : "UTF-16LE"));
    }
  }
}

TEST_F(TextIntakeTest, TablesEndWithoutALineEnd) {
  EXPECT_EQ(prepared("a;b\n1;2\n\n", TextForm::delimitedTable), QByteArray("a;b\n1;2"));
  EXPECT_EQ(prepared("a;b\r\n1;2\r\n", TextForm::delimitedTable), QByteArray("a;b\n1;2"));
  EXPECT_EQ(prepared("a;b\r\n1;2\r\n\x1A\x1A", TextForm::delimitedTable), QByteArray("a;b\n1;2"));
  EXPECT_EQ(prepared("a;b\n\n1;2", TextForm::delimitedTable), QByteArray("(same)"));
  EXPECT_EQ(prepared("a;b\n1;2\n \t\n  ", TextForm::delimitedTable), QByteArray("a;b\n1;2"));
  EXPECT_EQ(prepared("a;b\r\n \t1;2  ", TextForm::delimitedTable), QByteArray("a;b\n \t1;2  "));
}

TEST_F(TextIntakeTest, TellsCharactersThatLatin1CannotHold) {
  EXPECT_EQ(prepared("//\xE2\x82\xAC 5 \xC4\x83\nEND\n"), QByteArray("//? 5 ?\nEND\n"));
  const QString told = report.notes.join("\n");
  EXPECT_TRUE(told.contains(QString::fromUtf8("\xE2\x82\xAC"))) << told.toStdString();
  EXPECT_TRUE(told.contains(QString::fromUtf8("\xC4\x83"))) << told.toStdString();
}

TEST_F(TextIntakeTest, TheEncodingCanBeOverridden) {
  EXPECT_EQ(prepared("//\xE3\x87\nEND\n", TextForm::sections, "CP850"), QByteArray("//\xD2\xE7\nEND\n"));
  EXPECT_EQ(prepared("//\xC3\xA7\nEND\n", TextForm::sections, "ISO-8859-1"), QByteArray("(same)"));
  EXPECT_EQ(report.encoding.reason, QString("override"));
  const TextIntake unknown(write("END\n"), TextForm::sections, false, "klingon");
  EXPECT_FALSE(unknown.isReady());
}

// Blocks are read by the quarter megabyte: what belongs together must survive a border between two.
TEST_F(TextIntakeTest, NothingIsLostAtBordersOfBlocks) {
  constexpr int kBlock = 256 * 1024;
  for (int shift = 0; shift < 4; ++shift) {
    const QByteArray fill(kBlock - 2 - shift, 'x');
    EXPECT_EQ(prepared("//" + fill + "\r\nEND\r\n"), "//" + fill + "\nEND\n") << shift;
    EXPECT_EQ(prepared("//" + fill + "\xC3\xA7\nEND\n"), "//" + fill + "\xE7\nEND\n") << shift;
    EXPECT_EQ(prepared("//" + fill + "c\xCC\xA7\nEND\n"), "//" + fill + "\xE7\nEND\n") << shift;
    EXPECT_EQ(prepared("//" + fill + "\xE7\nEND\n"), QByteArray("(same)")) << shift;
  }
}

TEST_F(TextIntakeTest, CopiesAreRemoved) {
  {
    const TextIntake intake(write("LINES\r\n"), TextForm::sections);
    EXPECT_EQ(temporaryFiles().size(), 1);
  }
  EXPECT_TRUE(temporaryFiles().isEmpty());
  qputenv("TMPDIR", QFile::encodeName(path("in.txt")));  // a file is no folder
  const TextIntake nowhere(path("in.txt"), TextForm::sections);
  EXPECT_FALSE(nowhere.isReady());
  EXPECT_FALSE(nowhere.error().isEmpty());
  const TextIntake absent(path("absent.txt"), TextForm::sections);
  EXPECT_FALSE(absent.isReady());
}

}  // namespace
}  // namespace kaldex::test
