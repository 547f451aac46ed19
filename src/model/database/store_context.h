#ifndef KALDEX_MODEL_STORE_CONTEXT_H
#define KALDEX_MODEL_STORE_CONTEXT_H

#include <QSqlDatabase>

#include "model/database/sql_dialect.h"
#include "model/database/sqlite.h"

namespace kaldex {

/// What every part of a geographic database works on: one connection, seen natively and through Qt SQL.
struct StoreContext {
  SqliteConnection& connection;
  const QSqlDatabase& dataBase;
  const SqlDialect& dialect;
};

}  // namespace kaldex

#endif
