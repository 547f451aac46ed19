#ifndef KALDEX_ASCII_LABEL_TEXT_H
#define KALDEX_ASCII_LABEL_TEXT_H

#include <QString>
#include <string>
#include <string_view>

#include "lib/ascii/record_text.h"

namespace kaldex {

// What a word at the beginning of a record says in a section of label points. Keywords are compared over
// their own length, so that a longer word means the same.
enum class LabelWord {
  comment,
  end,
  header,
  number,  // plane coordinates
  angle,   // coordinates in degrees, minutes and seconds
  label,
  name,
  category,
  lines,
  nodes,
  unknown
};
LabelWord labelWord(const char* word);

// Whether two fields may be the angles of a coordinate in degrees, minutes and seconds.
bool lookLikeAngles(const char* first, const char* second);

// A text that was read last. Texts that repeat, as names of categories do, share their memory.
class RememberedText {
 public:
  // Cut as names are.
  const QString& set(std::string_view latin1);
  bool isEmpty() const { return bytes_.empty(); }
  bool equals(std::string_view latin1) const { return bytes_ == nameOf(latin1); }
  const QString& text() const { return text_; }

 private:
  std::string bytes_;
  QString text_;
};

}  // namespace kaldex

#endif
