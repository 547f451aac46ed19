#include <gtest/gtest.h>

#include <QByteArray>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "base/text_input.h"
#include "base/text_output.h"

namespace {

using kaldex::TextOutput;
using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;

Stream openStream(FILE* file) {
  return Stream(file, &std::fclose);
}

Stream streamOf(const std::string& text) {
  Stream stream = openStream(std::tmpfile());
  EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), stream.get()), text.size());
  std::rewind(stream.get());
  return stream;
}

std::string contentOf(FILE* file) {
  std::rewind(file);
  std::string text;
  for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) text.push_back(static_cast<char>(c));
  return text;
}

TEST(TextOutput, WritesInOrderAcrossFullBuffers) {
  const Stream stream = openStream(std::tmpfile());
  TextOutput output(stream.get());
  std::string expected;
  const std::string longText(200000, 'x');
  for (int i = 0; i < 5000; ++i) {
    output.append("\nLINE ");
    output.appendInt(i);
    output.append(' ');
    output.appendFixed(i / 8.0, 6);
    output.append(QByteArray("\xE9"));
    output.appendGeneral(i * 1e5);
    if (i % 1000 == 999) output.append(std::string_view(longText));
    char record[100];
    std::snprintf(record, sizeof record, "\nLINE %d %d.%03d000\xE9", i, i / 8, i % 8 * 125);
    expected += record;
    kaldex::appendGeneral(expected, i * 1e5);
    if (i % 1000 == 999) expected += longText;
  }
  EXPECT_TRUE(output.flush());
  EXPECT_TRUE(contentOf(stream.get()) == expected);
}

TEST(TextOutput, TellsOfAFullDiskAtTheLastFlushToo) {
  Stream full = openStream(std::fopen("/dev/full", "w"));
  ASSERT_NE(full, nullptr);
  TextOutput brief(full.get());
  brief.append("END");
  EXPECT_TRUE(brief.ok());
  EXPECT_FALSE(brief.flush());
  EXPECT_FALSE(brief.flush());

  full.reset(std::fopen("/dev/full", "w"));
  TextOutput lengthy(full.get());
  for (int i = 0; i < 100000; ++i) lengthy.append("text that fills buffer after buffer");
  EXPECT_FALSE(lengthy.ok());
  EXPECT_FALSE(lengthy.flush());
}

TEST(TextOutput, RefusesAStreamThatCannotBeWritten) {
  const Stream stream = openStream(std::fopen("/dev/null", "r"));
  TextOutput output(stream.get());
  output.append('x');
  EXPECT_FALSE(output.flush());
  TextOutput none(nullptr);
  none.append("x");
  EXPECT_FALSE(none.flush());
}

TEST(TextInput, ReadsWordsAsScanfDoes) {
  const std::string text = " \t\n first 1234567 12345678 exactly123\n\v\f\rlast";
  const Stream ours = streamOf(text);
  const Stream theirs = streamOf(text);
  for (int i = 0; i < 12; ++i) {
    char word[8] = "?";
    char expected[8] = "?";
    ASSERT_EQ(std::fscanf(theirs.get(), "%7s", expected), kaldex::readWord(ours.get(), word, sizeof word));
    EXPECT_STREQ(expected, word);
    EXPECT_EQ(std::ftell(theirs.get()), std::ftell(ours.get()));
  }
}

TEST(TextInput, SkipsLines) {
  const Stream stream = streamOf("one\n\nthree\nlast");
  EXPECT_EQ(kaldex::skipLine(stream.get()), 1);
  EXPECT_EQ(kaldex::skipLine(stream.get()), 1);
  EXPECT_EQ(kaldex::readCharacter(stream.get()), 't');
  EXPECT_EQ(kaldex::skipLine(stream.get()), 1);
  EXPECT_EQ(kaldex::skipLine(stream.get()), 0);
  char word[8] = "?";
  EXPECT_EQ(kaldex::readWord(stream.get(), word, sizeof word), EOF);
  EXPECT_STREQ(word, "?");
}

}  // namespace
