#ifndef KALDEX_TESTS_SHAPEFILE_EXPORT_FIXTURE_H
#define KALDEX_TESTS_SHAPEFILE_EXPORT_FIXTURE_H

#include <shapefil.h>

#include <string>

#include "kaldex/job_report.h"
#include "kaldex/shapefile.h"
#include "shapefile/byte_maker.h"
#include "support/model_fixture.h"

namespace kaldex::test {

/// A square from (x, y) with sides of `side`, closed; counter-clockwise unless told.
inline std::vector<double> square(double x, double y, double side, bool clockwise = false) {
  if (clockwise) return {x, y, x, y + side, x + side, y + side, x + side, y, x, y};
  return {x, y, x + side, y, x + side, y + side, x, y + side, x, y};
}

/// Content bytes of an arc or polygon record.
inline QByteArray arcContent(std::int32_t type, const std::vector<double>& box,
                             const std::vector<std::int32_t>& starts, const std::vector<double>& xy) {
  ByteMaker maker;
  maker.little({type}).reals(box).little(
      {static_cast<std::int32_t>(starts.size()), static_cast<std::int32_t>(xy.size() / 2)});
  for (std::int32_t start : starts) maker.little({start});
  return maker.reals(xy);
}

/// The .shp and .shx files that hold these contents; a content that is null leaves a gap in the record
/// numbers.
struct ExpectedShapes {
  ExpectedShapes(std::int32_t type, const std::vector<double>& box, const std::vector<QByteArray>& contents) {
    QByteArray body;
    ByteMaker entries;
    std::int32_t number = 0;
    std::int32_t written = 0;
    for (const QByteArray& content : contents) {
      ++number;
      if (content.isNull()) continue;
      ++written;
      const std::int32_t words = content.size() / 2;
      entries.big({50 + body.size() / 2, words});
      body += QByteArray(ByteMaker().big({number, words})) + content;
    }
    shp = QByteArray(ByteMaker().header(50 + body.size() / 2, type, box)) + body;
    shx = QByteArray(ByteMaker().header(50 + 4 * written, type, box)) + QByteArray(entries);
  }

  QByteArray shp;
  QByteArray shx;
};

/// Exports into the fixture's folder under the name "e".
class ExportFixture : public ModelFixture {
 protected:
  const Box box_{0, 0, 1000, 2000};
  const std::vector<double> boxValues_{0, 0, 1000, 2000};

  Vector* vector(short model, short kind = vectorLines, Project* of = nullptr) {
    layer_ = layer(model, "camada", box_, of);
    return layer_->vector(kind, true);
  }
  std::string base() const { return QFile::encodeName(path("e")).toStdString(); }

  /// Column names and rows as "a|b", one a line, by the table library.
  QString tableText() const {
    const DBFHandle table = DBFOpen((base() + ".dbf").c_str(), "rb");
    if (table == nullptr) return "no table";
    QStringList lines;
    QStringList cells;
    char name[12];
    const int columns = DBFGetFieldCount(table);
    for (int i = 0; i < columns; ++i) {
      int width = 0;
      int decimals = 0;
      DBFGetFieldInfo(table, i, name, &width, &decimals);
      cells << QStringLiteral("%1 %2(%3,%4)")
                   .arg(QLatin1String(name), QString(QLatin1Char(DBFGetNativeFieldType(table, i))))
                   .arg(width)
                   .arg(decimals);
    }
    lines << cells.join("|");
    for (int row = 0; row < DBFGetRecordCount(table); ++row) {
      cells.clear();
      for (int i = 0; i < columns; ++i) cells << QString::fromLatin1(DBFReadStringAttribute(table, row, i));
      lines << cells.join("|");
    }
    DBFClose(table);
    return lines.join("\n");
  }

  void expectShapes(const ExpectedShapes& expected) const {
    EXPECT_EQ(read("e.shp").toHex().toStdString(), expected.shp.toHex().toStdString());
    EXPECT_EQ(read("e.shx").toHex().toStdString(), expected.shx.toHex().toStdString());
  }

  void addClass(Category& category, int id, const QString& name) {
    category.classes.Append(new GeoClass(id, name, category.model, category.name, 0, nullptr));
  }

  InfoLayer* layer_ = nullptr;
  ShapeFile file;
};

}  // namespace kaldex::test

#endif
