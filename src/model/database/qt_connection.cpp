#include <sqlite3.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QVariant>
#include <atomic>

#include "kaldex/model/exception.h"
#include "model/database/catalogue_query.h"
#include "model/database/geopackage_database.h"

namespace kaldex {

namespace {

QString freshName() {
  static std::atomic<int> count{0};
  return QStringLiteral("kaldex_%1").arg(++count);
}

}  // namespace

QtConnection::QtConnection(const QString& path, bool readOnly)
    : name_(freshName()), dataBase_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {
  dataBase_.setDatabaseName(path);
  dataBase_.setConnectOptions(readOnly ? QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000;QSQLITE_OPEN_READONLY")
                                       : QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
  QString problem;
  if (!dataBase_.open()) {
    problem = dataBase_.lastError().text();
  } else {
    // A driver with an SQLite of its own inside gives a handle that this library's calls must not touch.
    QSqlQuery source(dataBase_);
    const bool asked = source.exec(QStringLiteral("SELECT sqlite_source_id()")) && source.next();
    if (asked && source.value(0).toString() == QString::fromLatin1(sqlite3_sourceid())) return;
    problem =
        asked ? QStringLiteral("QSQLITE: SQLite ") + source.value(0).toString() : source.lastError().text();
  }
  dataBase_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
  throw SException(problem);
}

QtConnection::~QtConnection() {
  dataBase_.close();
  dataBase_ = QSqlDatabase();
  QSqlDatabase::removeDatabase(name_);
}

sqlite3* QtConnection::handle() const {
  const QVariant handle = dataBase_.driver()->handle();
  return *static_cast<sqlite3* const*>(handle.constData());
}

}  // namespace kaldex
