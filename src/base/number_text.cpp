#include "base/number_text.h"

#include <locale.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "base/character_class.h"

namespace kaldex {

namespace {

__extension__ using UInt128 = unsigned __int128;

// --- Text to number
// ---------------------------------------------------------------------------------------------------

enum class Rules { Scanf, Strtod };

const char* skipBlanks(const char* at, const char* end) {
  while (at < end && isBlankCharacter(static_cast<unsigned char>(*at))) ++at;
  return at;
}

// Length of the part of `word` (lower case) that the text begins with, without regard to case.
std::size_t matchedLength(const char* at, const char* end, std::string_view word) {
  std::size_t length = 0;
  while (length < word.size() && at + length < end && (at[length] | 0x20) == word[length]) ++length;
  return length;
}

double convertInCLocale(const char* text, double) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(text, nullptr, cLocale);
}

float convertInCLocale(const char* text, float) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtof_l(text, nullptr, cLocale);
}

// The C library decides about what from_chars leaves open: values out of range, and hexadecimal ones.
template <typename Real>
Real convertRare(const char* begin, const char* end) {
  const std::string text(begin, end);
  return convertInCLocale(text.c_str(), Real());
}

template <typename Real>
Real convertDecimal(const char* begin, const char* end) {
  Real value = 0;
  const std::from_chars_result result = std::from_chars(begin, end, value);
  return result.ec == std::errc() ? value : convertRare<Real>(begin, end);
}

// Reads one real number at `begin`, where white space has been skipped.
template <typename Real>
class RealReader {
 public:
  RealReader(const char* begin, const char* end, Rules rules) : at_(begin), end_(end), rules_(rules) {}

  // End of what was taken, or null if there is no number.
  const char* read(Real& value) {
    const bool negative = at_ < end_ && *at_ == '-';
    if (at_ < end_ && (*at_ == '-' || *at_ == '+')) ++at_;
    start_ = at_;
    Real magnitude = 0;
    if (!readDecimal(magnitude) && !readWord(magnitude)) return nullptr;
    value = negative ? -magnitude : magnitude;
    return at_;
  }

 private:
  bool atDigit() const { return at_ < end_ && isDecimalDigit(*at_); }

  std::ptrdiff_t takeDigits() {
    const char* first = at_;
    while (atDigit()) ++at_;
    return at_ - first;
  }

  bool readDecimal(Real& magnitude) {
    std::ptrdiff_t digits = takeDigits();
    if (digits == 1 && *start_ == '0' && at_ < end_ && (*at_ | 0x20) == 'x')
      return readHexadecimal(magnitude);
    if (at_ < end_ && *at_ == '.') {
      ++at_;
      digits += takeDigits();
    }
    if (digits == 0) return false;
    const char* valueEnd = at_;
    if (at_ < end_ && (*at_ | 0x20) == 'e') takeExponent(valueEnd);
    magnitude = convertDecimal<Real>(start_, valueEnd);
    return true;
  }

  // A mark or a sign with no digit behind it belongs to the field for scanf, and not for strtod.
  void takeExponent(const char*& valueEnd) {
    const char* mark = at_++;
    if (at_ < end_ && (*at_ == '-' || *at_ == '+')) ++at_;
    if (takeDigits() != 0) {
      valueEnd = at_;
    } else if (rules_ == Rules::Strtod) {
      at_ = mark;
    }
  }

  int takeHexDigits() {
    int count = 0;
    for (; at_ < end_; ++at_, ++count) {
      const int lower = *at_ | 0x20;
      if (!isDecimalDigit(*at_) && (lower < 'a' || lower > 'f')) break;
    }
    return count;
  }

  bool readHexadecimal(Real& magnitude) {
    const char* zeroEnd = at_++;
    int digits = takeHexDigits();
    const bool point = at_ < end_ && *at_ == '.';
    if (point) {
      ++at_;
      digits += takeHexDigits();
    }
    if (digits == 0) return readBareHexPrefix(magnitude, zeroEnd, point);
    const char* valueEnd = at_;
    if (at_ < end_ && (*at_ | 0x20) == 'p') takeExponent(valueEnd);
    magnitude = convertRare<Real>(start_, valueEnd);
    return true;
  }

  // "0x" and no digit: strtod takes the zero; scanf refuses the field, unless a point made it longer.
  bool readBareHexPrefix(Real& magnitude, const char* zeroEnd, bool point) {
    magnitude = 0;
    if (rules_ == Rules::Strtod) at_ = zeroEnd;
    return rules_ == Rules::Strtod || point;
  }

  bool readWord(Real& magnitude) {
    at_ = start_;
    if (matchedLength(at_, end_, "nan") == 3) {
      magnitude = std::numeric_limits<Real>::quiet_NaN();
      at_ += 3;
      return true;
    }
    const std::size_t length = matchedLength(at_, end_, "infinity");
    if (length < 3) return false;
    // Behind "inf" scanf takes an "i" as the promise of the long word.
    if (rules_ == Rules::Scanf && length != 3 && length != 8) return false;
    magnitude = std::numeric_limits<Real>::infinity();
    at_ += length == 8 ? 8 : 3;
    return true;
  }

  const char* at_;
  const char* end_;
  Rules rules_;
  const char* start_ = nullptr;
};

constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
constexpr std::uint64_t kDigitPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// A run of digits, gathered eight at a time: the digits of a word of memory are found and summed with a few
// operations and no branch that depends on how many there are.
class DigitRun {
 public:
  // `begin` is any place in the same text from which on it may be read.
  DigitRun(const char* begin, const char* end) : begin_(begin), end_(end) {}

  std::uint64_t value() const { return value_; }
  std::ptrdiff_t count() const { return count_; }

  // Takes the digits at `at` and returns the place behind them. The value is of no use beyond 19 digits.
  const char* take(const char* at) {
    for (int digits = 8; digits == 8;) {
      std::uint64_t word = 0;
      if (!load(at, word)) return takeSingly(at);
      digits = takeWord(word);
      at += digits;
    }
    return at;
  }

 private:
  // Eight characters at `at`, zeros in the place of those behind the end.
  bool load(const char* at, std::uint64_t& word) const {
    if (!kLittleEndian) return false;
    if (end_ - at >= 8) {
      std::memcpy(&word, at, sizeof word);
      return true;
    }
    if (at == end_ || end_ - begin_ < 8) return false;
    std::memcpy(&word, end_ - 8, sizeof word);
    word >>= 8 * (8 - (end_ - at));
    return true;
  }

  int takeWord(std::uint64_t word) {
    word ^= 0x3030303030303030ULL;
    const std::uint64_t others = (word | (word + 0x7676767676767676ULL)) & 0x8080808080808080ULL;
    const int digits = others == 0 ? 8 : __builtin_ctzll(others) / 8;
    if (digits == 0) return 0;
    word <<= 8 * (8 - digits);
    word = word * 10 + (word >> 8);
    word = ((word & 0x000000FF000000FFULL) * 0x000F424000000064ULL +
            ((word >> 16) & 0x000000FF000000FFULL) * 0x0000271000000001ULL) >>
           32;
    value_ = value_ * kDigitPowers[digits] + (word & 0xFFFFFFFFULL);
    count_ += digits;
    return digits;
  }

  const char* takeSingly(const char* at) {
    for (; at < end_ && isDecimalDigit(*at); ++at, ++count_)
      value_ = value_ * 10 + static_cast<unsigned>(*at - '0');
    return at;
  }

  const char* begin_;
  const char* end_;
  std::uint64_t value_ = 0;
  std::ptrdiff_t count_ = 0;
};

// Powers of ten up to these are exact in the type, and so are integers up to 2^digits: one division of the
// two is then correctly rounded.
template <typename Real>
constexpr int kExactPower = 22;
template <>
constexpr int kExactPower<float> = 10;

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The numbers that files are full of: a minus or none, digits and decimals. Few digits give an exact result
// by one division. Null for all other forms and for what isn't a number, which RealReader sorts out.
template <typename Real>
const char* readPlain(const char* begin, const char* end, Real& value) {
  const bool negative = begin < end && *begin == '-';
  const char* first = begin + (negative ? 1 : 0);
  DigitRun digits(begin, end);
  const char* at = digits.take(first);
  std::ptrdiff_t decimals = 0;
  if (at < end && *at == '.') {
    decimals = -digits.count();
    at = digits.take(at + 1);
    decimals += digits.count();
  }
  if (digits.count() == 0 || (at < end && ((*at | 0x20) == 'e' || (*at | 0x20) == 'x'))) return nullptr;
  constexpr std::uint64_t kExactInteger = std::uint64_t(1) << std::numeric_limits<Real>::digits;
  const bool exact = digits.count() <= 19 && digits.value() <= kExactInteger && decimals <= kExactPower<Real>;
  const Real magnitude = exact ? static_cast<Real>(digits.value()) / static_cast<Real>(kPowersOfTen[decimals])
                               : convertDecimal<Real>(first, at);
  value = negative ? -magnitude : magnitude;
  return at;
}

template <typename Real>
const char* readReal(const char* begin, const char* end, Rules rules, Real& value) {
  const char* after = readPlain(begin, end, value);
  return after != nullptr ? after : RealReader<Real>(begin, end, rules).read(value);
}

// strtol's value of the digits at `at` (sign included), clamped at the type's limits; null if there is no
// digit.
const char* readLong(const char* at, const char* end, long& value) {
  const bool negative = at < end && *at == '-';
  if (at < end && (*at == '-' || *at == '+')) ++at;
  const char* digits = at;
  unsigned long magnitude = 0;
  const unsigned long limit = negative ? 1UL + LONG_MAX : LONG_MAX;
  for (; at < end && isDecimalDigit(*at); ++at) {
    const unsigned long digit = static_cast<unsigned long>(*at - '0');
    magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
  }
  if (at == digits) return nullptr;
  value = static_cast<long>(negative ? 0UL - magnitude : magnitude);
  return at;
}

template <typename Real>
bool scanReal(const char*& cursor, const char* end, Real& value) {
  cursor = skipBlanks(cursor, end);
  const char* after = readReal(cursor, end, Rules::Scanf, value);
  if (after == nullptr) return false;
  cursor = after;
  return true;
}

template <typename Integer>
bool scanInteger(const char*& cursor, const char* end, Integer& value) {
  cursor = skipBlanks(cursor, end);
  long wide = 0;
  const char* after = readLong(cursor, end, wide);
  if (after == nullptr) return false;
  value = static_cast<Integer>(wide);
  cursor = after;
  return true;
}

// --- Number to text
// ---------------------------------------------------------------------------------------------------

constexpr int kFastDecimals = 12;
constexpr std::uint64_t kIntegerPowers[kFastDecimals + 1] = {
    1,        10,        100,        1000,        10000,        100000,       1000000,
    10000000, 100000000, 1000000000, 10000000000, 100000000000, 1000000000000};

constexpr char kDigitPairs[] =
    "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546474849"
    "5051525354555657585960616263646566676869707172737475767778798081828384858687888990919293949596979899";

constexpr int kMantissaBits = 52;
constexpr int kExponentBias = 1075;
constexpr int kSpecialExponent = 0x7ff;
// A fraction of this many bits or more lies below half a unit of the twelfth decimal: 2^53 * 10^12 < 2^93.
constexpr int kVanishingShift = 100;

// Whole part and decimals of a magnitude, rounded half to even on exact ties.
struct Decimal {
  std::uint64_t whole;
  std::uint64_t fraction;
};

Decimal roundToDecimals(std::uint64_t mantissa, int shift, int decimals) {
  if (shift <= 0) return {mantissa << -shift, 0};
  if (shift >= kVanishingShift) return {0, 0};
  const std::uint64_t whole = shift < 64 ? mantissa >> shift : 0;
  const std::uint64_t below = shift < 64 ? mantissa & ((std::uint64_t(1) << shift) - 1) : mantissa;
  const std::uint64_t unit = kIntegerPowers[decimals];
  const UInt128 product = UInt128(below) * unit;
  std::uint64_t fraction = static_cast<std::uint64_t>(product >> shift);
  const UInt128 remainder = product & ((UInt128(1) << shift) - 1);
  const UInt128 half = UInt128(1) << (shift - 1);
  const bool odd = ((decimals == 0 ? whole : fraction) & 1) != 0;
  if (remainder > half || (remainder == half && odd)) ++fraction;
  return fraction == unit ? Decimal{whole + 1, 0} : Decimal{whole, fraction};
}

// `count` digits of a value below 10^count, leading zeros included.
char* appendDigits(char* at, std::uint64_t value, int count) {
  char* to = at + count;
  while (to - at >= 2) {
    to -= 2;
    std::memcpy(to, kDigitPairs + value % 100 * 2, 2);
    value /= 100;
  }
  if (to != at) *at = static_cast<char>('0' + value);
  return at + count;
}

char* appendWord(char* at, std::string_view word) {
  std::memcpy(at, word.data(), word.size());
  return at + word.size();
}

template <typename Append>
void appendThroughBuffer(std::string& text, Append append) {
  char buffer[kNumberTextCapacity];
  text.append(buffer, static_cast<std::size_t>(append(buffer) - buffer));
}

}  // namespace

bool TextScan::read(double& value) {
  return scanReal(cursor_, end_, value);
}

bool TextScan::read(float& value) {
  return scanReal(cursor_, end_, value);
}

bool TextScan::read(short& value) {
  return scanInteger(cursor_, end_, value);
}

bool TextScan::read(int& value) {
  return scanInteger(cursor_, end_, value);
}

bool TextScan::read(std::string_view& word) {
  cursor_ = skipBlanks(cursor_, end_);
  const char* begin = cursor_;
  while (cursor_ < end_ && !isBlankCharacter(static_cast<unsigned char>(*cursor_))) ++cursor_;
  if (cursor_ == begin) return false;
  word = std::string_view(begin, static_cast<std::size_t>(cursor_ - begin));
  return true;
}

bool TextScan::atEnd() {
  cursor_ = skipBlanks(cursor_, end_);
  return cursor_ == end_;
}

int scanReals(std::string_view text, double* x, double* y, float* z) {
  TextScan scan(text);
  if (scan.atEnd()) return -1;
  if (!scan.read(*x)) return 0;
  if (y == nullptr || !scan.read(*y)) return 1;
  return z == nullptr || !scan.read(*z) ? 2 : 3;
}

double textToReal(std::string_view text, std::size_t* used) {
  const char* end = text.data() + text.size();
  double value = 0;
  const char* after = readReal(skipBlanks(text.data(), end), end, Rules::Strtod, value);
  if (used != nullptr) *used = after == nullptr ? 0 : static_cast<std::size_t>(after - text.data());
  return value;
}

long textToInteger(std::string_view text, std::size_t* used) {
  const char* end = text.data() + text.size();
  long value = 0;
  const char* after = readLong(skipBlanks(text.data(), end), end, value);
  if (used != nullptr) *used = after == nullptr ? 0 : static_cast<std::size_t>(after - text.data());
  return value;
}

char* appendFixed(char* at, double value, int decimals) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  if (bits >> 63) *at++ = '-';
  const int exponent = static_cast<int>(bits >> kMantissaBits) & kSpecialExponent;
  std::uint64_t mantissa = bits & ((std::uint64_t(1) << kMantissaBits) - 1);
  if (exponent == kSpecialExponent) return appendWord(at, mantissa == 0 ? "inf" : "nan");
  if (exponent != 0) mantissa |= std::uint64_t(1) << kMantissaBits;

  const int count = std::clamp(decimals, 0, kMaxDecimals);
  const int shift = kExponentBias - std::max(exponent, 1);
  if (count > kFastDecimals || shift < -11) {
    return std::to_chars(at, at + kNumberTextCapacity - 1, std::fabs(value), std::chars_format::fixed, count)
        .ptr;
  }
  const Decimal decimal = roundToDecimals(mantissa, shift, count);
  at = std::to_chars(at, at + 20, decimal.whole).ptr;
  if (count == 0) return at;
  *at++ = '.';
  return appendDigits(at, decimal.fraction, count);
}

char* appendInt(char* at, long long value) {
  return std::to_chars(at, at + 20, value).ptr;
}

char* appendGeneral(char* at, double value, int precision) {
  const int count = std::clamp(precision, 0, kMaxDecimals);
  return std::to_chars(at, at + kNumberTextCapacity, value, std::chars_format::general, count).ptr;
}

void appendFixed(std::string& text, double value, int decimals) {
  appendThroughBuffer(text, [&](char* at) { return appendFixed(at, value, decimals); });
}

void appendInt(std::string& text, long long value) {
  appendThroughBuffer(text, [&](char* at) { return appendInt(at, value); });
}

void appendGeneral(std::string& text, double value, int precision) {
  appendThroughBuffer(text, [&](char* at) { return appendGeneral(at, value, precision); });
}

std::string fixedText(double value, int decimals, int width) {
  std::string text;
  appendFixed(text, value, decimals);
  if (width > 0 && text.size() < static_cast<std::size_t>(width))
    text.insert(0, static_cast<std::size_t>(width) - text.size(), ' ');
  return text;
}

}  // namespace kaldex
