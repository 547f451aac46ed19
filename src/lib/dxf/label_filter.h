#ifndef KALDEX_DXF_LABEL_FILTER_H
#define KALDEX_DXF_LABEL_FILTER_H

#include <QString>

namespace kaldex {

// Which texts of a drawing are labels.
struct LabelFilter {
  // The text as a whole: 1 letters, 2 digits, 3 letters and digits; any other number takes all.
  short valueKind = 0;
  QString prefix;
  // The text from the last occurrence of the suffix's first character must be the suffix.
  QString suffix;

  bool takes(const QString& text) const;
};

}  // namespace kaldex

#endif
