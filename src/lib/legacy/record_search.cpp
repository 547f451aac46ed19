#include "lib/legacy/record_search.h"

#include "base/byte_order.h"

namespace kaldex {

const unsigned char* findRecord(FileWindow& file, const RecordLayout& layout, int index, int id,
                                std::uint16_t endMark) {
  for (; index >= 0; --index) {
    const std::uint64_t offset = layout.header + layout.record * static_cast<std::uint64_t>(index);
    const unsigned char* const bytes = file.view(offset, layout.record);
    if (bytes == nullptr) return nullptr;
    const auto found = loadLittle<std::uint16_t>(bytes + layout.id);
    if (found == endMark) return nullptr;
    if (id >= found) return id == found ? bytes : nullptr;
  }
  return nullptr;
}

}  // namespace kaldex
