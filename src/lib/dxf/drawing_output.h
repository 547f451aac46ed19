#ifndef KALDEX_DXF_DRAWING_OUTPUT_H
#define KALDEX_DXF_DRAWING_OUTPUT_H

#include <QString>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_output.h"
#include "kaldex/model/catalog.h"

namespace kaldex {

// The layers of a sample export, by what is behind the base name.
inline constexpr char kSampleSuffix[] = "_P3D";
inline constexpr char kSampleLineSuffix[] = "_L3D";
inline constexpr char kBreakLineSuffix[] = "_BKL";
inline constexpr char kContourSuffix[] = "_CON";

// How many decimals the first conversion of a printf format prints; 6 when it doesn't say.
int decimalsOf(const char* format);

// Writes the pieces of a drawing: coordinates as they come, with the decimals that were set.
class DrawingOutput {
 public:
  // `layer` is the base name of layers, in Latin-1; null or empty for that of drawings, "0". Borrows the
  // output.
  DrawingOutput(TextOutput& out, const char* layer);
  const std::string& layer() const { return layer_; }

  // Header with the layer's box (plane, or geographic in degrees or seconds) and table of layers.
  void header(const InfoLayer* box, short coordFormat, short layers);
  void end();
  void setDecimals(int decimals) { decimals_ = decimals; }

  void point(double x, double y);
  void sample(double x, double y, float z);
  // Nothing for fewer than two points. The height counts with the suffixes of lines of one height. Null is no
  // suffix.
  void polyline(const double* xy, int count, float height, const char* suffix);
  // A polyline of two vertices with heights.
  struct Vertex {
    double x;
    double y;
    float z;
  };
  void edge(const Vertex& from, const Vertex& to);
  void face(const std::array<Vertex, 3>& corners);
  // Heights and angles of six decimals; angles of label points are the text "0.0".
  struct TextLook {
    double height = 0.0;
    double angle = 0.0;
    bool plainAngle = false;
  };
  void text(double x, double y, const QString& string, const TextLook& look);

 private:
  void boxCorner(const char* name, double x, double y, int decimals);
  void layerRecord(std::string_view suffix);
  void pair(const char* code, std::string_view value);
  void entity(const char* name);
  void number(const char* code, double value, int decimals);
  void coordinates(double x, double y);
  void preparePolyline(float height, std::string_view suffix);

  TextOutput& out_;
  std::string layer_;
  int decimals_ = 3;

  // What is the same for all vertices of lines of a layer and height.
  std::string suffix_;
  float height_ = 0.0f;
  std::string polylineHead_;
  std::string vertexHead_;
  std::string vertexTail_;
  std::string polylineEnd_;
};

}  // namespace kaldex

#endif
