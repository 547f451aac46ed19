#include "lib/frame/reserved_names.h"

#include <algorithm>
#include <iterator>

#include "base/number_text.h"

namespace kaldex {

namespace {

constexpr std::string_view kReserved[] = {
    "NID",       "ID",     "NOME", "ROTULO",    "VISID",   "DATA",       "HORA",     "GEOID",     "CATEGORIA",
    "GANCHORID", "GVISID", "AREA", "PERIMETRO", "DEMANDA", "IMPEDANCIA", "MYSQL_ID", "KALDEX_ID", "DBID"};
constexpr int kTwoDigits = 10;

}  // namespace

bool isReservedName(std::string_view name) {
  return std::find(std::begin(kReserved), std::end(kReserved), name) != std::end(kReserved);
}

void NameNumbers::cut(std::string& name, std::size_t room) {
  ++changed_;
  name.resize(std::min(name.size(), changed_ < kTwoDigits ? room : room - 1));
}

void NameNumbers::append(std::string& name) const {
  appendInt(name, changed_);
}

}  // namespace kaldex
