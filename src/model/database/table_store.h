#ifndef KALDEX_MODEL_TABLE_STORE_H
#define KALDEX_MODEL_TABLE_STORE_H

#include <QHash>
#include <QSet>
#include <memory>
#include <string>
#include <vector>

#include "kaldex/model/catalog.h"
#include "kaldex/model/field.h"
#include "model/database/row_batch.h"
#include "model/database/store_context.h"

namespace kaldex {

/// The key that tables without one of their own get, so that other programs can tell rows apart. It is never
/// seen in columns or record sets: file formats would take it for data.
constexpr const char* kHiddenKey = "kdx_fid";

/// A load this long has its indexes made on the way: sorting all at its end would take the memory.
constexpr long long kMostUnindexed = 1000000;

struct TableColumn {
  QString name;
  short type = fieldText;
  short size = 1;
  short decimals = 0;
};

/// What is known of a table: its columns without the hidden key.
struct TableInfo {
  QString name;  ///< as the database spells it
  std::string quoted;
  std::vector<TableColumn> columns;
  bool hasObjectKey = false;  ///< an attribute table: the first column is GEOID, and the row's key

  /// Position of the column of that name without regard to case, or -1.
  int indexOf(const QString& column) const;
};

/// "OJ000007" and the like.
QString numberedTable(const char* prefix, int id);

/// Tables of objects, associations and attributes, and the catalogue of the latter's columns, kdx_columns:
/// the types, widths and decimals that SQLite doesn't keep.
class TableStore {
 public:
  explicit TableStore(const StoreContext& context) : context_(context) {}

  void createTables();

  /// Null when there is no such table. Valid until the next change of a table, see `generation`.
  const TableInfo* find(const QString& name) { return share(name).get(); }
  std::shared_ptr<const TableInfo> share(const QString& name);
  /// Counts changes of tables.
  int generation() const { return generation_; }
  /// Forget everything: the transaction was rolled back.
  void forget();

  int loadFields(SFieldList& fields, const QString& table);
  void createObjectTable(const Category& category);
  void createAssociationTable(int layerId);
  /// Make the indexes of an object or association table that are missing. The tables are made without: a load
  /// that looks nothing up has them built once, sorted, at its end.
  void ensureIndexes(const QString& table);
  int createAttributeTable(const Category& category, const SFieldList& fields);
  int createTable(const QString& name, const SFieldList& fields);
  int addColumns(const SFieldList& fields, const QString& table);
  /// As DataBase::finishColumns.
  int insertCells(const SFieldList& fields);

 private:
  std::shared_ptr<TableInfo> read(const QString& name);
  void readColumns(TableInfo& info) const;
  void readCatalogue(TableInfo& info);
  void create(const QString& name, const QString& key, const std::vector<const SField*>& columns,
              const QString& title);
  QString titleOfLayer(int layerId) const;
  void makeIndex(const QString& table, const char* column);
  QString definitionOf(const SField& field) const;
  void catalogueColumn(const QString& table, int position, const SField& field);
  RowBatch& cellBatch(const std::string& table, const std::vector<std::string>& columns);
  void changed();

  const StoreContext& context_;
  QHash<QString, std::shared_ptr<const TableInfo>> known_;
  QSet<QString> indexed_;
  RowBatch cellBatch_;
  std::string cellTable_;  ///< of cellBatch_
  std::vector<std::string> cellColumns_;
  int generation_ = 0;
};

}  // namespace kaldex

#endif
