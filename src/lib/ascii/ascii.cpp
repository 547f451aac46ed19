#include "kaldex/ascii.h"

#include <cstring>

#include "base/strings.h"
#include "base/text_input.h"
#include "base/tracer.h"
#include "lib/ascii/record_text.h"

inline namespace kaldex_v1 {

namespace {
constexpr std::size_t kNameCapacity = 40;
}

IEAsc::IEAsc() = default;
IEAsc::~IEAsc() = default;

int IEAsc::ExtraiNome(char* name) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExtraiNome");
  *name = 0;
  if (file == nullptr) return 0;
  // Copied with its end alone: filling the buffer would cost more than all the rest.
  std::size_t record = qstrlen(line);
  std::memcpy(line2, line, record + 1);
  std::string text;
  for (;;) {
    const int c = kaldex::readCharacter(file);
    if (c == EOF) {
      line2[record] = 0;
      inconsistent("FEOF");
      FileClose();
      return 0;
    }
    if (c == '\n') break;
    if (record + 1 < kLineCapacity) line2[record++] = static_cast<char>(c);
    const bool quote = c == '"' || c == '\'';
    const bool leading = text.empty() && (c == ' ' || c == '\t');
    if (!quote && !leading && text.size() + 1 < kLineCapacity) text += static_cast<char>(c);
  }
  line2[record] = 0;
  setLine(text.c_str());
  qstrncpy(name, StrClean(line), kNameCapacity);
  return 1;
}

bool IEAsc::AscEntitie(const char* keyword) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::AscEntitie");
  bool found = false;
  guarded([&] {
    if (keyword == nullptr) return invalidArgument("keyword");
    if (!openFile("r")) return 0;
    while (!found && readWordIntoLine()) {
      found = kaldex::startsWith(line, keyword);
      if (!found) kaldex::skipLine(file);
    }
    return 1;
  });
  return found;
}

}  // namespace kaldex_v1
