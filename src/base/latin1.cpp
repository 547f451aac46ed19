#include "base/latin1.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kaldex {

namespace {

constexpr ushort kLatin1Last = 0xFF;

bool fitsLatin1(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= kLatin1Last; });
}

QByteArray replaceMisfits(const QString& text, Latin1Loss* loss) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (int i = 0; i < text.size(); ++i) {
    if (text[i].unicode() <= kLatin1Last) {
      bytes.append(static_cast<char>(text[i].unicode()));
      continue;
    }
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (loss != nullptr) loss->add(text.mid(i, pair ? 2 : 1));
    if (pair) ++i;
    bytes.append('?');
  }
  return bytes;
}

// First byte above 0x7F, or the end.
const char* findNonAscii(const char* at, const char* end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
  for (std::uint64_t word = 0; end - at >= static_cast<std::ptrdiff_t>(sizeof word); at += sizeof word) {
    std::memcpy(&word, at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at < end && static_cast<signed char>(*at) >= 0) ++at;
  return at;
}

struct LeadByte {
  int length;                // of the whole sequence, 0 for a byte that begins none
  unsigned char secondFrom;  // range of the second byte, narrower than 80..BF where that would be overlong, a
  unsigned char secondTo;    // surrogate or above the last code point
};

LeadByte leadByte(unsigned char c) {
  if (c >= 0xC2 && c <= 0xDF) return {2, 0x80, 0xBF};
  if (c == 0xE0) return {3, 0xA0, 0xBF};
  if (c == 0xED) return {3, 0x80, 0x9F};
  if (c >= 0xE1 && c <= 0xEF) return {3, 0x80, 0xBF};
  if (c == 0xF0) return {4, 0x90, 0xBF};
  if (c >= 0xF1 && c <= 0xF3) return {4, 0x80, 0xBF};
  if (c == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

// Length of the UTF-8 sequence of two bytes or more at `at`, 0 if there is none.
int sequenceLength(const char* at, const char* end) {
  const LeadByte lead = leadByte(static_cast<unsigned char>(*at));
  if (lead.length == 0 || end - at < lead.length) return 0;
  const unsigned char second = static_cast<unsigned char>(at[1]);
  if (second < lead.secondFrom || second > lead.secondTo) return 0;
  for (int i = 2; i < lead.length; ++i) {
    if ((static_cast<unsigned char>(at[i]) & 0xC0) != 0x80) return 0;
  }
  return lead.length;
}

}  // namespace

void Latin1Loss::add(const QString& character) {
  ++count_;
  if (characters_.size() < kListed && !characters_.contains(character)) characters_.append(character);
}

QByteArray toLatin1(const QString& text, Latin1Loss* loss) {
  if (fitsLatin1(text)) return text.toLatin1();
  return replaceMisfits(text.normalized(QString::NormalizationForm_C), loss);
}

bool hasNonAscii(std::string_view bytes) {
  const char* end = bytes.data() + bytes.size();
  return findNonAscii(bytes.data(), end) != end;
}

bool isValidUtf8(std::string_view bytes) {
  const char* end = bytes.data() + bytes.size();
  for (const char* at = findNonAscii(bytes.data(), end); at != end; at = findNonAscii(at, end)) {
    const int length = sequenceLength(at, end);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

void Utf8Evidence::add(std::string_view bytes) {
  const char* end = bytes.data() + bytes.size();
  for (const char* at = findNonAscii(bytes.data(), end); at != end; at = findNonAscii(at, end)) {
    const int length = sequenceLength(at, end);
    ++(length == 0 ? broken_ : sequences_);
    at += length == 0 ? 1 : length;
  }
}

}  // namespace kaldex
