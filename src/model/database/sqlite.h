#ifndef KALDEX_MODEL_SQLITE_H
#define KALDEX_MODEL_SQLITE_H

#include <sqlite3.h>

#include <QString>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/database/write_queue.h"

namespace kaldex {

/// A prepared statement. Failures of any call throw SException with SQLite's own message.
class Statement {
 public:
  Statement() = default;
  /// With a queue each use waits until that has settled: Qt opens its handle without a mutex, so that two
  /// threads must never use it at a time.
  Statement(sqlite3* handle, const std::string& sql, WriteQueue* queue = nullptr);
  Statement(Statement&& other) noexcept
      : handle_(other.handle_), statement_(other.statement_), queue_(other.queue_) {
    other.statement_ = nullptr;
  }
  Statement& operator=(Statement&& other) noexcept;
  ~Statement() { finalize(); }

  explicit operator bool() const { return statement_ != nullptr; }

  /// Parameters are counted from 1, columns from 0. Texts and blobs bound are borrowed until the next reset
  /// or step to the end, except QString and std::string, which are copied.
  void bind(int parameter, std::int64_t value) {
    settle();
    check(sqlite3_bind_int64(statement_, parameter, value));
  }
  void bind(int parameter, int value) { bind(parameter, static_cast<std::int64_t>(value)); }
  void bind(int parameter, double value) {
    settle();
    check(sqlite3_bind_double(statement_, parameter, value));
  }
  void bind(int parameter, const QString& value);
  void bind(int parameter, const std::string& value);
  void bindBorrowedText(int parameter, const char* text, size_t size);
  void bindBorrowedBlob(int parameter, const void* data, size_t size);
  void bindNull(int parameter) {
    settle();
    check(sqlite3_bind_null(statement_, parameter));
  }

  /// True for a row, false at the end.
  bool step();
  /// Step to the end and make ready for new parameters.
  void run();
  void reset() {
    waitForQueue();
    sqlite3_reset(statement_);
  }
  void finalize() noexcept;

  int columnCount() const { return sqlite3_column_count(statement_); }
  bool isNull(int column) const { return type(column) == SQLITE_NULL; }
  /// SQLITE_INTEGER, SQLITE_FLOAT, SQLITE_TEXT, SQLITE_BLOB or SQLITE_NULL.
  int type(int column) const { return sqlite3_column_type(statement_, column); }
  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
  double real(int column) const { return sqlite3_column_double(statement_, column); }
  QString text(int column) const;
  std::string utf8(int column) const;
  /// A text without a copy, valid until the next step; empty for null.
  std::string_view view(int column) const;
  char firstCharacter(int column, char otherwise) const {
    const std::string_view text = view(column);
    return text.empty() ? otherwise : text.front();
  }
  const unsigned char* blob(int column, size_t& size) const;

 private:
  void check(int result) const {
    if (result != SQLITE_OK) fail();
  }
  [[noreturn]] void fail() const;
  void settle() {
    if (queue_ != nullptr) queue_->settle();
  }
  void waitForQueue() noexcept {
    if (queue_ != nullptr) queue_->wait();
  }

  sqlite3* handle_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
  WriteQueue* queue_ = nullptr;
};

/// Gives a statement its parameters one after the other, with the names that RowBatch has for a row's values.
class Parameters {
 public:
  explicit Parameters(Statement& statement) : statement_(statement) {}
  template <class Number>
  void put(Number value) {
    statement_.bind(next_++, value);
  }
  void putNull() { statement_.bindNull(next_++); }
  /// Copied.
  void putUtf8(const std::string& text) { statement_.bind(next_++, text); }
  /// Borrowed until the statement has run.
  void putBlob(const std::vector<std::uint8_t>& blob) {
    statement_.bindBorrowedBlob(next_++, blob.data(), blob.size());
  }

 private:
  Statement& statement_;
  int next_ = 1;
};

/// Told of what happens to the transaction, so that shells, caches and open cursors can follow. None of these
/// may begin or end a transaction.
class TransactionListener {
 public:
  virtual ~TransactionListener() = default;
  /// Store what is still only in memory; may throw, and then the commit doesn't happen.
  virtual void beforeCommit() {}
  /// Close open cursors: a table is about to be changed or a rollback to come.
  virtual void releaseCursors() {}
  /// Forget everything learnt since the transaction (or block) began.
  virtual void afterRollback() {}
};

/// The connection below a geographic database: statements, and the transaction in which changes gather.
///
/// The first change opens the transaction, commit() ends it. Blocks are savepoints inside it; when the
/// outermost block ends and there were no changes around it, the transaction is committed with it.
class SqliteConnection {
 public:
  /// Borrows the handle (the Qt driver's) and sets the connection up for our use.
  explicit SqliteConnection(sqlite3* borrowed);
  /// Opens a file of its own, made when it doesn't exist.
  explicit SqliteConnection(const QString& path);
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;
  ~SqliteConnection();

  sqlite3* handle() const { return handle_; }
  Statement prepare(const std::string& sql) { return Statement(handle_, sql, &queue_); }
  /// What goes in on a thread of its own. All that goes through this class or its statements waits for it
  /// first.
  WriteQueue& queue() { return queue_; }
  /// Wait for the queue of the connection of that handle, if there is one: for those who use it past us.
  static void settle(sqlite3* handle);
  /// Run statements without parameters or rows.
  void exec(const std::string& sql);
  /// As exec, for statements that make, change or drop tables: open cursors are closed first.
  void execSchema(const std::string& sql);
  /// First column of the first row, or `fallback`.
  std::int64_t scalar(const std::string& sql, std::int64_t fallback = 0);
  bool tableExists(const std::string& name);

  /// Call before every change.
  void beginChange() {
    if (!inTransaction_) begin();
  }
  bool inTransaction() const { return inTransaction_; }
  int blockDepth() const { return static_cast<int>(blocks_.size()); }
  void commit();
  void rollback();
  void beginBlock();
  void endBlock(bool keep);

  void addListener(TransactionListener* listener);
  void removeListener(TransactionListener* listener);

 private:
  void configure();
  void begin();
  void notifyCommit();
  void notifyRollback();
  /// SQLite's commit hook.
  static int refuseLoneCommit(void* connection);
  /// SQLite has ended the transaction by itself, after a failure, and nobody has rolled it back here yet.
  bool isTransactionLost() const;

  sqlite3* handle_ = nullptr;
  bool owned_ = false;
  bool inTransaction_ = false;
  bool committing_ = false;
  struct Block {
    bool openedTransaction;
  };
  std::vector<Block> blocks_;
  std::vector<TransactionListener*> listeners_;
  WriteQueue queue_;
};

/// A name or text as an SQL identifier or literal.
std::string quotedName(const QString& name);
std::string quotedName(const std::string& name);
std::string quotedText(const QString& text);

}  // namespace kaldex

#endif
