#ifndef KALDEX_MODEL_VISUAL_STORE_H
#define KALDEX_MODEL_VISUAL_STORE_H

#include "kaldex/model/visual.h"
#include "model/database/store_context.h"

namespace kaldex {

/// Looks of classes, categories, anchors and layer texts, in kdx_visuals. Names of colours aren't stored.
class VisualStore {
 public:
  explicit VisualStore(const StoreContext& context) : context_(context) {}

  void createTable();

  /// False when there is no visual of that identifier.
  bool load(int id, GeneralVisual& visual) const;
  /// Store under the visual's identifier; 0 makes a new one.
  void save(GeneralVisual& visual);

 private:
  const StoreContext& context_;
};

}  // namespace kaldex

#endif
