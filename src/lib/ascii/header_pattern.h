#ifndef KALDEX_ASCII_HEADER_PATTERN_H
#define KALDEX_ASCII_HEADER_PATTERN_H

#include <string>
#include <string_view>
#include <vector>

namespace kaldex {

// Takes the values out of a header line, as a regular expression "D1(.+)D2(.+)...Dn" with greedy groups and a
// dot that crosses lines does, but in one walk backwards over the text, however long the records behind the
// header are: the first delimiter is the first one in the text, all others are the last ones that leave room
// for a value each. In a delimiter "~" is any white space and "?" any character.
class HeaderPattern {
 public:
  // A pattern that ends in a number takes one more value behind its last delimiter: hyphens, word characters,
  // any one character, word characters.
  enum class Tail { none, number };

  HeaderPattern(std::initializer_list<std::string_view> delimiters, Tail tail = Tail::none)
      : delimiters_(delimiters), tail_(tail) {}

  // The values, without blanks at their ends; all of them empty when the pattern doesn't fit.
  std::vector<std::string> match(std::string_view text) const;

 private:
  struct Value {
    std::size_t begin;
    std::size_t end;
  };

  std::size_t valueCount() const;
  bool fit(std::string_view text, std::vector<Value>& values) const;
  bool placeLast(std::string_view text, std::size_t& place, std::vector<Value>& values) const;

  std::vector<std::string_view> delimiters_;
  Tail tail_;
};

}  // namespace kaldex

#endif
