// Makes the data of the comparison: lines as a shapefile, as ASCII lines and as CSV with WKT, and polygons as a
// shapefile. The same seed and size give the same files.
//
// Coordinates are metres in UTM zone 23 south, held as whole micrometres: the six decimals of the ASCII form, the
// fifteen digits of WKT and the doubles of the shapefile then say exactly the same.

#include <shapefil.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kaldex {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kWestmost = 300000.0;     // metres east: inside the zone up to some ten million features
constexpr double kSouthmost = 7400000.0;   // metres north, southern hemisphere
constexpr int kLinesPerSheet = 500;        // lines come map sheet by map sheet, as a survey delivers them
constexpr double kSheetSide = 4000.0;      // metres
constexpr double kShortestStep = 15.0;     // metres between two vertices of a line
constexpr double kLongestStep = 40.0;      //
constexpr double kCellSide = 120.0;        // metres; each polygon stays in a cell of its own
constexpr double kShareWithHole = 0.1;     //
constexpr int kMostExtraVertices = 8;      // a polygon's outer ring has this many more vertices at most
constexpr double kBytesOfAShapefile = 2e9; // what readers with signed 32-bit offsets take

constexpr std::string_view kProjectionWkt =
    "PROJCS[\"WGS_1984_UTM_Zone_23S\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
    "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",10000000.0],"
    "PARAMETER[\"Central_Meridian\",-45.0],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";

struct Options {
  std::filesystem::path folder;
  int count = 200000;
  int vertices = 20;
  std::uint64_t seed = 20240917;
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

struct Vertices {
  std::vector<double> x;
  std::vector<double> y;

  void clear() {
    x.clear();
    y.clear();
  }
  void add(double east, double north) {
    x.push_back(std::round(east * 1e6) / 1e6);
    y.push_back(std::round(north * 1e6) / 1e6);
  }
  int size() const { return static_cast<int>(x.size()); }
};

struct Extent {
  double x1, y1, x2, y2;
};

// Lines that wander like roads and rivers.
class LineMaker {
 public:
  LineMaker(const Options& options, Random& random) : options_(options), random_(random) {
    const int sheets = (options.count + kLinesPerSheet - 1) / kLinesPerSheet;
    columns_ = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(sheets))));
  }

  void make(int index, Vertices& line) {
    line.clear();
    const int sheet = index / kLinesPerSheet;
    double x = kWestmost + kSheetSide * (sheet % columns_) + random_.between(0, kSheetSide);
    double y = kSouthmost + kSheetSide * (sheet / columns_) + random_.between(0, kSheetSide);
    double heading = random_.between(0, 2 * kPi);
    for (int i = 0; i < options_.vertices; ++i) {
      line.add(x, y);
      heading += random_.between(-0.5, 0.5);
      const double step = random_.between(kShortestStep, kLongestStep);
      x += step * std::cos(heading);
      y += step * std::sin(heading);
    }
  }

  // A box that no line can leave.
  Extent extent() const {
    const double reach = kLongestStep * options_.vertices;
    const double side = kSheetSide * columns_;
    return {kWestmost - reach, kSouthmost - reach, kWestmost + side + reach, kSouthmost + side + reach};
  }

 private:
  const Options& options_;
  Random& random_;
  int columns_ = 1;
};

// Star-shaped parcels on a jittered grid, so that no two rings meet; some have a courtyard.
class PolygonMaker {
 public:
  PolygonMaker(const Options& options, Random& random) : options_(options), random_(random) {
    columns_ = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(options.count))));
  }

  void make(int index, Vertices& rings, std::vector<int>& starts) {
    rings.clear();
    starts.assign(1, 0);
    const double jitter = 0.05 * kCellSide;
    const double x = kWestmost + kCellSide * (index % columns_ + 0.5) + random_.between(-jitter, jitter);
    const double y = kSouthmost + kCellSide * (index / columns_ + 0.5) + random_.between(-jitter, jitter);
    const int corners = options_.vertices + random_.below(kMostExtraVertices + 1);
    ring(rings, x, y, corners, -1, 0.28 * kCellSide, 0.44 * kCellSide);
    if (random_.between(0, 1) < kShareWithHole) {
      starts.push_back(rings.size());
      ring(rings, x, y, 8 + random_.below(5), 1, 0.08 * kCellSide, 0.14 * kCellSide);
    }
  }

 private:
  // turn: -1 clockwise, as a shapefile wants outer rings; 1 the other way, as it wants holes.
  void ring(Vertices& out, double x, double y, int corners, int turn, double nearest, double farthest) {
    const int first = out.size();
    for (int i = 0; i < corners; ++i) {
      const double angle = turn * 2 * kPi * i / corners;
      const double radius = random_.between(nearest, farthest);
      out.add(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    out.x.push_back(out.x[static_cast<std::size_t>(first)]);
    out.y.push_back(out.y[static_cast<std::size_t>(first)]);
  }

  const Options& options_;
  Random& random_;
  int columns_ = 1;
};

[[noreturn]] void fail(const std::string& what) { throw std::runtime_error(what); }

// A text file written in big blocks; a failed write is told by an exception.
class TextFile {
 public:
  explicit TextFile(const std::filesystem::path& path) : path_(path.string()), file_(std::fopen(path_.c_str(), "wb")) {
    if (file_ == nullptr) fail("cannot make " + path_);
    block_.reserve(kBlock + 4096);
  }
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;
  ~TextFile() {
    if (file_ != nullptr) std::fclose(file_);
  }

  TextFile& operator<<(std::string_view text) {
    block_.append(text);
    if (block_.size() >= kBlock) flush();
    return *this;
  }
  // Six decimals, as the ASCII form has them.
  TextFile& operator<<(double value) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6).ptr;
    return *this << std::string_view(text, static_cast<std::size_t>(end - text));
  }
  TextFile& operator<<(int value) { return *this << std::string_view(std::to_string(value)); }

  void close() {
    flush();
    const int result = std::fclose(file_);
    file_ = nullptr;
    if (result != 0) fail("cannot write " + path_);
  }

 private:
  static constexpr std::size_t kBlock = 1 << 20;

  void flush() {
    if (std::fwrite(block_.data(), 1, block_.size(), file_) != block_.size()) fail("cannot write " + path_);
    block_.clear();
  }

  std::string path_;
  std::FILE* file_;
  std::string block_;
};

struct Column {
  const char* name;
  char type;  // dBASE: N number, C text, D date
  int width;
  int decimals;
};

// A shapefile with its .dbf, .prj and .cpg. Texts are UTF-8.
class Shapefile {
 public:
  Shapefile(const std::filesystem::path& path, int shapeType, const std::vector<Column>& columns)
      : path_(path.string()),
        shapeType_(shapeType),
        shapes_(SHPCreate(path_.c_str(), shapeType)),
        table_(DBFCreateEx(path_.c_str(), "UTF-8")) {
    if (!shapes_ || !table_) fail("cannot make " + path_);
    for (const Column& column : columns) {
      if (DBFAddNativeFieldType(table_.get(), column.name, column.type, column.width, column.decimals) < 0)
        fail("cannot add column " + std::string(column.name));
    }
    TextFile projection(std::filesystem::path(path).replace_extension(".prj"));
    projection << kProjectionWkt;
    projection.close();
  }

  void write(const Vertices& vertices, const std::vector<int>& starts) {
    const std::unique_ptr<SHPObject, decltype(&SHPDestroyObject)> shape(
        SHPCreateObject(shapeType_, -1, static_cast<int>(starts.size()), starts.data(), nullptr, vertices.size(),
                        vertices.x.data(), vertices.y.data(), nullptr, nullptr),
        SHPDestroyObject);
    row_ = shape ? SHPWriteObject(shapes_.get(), -1, shape.get()) : -1;
    field_ = 0;
    if (row_ < 0) fail("cannot write " + path_);
  }

  // The values of the row of the shape just written, column by column.
  void value(int number) { check(DBFWriteIntegerAttribute(table_.get(), row_, field_++, number)); }
  void value(double number) { check(DBFWriteDoubleAttribute(table_.get(), row_, field_++, number)); }
  void value(const std::string& text) { check(DBFWriteStringAttribute(table_.get(), row_, field_++, text.c_str())); }

 private:
  void check(int written) {
    if (!written) fail("cannot write the table of " + path_);
  }

  std::string path_;
  int shapeType_;
  std::unique_ptr<SHPInfo, decltype(&SHPClose)> shapes_{nullptr, SHPClose};
  std::unique_ptr<DBFInfo, decltype(&DBFClose)> table_{nullptr, DBFClose};
  int row_ = 0;
  int field_ = 0;
};
