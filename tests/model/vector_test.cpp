#include "kaldex/model/vector.h"

#include <cmath>
#include <memory>
#include <random>

#include "kaldex/model/projection.h"
#include "support/folder_fixture.h"
#include "support/peek.h"

namespace {

/// A vector of its own in a temporary directory.
class VectorTest : public kaldex::test::FolderFixture {
 protected:
  VectorTest() {
    vector = std::make_unique<Vector>();
    EXPECT_EQ(
        vector->Init(&projection, Box(0, 0, 1000, 1000), vectorLines, 4, folder(), QStringLiteral("v.gpkg")),
        1);
  }

  int insertLine(std::initializer_list<double> xy, Line** out = nullptr) {
    auto line = std::make_unique<Line>();
    line->assign(xy.begin(), static_cast<int>(xy.size() / 2));
    if (vector->Insert(*line, 1) == 0) return 0;
    const int id = line->id;
    if (out != nullptr) *out = line.release();
    return id;
  }

  int insertSquare(double x, double y, double size, SPolygon** out = nullptr) {
    Line* line = nullptr;
    insertLine({x, y, x + size, y, x + size, y + size, x, y + size, x, y}, &line);
    auto polygon = std::make_unique<SPolygon>();
    EXPECT_EQ(polygon->AppendLine(line), 1);
    polygon->UpdateArea();
    polygon->UpdatePerimeter();
    EXPECT_EQ(vector->Insert(*polygon), 1);
    line->leftPolygon = polygon->id;
    delete line;
    const int id = polygon->id;
    if (out != nullptr) *out = polygon.release();
    return id;
  }

  QString sql(const char* statement) {
    vector->flush();
    vector.reset();
    return kaldex::test::Peek(path("v.gpkg")).value(statement);
  }

  SProjection projection;
  std::unique_ptr<Vector> vector;
};

TEST_F(VectorTest, EveryFormOfReleaseStoresChanges) {
  Line* freed = nullptr;
  Line* deleted = nullptr;
  Line* neither = nullptr;
  const int ids[] = {insertLine({0, 0, 1, 1}, &freed), insertLine({1, 0, 2, 2}, &deleted),
                     insertLine({2, 0, 3, 3}, &neither)};
  for (Line* line : {freed, deleted, neither}) {
    line->classId = 7;
    line->height = 1.5f;
    line->labelPoint = Point(0.5, 0.25);
  }
  freed->Free(1);
  EXPECT_EQ(freed->Size(), 2) << "the shell stays usable after Free";
  freed->rightPolygon = 9;
  if (freed->state != stateNew) freed->state = stateChanged;
  freed->Free();
  delete deleted;
  int seen = 0;
  for (Line* line = vector->FirstLine(); line != nullptr; line = vector->NextLine()) {
    EXPECT_EQ(line->id, ids[seen++]);
    EXPECT_EQ(line->classId, 7);
    EXPECT_EQ(line->height, 1.5f);
    EXPECT_EQ(line->labelPoint, Point(0.5, 0.25));
    EXPECT_EQ(line->rightPolygon, line->id == ids[0] ? 9 : 0);
  }
  EXPECT_EQ(seen, 3);
  EXPECT_EQ(vector->GetLine(ids[2]), neither) << "one identifier, one shell";
}

TEST_F(VectorTest, RefusesWhatCannotBeStored) {
  const double nan = std::nan("");
  Line empty;
  EXPECT_EQ(vector->Insert(empty, 1), 0);
  EXPECT_EQ(insertLine({0, 0, nan, 1}), 0);
  EXPECT_EQ(insertLine({0, 0, INFINITY, 1}), 0);
  EXPECT_NE(insertLine({3, 3}), 0) << "a line of one point is kept";
  Line* open = nullptr;
  insertLine({0, 0, 1, 0, 1, 1, 0, 1}, &open);
  SPolygon polygon;
  EXPECT_EQ(polygon.AppendLine(nullptr), 0);
  ASSERT_EQ(polygon.AppendLine(open), 1);
  EXPECT_EQ(vector->Insert(polygon), 0) << "its outline is not closed";
  EXPECT_EQ(vector->polygonCount(), 0);
}

TEST_F(VectorTest, CursorsSurviveDeletionInsertionAndLookUps) {
  for (int i = 0; i < 10; ++i) insertLine({i * 1.0, 0, i + 1.0, 1});
  std::vector<int> ids;
  for (Line* line = vector->FirstLine(); line != nullptr; line = vector->NextLine()) {
    ids.push_back(line->id);
    if (line->id == 3) insertLine({50, 50, 60, 60});
    vector->GetLine(9);
    vector->FindLine(Point(5, 0), nullptr, 1.0f, 1.0f, nullptr, nullptr);
    delete line;
  }
  ASSERT_EQ(ids.size(), 11u);
  for (int i = 0; i < 11; ++i) EXPECT_EQ(ids[static_cast<size_t>(i)], i + 1);
  EXPECT_EQ(vector->NextLine(), nullptr);
}

TEST_F(VectorTest, PolygonCursorFollowsGetPolygonAlone) {
  for (int i = 0; i < 5; ++i) insertSquare(i * 10, 0, 5);
  ASSERT_EQ(vector->FirstPolygon()->id, 1);
  vector->FindPolygon(Point(42, 2));
  EXPECT_EQ(vector->NextPolygon()->id, 2);
  EXPECT_EQ(vector->GetPolygon(4)->id, 4);
  EXPECT_EQ(vector->NextPolygon()->id, 5);
  EXPECT_EQ(vector->GetPolygon(99), nullptr);
}

TEST_F(VectorTest, FathersCarryTheirSonsAsInnerRings) {
  SPolygon* father = nullptr;
  SPolygon* son = nullptr;
  const int fatherId = insertSquare(0, 0, 100, &father);
  const int sonId = insertSquare(10, 10, 20, &son);
  ASSERT_EQ(father->AppendSon(son, 1), 1);
  EXPECT_EQ(father->AppendSon(father, 1), 0);
  father->area -= son->area;
  ASSERT_EQ(father->LabelPointGeneration(), 1);
  const Point label = father->labelPoint;
  EXPECT_EQ(son->Inside(label), 0);
  EXPECT_EQ(father->Inside(label), 2);
  EXPECT_EQ(son->parentId, fatherId);
  delete son;
  father->Free();
  delete father;

  SPolygon* again = vector->GetPolygon(fatherId);
  EXPECT_EQ(again->area, 10000.0 - 400.0);
  ASSERT_EQ(again->NumSons(), 1);
  EXPECT_EQ(again->FirstSon()->id, sonId);
  EXPECT_EQ(again->NextSon(), nullptr);
  EXPECT_EQ(again->Orientation(), 2);
  EXPECT_EQ(again->labelPoint, label);
  const Line* outline = again->CreatePoints();
  ASSERT_NE(outline, nullptr);
  EXPECT_EQ(outline->Size(), 5);
  EXPECT_EQ(vector->FindPolygon(Point(15, 15))->id, sonId);
  EXPECT_EQ(vector->FindPolygon(Point(50, 50))->id, fatherId);
  EXPECT_EQ(vector->FindPolygon(Point(10, 15))->id, sonId) << "on the border of the son, inside the father";
  const std::unique_ptr<SPolygon> copy(vector->polygonSet()->Get(fatherId));
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy.get(), again);
  // 93 bytes are header, envelope and first ring's counts; a second ring of 5 points adds 84.
  EXPECT_EQ(sql("SELECT length(geom) FROM v_gpkg_0_polygons WHERE fid = 1"),
            QString::number(8 + 32 + 9 + 2 * 84));
}

TEST_F(VectorTest, OutlinesOfSeveralLinesAreChained) {
  Line *a = nullptr, *b = nullptr, *c = nullptr;
  insertLine({10, 0, 0, 0}, &a);  // runs against the others
  insertLine({10, 0, 10, 10}, &b);
  insertLine({0, 0, 0, 10, 10, 10}, &c);
  SPolygon* polygon = new SPolygon;
  for (Line* line : {a, b, c}) ASSERT_EQ(polygon->AppendLine(line), 1);
  ASSERT_EQ(vector->Insert(*polygon), 1);
  const int id = polygon->id;
  delete polygon;
  polygon = vector->GetPolygon(id);
  polygon->UpdateArea();
  EXPECT_EQ(polygon->area, 100.0);
  EXPECT_EQ(polygon->FirstLine(), a);
  EXPECT_EQ(polygon->NextLine(), b);
}

TEST_F(VectorTest, SearchAgreesWithLookingAtEverything) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, 1000), size(0, 20);
  std::vector<Box> boxes;
  const auto add = [&](int count) {
    for (int i = 0; i < count; ++i) {
      const double x = place(random), y = place(random), w = size(random), h = size(random);
      insertLine({x, y, x + w, y + h});
      boxes.emplace_back(x, y, x + w, y + h);
    }
  };
  const auto compare = [&] {
    for (int i = 0; i < 50; ++i) {
      const double x = place(random), y = place(random);
      const Box wanted(x, y, x + 30, y + 30);
      LineList list;
      vector->Lines(wanted, list);
      std::vector<int> expected, found;
      for (size_t k = 0; k < boxes.size(); ++k) {
        if (boxes[k].intersects(wanted)) expected.push_back(static_cast<int>(k) + 1);
      }
      for (Line* line : list) found.push_back(line->id);
      EXPECT_EQ(found, expected);
    }
  };
  add(6000);  // more than what is searched one by one: the tree in memory
  compare();
  vector->flush();  // packed into the file
  compare();
  add(500);  // few more: stored tree and memory together
  compare();
  vector->flush();  // inserted one by one
  compare();
  add(9000);  // many more: packed anew
  vector->flush();
  compare();
  EXPECT_EQ(sql("SELECT rtreecheck('rtree_v_gpkg_0_lines_geom')"), QStringLiteral("ok"));
}

TEST_F(VectorTest, TheStoredIndexStaysEditable) {
  for (int i = 0; i < 3000; ++i) insertLine({i * 1.0, 0, i + 0.5, 1});
  Line* line = vector->GetLine(5);
  line->Append(Point(500, 900), false);  // the box grows with a changed line
  line->state = stateChanged;
  delete line;
  vector->flush();
  LineList list;
  vector->Lines(Box(499, 899, 501, 901), list);
  ASSERT_EQ(list.Size(), 1);
  EXPECT_EQ(list.First()->id, 5);
  EXPECT_EQ(sql("SELECT rtreecheck('rtree_v_gpkg_0_lines_geom')"), QStringLiteral("ok"));
}

TEST_F(VectorTest, NearestLineIsFoundWithinTheTolerance) {
  insertLine({0, 0, 10, 0});
  insertLine({0, 5, 10, 5});
  const int twin = insertLine({0, 5, 10, 5});
  int segment = -1, vertex = -1;
  Point nearest;
  Line* line = vector->FindLine(Point(8, 3), &segment, 4.0f, 4.0f, &vertex, &nearest);
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->id, 2) << "of two as near the lower identifier, not " << twin;
  EXPECT_EQ(segment, 0);
  EXPECT_EQ(vertex, 1);
  EXPECT_EQ(nearest, Point(8, 5));
  EXPECT_EQ(vector->FindLine(Point(5, 20), nullptr, 4.0f, 4.0f, nullptr, nullptr), nullptr);
  EXPECT_EQ(vector->FindLine(Point(10.1, 0.1), Point(0.1, 0))->id, 1)
      << "ends in either order, within half a metre";
  EXPECT_EQ(vector->FindLine(Point(11, 0), Point(0, 0)), nullptr);
}

TEST_F(VectorTest, PointsShareTheirIdentifiersWithNodes) {
  Point2d point(5, 5);
  ASSERT_EQ(vector->Insert(point), 1);
  EXPECT_EQ(vector->FindPoint2d(Point(5, 5), 0.0f)->id, point.id);
  EXPECT_EQ(vector->FindPoint2d(Point(5.1, 5), 0.0f), nullptr);
  insertLine({0, 0, 5, 5});
  EXPECT_EQ(vector->FindNode(Point(5, 5.001), 0.01f)->id, point.id)
      << "a stored point wins over a line's end";
  Point2d node = *vector->FindNode(Point(0, 0), 0.01f);
  EXPECT_GT(node.id, point.id);
  EXPECT_EQ(vector->Insert(node), 1);
  EXPECT_EQ(vector->Insert(node), 1) << "the same node again";
  EXPECT_EQ(vector->point2dCount(), 2);
  EXPECT_EQ(vector->FindNode(Point(300, 300), 0.01f), nullptr);
}

TEST_F(VectorTest, SamplesComeBackAsTheyWere) {
  Point3d sample(1.25, 2.5, 612.1f);
  ASSERT_EQ(vector->Insert(sample, 0), 1);
  const std::unique_ptr<Point3d> back(vector->FirstPoint3d());
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->z, 612.1f);
  EXPECT_EQ(*static_cast<Point*>(back.get()), Point(1.25, 2.5));
  EXPECT_EQ(vector->NextPoint3d(), nullptr);
  EXPECT_EQ(vector->BoundingBox(), Box(0, 0, 1000, 1000));
  EXPECT_EQ(vector->dataExtent(), Box(1.25, 2.5, 1.25, 2.5));
}

TEST_F(VectorTest, AnchorsGrowAndAreFound) {
  Point2d point(5, 5);
  vector->Insert(point);
  SPolygon* polygon = nullptr;
  insertSquare(20, 20, 10, &polygon);
  Anchor first, second;
  ASSERT_EQ(first.InsertPolygon(*polygon, nullptr), 1);
  ASSERT_EQ(vector->Insert(first), 1);
  ASSERT_EQ(second.InsertPoint(point), 1);
  ASSERT_EQ(vector->Insert(second), 1);
  EXPECT_EQ(first.area, 100.0);
  EXPECT_EQ(first.perimeter, 40.0);
  first.InsertPoint(point);
  EXPECT_EQ(vector->anchorSet()->Update(first), 1);
  const std::unique_ptr<Anchor> back(vector->GetAnchor(first.id));
  EXPECT_EQ(back->SelectPoint(point.id), 1);
  EXPECT_EQ(back->SelectLine(1), 0);
  EXPECT_EQ(back->SelectPolygon(polygon->id), 1);
  EXPECT_EQ(back->box, Box(5, 5, 30, 30));
  AnchorList points(List::Ownership::owns), polygons(List::Ownership::owns);
  EXPECT_EQ(vector->Anchors(Box(4, 4, 6, 6), points, 1, 0, 0), 2);
  EXPECT_EQ(vector->Anchors(Box(25, 25, 26, 26), polygons, 0, 0, 1), 1);
  const std::unique_ptr<Anchor> near(vector->FindAnchors(Point(5.0005, 5), 0.001f));
  ASSERT_NE(near, nullptr);
  EXPECT_EQ(near->id, first.id);
  Anchor unknown;
  unknown.id = 99;
  EXPECT_EQ(vector->anchorSet()->Update(unknown), 0);
}

TEST_F(VectorTest, MillionsOfForgottenLinesDoNotFillTheMemory) {
  // Nobody gives these back: their points must not stay.
  std::vector<Line*> lines;
  for (int i = 0; i < 5000; ++i) {
    Line* line = nullptr;
    insertLine({i * 0.1, 0, i * 0.1, 1, i * 0.1, 2}, &line);
    lines.push_back(line);
  }
  EXPECT_EQ(lines.front()->Size(), 3) << "and come back when they are wanted";
  EXPECT_EQ(lines.front()->Last()->y, 2.0);
  EXPECT_EQ(vector->lineCount(), 5000);
}

TEST(Lines, EqualIgnoresDirectionAndStartOfRings) {
  const auto make = [](std::initializer_list<double> xy) {
    auto line = std::make_unique<Line>();
    line->assign(xy.begin(), static_cast<int>(xy.size() / 2));
    return line;
  };
  const auto ring = make({0, 0, 1, 0, 1, 1, 0, 0});
  EXPECT_TRUE(ring->Equal(*make({0, 0, 1, 1, 1, 0, 0, 0})));
  EXPECT_TRUE(ring->Equal(*make({1, 1, 0, 0, 1, 0, 1, 1})));
  EXPECT_TRUE(ring->Equal(*make({1, 1, 1, 0, 0, 0, 1, 1})));
  EXPECT_FALSE(ring->Equal(*make({0, 0, 1, 0, 1, 2, 0, 0})));
  EXPECT_TRUE(make({0, 0, 1, 2})->Equal(*make({1, 2, 0, 0})));
  EXPECT_FALSE(make({0, 0, 1, 2, 3, 4})->Equal(*make({1, 2, 3, 4, 0, 0}))) << "open lines have a start";
}

TEST(Lines, MeasuresAndCursors) {
  Line line;
  line.Append(Point(0, 0), false);
  line.Append(Point(3, 4), false);
  line.Append(Point(3, 4), true);
  ASSERT_EQ(line.Size(), 2);
  EXPECT_EQ(line.CalcLength(), 5.0);
  line.UpdateLabelPoint();
  EXPECT_EQ(line.labelPoint, Point(1.5, 2));
  EXPECT_EQ(line.Last()->x, 3);
  EXPECT_EQ(line.Prev()->x, 0);
  EXPECT_EQ(line.Prev(), nullptr);
  Box box(2, 2, 5, 5);
  line.First();
  EXPECT_EQ(line.Next(&box)->x, 3);
  EXPECT_EQ(line.Next(), nullptr);
  double area = 0;
  const double square[] = {1e7, 1e7, 1e7, 1e7 + 0.001, 1e7 + 0.001, 1e7 + 0.001, 1e7 + 0.001, 1e7, 1e7, 1e7};
  line.assign(square, 5);
  EXPECT_EQ(calcula_area(&line, &area), 1);
  EXPECT_NEAR(area, -1e-6, 1e-11) << "clockwise, and far from the origin";
  const double bent[] = {0, 0, 5, 0.01, 10, 0, 15, 5, 20, 0};
  line.assign(bent, 5);
  EXPECT_EQ(line.Simplify(0.1f, 0), 4);
}

}  // namespace
