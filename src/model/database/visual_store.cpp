#include "model/database/visual_store.h"

#include "model/database/catalogue_query.h"
#include "model/database/geopackage_schema.h"

namespace kaldex {

namespace {

void bindColor(CatalogueQuery& query, const Color& color) {
  query.with(color.red).with(color.green).with(color.blue);
}

void bindVisual(CatalogueQuery& query, const GeneralVisual& visual) {
  bindColor(query, visual.point.color);
  query.with(visual.point.symbol).with(double{visual.point.size});
  bindColor(query, visual.line.color);
  query.with(visual.line.style).with(double{visual.line.width});
  bindColor(query, visual.polygon.color);
  query.with(visual.polygon.style);
  const TextVisual& text = visual.text;
  bindColor(query, text.color);
  query.with(text.fontName).with(double{text.height}).with(double{text.angle}).with(double{text.thickness});
  query.with(double{text.space}).with(double{text.expansion});
  query.with(text.horizontalAlignment).with(text.verticalAlignment);
}

// Reads columns one after the other, in the order of bindVisual.
class VisualReader {
 public:
  explicit VisualReader(const CatalogueQuery& row) : row_(row) {}

  void read(GeneralVisual& visual) {
    read(visual.point.color);
    visual.point.symbol = row_.small(column_++);
    visual.point.size = row_.single(column_++);
    read(visual.line.color);
    visual.line.style = row_.small(column_++);
    visual.line.width = row_.single(column_++);
    read(visual.polygon.color);
    visual.polygon.style = row_.small(column_++);
    read(visual.text);
  }

 private:
  void read(Color& color) {
    const short red = row_.small(column_++);
    const short green = row_.small(column_++);
    color = Color(red, green, row_.small(column_++));
  }

  void read(TextVisual& text) {
    read(text.color);
    text.fontName = row_.text(column_++);
    text.height = row_.single(column_++);
    text.angle = row_.single(column_++);
    text.thickness = row_.single(column_++);
    text.space = row_.single(column_++);
    text.expansion = row_.single(column_++);
    text.horizontalAlignment = row_.small(column_++);
    text.verticalAlignment = row_.small(column_++);
  }

  const CatalogueQuery& row_;
  int column_ = 0;
};

const char* const kColumns =
    "point_red, point_green, point_blue, point_symbol, point_size, line_red, line_green, line_blue, "
    "line_style, "
    "line_width, polygon_red, polygon_green, polygon_blue, polygon_style, text_red, text_green, text_blue, "
    "text_font, text_height, text_angle, text_thickness, text_space, text_expansion, text_horizontal, "
    "text_vertical";
const char* const kParameters = "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?";

}  // namespace

void VisualStore::createTable() {
  context_.connection.execSchema(
      "CREATE TABLE kdx_visuals (id INTEGER PRIMARY KEY, point_red INTEGER, point_green INTEGER, point_blue "
      "INTEGER, "
      "point_symbol INTEGER, point_size REAL, line_red INTEGER, line_green INTEGER, line_blue INTEGER, "
      "line_style "
      "INTEGER, line_width REAL, polygon_red INTEGER, polygon_green INTEGER, polygon_blue INTEGER, "
      "polygon_style "
      "INTEGER, text_red INTEGER, text_green INTEGER, text_blue INTEGER, text_font TEXT, text_height REAL, "
      "text_angle "
      "REAL, text_thickness REAL, text_space REAL, text_expansion REAL, text_horizontal INTEGER, "
      "text_vertical "
      "INTEGER)");
  registerAttributeTable(context_.connection, "kdx_visuals", QStringLiteral("kdx_visuals"),
                         QStringLiteral("Looks of classes, objects and texts"));
}

bool VisualStore::load(int id, GeneralVisual& visual) const {
  CatalogueQuery find(context_.dataBase,
                      QStringLiteral("SELECT %1 FROM kdx_visuals WHERE id = ?").arg(kColumns));
  find.with(id).run();
  if (!find.next()) return false;
  VisualReader(find).read(visual);
  visual.id = id;
  return true;
}

void VisualStore::save(GeneralVisual& visual) {
  context_.connection.beginChange();
  if (visual.id <= 0)
    visual.id = static_cast<int>(context_.connection.scalar("SELECT max(id) FROM kdx_visuals")) + 1;
  CatalogueQuery store(context_.dataBase,
                       QStringLiteral("INSERT OR REPLACE INTO kdx_visuals (%1, id) VALUES (%2, ?)")
                           .arg(QLatin1String(kColumns), QLatin1String(kParameters)));
  bindVisual(store, visual);
  store.with(visual.id).run();
}

}  // namespace kaldex
