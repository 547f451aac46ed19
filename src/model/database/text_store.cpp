#include "model/database/text_store.h"

#include "model/vector/representation.h"

namespace kaldex {

namespace {

const char* const kDefinition =
    "text TEXT, own INTEGER, entity_type INTEGER, layer_name TEXT, font TEXT, height REAL, angle REAL, "
    "thickness REAL, "
    "space REAL, expansion REAL, red INTEGER, green INTEGER, blue INTEGER, horizontal INTEGER, vertical "
    "INTEGER,";
const char* const kColumns =
    "text, own, entity_type, layer_name, font, height, angle, thickness, space, expansion, red, green, blue, "
    "horizontal, vertical, geom";
const char* const kAssignments =
    "text = ?, own = ?, entity_type = ?, layer_name = ?, font = ?, height = ?, angle = ?, thickness = ?, "
    "space = ?, "
    "expansion = ?, red = ?, green = ?, blue = ?, horizontal = ?, vertical = ?, geom = ?";
constexpr int kIdParameter = 17;

std::string tableName(const InfoLayer& layer) {
  return representationBase(layer.name, layer.id) + "_texts";
}

FeatureTable::Definition definitionOf(SqliteConnection& connection, const InfoLayer& layer) {
  FeatureTable::Definition definition;
  FeatureTableRegistration& registration = definition.registration;
  registration.name = tableName(layer);
  registration.identifier = layer.project()->name + QLatin1Char('/') + layer.name + QStringLiteral(": texts");
  registration.geometryType = "POINT";
  registration.box = Box::inverted();
  const SProjection* projection = layer.projection();
  definition.spatialReference = [&connection, projection] {
    return projection != nullptr ? registerSpatialReference(connection, *projection) : -1;
  };
  definition.columns = kDefinition;
  return definition;
}

void bindText(Statement& statement, EText& text, const Bytes& geometry) {
  const TextVisual& look = text.look();
  int at = 1;
  statement.bind(at++, text.String().isNull() ? QStringLiteral("") : text.String());
  statement.bind(at++, static_cast<int>(text.Own()));
  statement.bind(at++, static_cast<int>(text.EntitieType()));
  statement.bind(at++, text.LayerName());
  statement.bind(at++, look.fontName);
  for (float size : {look.height, look.angle, look.thickness, look.space, look.expansion}) {
    statement.bind(at++, static_cast<double>(size));
  }
  for (short part : {look.color.red, look.color.green, look.color.blue, look.horizontalAlignment,
                     look.verticalAlignment}) {
    statement.bind(at++, static_cast<int>(part));
  }
  statement.bindBorrowedBlob(at, geometry.data(), geometry.size());
}

float single(const Statement& row, int column) {
  return static_cast<float>(row.real(column));
}
short small(const Statement& row, int column) {
  return static_cast<short>(row.integer(column));
}

EText* textFrom(const Statement& row) {
  auto* text = new EText();
  text->String(row.text(0));
  text->Own(small(row, 1));
  text->EntitieType(small(row, 2));
  text->LayerName(row.text(3).toLatin1().constData());
  TextVisual look;
  look.fontName = row.text(4);
  look.height = single(row, 5);
  look.angle = single(row, 6);
  look.thickness = single(row, 7);
  look.space = single(row, 8);
  look.expansion = single(row, 9);
  look.color = Color(small(row, 10), small(row, 11), small(row, 12));
  look.horizontalAlignment = small(row, 13);
  look.verticalAlignment = small(row, 14);
  text->look(look);
  std::size_t size = 0;
  const unsigned char* blob = row.blob(15, size);
  Point place = Point::unset();
  double z = 0.0;
  if (decodePoint(blob, size, place.x, place.y, z)) text->Position(place);
  text->id = static_cast<int>(row.integer(16));
  return text;
}

}  // namespace

TextStore::Table& TextStore::table(const InfoLayer& layer) {
  Table& table = tables_[layer.id];
  if (table.features == nullptr) {
    table.features =
        std::make_unique<FeatureTable>(context_.connection, definitionOf(context_.connection, layer));
  }
  return table;
}

bool TextStore::exists(const InfoLayer& layer) {
  return layers_.textVisual(layer) > 0 || context_.connection.tableExists(tableName(layer));
}

void TextStore::open(const InfoLayer& layer, Text& text) {
  visuals_.load(layers_.textVisual(layer), text.visual);
}

int TextStore::load(const InfoLayer& layer, EntitieList& list) {
  if (!context_.connection.tableExists(tableName(layer))) return 0;
  Statement all = context_.connection.prepare(std::string("SELECT ") + kColumns + ", fid FROM " +
                                              quotedName(tableName(layer)) + " ORDER BY fid");
  int count = 0;
  while (all.step()) {
    list.Append(textFrom(all));
    ++count;
  }
  return count;
}

int TextStore::store(const InfoLayer& layer, Text& text, EntitieList& list) {
  context_.connection.beginChange();
  text.visual.id = layers_.textVisual(layer);
  visuals_.save(text.visual);
  layers_.setTextVisual(layer, text.visual.id);
  if (list.Size() == 0) return 1;
  Table& stored = table(layer);
  stored.features->ensure();
  for (Entitie* entity : list) {
    if (auto* one = dynamic_cast<EText*>(entity)) write(stored, *one);
  }
  return 1;
}

void TextStore::write(Table& table, EText& text) const {
  const Point& place = text.Position();
  encodePoint(table.geometry, table.features->srsId(), place.x, place.y);
  const Box box(place.x, place.y, place.x, place.y);
  const bool isNew = text.id <= 0;
  if (isNew) text.id = static_cast<int>(table.features->newId());
  Statement& statement = isNew ? table.insert : table.update;
  if (!statement) {
    const std::string quoted = table.features->quoted();
    statement =
        context_.connection.prepare(isNew ? "INSERT INTO " + quoted + " (" + kColumns +
                                                ", fid) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                                                "?, ?)"
                                          : "UPDATE " + quoted + " SET " + kAssignments + " WHERE fid = ?");
  }
  // The index learns of a row before the row is stored: its triggers would enter it a second time.
  if (isNew) {
    table.features->added(text.id, box);
  } else {
    table.features->moved(text.id, box);
  }
  bindText(statement, text, table.geometry);
  statement.bind(kIdParameter, text.id);
  statement.run();
}

long long TextStore::count(const InfoLayer& layer) {
  if (!context_.connection.tableExists(tableName(layer))) return 0;
  return context_.connection.scalar("SELECT count(*) FROM " + quotedName(tableName(layer)));
}

void TextStore::finish() {
  for (auto& [layer, table] : tables_) {
    if (table.features != nullptr) table.features->finish();
  }
}

void TextStore::releaseCursors() {
  for (auto& [layer, table] : tables_) {
    if (table.features != nullptr) table.features->releaseCursors();
  }
}

void TextStore::forget() {
  tables_.clear();
}

}  // namespace kaldex
