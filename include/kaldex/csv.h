#ifndef KALDEX_CSV_H
#define KALDEX_CSV_H

#include <QString>
#include <vector>

#include "kaldex/api.h"

// What a program that starts the import of a delimited table looks at before a handler sees the file.
// Handlers know no quotes, and split every line at every separator.

inline namespace kaldex_v1 {

/// Something in a delimited file that a table can't carry as it stands.
struct KALDEX_API CsvFinding {
  enum Kind {
    byteOrderMark,
    utf16,  ///< nothing else of the file is looked at then
    carriageReturn,
    nul,
    quotedSeparator,   ///< a separator inside a quoted field
    openQuote,         ///< a quoted field that goes on behind its line's end
    quotedField,       ///< quotes that would become part of the value: no more than a warning
    foreignSeparator,  ///< another of the characters that part fields
    ragged,            ///< not as many fields as the header has
    emptyName,         ///< a column without a name, or one named 0
    repeatedName,      ///< a column whose first eight characters are those of another one
    emptyKey,          ///< a row without the value that identifies it
    emptyFirst,        ///< a row that begins with a separator: readers miss the empty field before it
    longLine,          ///< longer than a record may be
    kinds
  };
  Kind kind;
  long long line = 0;    ///< from 1
  long long column = 0;  ///< from 1, in bytes
  /// What it is, for the user.
  QString text() const;
};

/// What a delimited file is looked at for.
struct CsvQuestion {
  /// One character; empty for a single column, null for the one that the header shows.
  QString separator;
  bool quotes = true;  ///< whether quotes may enclose a field; they are nothing special in a cleaned file
  bool anySeparator = false;  ///< whether the reader parts fields at "," and ";" and "|" alike
  bool shortNames = false;    ///< whether the first eight characters of a column's name must be its own
  QString key;                ///< name, or number from 1, of the column that identifies rows
  /// Whether the first field must not be empty; a cleaned file has "0" there, which tables take for no value.
  bool needsFirst = false;
  /// For a cleaned file: what is to part its fields, the separator itself if empty; and names of one word.
  QString newSeparator;
  bool wholeWords = false;
};

/// Walks a delimited file once. Blank lines and those that begin "//" are no rows, as for all text formats.
class KALDEX_API CsvSurvey {
 public:
  struct Column {
    QString name;          ///< whole, as the header has it
    int longestValue = 0;  ///< in bytes
  };
  static constexpr int kListed = 5;

  CsvSurvey(const QString& path, const CsvQuestion& question);

  bool isReadable() const { return readable_; }
  QString separator() const { return separator_; }
  const std::vector<Column>& columns() const { return columns_; }
  long long rows() const { return rows_; }
  /// The column that identifies rows, from 1; 0 when none was asked for or there is none of that name.
  int keyColumn() const { return keyColumn_; }
  /// The first kListed of each kind, in the order of the file.
  const std::vector<CsvFinding>& findings() const { return findings_; }
  long long count(CsvFinding::Kind kind) const { return counts_[kind]; }
  /// Whether something was found of the kinds that bring a reader out of step.
  bool isPlain() const;

 private:
  class Walk;

  bool readable_ = false;
  QString separator_;
  std::vector<Column> columns_;
  long long rows_ = 0;
  int keyColumn_ = 0;
  std::vector<CsvFinding> findings_;
  long long counts_[CsvFinding::kinds] = {};
};

/// Writes a file with quoted fields as one without quotes: what a field can't hold then (separators, line
/// ends, NULs) becomes a blank, or a point where it is a decimal comma, missing fields at a row's end become
/// empty ones, empty ones too many go, and columns without a name, or with one that is taken, get another.
/// Lines end in a line feed, but for the last one.
class KALDEX_API CsvCleaner {
 public:
  explicit CsvCleaner(const CsvQuestion& question) : question_(question) {}

  /// False when a file can't be read or written, or when a quote is never closed; `error` says why.
  bool clean(const QString& from, const QString& to, QString& error);
  /// Fields that lost or changed characters.
  long long changedFields() const { return changedFields_; }
  /// Rows that got fields or lost empty ones.
  long long changedRows() const { return changedRows_; }

 private:
  class Walk;

  CsvQuestion question_;
  long long changedFields_ = 0;
  long long changedRows_ = 0;
};

}  // namespace kaldex_v1

#endif
