#include "ogckml/coordinate_text.h"

#include <cmath>

#include "base/number_text.h"

namespace kaldex {

namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// One list of tuples.
class TupleList {
 public:
  TupleList(std::string_view text, std::vector<double>& pairs, CoordinateTally& tally)
      : rest_(text), pairs_(pairs), tally_(tally) {}

  void parse() {
    while (skipBlanks(), !rest_.empty()) parseTuple();
  }

 private:
  void parseTuple();
  // The comma between two values, blanks around it being passed over; `blanks` says whether there were any
  // behind it.
  bool comma(bool& blanks);
  bool number(double& value);
  void skipBlanks() {
    while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
  }
  void skipWord() {
    while (!rest_.empty() && !isBlank(rest_.front())) rest_.remove_prefix(1);
  }

  std::string_view rest_;
  std::vector<double>& pairs_;
  CoordinateTally& tally_;
};

void TupleList::parseTuple() {
  double longitude = 0.0;
  double latitude = 0.0;
  bool blanks = false;
  if (!number(longitude) || !comma(blanks) || !number(latitude)) {
    ++tally_.bad;
    return skipWord();
  }
  pairs_.push_back(longitude);
  pairs_.push_back(latitude);
  if (!comma(blanks)) return;
  const std::string_view third = rest_;
  double altitude = 0.0;
  if (!number(altitude)) return;
  const std::string_view behind = rest_;
  bool more = false;
  if (comma(more) && blanks) {
    // "1,2, 3,4": the comma stood behind the tuple, and this is the next one.
    rest_ = third;
    return;
  }
  if (altitude != 0.0) ++tally_.altitudes;
  rest_ = behind;
  skipWord();
}

bool TupleList::comma(bool& blanks) {
  const std::string_view before = rest_;
  skipBlanks();
  if (rest_.empty() || rest_.front() != ',') {
    rest_ = before;
    return false;
  }
  rest_.remove_prefix(1);
  blanks = rest_.empty() || isBlank(rest_.front());
  skipBlanks();
  return true;
}

bool TupleList::number(double& value) {
  std::size_t used = 0;
  value = textToReal(rest_, &used);
  rest_.remove_prefix(used);
  return used > 0 && std::isfinite(value);
}

}  // namespace

void parseCoordinates(std::string_view text, std::vector<double>& pairs, CoordinateTally& tally) {
  TupleList(text, pairs, tally).parse();
}

}  // namespace kaldex
