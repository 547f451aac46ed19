#ifndef KALDEX_MODEL_CELL_VALUE_H
#define KALDEX_MODEL_CELL_VALUE_H

#include <QString>
#include <string>
#include <vector>

#include "model/database/sqlite.h"

namespace kaldex {

/// Binds texts of a statement without copying them twice: each parameter has a buffer here, which must
/// outlive the run.
class ValueBinder {
 public:
  /// A text as a value of a column of that FieldType: whole numbers and reals where the text is nothing but
  /// one, null for a null text and for an empty number or date, the text itself otherwise.
  void bindCell(Statement& statement, int parameter, short type, const QString& text);
  void bindText(Statement& statement, int parameter, const QString& text);

 private:
  const std::string& encode(int parameter, const QString& text);

  std::vector<std::string> buffers_;
};

/// A whole number with optional sign and nothing around it.
bool parseInteger(const QString& text, std::int64_t& value);
/// A finite real with nothing around it.
bool parseReal(const QString& text, double& value);

/// A column of the current row as a cell's text: numbers in the shortest form that reads back the same; null
/// is null.
QString cellText(const Statement& row, int column);

}  // namespace kaldex

#endif
