#include "fuzz/support/input.h"

namespace kaldex::fuzz {

std::uint8_t Input::byte() {
  if (rest_.empty()) return 0;
  const auto value = static_cast<std::uint8_t>(rest_.front());
  rest_.remove_prefix(1);
  return value;
}

std::string expandRuns(std::string_view text) {
  constexpr char kRun = 1;
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != kRun || i + 2 >= text.size()) {
      result.push_back(text[i]);
      continue;
    }
    const auto length = static_cast<unsigned char>(text[i + 2]);
    result.append(length == 0 ? 1u : length * std::size_t{256}, text[i + 1]);
    i += 2;
  }
  return result;
}

}  // namespace kaldex::fuzz
