#include "model/database/row_batch.h"

#include <algorithm>
#include <utility>

#include "model/database/cell_value.h"

namespace kaldex {

namespace {

// Rows of one statement: more gain nothing, and more parameters make it slow to prepare.
constexpr std::size_t kMostRows = 32;
constexpr std::size_t kMostParameters = 2048;
// A block is worth some hundred microseconds of writing, so that handing it over costs nothing to speak of.
constexpr std::size_t kRowsOfBlock = 256;
constexpr std::size_t kBytesOfBlock = 1 << 17;

}  // namespace

/// The table and its statements; the write queue shares them until it is done.
struct RowBatch::Target {
  SqliteConnection& connection;
  std::string table;
  std::string columns;  ///< as SQL has them
  std::size_t width;
  std::size_t rowsOfStatement;
  Statement many, one;

  void insert(const Block& block) {
    const std::size_t rows = block.values.size() / width;
    std::size_t row = 0;
    if (rowsOfStatement > 1) {
      for (; row + rowsOfStatement <= rows; row += rowsOfStatement)
        insertSome(many, block, row, rowsOfStatement);
    }
    for (; row < rows; ++row) insertSome(one, block, row, 1);
  }

 private:
  void insertSome(Statement& statement, const Block& block, std::size_t first, std::size_t rows) {
    if (!statement) statement = prepare(rows);
    const Value* values = block.values.data() + first * width;
    for (std::size_t i = 0; i < rows * width; ++i) {
      bind(statement, static_cast<int>(i) + 1, values[i], block);
    }
    statement.run();
  }

  // The queue's own statements don't wait for the queue.
  Statement prepare(std::size_t rows) const {
    std::string sql = "INSERT INTO " + table + " (" + columns + ") VALUES ";
    for (std::size_t row = 0; row < rows; ++row) {
      sql += row == 0 ? "(?" : ", (?";
      for (std::size_t i = 1; i < width; ++i) sql += ", ?";
      sql += ')';
    }
    return Statement(connection.handle(), sql);
  }

  static void bind(Statement& statement, int parameter, const Value& value, const Block& block) {
    const char* bytes = block.bytes.data() + value.bytes.start;
    switch (value.type) {
      case SQLITE_INTEGER:
        return statement.bind(parameter, value.integer);
      case SQLITE_FLOAT:
        return statement.bind(parameter, value.real);
      case SQLITE_TEXT:
        return statement.bindBorrowedText(parameter, bytes, value.bytes.size);
      case SQLITE_BLOB:
        return statement.bindBorrowedBlob(parameter, bytes, value.bytes.size);
      default:
        return statement.bindNull(parameter);
    }
  }
};

class RowBatch::Insertion : public WriteQueue::Work {
 public:
  Insertion(std::shared_ptr<Target> target, Block block)
      : target_(std::move(target)), block_(std::move(block)) {}
  void run() override { target_->insert(block_); }

 private:
  std::shared_ptr<Target> target_;
  Block block_;
};

RowBatch::RowBatch(SqliteConnection& connection, std::string table, const std::vector<std::string>& columns) {
  std::string list;
  for (const std::string& column : columns) list += (list.empty() ? "" : ", ") + column;
  makeTarget(connection, std::move(table), std::move(list), columns.size());
}

RowBatch::RowBatch(SqliteConnection& connection, std::string table, const char* columns) {
  std::string list = columns;
  const auto width = static_cast<std::size_t>(std::count(list.begin(), list.end(), ',')) + 1;
  makeTarget(connection, std::move(table), std::move(list), width);
}

void RowBatch::makeTarget(SqliteConnection& connection, std::string table, std::string columns,
                          std::size_t width) {
  const std::size_t rows = std::clamp(kMostParameters / width, std::size_t{1}, kMostRows);
  target_ =
      std::make_shared<Target>(Target{connection, std::move(table), std::move(columns), width, rows, {}, {}});
}

std::size_t RowBatch::rowCount() const {
  return block_.values.size() / target_->width;
}

void RowBatch::beginRow() {
  if (isEmpty()) return;
  if (rowCount() >= kRowsOfBlock || block_.bytes.size() > kBytesOfBlock) handOver();
}

void RowBatch::put(std::int64_t value) {
  Value entry = {SQLITE_INTEGER, {0}};
  entry.integer = value;
  block_.values.push_back(entry);
}

void RowBatch::put(double value) {
  Value entry = {SQLITE_FLOAT, {0}};
  entry.real = value;
  block_.values.push_back(entry);
}

void RowBatch::putNull() {
  block_.values.push_back({SQLITE_NULL, {0}});
}

void RowBatch::put(const QString& text) {
  if (text.isNull()) return putNull();
  Value entry = {SQLITE_TEXT, {0}};
  entry.bytes.start = static_cast<std::uint32_t>(block_.bytes.size());
  appendUtf8(block_.bytes, text);
  entry.bytes.size = static_cast<std::uint32_t>(block_.bytes.size()) - entry.bytes.start;
  block_.values.push_back(entry);
}

void RowBatch::putBytes(int type, const void* bytes, std::size_t size) {
  Value entry = {type, {0}};
  entry.bytes = {static_cast<std::uint32_t>(block_.bytes.size()), static_cast<std::uint32_t>(size)};
  block_.bytes.append(static_cast<const char*>(bytes), size);
  block_.values.push_back(entry);
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

void RowBatch::handOver() {
  target_->connection.beginChange();
  const std::size_t values = block_.values.size();
  const std::size_t bytes = block_.bytes.size();
  auto work = std::make_unique<Insertion>(target_, std::exchange(block_, Block()));
  block_.values.reserve(values);
  block_.bytes.reserve(bytes);
  target_->connection.queue().submit(std::move(work));
}

void RowBatch::send() {
  if (!isEmpty()) handOver();
}

void RowBatch::flush() {
  if (isEmpty()) return;
  // What the database refused once it would refuse again at each later flush.
  const Block block = std::exchange(block_, Block());
  target_->connection.beginChange();
  target_->connection.queue().settle();
  target_->insert(block);
}

void RowBatch::clear() {
  block_.values.clear();
  block_.bytes.clear();
}

}  // namespace kaldex
