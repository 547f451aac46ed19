#include "model/database/cell_value.h"

#include <QLocale>
#include <cmath>

#include "base/number_text.h"
#include "kaldex/model/field.h"

namespace kaldex {

namespace {

constexpr int kLongestNumber = 320;

// A whole number with optional sign and nothing around it.
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

// A finite real with nothing around it.
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

}  // namespace

CellValue parseCell(short type, const QString& text) {
  CellValue value;
  if (text.isNull() || (text.isEmpty() && type != fieldText)) {
    value.type = SQLITE_NULL;
  } else if (type == fieldInteger && parseInteger(text, value.integer)) {
    value.type = SQLITE_INTEGER;
    value.real = static_cast<double>(value.integer);
  } else if (type == fieldReal && parseReal(text, value.real)) {
    value.type = SQLITE_FLOAT;
  } else {
    value.type = SQLITE_TEXT;
  }
  return value;
}

void appendUtf8(std::string& utf8, const QString& text) {
  const auto size = static_cast<std::size_t>(text.size());
  const std::size_t start = utf8.size();
  utf8.resize(start + size);
  const QChar* characters = text.constData();
  for (std::size_t i = 0; i < size; ++i) {
    const ushort c = characters[i].unicode();
    if (c >= 0x80) {
      utf8.resize(start);
      utf8 += text.toStdString();
      return;
    }
    utf8[start + i] = static_cast<char>(c);
  }
}

void ValueBinder::bindCell(Statement& statement, int parameter, short type, const QString& text) {
  const CellValue value = parseCell(type, text);
  switch (value.type) {
    case SQLITE_NULL:
      return statement.bindNull(parameter);
    case SQLITE_INTEGER:
      return statement.bind(parameter, value.integer);
    case SQLITE_FLOAT:
      return statement.bind(parameter, value.real);
    default:
      return bindText(statement, parameter, text);
  }
}

void ValueBinder::bindText(Statement& statement, int parameter, const QString& text) {
  if (text.isNull()) return statement.bindNull(parameter);
  const auto index = static_cast<std::size_t>(parameter);
  if (buffers_.size() <= index) buffers_.resize(index + 1);
  std::string& utf8 = buffers_[index];
  utf8.clear();
  appendUtf8(utf8, text);
  statement.bindBorrowedText(parameter, utf8.data(), utf8.size());
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
