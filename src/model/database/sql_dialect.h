#ifndef KALDEX_MODEL_SQL_DIALECT_H
#define KALDEX_MODEL_SQL_DIALECT_H

#include <QString>

#include "kaldex/model/field.h"

namespace kaldex {

/// The SQL that differs from one database system to the next; all other statements are the same everywhere.
class SqlDialect {
 public:
  virtual ~SqlDialect();

  virtual QString quoted(const QString& identifier) const = 0;
  /// Type of a column in CREATE TABLE and ALTER TABLE.
  virtual QString columnType(short type, short size) const = 0;
  /// Type and constraint of a key that the database numbers by itself when no value is given.
  virtual QString serialKey() const = 0;
};

/// SQLite, as a GeoPackage uses it.
class SqliteDialect : public SqlDialect {
 public:
  QString quoted(const QString& identifier) const override;
  QString columnType(short type, short size) const override;
  QString serialKey() const override;
};

}  // namespace kaldex

#endif
