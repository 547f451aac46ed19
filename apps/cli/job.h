#ifndef KALDEX_CLI_JOB_H
#define KALDEX_CLI_JOB_H

#include <QElapsedTimer>
#include <QString>

#include "cli/conversation.h"
#include "cli/language.h"
#include "cli/options.h"
#include "cli/progress_bar.h"
#include "kaldex/job_report.h"

namespace kaldex::cli {

enum class Result { done, failed, refused, cancelled };

/// The word that stands for it in JSON.
QString resultName(Result result);

/// One import, export or conversion: what it was asked, what it says, what it did, and how it ended.
class Job {
 public:
  Job(const Options& options, const Language& language);

  const Options& options() const { return options_; }
  Conversation& conversation() { return conversation_; }
  /// The report of the work at hand: the job's, or that of a part of it.
  static JobReport& report() { return *JobReport::current(); }

  /// An operation begins: what was said before is not about it.
  void begin() { saidBefore_ = conversation_.messages().size(); }
  /// Tell why it can't be done.
  Result fail(const QString& why);
  /// What became of an operation that returned this. Where it failed without a word, `missing` is told.
  Result judge(int returned, const QString& missing);
  /// What an operation left behind before it ended early was kept.
  void keptPartial() { keptPartial_ = true; }
  /// Print the report; the exit code of the process.
  int end(Result result);

 private:
  const Options& options_;
  QElapsedTimer timer_;
  ProgressBar progress_;
  Conversation conversation_;
  JobReport report_;
  JobReportScope scope_;
  int saidBefore_ = 0;
  bool keptPartial_ = false;
};

int exitCode(Result result);
/// Runs an action and tells what it throws; then it failed.
template <class Action>
Result guarded(Job& job, Action&& action);

/// The words for the exception that is being handled.
QString currentTrouble();

template <class Action>
Result guarded(Job& job, Action&& action) {
  try {
    return action();
  } catch (...) {
    return job.fail(currentTrouble());
  }
}

}  // namespace kaldex::cli

#endif
