#ifndef KALDEX_BASE_NUMERIC_LOCALE_H
#define KALDEX_BASE_NUMERIC_LOCALE_H

#include <locale.h>

#include "base/api.h"

namespace kaldex {

// While it stands, the calling thread reads and prints numbers with a decimal point; other threads and the
// other categories of the locale are not touched. For calls into C libraries that use printf or strtod. Costs
// next to nothing where the point is in force already, so it may be nested freely. Set the process's locale
// before the first use.
class KALDEX_BASE_API NumericLocaleGuard {
 public:
  NumericLocaleGuard();
  ~NumericLocaleGuard();
  NumericLocaleGuard(const NumericLocaleGuard&) = delete;
  NumericLocaleGuard& operator=(const NumericLocaleGuard&) = delete;

 private:
  locale_t previous_;  // null where nothing was changed
};

}  // namespace kaldex

#endif
