#ifndef KALDEX_FRAME_DELIMITED_RECORD_H
#define KALDEX_FRAME_DELIMITED_RECORD_H

#include <QString>
#include <string_view>

namespace kaldex {

// Walks the fields of a delimited record. An empty field between two separators, or behind the last one, is a
// field of one blank; an empty one at the very beginning is none. `separators` may hold several characters,
// of which only the first makes empty fields; with none the whole text is one field. Both texts are borrowed.
class DelimitedFields {
 public:
  DelimitedFields(std::string_view text, std::string_view separators)
      : text_(text), separators_(separators) {}

  // False after the last field.
  bool next(std::string_view& field);

 private:
  // Mostly there is one separator, and a search costs more than all the rest of a field.
  bool isSeparator(char c) const {
    return separators_.size() == 1 ? c == separators_[0] : separators_.find(c) != std::string_view::npos;
  }
  bool emptyFieldAt(std::size_t at) const;

  std::string_view text_;
  std::string_view separators_;
  std::size_t at_ = 0;
};

// The field without blanks at either end.
std::string_view stripped(std::string_view text);

// Turns each comma between two digits into a point.
void mendDecimalCommas(char* text);
// Whether it would change a text, which then doesn't come back from a file as it went out.
bool hasDecimalComma(const QString& text);

// Type of a column by one value of it: 0 integer, 1 real, 2 date, 3 text. Of digits only, up to three are an
// integer, more a real; "0" is a text (no key or code is taken for a number).
short columnType(std::string_view field, char separator);

// ",", ";" or "|": the first in the line that differs from both its neighbours; null when there is none.
const char* detectSeparator(std::string_view line);

}  // namespace kaldex

#endif
