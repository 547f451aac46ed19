#include "cli/map_colors.h"

#include <iterator>

namespace kaldex::cli {

namespace {

constexpr QRgb kFills[] = {0xFFA6CEE3, 0xFFFDD49E, 0xFFB2DF8A, 0xFFCAB2D6, 0xFFFBB4AE, 0xFFFFF2AE,
                           0xFF9FD8CB, 0xFFE5D8BD, 0xFFF4CAE4, 0xFFC7D3EC, 0xFFE6F5C9, 0xFFD9C2A5};
constexpr QRgb kStrokes[] = {0xFF2B6CA3, 0xFFB5541C, 0xFF3B7D2B, 0xFF6A4C93, 0xFFA83232, 0xFF8A7A12,
                             0xFF1E7D72, 0xFF6E5A3C, 0xFF9C3F7F, 0xFF3C4F8C, 0xFF5C7A1F, 0xFF7A4F1E};
// Has no factor in common with the sets' size, so that neighbours in number aren't neighbours in the set.
constexpr int kStride = 5;

template <std::size_t Size>
QColor pick(const QRgb (&colors)[Size], int number) {
  const auto position = static_cast<std::size_t>(number < 0 ? -number : number) * kStride % Size;
  return QColor(colors[position]);
}

QColor chosen(const Color& color, const Color& usual, const QColor& otherwise) {
  return color == usual ? otherwise : QColor(color.red, color.green, color.blue);
}

}  // namespace

QColor paletteFill(int number) {
  return pick(kFills, number);
}

QColor paletteStroke(int number) {
  return pick(kStrokes, number);
}

QColor fillOf(const GeneralVisual& visual, const QColor& otherwise) {
  return chosen(visual.polygon.color, PolygonVisual().color, otherwise);
}

QColor strokeOf(const GeneralVisual& visual, const QColor& otherwise) {
  return chosen(visual.line.color, LineVisual().color, otherwise);
}

QColor dotOf(const GeneralVisual& visual, const QColor& otherwise) {
  return chosen(visual.point.color, PointVisual().color, otherwise);
}

}  // namespace kaldex::cli
