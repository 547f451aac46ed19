#ifndef KALDEX_MODEL_DBF_H
#define KALDEX_MODEL_DBF_H

#include <QString>
#include <memory>

#include "kaldex/model/field.h"

inline namespace kaldex_v1 {

enum class OpenMode { read };

/// Reads a dBASE attribute table row by row. Deleted rows count as rows: a shapefile's rows and shapes stand in step.
/// Everything in the header is checked against the file's size; a damaged header leaves the table unopened.
class KALDEX_MODEL_API DbfImpExp {
 public:
  /// `path` may name the .dbf or, with any other ending, a file beside it of the same base name. `encoding` overrides
  /// what .cpg, language byte and bytes tell.
  DbfImpExp(const QString& path, OpenMode mode, const QString& encoding = QString());
  DbfImpExp(const DbfImpExp&) = delete;
  DbfImpExp& operator=(const DbfImpExp&) = delete;
  ~DbfImpExp();

  bool isOpen() const;
  /// Append the columns in file order: type 0 integer (N and F without decimals, up to 10 digits... see fieldOf), 1 real,
  /// 2 date, 3 text. The name is not used when it is the open file's. 1, or 0 when the table can't be read.
  int ReadAttr(const QString& path, SFieldList* fields);
  /// Go to the first row: 1, or 0 when there is none.
  int First();
  int Next();
  bool IsEOF() const;
  int NumFields() const;
  long long NumRows() const;
  /// Value of the current row without outer blanks; empty for null, "*****", and columns out of range.
  QString GetFieldValue(int column) const;

  /// The encoding of texts and how it was found (an override, the .cpg file, the language byte, the bytes).
  QString encodingName() const;
  QString encodingReason() const;

 private:
  struct Table;
  std::unique_ptr<Table> table_;
};

}  // namespace kaldex_v1

#endif
