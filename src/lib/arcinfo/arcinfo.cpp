#include "kaldex/arcinfo.h"

inline namespace kaldex_v1 {

IEArcInfo::IEArcInfo() = default;
IEArcInfo::~IEArcInfo() = default;

}  // namespace kaldex_v1
