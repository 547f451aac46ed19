#include "base/text_input.h"

#include "base/character_class.h"

namespace kaldex {

int readWord(FILE* file, char* buffer, std::size_t capacity) {
  int character = getc_unlocked(file);
  while (isBlankCharacter(character)) character = getc_unlocked(file);
  if (character == EOF) return EOF;

  const std::size_t limit = capacity - 1;
  std::size_t length = 0;
  while (character != EOF && !isBlankCharacter(character)) {
    buffer[length++] = static_cast<char>(character);
    if (length == limit) {
      buffer[length] = 0;
      return 1;
    }
    character = getc_unlocked(file);
  }
  buffer[length] = 0;
  if (character != EOF) std::ungetc(character, file);
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
