#include <algorithm>
#include <limits>

#include "kaldex/model/report.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kSignalsOverRange = 1000;
}

// Never freed: operations of other static objects may report until the very end.
SError* const SGError = new SError;

void SError::ProgressInit(int minimum, int maximum, int step) {
  cancelled_ = false;
  ProgressSetRange(minimum, maximum, step);
}

void SError::ProgressSetRange(int minimum, int maximum, int step) {
  maximum_ = std::max(minimum, maximum);
  step_ = std::max(step, 1);
  value_ = minimum;
  const long long range = static_cast<long long>(maximum_) - minimum;
  stride_ = static_cast<int>(std::max(range / kSignalsOverRange, 1LL));
  nextSignal_ = minimum;
  Q_EMIT defineProgressMinimum(minimum);
  Q_EMIT defineProgressMaximum(maximum_);
  signalValue();
}

void SError::ProgressStop(bool finished) {
  step_ = 0;
  nextSignal_ = std::numeric_limits<int>::max();
  Q_EMIT progressStopped(finished);
}

void SError::ProgressSetText(const QString& text) {
  Q_EMIT defineProgressText(text);
}

void SError::Cancel() {
  cancelled_ = true;
}

void SError::signalValue() {
  if (value_ >= maximum_) {
    // Operations may make more steps than they announced: the bar stays full, and the count can't run over.
    value_ = maximum_;
    step_ = 0;
    nextSignal_ = std::numeric_limits<int>::max();
  } else {
    nextSignal_ = static_cast<int>(std::min<long long>(static_cast<long long>(value_) + stride_, maximum_));
  }
  Q_EMIT defineProgressValue(value_);
}

}  // namespace kaldex_v1
