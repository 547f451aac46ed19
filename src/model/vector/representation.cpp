#include "model/vector/representation.h"

#include "kaldex/model/vector.h"

namespace kaldex {

namespace {

// A contour or sample representation may stand beside the lines of the same layer: its tables need names of
// their own.
const char* tableSuffix(short vectorKind, FeatureKind kind) {
  static const char* const ofLines[] = {"lines", "polygons", "points", "heights", "anchors"};
  static const char* const ofContours[] = {"contours", "contour_polygons", "contour_points",
                                           "contour_heights", "contour_anchors"};
  static const char* const ofSamples[] = {"sample_lines", "sample_polygons", "sample_points", "samples",
                                          "sample_anchors"};
  static const char* const ofTins[] = {"tin_lines", "tin_triangles", "tin_points", "tin_nodes",
                                       "tin_anchors"};
  const auto index = static_cast<size_t>(kind);
  switch (vectorKind) {
    case vectorContours:
      return ofContours[index];
    case vectorSamples:
      return ofSamples[index];
    case vectorTin:
      return ofTins[index];
    default:
      return ofLines[index];
  }
}

}  // namespace

std::string representationBase(const QString& layerName, int layerId) {
  std::string base;
  for (const QChar c : layerName.normalized(QString::NormalizationForm_D)) {
    if (c.category() == QChar::Mark_NonSpacing) continue;
    const char ascii = c.toLower().toLatin1();
    const bool plain = (ascii >= 'a' && ascii <= 'z') || (ascii >= '0' && ascii <= '9');
    if (plain) {
      base += ascii;
    } else if (!base.empty() && base.back() != '_') {
      base += '_';
    }
  }
  while (!base.empty() && base.back() == '_') base.pop_back();
  // A table's name can't begin with a digit in every program that reads it.
  if (base.empty() || (base.front() >= '0' && base.front() <= '9')) base.insert(0, "layer_");
  return base.substr(0, 48) + "_" + std::to_string(layerId);
}

std::string featureTableName(const std::string& base, short vectorKind, FeatureKind kind) {
  return base + "_" + tableSuffix(vectorKind, kind);
}

QString featureTitle(short vectorKind, FeatureKind kind) {
  return QString::fromLatin1(tableSuffix(vectorKind, kind)).replace(QLatin1Char('_'), QLatin1Char(' '));
}

std::string geometryTypeOf(FeatureKind kind) {
  switch (kind) {
    case FeatureKind::lines:
      return "LINESTRING";
    case FeatureKind::polygons:
      return "POLYGON";
    default:
      return "POINT";
  }
}

std::string columnsOf(FeatureKind kind) {
  switch (kind) {
    case FeatureKind::lines:
      return "type TEXT, height REAL, class_id INTEGER, left_polygon INTEGER, right_polygon INTEGER, label_x "
             "REAL, "
             "label_y REAL, impedance_positive REAL, impedance_negative REAL, demand REAL,";
    case FeatureKind::polygons:
      return "parent INTEGER, class_id INTEGER, label_x REAL, label_y REAL, area REAL, perimeter REAL, lines "
             "TEXT, sons "
             "TEXT,";
    case FeatureKind::points:
      return "class_id INTEGER, flag INTEGER,";
    case FeatureKind::samples:
      return "";
    case FeatureKind::anchors:
      return "visual_id INTEGER, min_x REAL, min_y REAL, max_x REAL, max_y REAL, area REAL, perimeter REAL, "
             "impedance "
             "REAL, demand REAL, points TEXT, lines TEXT, polygons TEXT";
  }
  return "";
}

}  // namespace kaldex
