#ifndef KALDEX_LEGACY_RECORD_SEARCH_H
#define KALDEX_LEGACY_RECORD_SEARCH_H

#include <cstdint>

#include "base/file_window.h"

namespace kaldex {

struct RecordLayout {
  std::size_t header;
  std::size_t record;
  std::size_t id;  // where the identifier, 16 bits without sign, stands in a record
};

// The record of an identifier in a file of records in ascending identifiers, some of which may be missing:
// the search goes from the record at `index` back towards the first. Valid until the file is read again; null
// when there is none, or a record with the end mark is met.
const unsigned char* findRecord(FileWindow& file, const RecordLayout& layout, int index, int id,
                                std::uint16_t endMark);

}  // namespace kaldex

#endif
