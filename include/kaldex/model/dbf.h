#ifndef KALDEX_MODEL_DBF_H
#define KALDEX_MODEL_DBF_H

#include <QString>
#include <QStringList>
#include <memory>

#include "kaldex/model/field.h"

inline namespace kaldex_v1 {

enum class OpenMode { read };

/// Reads a dBASE attribute table row by row, with the memory of one window of the file. Deleted rows count as
/// rows: a shapefile's rows and shapes stand in step. Everything in the header is checked against the file's
/// size: rows that are there are read whatever the header counts, a row that the file's end cuts is not, and
/// a table whose header makes no sense stays unopened. One thread at a time.
class KALDEX_MODEL_API DbfImpExp {
 public:
  /// `path` may name the .dbf or, with any other extension, a file beside it of the same base name; the
  /// extension's letters may be of either case. `encoding` overrides what .cpg, language byte and bytes tell.
  DbfImpExp(const QString& path, OpenMode mode, const QString& encoding = QString());
  DbfImpExp(const DbfImpExp&) = delete;
  DbfImpExp& operator=(const DbfImpExp&) = delete;
  ~DbfImpExp();

  bool isOpen() const;
  /// Append the columns in file order, their `index` counted from 0: 1, or 0 when the table can't be read.
  /// The name is not used when it is the open file's; of another file the columns are read in passing.
  ///
  /// A number without decimals is of type 0 (integer) if it has up to 9 digits, or more and all values fit 32
  /// bits; it becomes type 1 (real) where the values say otherwise: with the decimals that they have, or with
  /// none for values too large. A date is type 2, anything else type 3 (text). Columns that refer to other
  /// files (memo) are left out.
  int ReadAttr(const QString& path, SFieldList* fields);
  /// Go to the first row: 1, or 0 when there is none.
  int First();
  /// Go to the next row: 1, or 0 at the end of the rows.
  int Next();
  /// Go to a row counted from 0: 1, or 0 (and the end of the rows) when there is no such row.
  int Go(long long row);
  bool IsEOF() const;
  int NumFields() const;
  long long NumRows() const;
  /// Value of the current row without outer blanks; a null text for an empty field, "*****", a date of zeros,
  /// and a column out of range.
  QString GetFieldValue(int column) const;

  /// The encoding of texts and how it was found: "override", "cpg", "ldid" (language byte), "bytes", or
  /// "default" when nothing tells and nothing depends on it.
  QString encodingName() const;
  QString encodingReason() const;
  /// A sign of the encoding that names none known here, as it stands, or empty.
  QString encodingDoubt() const;
  /// How many of the texts read so far hold bytes that mean nothing in the encoding; U+FFFD stands in their place.
  int undecodable() const;
  /// Names of the columns that were left out.
  QStringList ignoredColumns() const;

 private:
  struct Table;
  std::unique_ptr<Table> table_;
};

}  // namespace kaldex_v1

#endif
