#include "lib/ascii/header_pattern.h"

#include <algorithm>

#include "base/character_class.h"
#include "base/strings.h"
#include "lib/frame/delimited_record.h"

namespace kaldex {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

bool standsAt(std::string_view text, std::size_t at, std::string_view delimiter) {
  if (at + delimiter.size() > text.size()) return false;
  for (std::size_t i = 0; i < delimiter.size(); ++i) {
    const char c = text[at + i];
    const bool same = delimiter[i] == c || delimiter[i] == '?' ||
                      (delimiter[i] == '~' && isBlankCharacter(static_cast<unsigned char>(c)));
    if (!same) return false;
  }
  return true;
}

// The last place at which the delimiter begins before `limit`.
std::size_t findLast(std::string_view text, std::string_view delimiter, std::size_t limit) {
  for (std::size_t at = std::min(limit, text.size()); at-- > 0;) {
    if (standsAt(text, at, delimiter)) return at;
  }
  return kNowhere;
}

std::size_t findFirst(std::string_view text, std::string_view delimiter) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (standsAt(text, at, delimiter)) return at;
  }
  return kNowhere;
}

bool isWordCharacter(char c) {
  const char text[] = {c, 0};
  return c == '_' || StrIsAlphaDigit(text);
}

std::size_t wordEnd(std::string_view text, std::size_t at) {
  while (at < text.size() && isWordCharacter(text[at])) ++at;
  return at;
}

// End of hyphens, word characters, one character, word characters at `begin`, each part as long as it can be;
// kNowhere when they don't stand there.
std::size_t numberEnd(std::string_view text, std::size_t begin) {
  std::size_t at = begin;
  while (at < text.size() && text[at] == '-') ++at;
  const std::size_t whole = at;
  const std::size_t point = wordEnd(text, whole);
  if (point == whole) return kNowhere;
  const std::size_t end = wordEnd(text, point + 1);
  if (end > point + 1) return end;
  // No fraction: the single character and what follows it are taken from the end of the word.
  return point - whole >= 3 ? point : kNowhere;
}

}  // namespace

std::size_t HeaderPattern::valueCount() const {
  return delimiters_.size() - (tail_ == Tail::none ? 1 : 0);
}

// Finds where the last delimiter stands; with a tail it is one that has a number behind it.
bool HeaderPattern::placeLast(std::string_view text, std::size_t& place, std::vector<Value>& values) const {
  const std::string_view delimiter = delimiters_.back();
  place = text.size();
  for (;;) {
    place = findLast(text, delimiter, place);
    if (place == kNowhere) return false;
    if (tail_ == Tail::none) return true;
    const std::size_t begin = place + delimiter.size();
    const std::size_t end = numberEnd(text, begin);
    if (end == kNowhere) continue;
    values.back() = {begin, end};
    return true;
  }
}

bool HeaderPattern::fit(std::string_view text, std::vector<Value>& values) const {
  std::size_t next = 0;
  if (!placeLast(text, next, values)) return false;
  for (std::size_t i = delimiters_.size() - 1; i > 1; --i) {
    const std::size_t shortest = delimiters_[i - 1].size() + 1;  // a value has a character at least
    if (next < shortest) return false;
    const std::size_t place = findLast(text, delimiters_[i - 1], next - shortest + 1);
    if (place == kNowhere) return false;
    values[i - 1] = {place + delimiters_[i - 1].size(), next};
    next = place;
  }
  const std::size_t first = findFirst(text, delimiters_.front());
  if (first == kNowhere || first + delimiters_.front().size() >= next) return false;
  values[0] = {first + delimiters_.front().size(), next};
  return true;
}

std::vector<std::string> HeaderPattern::match(std::string_view text) const {
  std::vector<Value> values(valueCount(), Value{0, 0});
  std::vector<std::string> result(valueCount());
  if (!fit(text, values)) return result;
  for (std::size_t i = 0; i < values.size(); ++i) {
    result[i] = std::string(stripped(text.substr(values[i].begin, values[i].end - values[i].begin)));
  }
  return result;
}

}  // namespace kaldex
