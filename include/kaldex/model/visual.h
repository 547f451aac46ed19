#ifndef KALDEX_MODEL_VISUAL_H
#define KALDEX_MODEL_VISUAL_H

#include <QString>

#include "kaldex/model/sobject.h"

inline namespace kaldex_v1 {

/// A colour of 8-bit red, green and blue, with a name and a position in a palette.
class KALDEX_MODEL_API Color : public SObject {
 public:
  Color() = default;
  Color(short red, short green, short blue) : red(red), green(green), blue(blue) {}
  void Init(const QString& name, int index, int red, int green, int blue);
  bool operator==(const Color& other) const {
    return red == other.red && green == other.green && blue == other.blue;
  }

  QString name;
  int index = 0;
  short red = 0, green = 0, blue = 0;
};

struct PointVisual {
  Color color{147, 122, 73};
  short symbol = 1;
  float size = 2.0f;  ///< millimetres
};

struct LineVisual {
  Color color{229, 91, 104};
  short style = 1;
  float width = 0.25f;  ///< millimetres
};

struct PolygonVisual {
  Color color{0, 0, 255};
  short style = 1;
};

struct TextVisual {
  QString fontName = QStringLiteral("Sans");
  Color color{0, 0, 0};
  float height = 2.0f;  ///< millimetres at map scale
  float angle = 0.0f;   ///< degrees, counter-clockwise
  float thickness = 0.0f;
  float space = 0.0f;
  float expansion = 1.0f;
  short horizontalAlignment = 0;
  short verticalAlignment = 0;
};

/// How points, lines, areas and texts of a class or an object are drawn. Stored visuals have an identifier.
class KALDEX_MODEL_API GeneralVisual : public SObject {
 public:
  GeneralVisual() = default;
  /// Copy everything but the identifier; a null source leaves the visual as it is. 1, or 0 for null.
  int Init(const GeneralVisual* source);
  void SetPointColor(short red, short green, short blue) { point.color = Color(red, green, blue); }
  void SetLineColor(short red, short green, short blue) { line.color = Color(red, green, blue); }
  void SetPolygonColor(short red, short green, short blue) { polygon.color = Color(red, green, blue); }

  int id = 0;
  PointVisual point;
  LineVisual line;
  PolygonVisual polygon;
  TextVisual text;
};

}  // namespace kaldex_v1

#endif
