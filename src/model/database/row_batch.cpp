#include "model/database/row_batch.h"

#include <algorithm>

#include "model/database/cell_value.h"

namespace kaldex {

namespace {

// More rows gain nothing; more parameters make the statement slow to prepare.
constexpr std::size_t kMostRows = 32;
constexpr std::size_t kMostParameters = 2048;
constexpr std::size_t kMostText = 1 << 20;

}  // namespace

RowBatch::RowBatch(SqliteConnection& connection, std::string table, std::vector<std::string> columns)
    : connection_(&connection), table_(std::move(table)), columns_(std::move(columns)) {
  capacity_ = std::clamp(kMostParameters / columns_.size(), std::size_t{1}, kMostRows);
}

void RowBatch::beginRow() {
  if (!values_.empty() && (rowCount() >= capacity_ || texts_.size() > kMostText)) flush();
}

void RowBatch::put(std::int64_t value) {
  Value entry = {SQLITE_INTEGER, {0}};
  entry.integer = value;
  values_.push_back(entry);
}

void RowBatch::put(double value) {
  Value entry = {SQLITE_FLOAT, {0}};
  entry.real = value;
  values_.push_back(entry);
}

void RowBatch::putNull() {
  values_.push_back({SQLITE_NULL, {0}});
}

void RowBatch::put(const QString& text) {
  if (text.isNull()) return putNull();
  Value entry = {SQLITE_TEXT, {0}};
  entry.text.start = static_cast<std::uint32_t>(texts_.size());
  appendUtf8(texts_, text);
  entry.text.size = static_cast<std::uint32_t>(texts_.size()) - entry.text.start;
  values_.push_back(entry);
}

void RowBatch::putCell(short type, const QString& text) {
  const CellValue value = parseCell(type, text);
  switch (value.type) {
    case SQLITE_NULL:
      return putNull();
    case SQLITE_INTEGER:
      return put(value.integer);
    case SQLITE_FLOAT:
      return put(value.real);
    default:
      return put(text);
  }
}

void RowBatch::flush() {
  if (values_.empty()) return;
  connection_->beginChange();
  try {
    insert();
  } catch (...) {
    // What the database refused once it would refuse again at each later flush.
    clear();
    throw;
  }
  clear();
}

void RowBatch::insert() {
  const std::size_t rows = rowCount();
  if (rows == capacity_ && rows > 1) {
    if (!many_) many_ = prepare(rows);
    for (std::size_t row = 0; row < rows; ++row) bindRow(many_, row, row);
    many_.run();
    return;
  }
  if (!one_) one_ = prepare(1);
  for (std::size_t row = 0; row < rows; ++row) {
    bindRow(one_, row, 0);
    one_.run();
  }
}

void RowBatch::clear() {
  values_.clear();
  texts_.clear();
}

Statement RowBatch::prepare(std::size_t rows) const {
  std::string sql = "INSERT INTO " + table_ + " (";
  std::string row = "(";
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    sql += (i == 0 ? "" : ", ") + columns_[i];
    row += i == 0 ? "?" : ", ?";
  }
  sql += ") VALUES ";
  row += ")";
  for (std::size_t i = 0; i < rows; ++i) sql += (i == 0 ? "" : ", ") + row;
  return connection_->prepare(sql);
}

void RowBatch::bindRow(Statement& statement, std::size_t row, std::size_t place) const {
  const Value* value = values_.data() + row * columns_.size();
  int parameter = static_cast<int>(place * columns_.size()) + 1;
  for (std::size_t i = 0; i < columns_.size(); ++i, ++value, ++parameter) {
    switch (value->type) {
      case SQLITE_INTEGER:
        statement.bind(parameter, value->integer);
        break;
      case SQLITE_FLOAT:
        statement.bind(parameter, value->real);
        break;
      case SQLITE_TEXT:
        statement.bindBorrowedText(parameter, texts_.data() + value->text.start, value->text.size);
        break;
      default:
        statement.bindNull(parameter);
        break;
    }
  }
}

}  // namespace kaldex
