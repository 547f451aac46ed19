#ifndef KALDEX_MODEL_DBF_HEADER_H
#define KALDEX_MODEL_DBF_HEADER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kaldex {

struct DbfColumn {
  std::string name;  ///< bytes, without outer blanks; may be empty
  char type = 'C';
  int offset = 0;  ///< in the record, whose first byte is the deletion mark
  int width = 0;
  int decimals = 0;
};

/// What the head of a dBASE file tells, before it is held against the file's size.
struct DbfHeader {
  unsigned char version = 0;
  unsigned char languageDriver = 0;
  std::uint32_t declaredRows = 0;
  int headerLength = 0;
  int declaredRecordLength = 0;
  std::vector<DbfColumn> columns;

  /// Length of a record that just holds all columns.
  int neededRecordLength() const {
    return columns.empty() ? 1 : columns.back().offset + columns.back().width;
  }
};

/// Longest possible head.
constexpr std::size_t kDbfHeaderLimit = 65535;

/// Reads the head from the first bytes of a file (up to kDbfHeaderLimit of them). False for what is no dBASE
/// III to FoxPro table. A header length that can't be is replaced by the one that the column descriptors end
/// at.
bool parseDbfHeader(const unsigned char* bytes, std::size_t size, DbfHeader& header);

/// Cut the columns to a record length: those beyond it get the width 0.
void fitColumns(DbfHeader& header, int recordLength);

}  // namespace kaldex

#endif
