#include "base/numeric_locale.h"

#include <langinfo.h>

namespace kaldex {

namespace {

// The process's locale with "C" numbers, or all of "C" if memory is short. It lives as long as the process:
// threads may still use it while static objects are destroyed.
locale_t decimalPointLocale() {
  static const locale_t locale = [] {
    const locale_t base = duplocale(LC_GLOBAL_LOCALE);
    const locale_t changed = newlocale(LC_NUMERIC_MASK, "C", base);
    if (changed != nullptr) return changed;
    if (base != nullptr) freelocale(base);
    return newlocale(LC_ALL_MASK, "C", nullptr);
  }();
  return locale;
}

bool pointInForce() {
  const char* radix = nl_langinfo(RADIXCHAR);
  return radix[0] == '.' && radix[1] == 0;
}

}  // namespace

NumericLocaleGuard::NumericLocaleGuard()
    : previous_(pointInForce() ? nullptr : uselocale(decimalPointLocale())) {}

NumericLocaleGuard::~NumericLocaleGuard() {
  if (previous_ != nullptr) uselocale(previous_);
}

}  // namespace kaldex
