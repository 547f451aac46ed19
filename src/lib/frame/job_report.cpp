#include "kaldex/job_report.h"

inline namespace kaldex_v1 {

namespace {
thread_local JobReport* currentReport = nullptr;
}

void JobReport::note(const QString& text) {
  if (!notes.contains(text)) notes.append(text);
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
