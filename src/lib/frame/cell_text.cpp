#include "lib/frame/cell_text.h"

#include <algorithm>

#include "base/character_class.h"

namespace kaldex {

namespace {

std::size_t signLength(const std::string& value) {
  return !value.empty() && (value[0] == '-' || value[0] == '+') ? 1 : 0;
}

// A column without room for a digit doesn't say how wide it is.
std::size_t room(int digits) {
  return static_cast<std::size_t>(std::max(digits, 1));
}

bool fitInteger(std::size_t width, std::string& value) {
  if (value.size() <= width) return false;
  const std::size_t sign = signLength(value);
  if (value.size() - sign <= width) return false;  // too long by its sign alone, which stays
  value.erase(sign, value.size() - sign - width);
  return true;
}

bool fitReal(std::size_t width, std::string& value) {
  const std::size_t sign = signLength(value);
  std::size_t end = sign;
  while (end < value.size() && isDecimalDigit(value[end])) ++end;
  if (end - sign <= width) return false;
  value.erase(sign, end - sign - width);
  return true;
}

}  // namespace

bool fitToColumn(const SField& column, std::string& value) {
  if (column.type == fieldInteger) return fitInteger(room(column.size - 1), value);
  if (column.type == fieldReal) return fitReal(room(column.size - column.decimals - 2), value);
  const std::size_t width = room(column.size);
  if (value.size() <= width) return false;
  value.resize(width);
  return true;
}

}  // namespace kaldex
