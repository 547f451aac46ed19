#include "cli/layer_facts.h"

#include <algorithm>

#include "cli/object_category.h"
#include "kaldex/model/text.h"
#include "kaldex/model/vector.h"

namespace kaldex::cli {

namespace {

void count(LayerFacts& facts, InfoLayer& layer) {
  for (const short kind : {vectorLines, vectorContours, vectorSamples}) {
    Vector* const vector = layer.vector(kind);
    if (vector == nullptr) continue;
    facts.lines += vector->lineCount();
    facts.polygons += vector->polygonCount();
    facts.points += vector->point2dCount();
    facts.samples += vector->point3dCount();
    facts.objects += vector->anchorCount();
  }
  Text* text = nullptr;
  if (layer.Get(text) != 0) facts.texts = text->count();
}

}  // namespace

std::vector<ColumnFacts> columnsOf(const SFieldList& fields) {
  std::vector<ColumnFacts> columns;
  for (const SField* const field : fields)
    columns.push_back({field->name, field->type, field->size, field->decimals});
  return columns;
}

std::vector<ColumnFacts> tableColumns(DataBase& dataBase, const Category& category) {
  SFieldList fields;
  dataBase.loadTableFields(fields, category.attributeTable);
  std::vector<ColumnFacts> columns = columnsOf(fields);
  // The key is the system's, no attribute.
  columns.erase(
      std::remove_if(columns.begin(), columns.end(),
                     [](const ColumnFacts& column) { return column.name == QLatin1String("GEOID"); }),
      columns.end());
  return columns;
}

LayerFacts factsOf(DataBase& dataBase, InfoLayer& layer) {
  LayerFacts facts;
  count(facts, layer);
  for (const GeoClass* const geoClass : layer.category()->classes) facts.classes << geoClass->name;
  for (Category* const category : objectCategories(dataBase, layer)) {
    for (const ColumnFacts& column : tableColumns(dataBase, *category)) facts.columns.push_back(column);
  }
  return facts;
}

QString columnTypeName(short type) {
  switch (type) {
    case fieldInteger:
      return QStringLiteral("integer");
    case fieldReal:
      return QStringLiteral("real");
    case fieldDate:
      return QStringLiteral("date");
    default:
      return QStringLiteral("text");
  }
}

}  // namespace kaldex::cli
