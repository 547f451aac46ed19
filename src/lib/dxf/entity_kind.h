#ifndef KALDEX_DXF_ENTITY_KIND_H
#define KALDEX_DXF_ENTITY_KIND_H

#include <string_view>

namespace kaldex {

// The entities that the reader knows, by how it reads them.
enum class EntityKind { none, line, polyline, vertex, point, text, arc, circle };

// "none" for what is not read.
EntityKind entityKind(std::string_view name);

// Names at the start of what is no entity of its own: ends, and what belongs to the entity before.
bool isPartOfStructure(std::string_view name);

}  // namespace kaldex

#endif
