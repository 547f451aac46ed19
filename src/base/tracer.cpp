#include "base/tracer.h"

#include <algorithm>

inline namespace kaldex_v1 {

namespace {

struct TraceStack {
  Tracer::Frame frames[Tracer::kMaxFrames];
  int depth;
};

// Zero-initialised plain data: no guard is tested on access and nothing is destroyed at the thread's end.
thread_local TraceStack traceStack;

}  // namespace

Tracer::Tracer(const char* path, int line, const char* name) {
  TraceStack& stack = traceStack;
  if (stack.depth < kMaxFrames) stack.frames[stack.depth] = {path, line, name};
  ++stack.depth;
}

Tracer::~Tracer() {
  --traceStack.depth;
}

int Tracer::depth() {
  return traceStack.depth;
}

std::vector<Tracer::Frame> Tracer::frames() {
  const TraceStack& stack = traceStack;
  return std::vector<Frame>(stack.frames, stack.frames + std::min(stack.depth, kMaxFrames));
}

}  // namespace kaldex_v1
