#ifndef KALDEX_TESTS_PEEK_H
#define KALDEX_TESTS_PEEK_H

#include <sqlite3.h>

#include <QString>

namespace kaldex::test {

/// A second look at a database file, past the connection that is tested.
class Peek {
 public:
  explicit Peek(const QString& path) { sqlite3_open(path.toUtf8().constData(), &handle_); }
  Peek(const Peek&) = delete;
  Peek& operator=(const Peek&) = delete;
  ~Peek() { sqlite3_close(handle_); }

  bool run(const QString& sql) {
    return sqlite3_exec(handle_, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  /// First column of the first row; "(none)" without a row.
  QString value(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle_, sql.toUtf8().constData(), -1, &statement, nullptr);
    QString result = QStringLiteral("(none)");
    if (sqlite3_step(statement) == SQLITE_ROW) {
      result = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    }
    sqlite3_finalize(statement);
    return result;
  }

 private:
  sqlite3* handle_ = nullptr;
};

}  // namespace kaldex::test

#endif
