#ifndef KALDEX_TESTS_MAP_FIXTURE_H
#define KALDEX_TESTS_MAP_FIXTURE_H

#include <algorithm>
#include <utility>

#include "ascii/ascii_fixture.h"
#include "kaldex/model/recordset.h"

namespace kaldex::test {

/// Cells in rows that share their borders, and a pond in some of them. Corners are whole millimetres, so that
/// a plane file holds them as they are. Lines and polygons are numbered as they are made, from 1.
struct CellMap {
  static constexpr int kCellsOfAPond = 50;
  static constexpr long long kCell = 400000;  ///< millimetres

  int columns;
  int rows;

  int cells() const { return columns * rows; }
  int ponds() const { return (cells() + kCellsOfAPond - 1) / kCellsOfAPond; }
  int polygons() const { return cells() + ponds(); }
  int borders() const { return columns * (rows + 1) + rows * (columns + 1); }
  int horizontal(int column, int row) const { return 1 + row * columns + column; }
  int vertical(int column, int row) const { return 1 + columns * (rows + 1) + row * (columns + 1) + column; }
  int ring(int pond) const { return 1 + borders() + pond; }

  static void append(std::vector<double>& xy, long long x, long long y) {
    xy.push_back(static_cast<double>(400000000 + x) / 1000);
    xy.push_back(static_cast<double>(7300000000 + y) / 1000);
  }
  static void appendCorner(std::vector<double>& xy, int column, int row) {
    append(xy, column * kCell + (column * 7919 + row * 4729) % 20011,
           row * kCell + (column * 3571 + row * 6113) % 20011);
  }
  static std::vector<double> border(int column, int row, int toColumn, int toRow) {
    std::vector<double> xy;
    appendCorner(xy, column, row);
    append(xy, (column + toColumn) * kCell / 2 + 3217, (row + toRow) * kCell / 2 + 5119);
    appendCorner(xy, toColumn, toRow);
    return xy;
  }
  std::vector<double> pond(int number) const {
    const long long x = number * kCellsOfAPond % columns * kCell + 60123;
    const long long y = number * kCellsOfAPond / columns * kCell + 60007;
    std::vector<double> xy;
    for (const auto& [dx, dy] : {std::pair(0, 0), {90000, 1000}, {80000, 95000}, {0, 0}}) {
      append(xy, x + dx, y + dy);
    }
    return xy;
  }
};

/// A map is made in one database, goes out, and comes back into another one that is empty but for the project
/// and the layer. All questions are agreed to.
class MapFixture : public AsciiFixture {
 protected:
  MapFixture() { messages.answer(QString(), true); }

  void openEmpty(const QString& name) {
    other_ = DataBase::Create(path(name + ".gpkg"));
    ASSERT_NE(other_, nullptr);
    otherProject_ = other_->createProject(project->name, *utm());
  }
  /// Go on in the other database.
  void cross() {
    std::swap(dataBase, other_);
    std::swap(project, otherProject_);
  }
  /// A layer with room for the cells and what lies around them.
  InfoLayer* mapLayer(short model) { return layer(model, "Mapa", {380000, 7290000, 480000, 7400000}); }
  static void makeBorders(Vector& vector, const CellMap& map) {
    for (int row = 0; row <= map.rows; ++row) {
      for (int column = 0; column < map.columns; ++column) {
        delete insertLine(vector, CellMap::border(column, row, column + 1, row));
      }
    }
    for (int row = 0; row < map.rows; ++row) {
      for (int column = 0; column <= map.columns; ++column) {
        delete insertLine(vector, CellMap::border(column, row, column, row + 1));
      }
    }
    for (int pond = 0; pond < map.ponds(); ++pond) delete insertLine(vector, map.pond(pond));
  }
  /// Lines that bound nothing, west of the cells.
  static void makeFreeLines(Vector& vector, int count, int classId) {
    for (int i = 0; i < count; ++i) {
      std::vector<double> xy;
      for (const long long step : {0, 70, 140}) {
        CellMap::append(xy, -9000000 + 1000 * step, 100000 * i + 13 * step);
      }
      delete insertLine(vector, xy, linePlain, classId);
    }
  }
  /// The file has no topology: whoever imports lines makes the polygons anew, as here, from the lines in the
  /// order of the file.
  static void makePolygons(Vector& vector, const CellMap& map) {
    for (int cell = 0; cell < map.cells(); ++cell) {
      const int column = cell % map.columns;
      const int row = cell / map.columns;
      makePolygon(vector, {map.horizontal(column, row), map.vertical(column + 1, row),
                           map.horizontal(column, row + 1), map.vertical(column, row)});
    }
    for (int pond = 0; pond < map.ponds(); ++pond) {
      const std::unique_ptr<SPolygon> son(makePolygon(vector, {map.ring(pond)}, false));
      const std::unique_ptr<SPolygon> father(vector.GetPolygon(1 + pond * CellMap::kCellsOfAPond));
      ASSERT_EQ(father->AppendSon(son.get(), 1), 1);
      son->changed = father->changed = stateChanged;
    }
  }
  static SPolygon* makePolygon(Vector& vector, const std::vector<int>& lines, bool giveBack = true) {
    auto polygon = std::make_unique<SPolygon>();
    for (const int id : lines) {
      const std::unique_ptr<Line> line(vector.GetLine(id));
      EXPECT_EQ(polygon->AppendLine(line.get()), 1);
    }
    polygon->UpdateArea();
    polygon->UpdatePerimeter();
    EXPECT_NE(vector.Insert(*polygon), 0);
    for (const int id : lines) {
      const std::unique_ptr<Line> line(vector.GetLine(id));
      (line->leftPolygon > 0 ? line->rightPolygon : line->leftPolygon) = polygon->id;
      line->state = stateChanged;
    }
    SPolygon* const made = polygon.release();
    if (!giveBack) return made;
    delete made;
    return nullptr;
  }

  /// "class father" of each polygon, and its area and perimeter apart.
  static QStringList polygonsOf(InfoLayer& layer, std::vector<double>& measures) {
    QStringList list;
    Vector& vector = *layer.vector(vectorLines);
    for (SPolygon* polygon = vector.FirstPolygon(); polygon != nullptr; polygon = vector.NextPolygon()) {
      const GeoClass* const one = layer.category()->classes.SelectFromIndex(polygon->classId);
      list << (one != nullptr ? one->name : "-") + QString(" %1").arg(polygon->parentId);
      measures.insert(measures.end(), {polygon->area, polygon->perimeter});
      polygon->Free();
    }
    return list;
  }
  static void expectNear(const std::vector<double>& one, const std::vector<double>& other, double part) {
    ASSERT_EQ(one.size(), other.size());
    for (std::size_t i = 0; i < one.size(); ++i) ASSERT_NEAR(one[i], other[i], part * one[i]) << i;
  }

 private:
  std::unique_ptr<DataBase> other_;
  Project* otherProject_ = nullptr;
};

}  // namespace kaldex::test

#endif
