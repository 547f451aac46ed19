#include "lib/ascii/column_text.h"

#include <algorithm>
#include <limits>

#include "base/character_class.h"
#include "base/number_text.h"
#include "base/strings.h"
#include "kaldex/model/field.h"
#include "lib/ascii/record_text.h"
#include "lib/frame/delimited_record.h"

namespace kaldex {

namespace {

constexpr std::size_t kLongestName = 10;
constexpr std::size_t kRepeatedRoom = 9;

bool sameName(const std::string& left, const char* right) {
  return Sstrcasecmp(left.c_str(), right) == 0;
}

bool beginsWithOneOf(std::string_view text, std::string_view word) {
  return startsWith(text, word) && text.size() > word.size() &&
         std::string_view(";, ").find(text[word.size()]) != std::string_view::npos;
}

}  // namespace

std::string spacedDeclaration(std::string_view line, char separator) {
  while (!line.empty() && isBlankCharacter(static_cast<unsigned char>(line.back()))) line.remove_suffix(1);
  std::string spaced;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (i > 0 && line[i] == separator) {
      spaced.append({' ', separator, ' '});
    } else {
      spaced += line[i];
    }
  }
  return spaced;
}

ColumnDeclaration parseDeclaration(std::string_view spaced) {
  std::string_view name, type, size, separator;
  TextScan(spaced).readAll(name, separator, type, separator, size);
  return {std::string(name), std::string(type), std::string(size)};
}

bool declaresKey(std::string_view spaced) {
  return beginsWithOneOf(spaced, "T_KEY");
}

bool declaresName(std::string_view spaced) {
  return beginsWithOneOf(spaced, "T_NAME");
}

bool columnShape(const ColumnDeclaration& declaration, ColumnShape& shape) {
  const auto is = [&](const char* word) { return sameName(declaration.type, word); };
  if (is("INTEGER") || is("INTEIRO")) {
    shape = {fieldInteger, 10, 0};
  } else if (is("FLOAT") || is("REAL")) {
    shape = {fieldReal, 17, 8};
  } else if (is("DATE") || is("DATA")) {
    shape = {fieldDate, 8, 0};
  } else if (is("TEXT") || is("TEXTO")) {
    const long size = textToInteger(declaration.size);
    if (size <= 0 || size > std::numeric_limits<short>::max()) return false;
    shape = {fieldText, static_cast<short>(size), 0};
  } else {
    return false;
  }
  return true;
}

bool ColumnNames::replaceReserved(std::string& name, std::string& cut) {
  std::string capitals = name;
  toUpper(capitals.data());
  if (!isReservedName(capitals) && capitals != "SPOSTGRESQL_ID SERIAL") return false;
  numbers_.cut(name, NameNumbers::kReservedRoom);
  cut = name;
  numbers_.append(name);
  return true;
}

std::string ColumnNames::cleaned(std::string name) {
  constexpr std::string_view unwanted = "!@#$%&*()-_+=|\\{}[]';:\"<>,.?/";
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (unwanted.find(name[i]) != std::string_view::npos) name[i] = i == 0 ? 'X' : '_';
  }
  if (!name.empty() && isDecimalDigit(name[0])) {
    name.insert(0, 1, 'X');
  } else if (sameName(name, "qint32") || sameName(name, "STRING")) {
    name += "_REN";
  }
  return name;
}

std::string ColumnNames::unique(std::string name, const std::function<bool(const std::string&)>& taken) {
  name.resize(std::min(name.size(), kLongestName));
  if (!taken(name)) return name;
  numbers_.cut(name, kRepeatedRoom);
  numbers_.append(name);
  return name;
}

}  // namespace kaldex
