#include "model/database/sql_dialect.h"

namespace kaldex {

SqlDialect::~SqlDialect() = default;

QString SqliteDialect::quoted(const QString& identifier) const {
  QString name = identifier;
  name.replace(QLatin1Char('"'), QLatin1String("\"\""));
  return QLatin1Char('"') + name + QLatin1Char('"');
}

QString SqliteDialect::columnType(short type, short size) const {
  switch (type) {
    case fieldInteger:
      return QStringLiteral("INTEGER");
    case fieldReal:
      return QStringLiteral("REAL");
    default:
      // Dates stand as the text that the user's files hold, in whatever order of day and month: a column that
      // called itself DATE would promise ISO 8601 to other programs.
      return QStringLiteral("TEXT(%1)").arg(size > 0 ? size : 1);
  }
}

QString SqliteDialect::serialKey() const {
  return QStringLiteral("INTEGER PRIMARY KEY");
}

}  // namespace kaldex
