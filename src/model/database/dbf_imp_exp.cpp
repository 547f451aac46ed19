#include <QFile>
#include <QLocale>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "base/byte_order.h"
#include "base/character_class.h"
#include "base/companion_file.h"
#include "base/file_window.h"
#include "base/text_encoding.h"
#include "kaldex/model/dbf.h"
#include "model/database/dbf_header.h"

namespace {

using kaldex::DbfColumn;
using kaldex::DbfHeader;
using kaldex::FileWindow;

constexpr int kMaxRecordLength = 65535;
constexpr int kSafeIntegerWidth = 9;
constexpr unsigned char kEndOfRows = 0x1A;

bool isRowMark(unsigned char mark) {
  return mark == ' ' || mark == '*';
}

std::string_view trimmed(const unsigned char* bytes, int width) {
  const char* begin = reinterpret_cast<const char*>(bytes);
  const char* end = begin + width;
  const auto isOuter = [](char c) {
    return c == '\0' || kaldex::isBlankCharacter(static_cast<unsigned char>(c));
  };
  while (begin != end && isOuter(*begin)) ++begin;
  while (begin != end && isOuter(end[-1])) --end;
  return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

bool isOverflow(std::string_view value) {
  return !value.empty() && value.find_first_not_of('*') == std::string_view::npos;
}

bool isZeroDate(std::string_view value) {
  return value.find_first_not_of('0') == std::string_view::npos;
}

/// What the values of a number column without decimals really need.
struct NumberSurvey {
  bool fractions = false;
  bool beyond32Bits = false;
  int decimals = 0;

  void look(std::string_view value) {
    const std::size_t mark = value.find_first_of(".,eE");
    if (mark != std::string_view::npos) {
      lookBehindMark(value.substr(mark));
      return;
    }
    if (value.size() <= kSafeIntegerWidth || isOverflow(value)) return;
    if (value.front() == '+') value.remove_prefix(1);
    int number = 0;
    const auto parsed = std::from_chars(value.data(), value.data() + value.size(), number);
    if (parsed.ec == std::errc::result_out_of_range) beyond32Bits = true;
  }

 private:
  void lookBehindMark(std::string_view rest) {
    if (rest.front() == 'e' || rest.front() == 'E') {
      fractions = true;
      return;
    }
    rest.remove_prefix(1);
    const std::size_t last = rest.find_last_not_of('0');
    if (last == std::string_view::npos) return;
    fractions = true;
    decimals = std::max(decimals, static_cast<int>(last + 1));
  }
};

}  // namespace

inline namespace kaldex_v1 {

struct DbfImpExp::Table {
  Table(const QByteArray& path, const QString& encodingOverride);

  bool parse();
  int chooseRecordLength();
  bool fitsSize(int recordLength) const;
  bool marksAreGood(int recordLength);
  long long countRows();
  void sortColumns();
  void survey();
  void surveyRow(const unsigned char* row, kaldex::Utf8Evidence& texts);
  const unsigned char* row(long long number);
  QString text(std::string_view bytes) { return decoder->decode(bytes); }
  QString value(const DbfColumn& column, const unsigned char* row);
  QString numberValue(std::string_view bytes) const;
  SField* fieldOf(int index);
  bool isFoxPro() const { return header.version >= 0x30 && header.version <= 0x32; }

  QByteArray path;
  FileWindow file;
  QString encodingOverride;
  bool open = false;
  DbfHeader header;
  int recordLength = 0;
  long long rows = 0;
  long long current = 0;
  std::vector<DbfColumn> columns;  ///< those that can be read
  std::vector<NumberSurvey> numbers;
  std::vector<std::string> ignored;
  bool surveyed = false;
  kaldex::TextEncoding encoding{};
  std::unique_ptr<kaldex::TextDecoder> decoder;
};

DbfImpExp::Table::Table(const QByteArray& path, const QString& encodingOverride)
    : path(path), file(path), encodingOverride(encodingOverride) {
  if (file.isOpen()) open = parse();
}

bool DbfImpExp::Table::parse() {
  const std::size_t size =
      static_cast<std::size_t>(std::min<std::uint64_t>(file.size(), kaldex::kDbfHeaderLimit));
  const unsigned char* bytes = file.view(0, size);
  if (bytes == nullptr || !kaldex::parseDbfHeader(bytes, size, header)) return false;
  recordLength = chooseRecordLength();
  if (recordLength < 1) return false;
  kaldex::fitColumns(header, recordLength);
  rows = countRows();
  sortColumns();
  return true;
}

/// The head tells the record length twice, directly and by its columns. Where the two differ, the file's size
/// decides, then the deletion marks of the rows.
int DbfImpExp::Table::chooseRecordLength() {
  const int declared = header.declaredRecordLength;
  const int needed = header.neededRecordLength();
  if (declared == needed || needed > kMaxRecordLength) return declared;
  if (declared < 1) return needed;
  for (int length : {declared, needed}) {
    if (fitsSize(length)) return length;
  }
  return !marksAreGood(declared) && marksAreGood(needed) ? needed : declared;
}

bool DbfImpExp::Table::fitsSize(int length) const {
  const std::uint64_t data = file.size() - static_cast<std::uint64_t>(header.headerLength);
  const std::uint64_t rows =
      static_cast<std::uint64_t>(header.declaredRows) * static_cast<std::uint64_t>(length);
  return rows != 0 && (data == rows || data == rows + 1);
}

bool DbfImpExp::Table::marksAreGood(int length) {
  constexpr int kLookedAt = 100;
  std::uint64_t at = static_cast<std::uint64_t>(header.headerLength);
  for (int i = 0; i < kLookedAt && at < file.size(); ++i, at += static_cast<std::uint64_t>(length)) {
    const unsigned char* mark = file.view(at, 1);
    if (mark == nullptr || (!isRowMark(*mark) && *mark != kEndOfRows)) return false;
    if (*mark == kEndOfRows) break;
  }
  return true;
}

/// As many rows as stand in the file whole: fewer than the head counts in a file cut short, more in one whose
/// writer died before it wrote the count.
long long DbfImpExp::Table::countRows() {
  const std::uint64_t data = file.size() - static_cast<std::uint64_t>(header.headerLength);
  const auto present = static_cast<long long>(data / static_cast<std::uint64_t>(recordLength));
  long long count = std::min<long long>(header.declaredRows, present);
  for (; count < present; ++count) {
    const std::uint64_t at = static_cast<std::uint64_t>(header.headerLength) +
                             static_cast<std::uint64_t>(count) * static_cast<std::uint64_t>(recordLength);
    const unsigned char* mark = file.view(at, 1);
    if (mark == nullptr || !isRowMark(*mark)) break;
  }
  return count;
}

void DbfImpExp::Table::sortColumns() {
  static constexpr std::string_view kReadable = "CNFDLI";
  for (const DbfColumn& column : header.columns) {
    const bool binaryReal = column.width == 8 && (column.type == 'O' || (column.type == 'B' && isFoxPro()));
    const bool readable =
        kReadable.find(column.type) != std::string_view::npos && (column.type != 'I' || column.width == 4);
    if (readable || binaryReal) {
      columns.push_back(column);
      if (binaryReal) columns.back().type = 'O';
    } else {
      ignored.push_back(column.name);
    }
  }
  numbers.resize(columns.size());
}

const unsigned char* DbfImpExp::Table::row(long long number) {
  if (number < 0 || number >= rows) return nullptr;
  return file.view(static_cast<std::uint64_t>(header.headerLength) +
                       static_cast<std::uint64_t>(number) * static_cast<std::uint64_t>(recordLength),
                   static_cast<std::size_t>(recordLength));
}

/// One walk over all rows, when types or texts are first wanted: what the texts' bytes look like, and whether
/// the columns without decimals hold what they declare.
void DbfImpExp::Table::survey() {
  if (surveyed) return;
  surveyed = true;
  kaldex::EncodingSigns signs;
  for (const DbfColumn& column : header.columns) signs.texts.add(column.name);
  for (long long i = 0; i < rows; ++i) {
    const unsigned char* bytes = row(i);
    if (bytes == nullptr) break;
    surveyRow(bytes, signs.texts);
  }
  signs.overrideName = encodingOverride.toUtf8();
  signs.languageDriver = header.languageDriver;
  constexpr qint64 kLongestSign = 256;
  QFile cpg(QFile::decodeName(kaldex::companionFile(path, "cpg")));
  if (!cpg.fileName().isEmpty() && cpg.open(QIODevice::ReadOnly)) signs.cpgText = cpg.read(kLongestSign);
  encoding = kaldex::chooseEncoding(signs);
  decoder = std::make_unique<kaldex::TextDecoder>(encoding.name);
}

void DbfImpExp::Table::surveyRow(const unsigned char* bytes, kaldex::Utf8Evidence& texts) {
  const bool accents = kaldex::hasNonAscii(
      std::string_view(reinterpret_cast<const char*>(bytes), static_cast<size_t>(recordLength)));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const DbfColumn& column = columns[i];
    if (column.type == 'C') {
      if (accents) texts.add(trimmed(bytes + column.offset, column.width));
    } else if ((column.type == 'N' || column.type == 'F') && column.decimals == 0) {
      const std::string_view value = trimmed(bytes + column.offset, column.width);
      if (!value.empty()) numbers[i].look(value);
    }
  }
}

SField* DbfImpExp::Table::fieldOf(int index) {
  const DbfColumn& column = columns[static_cast<std::size_t>(index)];
  const NumberSurvey& survey = numbers[static_cast<std::size_t>(index)];
  short type = fieldText;
  int width = column.width, decimals = 0;
  switch (column.type) {
    case 'N':
    case 'F':
      decimals = column.decimals > 0 ? column.decimals : survey.decimals;
      type = decimals > 0 || survey.fractions || survey.beyond32Bits ? fieldReal : fieldInteger;
      break;
    case 'I':
      type = fieldInteger;
      width = 11;
      break;
    case 'O':
      type = fieldReal;
      width = 24;
      decimals = 15;
      break;
    case 'D':
      if (column.width == 8) type = fieldDate;
      break;
    default:
      break;
  }
  const QString name = column.name.empty() ? QStringLiteral("COLUMN%1").arg(index + 1) : text(column.name);
  constexpr int kWidest = std::numeric_limits<short>::max();
  return new SField(name, type, static_cast<short>(std::min(width, kWidest)), static_cast<short>(decimals),
                    static_cast<short>(index));
}

QString DbfImpExp::Table::numberValue(std::string_view bytes) const {
  if (isOverflow(bytes)) return QString();
  // A whole number may carry a fraction of zeros, which no integer column would take.
  const std::size_t point = bytes.find_first_of(".,");
  const bool whole = point != std::string_view::npos && point > 0 &&
                     bytes.find_first_not_of('0', point + 1) == std::string_view::npos;
  if (whole) bytes = bytes.substr(0, point);
  return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}

QString DbfImpExp::Table::value(const DbfColumn& column, const unsigned char* row) {
  const unsigned char* bytes = row + column.offset;
  if (column.type == 'I') return QString::number(kaldex::loadLittle<std::int32_t>(bytes));
  if (column.type == 'O') {
    const double real = kaldex::loadLittle<double>(bytes);
    return std::isfinite(real) ? QString::number(real, 'g', QLocale::FloatingPointShortest) : QString();
  }
  const std::string_view content = trimmed(bytes, column.width);
  if (content.empty()) return QString();
  switch (column.type) {
    case 'C':
      return text(content);
    case 'N':
    case 'F':
      if (column.decimals == 0) return numberValue(content);
      return isOverflow(content) ? QString()
                                 : QString::fromLatin1(content.data(), static_cast<int>(content.size()));
    case 'D':
      if (isZeroDate(content)) return QString();
      break;
    case 'L':
      if (content == "?") return QString();
      break;
    default:
      break;
  }
  return QString::fromLatin1(content.data(), static_cast<int>(content.size()));
}

DbfImpExp::DbfImpExp(const QString& path, OpenMode, const QString& encoding)
    : table_(std::make_unique<Table>(kaldex::companionFile(path, "dbf"), encoding)) {}

DbfImpExp::~DbfImpExp() = default;

bool DbfImpExp::isOpen() const {
  return table_->open;
}

int DbfImpExp::ReadAttr(const QString& path, SFieldList* fields) {
  if (fields == nullptr) return 0;
  const QByteArray asked = kaldex::companionFile(path, "dbf");
  if (asked != table_->path && !asked.isEmpty()) {
    DbfImpExp other(path, OpenMode::read, table_->encodingOverride);
    return other.ReadAttr(path, fields);
  }
  if (!table_->open) return 0;
  table_->survey();
  for (int i = 0; i < NumFields(); ++i) fields->Append(table_->fieldOf(i));
  return 1;
}

int DbfImpExp::First() {
  return Go(0);
}

int DbfImpExp::Next() {
  return Go(std::min(table_->current, table_->rows) + 1);
}

int DbfImpExp::Go(long long row) {
  table_->current = row >= 0 ? std::min(row, table_->rows) : table_->rows;
  return IsEOF() ? 0 : 1;
}

bool DbfImpExp::IsEOF() const {
  return table_->current >= table_->rows;
}

int DbfImpExp::NumFields() const {
  return static_cast<int>(table_->columns.size());
}

long long DbfImpExp::NumRows() const {
  return table_->rows;
}

QString DbfImpExp::GetFieldValue(int column) const {
  if (column < 0 || column >= NumFields()) return QString();
  table_->survey();
  const unsigned char* row = table_->row(table_->current);
  return row == nullptr ? QString() : table_->value(table_->columns[static_cast<std::size_t>(column)], row);
}

QString DbfImpExp::encodingName() const {
  if (!table_->open) return QString();
  table_->survey();
  return QString::fromLatin1(table_->encoding.name);
}

QString DbfImpExp::encodingReason() const {
  if (!table_->open) return QString();
  table_->survey();
  return QString::fromLatin1(table_->encoding.reason);
}

QString DbfImpExp::encodingDoubt() const {
  if (!table_->open) return QString();
  table_->survey();
  return QString::fromLatin1(table_->encoding.notUnderstood);
}

int DbfImpExp::undecodable() const {
  return table_->decoder == nullptr ? 0 : table_->decoder->undecodable();
}

QStringList DbfImpExp::ignoredColumns() const {
  QStringList names;
  for (const std::string& name : table_->ignored)
    names << QString::fromLatin1(name.data(), static_cast<int>(name.size()));
  return names;
}

}  // namespace kaldex_v1
