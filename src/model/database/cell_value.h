#ifndef KALDEX_MODEL_CELL_VALUE_H
#define KALDEX_MODEL_CELL_VALUE_H

#include <QString>
#include <deque>
#include <string>

#include "model/database/sqlite.h"

namespace kaldex {

/// What a cell's text is stored as.
struct CellValue {
  int type = SQLITE_NULL;  ///< SQLITE_NULL, SQLITE_INTEGER, SQLITE_FLOAT, or SQLITE_TEXT for the text itself
  std::int64_t integer = 0;
  double real = 0.0;
};

/// A text as a value of a column of that FieldType: whole numbers and reals where the text is nothing but
/// one, null for a null text and for an empty number or date, the text itself otherwise.
CellValue parseCell(short type, const QString& text);

void appendUtf8(std::string& utf8, const QString& text);

/// Binds texts of a statement without copying them twice: each parameter has a buffer here, which must
/// outlive the run.
class ValueBinder {
 public:
  /// As parseCell says.
  void bindCell(Statement& statement, int parameter, short type, const QString& text);
  void bindText(Statement& statement, int parameter, const QString& text);

 private:
  std::deque<std::string> buffers_;  // which leaves them where they are when another one comes
};

/// A column of the current row as a cell's text: numbers in the shortest form that reads back the same; null
/// is null.
QString cellText(const Statement& row, int column);

}  // namespace kaldex

#endif
