#include "lib/dxf/drawing_output.h"

#include "base/character_class.h"
#include "kaldex/model/angle.h"
#include "lib/dxf/drawing_text.h"

namespace kaldex {

namespace {

constexpr int kHeightDecimals = 6;
constexpr int kUsualDecimals = 6;
constexpr int kBoxWidth = 8;
constexpr short kSampleLayers = 3;

bool hasHeight(std::string_view suffix) {
  return suffix == kSampleLineSuffix || suffix == kContourSuffix;
}

// The box in the unit of the coordinates, and its decimals.
struct PrintedBox {
  Box box;
  int decimals;
};

PrintedBox printedBox(const InfoLayer* layer, short coordFormat) {
  constexpr int plane = 3;
  constexpr int degrees = 8;
  constexpr int seconds = 5;
  constexpr double kSecondsPerDegree = 3600.0;
  if (layer == nullptr) return {Box(), plane};
  if (coordFormat == 0) return {layer->box, plane};
  const bool inSeconds = coordFormat > 2;
  const auto converted = [&](double radians) {
    return inSeconds ? radians * 180.0 * kSecondsPerDegree / kPi : radians * 180.0 / kPi;
  };
  const Box& box = layer->geographicBox;
  return {Box(converted(box.x1), converted(box.y1), converted(box.x2), converted(box.y2)),
          inSeconds ? seconds : degrees};
}

}  // namespace

int decimalsOf(const char* format) {
  const std::string_view text(format != nullptr ? format : "");
  std::size_t at = text.find('%');
  if (at == std::string_view::npos) return kUsualDecimals;
  ++at;
  while (at < text.size() && (isDecimalDigit(text[at]) || text[at] == '-' || text[at] == '+')) ++at;
  if (at >= text.size() || text[at] != '.') return kUsualDecimals;
  int decimals = 0;
  for (++at; at < text.size() && isDecimalDigit(text[at]) && decimals <= kMaxDecimals; ++at)
    decimals = 10 * decimals + (text[at] - '0');
  return decimals < kMaxDecimals ? decimals : kMaxDecimals;
}

// An empty name would leave an empty line, over which readers stumble.
DrawingOutput::DrawingOutput(TextOutput& out, const char* layer)
    : out_(out), layer_(layer != nullptr && *layer != 0 ? layer : "0") {}

// --- Header and end ---

void DrawingOutput::header(const InfoLayer* layer, short coordFormat, short layers) {
  const PrintedBox printed = printedBox(layer, coordFormat);
  const Box& box = printed.box;
  out_.append("  0\nSECTION\n  2\nHEADER\n");
  boxCorner("$EXTMIN", box.x1, box.y1, printed.decimals);
  boxCorner("$EXTMAX", box.x2, box.y2, printed.decimals);
  out_.append("  0\nENDSEC\n  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n");
  const QByteArray count = QByteArray::number(layers).rightJustified(5);
  out_.append(' ');
  out_.append(count);
  out_.append('\n');
  if (layers == kSampleLayers) {
    for (const char* const suffix : {kSampleSuffix, kSampleLineSuffix, kBreakLineSuffix}) layerRecord(suffix);
  } else {
    layerRecord({});
  }
  out_.append("  0\nENDTAB\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n");
}

void DrawingOutput::boxCorner(const char* name, double x, double y, int decimals) {
  pair("  9\n", name);
  pair(" 10\n", fixedText(x, decimals, kBoxWidth));
  pair(" 20\n", fixedText(y, decimals, kBoxWidth));
  out_.append(" 30\n0.0\n");
}

void DrawingOutput::layerRecord(std::string_view suffix) {
  out_.append("  0\nLAYER\n  2\n");
  out_.append(layer_);
  out_.append(suffix);
  out_.append("\n 70\n     0\n 62\n     7\n  6\nCONTINUOUS\n");
}

void DrawingOutput::end() {
  out_.append("  0\nENDSEC\n  0\nEOF\n");
}

// --- Pairs ---

void DrawingOutput::pair(const char* code, std::string_view value) {
  out_.append(code);
  out_.append(value);
  out_.append('\n');
}

void DrawingOutput::number(const char* code, double value, int decimals) {
  out_.append(code);
  out_.appendFixed(value, decimals);
  out_.append('\n');
}

void DrawingOutput::entity(const char* name) {
  pair("  0\n", name);
  pair("  8\n", layer_);
}

void DrawingOutput::coordinates(double x, double y) {
  number(" 10\n", x, decimals_);
  number(" 20\n", y, decimals_);
}

// --- Entities ---

void DrawingOutput::point(double x, double y) {
  entity("POINT");
  coordinates(x, y);
}

void DrawingOutput::sample(double x, double y, float z) {
  out_.append("  0\nPOINT\n  8\n");
  out_.append(layer_);
  pair(kSampleSuffix, {});
  coordinates(x, y);
  number(" 30\n", static_cast<double>(z), kHeightDecimals);
}

void DrawingOutput::preparePolyline(float height, std::string_view suffix) {
  const float printed = hasHeight(suffix) ? height : 0.0f;
  if (!polylineHead_.empty() && printed == height_ && suffix == suffix_) return;
  height_ = printed;
  suffix_ = suffix;
  const std::string layer = "  8\n" + layer_ + suffix_ + "\n";
  const std::string z = " 30\n" + fixedText(static_cast<double>(printed), kHeightDecimals) + "\n";
  polylineHead_ = "  0\nPOLYLINE\n" + layer + " 66\n     1\n 10\n0.0\n 20\n0.0\n" + z;
  vertexHead_ = "  0\nVERTEX\n" + layer + " 10\n";
  vertexTail_ = "\n" + z;
  polylineEnd_ = "  0\nSEQEND\n" + layer;
}

void DrawingOutput::polyline(const double* xy, int count, float height, const char* suffix) {
  if (count < 2) return;
  preparePolyline(height, suffix != nullptr ? suffix : "");
  out_.append(polylineHead_);
  for (const double* const end = xy + 2 * static_cast<std::size_t>(count); xy != end; xy += 2) {
    out_.append(vertexHead_);
    out_.appendFixed(xy[0], decimals_);
    out_.append(std::string_view("\n 20\n"));
    out_.appendFixed(xy[1], decimals_);
    out_.append(vertexTail_);
  }
  out_.append(polylineEnd_);
}

void DrawingOutput::edge(const Vertex& from, const Vertex& to) {
  entity("POLYLINE");
  out_.append(" 66\n     1\n 10\n0.0\n 20\n0.0\n 30\n0.0\n");
  for (const Vertex* const vertex : {&from, &to}) {
    entity("VERTEX");
    coordinates(vertex->x, vertex->y);
    number(" 30\n", static_cast<double>(vertex->z), kHeightDecimals);
  }
  entity("SEQEND");
}

void DrawingOutput::face(const std::array<Vertex, 3>& corners) {
  static constexpr const char* kX[] = {" 10\n", " 11\n", " 12\n", " 13\n"};
  static constexpr const char* kY[] = {" 20\n", " 21\n", " 22\n", " 23\n"};
  static constexpr const char* kZ[] = {" 30\n", " 31\n", " 32\n", " 33\n"};
  entity("3DFACE");
  // A triangle is a face whose last two corners are one.
  for (std::size_t corner = 0; corner < 4; ++corner) {
    const Vertex& vertex = corners[corner < 3 ? corner : 2];
    number(kX[corner], vertex.x, decimals_);
    number(kY[corner], vertex.y, decimals_);
    number(kZ[corner], static_cast<double>(vertex.z), kHeightDecimals);
  }
}

void DrawingOutput::text(double x, double y, const QString& string, const TextLook& look) {
  entity("TEXT");
  coordinates(x, y);
  out_.append(" 30\n0.0\n");
  number(" 40\n", look.height, kHeightDecimals);
  out_.append("  1\n");
  out_.append(drawingBytes(string));
  out_.append('\n');
  if (look.plainAngle) {
    out_.append(" 50\n0.0\n");
  } else {
    number(" 50\n", look.angle, kHeightDecimals);
  }
}

}  // namespace kaldex
