#include "lib/ascii/label_text.h"

namespace kaldex {

namespace {

struct Keyword {
  const char* text;
  LabelWord word;
};

// A keyword that begins with another one stands before it.
constexpr Keyword kKeywords[] = {
    {"LABEL", LabelWord::label},           {"NAME", LabelWord::name},
    {"CLASS_NAME", LabelWord::name},       {"CLASS", LabelWord::category},
    {"CATEGORY_OBJ", LabelWord::category}, {"LINES", LabelWord::lines},
    {"NODES", LabelWord::nodes},
};

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

LabelWord labelWord(const char* word) {
  if (startsWith(word, "//")) return LabelWord::comment;
  if (startsWith(word, "END")) return LabelWord::end;
  if (startsWith(word, "INFO")) return LabelWord::header;
  if (startsLikeNumber(word)) return LabelWord::number;
  if (isHemisphereWord(word)) return LabelWord::angle;
  for (const Keyword& keyword : kKeywords) {
    if (startsWith(word, keyword.text)) return keyword.word;
  }
  return LabelWord::unknown;
}

bool lookLikeAngles(const char* first, const char* second) {
  const auto parted = [](const char* field) { return field[0] != 0 && isBlank(field[1]); };
  return (parted(first) || parted(second)) && (isHemisphereLetter(first[0]) || isHemisphereLetter(second[0]));
}

const QString& RememberedText::set(std::string_view latin1) {
  latin1 = nameOf(latin1);
  if (latin1 != bytes_) {
    bytes_.assign(latin1);
    text_ = QString::fromLatin1(latin1.data(), static_cast<int>(latin1.size()));
  }
  return text_;
}

}  // namespace kaldex
