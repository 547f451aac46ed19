#ifndef KALDEX_CSV_COLUMN_CELLS_H
#define KALDEX_CSV_COLUMN_CELLS_H

#include <QString>
#include <string_view>
#include <vector>

#include "kaldex/model/field.h"

namespace kaldex {

// The cells of a column whose rows gather in memory. They are held in blocks, and most columns repeat their
// values, which then share one text: by the million, each made and given back by itself would take more time
// than the table takes to be stored. The column lists the cells, and must not look at them when these
// are gone.
class ColumnCells {
 public:
  ColumnCells(SField& column, const QString& table);
  ColumnCells(ColumnCells&&) = default;  // the column lists the cells of one object only

  const SField& column() const { return *column_; }
  // A value in Latin-1, to be inserted.
  void add(std::string_view value);
  // A missing value.
  void addNothing() { append(QString()); }
  // Drop all of them, those in the column's list, too.
  void clear();

 private:
  QString shared(std::string_view value);
  void append(const QString& value);

  SField* column_;
  QString table_;
  std::vector<std::vector<SCell>> blocks_;

  struct KnownValue {
    std::size_t hash = 0;
    QString text;
  };
  std::vector<KnownValue> known_;  // values of late, each at the place that its hash names
  std::size_t looked_ = 0;
  std::size_t found_ = 0;
};

}  // namespace kaldex

#endif
