#include "model/database/dbf_header.h"

#include <algorithm>

#include "base/byte_order.h"
#include "base/character_class.h"

namespace kaldex {

namespace {

constexpr std::size_t kPrefix = 32;
constexpr std::size_t kDescriptor = 32;
constexpr std::size_t kNameLength = 11;
constexpr unsigned char kEndOfDescriptors = 0x0D;

std::string columnName(const unsigned char* bytes) {
  const char* begin = reinterpret_cast<const char*>(bytes);
  const char* end = std::find(begin, begin + kNameLength, '\0');
  while (begin != end && isBlankCharacter(*begin)) ++begin;
  while (begin != end && isBlankCharacter(end[-1])) --end;
  return std::string(begin, end);
}

DbfColumn parseDescriptor(const unsigned char* bytes) {
  DbfColumn column;
  column.name = columnName(bytes);
  column.type = static_cast<char>(bytes[kNameLength]);
  if (column.type >= 'a' && column.type <= 'z') column.type = static_cast<char>(column.type - 'a' + 'A');
  column.width = bytes[16];
  column.decimals = bytes[17];
  return column;
}

// dBASE II and level 7 tables have heads of another form.
bool isKnownVersion(unsigned char version) {
  return version > 2 && (version & 0x07) != 4;
}

// Stops at the end mark or at what can't be a descriptor; returns where.
std::size_t parseDescriptors(const unsigned char* bytes, std::size_t size, std::vector<DbfColumn>& columns) {
  std::size_t at = kPrefix;
  while (at + kDescriptor <= size && bytes[at] != kEndOfDescriptors) {
    const unsigned char type = bytes[at + kNameLength];
    if (type <= ' ' || type > '~') break;
    columns.push_back(parseDescriptor(bytes + at));
    at += kDescriptor;
  }
  return at;
}

void placeColumns(DbfHeader& header) {
  int offset = 1;
  for (DbfColumn& column : header.columns) {
    column.offset = offset;
    offset += column.width;
  }
}

// Clipper keeps the high byte of a long text's width where others keep its decimals.
void widenLongTexts(DbfHeader& header) {
  if (header.neededRecordLength() == header.declaredRecordLength) return;
  DbfHeader wide = header;
  for (DbfColumn& column : wide.columns) {
    if (column.type == 'C') column.width += 256 * column.decimals;
  }
  placeColumns(wide);
  if (wide.neededRecordLength() == header.declaredRecordLength) header = wide;
}

}  // namespace

bool parseDbfHeader(const unsigned char* bytes, std::size_t size, DbfHeader& header) {
  if (size < kPrefix + 1 || !isKnownVersion(bytes[0])) return false;
  header.version = bytes[0];
  header.declaredRows = loadLittle<std::uint32_t>(bytes + 4);
  header.headerLength = loadLittle<std::uint16_t>(bytes + 8);
  header.declaredRecordLength = loadLittle<std::uint16_t>(bytes + 10);
  header.languageDriver = bytes[29];

  const std::size_t declaredEnd = static_cast<std::size_t>(header.headerLength);
  const bool lengthMakesSense = declaredEnd > kPrefix && declaredEnd <= size;
  const std::size_t end = parseDescriptors(bytes, size, header.columns);
  const bool terminated = end < size && bytes[end] == kEndOfDescriptors;
  if (!terminated && !lengthMakesSense) return false;
  if (terminated && (!lengthMakesSense || declaredEnd <= end))
    header.headerLength = static_cast<int>(end + 1);
  if (!terminated)
    header.columns.resize(std::min(header.columns.size(), (declaredEnd - kPrefix) / kDescriptor));
  placeColumns(header);
  widenLongTexts(header);
  return !header.columns.empty();
}

void fitColumns(DbfHeader& header, int recordLength) {
  for (DbfColumn& column : header.columns) {
    column.offset = std::min(column.offset, recordLength);
    column.width = std::min(column.width, recordLength - column.offset);
  }
}

}  // namespace kaldex
