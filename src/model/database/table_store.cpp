#include "model/database/table_store.h"

#include <algorithm>
#include <limits>

#include "model/database/catalogue_query.h"
#include "model/database/cell_value.h"
#include "model/database/geopackage_schema.h"

namespace kaldex {

namespace {

const char* const kObjectKey = "GEOID";
constexpr short kKeySize = 10;
constexpr short kRealSize = 17;
constexpr short kRealDecimals = 8;
constexpr short kDateSize = 8;
constexpr int kUnboundedText = 255;

struct SystemColumn {
  const char* name;
  short type;
  short size;
};

const SystemColumn kObjectColumns[] = {{"ID", fieldInteger, kKeySize}, {"NOME", fieldText, 32},
                                       {"ROTULO", fieldText, 32},      {"VISID", fieldInteger, kKeySize},
                                       {"DATA", fieldDate, kDateSize}, {"HORA", fieldText, 8}};
const SystemColumn kAssociationColumns[] = {
    {"GEOID", fieldInteger, kKeySize},     {"CATEGORIA", fieldInteger, kKeySize},
    {"GANCHORID", fieldInteger, kKeySize}, {"GVISID", fieldInteger, kKeySize},
    {"AREA", fieldReal, kRealSize},        {"PERIMETRO", fieldReal, kRealSize},
    {"IMPEDANCIA", fieldReal, kRealSize},  {"DEMANDA", fieldReal, kRealSize}};

bool isNumbered(const QString& table, const char* prefix) {
  if (table.size() != 8 || !table.startsWith(QLatin1String(prefix), Qt::CaseInsensitive)) return false;
  return std::all_of(table.begin() + 2, table.end(),
                     [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

// The declared type of a column that isn't ours tells its type and, in brackets, its width.
void takeDeclaredType(TableColumn& column, const QString& declared) {
  const QString type = declared.toUpper();
  const int open = type.indexOf(QLatin1Char('('));
  const int width = open < 0 ? 0 : type.mid(open + 1).section(QRegExp(QStringLiteral("[,)]")), 0, 0).toInt();
  if (type.contains(QLatin1String("INT")) || type == QLatin1String("BOOLEAN")) {
    column.type = fieldInteger;
    column.size = kKeySize;
  } else if (type.startsWith(QLatin1String("REAL")) || type.startsWith(QLatin1String("FLOA")) ||
             type.startsWith(QLatin1String("DOUB")) || type.startsWith(QLatin1String("NUM"))) {
    column.type = fieldReal;
    column.size = kRealSize;
    column.decimals = kRealDecimals;
  } else if (type == QLatin1String("DATE")) {
    column.type = fieldDate;
    column.size = 10;
  } else {
    column.type = fieldText;
    column.size = static_cast<short>(std::clamp(width > 0 ? width : kUnboundedText, 1, 32767));
  }
}

template <size_t count>
void takeSystemColumns(TableInfo& info, const SystemColumn (&columns)[count]) {
  for (const SystemColumn& known : columns) {
    const int position = info.indexOf(QLatin1String(known.name));
    if (position < 0) continue;
    TableColumn& column = info.columns[static_cast<size_t>(position)];
    column.type = known.type;
    column.size = known.size;
    column.decimals = known.type == fieldReal ? kRealDecimals : short{0};
  }
}

template <size_t count>
std::vector<SField> fieldsOf(const SystemColumn (&columns)[count], size_t from) {
  std::vector<SField> fields;
  for (size_t i = from; i < count; ++i) {
    fields.emplace_back(QLatin1String(columns[i].name), columns[i].type, columns[i].size, short{0},
                        static_cast<short>(i));
  }
  return fields;
}

std::vector<const SField*> pointersTo(const std::vector<SField>& fields) {
  std::vector<const SField*> pointers;
  pointers.reserve(fields.size());
  for (const SField& field : fields) pointers.push_back(&field);
  return pointers;
}

std::vector<const SField*> pointersTo(const SFieldList& fields) {
  std::vector<const SField*> pointers;
  for (const SField* field : fields) pointers.push_back(field);
  return pointers;
}

// Columns that can stand in one table: named, and no two alike.
bool namesFit(const std::vector<const SField*>& fields) {
  for (size_t i = 0; i < fields.size(); ++i) {
    if (fields[i]->name.isEmpty() || fields[i]->hasName(QLatin1String(kHiddenKey))) return false;
    for (size_t j = 0; j < i; ++j) {
      if (fields[j]->hasName(fields[i]->name)) return false;
    }
  }
  return true;
}

// Rows of which no cell is new were stored before.
bool isNew(const std::vector<const SField*>& columns, int row) {
  return std::any_of(columns.begin(), columns.end(), [row](const SField* column) {
    return row < column->cells.Size() && column->cells.at(row)->modify() != cellStored;
  });
}

void gatherRows(RowBatch& batch, const std::vector<const SField*>& columns, const std::vector<short>& types,
                int rows) {
  for (int row = 0; row < rows; ++row) {
    if (!isNew(columns, row)) continue;
    batch.beginRow();
    for (size_t i = 0; i < columns.size(); ++i) {
      if (row >= columns[i]->cells.Size()) {
        batch.putNull();
        continue;
      }
      SCell& cell = *columns[i]->cells.at(row);
      batch.putCell(types[i], cell.value());
      cell.setModify(cellStored);
    }
  }
}

}  // namespace

int TableInfo::indexOf(const QString& column) const {
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name.compare(column, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  }
  return -1;
}

QString numberedTable(const char* prefix, int id) {
  return QLatin1String(prefix) + QStringLiteral("%1").arg(id, 6, 10, QLatin1Char('0'));
}

void TableStore::createTables() {
  context_.connection.execSchema(
      "CREATE TABLE kdx_columns (kdx_fid INTEGER PRIMARY KEY, table_name TEXT NOT NULL, position INTEGER NOT "
      "NULL, name "
      "TEXT NOT NULL, type INTEGER NOT NULL, size INTEGER NOT NULL, decimals INTEGER NOT NULL);"
      "CREATE INDEX kdx_columns_table ON kdx_columns (table_name)");
  registerAttributeTable(
      context_.connection, "kdx_columns", QStringLiteral("kdx_columns"),
      QStringLiteral("Columns of the attribute tables: 0 integer, 1 real, 2 date, 3 text"));
}

std::shared_ptr<const TableInfo> TableStore::share(const QString& name) {
  const auto found = known_.constFind(name);
  if (found != known_.constEnd()) return *found;
  // Absent tables are asked for again: the vectors make theirs past this class.
  std::shared_ptr<const TableInfo> info = read(name);
  if (info != nullptr) known_.insert(name, info);
  return info;
}

void TableStore::forget() {
  known_.clear();
  indexed_.clear();
  ++generation_;
}

void TableStore::changed() {
  forget();
}

std::shared_ptr<TableInfo> TableStore::read(const QString& name) {
  Statement find = context_.connection.prepare(
      "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') AND name = ?1 COLLATE NOCASE");
  find.bind(1, name);
  if (name.isEmpty() || !find.step()) return nullptr;
  auto info = std::make_shared<TableInfo>();
  info->name = find.text(0);
  info->quoted = quotedName(info->name);
  readColumns(*info);
  if (isNumbered(info->name, "OJ")) {
    takeSystemColumns(*info, kObjectColumns);
  } else if (isNumbered(info->name, "GA")) {
    takeSystemColumns(*info, kAssociationColumns);
  } else {
    readCatalogue(*info);
  }
  return info;
}

void TableStore::readColumns(TableInfo& info) const {
  Statement columns = context_.connection.prepare("PRAGMA table_info(" + info.quoted + ")");
  while (columns.step()) {
    TableColumn column;
    column.name = columns.text(1);
    if (column.name == QLatin1String(kHiddenKey)) continue;
    takeDeclaredType(column, columns.text(2));
    const bool isKey = columns.integer(5) == 1 && column.type == fieldInteger;
    if (info.columns.empty()) info.hasObjectKey = isKey && column.name == QLatin1String(kObjectKey);
    info.columns.push_back(column);
  }
}

void TableStore::readCatalogue(TableInfo& info) {
  CatalogueQuery all(
      context_.dataBase,
      QStringLiteral("SELECT name, type, size, decimals FROM kdx_columns WHERE table_name = ?"));
  all.with(info.name).run();
  while (all.next()) {
    const int position = info.indexOf(all.text(0));
    if (position < 0) continue;
    TableColumn& column = info.columns[static_cast<size_t>(position)];
    column.type = all.small(1);
    column.size = all.small(2);
    column.decimals = all.small(3);
  }
}

int TableStore::loadFields(SFieldList& fields, const QString& table) {
  const TableInfo* info = find(table);
  if (info == nullptr) return 0;
  short index = 0;
  for (const TableColumn& column : info->columns) {
    fields.Append(new SField(column.name, column.type, column.size, column.decimals, index++, info->name));
  }
  return static_cast<int>(info->columns.size());
}

QString TableStore::definitionOf(const SField& field) const {
  return context_.dialect.quoted(field.name) + QLatin1Char(' ') +
         context_.dialect.columnType(field.type, field.size);
}

void TableStore::create(const QString& name, const QString& key, const std::vector<const SField*>& columns,
                        const QString& title) {
  const SqlDialect& dialect = context_.dialect;
  QString sql = QStringLiteral("CREATE TABLE ") + dialect.quoted(name) + QStringLiteral(" (");
  const bool ownKey = !key.isEmpty();
  sql +=
      dialect.quoted(ownKey ? key : QString::fromLatin1(kHiddenKey)) + QLatin1Char(' ') + dialect.serialKey();
  for (const SField* field : columns) sql += QStringLiteral(", ") + definitionOf(*field);
  context_.connection.execSchema((sql + QLatin1Char(')')).toStdString());
  registerAttributeTable(context_.connection, name.toStdString(), title.isEmpty() ? name : title, name);
  changed();
}

void TableStore::createObjectTable(const Category& category) {
  const QString name = numberedTable("OJ", category.id);
  if (find(name) != nullptr) return;
  const std::vector<SField> fields = fieldsOf(kObjectColumns, 1);
  create(name, QLatin1String(kObjectColumns[0].name), pointersTo(fields),
         category.name + QStringLiteral(": objects"));
}

QString TableStore::titleOfLayer(int layerId) const {
  CatalogueQuery find(context_.dataBase,
                      QStringLiteral("SELECT p.name, l.name FROM kdx_layers l JOIN kdx_projects p ON "
                                     "p.id = l.project_id WHERE l.id = ?"));
  find.with(layerId).run();
  return find.next() ? find.text(0) + QLatin1Char('/') + find.text(1) : QString::number(layerId);
}

void TableStore::createAssociationTable(int layerId) {
  const QString name = numberedTable("GA", layerId);
  if (find(name) != nullptr) return;
  const std::vector<SField> fields = fieldsOf(kAssociationColumns, 0);
  create(name, QString(), pointersTo(fields), titleOfLayer(layerId) + QStringLiteral(": objects"));
}

void TableStore::ensureIndexes(const QString& table) {
  if (indexed_.contains(table)) return;
  const bool objects = isNumbered(table, "OJ");
  if ((!objects && !isNumbered(table, "GA")) || find(table) == nullptr) return;
  indexed_.insert(table);
  for (const char* column : {objects ? "ROTULO" : "GEOID", objects ? "NOME" : "GANCHORID"})
    makeIndex(table, column);
}

void TableStore::makeIndex(const QString& table, const char* column) {
  const QString name = table + QLatin1Char('_') + QString::fromLatin1(column).toLower();
  SqliteConnection& connection = context_.connection;
  Statement known =
      connection.prepare("SELECT 1 FROM sqlite_master WHERE type = 'index' AND name = ?1 COLLATE NOCASE");
  known.bind(1, name);
  if (known.step() || sqlite3_db_readonly(connection.handle(), "main") != 0) return;
  known.finalize();
  connection.execSchema("CREATE INDEX " + quotedName(name) + " ON " + quotedName(table) + " (" + column +
                        ")");
}

int TableStore::createAttributeTable(const Category& category, const SFieldList& fields) {
  const QString& name = category.attributeTable;
  std::vector<const SField*> columns;
  for (const SField* field : fields) {
    if (!field->hasName(QLatin1String(kObjectKey))) columns.push_back(field);
  }
  if (category.id <= 0 || name.isEmpty() || find(name) != nullptr || !namesFit(columns)) return 0;
  create(name, QLatin1String(kObjectKey), columns, category.name + QStringLiteral(": attributes"));
  int position = 0;
  catalogueColumn(name, position++, SField(QLatin1String(kObjectKey), fieldInteger, kKeySize, 0, 0));
  for (const SField* field : columns) catalogueColumn(name, position++, *field);
  const QString objects = numberedTable("OJ", category.id);
  if (find(objects) != nullptr) {
    context_.connection.exec("INSERT INTO " + quotedName(name) + " (GEOID) SELECT ID FROM " +
                             quotedName(objects));
  }
  return 1;
}

int TableStore::createTable(const QString& name, const SFieldList& fields) {
  const std::vector<const SField*> columns = pointersTo(fields);
  if (name.isEmpty() || columns.empty() || find(name) != nullptr || !namesFit(columns)) return 0;
  create(name, QString(), columns, QString());
  int position = 0;
  for (const SField* field : columns) catalogueColumn(name, position++, *field);
  return 1;
}

int TableStore::addColumns(const SFieldList& fields, const QString& table) {
  const TableInfo* info = find(table);
  const std::vector<const SField*> columns = pointersTo(fields);
  if (info == nullptr || !namesFit(columns)) return 0;
  for (const SField* field : columns) {
    if (info->indexOf(field->name) >= 0) return 0;
  }
  const QString name = info->name;
  int position = static_cast<int>(info->columns.size());
  for (const SField* field : columns) {
    const QString sql = QStringLiteral("ALTER TABLE %1 ADD COLUMN %2")
                            .arg(context_.dialect.quoted(name), definitionOf(*field));
    context_.connection.execSchema(sql.toStdString());
    catalogueColumn(name, position++, *field);
  }
  updateContents(context_.connection, name.toStdString(), nullptr);
  changed();
  return 1;
}

int TableStore::insertCells(const SFieldList& fields) {
  std::vector<const SField*> columns;
  int rows = 0;
  for (const SField* field : fields) {
    if (field->cells.Size() == 0) continue;
    columns.push_back(field);
    rows = std::max(rows, field->cells.Size());
  }
  if (columns.empty()) return 1;
  const TableInfo* info = find(columns.front()->table);
  if (info == nullptr) return 0;
  std::vector<std::string> names;
  std::vector<short> types;
  for (const SField* column : columns) {
    const int position = info->indexOf(column->name);
    if (position < 0) return 0;
    types.push_back(info->columns[static_cast<size_t>(position)].type);
    names.push_back(quotedName(column->name));
  }
  RowBatch& batch = cellBatch(info->quoted, names);
  gatherRows(batch, columns, types, rows);
  batch.send();
  return 1;
}

// A load comes by some thousand rows at a time, with the same columns.
RowBatch& TableStore::cellBatch(const std::string& table, const std::vector<std::string>& columns) {
  if (table != cellTable_ || columns != cellColumns_) {
    context_.connection.queue().wait();
    cellBatch_ = RowBatch(context_.connection, table, columns);
    cellTable_ = table;
    cellColumns_ = columns;
  }
  return cellBatch_;
}

void TableStore::catalogueColumn(const QString& table, int position, const SField& field) {
  context_.connection.beginChange();
  CatalogueQuery insert(
      context_.dataBase,
      QStringLiteral("INSERT INTO kdx_columns (table_name, position, name, type, size, decimals) VALUES "
                     "(?, ?, ?, ?, ?, ?)"));
  insert.with(table)
      .with(position)
      .with(field.name)
      .with(field.type)
      .with(field.size)
      .with(field.decimals)
      .run();
}

}  // namespace kaldex
