#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class HeadersReadBack : public AsciiFixture {
 protected:
  void exported(InfoLayer* from, short format, const QString& name) {
    fileName = name;
    EXPECT_EQ(handler(from, format)->ExportLines(from->vector(vectorLines, true), 0), 1);
  }
};

TEST_F(HeadersReadBack, BoxesOfHeaders) {
  InfoLayer* const source = layer(THEMATICMODEL, "Plano", {400000, 7300000, 600000, 7500000});
  for (const short format : {0, 1, 2, 3}) {
    const QString name = QString("box%1").arg(format);
    exported(source, format, name);
    bool planar = format != 0;
    const Box box = IEAsc::GetBox(path(name), planar);
    EXPECT_EQ(planar, format == 0);
    const Box& expected = format == 0 ? source->box : source->geographicBox;
    const double tolerance = format == 0 ? 1e-6 : 1e-8;
    for (const auto side : {&Box::x1, &Box::y1, &Box::x2, &Box::y2}) {
      EXPECT_NEAR(box.*side, expected.*side, tolerance) << format;
    }
  }
  const struct {
    const char* content;
    bool planar;  ///< afterwards, when it was true before
    Box box;
  } cases[] = {{"nothing", true, {}},
               {"BOX\t1, 2, 3, 4.5\nUNITS Metros\n", true, {1, 2, 3, 4.5}},
               {"BOX\t1, 2, 3, 4.5\nUNITS Geogr\341ficas DEG\n", false, {1, 2, 3, 4.5}},
               {"BOX\t1, 2, 3\nUNITS Metros\n", true, {}},
               {"BOX\tX1 1, Y1 2, X2 3, Y2 4\nUNITS Metros\n", true, {}}};
  for (const auto& one : cases) {
    write("box", one.content);
    bool planar = true;
    EXPECT_EQ(IEAsc::GetBox(path("box"), planar), one.box) << one.content;
    EXPECT_EQ(planar, one.planar) << one.content;
  }
  bool untouched = false;
  EXPECT_EQ(IEAsc::GetBox(path("absent"), untouched), Box());
  EXPECT_FALSE(untouched);
}

TEST_F(HeadersReadBack, ProjectionsOfHeaders) {
  const auto comesBack = [&](short type, const char* name, double k) {
    ProjectionParameters parameters = utm()->toParameters();
    parameters.type = type;
    parameters.name = name;
    parameters.originLatitude = -0.1;
    parameters.firstParallel = -0.2;
    parameters.secondParallel = -0.3;
    parameters.scale = k;
    const auto original = projectionFromParameters(parameters);
    project = dataBase->createProject(QString("P %1 %2").arg(type).arg(name), *original);
    InfoLayer* const source = layer(THEMATICMODEL, "L", {400000, 7300000, 600000, 7500000}, project);
    exported(source, 0, name);
    const std::unique_ptr<SProjection> found(IEAsc::GetProjection(path(name)));
    ASSERT_NE(found, nullptr) << name;
    EXPECT_EQ(found->name(), name);
    EXPECT_EQ(found->type(), type) << name;
    EXPECT_EQ(found->datum().name(), "SAD69");
    EXPECT_TRUE(*found == *original) << name;
  };
  comesBack(ProjectionType::utm, "UTM", 0.9996);
  comesBack(ProjectionType::lambertMillion, "LAMBERT MILLION", 1.0);
  comesBack(ProjectionType::albers, "ALBERS", 1.0);
  comesBack(ProjectionType::latLong, "LATLONG", 1.0);

  write("few", "PROJECTION DATUM HEMIS");
  EXPECT_EQ(IEAsc::GetProjection(path("few")), nullptr);
  EXPECT_EQ(IEAsc::GetProjection(path("absent")), nullptr);
  write("torn", "PROJECTION DATUM HEMIS Prd");
  const std::unique_ptr<SProjection> torn(IEAsc::GetProjection(path("torn")));
  ASSERT_NE(torn, nullptr);
  EXPECT_EQ(torn->type(), ProjectionType::none);
}

}  // namespace

}  // namespace kaldex::test
