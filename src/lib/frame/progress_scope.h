#ifndef KALDEX_FRAME_PROGRESS_SCOPE_H
#define KALDEX_FRAME_PROGRESS_SCOPE_H

#include "kaldex/model/report.h"

namespace kaldex {

// Progress of one operation on the process-wide reporter: begun here, stopped on every way out.
class ProgressScope {
 public:
  explicit ProgressScope(int maximum) { SGError->ProgressInit(0, maximum, 1); }
  ~ProgressScope() { SGError->ProgressStop(true); }
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;

  void step() { SGError->ProgressStep(); }
  bool cancelled() const { return SGError->cancelled(); }
};

}  // namespace kaldex

#endif
