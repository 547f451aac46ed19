#include "kaldex/model/tin.h"

#include <map>

#include "support/model_fixture.h"

namespace kaldex::test {

namespace {

class TinTest : public ModelFixture {
 protected:
  InfoLayer* surface(int count) {
    InfoLayer* const made = layer(DIGITALMODEL, QString("S%1").arg(count));
    Vector& samples = *made->vector(vectorSamples, true);
    unsigned seed = 7;
    for (int i = 0; i < count; ++i) {
      seed = seed * 1103515245u + 12345u;
      const double x = (seed >> 8) % 10000;
      seed = seed * 1103515245u + 12345u;
      Point3d point(x, (seed >> 8) % 10000, static_cast<float>(i));
      EXPECT_NE(samples.Insert(point, 0), 0);
    }
    return made;
  }
  static Tin& tinOf(InfoLayer* of) { return *static_cast<Tin*>(of->vector(vectorTin, true)); }

  static double orientation(const TinNode& a, const TinNode& b, const TinNode& c) {
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
  }
  /// Above 0 when d lies in the circle through the counter-clockwise a, b, c.
  static double inCircle(const TinNode& a, const TinNode& b, const TinNode& c, const TinNode& d) {
    const double ax = a.x - d.x, ay = a.y - d.y, bx = b.x - d.x, by = b.y - d.y, cx = c.x - d.x,
                 cy = c.y - d.y;
    return (ax * ax + ay * ay) * (bx * cy - cx * by) - (bx * bx + by * by) * (ax * cy - cx * ay) +
           (cx * cx + cy * cy) * (ax * by - bx * ay);
  }
};

TEST_F(TinTest, TrianglesAreDelaunays) {
  InfoLayer* const source = surface(300);
  Tin& tin = tinOf(source);
  ASSERT_EQ(tin.triangulate(*source->vector(vectorSamples)), 1);
  const std::vector<TinNode>& nodes = tin.nodes();
  std::map<std::pair<int, int>, int> uses;
  for (int t = 1; t < tin.triangleCount(); ++t) {
    int n[3];
    ASSERT_EQ(tin.NodesId(t, n), 1);
    const auto node = [&](int i) -> const TinNode& { return nodes[static_cast<std::size_t>(n[i])]; };
    EXPECT_GT(orientation(node(0), node(1), node(2)), 0);
    for (const TinNode& other : nodes) EXPECT_LT(inCircle(node(0), node(1), node(2), other), 1.0);
    for (int i = 0; i < 3; ++i) ++uses[std::minmax(n[i], n[(i + 1) % 3])];
  }
  // Each edge is listed once, and nodes - edges + triangles is 1 for a surface without holes.
  EXPECT_EQ(tin.lastEdge() + 1, static_cast<int>(uses.size()));
  EXPECT_EQ(tin.nodeCount() - (tin.lastEdge() + 1) + (tin.triangleCount() - 1), 1);
  int none[3];
  EXPECT_EQ(tin.NodesId(0, none), 0);
  EXPECT_EQ(tin.NodesId(tin.triangleCount(), none), 0);
}

TEST_F(TinTest, WhatASurfaceIsMadeOf) {
  InfoLayer* const source = layer(DIGITALMODEL, "S");
  Vector& samples = *source->vector(vectorSamples, true);
  Tin& tin = tinOf(source);
  EXPECT_EQ(tin.triangulate(samples), 0);
  for (const Point3d& one : {Point3d(0, 0, 1), Point3d(0, 0, 2), Point3d(10, 0, 3)}) {
    Point3d point = one;
    samples.Insert(point, 0);
  }
  delete insertLine(samples, {20, 0, 30, 0}, linePlain, 0, 50.0f);
  delete insertLine(samples, {5, 5, 6, 6}, lineBreak, 0, 7.0f);
  EXPECT_EQ(tin.triangulate(samples), 0);  // all on a line, break lines apart
  EXPECT_FALSE(tin.isLoaded());
  delete insertLine(samples, {10, 10, 11, 30}, lineMaster, 0, 60.0f);
  ASSERT_EQ(tin.triangulate(samples), 1);
  EXPECT_EQ(tin.nodeCount(), 6);
  EXPECT_EQ(tin.nodes()[0].height, 1.0f);
  EXPECT_EQ(tin.nodes()[2].height, 50.0f);
}

TEST_F(TinTest, StoredReplacedAndRolledBack) {
  InfoLayer* const source = surface(500);
  InfoLayer* const other = surface(50);
  const auto reopen = [&] {
    dataBase.reset();
    dataBase = DataBase::Open(path("base.gpkg"));
    project = dataBase->findProject("Projeto");
    return static_cast<Tin*>(dataBase->findLayer(*project, "S500")->vector(vectorTin));
  };
  EXPECT_EQ(source->vector(vectorTin), nullptr);
  ASSERT_EQ(tinOf(source).triangulate(*source->vector(vectorSamples)), 1);
  ASSERT_EQ(tinOf(source).store(), 1);
  const std::vector<TinNode> nodes = tinOf(source).nodes();
  const std::vector<TinEdge> edges = tinOf(source).edges();
  const int triangles = tinOf(source).triangleCount();
  int corners[3];
  tinOf(source).NodesId(triangles - 1, corners);
  Tin small;
  ASSERT_EQ(small.triangulate(*other->vector(vectorSamples)), 1);

  Tin* tin = reopen();
  ASSERT_NE(tin, nullptr);
  EXPECT_FALSE(tin->isLoaded());
  ASSERT_EQ(tin->LoadTin(), 1);
  ASSERT_EQ(tin->nodeCount(), static_cast<int>(nodes.size()));
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(tin->nodes()[i].x, nodes[i].x);
    EXPECT_EQ(tin->nodes()[i].height, nodes[i].height);
  }
  ASSERT_EQ(tin->edges().size(), edges.size());
  EXPECT_TRUE(std::equal(edges.begin(), edges.end(), tin->edges().begin(),
                         [](const TinEdge& a, const TinEdge& b) { return a.Node == b.Node; }));
  int again[3];
  ASSERT_EQ(tin->NodesId(triangles - 1, again), 1);
  EXPECT_TRUE(std::equal(corners, corners + 3, again));
  EXPECT_EQ(dataBase->check(), QStringList());

  {
    const DBTransactionBlock dropped(dataBase.get());
    tin->assign(small.nodes(), small.edges(), {});
    EXPECT_EQ(tin->store(), 1);
  }
  EXPECT_FALSE(tin->isLoaded());
  EXPECT_EQ(tin->LoadTin(), 1);
  EXPECT_EQ(tin->nodeCount(), static_cast<int>(nodes.size()));

  ASSERT_EQ(tin->triangulate(*dataBase->findLayer(*project, "S50")->vector(vectorSamples)), 1);
  EXPECT_EQ(tin->store(), 1);
  dataBase->commit();
  EXPECT_EQ(dataBase->check(), QStringList());
  tin = reopen();
  EXPECT_EQ(tin->LoadTin(), 1);
  EXPECT_EQ(tin->nodeCount(), small.nodeCount());
  EXPECT_EQ(tin->triangleCount(), small.triangleCount());
}

TEST_F(TinTest, SurfaceWithoutStorage) {
  Tin tin;
  EXPECT_EQ(tin.LoadTin(), 0);
  EXPECT_EQ(tin.store(), 0);
  EXPECT_EQ(tin.triangleCount(), 0);
  EXPECT_EQ(tin.lastEdge(), -1);
}

TEST_F(TinTest, TurnsOfANetwork) {
  const std::string file = path("new/a.turn").toStdString();
  {
    RestrictionList none(file);
    EXPECT_EQ(none.Size(), 0);
    none.Append(new Restriction(1, 2));
    none.Append(new Restriction(2, 1));
    none.at(1)->cost = -1.5f;
    EXPECT_EQ(none.Save(), 1);
  }
  const RestrictionList stored(file);
  ASSERT_EQ(stored.Size(), 2);
  EXPECT_EQ(stored.at(0)->from, 1);
  EXPECT_EQ(stored.at(1)->to, 1);
  EXPECT_EQ(stored.at(1)->cost, -1.5f);
  write("other.turn", "something else\n1 2 3\n");
  EXPECT_EQ(RestrictionList(path("other.turn").toStdString()).Size(), 0);
  EXPECT_EQ(RestrictionList("/proc/no/such.turn").Save(), 0);
}

}  // namespace

}  // namespace kaldex::test
