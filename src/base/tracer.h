#ifndef KALDEX_BASE_TRACER_H
#define KALDEX_BASE_TRACER_H

#include <vector>

#include "base/api.h"

inline namespace kaldex_v1 {

// Stands at the entry of an operation and records it on the calling thread's stack until its scope ends. The
// stack holds kMaxFrames frames; deeper calls are counted and not recorded. The texts are borrowed: pass
// literals or __FILE__.
class KALDEX_BASE_API Tracer {
 public:
  static constexpr int kMaxFrames = 50;

  struct Frame {
    const char* path;
    int line;
    const char* name;
  };

  Tracer(const char* path, int line, const char* name);
  ~Tracer();
  Tracer(const Tracer&) = delete;
  Tracer& operator=(const Tracer&) = delete;

  // Calls under way on this thread, recorded or not.
  static int depth();
  // The recorded frames of this thread, outermost first.
  static std::vector<Frame> frames();
};

}  // namespace kaldex_v1

#endif
