#ifndef KALDEX_MODEL_PROJECTION_PROJ_HANDLES_H
#define KALDEX_MODEL_PROJECTION_PROJ_HANDLES_H

#include <proj.h>

#include <QByteArray>
#include <memory>

namespace kaldex {

struct PjDelete {
  void operator()(PJ* object) const { proj_destroy(object); }
};
using PjPtr = std::unique_ptr<PJ, PjDelete>;

struct PjContextDelete {
  void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using PjContextPtr = std::unique_ptr<PJ_CONTEXT, PjContextDelete>;

/// A silent context that never asks the network.
PjContextPtr makePjContext();
/// The calling thread's context, for objects that don't outlive the call that makes them.
PJ_CONTEXT* threadPjContext();

/// A number in the fewest digits that read back as the same double, whatever the locale.
QByteArray numberText(double value);
/// Without the last-bit noise that a detour over radians or a reciprocal leaves: 23.000000000000004
/// becomes 23.
double snapped(double value);

}  // namespace kaldex

#endif
