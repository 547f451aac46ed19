#ifndef KALDEX_MODEL_ROW_SET_H
#define KALDEX_MODEL_ROW_SET_H

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "kaldex/model/recordset.h"
#include "model/database/cell_value.h"
#include "model/database/record_query.h"
#include "model/database/sqlite.h"

namespace kaldex {

/// The record set over SQLite. The walk is one running statement; when that has to end (a table changes, a
/// rollback, a jump by findRow) the current row is kept in memory and the walk goes on behind it.
class RowSet final : public RecordSet, private TransactionListener {
 public:
  /// The sets that are open on a database: it closes those that outlive it.
  using Registry = std::set<RowSet*>;

  /// `settle` is called before rows are looked up or changed: it stores what the database still holds in
  /// memory and makes missing indexes.
  RowSet(SqliteConnection& connection, RecordQuery query, std::function<void()> settle,
         std::shared_ptr<Registry> registry);
  ~RowSet() override;
  /// The database goes: the set is at its end from here on.
  void close();

  bool atEnd() const override { return state_ == State::ended; }
  void next() override;

  int columnCount() const override { return static_cast<int>(query_.columns.size()); }
  QString columnName(int column) const override;
  short columnType(int column) const override;
  int columnSize(int column) const override;
  int columnIndex(const QString& name) const override;

  QString text(int column) const override;
  int integer(int column) const override;
  double real(int column) const override;
  QString text(const QString& name) const override { return text(columnIndex(name)); }
  int integer(const QString& name) const override { return integer(columnIndex(name)); }

  bool findRow(const QString& column, const QString& value) override;
  void edit() override;
  void addNew() override;
  void setText(int column, const QString& value) override;
  int post() override;

 private:
  enum class State { walking, held, ended };
  enum class Change { none, edit, add };

  /// A value that no longer stands in the statement.
  struct Value {
    int type = SQLITE_NULL;
    std::int64_t integer = 0;
    double real = 0.0;
    QString text;
  };

  void releaseCursors() override;
  void afterRollback() override;

  bool walksByKey() const { return query_.singleTable() && query_.order.empty(); }
  std::string selectSql(const std::string& condition) const;
  void restart();
  void step();
  void hold(const Statement& row);
  void resume();
  bool valid(int column) const { return column >= 0 && column < columnCount() && state_ != State::ended; }
  bool findByKey(int column, const QString& value);
  bool findByWalk(int column, const QString& value);
  void storeEdit();
  void storeNew();
  void takeChanges();
  Statement& changeStatement(const std::string& columns);

  SqliteConnection* connection_;
  RecordQuery query_;
  std::function<void()> settle_;
  std::shared_ptr<Registry> registry_;
  Statement walk_;
  std::map<int, Statement> finders_;
  std::map<std::string, Statement> changes_;  ///< by kind of change and columns
  State state_ = State::ended;
  std::vector<Value> row_;  ///< the current row while it is held
  std::int64_t key_ = 0;    ///< of the current row, in a set over one table
  long long position_ = 0;  ///< of the current row, counted from 1
  Change change_ = Change::none;
  std::map<int, QString> newValues_;
  ValueBinder binder_;
};

}  // namespace kaldex

#endif
