#include "model/database/cell_value.h"

#include <QLocale>
#include <cmath>

#include "base/number_text.h"
#include "kaldex/model/field.h"

namespace kaldex {

namespace {

constexpr int kLongestNumber = 320;

}  // namespace

bool parseInteger(const QString& text, std::int64_t& value) {
  const int size = text.size();
  int at = size > 0 && (text[0] == QLatin1Char('-') || text[0] == QLatin1Char('+')) ? 1 : 0;
  // 18 digits always fit, and no file has more that mean a number.
  if (at == size || size - at > 18) return false;
  std::int64_t number = 0;
  for (; at < size; ++at) {
    const int digit = text[at].unicode() - '0';
    if (digit < 0 || digit > 9) return false;
    number = number * 10 + digit;
  }
  value = text[0] == QLatin1Char('-') ? -number : number;
  return true;
}

bool parseReal(const QString& text, double& value) {
  const int size = text.size();
  if (size == 0 || size > kLongestNumber) return false;
  char plain[kLongestNumber];
  for (int i = 0; i < size; ++i) {
    const ushort c = text[i].unicode();
    // Only what stands in decimal numbers: neither "nan" nor hexadecimal forms are values of a column.
    const bool fits = (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
    if (!fits) return false;
    plain[i] = static_cast<char>(c);
  }
  std::size_t used = 0;
  value = textToReal(std::string_view(plain, static_cast<std::size_t>(size)), &used);
  return used == static_cast<std::size_t>(size) && std::isfinite(value);
}

void ValueBinder::bindCell(Statement& statement, int parameter, short type, const QString& text) {
  std::int64_t integer;
  double real;
  if (text.isNull() || (text.isEmpty() && type != fieldText)) {
    statement.bindNull(parameter);
  } else if (type == fieldInteger && parseInteger(text, integer)) {
    statement.bind(parameter, integer);
  } else if (type == fieldReal && parseReal(text, real)) {
    statement.bind(parameter, real);
  } else {
    bindText(statement, parameter, text);
  }
}

void ValueBinder::bindText(Statement& statement, int parameter, const QString& text) {
  if (text.isNull()) return statement.bindNull(parameter);
  const std::string& utf8 = encode(parameter, text);
  statement.bindBorrowedText(parameter, utf8.data(), utf8.size());
}

const std::string& ValueBinder::encode(int parameter, const QString& text) {
  const auto index = static_cast<size_t>(parameter);
  if (buffers_.size() <= index) buffers_.resize(index + 1);
  std::string& buffer = buffers_[index];
  const auto size = static_cast<size_t>(text.size());
  buffer.resize(size);
  const QChar* characters = text.constData();
  for (size_t i = 0; i < size; ++i) {
    const ushort c = characters[i].unicode();
    if (c >= 0x80) return buffer = text.toStdString();
    buffer[i] = static_cast<char>(c);
  }
  return buffer;
}

QString cellText(const Statement& row, int column) {
  switch (row.type(column)) {
    case SQLITE_NULL:
      return QString();
    case SQLITE_INTEGER:
      return QString::number(row.integer(column));
    case SQLITE_FLOAT:
      return QString::number(row.real(column), 'g', QLocale::FloatingPointShortest);
    default:
      return row.text(column);
  }
}

}  // namespace kaldex
