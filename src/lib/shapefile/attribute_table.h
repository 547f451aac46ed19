#ifndef KALDEX_SHAPEFILE_ATTRIBUTE_TABLE_H
#define KALDEX_SHAPEFILE_ATTRIBUTE_TABLE_H

#include <shapefil.h>

#include <QByteArray>
#include <QString>
#include <string>
#include <vector>

#include "kaldex/model/field.h"
#include "lib/shapefile/value_losses.h"

namespace kaldex {

// The attribute table of an export, written row by row. Values of the row at hand go to any column in any
// order; columns without a value stay blank.
class AttributeTable {
 public:
  AttributeTable() = default;
  AttributeTable(const AttributeTable&) = delete;
  AttributeTable& operator=(const AttributeTable&) = delete;
  // A table that is still open is given up as far as it got.
  ~AttributeTable();

  // Makes "BASE.dbf" with these columns and opens it; false if that fails.
  bool open(const std::string& base, const SFieldList& columns);

  // The numbers as printf's "%W.Df" of the column prints them. What doesn't fit, or is no number, leaves the
  // column blank and is told for the row's owner.
  void setReal(int column, double value);
  void setInteger(int column, int value);
  // A text in Latin-1, cut to the column's width; a loss is told for the row's owner. A date is kept as its
  // text.
  void setText(int column, const QString& text);
  // A text that is in Latin-1 already and fits.
  void setLatin1(int column, const QByteArray& text);
  // Whom the losses of this row's values are told for: by default its number.
  void setOwner(const QString& owner) { owner_ = owner; }
  void nextRow();

  // False once a write has failed; what is still in memory isn't known to be good.
  bool ok() const;
  // Whether another row would make the file too large.
  bool isFull() const;
  // Writes what is left; false if any of the table didn't reach the file.
  bool close();

 private:
  struct Column {
    QString name;
    int width;
    int decimals;
  };

  void put(int column, const char* text);
  void putNumber(int column, const char* begin, const char* end);
  QString owner() const;

  DBFHandle table_ = nullptr;
  std::vector<Column> columns_;
  int row_ = 0;
  QString owner_;
  ValueLosses losses_;
};

}  // namespace kaldex

#endif
