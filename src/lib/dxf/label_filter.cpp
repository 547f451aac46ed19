#include "lib/dxf/label_filter.h"

#include "base/latin1.h"
#include "base/strings.h"

namespace kaldex {

namespace {

bool isOfKind(const QString& text, short kind) {
  const QByteArray bytes = toLatin1(text);
  switch (kind) {
    case 1:
      return StrIsAlpha(bytes.constData());
    case 2:
      return StrIsDigit(bytes.constData());
    case 3:
      return StrIsAlphaDigit(bytes.constData());
    default:
      return true;
  }
}

bool endsIn(const QString& text, const QString& suffix) {
  const int at = text.lastIndexOf(suffix.at(0));
  return at >= 0 && text.midRef(at) == suffix;
}

}  // namespace

bool LabelFilter::takes(const QString& text) const {
  return (prefix.isEmpty() || text.startsWith(prefix)) && (suffix.isEmpty() || endsIn(text, suffix)) &&
         isOfKind(text, valueKind);
}

}  // namespace kaldex
