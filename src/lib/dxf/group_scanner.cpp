#include "lib/dxf/group_scanner.h"

#include "base/character_class.h"
#include "base/number_text.h"
#include "base/text_input.h"

namespace kaldex {

namespace {

std::string_view withoutBlanks(const char* begin, const char* end) {
  while (end > begin && isBlankCharacter(static_cast<unsigned char>(end[-1]))) --end;
  while (begin < end && isBlankCharacter(static_cast<unsigned char>(*begin))) ++begin;
  return {begin, static_cast<std::size_t>(end - begin)};
}

// Most codes are one to four digits, and there is one on every other line.
int codeOf(std::string_view text) {
  int value = 0;
  if (!text.empty() && text.size() <= 4) {
    std::size_t at = 0;
    while (at < text.size() && isDecimalDigit(text[at])) value = 10 * value + (text[at++] - '0');
    if (at == text.size()) return value;
  }
  return static_cast<int>(textToInteger(text));
}

// Codes whose value is a text, which may be empty.
bool mayBeEmpty(int code) {
  return code == GroupCode::text || code == GroupCode::extendedText || code == GroupCode::comment;
}

}  // namespace

void GroupScanner::restart() {
  lines_ = 0;
  cutLines_ = 0;
  blankValues_ = 0;
  firstBlankValue_ = 0;
}

bool GroupScanner::next(FILE* file, Blanks blanks) {
  do {
    if (!readPair(file, blanks)) return false;
  } while (code_ == GroupCode::comment);
  return true;
}

bool GroupScanner::readPair(FILE* file, Blanks blanks) {
  const bool strict = blanks == Blanks::areValues;
  do {
    if (!readLine(file)) return false;
  } while (value_.empty() && !strict);
  code_ = codeOf(value_);
  if (!readLine(file)) return false;
  if (!value_.empty() || strict || mayBeEmpty(code_)) return true;
  countBlankValue();
  do {
    if (!readLine(file)) return false;
  } while (value_.empty());
  return true;
}

void GroupScanner::countBlankValue() {
  if (++blankValues_ == 1) firstBlankValue_ = lines_;
}

// Lines are short: looking for their ends twice, as by fgets and strlen, took a quarter of an import's time.
bool GroupScanner::readLine(FILE* file) {
  value_ = {};
  ++lines_;
  char* end = buffer_;
  int c = readCharacter(file);
  if (c == EOF) return false;
  for (; c != '\n' && c != EOF; c = readCharacter(file)) {
    if (end == buffer_ + kCapacity) {
      // The rest would be taken for a code, and every pair behind it would be wrong.
      ++cutLines_;
      skipLine(file);
      break;
    }
    *end++ = static_cast<char>(c);
  }
  value_ = withoutBlanks(buffer_, end);
  return true;
}

}  // namespace kaldex
