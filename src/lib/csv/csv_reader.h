#ifndef KALDEX_CSV_CSV_READER_H
#define KALDEX_CSV_CSV_READER_H

#include <QStringList>
#include <optional>
#include <string>
#include <string_view>

#include "kaldex/extforma.h"
#include "lib/frame/delimited_record.h"
#include "lib/frame/reserved_names.h"

inline namespace kaldex_v1 {

/// Reads the handler's delimited file: its header, and its rows as fields. A step that fails has told the
/// user why, unless the file just ended.
class SExtFormats::CsvReader {
 public:
  explicit CsvReader(SExtFormats& handler) : handler_(handler) {}

  /// Open the file and read its header line, all of which may fail silently.
  bool openAtHeader();
  /// Propose a text column for each name of the header line.
  bool proposeColumns(SFieldList& columns);

 protected:
  enum class Row { found, ended, failed };
  /// The next line. The last one counts even if it has no line end, an empty one doesn't.
  Row nextRow();

  /// Whether what the last, failing read has left is a comment without a line end, which is no row.
  bool endsInComment() const;

  enum class LastField { kept, dropped };
  /// Take the handler's line apart; what stands behind a separator at its end is a field or none. False for a
  /// line that is too long, or without any field.
  bool split(LastField last = LastField::kept);
  /// The next field of the line, without blanks at its ends.
  bool nextField(std::string_view& field);
  /// The next name of the header, cut to what a header's names may have.
  bool nextName(std::string& name);

  /// Give a name that the system uses itself another one.
  void renameReserved(std::string& name);
  /// Give a name another one that counts the changes.
  void number(std::string& name);
  const QStringList& oldNames() const { return oldNames_; }
  const QStringList& newNames() const { return newNames_; }

  static QString text(std::string_view latin1) {
    return QString::fromLatin1(latin1.data(), static_cast<int>(latin1.size()));
  }
  /// Add a copy to a list; without memory tell the user, naming the expression, and go on.
  static void insert(SFieldList& list, const SField& column, const char* expression);
  bool malformed();
  /// Whether the user goes on without a value of the line.
  bool leavesValueOut() const;

  static constexpr short kTextSize = 17;
  static constexpr short kDecimals = 8;

  SExtFormats& handler_;

 private:
  std::optional<kaldex::DelimitedFields> fields_;
  std::optional<std::string_view> first_;  ///< the first field, until it is asked for
  std::string mended_;
  bool ended_ = false;
  kaldex::NameNumbers numbers_;
  QStringList oldNames_;
  QStringList newNames_;
};

}  // namespace kaldex_v1

#endif
