#ifndef KALDEX_CLI_LAYER_FACTS_H
#define KALDEX_CLI_LAYER_FACTS_H

#include <QString>
#include <QStringList>
#include <vector>

#include "kaldex/model/database.h"

namespace kaldex::cli {

struct ColumnFacts {
  QString name;
  short type;
  int size;
  int decimals;
};

/// What a layer holds.
struct LayerFacts {
  long long lines = 0;
  long long polygons = 0;
  long long points = 0;
  long long samples = 0;
  long long texts = 0;
  long long objects = 0;
  QStringList classes;
  std::vector<ColumnFacts> columns;
};

LayerFacts factsOf(DataBase& dataBase, InfoLayer& layer);
/// The attributes that a category's table has; empty without a table.
std::vector<ColumnFacts> tableColumns(DataBase& dataBase, const Category& category);
std::vector<ColumnFacts> columnsOf(const SFieldList& fields);
/// "integer", "real", "date", "text".
QString columnTypeName(short type);

}  // namespace kaldex::cli

#endif
