#ifndef KALDEX_MODEL_OBJECT_STORE_H
#define KALDEX_MODEL_OBJECT_STORE_H

#include <map>
#include <vector>

#include "kaldex/model/database.h"
#include "model/database/attribute_rows.h"
#include "model/database/cell_value.h"
#include "model/database/row_batch.h"
#include "model/database/store_context.h"

namespace kaldex {

/// Objects, in the table OJ%06d of their category. Their identifiers come from one sequence for the whole
/// database.
class ObjectStore {
 public:
  ObjectStore(const StoreContext& context, TableStore& tables, AttributeRows& attributes)
      : context_(context), tables_(tables), attributes_(attributes) {}

  int find(int id, const Category& category, KaldexObject& object);
  int findByLabel(const QString& label, const Category& category, KaldexObject& object);
  int findByName(const QString& name, const Category& category, KaldexObject& object);
  int create(const ObjectDefinition& definition, KaldexObject& object);
  int updateName(const KaldexObject& object);
  int first(const Category& category, KaldexObject& object);
  int next(const Category& category, KaldexObject& object);
  /// Store the rows that wait in memory; whoever looks at the tables past this class calls it first.
  void flush();
  /// Flush, store the sequence's state and make the indexes of the tables that got rows.
  void finish();
  void releaseCursors();
  void forget();

 private:
  struct Table {
    QString name;
    std::string quoted;
    RowBatch batch;
    int firstInBatch = 0;             ///< identifiers ascend
    std::vector<uint> labels, names;  ///< hashes of those in the batch
    Statement byId, byLabel, byName, following, rename;
    bool walking = false;  ///< `following` stands on the object that the walk handed out last
    long long unindexed =
        0;  ///< rows that came since the table was first seen, while that is without indexes
    bool indexed = false;
  };

  Table* find(int categoryId);
  static void take(const Statement& row, const Category& category, KaldexObject& object);
  static void stopWalk(Table& table);
  int fetch(Statement& statement, const Category& category, KaldexObject& object);
  Statement& ready(Statement& statement, const Table& table, const char* rest) const;
  void put(Table& table, const ObjectDefinition& definition, const KaldexObject& object);
  void flush(Table& table);
  void index(Table& table);
  int drawId();
  int highestId();
  void stamp(const STime& time);

  const StoreContext& context_;
  TableStore& tables_;
  AttributeRows& attributes_;
  std::map<int, Table> known_;
  std::map<int, int> walked_;  ///< by category, the object that its walk handed out last; outlives a rollback
  int lastCategory_ = 0;
  Table* last_ = nullptr;
  int lastId_ = -1;    ///< the newest object's identifier, -1 when it isn't known
  int storedId_ = -1;  ///< the one that the sequence holds
  ValueBinder binder_;
  qint64 stampedSecond_ = -1;
  QString date_, time_;  ///< of that second
};

}  // namespace kaldex

#endif
