#include "lib/csv/csv_line.h"

#include <algorithm>

#include "lib/frame/delimited_record.h"

namespace kaldex {

namespace {

constexpr std::string_view kSeparators = ",;|";

// A blank may be the separator itself, and is then none.
std::size_t firstNonBlank(std::string_view text, std::size_t from, char separator) {
  while (from < text.size() && (text[from] == ' ' || text[from] == '\t') && text[from] != separator) ++from;
  return from;
}

// Where the quoted field that begins at `quote` ends: the position of its last quote, or npos.
std::size_t closingQuote(std::string_view line, std::size_t quote) {
  for (std::size_t at = line.find('"', quote + 1); at != std::string_view::npos;
       at = line.find('"', at + 1)) {
    if (at + 1 < line.size() && line[at + 1] == '"') {
      ++at;
    } else {
      return at;
    }
  }
  return std::string_view::npos;
}

// A quote that opens a field, and is not closed before the next separator: does the text between look like
// the inside of a field? Only if what follows the closing quote is a separator or the end.
void findQuotes(std::string_view line, std::size_t start, std::size_t end, char separator, CsvLine& result) {
  const std::size_t quote = firstNonBlank(line, start, separator);
  if (quote >= end || line[quote] != '"') return;
  result.quotedField = std::min(result.quotedField, quote);
  const std::size_t closing = closingQuote(line, quote);
  if (closing == std::string_view::npos) {
    result.openQuote = std::min(result.openQuote, quote);
    return;
  }
  const std::size_t behind = firstNonBlank(line, closing + 1, separator);
  const bool closes = behind == line.size() || line[behind] == separator;
  if (closing > end && closes) result.quotedSeparator = std::min(result.quotedSeparator, end);
}

}  // namespace

char shownSeparator(std::string_view header, bool quotes) {
  header = stripped(header);
  std::string shown(header);
  bool quoted = false;
  for (char& c : shown) {
    if (c == '"') quoted = quotes && !quoted;
    if (quoted) c = '"';
  }
  const char* const found = detectSeparator(quoted ? header : shown);
  return found != nullptr ? *found : '\0';
}

void takeApart(std::string_view line, char separator, bool anySeparator, bool quotes, CsvLine& result) {
  result.fields.clear();
  result.quotedSeparator = result.openQuote = result.quotedField = result.foreignSeparator = CsvLine::npos;
  const bool hasQuotes = quotes && line.find('"') != std::string_view::npos;
  for (std::size_t start = 0;;) {
    const std::size_t found = separator == 0 ? std::string_view::npos : line.find(separator, start);
    const std::size_t end = std::min(found, line.size());
    result.fields.push_back(stripped(line.substr(start, end - start)));
    if (hasQuotes) findQuotes(line, start, end, separator, result);
    if (found == std::string_view::npos) break;
    start = end + 1;
  }
  if (!anySeparator) return;
  for (std::size_t at = line.find_first_of(kSeparators, 1); at != std::string_view::npos;
       at = line.find_first_of(kSeparators, at + 1)) {
    if (line[at] == separator) continue;
    result.foreignSeparator = at;
    return;
  }
}

void QuotedRecord::clear() {
  fields_.clear();
  inQuotes_ = false;
  size_ = 0;
}

bool QuotedRecord::add(std::string_view line) {
  size_ += line.size() + 1;
  std::size_t at = 0;
  if (inQuotes_) {
    fields_.back() += ' ';  // for the line's end
    at = addQuoted(line, 0);
    if (inQuotes_) return false;
    at = endField(line, at);
  }
  while (at <= line.size()) {
    fields_.emplace_back();
    const std::size_t begin = firstNonBlank(line, at, separator_);
    if (begin < line.size() && line[begin] == '"' && separator_ != '"') {
      at = addQuoted(line, begin + 1);
      if (inQuotes_) return false;
    }
    at = endField(line, at);
  }
  return true;
}

// The inside of a quoted field; the position behind its closing quote.
std::size_t QuotedRecord::addQuoted(std::string_view line, std::size_t at) {
  inQuotes_ = true;
  while (at < line.size()) {
    const std::size_t quote = std::min(line.find('"', at), line.size());
    fields_.back().append(line.substr(at, quote - at));
    if (quote == line.size()) return quote;
    if (quote + 1 < line.size() && line[quote + 1] == '"') {
      fields_.back() += '"';
      at = quote + 2;
      continue;
    }
    inQuotes_ = false;
    return quote + 1;
  }
  return at;
}

// What stands before the next separator belongs to the field; the position behind the separator, or beyond
// the end of the line.
std::size_t QuotedRecord::endField(std::string_view line, std::size_t at) {
  const std::size_t found = separator_ == 0 ? std::string_view::npos : line.find(separator_, at);
  const std::size_t end = std::min(found, line.size());
  fields_.back().append(line.substr(at, end - at));
  return end + 1;
}

}  // namespace kaldex
