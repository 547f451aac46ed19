#ifndef KALDEX_MODEL_PROJECTION_STORE_H
#define KALDEX_MODEL_PROJECTION_STORE_H

#include <memory>
#include <vector>

#include "kaldex/model/projection.h"
#include "model/database/store_context.h"

namespace kaldex {

/// The projections of a database, in kdx_projections; each stands there once.
class ProjectionStore {
 public:
  explicit ProjectionStore(const StoreContext& context) : context_(context) {}

  void createTable();
  /// Read what is stored. Projections that were handed out and are no longer stored stay alive.
  void load();
  /// The stored projection equal to these values, made when there is none. Belongs to the store.
  SProjection* findOrMake(const ProjectionParameters& parameters);
  /// Null for an identifier that isn't stored. Belongs to the store.
  SProjection* find(int id) const;

 private:
  int insert(const SProjection& projection);

  const StoreContext& context_;
  std::vector<std::unique_ptr<SProjection>> projections_;
  std::vector<std::unique_ptr<SProjection>> fallen_;
};

}  // namespace kaldex

#endif
