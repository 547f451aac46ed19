#ifndef KALDEX_BENCH_DATA_TOOLS_H
#define KALDEX_BENCH_DATA_TOOLS_H

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// What all the makers of bench data need. Nothing of the product is used, so that a fault of ours can't hide
// in the input.

namespace kaldex {

constexpr double kWestmost = 300000.0;    // metres east: inside the zone up to some ten million features
constexpr double kSouthmost = 7400000.0;  // metres north, southern hemisphere
constexpr double kSheetSide = 4000.0;     // metres; surveys deliver map sheet by map sheet
constexpr int kRecordsPerFeature = 5;     // samples, points and rows are so many times as many

struct Options {
  std::filesystem::path folder;
  int count = 200000;
  int vertices = 20;
  std::uint64_t seed = 20240917;
  std::string only;  // names of what to make, a comma behind each; all when empty

  int records() const { return count * kRecordsPerFeature; }
  bool wants(std::string_view name) const {
    return only.empty() || ("," + only).find("," + std::string(name) + ",") != std::string::npos;
  }
};

// The standard's engines give the same numbers everywhere, its distributions don't; so this draws its own.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  double between(double low, double high) {
    return low + (high - low) * (static_cast<double>(engine_() >> 11) * 0x1p-53);
  }
  int below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }

 private:
  std::mt19937_64 engine_;
};

// Whole micrometres, so that six decimals, fifteen digits and a double say the same.
inline double rounded(double metres) {
  return std::round(metres * 1e6) / 1e6;
}

struct Extent {
  double x1, y1, x2, y2;
};

[[noreturn]] void fail(const std::string& what);

// UTF-8 text of which each character is one of Latin-1.
std::string latin1(std::string_view utf8);

// A text file written in big blocks; a failed write is told by an exception.
class TextFile {
 public:
  explicit TextFile(const std::filesystem::path& path);
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;
  ~TextFile();

  TextFile& operator<<(std::string_view text) {
    block_.append(text);
    if (block_.size() >= kBlock) flush();
    return *this;
  }
  // Six decimals, as the ASCII form has them.
  TextFile& operator<<(double value);
  TextFile& operator<<(int value) { return *this << std::string_view(std::to_string(value)); }

  void close();

 private:
  static constexpr std::size_t kBlock = 1 << 20;

  void flush();

  std::string path_;
  std::FILE* file_;
  std::string block_;
};

// The beginning of a section as the system's own export writes it, up to what only some sections have and the
// end of the header. All of `comment` and `layer` are Latin-1.
void writeHeader(TextFile& file, std::string_view section, std::string_view comment, std::string_view layer,
                 std::string_view model, const Extent& extent);

// Kinds of use, with accents.
std::string landUse(int index);
// Names of streets and quarters, with accents.
std::string placeName(int index);
// yyyymmdd as a number.
int surveyDate(int index);

void makeSamples(const Options& options);
void makePoints(const Options& options);
void makeRows(const Options& options);
void makeDrawing(const Options& options);

}  // namespace kaldex

#endif
