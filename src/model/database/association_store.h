#ifndef KALDEX_MODEL_ASSOCIATION_STORE_H
#define KALDEX_MODEL_ASSOCIATION_STORE_H

#include <map>
#include <vector>

#include "kaldex/model/anchor.h"
#include "kaldex/model/catalog.h"
#include "model/database/row_batch.h"
#include "model/database/store_context.h"
#include "model/database/table_store.h"

namespace kaldex {

/// The association tables of layers: which anchor shows which object, and its measures.
///
/// An import links a new anchor with its first piece and saves it with the last, so the newest row waits in
/// memory for its final measures. Whoever looks at the tables past this class calls `flush` first.
class AssociationStore {
 public:
  AssociationStore(const StoreContext& context, TableStore& tables) : context_(context), tables_(tables) {}

  int createTable(int layerId);
  /// Identifier of the object's anchor in the layer, or 0.
  int anchorOf(int objectId, const InfoLayer& layer);
  int link(const InfoLayer& layer, const Anchor& anchor, const KaldexObject& object);
  /// 0 when the anchor has no row.
  int save(const InfoLayer& layer, const Anchor& anchor);
  void flush();
  /// Flush, and make the indexes of the tables that got rows.
  void finish();
  /// Forget the waiting rows and what is known of the tables: the transaction was rolled back.
  void forget();

 private:
  struct Table {
    QString name;
    std::string quoted;
    RowBatch batch;
    std::vector<int> objects, anchors;  ///< those in the batch
    Statement update, find;
    long long unindexed =
        0;  ///< rows that came since the table was first seen, while that is without indexes
    bool indexed = false;
  };
  struct Row {
    Table* table = nullptr;
    int layerId = 0;
    int objectId = 0;
    int categoryId = 0;
    int anchorId = 0;
    int visualId = 0;
    double measures[4] = {};  ///< area, perimeter, impedance, demand
  };

  Table* find(int layerId);
  static void measure(double (&measures)[4], const InfoLayer& layer, const Anchor& anchor);
  bool waits(int layerId) const { return waiting_.table != nullptr && waiting_.layerId == layerId; }
  void putWaiting();
  void flush(Table& table);
  void index(Table& table);

  const StoreContext& context_;
  TableStore& tables_;
  std::map<int, Table> known_;
  int lastLayer_ = 0;
  Table* last_ = nullptr;
  Row waiting_;
};

}  // namespace kaldex

#endif
