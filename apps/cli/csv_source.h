#ifndef KALDEX_CLI_CSV_SOURCE_H
#define KALDEX_CLI_CSV_SOURCE_H

#include <QTemporaryDir>
#include <optional>

#include "cli/registry.h"
#include "kaldex/csv.h"

namespace kaldex::cli {

/// A delimited file in the form that the library takes: looked at, cleaned if the user wants it, and in a
/// folder of its own, since what is made of it appears beside it.
class CsvSource {
 public:
  CsvSource(const TableContext& context, const CsvQuestion& question)
      : context_(context), question_(question) {}

  /// False after the user was told what a table can't carry.
  bool prepare();
  QString folder() const { return folder_.path(); }
  QString name() const { return name_; }
  const CsvSurvey& survey() const { return *survey_; }

 private:
  void tellMended();
  bool needsSeparator();
  bool clean();
  bool place();
  bool tellFindings();

  const TableContext& context_;
  CsvQuestion question_;
  QTemporaryDir folder_;
  QString name_;
  std::optional<CsvSurvey> survey_;
};

}  // namespace kaldex::cli

#endif
