#ifndef KALDEX_MODEL_CATEGORY_STORE_H
#define KALDEX_MODEL_CATEGORY_STORE_H

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "kaldex/model/catalog.h"
#include "model/database/store_context.h"
#include "model/database/table_store.h"
#include "model/database/visual_store.h"

namespace kaldex {

class CatalogueQuery;

/// Categories and their classes, as live lists and in kdx_categories and kdx_classes.
///
/// A class that a handler has put into a category's list is only stored by `store`, which may come much later
/// or never. A rollback takes away such classes too, if they came after what is rolled back to; see `mark`.
class CategoryStore {
 public:
  CategoryStore(const StoreContext& context, VisualStore& visuals, TableStore& tables)
      : context_(context), visuals_(visuals), tables_(tables) {}

  void createTables();
  /// Take what is stored into the lists. Categories and classes that are known stay the same objects, with
  /// their stored content; what is no longer stored leaves the lists and stays alive.
  void load();

  CategoryList& all() { return all_; }
  CategoryList& objectCategories() { return objects_; }
  /// Null when no category of that identifier is stored.
  Category* find(int id) const;
  int store(CategoryList& list);
  int reload(Category& category);
  /// Store the identifiers of classes that were drawn since the last call, so that no other session draws
  /// them again.
  void storeDrawnIds();
  void refreshClassVisual(int layerId, const GeoClass& geoClass);

  /// Remember the unstored classes of now as the ones that a rollback to `depth` (0: outside all blocks)
  /// leaves alone.
  void mark(int depth);
  /// Forget the marks of deeper blocks, then take the place of `load` in a rollback to `depth`.
  void rollback(int depth);
  void leave(int depth) { marks_.resize(std::min(marks_.size(), static_cast<size_t>(depth) + 1)); }

 private:
  struct Stored {
    std::unique_ptr<Category> category;
    int drawn = 0;  ///< the highest class identifier that is stored as drawn
    int visualId = 0;
    std::unordered_map<int, int> classVisuals;  ///< visual of each stored class
  };

  bool nameFree(const Category& category, const CategoryList& list) const;
  void add(Category& category);
  void update(Stored& stored);
  void storeClasses(Stored& stored);
  void storeVisual(GeneralVisual& visual, int& storedId);
  void rebuildLists();
  void loadClasses(Stored& stored);
  void dropUnstoredClasses(Stored& stored);
  void readCategory(CatalogueQuery& row, Stored& stored);
  std::unique_ptr<Category> takeFallen(Category& category);

  const StoreContext& context_;
  VisualStore& visuals_;
  TableStore& tables_;
  std::map<int, Stored> stored_;
  CategoryList all_, objects_;
  std::vector<std::unique_ptr<Category>> fallen_;
  std::vector<std::unique_ptr<GeoClass>> fallenClasses_;
  std::vector<std::set<const GeoClass*>> marks_;
};

}  // namespace kaldex

#endif
