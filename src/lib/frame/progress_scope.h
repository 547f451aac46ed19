#ifndef KALDEX_FRAME_PROGRESS_SCOPE_H
#define KALDEX_FRAME_PROGRESS_SCOPE_H

#include <algorithm>
#include <limits>

#include "kaldex/model/report.h"

namespace kaldex {

// The maximum of a report with a step a record.
inline int progressSteps(long long records) {
  return static_cast<int>(std::min<long long>(records, std::numeric_limits<int>::max()));
}

// Progress of one operation on the process-wide reporter: begun here, stopped on every way out.
class ProgressScope {
 public:
  explicit ProgressScope(int maximum) { SGError->ProgressInit(0, maximum, 1); }
  ~ProgressScope() {
    if (stops_) SGError->ProgressStop(true);
  }
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;

  void step() { SGError->ProgressStep(); }
  bool cancelled() const { return SGError->cancelled(); }
  // Whoever shows the progress sees it stand where it was: the contract of failures that are no end.
  void leaveRunning() { stops_ = false; }

 private:
  bool stops_ = true;
};

}  // namespace kaldex

#endif
