#ifndef KALDEX_LEGACY_POLYGON_FILES_H
#define KALDEX_LEGACY_POLYGON_FILES_H

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/file_window.h"
#include "lib/legacy/record_search.h"

namespace kaldex {

// The polygon files of the older system: name.po1 has a record for each polygon, name.po2 lists of its lines
// and children. Identifiers count from 1. Numbers are little-endian.
struct PolygonFiles {
  RecordTable records;
  std::unique_ptr<FileWindow> lists;  // null while the files are not open
  int count = 0;
  int limit = 0;  // identifiers are below
};

struct PolygonRecord {
  static constexpr std::size_t kOwnChildren = 20;

  std::uint16_t id = 0;
  std::uint16_t lines = 0;
  std::uint32_t linesOffset = 0;
  std::int16_t children = 0;
  float childrenOffset = 0;                      // in bytes, although it is a real number
  std::array<std::int16_t, kOwnChildren> own{};  // the children, when there are no more
  float xMin = 0, xMax = 0, yMin = 0, yMax = 0;
  std::int16_t geoClass = 0;
  char flag = 0;
};

// An OpenResult. `name` in the bytes of the file system.
int poli_abre_arq(PolygonFiles& files, const char* name);
void poli_fecha_arq(PolygonFiles& files);

// The record of a polygon and its lines: 1, or 0 when there are none.
int poli_le(PolygonFiles& files, PolygonRecord& record, int id, std::vector<std::int16_t>& lines);
// The children of a record; 0 when they can't be read.
int poli_le_filhos(PolygonFiles& files, const PolygonRecord& record, std::vector<std::int16_t>& children);

}  // namespace kaldex

#endif
