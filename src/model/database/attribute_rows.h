#ifndef KALDEX_MODEL_ATTRIBUTE_ROWS_H
#define KALDEX_MODEL_ATTRIBUTE_ROWS_H

#include <map>
#include <memory>
#include <string>

#include "model/database/cell_value.h"
#include "model/database/row_batch.h"
#include "model/database/store_context.h"
#include "model/database/table_store.h"

namespace kaldex {

/// Rows of attribute tables, one for each object.
///
/// An import makes an object, reads its empty row and writes it full. The row of the newest object is
/// therefore only due: it is read from nowhere and inserted once, with its values. Whoever looks at the
/// tables past this class calls `flush` first.
class AttributeRows {
 public:
  AttributeRows(const StoreContext& context, TableStore& tables) : context_(context), tables_(tables) {}

  /// A new object needs an empty row. Nothing to do when the table doesn't exist or has no object key.
  void due(const QString& table, int objectId);
  /// As DataBase::readObjectAttributes and writeObjectAttributes.
  int read(SCellList& cells, const QString& table, int objectId);
  int write(SCellList& cells, const QString& table, int objectId);
  void flush();
  /// Forget what is due and all that is known of the tables.
  void forget();

 private:
  struct Table {
    std::shared_ptr<const TableInfo> info;
    RowBatch batch;
    int firstInBatch = 0;  ///< objects come in ascending order
    Statement select;
    std::map<std::string, Statement> updates;  ///< by the columns that they set
  };

  Table* find(const QString& name);
  bool isDue(const Table& table, int objectId) const { return dueTable_ == &table && dueId_ == objectId; }
  void putDue(const SCellList* cells);
  static void flush(Table& table, int objectId);
  int updateRow(Table& table, SCellList& cells, int objectId);
  Statement& updateOf(Table& table, const std::string& columns) const;
  static void fill(SCellList& cells, const TableInfo& info, const Statement* row);

  const StoreContext& context_;
  TableStore& tables_;
  std::map<QString, std::unique_ptr<Table>> known_;
  int generation_ = -1;
  QString lastName_;
  Table* last_ = nullptr;
  Table* dueTable_ = nullptr;
  int dueId_ = 0;
  ValueBinder binder_;
};

}  // namespace kaldex

#endif
