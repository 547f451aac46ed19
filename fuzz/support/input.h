#ifndef KALDEX_FUZZ_INPUT_H
#define KALDEX_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kaldex::fuzz {

/// A fuzzer's input, whose first bytes choose what is done with the others.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  /// The next byte; 0 behind the end.
  std::uint8_t byte();
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

/// Replaces each byte 1, character c, byte n by n times 256 characters c, so that the records that are too
/// long for a buffer are short inputs. n is 0: one character c.
std::string expandRuns(std::string_view text);

}  // namespace kaldex::fuzz

#endif
