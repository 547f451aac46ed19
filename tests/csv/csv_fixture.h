#ifndef KALDEX_TESTS_CSV_FIXTURE_H
#define KALDEX_TESTS_CSV_FIXTURE_H

#include "kaldex/ascii.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

class OpenTable : public IEAsc {
 public:
  using IEAsc::dataFile;
  using IEAsc::file;
  using IEAsc::separator;
};

/// Delimited files in the fixture's folder, and a category of objects.
class CsvFixture : public HandlerFixture {
 protected:
  std::unique_ptr<OpenTable> handlerFor(const QString& name, const QByteArray& content,
                                        const char* separator = ";") {
    write(name, content);
    return open<OpenTable>(name, nullptr, 0, 0, nullptr, separator);
  }
  /// Columns as "name:type", with the type's number.
  static SFieldList columns(const QStringList& names) {
    SFieldList list;
    for (const QString& name : names) {
      const short type = name.section(':', 1).isEmpty() ? short{fieldText} : name.section(':', 1).toShort();
      list.Append(new SField(name.section(':', 0, 0), type, 17, 8, static_cast<short>(list.Size())));
    }
    return list;
  }
  static QStringList namesOf(const SFieldList& list) {
    QStringList names;
    for (const SField* column : list) names << column->name;
    return names;
  }
  /// All values, "|" between them, a row a line.
  QString rowsOf(const QString& table) {
    QStringList rows;
    const auto records = dataBase->selectRecords(table, "*", "", "", "");
    for (; !records->atEnd(); records->next()) {
      QStringList values;
      for (int i = 0; i < records->columnCount(); ++i) values << records->text(i);
      rows << values.join("|");
    }
    return rows.join("\n");
  }

  const QString kSkip = "Arquivo INCONSISTENTE. Ignorar somente o item errado e continuar?";
};

}  // namespace kaldex::test

#endif
