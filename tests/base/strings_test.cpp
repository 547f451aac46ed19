#include "base/strings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

namespace {

std::string changed(char* (*change)(char*), std::string text) {
  return std::string(change(text.data()));
}

TEST(Strings, StripsBlanks) {
  EXPECT_EQ(changed(StrClean, " a b \t\r\n"), " a b");
  EXPECT_EQ(changed(StrClean, " \t "), "");
  EXPECT_EQ(changed(StrCleanLeft, " \t a b "), "a b ");
  EXPECT_EQ(changed(StrCleanLeft, "  "), "");
  EXPECT_EQ(changed(RemoveBlanks, " a \tb\n"), "ab");
  EXPECT_EQ(changed(StrClean, "caf\xE9 "), "caf\xE9");
}

TEST(Strings, TellsLettersAndDigits) {
  struct Case {
    const char* text;
    bool alpha, digit, alphaDigit, hasAlpha;
  };
  const Case cases[] = {{"", false, false, false, false},         {"Abc", true, false, true, true},
                        {"S\xE3o", true, false, true, true},      {"123", false, true, true, false},
                        {"a1", false, false, true, true},         {"a b", false, false, false, true},
                        {"\xD7\xF7", false, false, false, false}, {"-1.5", false, false, false, false},
                        {"1.5e3", false, false, false, true}};
  for (const Case& c : cases) {
    EXPECT_EQ(StrIsAlpha(c.text), c.alpha) << c.text;
    EXPECT_EQ(StrIsDigit(c.text), c.digit) << c.text;
    EXPECT_EQ(StrIsAlphaDigit(c.text), c.alphaDigit) << c.text;
    EXPECT_EQ(StrHasAlpha(c.text), c.hasAlpha) << c.text;
  }
}

TEST(Strings, FoldsCaseInLatin1) {
  EXPECT_EQ(changed(toUpper, "area \xE7\xE3\xF7\xFF"), "AREA \xC7\xC3\xF7\xFF");
  EXPECT_EQ(Sstrcasecmp("DsAa", "dSaA"), 0);
  EXPECT_EQ(Sstrcasecmp("\xC9", "\xE9"), 0);
  EXPECT_LT(Sstrcasecmp("area", "AREA1"), 0);
  EXPECT_GT(Sstrcasecmp("b", "A"), 0);
}

TEST(Strings, TestsValuesOfColumnTypes) {
  struct Case {
    int type;
    const char* text;
    int result;
  };
  const Case cases[] = {{0, "12", 1},         {0, " -007 ", 1},     {0, "123456789012345678901", 1},
                        {0, "", 0},           {0, "+", 0},          {0, "1.0", 0},
                        {0, "1 2", 0},        {0, "XXX", 0},        {1, "-1.5", 1},
                        {1, ".5", 1},         {1, "5.", 1},         {1, "+1E-05", 1},
                        {1, "1,5", 0},        {1, "1e", 0},         {1, ".", 0},
                        {1, "", 0},           {1, "inf", 0},        {1, "0x10", 0},
                        {1, "1e999", 0},      {1, "1-2", 0},        {2, "20240229", 1},
                        {2, "20230229", 0},   {2, "12/03/01", 1},   {2, "29/02/00", 1},
                        {2, "12/03/2001", 1}, {2, "31/04/2001", 0}, {2, "2001/03/12", 0},
                        {2, "1/3/2001", 0},   {2, "12-03-2001", 0}, {2, "12/03/-1", 0},
                        {2, "", 0},           {3, "", 1},           {3, "anything at all", 1}};
  for (const Case& c : cases) EXPECT_EQ(TestDataType(c.text, c.type), c.result) << c.type << ' ' << c.text;

  char reason[kReasonCapacity] = "";
  EXPECT_EQ(TestDataType("12", 0, reason), 1);
  EXPECT_STREQ(reason, "");
  EXPECT_EQ(TestDataType("x", 0, reason), 0);
  EXPECT_STRNE(reason, "");
}

TEST(Strings, PrintsADoubleByAFormat) {
  QString text;
  EXPECT_EQ(sprintf_double(text, "%.2lf", -1234.567), 1);
  EXPECT_EQ(text, QStringLiteral("-1234.57"));
  EXPECT_EQ(sprintf_double(text, "h = %-8.1f m, 100%%", 2.5), 1);
  EXPECT_EQ(text, QStringLiteral("h = 2.5      m, 100%"));
  for (const char* format : {"", "plain", "%d", "%s", "%n", "%f %f", "%*f", "%Lf", "%", "%.99999f", "%hf"}) {
    EXPECT_EQ(sprintf_double(text, format, 1.0), 0) << format;
    EXPECT_TRUE(text.isEmpty()) << format;
  }
}

}  // namespace
