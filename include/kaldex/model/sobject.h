#ifndef KALDEX_MODEL_SOBJECT_H
#define KALDEX_MODEL_SOBJECT_H

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

/// Root of everything that a `List` can hold.
class KALDEX_MODEL_API SObject {
 public:
  SObject() = default;
  SObject(const SObject&) = default;
  SObject& operator=(const SObject&) = default;
  virtual ~SObject();
};

}  // namespace kaldex_v1

#endif
