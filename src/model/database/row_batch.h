#ifndef KALDEX_MODEL_ROW_BATCH_H
#define KALDEX_MODEL_ROW_BATCH_H

#include <QString>
#include <string>
#include <vector>

#include "model/database/sqlite.h"

namespace kaldex {

/// New rows of one table on their way to it: they gather and go in by the dozen, which costs SQLite a good
/// third less than one by one. What gathers isn't seen by any query: `flush` before one.
class RowBatch {
 public:
  RowBatch() = default;
  /// `columns` are the quoted names of the columns that every row fills.
  RowBatch(SqliteConnection& connection, std::string table, std::vector<std::string> columns);

  /// Begin a row; its values follow in the order of the columns, all of them.
  void beginRow();
  void put(std::int64_t value);
  void put(int value) { put(static_cast<std::int64_t>(value)); }
  void put(double value);
  void putNull();
  void put(const QString& text);
  /// A text as a value of a column of that FieldType; see parseCell.
  void putCell(short type, const QString& text);

  bool isEmpty() const { return values_.empty(); }
  void flush();
  /// Drop what gathered.
  void clear();

 private:
  struct TextPlace {
    std::uint32_t start, size;
  };
  struct Value {
    int type;
    union {
      std::int64_t integer;
      double real;
      TextPlace text;
    };
  };

  void insert();
  std::size_t rowCount() const { return values_.size() / columns_.size(); }
  Statement prepare(std::size_t rows) const;
  void bindRow(Statement& statement, std::size_t row, std::size_t place) const;

  SqliteConnection* connection_ = nullptr;
  std::string table_;
  std::vector<std::string> columns_;
  std::size_t capacity_ = 1;  ///< in rows
  Statement many_, one_;
  std::vector<Value> values_;
  std::string texts_;
};

}  // namespace kaldex

#endif
