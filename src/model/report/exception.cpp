#include "kaldex/model/exception.h"

inline namespace kaldex_v1 {

SException::SException(const QString& message, Kind kind)
    : message_(message), utf8_(message.toUtf8()), kind_(kind) {}

SException::~SException() = default;

}  // namespace kaldex_v1
