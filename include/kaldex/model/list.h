#ifndef KALDEX_MODEL_LIST_H
#define KALDEX_MODEL_LIST_H

#include <cstddef>
#include <vector>

#include "kaldex/model/sobject.h"

inline namespace kaldex_v1 {

/// A list with one cursor. An owning list deletes its items when they are removed and when it dies; a borrowing
/// one never does. Copying an owning list is for the derived, typed lists, which know how to copy an item.
class KALDEX_MODEL_API List : public SObject {
 public:
  enum class Ownership { borrows, owns };

  explicit List(Ownership ownership = Ownership::borrows) : ownership_(ownership) {}
  List(const List&) = delete;
  List& operator=(const List&) = delete;
  ~List() override;

  /// Cursor walk; each returns the item now under the cursor, or null outside the list.
  SObject* First();
  SObject* Next();
  SObject* Prev();
  SObject* Last();
  /// The item at a position counted from 0, or null; the cursor goes there.
  SObject* Get(int position);
  int Size() const { return static_cast<int>(items_.size()); }

  /// Add at the end and put the cursor there; 1, or 0 for a null item.
  int Append(SObject* item);
  int Insert(SObject* item);
  /// Drop the item under the cursor, or the first one when the cursor stands outside, so that a loop that
  /// removes until `Size()` is 0 always ends. Returns 1, or 0 on an empty list.
  int Remove();
  /// As Remove, but the item is handed to the caller instead of deleted; null on an empty list.
  SObject* Take();
  /// Leave all items to somebody else: from here on the list only borrows.
  void disown() { ownership_ = Ownership::borrows; }
  /// Drop all items; fine on an empty list.
  void Kill();

  bool ownsItems() const { return ownership_ == Ownership::owns; }
  /// The items in order, for range loops that must leave the cursor alone.
  const std::vector<SObject*>& items() const { return items_; }

 private:
  SObject* current() const;

  std::vector<SObject*> items_;
  int cursor_ = -1;
  Ownership ownership_;
};

/// A `List` of one class: the same operations with the item's type, and iteration in a range loop.
template <class Item>
class TypedList : public List {
 public:
  using List::List;

  Item* First() { return static_cast<Item*>(List::First()); }
  Item* Next() { return static_cast<Item*>(List::Next()); }
  Item* Prev() { return static_cast<Item*>(List::Prev()); }
  Item* Last() { return static_cast<Item*>(List::Last()); }
  Item* Get(int position) { return static_cast<Item*>(List::Get(position)); }
  Item* at(int position) const { return static_cast<Item*>(items()[static_cast<std::size_t>(position)]); }

  class Iterator {
   public:
    explicit Iterator(SObject* const* place) : place_(place) {}
    Item* operator*() const { return static_cast<Item*>(*place_); }
    Iterator& operator++() {
      ++place_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return place_ != other.place_; }

   private:
    SObject* const* place_;
  };
  Iterator begin() const { return Iterator(items().data()); }
  Iterator end() const { return Iterator(items().data() + items().size()); }
};

}  // namespace kaldex_v1

#endif
