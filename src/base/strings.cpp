#include "base/strings.h"

#include <QByteArray>
#include <QDate>
#include <QObject>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "base/character_class.h"
#include "base/number_text.h"
#include "base/numeric_locale.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::isBlankCharacter;
using kaldex::isDecimalDigit;

constexpr unsigned char kMultiplication = 0xD7;
constexpr unsigned char kDivision = 0xF7;
constexpr unsigned char kFeminineOrdinal = 0xAA;
constexpr unsigned char kMicro = 0xB5;
constexpr unsigned char kMasculineOrdinal = 0xBA;
constexpr unsigned char kCaseDistance = 0x20;

bool isLetter(unsigned char c) {
  if (c < 0x80) return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  if (c >= 0xC0) return c != kMultiplication && c != kDivision;
  return c == kFeminineOrdinal || c == kMicro || c == kMasculineOrdinal;
}

bool isLetterOrDigit(unsigned char c) {
  return isLetter(c) || isDecimalDigit(c);
}

unsigned char upperCase(unsigned char c) {
  const bool accented = c >= 0xE0 && c <= 0xFE && c != kDivision;
  return accented || (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - kCaseDistance) : c;
}

template <typename Test>
bool allOf(const char* text, Test test) {
  if (*text == 0) return false;
  for (; *text != 0; ++text) {
    if (!test(static_cast<unsigned char>(*text))) return false;
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlankCharacter(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && isBlankCharacter(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  return text;
}

std::size_t countDigits(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && isDecimalDigit(text[count])) ++count;
  return count;
}

std::string_view withoutSign(std::string_view text) {
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  return text;
}

bool isInteger(std::string_view text) {
  text = withoutSign(text);
  return !text.empty() && countDigits(text) == text.size();
}

// The number reader takes more than a column does: "inf", "nan" and hexadecimal digits are text here.
bool isReal(std::string_view text) {
  if (text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) return false;
  std::size_t used = 0;
  return !text.empty() && std::isfinite(kaldex::textToReal(text, &used)) && used == text.size();
}

int number(std::string_view digits) {
  return countDigits(digits) == digits.size() ? static_cast<int>(kaldex::textToInteger(digits)) : -1;
}

bool isDate(std::string_view text) {
  if (text.size() == 8 && countDigits(text) == 8) {
    return QDate::isValid(number(text.substr(0, 4)), number(text.substr(4, 2)), number(text.substr(6, 2)));
  }
  if ((text.size() != 8 && text.size() != 10) || text[2] != '/' || text[5] != '/') return false;
  const int year = number(text.substr(6));
  // Two digits leave the century open; all that matters is that 00 was a leap year last time.
  return year >= 0 && QDate::isValid(text.size() == 8 ? 2000 + year : year, number(text.substr(3, 2)),
                                     number(text.substr(0, 2)));
}

int refuse(const QString& why, char* reason) {
  if (reason != nullptr) qstrncpy(reason, why.toLatin1().constData(), kReasonCapacity);
  return 0;
}

// Digits of a width or a precision: at most three, so that no format asks for a text of unbounded size.
bool skipCount(const char*& at) {
  int digits = 0;
  for (; isDecimalDigit(*at); ++at) ++digits;
  return digits <= 3;
}

bool skipConversion(const char*& at) {
  while (*at != 0 && std::strchr("-+ #0", *at) != nullptr) ++at;
  if (!skipCount(at)) return false;
  if (*at == '.') {
    ++at;
    if (!skipCount(at)) return false;
  }
  if (*at == 'l') ++at;
  return *at != 0 && std::strchr("fFeEgGaA", *at++) != nullptr;
}

bool takesOneDouble(const char* format) {
  int conversions = 0;
  for (const char* at = format; *at != 0;) {
    if (*at++ != '%') continue;
    if (*at == '%') {
      ++at;
    } else if (++conversions > 1 || !skipConversion(at)) {
      return false;
    }
  }
  return conversions == 1;
}

}  // namespace

char* StrClean(char* text) {
  std::size_t length = std::strlen(text);
  while (length > 0 && isBlankCharacter(static_cast<unsigned char>(text[length - 1]))) --length;
  text[length] = 0;
  return text;
}

char* StrCleanLeft(char* text) {
  const char* first = text;
  while (isBlankCharacter(static_cast<unsigned char>(*first))) ++first;
  if (first != text) std::memmove(text, first, std::strlen(first) + 1);
  return text;
}

char* RemoveBlanks(char* text) {
  char* to = text;
  for (const char* from = text; *from != 0; ++from) {
    if (!isBlankCharacter(static_cast<unsigned char>(*from))) *to++ = *from;
  }
  *to = 0;
  return text;
}

bool StrIsAlpha(const char* text) {
  return allOf(text, isLetter);
}

bool StrIsDigit(const char* text) {
  return allOf(text, isDecimalDigit);
}

bool StrIsAlphaDigit(const char* text) {
  return allOf(text, isLetterOrDigit);
}

bool StrHasAlpha(const char* text) {
  while (*text != 0 && !isLetter(static_cast<unsigned char>(*text))) ++text;
  return *text != 0;
}

int Sstrcasecmp(const char* left, const char* right) {
  for (;; ++left, ++right) {
    const int a = upperCase(static_cast<unsigned char>(*left));
    const int b = upperCase(static_cast<unsigned char>(*right));
    if (a != b || a == 0) return a - b;
  }
}

char* toUpper(char* text) {
  for (char* at = text; *at != 0; ++at) {
    *at = static_cast<char>(upperCase(static_cast<unsigned char>(*at)));
  }
  return text;
}

int TestDataType(const char* text, int type, char* reason) {
  const std::string_view value = trimmed(text);
  switch (type) {
    case 0:
      return isInteger(value) ? 1 : refuse(QObject::tr("não é um número inteiro"), reason);
    case 1:
      return isReal(value) ? 1 : refuse(QObject::tr("não é um número real"), reason);
    case 2:
      return isDate(value) ? 1 : refuse(QObject::tr("não é uma data"), reason);
    default:
      return 1;
  }
}

int sprintf_double(QString& result, const char* format, double value) {
  result.clear();
  if (!takesOneDouble(format)) return 0;
  const kaldex::NumericLocaleGuard guard;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length = std::snprintf(nullptr, 0, format, value);
  if (length < 0) return 0;
  QByteArray text(length + 1, 0);
  std::snprintf(text.data(), static_cast<std::size_t>(length) + 1, format, value);
#pragma GCC diagnostic pop
  result = QString::fromLatin1(text.constData(), length);
  return 1;
}

}  // namespace kaldex_v1
