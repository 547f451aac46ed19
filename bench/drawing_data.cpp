#include <iterator>

#include "data_tools.h"

// A drawing: lines, polylines and points by turns, spread over ten layers.

namespace kaldex {

namespace {

constexpr int kLayers = 10;
constexpr double kLongest = 40.0;  // metres between two vertices, each way

class Drawing {
 public:
  Drawing(const std::filesystem::path& path, const Options& options) : file_(path), options_(options) {}

  void write(int entities);

 private:
  void group(int code, std::string_view value) { file_ << code << "\n" << value << "\n"; }
  void group(int code, int value) { file_ << code << "\n" << value << "\n"; }
  void group(int code, double value) { file_ << code << "\n" << value << "\n"; }
  void writeLayerTable();
  void beginEntity(std::string_view name, int index);
  void writePlace(int xCode);
  void step();
  void writeLine();
  void writePolyline(int index);

  TextFile file_;
  const Options& options_;
  Random random_{options_.seed + 3};
  double x_ = 0;
  double y_ = 0;
};

std::string layerName(int index) {
  return "CAMADA_" + std::to_string(index % kLayers);
}

void Drawing::writeLayerTable() {
  group(0, "SECTION");
  group(2, "TABLES");
  group(0, "TABLE");
  group(2, "LAYER");
  group(70, kLayers);
  for (int i = 0; i < kLayers; ++i) {
    group(0, "LAYER");
    group(2, layerName(i));
    group(70, 0);
    group(62, i + 1);
    group(6, "CONTINUOUS");
  }
  group(0, "ENDTAB");
  group(0, "ENDSEC");
}

void Drawing::beginEntity(std::string_view name, int index) {
  group(0, name);
  group(8, layerName(index));
}

void Drawing::writePlace(int xCode) {
  group(xCode, x_);
  group(xCode + 10, y_);
  group(xCode + 20, 0.0);
}

void Drawing::step() {
  x_ = rounded(x_ + random_.between(-kLongest, kLongest));
  y_ = rounded(y_ + random_.between(-kLongest, kLongest));
}

void Drawing::writeLine() {
  writePlace(10);
  step();
  writePlace(11);
}

void Drawing::writePolyline(int index) {
  group(66, 1);
  for (int vertex = 0; vertex < options_.vertices; ++vertex) {
    beginEntity("VERTEX", index);
    writePlace(10);
    step();
  }
  beginEntity("SEQEND", index);
}

void Drawing::write(int entities) {
  writeLayerTable();
  group(0, "SECTION");
  group(2, "ENTITIES");
  for (int i = 0; i < entities; ++i) {
    x_ = rounded(kWestmost + random_.between(0, kSheetSide));
    y_ = rounded(kSouthmost + random_.between(0, kSheetSide));
    constexpr std::string_view kNames[] = {"LINE", "POLYLINE", "LINE", "POLYLINE", "POINT"};
    const std::string_view name = kNames[i / kLayers % std::size(kNames)];
    beginEntity(name, i);
    if (name == "LINE") {
      writeLine();
    } else if (name == "POLYLINE") {
      writePolyline(i);
    } else {
      writePlace(10);
    }
  }
  group(0, "ENDSEC");
  group(0, "EOF");
  file_.close();
}

}  // namespace

void makeDrawing(const Options& options) {
  Drawing(options.folder / "drawing.dxf", options).write(options.count / 2);
}

}  // namespace kaldex
