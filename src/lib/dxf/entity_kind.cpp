#include "lib/dxf/entity_kind.h"

#include <algorithm>
#include <iterator>

namespace kaldex {

namespace {

struct NamedKind {
  std::string_view name;
  EntityKind kind;
};
constexpr NamedKind kKinds[] = {
    {"VERTEX", EntityKind::vertex}, {"LINE", EntityKind::line},         {"POINT", EntityKind::point},
    {"TEXT", EntityKind::text},     {"POLYLINE", EntityKind::polyline}, {"ARC", EntityKind::arc},
    {"CIRCLE", EntityKind::circle}, {"INSERT", EntityKind::point},      {"ATTRIB", EntityKind::text}};

constexpr std::string_view kStructure[] = {"SEQEND", "ENDSEC", "SECTION", "EOF", "VERTEX"};

}  // namespace

EntityKind entityKind(std::string_view name) {
  for (const NamedKind& known : kKinds) {
    if (known.name == name) return known.kind;
  }
  return EntityKind::none;
}

bool isPartOfStructure(std::string_view name) {
  return std::find(std::begin(kStructure), std::end(kStructure), name) != std::end(kStructure);
}

}  // namespace kaldex
