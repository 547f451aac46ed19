#include "lib/frame/delimited_record.h"

#include <string>

#include "base/character_class.h"
#include "base/strings.h"

namespace kaldex {

namespace {

constexpr std::size_t kLongestNumber = 11;
constexpr std::size_t kLongestInteger = 3;

bool digitAt(std::string_view text, std::size_t at) {
  return at < text.size() && isDecimalDigit(text[at]);
}

}  // namespace

// Whether an empty field stands before position `at`: between two separators, or at the end behind one.
bool DelimitedFields::emptyFieldAt(std::size_t at) const {
  if (at == 0 || isSeparator(' ')) return false;
  if (at == text_.size()) return isSeparator(text_[at - 1]);
  return text_[at] == separators_[0] && text_[at - 1] == separators_[0];
}

bool DelimitedFields::next(std::string_view& field) {
  for (; at_ <= text_.size(); ++at_) {
    if (at_ == text_.size() || isSeparator(text_[at_])) {
      if (!emptyFieldAt(at_)) continue;
      ++at_;
      field = " ";
      return true;
    }
    std::size_t end = at_ + 1;
    while (end < text_.size() && !isSeparator(text_[end])) ++end;
    field = text_.substr(at_, end - at_);
    at_ = end + 1;
    return true;
  }
  return false;
}

std::string_view stripped(std::string_view text) {
  while (!text.empty() && isBlankCharacter(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  while (!text.empty() && isBlankCharacter(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  return text;
}

void mendDecimalCommas(char* text) {
  if (*text == 0) return;
  for (char* at = text + 1; *at != 0; ++at) {
    if (*at == ',' && isDecimalDigit(at[-1]) && isDecimalDigit(at[1])) *at = '.';
  }
}

bool hasDecimalComma(const QString& text) {
  const auto digitAt = [&](int at) {
    return at >= 0 && at < text.size() && text[at] >= QLatin1Char('0') && text[at] <= QLatin1Char('9');
  };
  for (int at = text.indexOf(QLatin1Char(',')); at >= 0; at = text.indexOf(QLatin1Char(','), at + 1)) {
    if (digitAt(at - 1) && digitAt(at + 1)) return true;
  }
  return false;
}

short columnType(std::string_view field, char separator) {
  constexpr short integer = 0, real = 1, date = 2, text = 3;
  field = stripped(field);
  if (field.empty() || field == "0" || field.front() == '/') return text;
  if (StrHasAlpha(std::string(field).c_str())) return text;

  for (std::size_t i = 0; i < field.size(); ++i) {
    const char c = field[i];
    if (c == '/') return digitAt(field, i + 1) ? date : text;
    const bool point = c == ',' || c == '.';
    if ((!point && !isDecimalDigit(c)) || field.size() > kLongestNumber) return text;
    if (point && separator != ',' && i > 0 && digitAt(field, i - 1) && digitAt(field, i + 1)) return real;
  }
  return field.size() > kLongestInteger ? real : integer;
}

const char* detectSeparator(std::string_view line) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    const char c = line[i];
    if (c != ',' && c != ';' && c != '|') continue;
    if (line[i - 1] == c || (i + 1 < line.size() && line[i + 1] == c)) continue;
    return c == ',' ? "," : c == ';' ? ";" : "|";
  }
  return nullptr;
}

}  // namespace kaldex
