#ifndef KALDEX_LEGACY_LINE_FILES_H
#define KALDEX_LEGACY_LINE_FILES_H

#include <cstdint>
#include <memory>
#include <vector>

#include "base/file_window.h"
#include "lib/legacy/record_search.h"

namespace kaldex {

// Results of opening a pair of files.
enum OpenResult { openShort = 0, openDone = 1, openMissing = 100 };

// The line files of the older system: name.li1 has a record for each line, name.li2 the coordinates.
// Identifiers count from 1. Numbers are little-endian.
struct LineFiles {
  RecordTable records;
  std::unique_ptr<FileWindow> coordinates;  // null while the files are not open
  int highestDirect = 0;  // the record of this identifier is the last one that is found by counting
  int limit = 0;          // identifiers are below
  bool hasDirect = false;
};

struct LineRecord {
  std::uint16_t id = 0;
  std::uint16_t points = 0;
  float firstX = 0, firstY = 0;
  float lastX = 0, lastY = 0;
  std::uint32_t offset = 0;
};

// An OpenResult. `name` in the bytes of the file system.
int linha_abre_arq(LineFiles& files, const char* name);
void linha_fecha_arq(LineFiles& files);

// The record of a line: 1, or 0 when there is none.
int linha_le_head(LineFiles& files, LineRecord& record, int id);
// The record and the points.
int linha_le(LineFiles& files, LineRecord& record, int id, std::vector<float>& x, std::vector<float>& y);

// How many points the `count` lines have together; 0 when one of them can't be read.
int aloca_pt(LineFiles& files, LineRecord& record, const std::int16_t* ids, int count, long long& total);

}  // namespace kaldex

#endif
