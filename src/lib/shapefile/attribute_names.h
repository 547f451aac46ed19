#ifndef KALDEX_SHAPEFILE_ATTRIBUTE_NAMES_H
#define KALDEX_SHAPEFILE_ATTRIBUTE_NAMES_H

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include "kaldex/model/field.h"

namespace kaldex {

// Finds a column of the attribute table for each column of a .dbf: one that the table has, or a new one with
// a name that the database can take.
class AttributeNames {
 public:
  // `existing` are the table's columns, key included; borrowed.
  explicit AttributeNames(const SFieldList& existing);

  // The columns in file order. False for a type that no column can have; the column then stands for nothing
  // (index -1).
  bool add(const SField& column);

  // What memory was missing for, null as long as there was enough.
  const char* failure() const { return failure_; }

  // One for each column added: name, type, width and position of its table column.
  SFieldList& columns() { return columns_; }
  // Those that the table lacks.
  SFieldList& newColumns() { return newColumns_; }
  // Names that were reserved words, cut, and what they became.
  const QStringList& reserved() const { return reserved_; }
  const QStringList& replacements() const { return replacements_; }
  // All names that differ from the file's, with the file's first.
  const QVector<QPair<QString, QString>>& renamed() const { return renamed_; }

 private:
  QString withoutReservedWord(const QString& name, int& suffix);
  bool isTaken(const QString& name) const;
  bool insert(SFieldList& list, const SField& field, const char* expression);
  bool addNew(const SField& column, const QString& name);

  const SFieldList& existing_;
  SFieldList columns_;
  SFieldList newColumns_;
  QStringList reserved_;
  QStringList replacements_;
  QVector<QPair<QString, QString>> renamed_;
  const char* failure_ = nullptr;
};

}  // namespace kaldex

#endif
