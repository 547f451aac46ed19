#ifndef KALDEX_TESTS_SHAPEFILE_EXPORT_FIXTURE_H
#define KALDEX_TESTS_SHAPEFILE_EXPORT_FIXTURE_H

#include <shapefil.h>

#include <string>

#include "kaldex/shapefile.h"
#include "shapefile/byte_maker.h"
#include "support/handler_fixture.h"

namespace kaldex::test {

/// Exports into the fixture's folder under the name "e".
class ExportFixture : public HandlerFixture {
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

  InfoLayer* layer_ = nullptr;
  ShapeFile file;
};

}  // namespace kaldex::test

#endif
