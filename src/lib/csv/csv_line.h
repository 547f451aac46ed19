#ifndef KALDEX_CSV_CSV_LINE_H
#define KALDEX_CSV_CSV_LINE_H

#include <string>
#include <string_view>
#include <vector>

namespace kaldex {

// One line of a delimited file as a handler takes it apart, and where it holds what a handler takes wrongly.
// Positions count from 0; npos: nowhere.
struct CsvLine {
  static constexpr std::size_t npos = std::string_view::npos;

  std::vector<std::string_view> fields;  // without blanks at their ends
  std::size_t quotedSeparator = npos;
  std::size_t openQuote = npos;
  std::size_t quotedField = npos;
  std::size_t foreignSeparator = npos;
};

// The separator that a header shows (see detectSeparator), with `quotes` outside of them; 0 for none.
char shownSeparator(std::string_view header, bool quotes);

// `separator` 0: the line is one field. With `anySeparator` the others of ",;|" count as foreign; without
// `quotes` these are nothing special.
void takeApart(std::string_view line, char separator, bool anySeparator, bool quotes, CsvLine& result);

// Reads fields with quotes: a quote at the beginning of a field opens it, a doubled one stands for itself.
// Fed by lines, since a quoted field may go on in the next one.
class QuotedRecord {
 public:
  explicit QuotedRecord(char separator) : separator_(separator) {}

  // Take a line in; true when the record is complete.
  bool add(std::string_view line);
  std::vector<std::string>& fields() { return fields_; }
  // Of the lines taken in, with their ends.
  std::size_t size() const { return size_; }
  void clear();

 private:
  std::size_t addQuoted(std::string_view line, std::size_t at);
  std::size_t endField(std::string_view line, std::size_t at);

  char separator_;
  std::vector<std::string> fields_;
  bool inQuotes_ = false;
  std::size_t size_ = 0;
};

}  // namespace kaldex

#endif
