#ifndef KALDEX_TESTS_DBF_MAKER_H
#define KALDEX_TESTS_DBF_MAKER_H

#include <QByteArray>
#include <QVector>
#include <QtEndian>
#include <initializer_list>

namespace kaldex::test {

/// Builds dBASE files byte by byte, also such as no writer should make.
class DbfMaker {
 public:
  struct Column {
    QByteArray name;
    char type;
    int width;
    int decimals = 0;
  };

  explicit DbfMaker(std::initializer_list<Column> columns) : columns_(columns) {}

  /// Values are set left; numbers that stand right carry their blanks.
  DbfMaker& row(std::initializer_list<QByteArray> values, char mark = ' ') {
    rows_ += mark;
    int i = 0;
    for (const QByteArray& value : values) rows_ += value.leftJustified(columns_[i++].width, ' ', true);
    ++count_;
    return *this;
  }

  int recordLength() const {
    int length = 1;
    for (const Column& column : columns_) length += column.width;
    return length;
  }

  QByteArray bytes() const {
    QByteArray head(32, '\0');
    head[0] = version;
    qToLittleEndian<quint32>(declaredRows < 0 ? count_ : static_cast<quint32>(declaredRows), head.data() + 4);
    const int headerLength = 32 + 32 * columns_.size() + 1;
    qToLittleEndian<quint16>(static_cast<quint16>(declaredHeader < 0 ? headerLength : declaredHeader),
                             head.data() + 8);
    qToLittleEndian<quint16>(static_cast<quint16>(declaredRecord < 0 ? recordLength() : declaredRecord),
                             head.data() + 10);
    head[29] = static_cast<char>(languageDriver);
    for (const Column& column : columns_) {
      QByteArray descriptor = column.name.leftJustified(11, '\0', true) + column.type;
      descriptor = descriptor.leftJustified(32, '\0');
      descriptor[16] = static_cast<char>(column.width);
      descriptor[17] = static_cast<char>(column.decimals);
      head += descriptor;
    }
    return head + '\r' + rows_ + (endMark ? "\x1A" : "");
  }

  char version = 3;
  int languageDriver = 0;
  long long declaredRows = -1;  ///< the true value where below 0, as the next two
  int declaredHeader = -1;
  int declaredRecord = -1;
  bool endMark = true;

 private:
  QVector<Column> columns_;
  QByteArray rows_;
  quint32 count_ = 0;
};

}  // namespace kaldex::test

#endif
