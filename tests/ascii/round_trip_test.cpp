#include "ascii/ascii_fixture.h"

namespace kaldex::test {

namespace {

class AsciiRoundTrip : public AsciiFixture {
 protected:
  QByteArray exported(InfoLayer* from, short kind, short format, const QString& name) {
    fileName = name;
    Vector* const vector = from->vector(kind, true);
    const auto out = handler(from, format);
    EXPECT_EQ(kind == vectorContours ? out->ExportContourout(vector) : out->ExportLines(vector, 0), 1);
    return read(name);
  }
  int imported(InfoLayer* into, short kind, short format, const QString& name) {
    fileName = name;
    Vector* const vector = into->vector(kind, true);
    // The file's header doesn't say how to read its numbers: decimal degrees and seconds come back by their
    // units.
    const int units = format == 2 ? 4 : format == 3 ? 5 : 0;
    const auto in = handler(into, format, units);
    return kind == vectorContours ? in->ImportContourout(vector, project->projection())
                                  : in->ImportLines(vector, project->projection());
  }
  /// Some lines in the middle of the zone, with more digits than a file keeps.
  void fill(Vector& vector) {
    unsigned seed = 1;
    const auto next = [&seed] {
      return static_cast<double>((seed = seed * 1103515245u + 12345u) >> 8) / (1 << 24);
    };
    for (int i = 0; i < 50; ++i) {
      std::vector<double> xy;
      for (int j = 0; j < 2 + i % 7; ++j) {
        xy.push_back(400000 + 200000 * next());
        xy.push_back(7300000 + 200000 * next());
      }
      delete insertLine(vector, xy, i % 3 == 0 ? lineMaster : linePlain, 0, static_cast<float>(i) * 1.25f);
    }
  }
};

// The second file is the first, byte for byte, in every form of coordinates; both layers have the same name
// so that their headers agree.
TEST_F(AsciiRoundTrip, LinesAndContoursInAllForms) {
  Project* const first = project;
  Project* const second = dataBase->createProject("Outro", *utm());
  const QString name = second->name;
  for (const short kind : {short(vectorLines), short(vectorContours)}) {
    const short model = kind == vectorLines ? THEMATICMODEL : DIGITALMODEL;
    InfoLayer* const source =
        layer(model, QString("Plano %1").arg(kind), {400000, 7300000, 600000, 7500000}, first);
    fill(*source->vector(kind, true));
    for (const short format : {0, 1, 2, 3}) {
      const QString suffix = QString("%1_%2").arg(kind).arg(format);
      Project* const target = dataBase->createProject("Alvo " + suffix, *utm());
      InfoLayer* const copy = layer(model, source->name, source->box, target);
      project = first;
      const QByteArray one = exported(source, kind, format, "a" + suffix);
      project = target;
      EXPECT_EQ(imported(copy, kind, format, "a" + suffix), 1);
      EXPECT_EQ(messages.take(), "");
      target->name = first->name;
      const QByteArray two = exported(copy, kind, format, "b" + suffix);
      EXPECT_GT(one.size(), 4000);
      EXPECT_TRUE(one == two) << suffix.toStdString();
      EXPECT_EQ(copy->vector(kind)->lineCount(), 50);
    }
  }
}

TEST_F(AsciiRoundTrip, BoxesOfHeaders) {
  InfoLayer* const source = layer(THEMATICMODEL, "Plano", {400000, 7300000, 600000, 7500000});
  source->vector(vectorLines, true);
  for (const short format : {0, 1, 2, 3}) {
    const QString name = QString("box%1").arg(format);
    exported(source, vectorLines, format, name);
    bool planar = format != 0;
    const Box box = IEAsc::GetBox(path(name), planar);
    EXPECT_EQ(planar, format == 0);
    const Box& expected = format == 0 ? source->box : source->geographicBox;
    const double tolerance = format == 0 ? 1e-6 : 1e-8;
    EXPECT_NEAR(box.x1, expected.x1, tolerance) << format;
    EXPECT_NEAR(box.y1, expected.y1, tolerance) << format;
    EXPECT_NEAR(box.x2, expected.x2, tolerance) << format;
    EXPECT_NEAR(box.y2, expected.y2, tolerance) << format;
  }
  const struct {
    const char* content;
    bool planar;  ///< afterwards, when it was true before
    Box box;
  } cases[] = {{"nothing", true, {}},
               {"BOX\t1, 2, 3, 4.5\nUNITS Metros\n", true, {1, 2, 3, 4.5}},
               {"BOX\t1, 2, 3, 4.5\nUNITS Geogr\xE1"
                "ficas DEG\n",
                false,
                {1, 2, 3, 4.5}},
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

TEST_F(AsciiRoundTrip, ProjectionsOfHeaders) {
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
    source->vector(vectorLines, true);
    exported(source, vectorLines, 0, name);
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
