#include "model/database/catalogue_query.h"

#include <sqlite3.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QVariant>
#include <limits>

#include "kaldex/model/exception.h"
#include "model/database/sqlite.h"

namespace kaldex {

CatalogueQuery::CatalogueQuery(const QSqlDatabase& dataBase, const QString& sql)
    : query_(dataBase), handle_(*static_cast<sqlite3* const*>(dataBase.driver()->handle().constData())) {
  // What is written behind our back has to be finished: two threads must not use the handle at a time.
  SqliteConnection::settle(handle_);
  query_.setForwardOnly(true);
  if (!query_.prepare(sql)) fail();
}

CatalogueQuery& CatalogueQuery::with(const QVariant& value) {
  query_.bindValue(bound_++, value);
  return *this;
}

void CatalogueQuery::run() {
  bound_ = 0;
  SqliteConnection::settle(handle_);
  if (!query_.exec()) fail();
}

double CatalogueQuery::real(int column) const {
  const QVariant value = query_.value(column);
  return value.isNull() ? std::numeric_limits<double>::quiet_NaN() : value.toDouble();
}

void CatalogueQuery::fail() const {
  const QSqlError error = query_.lastError();
  SException::Kind kind = SException::Kind::database;
  switch (error.nativeErrorCode().toInt() & 0xff) {
    case SQLITE_FULL:
    case SQLITE_IOERR:
      kind = SException::Kind::diskFull;
      break;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      kind = SException::Kind::busy;
      break;
    default:
      break;
  }
  throw SException(error.databaseText().isEmpty() ? error.text() : error.databaseText(), kind);
}

}  // namespace kaldex
