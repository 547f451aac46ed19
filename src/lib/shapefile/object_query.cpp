#include "lib/shapefile/object_query.h"

#include <QStringList>

#include "kaldex/model/field.h"

namespace kaldex {

namespace {

// Serial keys that storage systems add on their own; they are no data of an object.
bool isSerialKey(const SField& field) {
  for (const char* key : {"mysql_id", "spostgresql_id", "kaldex_id"}) {
    if (field.hasName(QLatin1String(key))) return true;
  }
  return false;
}

QString tableOf(const char* prefix, int id) {
  return QLatin1String(prefix) + QStringLiteral("%1").arg(id, 6, 10, QLatin1Char('0'));
}

QString columnOf(const QString& table, const char* column) {
  return table + QLatin1String("->") + QLatin1String(column);
}

QString equal(const QString& left, const QString& right) {
  return left + QLatin1String(" = ") + right;
}

class QueryBuilder {
 public:
  QueryBuilder(DataBase& dataBase, const Category& category, const InfoLayer& layer)
      : dataBase_(dataBase),
        objects_(tableOf("OJ", category.id)),
        anchors_(tableOf("GA", layer.id)),
        attributes_(category.attributeTable) {}

  ObjectQuery build() {
    addFields(objects_);
    addFields(anchors_);
    const int keyFields = fields_.Size();
    if (!attributes_.isEmpty()) addFields(attributes_);
    setSelection(keyFields);
    setCondition(fields_.Size() > keyFields);
    query_.order = columnOf(anchors_, "GANCHORID");
    return query_;
  }

 private:
  void addFields(const QString& table) {
    const int before = fields_.Size();
    dataBase_.loadTableFields(fields_, table);
    for (int i = before; i < fields_.Size(); ++i) fields_.at(i)->setTablename(table);
  }

  void setSelection(int keyFields) {
    // The attribute table's own key stands between the anchor's columns and the attributes.
    query_.firstAttribute = keyFields + 1;
    for (const SField* field : fields_) {
      if (isSerialKey(*field)) {
        query_.firstAttribute = keyFields - 1;
      } else {
        query_.selection += field->table + QLatin1String("->") + field->name + QLatin1Char(',');
      }
    }
    if (!query_.selection.isEmpty()) query_.selection[query_.selection.size() - 1] = QLatin1Char(' ');
  }

  void setCondition(bool withAttributes) {
    QStringList tables{objects_, anchors_};
    query_.join = equal(columnOf(objects_, "ID"), columnOf(anchors_, "GEOID"));
    query_.condition = query_.join;
    if (withAttributes) {
      tables << attributes_;
      query_.condition +=
          QLatin1Char(',') + equal(columnOf(anchors_, "GEOID"), columnOf(attributes_, "GEOID"));
    }
    query_.tables = tables.join(QLatin1Char(','));
  }

  DataBase& dataBase_;
  QString objects_;
  QString anchors_;
  QString attributes_;
  SFieldList fields_;
  ObjectQuery query_;
};

}  // namespace

ObjectQuery objectQuery(DataBase& dataBase, const Category& category, const InfoLayer& layer) {
  return QueryBuilder(dataBase, category, layer).build();
}

RecordSetLease openRecords(DataBase& dataBase, const ObjectQuery& query) {
  return RecordSetLease(
      dataBase.selectRecords(query.tables, query.selection, query.condition, query.join, query.order, 1)
          .release());
}

}  // namespace kaldex
