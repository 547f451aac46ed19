#include "model/projection/proj_handles.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace kaldex {

PjContextPtr makePjContext() {
  PjContextPtr context(proj_context_create());
  proj_context_set_enable_network(context.get(), 0);
  proj_log_level(context.get(), PJ_LOG_NONE);
  proj_context_use_proj4_init_rules(context.get(), 1);
  return context;
}

PJ_CONTEXT* threadPjContext() {
  thread_local const PjContextPtr context = makePjContext();
  return context.get();
}

QByteArray numberText(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, std::end(buffer), value);
  return QByteArray(buffer, static_cast<int>(result.ptr - buffer));
}

double snapped(double value) {
  const double rounded = std::round(value * 1e9) / 1e9;
  return std::fabs(value - rounded) <= 1e-15 * std::fabs(value) ? rounded : value;
}

}  // namespace kaldex
