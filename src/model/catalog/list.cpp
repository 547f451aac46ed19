#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

List::~List() { List::Kill(); }

SObject* List::current() const {
  if (cursor_ < 0 || cursor_ >= Size()) return nullptr;
  return items_[static_cast<size_t>(cursor_)];
}

SObject* List::First() { return Get(0); }

SObject* List::Next() {
  if (cursor_ < Size()) ++cursor_;
  return current();
}

SObject* List::Prev() {
  if (cursor_ >= 0) --cursor_;
  return current();
}

SObject* List::Last() { return Get(Size() - 1); }

SObject* List::Get(int position) {
  cursor_ = position;
  return current();
}

int List::Append(SObject* item) {
  if (item == nullptr) return 0;
  items_.push_back(item);
  cursor_ = Size() - 1;
  return 1;
}

int List::Insert(SObject* item) { return Append(item); }

int List::Remove() {
  SObject* item = Take();
  if (item == nullptr) return 0;
  if (ownsItems()) delete item;
  return 1;
}

SObject* List::Take() {
  if (items_.empty()) return nullptr;
  if (current() == nullptr) cursor_ = 0;
  SObject* item = current();
  items_.erase(items_.begin() + cursor_);
  if (cursor_ >= Size()) cursor_ = Size() - 1;
  return item;
}

void List::Kill() {
  // The list is emptied first: an item's destructor may look at the list it stands in.
  std::vector<SObject*> items;
  items.swap(items_);
  cursor_ = -1;
  if (!ownsItems()) return;
  for (SObject* item : items) delete item;
}

}  // namespace kaldex_v1
