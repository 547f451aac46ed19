#include "kaldex/model/field.h"

inline namespace kaldex_v1 {

void SCell::ChangeCell(const QString& value) {
  value_ = value;
  if (modify_ != cellInserted) modify_ = cellChanged;
}

SField::SField(const QString& name, short type, short size, short decimals, short index, const QString& table)
    : name(name), type(type), size(size), decimals(decimals), index(index), table(table) {}

SField::SField(const SField& other)
    : SField(other.name, other.type, other.size, other.decimals, other.index, other.table) {}

SField::~SField() = default;

SFieldList::SFieldList(const SFieldList& other)
    : TypedList<SField>(other.ownsItems() ? Ownership::owns : Ownership::borrows) {
  for (SField* field : other) Append(ownsItems() ? new SField(*field) : field);
}

SField* SFieldList::find(const QString& name) const {
  for (SField* field : *this) {
    if (field->hasName(name)) return field;
  }
  return nullptr;
}

}  // namespace kaldex_v1
