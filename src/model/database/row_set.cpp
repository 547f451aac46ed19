#include "model/database/row_set.h"

#include <algorithm>
#include <limits>

#include "base/number_text.h"

namespace kaldex {

namespace {

constexpr std::int64_t kBeforeFirst = std::numeric_limits<std::int64_t>::min();
// How many different sets of changed columns keep their statement.
constexpr size_t kChangesKept = 32;

int clampToInt(std::int64_t value) {
  return static_cast<int>(
      std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

double numberIn(const QString& text) {
  return textToReal(text.toStdString());
}

int integerIn(double value) {
  constexpr double kLimit = std::numeric_limits<int>::max();
  return value >= -kLimit && value <= kLimit ? static_cast<int>(value) : 0;
}

}  // namespace

RowSet::RowSet(SqliteConnection& connection, RecordQuery query, std::function<void()> settle,
               std::shared_ptr<Registry> registry)
    : connection_(&connection),
      query_(std::move(query)),
      settle_(std::move(settle)),
      registry_(std::move(registry)) {
  restart();
  step();
  connection_->addListener(this);
  registry_->insert(this);
}

RowSet::~RowSet() {
  close();
}

void RowSet::close() {
  if (connection_ == nullptr) return;
  connection_->removeListener(this);
  registry_->erase(this);
  walk_.finalize();
  finders_.clear();
  changes_.clear();
  state_ = State::ended;
  connection_ = nullptr;
}

std::string RowSet::selectSql(const std::string& condition) const {
  std::string sql = "SELECT " + query_.columnSql;
  if (query_.singleTable()) sql += ", " + query_.tableSql + "._rowid_";
  sql += " FROM " + query_.tableSql;
  std::string where = query_.condition.empty() ? "" : "(" + query_.condition + ")";
  if (!condition.empty()) where += (where.empty() ? "" : " AND ") + condition;
  if (!where.empty()) sql += " WHERE " + where;
  if (!query_.order.empty()) {
    sql += " ORDER BY " + query_.order;
  } else if (query_.singleTable()) {
    sql += " ORDER BY " + query_.tableSql + "._rowid_";
  }
  return sql;
}

void RowSet::restart() {
  if (!walk_) {
    walk_ = connection_->prepare(selectSql(walksByKey() ? query_.tableSql + "._rowid_ > ?1" : std::string()));
  }
  walk_.reset();
  if (walksByKey()) walk_.bind(1, kBeforeFirst);
  position_ = 0;
}

void RowSet::step() {
  state_ = walk_.step() ? State::walking : State::ended;
  if (state_ == State::ended) {
    walk_.reset();
    return;
  }
  ++position_;
  if (query_.singleTable()) key_ = walk_.integer(columnCount());
}

void RowSet::next() {
  change_ = Change::none;
  if (state_ == State::ended) return;
  if (state_ == State::held) resume();
  if (state_ != State::ended) step();
}

// Puts the walk back to the row that is held.
void RowSet::resume() {
  const long long position = position_;
  const std::int64_t key = key_;
  restart();
  position_ = position;
  if (walksByKey()) {
    walk_.bind(1, key);
    state_ = State::walking;
    return;
  }
  for (position_ = 0; position_ < position && state_ != State::ended;) step();
}

void RowSet::hold(const Statement& row) {
  row_.resize(query_.columns.size());
  for (int i = 0; i < columnCount(); ++i) {
    Value& value = row_[static_cast<size_t>(i)];
    value.type = row.type(i);
    value.integer = value.type == SQLITE_INTEGER ? row.integer(i) : 0;
    value.real = value.type == SQLITE_FLOAT ? row.real(i) : static_cast<double>(value.integer);
    value.text = cellText(row, i);
  }
  state_ = State::held;
}

void RowSet::releaseCursors() {
  if (state_ == State::walking) hold(walk_);
  if (walk_) walk_.reset();
}

void RowSet::afterRollback() {
  // The tables may be gone; if they are not, the walk goes on.
  walk_.finalize();
  finders_.clear();
  changes_.clear();
}

QString RowSet::columnName(int column) const {
  if (column < 0 || column >= columnCount()) return QString();
  return query_.columns[static_cast<size_t>(column)].name;
}

short RowSet::columnType(int column) const {
  if (column < 0 || column >= columnCount()) return fieldText;
  return query_.columns[static_cast<size_t>(column)].type;
}

int RowSet::columnSize(int column) const {
  if (column < 0 || column >= columnCount()) return 1;
  return std::max<int>(1, query_.columns[static_cast<size_t>(column)].size);
}

int RowSet::columnIndex(const QString& name) const {
  for (int i = 0; i < columnCount(); ++i) {
    if (query_.columns[static_cast<size_t>(i)].name.compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}

QString RowSet::text(int column) const {
  if (!valid(column)) return QString();
  return state_ == State::held ? row_[static_cast<size_t>(column)].text : cellText(walk_, column);
}

int RowSet::integer(int column) const {
  if (!valid(column)) return 0;
  const Value* held = state_ == State::held ? &row_[static_cast<size_t>(column)] : nullptr;
  switch (held != nullptr ? held->type : walk_.type(column)) {
    case SQLITE_INTEGER:
      return clampToInt(held != nullptr ? held->integer : walk_.integer(column));
    default:
      return integerIn(real(column));
  }
}

double RowSet::real(int column) const {
  if (!valid(column)) return 0.0;
  const Value* held = state_ == State::held ? &row_[static_cast<size_t>(column)] : nullptr;
  switch (held != nullptr ? held->type : walk_.type(column)) {
    case SQLITE_NULL:
      return 0.0;
    case SQLITE_TEXT:
      return numberIn(text(column));
    default:
      return held != nullptr ? held->real : walk_.real(column);
  }
}

bool RowSet::findRow(const QString& column, const QString& value) {
  const int index = columnIndex(column);
  if (index < 0 || connection_ == nullptr) return false;
  change_ = Change::none;
  settle_();
  return walksByKey() ? findByKey(index, value) : findByWalk(index, value);
}

bool RowSet::findByKey(int column, const QString& value) {
  Statement& finder = finders_[column];
  if (!finder) {
    const std::string name = quotedName(query_.columns[static_cast<size_t>(column)].name);
    finder = connection_->prepare(selectSql(query_.tableSql + "." + name + " = ?1") + " LIMIT 1");
  }
  binder_.bindCell(finder, 1, columnType(column), value);
  const bool found = finder.step();
  if (found) {
    if (walk_) walk_.reset();
    hold(finder);
    key_ = finder.integer(columnCount());
  }
  finder.reset();
  return found;
}

bool RowSet::findByWalk(int column, const QString& value) {
  const State state = state_;
  const long long position = position_;
  if (state == State::walking) hold(walk_);
  restart();
  for (step(); state_ == State::walking; step()) {
    if (text(column) == value) return true;
  }
  // Unmoved: the row that was current is held, and the walk resumes behind it.
  state_ = state == State::ended ? State::ended : State::held;
  position_ = position;
  return false;
}

void RowSet::edit() {
  newValues_.clear();
  change_ = query_.singleTable() && state_ != State::ended ? Change::edit : Change::none;
}

void RowSet::addNew() {
  newValues_.clear();
  change_ = query_.singleTable() && connection_ != nullptr ? Change::add : Change::none;
}

void RowSet::setText(int column, const QString& value) {
  if (change_ != Change::none && column >= 0 && column < columnCount()) newValues_[column] = value;
}

int RowSet::post() {
  if (change_ == Change::none || connection_ == nullptr) return 0;
  const Change change = change_;
  if (newValues_.empty()) {
    change_ = Change::none;
    return change == Change::edit ? 1 : 0;
  }
  settle_();
  connection_->beginChange();
  if (change == Change::edit) {
    storeEdit();
  } else {
    storeNew();
  }
  change_ = Change::none;
  return sqlite3_changes(connection_->handle()) > 0 ? 1 : 0;
}

Statement& RowSet::changeStatement(const std::string& columns) {
  if (changes_.size() >= kChangesKept && changes_.count(columns) == 0) changes_.clear();
  Statement& statement = changes_[columns];
  if (statement) return statement;
  std::string names, marks, assignments;
  for (const auto& [column, value] : newValues_) {
    const std::string name = quotedName(query_.columns[static_cast<size_t>(column)].name);
    names += (names.empty() ? "" : ", ") + name;
    marks += marks.empty() ? "?" : ", ?";
    assignments += (assignments.empty() ? "" : ", ") + name + " = ?";
  }
  const std::string& table = query_.tableSql;
  statement = connection_->prepare(change_ == Change::edit
                                       ? "UPDATE " + table + " SET " + assignments + " WHERE _rowid_ = ?"
                                       : "INSERT INTO " + table + " (" + names + ") VALUES (" + marks + ")");
  return statement;
}

void RowSet::storeEdit() {
  std::string columns = "u";
  for (const auto& [column, value] : newValues_) columns += ' ' + std::to_string(column);
  Statement& update = changeStatement(columns);
  int parameter = 1;
  for (const auto& [column, value] : newValues_)
    binder_.bindCell(update, parameter++, columnType(column), value);
  update.bind(parameter, key_);
  update.run();
  takeChanges();
}

void RowSet::storeNew() {
  std::string columns = "i";
  for (const auto& [column, value] : newValues_) columns += ' ' + std::to_string(column);
  Statement& insert = changeStatement(columns);
  int parameter = 1;
  for (const auto& [column, value] : newValues_)
    binder_.bindCell(insert, parameter++, columnType(column), value);
  insert.run();
}

// The current row shows what was just stored.
void RowSet::takeChanges() {
  if (state_ == State::walking) hold(walk_);
  for (const auto& [column, text] : newValues_) {
    Value& value = row_[static_cast<size_t>(column)];
    const CellValue cell = parseCell(columnType(column), text);
    value = {cell.type, cell.integer, cell.real, cell.type == SQLITE_NULL ? QString() : text};
  }
}

}  // namespace kaldex
