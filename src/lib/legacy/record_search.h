#ifndef KALDEX_LEGACY_RECORD_SEARCH_H
#define KALDEX_LEGACY_RECORD_SEARCH_H

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/file_window.h"

namespace kaldex {

struct RecordLayout {
  std::size_t header;
  std::size_t record;
  std::size_t id;  // where the identifier, 16 bits without sign, stands in a record
};

// The records of a file, in ascending identifiers some of which may be missing. They are held in memory, and
// no identifier is sought twice: the search goes back record by record.
class RecordTable {
 public:
  RecordTable() = default;
  // At most `limit` records of the file.
  RecordTable(FileWindow& file, const RecordLayout& layout, int limit);

  // The record of an identifier, sought from the one at `index` (always the same for an identifier) back
  // towards the first; null when there is none, or a record with the end mark is met.
  const unsigned char* find(int index, int id, std::uint16_t endMark);

 private:
  int seek(int index, int id, std::uint16_t endMark) const;
  const unsigned char* at(int index) const { return bytes_.data() + static_cast<std::size_t>(index) * size_; }

  std::size_t size_ = 1;
  std::size_t id_ = 0;
  std::vector<unsigned char> bytes_;
  std::unordered_map<std::uint32_t, int> known_;  // by end mark and identifier
};

}  // namespace kaldex

#endif
