#include "kaldex/job_report.h"

inline namespace kaldex_v1 {

namespace {
thread_local JobReport* currentReport = nullptr;

constexpr int kLongestNote = 500;  // a line to read, whatever a file puts into it
}  // namespace

void JobReport::note(const QString& text) {
  const QString shown =
      text.size() > kLongestNote ? text.left(kLongestNote - 3) + QStringLiteral("...") : text;
  if (!notes.contains(shown)) notes.append(shown);
}

JobReport* JobReport::current() {
  return currentReport;
}

JobReportScope::JobReportScope(JobReport& report) : previous_(currentReport) {
  currentReport = &report;
}
JobReportScope::~JobReportScope() {
  currentReport = previous_;
}

}  // namespace kaldex_v1
