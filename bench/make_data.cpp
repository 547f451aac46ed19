// Makes the data of the comparison. The same seed and size give the same files: lines as a shapefile, as
// ASCII lines and as CSV with WKT; polygons as a shapefile, with label points; samples, points and rows of a
// table as ASCII sections and in a form for the peer.
//
// Coordinates are metres in UTM zone 23 south, held as whole micrometres: the six decimals of the ASCII form,
// the fifteen digits of WKT and the doubles of the shapefile then say exactly the same.

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "data_shapefile.h"

namespace kaldex {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kLinesPerSheet = 500;
constexpr double kShortestStep = 15.0;  // metres between two vertices of a line
constexpr double kLongestStep = 40.0;   //
constexpr double kCellSide = 120.0;     // metres; each polygon stays in a cell of its own
constexpr double kShareWithHole = 0.1;  //
constexpr double kLabelReach = 0.21;    // of a cell, from its middle: outside any hole, inside any polygon
constexpr int kMostExtraVertices = 8;   // a polygon's outer ring has this many more vertices at most
constexpr double kBytesOfAShapefile = 2e9;  // what readers with signed 32-bit offsets take

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
    labelX_ = rounded(x + kLabelReach * kCellSide);
    labelY_ = rounded(y);
    const int corners = options_.vertices + random_.below(kMostExtraVertices + 1);
    ring(rings, x, y, corners, -1, 0.28 * kCellSide, 0.44 * kCellSide);
    if (random_.between(0, 1) < kShareWithHole) {
      starts.push_back(rings.size());
      ring(rings, x, y, 8 + random_.below(5), 1, 0.08 * kCellSide, 0.14 * kCellSide);
    }
  }

  // A place inside the polygon that was made last.
  double labelX() const { return labelX_; }
  double labelY() const { return labelY_; }

  Extent extent() const {
    const double side = kCellSide * columns_;
    return {kWestmost, kSouthmost, kWestmost + side, kSouthmost + side};
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
  double labelX_ = 0;
  double labelY_ = 0;
};

// The lines as the system's own export writes them: planar, one "END" a line and one for the section, no line
// feed at the very end, Latin-1.
class AsciiLines {
 public:
  AsciiLines(const std::filesystem::path& path, const Extent& extent) : file_(path) {
    writeHeader(file_, "LINES", "//Arcos sem Topologia", "lines", "THEMATICMODEL", extent);
    file_ << "\nINFO_END";
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
  return std::string(kKinds[index % 5]) + " " + placeName(index) + " " + std::to_string(index % 997);
}

std::string townName(int index) {
  static const char* const kTowns[] = {"São José dos Campos", "Jacareí",   "Caçapava", "Taubaté", "Ubatuba",
                                       "Guaratinguetá",       "Paraibuna", "Cruzeiro", "Cunha"};
  return kTowns[index % 9];
}

// A label point for each polygon: its class for a thematic layer, its object for a cadastral one.
class Labels {
 public:
  Labels(const std::filesystem::path& folder, const Extent& extent)
      : classes_(folder / "classes.txt"), objects_(folder / "objects.txt") {
    begin(classes_, extent, "THEMATICMODEL", "class_name");
    begin(objects_, extent, "CADASTRALMODEL", "label ; name ; category_obj");
  }

  void write(double x, double y, int number) {
    classes_ << "\n" << x << "  ;  " << y << " ; " << latin1(landUse(number));
    const std::string key = std::to_string(number + 1);
    objects_ << "\n" << x << "  ;  " << y << " ; L" << key << " ; lote " << key << " ; lotes";
  }

  void close() {
    for (TextFile* file : {&classes_, &objects_}) {
      *file << "\nEND";
      file->close();
    }
  }

 private:
  static void begin(TextFile& file, const Extent& extent, std::string_view model, std::string_view fields) {
    writeHeader(file, "POINTS", "//Identificadores dos Pol\xedgonos e das Linhas Classificadas", "parcels",
                model, extent);
    file << "\nSEPARATOR ;\n//Formato coordx ; coordy ; " << fields << "\nINFO_END";
  }

  TextFile classes_;
  TextFile objects_;
};

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
  Labels labels(options.folder, maker.extent());
  Vertices rings;
  std::vector<int> starts;
  int holes = 0;
  for (int i = 0; i < options.count; ++i) {
    maker.make(i, rings, starts);
    holes += static_cast<int>(starts.size()) - 1;
    shapes.write(rings, starts);
    labels.write(maker.labelX(), maker.labelY(), i);
    shapes.value(i + 1);
    shapes.value(1 + i % 30);
    shapes.value(85000.0 + 1234.56 * (i % 5003));
    shapes.value(surveyDate(i));
    shapes.value(townName(i));
    shapes.value(landUse(i));
  }
  shapes.close(options.count);
  labels.close();
  std::printf("%d polygons, %d of them with a hole\n", options.count, holes);
}

// The same lines as ungenerate records, and half as many placemarks with names and data.

class UngenerateLines {
 public:
  explicit UngenerateLines(const std::filesystem::path& path) : file_(path) {}

  void write(int number, const Vertices& line) {
    file_ << number << "\n";
    for (std::size_t i = 0; i < line.x.size(); ++i) file_ << line.x[i] << "  " << line.y[i] << "\n";
    file_ << "END\n";
  }

  void close() {
    file_ << "END\n";
    file_.close();
  }

 private:
  TextFile file_;
};

void makeUngenerate(const Options& options) {
  Random random(options.seed);
  LineMaker maker(options, random);
  UngenerateLines lines(options.folder / "lines.gen");
  Vertices line;
  for (int i = 0; i < options.count; ++i) {
    maker.make(i, line);
    lines.write(i + 1, line);
  }
  lines.close();
}

void makePlacemarks(const Options& options) {
  constexpr double west = -46.5, south = -24.0, side = 2.0, longest = 0.0004;  // degrees
  Random random(options.seed + 2);
  TextFile file(options.folder / "placemarks.kml");
  file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n"
          "<Document><name>marks</name>\n";
  for (int i = 0; i < options.count / 2; ++i) {
    file << "<Placemark><name>" << streetName(i) << "</name><ExtendedData><Data name=\"CODIGO\"><value>"
         << i + 1 << "</value></Data><Data name=\"MUNICIPIO\"><value>" << townName(i)
         << "</value></Data></ExtendedData><LineString><coordinates>";
    double x = west + random.between(0, side);
    double y = south + random.between(0, side);
    for (int vertex = 0; vertex < options.vertices; ++vertex) {
      file << x << "," << y << ",0 ";
      x += random.between(-longest, longest);
      y += random.between(-longest, longest);
    }
    file << "</coordinates></LineString></Placemark>\n";
  }
  file << "</Document></kml>\n";
  file.close();
}

struct Part {
  std::string_view name;
  void (*make)(const Options&);
};

constexpr Part kParts[] = {{"lines", makeLines},
                           {"polygons", makePolygons},
                           {"samples", makeSamples},
                           {"points", makePoints},
                           {"rows", makeRows},
                           {"ungenerate", makeUngenerate},
                           {"placemarks", makePlacemarks},
                           {"drawing", makeDrawing}};

// What was made, so that a comparison knows whether the data that it finds is the data that it wants.
void writeStamp(const Options& options) {
  TextFile stamp(options.folder / "data.json");
  stamp << "{\"count\": " << options.count << ", \"vertices\": " << options.vertices
        << ", \"seed\": " << std::string_view(std::to_string(options.seed)) << ", \"parts\": [";
  std::string_view before = "\"";
  for (const Part& part : kParts) {
    if (!options.wants(part.name)) continue;
    stamp << before << part.name << "\"";
    before = ", \"";
  }
  stamp << "]}\n";
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
    } else if (word == "--only" && more) {
      options.only = std::string(argv[++i]) + ",";
    } else if (options.folder.empty() && !word.empty() && word[0] != '-') {
      options.folder = word;
    } else {
      options.folder.clear();
      break;
    }
  }
  if (options.folder.empty()) {
    fail(
        "use: kaldex-bench-data FOLDER [--count N] [--vertices N] [--seed N] "
        "[--only lines,polygons,samples,points,rows,ungenerate,placemarks,drawing]");
  }
  const double vertices = options.vertices + kMostExtraVertices + 1.0;
  const bool tooLarge = options.count * (60 + 16 * vertices) > kBytesOfAShapefile;
  if (tooLarge || options.count > 40'000'000 / kRecordsPerFeature) fail("more than a shapefile can hold");
  return options;
}

}  // namespace
}  // namespace kaldex

int main(int argc, char** argv) {
  try {
    const kaldex::Options options = kaldex::parse(argc, argv);
    std::filesystem::create_directories(options.folder);
    std::filesystem::remove(options.folder / "data.json");
    for (const kaldex::Part& part : kaldex::kParts) {
      if (options.wants(part.name)) part.make(options);
    }
    kaldex::writeStamp(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kaldex-bench-data: %s\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
