#ifndef KALDEX_MODEL_ROW_BATCH_H
#define KALDEX_MODEL_ROW_BATCH_H

#include <QString>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/database/sqlite.h"

namespace kaldex {

/// New rows of one table on their way to it. They gather; when a block is full it goes to the connection's
/// write queue and in by the dozen, which costs SQLite a good third less than one by one. What gathers isn't
/// seen by any query: `flush` before one. What is in the queue is, since statements wait for it.
class RowBatch {
 public:
  RowBatch() = default;
  /// `columns` are the quoted names of the columns that every row fills.
  RowBatch(SqliteConnection& connection, std::string table, const std::vector<std::string>& columns);
  /// As above, for `columns` plain names with a comma between two.
  RowBatch(SqliteConnection& connection, std::string table, const char* columns);

  /// Begin a row; its values follow in the order of the columns, all of them. May throw what befell rows
  /// before.
  void beginRow();
  void put(std::int64_t value);
  void put(int value) { put(static_cast<std::int64_t>(value)); }
  void put(double value);
  void putNull();
  void put(const QString& text);
  void putUtf8(const std::string& text) { putBytes(SQLITE_TEXT, text.data(), text.size()); }
  void putBlob(const std::vector<std::uint8_t>& blob) { putBytes(SQLITE_BLOB, blob.data(), blob.size()); }
  /// A text as a value of a column of that FieldType; see parseCell.
  void putCell(short type, const QString& text);

  explicit operator bool() const { return target_ != nullptr; }
  /// Whether nothing gathers.
  bool isEmpty() const { return block_.values.empty(); }
  /// Hand what gathered to the write queue, as a full block is: statements that follow see it.
  void send();
  /// Write what gathered, now and on this thread.
  void flush();
  /// Drop what gathered.
  void clear();

 private:
  struct BytePlace {
    std::uint32_t start, size;
  };
  struct Value {
    int type;
    union {
      std::int64_t integer;
      double real;
      BytePlace bytes;
    };
  };
  struct Block {
    std::vector<Value> values;
    std::string bytes;
  };
  struct Target;
  class Insertion;

  void makeTarget(SqliteConnection& connection, std::string table, std::string columns, std::size_t width);
  void putBytes(int type, const void* bytes, std::size_t size);
  std::size_t rowCount() const;
  void handOver();

  std::shared_ptr<Target> target_;
  Block block_;
};

}  // namespace kaldex

#endif
