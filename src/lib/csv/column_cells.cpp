#include "lib/csv/column_cells.h"

#include <functional>

namespace kaldex {

namespace {

constexpr std::size_t kBlock = 1024;
constexpr std::size_t kKnownValues = 4096;
constexpr std::size_t kTrial = 4 * kKnownValues;  // values by which a column shows whether it repeats them

QString fromLatin1(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

}  // namespace

ColumnCells::ColumnCells(SField& column, const QString& table)
    : column_(&column), table_(table), known_(kKnownValues) {
  column.cells.disown();
}

void ColumnCells::add(std::string_view value) {
  append(known_.empty() ? fromLatin1(value) : shared(value));
}

// The texts of a column of identifiers would only be looked for in vain.
QString ColumnCells::shared(std::string_view value) {
  const std::size_t hash = std::hash<std::string_view>()(value);
  KnownValue& known = known_[hash % kKnownValues];
  if (known.hash == hash && known.text == QLatin1String(value.data(), static_cast<int>(value.size()))) {
    ++found_;
  } else {
    known = {hash, fromLatin1(value)};
  }
  const QString text = known.text;
  if (++looked_ == kTrial && found_ < kTrial / 4) known_.clear();
  return text;
}

void ColumnCells::append(const QString& value) {
  if (blocks_.empty() || blocks_.back().size() == kBlock) {
    blocks_.emplace_back();
    blocks_.back().reserve(kBlock);  // cells must not move
  }
  SCell& cell = blocks_.back().emplace_back(table_, column_->type, value);
  cell.setModify(cellInserted);
  column_->cells.Append(&cell);
}

void ColumnCells::clear() {
  column_->cells.Kill();
  blocks_.clear();
}

}  // namespace kaldex
