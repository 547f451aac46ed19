#include "lib/intake/text_survey.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/latin1.h"

namespace kaldex {

namespace {

constexpr std::size_t kHead = 4096;
constexpr std::size_t kTail = 64;
constexpr std::size_t kBlock = FileWindow::kCapacity;
constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
constexpr std::uint64_t kHighs = 0x8080808080808080ULL;

bool begins(const unsigned char* head, std::size_t count, std::string_view mark) {
  return count >= mark.size() && std::memcmp(head, mark.data(), mark.size()) == 0;
}

void readMark(const unsigned char* head, std::size_t count, TextSurvey& survey) {
  using Unicode = TextSurvey::Unicode;
  if (begins(head, count, "\xEF\xBB\xBF")) {
    survey.unicode = Unicode::utf8;
    survey.markLength = 3;
  } else if (begins(head, count, "\xFF\xFE")) {
    survey.unicode = Unicode::utf16Little;
    survey.markLength = 2;
  } else if (begins(head, count, "\xFE\xFF")) {
    survey.unicode = Unicode::utf16Big;
    survey.markLength = 2;
  }
}

// Texts of this system are mostly digits and letters, whose UTF-16 has a zero in every other place.
void readZeros(const unsigned char* head, std::size_t count, TextSurvey& survey) {
  std::size_t zeros[2] = {0, 0};
  for (std::size_t i = 0; i < count; ++i) {
    if (head[i] == 0) ++zeros[i % 2];
  }
  if (zeros[0] + zeros[1] == 0) return;
  const std::size_t most = count / 2;
  if (zeros[1] * 10 > most * 8 && zeros[0] * 10 < most) {
    survey.unicode = TextSurvey::Unicode::utf16Little;
  } else if (zeros[0] * 10 > most * 8 && zeros[1] * 10 < most) {
    survey.unicode = TextSurvey::Unicode::utf16Big;
  } else {
    survey.binary = true;
  }
}

// Two-byte sequences are the longest that a cut at the end can leave less than whole by one, and so on.
std::size_t cutSequence(std::string_view bytes) {
  const std::size_t most = std::min<std::size_t>(bytes.size(), 3);
  for (std::size_t back = 1; back <= most; ++back) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
    if (byte < 0x80) return 0;
    if (byte < 0xC0) continue;
    const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    return length > back ? back : 0;
  }
  return 0;
}

bool isEndLine(const unsigned char* bytes, std::size_t count) {
  std::string_view text(reinterpret_cast<const char*>(bytes), count);
  const std::size_t feed = text.rfind('\n');
  if (feed != std::string_view::npos) text.remove_prefix(feed + 1);
  const std::size_t first = text.find_first_not_of(" \t");
  return first != std::string_view::npos && text.substr(first) == "END";
}

// `survey` knows how the block before ended.
bool endsInBlanks(const unsigned char* block, std::size_t count, const TextSurvey& survey) {
  std::size_t text = count;
  while (text > 0 && (block[text - 1] == ' ' || block[text - 1] == '\t')) --text;
  if (text == 0) return survey.endsWithLineFeed || survey.endsWithBlanks;
  return text < count && block[text - 1] == '\n';
}

}  // namespace

ByteTraits traitsOf(const unsigned char* bytes, std::size_t count) {
  constexpr std::uint64_t kReturns = kOnes * '\r';
  std::uint64_t high = 0;
  std::uint64_t returns = 0;
  std::size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes + i, sizeof word);
    high |= word;
    const std::uint64_t difference = word ^ kReturns;
    returns |= (difference - kOnes) & ~difference;
  }
  ByteTraits traits;
  traits.nonAscii = (high & kHighs) != 0;
  traits.carriageReturns = (returns & kHighs) != 0;
  for (; i < count; ++i) {
    traits.nonAscii = traits.nonAscii || bytes[i] >= 0x80;
    traits.carriageReturns = traits.carriageReturns || bytes[i] == '\r';
  }
  return traits;
}

void Utf8Check::add(const unsigned char* bytes, std::size_t count) {
  if (!valid_) return;
  std::string_view piece(reinterpret_cast<const char*>(bytes), count);
  if (!pending_.isEmpty()) {
    while (!piece.empty() && (static_cast<unsigned char>(piece.front()) & 0xC0) == 0x80 &&
           pending_.size() < 4) {
      pending_.append(piece.front());
      piece.remove_prefix(1);
    }
    if (piece.empty() && cutSequence({pending_.constData(), static_cast<std::size_t>(pending_.size())}) != 0)
      return;
    check({pending_.constData(), static_cast<std::size_t>(pending_.size())});
    pending_.clear();
  }
  const std::size_t cut = cutSequence(piece);
  check(piece.substr(0, piece.size() - cut));
  pending_ = QByteArray(piece.data() + piece.size() - cut, static_cast<int>(cut));
}

void Utf8Check::check(std::string_view bytes) {
  nonAscii_ = nonAscii_ || hasNonAscii(bytes);
  valid_ = valid_ && isValidUtf8(bytes);
}

TextSurvey surveyText(FileWindow& file) {
  TextSurvey survey;
  survey.size = static_cast<long long>(file.size());
  unsigned char head[kHead];
  const std::size_t headCount = file.read(0, head, sizeof head);
  readMark(head, headCount, survey);
  if (survey.unicode == TextSurvey::Unicode::none) readZeros(head, headCount, survey);
  const bool wide =
      survey.unicode != TextSurvey::Unicode::none && survey.unicode != TextSurvey::Unicode::utf8;
  if (survey.binary || wide) return survey;

  Utf8Check utf8;
  for (std::uint64_t offset = static_cast<std::uint64_t>(survey.markLength); offset < file.size();) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, file.size() - offset));
    const unsigned char* block = file.view(offset, count);
    if (block == nullptr) break;
    const ByteTraits traits = traitsOf(block, count);
    survey.carriageReturns = survey.carriageReturns || traits.carriageReturns;
    survey.nonAscii = survey.nonAscii || traits.nonAscii;
    if (survey.nonAscii) utf8.add(block, count);
    survey.endsWithBlanks = endsInBlanks(block, count, survey);
    survey.endsWithLineFeed = block[count - 1] == '\n';
    survey.endsWithEnd = isEndLine(block + count - std::min(count, kTail), std::min(count, kTail));
    survey.endsWithControlZ = block[count - 1] == 0x1A;
    offset += count;
  }
  if (survey.unicode == TextSurvey::Unicode::none && utf8.isUtf8()) {
    survey.unicode = TextSurvey::Unicode::utf8;
  }
  return survey;
}

}  // namespace kaldex
