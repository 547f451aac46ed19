#ifndef KALDEX_BASE_NUMBER_TEXT_H
#define KALDEX_BASE_NUMBER_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

#include "base/api.h"

// Numbers to text and back without regard to the locale: what the scanf forms accept, count and leave behind,
// and the bytes that the printf forms print in the C locale.

namespace kaldex {

// Walks a text as sscanf does, one conversion a call. The text is borrowed and need not end in a terminator.
// A failed read leaves its target and the position (but for skipped white space) as they were.
class KALDEX_BASE_API TextScan {
 public:
  explicit TextScan(std::string_view text) : cursor_(text.data()), end_(text.data() + text.size()) {}

  // "%lf" and "%f": sign, decimal or hexadecimal digits, exponent, "inf", "infinity", "nan". A prefix of a
  // word is taken
  // ("12abc" gives 12 and leaves "abc"); a value out of range gives infinity or zero, as strtod does.
  bool read(double& value);
  bool read(float& value);
  // "%hd" and "%d": a value that doesn't fit keeps its low bits, as scanf's does.
  bool read(short& value);
  bool read(int& value);
  // "%s": the text up to the next white space.
  bool read(std::string_view& word);

  // The result of sscanf with the same conversions: how many succeeded before the first failure, or -1 (EOF)
  // if nothing but white space was left before the first.
  template <typename... Values>
  int readAll(Values&... values) {
    if (atEnd()) return -1;
    int count = 0;
    static_cast<void>(((read(values) && ++count) && ...));
    return count;
  }

  // Skips white space; true if nothing is left then.
  bool atEnd();
  std::string_view rest() const {
    return std::string_view(cursor_, static_cast<std::size_t>(end_ - cursor_));
  }

 private:
  const char* cursor_;
  const char* end_;
};

// sscanf(text, "%lf"), "%lf %lf" or "%lf %lf %f", by the number of targets that aren't null; the same result,
// -1 included.
KALDEX_BASE_API int scanReals(std::string_view text, double* x, double* y = nullptr, float* z = nullptr);

// strtod and strtol in base 10: the value of the longest prefix that is a number, white space ahead of it
// being skipped; `used` gets the count of characters taken, 0 if there is no number (the value is 0 then).
KALDEX_BASE_API double textToReal(std::string_view text, std::size_t* used = nullptr);
KALDEX_BASE_API long textToInteger(std::string_view text, std::size_t* used = nullptr);

// The most characters that one call below writes: the largest double with kMaxDecimals decimals.
inline constexpr int kMaxDecimals = 17;
inline constexpr std::size_t kNumberTextCapacity = 352;

// Each writes at `at`, where kNumberTextCapacity characters must be free, and returns the end of what it
// wrote. No terminator is written.
// "%.Nf", N from 0 to kMaxDecimals (fast up to 12); values beyond the range count as the nearest bound.
KALDEX_BASE_API char* appendFixed(char* at, double value, int decimals);
// "%d", "%ld", "%lld".
KALDEX_BASE_API char* appendInt(char* at, long long value);
// "%.Ng"; plain "%g" is N = 6. N from 0 to kMaxDecimals.
KALDEX_BASE_API char* appendGeneral(char* at, double value, int precision = 6);

// The same at the end of a string.
KALDEX_BASE_API void appendFixed(std::string& text, double value, int decimals);
KALDEX_BASE_API void appendInt(std::string& text, long long value);
KALDEX_BASE_API void appendGeneral(std::string& text, double value, int precision = 6);

// "%W.Nf": set right in a field of at least `width` characters.
KALDEX_BASE_API std::string fixedText(double value, int decimals, int width = 0);

}  // namespace kaldex

#endif
