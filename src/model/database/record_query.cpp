#include "model/database/record_query.h"

#include <QCoreApplication>

#include "kaldex/model/exception.h"

namespace kaldex {

namespace {

[[noreturn]] void failUnknown(const QString& what) {
  throw SException(QCoreApplication::translate("DataBase", "Tabela ou coluna inexistente: %1").arg(what));
}

bool isNamePart(QChar c) {
  return c.isLetterOrNumber() || c == QLatin1Char('_');
}

// Walks one text of a request and knows the names that may stand in it. Names are matched against those that
// there are, the longest first, since a column made from a file's heading may hold blanks, commas or
// operators.
class QueryText {
 public:
  QueryText(const QString& text, const RecordQuery& query) : text_(text.trimmed()), query_(query) {}

  bool atEnd() const { return at_ >= text_.size(); }
  QChar current() const { return text_[at_]; }
  QChar take() { return text_[at_++]; }
  QString rest() const { return text_.mid(at_); }
  void skipSeparators() {
    while (!atEnd() && (current().isSpace() || current() == QLatin1Char(','))) ++at_;
  }

  // "table->column" at the place; false, and nothing taken, when no such reference begins there.
  bool takeReference(const TableInfo*& table, const TableColumn*& column) {
    if (at_ > 0 && isNamePart(text_[at_ - 1])) return false;
    for (const auto& candidate : query_.tables) {
      const QString prefix = candidate->name + QStringLiteral("->");
      if (text_.midRef(at_, prefix.size()).compare(prefix, Qt::CaseInsensitive) != 0) continue;
      column = longestColumn(*candidate, at_ + prefix.size());
      if (column == nullptr) failUnknown(rest());
      table = candidate.get();
      at_ += prefix.size() + column->name.size();
      return true;
    }
    return false;
  }

  bool takeColumn(const TableInfo*& table, const TableColumn*& column) {
    for (const auto& candidate : query_.tables) {
      column = longestColumn(*candidate, at_);
      if (column == nullptr) continue;
      table = candidate.get();
      at_ += column->name.size();
      return true;
    }
    return false;
  }

  // A quoted literal or name, as it stands.
  QString takeQuoted() {
    const int end = text_.indexOf(current(), at_ + 1);
    const int size = (end < 0 ? text_.size() : end + 1) - at_;
    QString quoted = text_.mid(at_, size);
    at_ += size;
    return quoted;
  }

 private:
  const TableColumn* longestColumn(const TableInfo& table, int at) const {
    const TableColumn* best = nullptr;
    for (const TableColumn& column : table.columns) {
      const int size = column.name.size();
      if (best != nullptr && size <= best->name.size()) continue;
      if (text_.midRef(at, size).compare(column.name, Qt::CaseInsensitive) != 0) continue;
      if (at + size < text_.size() && isNamePart(text_[at + size])) continue;
      best = &column;
    }
    return best;
  }

  QString text_;
  const RecordQuery& query_;
  int at_ = 0;
};

std::string qualified(const TableInfo& table, const TableColumn& column) {
  return table.quoted + "." + quotedName(column.name);
}

void addColumn(RecordQuery& query, const TableInfo& table, const TableColumn& column) {
  if (!query.columns.empty()) query.columnSql += ", ";
  query.columnSql += qualified(table, column);
  query.columns.push_back(column);
}

void takeTables(RecordQuery& query, const QString& names, TableStore& tables) {
  for (const QString& part : names.split(QLatin1Char(','))) {
    std::shared_ptr<const TableInfo> table = tables.share(part.trimmed());
    if (table == nullptr) failUnknown(part.trimmed());
    query.tableSql += (query.tables.empty() ? "" : ", ") + table->quoted;
    query.tables.push_back(std::move(table));
  }
}

void takeSelection(RecordQuery& query, const QString& selection) {
  QueryText text(selection, query);
  text.skipSeparators();
  while (!text.atEnd()) {
    const TableInfo* table = nullptr;
    const TableColumn* column = nullptr;
    if (text.current() == QLatin1Char('*')) {
      text.take();
      for (const auto& each : query.tables) {
        for (const TableColumn& one : each->columns) addColumn(query, *each, one);
      }
    } else if (text.takeReference(table, column) || text.takeColumn(table, column)) {
      addColumn(query, *table, *column);
    } else {
      failUnknown(text.rest());
    }
    text.skipSeparators();
  }
  if (query.columns.empty()) failUnknown(selection);
}

// An expression with its references in SQL; `comma` stands for a comma outside brackets.
std::string translateExpression(const RecordQuery& query, const QString& expression, const char* comma) {
  QueryText text(expression, query);
  std::string sql;
  int depth = 0;
  while (!text.atEnd()) {
    const TableInfo* table = nullptr;
    const TableColumn* column = nullptr;
    const QChar c = text.current();
    if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
      sql += text.takeQuoted().toStdString();
    } else if (text.takeReference(table, column)) {
      sql += qualified(*table, *column);
    } else {
      text.take();
      depth += c == QLatin1Char('(') ? 1 : c == QLatin1Char(')') ? -1 : 0;
      sql += c == QLatin1Char(',') && depth == 0 ? comma : QString(c).toStdString();
    }
  }
  return sql;
}

}  // namespace

RecordQuery translateQuery(const RecordRequest& request, TableStore& tables) {
  RecordQuery query;
  takeTables(query, request.tables, tables);
  takeSelection(query, request.selection);
  const QString& condition = request.condition.trimmed().isEmpty() ? request.join : request.condition;
  query.condition = translateExpression(query, condition, " AND ");
  query.order = translateExpression(query, request.order, ", ");
  return query;
}

}  // namespace kaldex
