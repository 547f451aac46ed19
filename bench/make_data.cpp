// Makes the data of the comparison: lines as a shapefile, as ASCII lines and as CSV with WKT, and polygons as
// a shapefile. The same seed and size give the same files.
//
// Coordinates are metres in UTM zone 23 south, held as whole micrometres: the six decimals of the ASCII form,
// the fifteen digits of WKT and the doubles of the shapefile then say exactly the same.

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
#include <system_error>
#include <vector>

namespace kaldex {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kWestmost = 300000.0;      // metres east: inside the zone up to some ten million features
constexpr double kSouthmost = 7400000.0;    // metres north, southern hemisphere
constexpr int kLinesPerSheet = 500;         // lines come map sheet by map sheet, as a survey delivers them
constexpr double kSheetSide = 4000.0;       // metres
constexpr double kShortestStep = 15.0;      // metres between two vertices of a line
constexpr double kLongestStep = 40.0;       //
constexpr double kCellSide = 120.0;         // metres; each polygon stays in a cell of its own
constexpr double kShareWithHole = 0.1;      //
constexpr int kMostExtraVertices = 8;       // a polygon's outer ring has this many more vertices at most
constexpr double kBytesOfAShapefile = 2e9;  // what readers with signed 32-bit offsets take

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

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what);
}

// A text file written in big blocks; a failed write is told by an exception.
class TextFile {
 public:
  explicit TextFile(const std::filesystem::path& path)
      : path_(path.string()), file_(std::fopen(path_.c_str(), "wb")) {
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

struct ShapefileCloser {
  void operator()(SHPHandle shapes) const { SHPClose(shapes); }
  void operator()(DBFHandle table) const { DBFClose(table); }
  void operator()(SHPObject* shape) const { SHPDestroyObject(shape); }
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
    const std::unique_ptr<SHPObject, ShapefileCloser> shape(
        SHPCreateObject(shapeType_, -1, static_cast<int>(starts.size()), starts.data(), nullptr,
                        vertices.size(), vertices.x.data(), vertices.y.data(), nullptr, nullptr));
    row_ = shape ? SHPWriteObject(shapes_.get(), -1, shape.get()) : -1;
    field_ = 0;
    if (row_ < 0) fail("cannot write " + path_);
  }

  // The values of the row of the shape just written, column by column.
  void value(int number) { check(DBFWriteIntegerAttribute(table_.get(), row_, field_++, number)); }
  void value(double number) { check(DBFWriteDoubleAttribute(table_.get(), row_, field_++, number)); }
  void value(const std::string& text) {
    check(DBFWriteStringAttribute(table_.get(), row_, field_++, text.c_str()));
  }

  // Closing tells no error, so the files are counted afterwards.
  void close(int expected) {
    shapes_.reset();
    table_.reset();
    const std::unique_ptr<SHPInfo, ShapefileCloser> shapes(SHPOpen(path_.c_str(), "rb"));
    const std::unique_ptr<DBFInfo, ShapefileCloser> table(DBFOpen(path_.c_str(), "rb"));
    int written = -1;
    if (shapes) SHPGetInfo(shapes.get(), &written, nullptr, nullptr, nullptr);
    if (written != expected || !table || DBFGetRecordCount(table.get()) != expected)
      fail(path_ + " is not complete");
  }

 private:
  void check(int written) {
    if (!written) fail("cannot write the table of " + path_);
  }

  std::string path_;
  int shapeType_;
  std::unique_ptr<SHPInfo, ShapefileCloser> shapes_;
  std::unique_ptr<DBFInfo, ShapefileCloser> table_;
  int row_ = 0;
  int field_ = 0;
};

// The lines as the system's own export writes them: planar, one "END" a line and one for the section, no line
// feed at the very end, Latin-1.
class AsciiLines {
 public:
  AsciiLines(const std::filesystem::path& path, const Extent& extent) : file_(path) {
    file_ << "\nLINES\nINFO\n//Arcos sem Topologia\n"
             "//Arquivo ASCII gerado pelo Sistema KALDEX\n"
             "//Projeto: bench - Plano de informa\xe7\xe3o: lines\n"
             "//Categoria: lines - Modelo: THEMATICMODEL\n"
             "PROJECTION\tUTM, HEMIS -1, ORIG.LAT N 0 0 0.00000, ORIG.LONG O 45 0 0.00000, "
             "LAT1 N 0 0 0.00000, LAT2 N 0 0 0.00000\n"
             "DATUM\tWGS84, Prd 6378137.000000, Pflt 0.003352810665, Pdx 0.00000000, Pdy 0.00000000, "
             "Pdz 0.00000000\n"
             "OFFSETX  500000.000000   OFFSETY  10000000.000000   SCALEFACTOR  0.999600\nBOX\t";
    file_ << extent.x1 << ", " << extent.y1 << ", " << extent.x2 << ", " << extent.y2;
    file_ << "\nUNITS Metros\nSCALE\t" << 25000.0 << "\nINFO_END";
  }

  void write(const Vertices& line) {
    for (std::size_t i = 0; i < line.x.size(); ++i) file_ << "\n" << line.x[i] << "     " << line.y[i];
    file_ << "\nEND";
  }

  void close() {
    file_ << "\nEND";
    file_.close();
  }

 private:
  TextFile file_;
};

// The same lines for the peer.
class CsvLines {
 public:
  explicit CsvLines(const std::filesystem::path& path) : file_(path) { file_ << "WKT,CODIGO\n"; }

  void write(int code, const Vertices& line) {
    std::string_view before = "\"LINESTRING (";
    for (std::size_t i = 0; i < line.x.size(); ++i) {
      file_ << before << line.x[i] << " " << line.y[i];
      before = ",";
    }
    file_ << ")\"," << code << "\n";
  }

  void close() { file_.close(); }

 private:
  TextFile file_;
};

std::string streetName(int index) {
  static const char* const kKinds[] = {"Rua", "Avenida", "Travessa", "Praça", "Estrada"};
  static const char* const kNames[] = {"das Acácias", "São João",   "da Conceição", "dos Ipês",
                                       "Araçá",       "do Açude",   "João Galvão",  "Três Irmãos",
                                       "Água Branca", "dos Órgãos", "Paraíba"};
  return std::string(kKinds[index % 5]) + " " + kNames[index % 11] + " " + std::to_string(index % 997);
}

std::string townName(int index) {
  static const char* const kTowns[] = {"São José dos Campos", "Jacareí",   "Caçapava", "Taubaté", "Ubatuba",
                                       "Guaratinguetá",       "Paraibuna", "Cruzeiro", "Cunha"};
  return kTowns[index % 9];
}

std::string landUse(int index) {
  static const char* const kUses[] = {"residencial", "comércio", "indústria", "área verde",
                                      "serviço público"};
  return kUses[index % 5];
}

// yyyymmdd as a number: that is how shapelib fills a date column.
int surveyDate(int index) {
  return (1990 + index % 33) * 10000 + (1 + index % 12) * 100 + 1 + index % 28;
}

void makeLines(const Options& options) {
  Random random(options.seed);
  LineMaker maker(options, random);
  Shapefile shapes(options.folder / "lines.shp", SHPT_ARC,
                   {{"CODIGO", 'N', 9, 0}, {"LARGURA", 'N', 8, 2}, {"RUA", 'C', 40, 0}});
  AsciiLines ascii(options.folder / "lines.txt", maker.extent());
  CsvLines csv(options.folder / "lines.csv");
  Vertices line;
  for (int i = 0; i < options.count; ++i) {
    maker.make(i, line);
    shapes.write(line, {0});
    shapes.value(i + 1);
    shapes.value(3.0 + 0.25 * (i % 60));
    shapes.value(streetName(i));
    ascii.write(line);
    csv.write(i + 1, line);
  }
  shapes.close(options.count);
  ascii.close();
  csv.close();
}

void makePolygons(const Options& options) {
  Random random(options.seed + 1);
  PolygonMaker maker(options, random);
  Shapefile shapes(options.folder / "polygons.shp", SHPT_POLYGON,
                   {{"CODIGO", 'N', 9, 0},
                    {"ANDARES", 'N', 4, 0},
                    {"VALOR", 'N', 15, 2},
                    {"VISTORIA", 'D', 8, 0},
                    {"MUNICIPIO", 'C', 40, 0},
                    {"USO", 'C', 24, 0}});
  Vertices rings;
  std::vector<int> starts;
  int holes = 0;
  for (int i = 0; i < options.count; ++i) {
    maker.make(i, rings, starts);
    holes += static_cast<int>(starts.size()) - 1;
    shapes.write(rings, starts);
    shapes.value(i + 1);
    shapes.value(1 + i % 30);
    shapes.value(85000.0 + 1234.56 * (i % 5003));
    shapes.value(surveyDate(i));
    shapes.value(townName(i));
    shapes.value(landUse(i));
  }
  shapes.close(options.count);
  std::printf("%d polygons, %d of them with a hole\n", options.count, holes);
}

// What was made, so that a comparison knows whether the data that it finds is the data that it wants.
void writeStamp(const Options& options) {
  TextFile stamp(options.folder / "data.json");
  stamp << "{\"count\": " << options.count << ", \"vertices\": " << options.vertices
        << ", \"seed\": " << std::string_view(std::to_string(options.seed)) << "}\n";
  stamp.close();
}

template <typename Number>
Number numberOf(const char* text, Number lowest) {
  Number value{};
  const char* end = text + std::strlen(text);
  const auto [stop, error] = std::from_chars(text, end, value);
  if (error != std::errc() || stop != end || value < lowest)
    fail(std::string("not a number to use: ") + text);
  return value;
}

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    const bool more = i + 1 < argc;
    if (word == "--count" && more) {
      options.count = numberOf(argv[++i], 1);
    } else if (word == "--vertices" && more) {
      options.vertices = numberOf(argv[++i], 4);
    } else if (word == "--seed" && more) {
      options.seed = numberOf<std::uint64_t>(argv[++i], 0);
    } else if (options.folder.empty() && !word.empty() && word[0] != '-') {
      options.folder = word;
    } else {
      options.folder.clear();
      break;
    }
  }
  if (options.folder.empty()) fail("use: kaldex-bench-data FOLDER [--count N] [--vertices N] [--seed N]");
  const double vertices = options.vertices + kMostExtraVertices + 1.0;
  if (options.count * (60 + 16 * vertices) > kBytesOfAShapefile) fail("more than a shapefile can hold");
  return options;
}

}  // namespace
}  // namespace kaldex

int main(int argc, char** argv) {
  try {
    const kaldex::Options options = kaldex::parse(argc, argv);
    std::filesystem::create_directories(options.folder);
    std::filesystem::remove(options.folder / "data.json");
    kaldex::makeLines(options);
    kaldex::makePolygons(options);
    kaldex::writeStamp(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kaldex-bench-data: %s\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
