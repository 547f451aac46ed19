#include "lib/ascii/record_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/character_class.h"
#include "base/number_text.h"
#include "lib/frame/delimited_record.h"

namespace kaldex {

namespace {

constexpr float kLowestImpedance = -1.0f;

PlaneResult judged(int count, int expected, double x, double y, float z) {
  if (count <= 0) return PlaneResult::noNumber;
  const bool good = count == expected && std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
  return good ? PlaneResult::found : PlaneResult::malformed;
}

}  // namespace

bool startsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

bool startsLikeNumber(const char* text) {
  return *text == '-' || isDecimalDigit(*text);
}

bool isHemisphereLetter(char letter) {
  return letter != 0 && std::strchr("ENOSWenosw", letter) != nullptr;
}

bool isHemisphereWord(const char* word) {
  return isHemisphereLetter(word[0]) && word[1] == 0;
}

bool startsCoordinates(const char* word) {
  return startsLikeNumber(word) || isHemisphereWord(word);
}

bool parseNetworkRecord(std::string_view text, NetworkRecord& record) {
  short identifier = 0;
  TextScan scan(text);
  if (scan.readAll(identifier, record.impedancePositive, record.impedanceNegative, record.demand) < 4) {
    return false;
  }
  for (const float value : {record.impedancePositive, record.impedanceNegative, record.demand}) {
    if (!std::isfinite(value)) return false;
  }
  record.impedancePositive = std::max(record.impedancePositive, kLowestImpedance);
  record.impedanceNegative = std::max(record.impedanceNegative, kLowestImpedance);
  return true;
}

PlaneResult parsePlanePair(std::string_view text, double& x, double& y) {
  float z = 0.0f;
  const int count = scanReals(text, &x, &y, &z);
  return judged(count, 2, x, y, z);
}

PlaneResult parsePlaneSample(std::string_view text, double& x, double& y, float& z) {
  const int count = scanReals(text, &x, &y, &z);
  return judged(count, 3, x, y, z);
}

bool parseReal(std::string_view text, double& value) {
  if (text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) return false;
  std::size_t used = 0;
  value = textToReal(text, &used);
  return used > 0 && used == text.size() && std::isfinite(value);
}

int splitRecord(std::string_view text, std::string_view separators, std::string_view* fields, int capacity) {
  int count = 0;
  DelimitedFields record(text, separators);
  std::string_view field;
  for (; record.next(field); ++count) {
    if (count < capacity) fields[count] = stripped(field);
  }
  for (int i = count; i < capacity; ++i) fields[i] = {};
  return count;
}

}  // namespace kaldex
