#include "lib/shapefile/attribute_value.h"

#include <QByteArray>

#include "base/strings.h"

namespace kaldex {

namespace {

void replaceFirstComma(QString& value) {
  const int comma = value.indexOf(QLatin1Char(','));
  if (comma >= 0) value[comma] = QLatin1Char('.');
}

// The high digits go, the sign stays.
QString cutInteger(const QString& value, int width) {
  const bool isSigned = value[0] == QLatin1Char('+') || value[0] == QLatin1Char('-');
  return (isSigned ? value.left(1) : QString()) + value.right(width - 1);
}

}  // namespace

ValueFit fitValue(const SField& column, QString& value) {
  if (value.isEmpty()) return ValueFit::whole;
  if (column.type == fieldReal) replaceFirstComma(value);
  if (column.type != fieldText && TestDataType(value.toLatin1().constData(), column.type, nullptr) == 0) {
    return ValueFit::wrong;
  }
  if (column.type == fieldReal || column.size <= 0 || value.size() <= column.size) return ValueFit::whole;
  value = column.type == fieldInteger ? cutInteger(value, column.size) : value.left(column.size);
  return ValueFit::cut;
}

}  // namespace kaldex
