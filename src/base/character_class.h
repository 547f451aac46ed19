#ifndef KALDEX_BASE_CHARACTER_CLASS_H
#define KALDEX_BASE_CHARACTER_CLASS_H

// Character tests of the C locale, whatever the process's locale is.

namespace kaldex {

constexpr bool isBlankCharacter(int character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool isDecimalDigit(int character) {
  return character >= '0' && character <= '9';
}

}  // namespace kaldex

#endif
