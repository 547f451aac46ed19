#ifndef KALDEX_MODEL_RECORDSET_H
#define KALDEX_MODEL_RECORDSET_H

#include <QString>

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

/// The rows of a query, walked forward. It stands on the first row when it is opened; its owner is who asked for it.
/// Rows of a single table can be edited and added, while walking and inside a transaction. Failures throw SException.
class KALDEX_MODEL_API RecordSet {
 public:
  virtual ~RecordSet();

  virtual bool atEnd() const = 0;
  virtual void next() = 0;

  virtual int columnCount() const = 0;
  virtual QString columnName(int column) const = 0;
  virtual short columnType(int column) const = 0;  ///< a FieldType: 0 integer, 1 real, 2 date, other text
  virtual int columnSize(int column) const = 0;    ///< at least 1 for texts
  /// Position of the first column of that name without regard to case, or -1.
  virtual int columnIndex(const QString& name) const = 0;

  /// Values of the current row; null and columns out of range are "" and 0.
  virtual QString text(int column) const = 0;
  virtual int integer(int column) const = 0;
  virtual double real(int column) const = 0;
  virtual QString text(const QString& name) const = 0;
  virtual int integer(const QString& name) const = 0;

  /// Put the set on the first row with this value; false (and unmoved) when there is none.
  virtual bool findRow(const QString& column, const QString& value) = 0;
  /// Begin a change of the current row, or a new row; setText fills it, post stores it. post is 0 on failure.
  virtual void edit() = 0;
  virtual void addNew() = 0;
  virtual void setText(int column, const QString& value) = 0;
  virtual int post() = 0;

  /// A shared set belongs to the database and is not freed by who asked for it.
  virtual bool shared() const { return false; }
};

}  // namespace kaldex_v1

#endif
