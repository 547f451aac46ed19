#include "model/database/attribute_rows.h"

namespace kaldex {

namespace {

// Statements for this many sets of changed columns are kept for each table; more would be a table edited at
// random.
constexpr size_t kUpdatesKept = 64;

std::vector<std::string> quotedColumns(const TableInfo& table) {
  std::vector<std::string> names;
  for (const TableColumn& column : table.columns) names.push_back(quotedName(column.name));
  return names;
}

void markStored(SCellList& cells) {
  for (SCell* cell : cells) cell->setModify(cellStored);
}

}  // namespace

AttributeRows::Table* AttributeRows::find(const QString& name) {
  if (generation_ != tables_.generation()) {
    // The due row belongs to a table as it was: its new columns stay null, so it is stored before they are
    // learnt.
    flush();
    known_.clear();
    lastName_ = QString();
    generation_ = tables_.generation();
  } else if (!lastName_.isNull() && name == lastName_) {
    return last_;
  }
  std::unique_ptr<Table>& table = known_[name];
  if (table == nullptr) {
    table = std::make_unique<Table>();
    table->info = tables_.share(name);
    if (table->info != nullptr)
      table->batch = RowBatch(context_.connection, table->info->quoted, quotedColumns(*table->info));
  }
  lastName_ = name;
  last_ = table->info != nullptr && table->info->hasObjectKey ? table.get() : nullptr;
  return last_;
}

void AttributeRows::due(const QString& table, int objectId) {
  if (dueTable_ != nullptr) putDue(nullptr);
  if (table.isEmpty()) return;
  dueTable_ = find(table);
  dueId_ = objectId;
}

void AttributeRows::flush() {
  if (dueTable_ != nullptr) putDue(nullptr);
  for (auto& [name, table] : known_) table->batch.flush();
}

void AttributeRows::flush(Table& table, int objectId) {
  if (!table.batch.isEmpty() && objectId >= table.firstInBatch) table.batch.flush();
}

void AttributeRows::forget() {
  dueTable_ = nullptr;
  known_.clear();
  lastName_ = QString();
}

void AttributeRows::putDue(const SCellList* cells) {
  Table& table = *dueTable_;
  const std::vector<TableColumn>& columns = table.info->columns;
  table.batch.beginRow();
  if (table.batch.isEmpty()) table.firstInBatch = dueId_;
  table.batch.put(dueId_);
  const int count = cells != nullptr ? cells->Size() : 0;
  for (int i = 1; i < static_cast<int>(columns.size()); ++i) {
    if (i < count) {
      table.batch.putCell(columns[static_cast<size_t>(i)].type, cells->at(i)->value());
    } else {
      table.batch.putNull();
    }
  }
  dueTable_ = nullptr;
}

int AttributeRows::read(SCellList& cells, const QString& table, int objectId) {
  Table* known = find(table);
  if (known == nullptr) {
    cells.Kill();
    return 0;
  }
  if (isDue(*known, objectId)) {
    fill(cells, *known->info, nullptr);
    return 1;
  }
  flush(*known, objectId);
  if (!known->select) {
    std::string sql = "SELECT ";
    for (const TableColumn& column : known->info->columns) sql += quotedName(column.name) + ", ";
    known->select = context_.connection.prepare(sql + "1 FROM " + known->info->quoted + " WHERE GEOID = ?1");
  }
  known->select.bind(1, objectId);
  const bool found = known->select.step();
  if (found) {
    fill(cells, *known->info, &known->select);
  } else {
    cells.Kill();
  }
  known->select.reset();
  return found ? 1 : 0;
}

void AttributeRows::fill(SCellList& cells, const TableInfo& info, const Statement* row) {
  const int count = static_cast<int>(info.columns.size());
  while (cells.Size() > count) {
    cells.Last();
    cells.Remove();
  }
  for (int i = 0; i < count; ++i) {
    const short type = info.columns[static_cast<size_t>(i)].type;
    const SCell cell(info.name, type, row != nullptr ? cellText(*row, i) : QString());
    if (i < cells.Size()) {
      *cells.at(i) = cell;
    } else {
      cells.Append(new SCell(cell));
    }
  }
}

int AttributeRows::write(SCellList& cells, const QString& table, int objectId) {
  Table* known = find(table);
  if (known == nullptr) return 0;
  if (isDue(*known, objectId)) {
    putDue(&cells);
    markStored(cells);
    return 1;
  }
  flush(*known, objectId);
  return updateRow(*known, cells, objectId);
}

int AttributeRows::updateRow(Table& table, SCellList& cells, int objectId) {
  const std::vector<TableColumn>& columns = table.info->columns;
  const int count = std::min(cells.Size(), static_cast<int>(columns.size()));
  std::string changed(columns.size(), '0');
  for (int i = 1; i < count; ++i) {
    if (cells.at(i)->modify() != cellStored) changed[static_cast<size_t>(i)] = '1';
  }
  if (changed.find('1') == std::string::npos) {
    return cells.Size() > 0 ? 1 : 0;
  }
  context_.connection.beginChange();
  Statement& update = updateOf(table, changed);
  int parameter = 1;
  for (int i = 1; i < count; ++i) {
    if (changed[static_cast<size_t>(i)] == '0') continue;
    binder_.bindCell(update, parameter++, columns[static_cast<size_t>(i)].type, cells.at(i)->value());
  }
  update.bind(parameter, objectId);
  update.run();
  if (sqlite3_changes(context_.connection.handle()) == 0) return 0;
  markStored(cells);
  return 1;
}

Statement& AttributeRows::updateOf(Table& table, const std::string& columns) const {
  const auto found = table.updates.find(columns);
  if (found != table.updates.end()) return found->second;
  if (table.updates.size() >= kUpdatesKept) table.updates.clear();
  std::string sql = "UPDATE " + table.info->quoted + " SET ";
  bool first = true;
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i] == '0') continue;
    sql += (first ? "" : ", ") + quotedName(table.info->columns[i].name) + " = ?";
    first = false;
  }
  return table.updates.emplace(columns, context_.connection.prepare(sql + " WHERE GEOID = ?")).first->second;
}

}  // namespace kaldex
