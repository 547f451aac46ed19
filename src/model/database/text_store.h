#ifndef KALDEX_MODEL_TEXT_STORE_H
#define KALDEX_MODEL_TEXT_STORE_H

#include <map>
#include <memory>

#include "kaldex/model/text.h"
#include "model/database/layer_store.h"
#include "model/database/store_context.h"
#include "model/database/visual_store.h"
#include "model/vector/feature_table.h"

namespace kaldex {

/// The texts of layers: a feature table of points for each layer that has some.
class TextStore {
 public:
  TextStore(const StoreContext& context, LayerStore& layers, VisualStore& visuals)
      : context_(context), layers_(layers), visuals_(visuals) {}

  bool exists(const InfoLayer& layer);
  void open(const InfoLayer& layer, Text& text);
  int load(const InfoLayer& layer, EntitieList& list);
  int store(const InfoLayer& layer, Text& text, EntitieList& list);
  long long count(const InfoLayer& layer);

  /// Write spatial indexes and extents.
  void finish();
  void releaseCursors();
  void forget();

 private:
  struct Table {
    std::unique_ptr<FeatureTable> features;
    Statement insert, update;
    Bytes geometry;
  };

  Table& table(const InfoLayer& layer);
  void write(Table& table, EText& text) const;

  const StoreContext& context_;
  LayerStore& layers_;
  VisualStore& visuals_;
  std::map<int, Table> tables_;
};

}  // namespace kaldex

#endif
