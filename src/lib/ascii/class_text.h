#ifndef KALDEX_ASCII_CLASS_TEXT_H
#define KALDEX_ASCII_CLASS_TEXT_H

#include <array>
#include <string>
#include <string_view>

namespace kaldex {

// A line of a block of classes: colours as red, green and blue, then the class name.
struct ClassLine {
  std::array<short, 3> first{};
  std::array<short, 3> second{};
  std::string name;  // Latin-1, at most 32 characters
};

// `colours` is 1 or 2. False when words are missing.
bool parseClassLine(std::string_view line, int colours, ClassLine& result);

}  // namespace kaldex

#endif
