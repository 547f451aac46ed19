#ifndef KALDEX_CLI_JSON_WRITER_H
#define KALDEX_CLI_JSON_WRITER_H

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace kaldex::cli {

/// Writes JSON with its keys in the order in which they are given; Qt's own writer sorts them.
class JsonWriter {
 public:
  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  void key(const char* name);

  void value(const QString& text);
  void value(double number);
  void value(long long number);
  void value(bool truth);
  void null();
  void list(const QStringList& texts);

  void member(const char* name, const QString& text);
  void member(const char* name, long long number);
  void member(const char* name, double number);

  /// The whole, with a line feed.
  QByteArray take();

 private:
  void begin(char bracket);
  void end(char bracket);
  void separate();
  void indent();
  void append(const QString& text);

  QByteArray out_;
  int depth_ = 0;
  bool first_ = true;
  bool afterKey_ = false;
};

}  // namespace kaldex::cli

#endif
