#include "kaldex/model/recordset.h"

inline namespace kaldex_v1 {

RecordSet::~RecordSet() = default;

}  // namespace kaldex_v1
