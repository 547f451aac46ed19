#include "base/text_input.h"

#include "base/character_class.h"

namespace kaldex {

int readWord(FILE* file, char* buffer, std::size_t capacity, std::size_t* length) {
  int character = getc_unlocked(file);
  while (isBlankCharacter(character)) character = getc_unlocked(file);
  if (character == EOF) return EOF;

  const std::size_t limit = capacity - 1;
  std::size_t taken = 0;
  while (character != EOF && !isBlankCharacter(character)) {
    buffer[taken++] = static_cast<char>(character);
    if (taken == limit) break;
    character = getc_unlocked(file);
  }
  buffer[taken] = 0;
  if (taken < limit && character != EOF) std::ungetc(character, file);
  if (length != nullptr) *length = taken;
  return 1;
}

int skipLine(FILE* file) {
  int character = 0;
  do {
    character = getc_unlocked(file);
  } while (character != '\n' && character != EOF);
  return character == EOF ? 0 : 1;
}

}  // namespace kaldex
