#include "lib/ascii/class_text.h"

#include "base/character_class.h"
#include "base/number_text.h"
#include "lib/frame/delimited_record.h"

namespace kaldex {

namespace {

constexpr std::size_t kLongestName = 32;

// Words parted by single blanks.
std::string collapsed(std::string_view text) {
  std::string result;
  for (const char c : stripped(text)) {
    const bool blank = c == ' ' || c == '\t';
    if (!blank) {
      result += c;
    } else if (result.back() != ' ') {
      result += ' ';
    }
  }
  return result;
}

bool readColour(TextScan& scan, std::array<short, 3>& colour) {
  for (short& part : colour) {
    std::string_view word;
    if (!scan.read(word)) return false;
    part = static_cast<short>(textToInteger(word));
  }
  return true;
}

}  // namespace

bool parseClassLine(std::string_view line, int colours, ClassLine& result) {
  const std::string text = collapsed(line);
  TextScan scan(text);
  if (!readColour(scan, result.first)) return false;
  if (colours > 1 && !readColour(scan, result.second)) return false;
  result.name = std::string(stripped(scan.rest())).substr(0, kLongestName);
  return !result.name.empty();
}

}  // namespace kaldex
