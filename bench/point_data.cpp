#include "data_shapefile.h"

// Samples with heights and points of classes, each for us and for the peer.

namespace kaldex {

namespace {

constexpr int kPointsPerSheet = 2500;
constexpr int kClasses = 100;

// Points that lie anywhere on their map sheet.
class PointMaker {
 public:
  PointMaker(int count, Random& random) : random_(random) {
    const int sheets = (count + kPointsPerSheet - 1) / kPointsPerSheet;
    columns_ = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(sheets))));
  }

  void make(int index, double& x, double& y) {
    const int sheet = index / kPointsPerSheet;
    x = rounded(kWestmost + kSheetSide * (sheet % columns_) + random_.between(0, kSheetSide));
    y = rounded(kSouthmost + kSheetSide * (sheet / columns_) + random_.between(0, kSheetSide));
  }

  // Points on the box's edge are none of the layer's, so it is a little larger.
  Extent extent() const {
    const double side = kSheetSide * columns_;
    return {kWestmost - 1, kSouthmost - 1, kWestmost + side + 1, kSouthmost + side + 1};
  }

 private:
  Random& random_;
  int columns_ = 1;
};

// Hills, in whole eighths of a metre: heights that single precision holds, too.
double heightAt(double x, double y) {
  const double metres = 600 + 150 * std::sin(x / 2300) * std::cos(y / 1700) + 40 * std::sin((x + y) / 410);
  return std::round(metres * 8) / 8;
}

std::string className(int number) {
  return landUse(number) + " " + std::to_string(10 + number);
}

}  // namespace

void makeSamples(const Options& options) {
  Random random(options.seed + 2);
  PointMaker maker(options.records(), random);
  TextFile ascii(options.folder / "samples.txt");
  writeHeader(ascii, "SAMPLE", "//Amostras de Modelagem Num\xe9rica", "samples", "DIGITALMODEL",
              maker.extent());
  ascii << "\nINFO_END\nPOINT3D";
  Shapefile shapes(options.folder / "samples.shp", SHPT_POINTZ, {});
  for (int i = 0; i < options.records(); ++i) {
    double x = 0, y = 0;
    maker.make(i, x, y);
    const double z = heightAt(x, y);
    ascii << "\n" << x << "     " << y << "   " << z;
    shapes.writePoint(x, y, z);
  }
  ascii << "\nEND\nEND";
  ascii.close();
  shapes.close(options.records());
}

void makePoints(const Options& options) {
  Random random(options.seed + 3);
  PointMaker maker(options.records(), random);
  TextFile ascii(options.folder / "points.txt");
  writeHeader(ascii, "POINT2D", "//Ponto 2D e Identificadores se Ponto Classificado", "points",
              "THEMATICMODEL", maker.extent());
  ascii << "\nSEPARATOR ;\n//Formato coordx ; coordy ; class_name\nINFO_END";
  TextFile csv(options.folder / "points.csv");
  csv << "x,y,classe\n";
  for (int i = 0; i < options.records(); ++i) {
    double x = 0, y = 0;
    maker.make(i, x, y);
    const std::string name = className(random.below(kClasses));
    ascii << "\n" << x << "  ;  " << y << " ; " << latin1(name);
    csv << x << "," << y << "," << name << "\n";
  }
  ascii << "\nEND";
  ascii.close();
  csv.close();
}

}  // namespace kaldex
