#include <cmath>
#include <vector>

#include "base/byte_order.h"
#include "kaldex/legacy.h"
#include "lib/legacy/polygon_ring.h"
#include "lib/legacy/rectangle_index.h"
#include "support/folder_fixture.h"

namespace kaldex::test {

namespace {

using Pairs = std::vector<float>;  // x, y, x, y, ...

template <class Value>
void put(QByteArray& bytes, int at, Value value) {
  storeLittle<Value>(bytes.data() + at, value);
}

/// Makes the files of a plane of the older system, name.li1 to name.po2.
class LegacyFiles : public FolderFixture {
 protected:
  void addLine(std::uint16_t id, const Pairs& points) {
    QByteArray record(100, 0);
    const auto count = static_cast<std::uint16_t>(points.size() / 2);
    put<std::uint16_t>(record, 0, id);
    put<std::uint16_t>(record, 2, count);
    put<float>(record, 26, points[0]);
    put<float>(record, 30, points[1]);
    put<float>(record, 34, points[points.size() - 2]);
    put<float>(record, 38, points.back());
    put<std::uint32_t>(record, 96, static_cast<std::uint32_t>(coordinates_.size()));
    lines_ += record;
    for (const std::size_t axis : {0u, 1u}) {
      for (std::size_t i = axis; i < points.size(); i += 2) {
        coordinates_ += QByteArray(4, 0);
        put<float>(coordinates_, coordinates_.size() - 4, points[i]);
      }
    }
  }

  void addPolygon(std::uint16_t id, const std::vector<std::int16_t>& lines, const Pairs& box,
                  std::int16_t geoClass = 0, const std::vector<std::int16_t>& children = {},
                  char flag = '0') {
    QByteArray record(116, 0);
    put<std::uint16_t>(record, 46, static_cast<std::uint16_t>(lines.size()));
    for (int i = 0; i < 4; ++i) put<float>(record, 48 + 4 * i, box[static_cast<std::size_t>(i)]);
    put<std::int16_t>(record, 64, geoClass);
    put<std::uint16_t>(record, 66, id);
    put<std::uint32_t>(record, 68, static_cast<std::uint32_t>(lists_.size()));
    record[72] = flag;
    put<std::int16_t>(record, 74, static_cast<std::int16_t>(children.size()));
    addList(lines);
    put<float>(record, 38, static_cast<float>(lists_.size()));
    if (children.size() > 20) {
      addList(children);
    } else {
      for (std::size_t i = 0; i < children.size(); ++i)
        put<std::int16_t>(record, 76 + 2 * static_cast<int>(i), children[i]);
    }
    polygons_ += record;
    ++count_;
  }

  void write(std::int16_t highestDirect = 0, char mode = '0', std::int16_t limit = 100) {
    QByteArray lineHead(50, 0), polygonHead(32, 0);
    put<std::int16_t>(lineHead, 0, highestDirect);
    put<std::int16_t>(lineHead, 2, limit);
    lineHead[4] = mode;
    put<std::int16_t>(polygonHead, 0, count_);
    put<std::int16_t>(polygonHead, 6, limit);
    write(".li1", lineHead + lines_);
    write(".li2", coordinates_);
    write(".po1", polygonHead + polygons_);
    write(".po2", lists_);
  }
  void write(const char* ending, const QByteArray& content) {
    FolderFixture::write(QString("plano") + ending, content);
  }
  QByteArray name() const { return QFile::encodeName(path("plano")); }

  int centroids(SExtLabelPointList& list, double scale = 1, double dx = 0, double dy = 0) {
    return carrega_centroides(name().constData(), list, scale, dx, dy);
  }

  QByteArray lines_, coordinates_, polygons_, lists_;
  LineFiles files;
  LineRecord record;
  std::vector<float> x, y;
  std::int16_t count_ = 0;

 private:
  void addList(const std::vector<std::int16_t>& list) {
    for (const std::int16_t value : list) {
      lists_ += QByteArray(2, 0);
      put<std::int16_t>(lists_, lists_.size() - 2, value);
    }
  }
};

const Pairs kSquare = {0, 0, 100, 0, 100, 100, 0, 100, 0, 0};

TEST_F(LegacyFiles, LinesAreSoughtBackwards) {
  // The line 3 has gone, so the later ones stand before their places.
  for (const std::uint16_t id : {1, 2, 4, 5}) addLine(id, {float(id), 0, float(id), 1});
  write(4, '1');
  ASSERT_EQ(linha_abre_arq(files, name().constData()), openDone);
  for (const int id : {1, 2, 4, 5}) {
    EXPECT_EQ(linha_le(files, record, id, x, y), 1) << id;
    EXPECT_EQ(x, (std::vector<float>{float(id), float(id)}));
    EXPECT_EQ(y, (std::vector<float>{0, 1}));
  }
  for (const int id : {-1, 0, 3, 6, 100, 32767}) EXPECT_EQ(linha_le(files, record, id, x, y), 0) << id;
  long long total = 0;
  const std::int16_t ids[] = {1, 5, 3};
  EXPECT_EQ(aloca_pt(files, record, ids, 2, total), 1);
  EXPECT_EQ(total, 4);
  EXPECT_EQ(aloca_pt(files, record, ids, 3, total), 0);

  put<std::uint16_t>(lines_, 100, 65534);  // the end mark, for a read alone
  write();
  ASSERT_EQ(linha_abre_arq(files, name().constData()), openDone);
  EXPECT_EQ(linha_le(files, record, 2, x, y), 0);
  EXPECT_EQ(linha_le(files, record, 1, x, y), 1);
}

TEST_F(LegacyFiles, DamagedFiles) {
  LineFiles lines;
  PolygonFiles polygons;
  SExtLabelPointList list;
  EXPECT_EQ(linha_abre_arq(lines, name().constData()), openMissing);
  EXPECT_EQ(poli_abre_arq(polygons, name().constData()), openMissing);
  EXPECT_EQ(centroids(list), 0);
  write();
  EXPECT_EQ(centroids(list), 1) << "no polygons";
  write(".po1", "short");
  EXPECT_EQ(poli_abre_arq(polygons, name().constData()), openShort);
  EXPECT_EQ(centroids(list), 0);

  addLine(1, kSquare);
  addPolygon(1, {1}, {0, 100, 0, 100});
  write();
  write(".li2", coordinates_.left(30));
  EXPECT_EQ(centroids(list), 1);
  write(".li2", coordinates_);
  write(".po2", lists_.left(1));
  EXPECT_EQ(centroids(list), 1);
  EXPECT_EQ(list.Size(), 0);

  ASSERT_EQ(linha_abre_arq(lines, name().constData()), openDone);
  put<std::uint32_t>(lines_, 96, 0xFFFFFFF0u);
  write();
  ASSERT_EQ(linha_abre_arq(lines, name().constData()), openDone);
  EXPECT_EQ(linha_le(lines, record, 1, x, y), 0);

  PolygonRecord polygon;
  polygon.children = 30;
  std::vector<std::int16_t> children;
  ASSERT_EQ(poli_abre_arq(polygons, name().constData()), openDone);
  for (const float offset : {-1.0f, 1e30f, std::nanf("")}) {
    polygon.childrenOffset = offset;
    EXPECT_EQ(poli_le_filhos(polygons, polygon, children), 0);
  }
  polygon.children = -5;
  EXPECT_EQ(poli_le_filhos(polygons, polygon, children), 1);
}

TEST_F(LegacyFiles, ChildrenHereOrInTheList) {
  std::vector<std::int16_t> few, many, found;
  for (std::int16_t i = 2; i <= 60; ++i) (i <= 21 ? few : many).push_back(i);
  addPolygon(1, {}, {0, 1, 0, 1}, 0, few);
  addPolygon(2, {}, {0, 1, 0, 1}, 0, many);
  write();
  PolygonFiles files;
  ASSERT_EQ(poli_abre_arq(files, name().constData()), openDone);
  PolygonRecord record;
  std::vector<std::int16_t> lines;
  ASSERT_EQ(poli_le(files, record, 1, lines), 1);
  EXPECT_EQ(poli_le_filhos(files, record, found), 1);
  EXPECT_EQ(found, few);
  ASSERT_EQ(poli_le(files, record, 2, lines), 1);
  EXPECT_EQ(poli_le_filhos(files, record, found), 1);
  EXPECT_EQ(found, many);
}

TEST_F(LegacyFiles, RingsOfLines) {
  addLine(1, {0, 0, 5, 0, 10, 0});
  addLine(2, {10, 10, 10, 0});
  addLine(3, {10, 10, 0, 10, 0, 0});
  addLine(4, Pairs(2 * 1005, 1.0f));
  write();
  ASSERT_EQ(linha_abre_arq(files, name().constData()), openDone);
  const auto ring = [&](const std::vector<std::int16_t>& ids) {
    const int result = monta_poligono(files, record, static_cast<int>(ids.size()), x, y, ids.data());
    QString text = QString::number(result) + ":";
    for (std::size_t i = 0; i < x.size(); ++i) text += QString(" %1,%2").arg(x[i]).arg(y[i]);
    return text.toStdString();
  };
  EXPECT_EQ(ring({1, 2, 3}), "1: 0,0 5,0 10,0 10,10 0,10 0,0");
  EXPECT_EQ(ring({2, 1, 3}), "1: 10,10 10,0 5,0 0,0 0,10 10,10");
  EXPECT_EQ(ring({3, 2, 1}), "1: 0,0 0,10 10,10 10,0 5,0 0,0");
  EXPECT_EQ(ring({2}), "1: 10,0 10,10") << "a single line goes backwards";
  EXPECT_EQ(ring({}), "1:");
  EXPECT_EQ(ring({9}), "0:");
  EXPECT_EQ(ring({4}), "0:") << "too long";
}

TEST(LegacyRing, Crossings) {
  const struct {
    const char* what;
    double y;
    Pairs ring;
    std::vector<double> crossings;
  } cases[] = {
      {"through the middle", 5, {0, 0, 10, 0, 10, 10, 0, 10, 0, 0}, {0, 10}},
      {"slanted edges", 5, {0, 0, 20, 0, 10, 10, 0, 0}, {5, 15}},
      {"touched by a tip", 5, {0, 0, 10, 0, 10, 10, 5, 5, 0, 10, 0, 0}, {0, 10}},
      {"through two vertices", 5, {5, 0, 10, 5, 5, 10, 0, 5, 5, 0}, {0, 10}},
      {"an edge where it passes", 5, {0, 0, 10, 0, 10, 5, 20, 5, 20, 10, 0, 10, 0, 0}, {0, 10}},
      {"an edge where it doesn't", 5, {0, 0, 10, 0, 10, 5, 20, 5, 20, 0, 30, 0, 30, 9, 0, 9, 0, 0}, {0, 30}},
      {"a run of edges", 5, {0, 0, 10, 0, 10, 5, 15, 5, 20, 5, 20, 10, 0, 10, 0, 0}, {0, 10}},
      {"begun within a run", 5, {15, 5, 20, 5, 20, 10, 0, 10, 0, 0, 10, 0, 10, 5, 15, 5}, {0, 10}},
      {"all on the line", 5, {0, 5, 10, 5, 20, 5, 0, 5}, {}},
      {"no ring", 5, {0, 0, 10, 10}, {}},
      {"nothing", 5, {}, {}},
  };
  for (const auto& one : cases) {
    std::vector<float> x, y;
    for (std::size_t i = 0; i < one.ring.size(); i += 2) {
      x.push_back(one.ring[i]);
      y.push_back(one.ring[i + 1]);
    }
    std::vector<double> crossings;
    EXPECT_EQ(corta_poli(one.y, crossings, static_cast<int>(x.size()), x.data(), y.data()), 1);
    EXPECT_EQ(crossings, one.crossings) << one.what;
  }
}

TEST_F(LegacyFiles, RectanglesInSixteenBits) {
  addLine(1, kSquare);
  addPolygon(1, {1}, {0, 100, 0, 50});
  addPolygon(2, {9}, {25, 75, 25, 75});  // its line is missing
  write();
  LineFiles lines;
  PolygonFiles polygons;
  ASSERT_EQ(linha_abre_arq(lines, name().constData()), openDone);
  ASSERT_EQ(poli_abre_arq(polygons, name().constData()), openDone);
  ASSERT_EQ(RET_cria(polygons, lines, 0, 100, 0, 100), 1);
  int points = 0;
  double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
  EXPECT_EQ(RET_get(1, points, x1, x2, y1, y2), 1);
  EXPECT_EQ(points, 5);
  EXPECT_EQ(x2, 100.0);
  EXPECT_EQ(y2, 50.0);
  EXPECT_EQ(RET_get(2, points, x1, x2, y1, y2), 1);
  EXPECT_EQ(points, 0);
  EXPECT_EQ(x1, 25.0);
  for (const int id : {0, 3}) {
    EXPECT_EQ(RET_get(id, points, x1, x2, y1, y2), 0);
    EXPECT_EQ(x1, 1e14);
    EXPECT_EQ(y2, -1e14);
  }
  RET_destroi();
  EXPECT_EQ(RET_get(1, points, x1, x2, y1, y2), 0);
}

// All that can be read before something is wrong has its label point.
TEST_F(LegacyFiles, CentroidsUpToTheDamage) {
  addLine(1, kSquare);
  addPolygon(1, {1}, {0, 100, 0, 100}, 7);
  addPolygon(2, {}, {0, 100, 0, 100}, 7);      // empty: the next one is looked at
  addPolygon(3, {1, 9}, {0, 100, 0, 100}, 7);  // so is it after one of whose lines is missing
  addPolygon(4, {1}, {0, 100, 0, 100}, 8);
  const auto found = [this] {
    SExtLabelPointList list;
    EXPECT_EQ(centroids(list), 1);
    return list.Size();
  };
  write();
  EXPECT_EQ(found(), 2);
  count_ = 32767;
  write();
  EXPECT_EQ(found(), 2) << "more than there are";
  count_ = -1;
  write();
  EXPECT_EQ(found(), 0);
  count_ = 4;
  for (const int limit : {-1, 0, 1}) {
    write(0, '0', static_cast<std::int16_t>(limit));
    EXPECT_EQ(found(), 0) << limit;
  }
  for (const int highest : {-5, 0, 32767}) {
    write(static_cast<std::int16_t>(highest), '1');
    EXPECT_EQ(found(), highest > 0 ? 2 : 0) << highest;
  }
  polygons_.chop(1);
  write();
  EXPECT_EQ(found(), 1) << "the last record is cut";
  put<std::uint32_t>(polygons_, 68, 0xFFFFFFFFu);
  write();
  EXPECT_EQ(found(), 0) << "lines of the first one lie nowhere";
}

TEST_F(LegacyFiles, WildChildren) {
  addLine(1, kSquare);
  addLine(2, {60, 30, 70, 30, 70, 70, 60, 70, 60, 30});
  addPolygon(1, {1}, {0, 100, 0, 100}, 7, {-1, 0, 1, 9, 32767, -32768});
  addPolygon(2, {1}, {0, 100, 0, 100}, 8, std::vector<std::int16_t>(33, 3));
  addPolygon(3, {2}, {60, 70, 30, 70}, 9);
  write();
  SExtLabelPointList list;
  EXPECT_EQ(centroids(list), 1);
  ASSERT_EQ(list.Size(), 3);
  EXPECT_EQ(list.at(0)->Coordinate()->x, 100) << "its own child";
  EXPECT_NEAR(list.at(1)->Coordinate()->x, 85, 1e-3);

  // More children than a nesting of polygons can have end the reading.
  addPolygon(4, {1}, {0, 100, 0, 100}, 8, std::vector<std::int16_t>(3000, 3));
  write();
  SExtLabelPointList fewer;
  EXPECT_EQ(centroids(fewer), 1);
  EXPECT_EQ(fewer.Size(), 3);
}

TEST_F(LegacyFiles, WildCoordinates) {
  const float inf = HUGE_VALF;
  // A comb with many crossings, of which some are no numbers: they would upset what puts them in order.
  Pairs comb;
  for (int i = 0; i < 500; ++i) {
    const float x = i % 7 == 3 ? std::nanf("") : static_cast<float>((i * 37) % 500);
    for (const float value : {x, i % 2 == 0 ? 0.0f : 100.0f}) comb.push_back(value);
  }
  comb.insert(comb.end(), {comb[0], comb[1]});
  addLine(1, comb);
  addLine(2, {-inf, 0, inf, 0, inf, 100, -inf, 100, -inf, 0});
  addLine(3, kSquare);
  addPolygon(1, {1}, {0, 500, 0, 100}, 1);
  addPolygon(2, {2}, {0, 500, 0, 100}, 2);
  addPolygon(3, {3}, {0, 500, std::nanf(""), 100}, 3);
  addPolygon(4, {3}, {0, 500, 0, 100}, 4);
  write();
  SExtLabelPointList list;
  EXPECT_EQ(centroids(list), 1);
  for (const SExtLabelPoint* label : list) {
    EXPECT_TRUE(std::isfinite(label->Coordinate()->x) && std::isfinite(label->Coordinate()->y))
        << label->Iclass;
  }
  ASSERT_GE(list.Size(), 1);
  EXPECT_EQ(list.at(list.Size() - 1)->Iclass, 4);

  // Boxes from one end of all numbers to the other: nothing is in place then, but nothing breaks either.
  addPolygon(5, {3}, {-inf, inf, -inf, inf}, 5);
  write();
  SExtLabelPointList none;
  EXPECT_EQ(centroids(none), 1);
  EXPECT_EQ(none.Size(), 0);
}

// A file of some kilobytes can name one line so often that the ring would fill the memory.
TEST_F(LegacyFiles, RingsAreBounded) {
  Pairs there = kSquare;
  while (there.size() < 2 * 1004) there.insert(there.end(), {0, 0});
  addLine(1, there);
  addPolygon(1, std::vector<std::int16_t>(65, 1), {0, 100, 0, 100}, 1);
  addPolygon(2, std::vector<std::int16_t>(66, 1), {0, 100, 0, 100}, 2);
  addPolygon(3, std::vector<std::int16_t>(65535, 1), {0, 100, 0, 100}, 3);
  addLine(2, Pairs(2 * 65535, 1.0f));
  addPolygon(4, std::vector<std::int16_t>(65535, 2), {0, 100, 0, 100}, 4);
  write();
  SExtLabelPointList list;
  EXPECT_EQ(centroids(list), 1);
  ASSERT_EQ(list.Size(), 1);
  EXPECT_EQ(list.at(0)->Iclass, 1);
  LineFiles lines;
  long long total = 0;
  ASSERT_EQ(linha_abre_arq(lines, name().constData()), openDone);
  EXPECT_EQ(aloca_pt(lines, record, std::vector<std::int16_t>(65535, 2).data(), 65535, total), 1);
  EXPECT_EQ(total, 65535LL * 65535);
}

TEST_F(LegacyFiles, CentroidsAvoidHoles) {
  addLine(1, kSquare);
  addLine(2, {30, 30, 70, 30, 70, 70, 30, 70, 30, 30});
  addLine(3, {200, 0, 300, 0, 250, 0, 200, 0});  // flat
  addPolygon(1, {1}, {0, 100, 0, 100}, 7, {2});
  addPolygon(2, {2}, {30, 70, 30, 70}, 8);
  addPolygon(3, {3}, {200, 300, 0, 0}, 9);
  addPolygon(4, {2}, {30, 70, 30, 70}, -3);
  addPolygon(5, {1}, {0, 100, 0, 100}, 1, {}, '1');  // the end
  addPolygon(6, {1}, {0, 100, 0, 100}, 1);
  write();
  SExtLabelPointList list;
  EXPECT_EQ(centroids(list, 10, 5, 1000), 1);
  ASSERT_EQ(list.Size(), 3);
  EXPECT_EQ(list.Count(), 3) << "serial numbers, without a gap for the flat one";
  const struct {
    double x;
    short geoClass;
  } expected[] = {{85, 7}, {50, 8}, {50, -3}};
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(list.at(i)->Coordinate()->x, (expected[i].x + 5) * 10, 0.05) << i;
    EXPECT_NEAR(list.at(i)->Coordinate()->y, 10500, 0.05) << i;
    EXPECT_EQ(list.at(i)->Iclass, expected[i].geoClass);
    EXPECT_EQ(list.at(i)->Nodes, i);
  }
}

}  // namespace

}  // namespace kaldex::test
