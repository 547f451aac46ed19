#ifndef KALDEX_MODEL_REPRESENTATION_H
#define KALDEX_MODEL_REPRESENTATION_H

#include <QString>
#include <string>

namespace kaldex {

/// The kinds of tables of a vector representation.
enum class FeatureKind { lines, polygons, points, samples, anchors };

/// Base of the tables' names: the layer's name in plain ASCII letters, with its identifier behind it, which
/// makes it unique.
std::string representationBase(const QString& layerName, int layerId);
/// Name of a table: base, then what it holds in a representation of that kind, as "rivers_3_lines".
std::string featureTableName(const std::string& base, short vectorKind, FeatureKind kind);
/// What the table holds, for other programs to show.
QString featureTitle(short vectorKind, FeatureKind kind);
/// SQL of geometry type and columns.
std::string geometryTypeOf(FeatureKind kind);
std::string columnsOf(FeatureKind kind);

}  // namespace kaldex

#endif
