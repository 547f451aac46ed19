#include "cli/json_writer.h"

#include <cmath>

#include "cli/texts.h"

namespace kaldex::cli {

void JsonWriter::indent() {
  out_ += '\n';
  out_ += QByteArray(2 * depth_, ' ');
}

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!first_) out_ += ',';
  if (depth_ > 0) indent();
  first_ = false;
}

void JsonWriter::begin(char bracket) {
  separate();
  out_ += bracket;
  ++depth_;
  first_ = true;
}

void JsonWriter::end(char bracket) {
  --depth_;
  if (!first_) indent();
  out_ += bracket;
  first_ = false;
}

void JsonWriter::key(const char* name) {
  separate();
  append(QString::fromLatin1(name));
  out_ += ": ";
  afterKey_ = true;
}

void JsonWriter::append(const QString& text) {
  QString escaped = QStringLiteral("\"");
  for (const QChar c : text) {
    if (c == QLatin1Char('"') || c == QLatin1Char('\\')) {
      escaped += QLatin1Char('\\');
      escaped += c;
    } else if (c == QLatin1Char('\n')) {
      escaped += QStringLiteral("\\n");
    } else if (c.unicode() < 0x20) {
      escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    } else {
      escaped += c;
    }
  }
  out_ += (escaped + QLatin1Char('"')).toUtf8();
}

void JsonWriter::value(const QString& text) {
  separate();
  append(text);
}

void JsonWriter::value(double number) {
  separate();
  out_ += std::isfinite(number) ? numberText(number).toLatin1() : QByteArray("null");
}

void JsonWriter::value(long long number) {
  separate();
  out_ += QByteArray::number(number);
}

void JsonWriter::value(bool truth) {
  separate();
  out_ += truth ? "true" : "false";
}

void JsonWriter::null() {
  separate();
  out_ += "null";
}

void JsonWriter::list(const QStringList& texts) {
  beginArray();
  for (const QString& text : texts) value(text);
  endArray();
}

void JsonWriter::member(const char* name, const QString& text) {
  key(name);
  value(text);
}

void JsonWriter::member(const char* name, long long number) {
  key(name);
  value(number);
}

void JsonWriter::member(const char* name, double number) {
  key(name);
  value(number);
}

QByteArray JsonWriter::take() {
  return out_ + '\n';
}

}  // namespace kaldex::cli
