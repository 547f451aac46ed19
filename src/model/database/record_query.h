#ifndef KALDEX_MODEL_RECORD_QUERY_H
#define KALDEX_MODEL_RECORD_QUERY_H

#include <memory>
#include <string>
#include <vector>

#include "model/database/table_store.h"

namespace kaldex {

/// A query in the words of the model's callers: tables by commas, "a->b" for column b of table a, commas in
/// the condition for AND.
struct RecordRequest {
  QString tables;
  QString selection;  ///< "*" or columns by commas
  QString condition;
  QString join;  ///< taken when there is no condition
  QString order;
};

/// The same query in parts of SQL, with what is known of its columns.
struct RecordQuery {
  std::vector<std::shared_ptr<const TableInfo>> tables;
  std::vector<TableColumn> columns;
  std::string columnSql;  ///< the selected columns by commas
  std::string tableSql;
  std::string condition;
  std::string order;

  bool singleTable() const { return tables.size() == 1; }
};

/// Translate; throws SException for tables and columns that there aren't.
RecordQuery translateQuery(const RecordRequest& request, TableStore& tables);

}  // namespace kaldex

#endif
