#ifndef KALDEX_CLI_REPORT_WRITER_H
#define KALDEX_CLI_REPORT_WRITER_H

#include "cli/job.h"

namespace kaldex::cli {

/// How a job ended.
struct Ending {
  Result result;
  bool keptPartial;
  double seconds;
};

/// Prints on standard output what a job did.
class ReportWriter {
 public:
  ReportWriter(const Options& options, const Conversation& conversation, const JobReport& report,
               const Ending& ending)
      : options_(options), conversation_(conversation), report_(report), ending_(ending) {}

  void printJson() const;
  void printText() const;

 private:
  void printCounts(const QString& title, const QMap<QString, long long>& counts,
                   QString (*wordOf)(const QString&)) const;
  void printChoice(const QString& title, const JobReport::Choice& choice) const;
  void printTime() const;

  const Options& options_;
  const Conversation& conversation_;
  const JobReport& report_;
  Ending ending_;
};

}  // namespace kaldex::cli

#endif
