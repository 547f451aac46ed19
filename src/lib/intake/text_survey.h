#ifndef KALDEX_INTAKE_TEXT_SURVEY_H
#define KALDEX_INTAKE_TEXT_SURVEY_H

#include <QByteArray>
#include <cstddef>
#include <string_view>

#include "base/file_window.h"

namespace kaldex {

// What stands in a text file, as far as it matters to a reader of Latin-1 lines.
struct TextSurvey {
  enum class Unicode { none, utf8, utf16Little, utf16Big };

  long long size = 0;
  int markLength = 0;               // of the byte-order mark
  Unicode unicode = Unicode::none;  // by the mark, or by the bytes
  bool binary = false;              // no text: nothing else is looked at
  bool carriageReturns = false;
  bool nonAscii = false;
  bool endsWithLineFeed = false;
  bool endsWithBlanks = false;  // behind the last line feed stand blanks, and nothing else
  bool endsWithEnd = false;  // the last line, without its end, is "END"
  bool endsWithControlZ = false;
};

// Reads the file once, but for a text that its first bytes show to be UTF-16 or none.
TextSurvey surveyText(FileWindow& file);

// Whether a byte above 0x7F, and a carriage return, stands in the bytes.
struct ByteTraits {
  bool nonAscii = false;
  bool carriageReturns = false;
};
ByteTraits traitsOf(const unsigned char* bytes, std::size_t count);

// Whether a text that comes in pieces is UTF-8 throughout.
class Utf8Check {
 public:
  void add(const unsigned char* bytes, std::size_t count);
  // True if all pieces together were UTF-8, and not ASCII only.
  bool isUtf8() const { return valid_ && nonAscii_ && pending_.isEmpty(); }

 private:
  void check(std::string_view bytes);

  bool valid_ = true;
  bool nonAscii_ = false;
  QByteArray pending_;  // a sequence that the last piece cut
};

}  // namespace kaldex

#endif
