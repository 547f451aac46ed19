#ifndef KALDEX_BASE_TEXT_INPUT_H
#define KALDEX_BASE_TEXT_INPUT_H

#include <cstddef>
#include <cstdio>

#include "base/api.h"

namespace kaldex {

// Next character of a stream that only the calling thread uses, EOF at its end.
inline int readCharacter(FILE* file) {
  return getc_unlocked(file);
}

// fscanf(file, "%Ns", buffer) with N = capacity - 1: white space is skipped and a word taken; of a longer
// word the rest stays in the stream, as does the white space behind a word. Returns 1, or EOF if the stream
// ended before a word began (the buffer is untouched then). `capacity` is at least 2.
// `length` takes how many characters it has: there may be zeros among them.
KALDEX_BASE_API int readWord(FILE* file, char* buffer, std::size_t capacity, std::size_t* length = nullptr);

// Passes over the rest of the line, its line feed included. Returns 0 if the stream ended before a line feed,
// else 1.
KALDEX_BASE_API int skipLine(FILE* file);

}  // namespace kaldex

#endif
