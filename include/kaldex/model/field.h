#ifndef KALDEX_MODEL_FIELD_H
#define KALDEX_MODEL_FIELD_H

#include <QString>
#include <vector>

#include "kaldex/model/list.h"

inline namespace kaldex_v1 {

/// Types of a column, as attribute tables and record sets number them.
enum FieldType : short { fieldInteger = 0, fieldReal = 1, fieldDate = 2, fieldText = 3 };

/// What a cell says of itself to the next write.
enum SCellModify : short { cellStored = 0, cellChanged = 1, cellInserted = 2 };

/// One value of a column, as text; a null text is SQL's null.
class KALDEX_MODEL_API SCell : public SObject {
 public:
  SCell() = default;
  SCell(const QString& table, short type, const QString& value) : table_(table), type_(type), value_(value) {}

  void ChangeCell(const QString& value);
  void GetValue(QString& value) const { value = value_; }
  const QString& value() const { return value_; }
  void setModify(SCellModify modify) { modify_ = modify; }
  SCellModify modify() const { return modify_; }
  const QString& table() const { return table_; }
  short type() const { return type_; }

 private:
  QString table_;
  short type_ = fieldText;
  QString value_;
  SCellModify modify_ = cellStored;
};

/// Cells of a row, or of a column; owns them unless told otherwise.
class KALDEX_MODEL_API SCellList : public TypedList<SCell> {
 public:
  explicit SCellList(Ownership ownership = Ownership::owns) : TypedList<SCell>(ownership) {}
};

/// A column of an attribute table: name, type, width, decimals, and `index`, the position in its table counted from 0
/// (position 0 is the key GEOID where the table has one).
class KALDEX_MODEL_API SField : public SObject {
 public:
  SField(const QString& name, short type, short size, short decimals, short index, const QString& table = QString());
  /// Copies everything but the cells.
  SField(const SField& other);
  SField& operator=(const SField&) = delete;
  ~SField() override;

  void SetName(const QString& name) { this->name = name; }
  void setTablename(const QString& table) { this->table = table; }
  bool hasName(const QString& other) const { return name.compare(other, Qt::CaseInsensitive) == 0; }

  QString name;
  short type;
  short size;
  short decimals;
  short index;
  QString table;
  SCellList cells;  ///< values of a whole column, for the operations that load tables by column
};

/// Columns. An owning list (the default) copies deeply, so that a copy may die before or after the original.
class KALDEX_MODEL_API SFieldList : public TypedList<SField> {
 public:
  explicit SFieldList(Ownership ownership = Ownership::owns) : TypedList<SField>(ownership) {}
  SFieldList(const SFieldList& other);

  /// The first column of that name without regard to case, or null; leaves the cursor alone.
  SField* find(const QString& name) const;
};

}  // namespace kaldex_v1

#endif
