#include "kaldex/model/angle.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "kaldex/model/geometry.h"

inline namespace kaldex_v1 {
namespace {

// Angles are printed and carried in whole units of a hundred-thousandth of a second, so that 60 never shows.
constexpr std::int64_t kUnitsASecond = 100000;
constexpr std::int64_t kUnitsAMinute = 60 * kUnitsASecond;
constexpr std::int64_t kUnitsADegree = 60 * kUnitsAMinute;

std::int64_t limitOf(short kind) {
  return (kind == kLatitudeKind ? 90 : 180) * kUnitsADegree;
}

char letterOf(short kind, bool negative, bool portugueseLetters) {
  if (kind == kLatitudeKind) return negative ? 'S' : 'N';
  if (!negative) return 'E';
  return portugueseLetters ? 'O' : 'W';
}

/// A blank and a number of at most three digits.
char* appendNumber(char* place, std::int64_t number) {
  *place++ = ' ';
  if (number >= 100) *place++ = static_cast<char>('0' + number / 100);
  if (number >= 10) *place++ = static_cast<char>('0' + number / 10 % 10);
  *place++ = static_cast<char>('0' + number % 10);
  return place;
}

char* appendSeconds(char* place, std::int64_t units) {
  place = appendNumber(place, units / kUnitsASecond);
  *place++ = '.';
  for (std::int64_t digit = kUnitsASecond / 10, rest = units % kUnitsASecond; digit > 0; digit /= 10) {
    *place++ = static_cast<char>('0' + rest / digit % 10);
  }
  return place;
}

/// +1 or -1 for a hemisphere letter of that kind, 0 for anything else.
int signOfLetter(QChar letter, short kind) {
  switch (letter.toUpper().unicode()) {
    case 'N':
      return kind == kLatitudeKind ? 1 : 0;
    case 'S':
      return kind == kLatitudeKind ? -1 : 0;
    case 'E':
      return kind == kLongitudeKind ? 1 : 0;
    case 'O':
    case 'W':
      return kind == kLongitudeKind ? -1 : 0;
    default:
      return 0;
  }
}

/// The four parts of an angle text, cut at blanks; false if there are fewer or more.
bool cutParts(std::string_view text, std::string_view (&parts)[4]) {
  int count = 0;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.empty()) return count == 4;
    if (count == 4) return false;
    parts[count] = text.substr(0, text.find(' '));
    text.remove_prefix(parts[count++].size());
  }
}

template <class Number, class... Format>
bool readAll(std::string_view part, Number& value, Format... format) {
  const char* end = part.data() + part.size();
  const auto result = std::from_chars(part.data(), end, value, format...);
  return result.ec == std::errc() && result.ptr == end;
}

bool readWhole(std::string_view part, int limit, short& value) {
  int number = -1;
  if (!readAll(part, number) || number < 0 || number > limit) return false;
  value = static_cast<short>(number);
  return true;
}

bool readSeconds(std::string_view part, double& value) {
  // A sign, a word or an exponent is a number elsewhere, but no seconds.
  if (part.find_first_not_of("0123456789.") != std::string_view::npos) return false;
  // Writers that round seconds on their own print 60.00; it is a plain value to read.
  return readAll(part, value, std::chars_format::fixed) && value <= 60.0;
}

}  // namespace

const QString& Encode(double angle, short kind, QString& text, bool portugueseLetters) {
  text.clear();
  if (kind == kLongitudeKind && std::fabs(angle) > kPi && std::fabs(angle) < kUnsetLimit) {
    angle = std::remainder(angle, 2.0 * kPi);
  }
  // The negated comparison also refuses what is no number.
  if (!(std::fabs(angle) < 4.0)) return text;
  const std::int64_t units = std::llround(std::fabs(Math_Rad_To_Deg(angle)) * kUnitsADegree);
  if (units > limitOf(kind)) return text;
  char buffer[40];
  char* place = buffer;
  *place++ = letterOf(kind, angle < 0.0 && units > 0, portugueseLetters);
  place = appendNumber(place, units / kUnitsADegree);
  place = appendNumber(place, units % kUnitsADegree / kUnitsAMinute);
  place = appendSeconds(place, units % kUnitsAMinute);
  text = QString::fromLatin1(buffer, static_cast<int>(place - buffer));
  return text;
}

double Decode(const QString& text, short kind, short& degrees, short& minutes, double& seconds) {
  degrees = minutes = 0;
  seconds = 0.0;
  const QByteArray bytes = text.toLatin1();
  std::string_view parts[4];
  if (!cutParts({bytes.constData(), static_cast<std::size_t>(bytes.size())}, parts) || parts[0].size() != 1) {
    return kUnsetValue;
  }
  const int sign = signOfLetter(QChar::fromLatin1(parts[0][0]), kind);
  const int limit = kind == kLatitudeKind ? 90 : 180;
  short wholeDegrees = 0, wholeMinutes = 0;
  double rest = 0.0;
  if (sign == 0 || !readWhole(parts[1], limit, wholeDegrees) || !readWhole(parts[2], 59, wholeMinutes) ||
      !readSeconds(parts[3], rest)) {
    return kUnsetValue;
  }
  const double angle = wholeDegrees + wholeMinutes / 60.0 + rest / 3600.0;
  if (angle > limit) return kUnsetValue;
  degrees = wholeDegrees;
  minutes = wholeMinutes;
  seconds = rest;
  return sign * Math_Deg_To_Rad(angle);
}

}  // namespace kaldex_v1
