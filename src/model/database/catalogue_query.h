#ifndef KALDEX_MODEL_CATALOGUE_QUERY_H
#define KALDEX_MODEL_CATALOGUE_QUERY_H

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

struct sqlite3;

namespace kaldex {

/// A statement on the catalogue's tables through Qt SQL, which serves every database system alike. Failures
/// throw SException.
class CatalogueQuery {
 public:
  CatalogueQuery(const QSqlDatabase& dataBase, const QString& sql);

  /// Value of the next parameter.
  CatalogueQuery& with(const QVariant& value);
  /// Parameters start anew after it.
  void run();
  bool next() { return query_.next(); }

  int integer(int column) const { return query_.value(column).toInt(); }
  /// Null is no number.
  double real(int column) const;
  float single(int column) const { return static_cast<float>(real(column)); }
  short small(int column) const { return static_cast<short>(integer(column)); }
  QString text(int column) const { return query_.value(column).toString(); }

 private:
  [[noreturn]] void fail() const;

  QSqlQuery query_;
  sqlite3* handle_;
  int bound_ = 0;
};

}  // namespace kaldex

#endif
