#include "base/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

#include "base/latin1.h"

namespace {

using kaldex::EncodingSigns;
using kaldex::TextDecoder;

TEST(Latin1, TellsWhatItCannotHold) {
  kaldex::Latin1Loss loss;
  EXPECT_EQ(kaldex::toLatin1(QString::fromUtf8("S\u00e3o Lu\u00eds"), &loss), QByteArray("S\xE3o Lu\xEDs"));
  EXPECT_EQ(kaldex::toLatin1(QString::fromUtf8("Sa\u0303o"), &loss), QByteArray("S\xE3o"));
  EXPECT_EQ(loss.count(), 0);
  EXPECT_EQ(kaldex::toLatin1(QString::fromUtf8("\u0141\u00f3\u017a \u0141 \U0001F30D"), &loss),
            QByteArray("?\xF3? ? ?"));
  EXPECT_EQ(loss.count(), 4);
  EXPECT_EQ(loss.characters().join(' '), QString::fromUtf8("\u0141 \u017a \U0001F30D"));
  EXPECT_EQ(kaldex::toLatin1(QString(QChar(0xD800))), QByteArray("?"));
}

TEST(Latin1, KnowsValidUtf8) {
  for (const char* text : {"", "ascii only, longer than eight", "\xC3\xA3", "\xE0\xA0\x80", "\xED\x9F\xBF",
                           "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(kaldex::isValidUtf8(text)) << text;
  }
  for (const char* text : {"\xE3o", "\x80", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                           "\xF8\x88\x80\x80\x80", "seven..\xC3", "\xE2\x82"}) {
    EXPECT_FALSE(kaldex::isValidUtf8(text)) << text;
  }
}

TEST(TextEncoding, UnderstandsTheFormsOfNames) {
  const std::pair<const char*, const char*> cases[] = {
      {"UTF-8", "UTF-8|utf8\r\n|\xEF\xBB\xBFUTF-8|65001|\"UTF_8\""},
      {"windows-1252", "1252|ANSI|cp1252|Windows 1252|LDID/87"},
      {"windows-1251", "ANSI 1251|1251\nsecond line"},
      {"ISO-8859-1", "ISO-8859-1|88591|latin1|28591|ISO 88591"},
      {"ISO-8859-15", "8859_15|885915"},
      {"IBM850", "OEM 850|850|IBM850|CP850"},
      {"IBM860", "LDID/36"},
      {"Shift_JIS", "932|Shift_JIS"},
      {"KOI8-R", "koi8-r|20866"},
      {"", "klingon||\n|99999|ANSI 99999|LDID/300|UTF-16|037|1"}};
  for (const auto& [name, forms] : cases) {
    for (const QByteArray& told : QByteArray(forms).split('|')) {
      EXPECT_EQ(kaldex::encodingName(told), QByteArray(name)) << told.constData();
    }
  }
}

TEST(TextEncoding, TakesTheFirstSignThatTells) {
  const std::string utf8 = "S\xC3\xA3o Paulo  Cear\xC3\xA1  cut\xC3 ";
  const std::string windows = "S\xE3o Paulo  Cear\xE1";
  struct Case {
    const char* overrideName;
    const char* cpg;
    unsigned char driver;
    std::string texts;
    const char* name;
    const char* reason;
    const char* notUnderstood;
  };
  const Case cases[] = {{"", "", 0, "plain", "windows-1252", "default", ""},
                        {"", "", 0, windows, "windows-1252", "bytes", ""},
                        {"", "", 0, utf8, "UTF-8", "bytes", ""},
                        {"", "", 0x57, utf8, "UTF-8", "bytes", ""},
                        {"", "", 0x57, windows, "windows-1252", "ldid", ""},
                        {"", "", 0x24, utf8, "IBM860", "ldid", ""},
                        {"", "", 0xEE, utf8, "UTF-8", "bytes", "ldid: 0xee"},
                        {"", "1252", 0x24, utf8, "windows-1252", "cpg", ""},
                        {"", "klingon\n", 0x24, windows, "IBM860", "ldid", "cpg: klingon"},
                        {"latin1", "UTF-8", 0x24, utf8, "ISO-8859-1", "override", ""},
                        {"x", "y", 0, "plain", "windows-1252", "default", "override: x, cpg: y"}};
  for (const Case& c : cases) {
    EncodingSigns signs;
    signs.overrideName = c.overrideName;
    signs.cpgText = c.cpg;
    signs.languageDriver = c.driver;
    signs.texts.add(c.texts);
    const kaldex::TextEncoding encoding = kaldex::chooseEncoding(signs);
    EXPECT_EQ(encoding.name, QByteArray(c.name)) << c.cpg << int(c.driver);
    EXPECT_STREQ(encoding.reason, c.reason) << c.cpg << int(c.driver);
    EXPECT_EQ(encoding.notUnderstood, QByteArray(c.notUnderstood));
  }
}

TEST(TextEncoding, DecodesEachKind) {
  const char* const cases[][3] = {
      {"ISO-8859-1", "S\xE3o", "S\u00e3o"},       {"windows-1252", "\x80 \xE7", "\u20ac \u00e7"},
      {"UTF-8", "S\xC3\xA3o", "S\u00e3o"},        {"IBM437", "caf\x82", "caf\u00e9"},
      {"IBM850", "S\xC6o", "S\u00e3o"},           {"IBM852", "\x9D\xA2\x64\xAB", "\u0141\u00f3d\u017a"},
      {"IBM860", "S\x84o", "S\u00e3o"},           {"Shift_JIS", "\x93\x8C\x8B\x9E", "\u6771\u4eac"},
      {"GBK", "\xB1\xB1\xBE\xA9", "\u5317\u4eac"}};
  for (const auto& c : cases) {
    TextDecoder decoder(c[0]);
    EXPECT_TRUE(decoder.isValid()) << c[0];
    EXPECT_EQ(decoder.decode(c[1]), QString::fromUtf8(c[2])) << c[0];
    EXPECT_EQ(decoder.decode("plain"), QStringLiteral("plain"));
    EXPECT_EQ(decoder.undecodable(), 0) << c[0];
  }
}

TEST(TextEncoding, TellsOfBytesWithoutMeaning) {
  TextDecoder utf8("UTF-8");
  EXPECT_EQ(utf8.decode("S\xE3o"), QString::fromUtf8("S\uFFFDo"));
  TextDecoder japanese("Shift_JIS");
  japanese.decode("\x93");
  EXPECT_EQ(utf8.undecodable(), 1);
  EXPECT_EQ(japanese.undecodable(), 1);
  EXPECT_FALSE(TextDecoder("klingon").isValid());
  EXPECT_EQ(TextDecoder("klingon").decode("S\xE3o"), QString::fromUtf8("S\u00e3o"));
}

}  // namespace
