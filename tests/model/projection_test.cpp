#include "kaldex/model/projection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kaldex/model/angle.h"
#include "kaldex/model/projection_text.h"

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

std::unique_ptr<SProjection> projectionOf(const QString& text) {
  QString error;
  auto projection = projectionFromText(text, &error);
  EXPECT_NE(projection, nullptr) << error.toStdString();
  return projection != nullptr ? std::move(projection) : std::make_unique<SProjection>();
}

Point radians(double longitude, double latitude) {
  return {Math_Deg_To_Rad(longitude), Math_Deg_To_Rad(latitude)};
}

/// UTM zone 23 south on a datum, as a file's header gives it.
GeneralProjection utm23(const Datum& datum) {
  GeneralProjection projection(ProjectionType::utm);
  projection.Init(&datum, -1, 0.0, Math_Deg_To_Rad(-45.0), 0.0, 0.0, 500000.0, 1e7, 0.9996);
  return projection;
}

/// The same system computed by PROJ from the text that we write, instead of by the type's own formula.
std::unique_ptr<SProjection> asForeign(const SProjection& projection) {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::foreign;
  parameters.definition = projectionToWkt(projection, WktVariant::wkt2);
  return projectionFromParameters(parameters);
}

TEST(ProjectionTest, PublishedCoordinates) {
  // Worked examples of EPSG guidance note 7-2 and of Snyder's "Map Projections: A Working Manual".
  const struct {
    const char* system;
    short type;
    double longitude, latitude, x, y, tolerance;
  } cases[] = {
      {"EPSG:27700", ProjectionType::gaussTm, 0.5, 50.5, 577274.99, 69740.50, 0.01},
      {"EPSG:32040", ProjectionType::foreign, -96, 28.5, 2963503.91, 254759.80, 0.01},
      {"EPSG:3388", ProjectionType::mercator, 53, 53, 165704.29, 5171848.07, 0.01},
      {"EPSG:5041", ProjectionType::stereographic, 44, 73, 3320416.75, 632668.43, 0.01},
      {"EPSG:3032", ProjectionType::stereographic, 120, -75, 7255380.79, 7053389.56, 0.01},
      {"+proj=utm +zone=18 +ellps=clrk66", ProjectionType::utm, -73.5, 40.5, 627106.5, 4484124.4, 0.05},
      {"+proj=poly +lat_0=30 +lon_0=-96 +ellps=clrk66", ProjectionType::polyconic, -75, 40, 1776774.5,
       1319657.8, 0.05},
      {"+proj=aea +lat_1=29.5 +lat_2=45.5 +lat_0=23 +lon_0=-96 +ellps=clrk66", ProjectionType::albers, -75,
       35, 1885472.7, 1535925.0, 0.05},
      {"+proj=lcc +lat_1=33 +lat_2=45 +lat_0=23 +lon_0=-96 +ellps=clrk66", ProjectionType::lambert, -75, 35,
       1894410.9, 1564649.5, 0.05},
      {"+proj=sinu +lon_0=-90 +ellps=clrk66", ProjectionType::sinusoidal, -75, -50, 1075471.5, -5540628.0,
       0.05},
      {"+proj=mill +R=1000000", ProjectionType::miller, -75, 50, -1308996.9, 953637.1, 0.05},
      {"+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=-100 +ellps=intl", ProjectionType::stereographic, 150, -75,
       -1540033.6, -560526.4, 0.05},
      {"+proj=eqc +lat_ts=60 +R=1000000", ProjectionType::cylindrical, 90, 45, 1e6 * kPi / 4, 1e6 * kPi / 4,
       1e-6},
      {"EPSG:4674", ProjectionType::latLong, -45, -23, -45, -23, 1e-12},
  };
  for (const auto& c : cases) {
    const auto projection = projectionOf(c.system);
    EXPECT_EQ(projection->type(), c.type) << c.system;
    Point point = radians(c.longitude, c.latitude);
    ASSERT_TRUE(projection->geographicToPlane(point)) << c.system;
    EXPECT_NEAR(point.x, c.x, c.tolerance) << c.system;
    EXPECT_NEAR(point.y, c.y, c.tolerance) << c.system;
    ASSERT_TRUE(projection->planeToGeographic(point)) << c.system;
    EXPECT_NEAR(point.x, Math_Deg_To_Rad(c.longitude), 1e-11) << c.system;
    EXPECT_NEAR(point.y, Math_Deg_To_Rad(c.latitude), 1e-11) << c.system;
  }
}

TEST(ProjectionTest, SystemsComeBackFromTheTextsWrittenForThem) {
  const struct {
    const char* system;
    short type;
    short hemisphere;
    const char* datum;
    bool findsCode;
  } cases[] = {
      {"EPSG:31983", ProjectionType::utm, -1, "SIRGAS2000", true},
      {"EPSG:29193", ProjectionType::utm, -1, "SAD69", true},
      {"EPSG:22523", ProjectionType::utm, -1, "CORREGO ALEGRE", true},
      {"EPSG:32618", ProjectionType::utm, 1, "WGS84", true},
      {"EPSG:5880", ProjectionType::polyconic, -1, "SIRGAS2000", true},
      {"EPSG:5641", ProjectionType::mercator, -1, "SIRGAS2000", true},
      {"EPSG:3395", ProjectionType::mercator, 1, "WGS84", true},
      {"EPSG:2154", ProjectionType::lambert, 1, "Reseau Geodesique Francais 1993 v1", true},
      {"EPSG:3083", ProjectionType::albers, 1, "NAD83", true},
      {"EPSG:27700", ProjectionType::gaussTm, 1, "Ordnance Survey of Great Britain 1936", true},
      {"EPSG:4326", ProjectionType::latLong, 1, "WGS84", true},
      {"EPSG:4618", ProjectionType::latLong, 1, "SAD69", true},
      {"EPSG:3031", ProjectionType::stereographic, -1, "WGS84", false},
      {"EPSG:3857", ProjectionType::foreign, 1, "WGS84", true},
      {"EPSG:27572", ProjectionType::foreign, 1, "Nouvelle Triangulation Francaise (Paris)", true},
      {"EPSG:2227", ProjectionType::foreign, 1, "NAD83", true},
      {"EPSG:5514", ProjectionType::foreign, 1, "System of the Unified Trigonometrical Cadastral Network",
       true},
      {"+proj=eqc +lat_ts=10 +lon_0=-50 +datum=WGS84", ProjectionType::cylindrical, 1, "WGS84", false},
      {"+proj=mill +lon_0=-50 +datum=WGS84", ProjectionType::miller, 1, "WGS84", false},
      {"+proj=sinu +lon_0=-50 +datum=WGS84", ProjectionType::sinusoidal, 1, "WGS84", false},
      {"+proj=merc +k=0.997 +lon_0=110 +datum=WGS84", ProjectionType::mercator, 1, "WGS84", false},
  };
  for (const auto& c : cases) {
    const auto projection = projectionOf(c.system);
    EXPECT_EQ(projection->type(), c.type) << c.system;
    EXPECT_EQ(projection->hemisphere(), c.hemisphere) << c.system;
    EXPECT_EQ(projection->datum().name().toStdString(), c.datum) << c.system;
    ProjectionParameters parameters = projection->toParameters();
    parameters.epsg = 0;
    const auto bare = projectionFromParameters(parameters);
    const int code = QByteArray(c.system).mid(5).toInt();
    EXPECT_EQ(projectionEpsgCode(*bare), c.findsCode ? code : 0) << c.system;
    for (WktVariant variant : {WktVariant::gdal1, WktVariant::esri1, WktVariant::wkt2}) {
      EXPECT_TRUE(*projectionOf(projectionToWkt(*bare, variant)) == *projection)
          << projectionToWkt(*bare, variant).toStdString();
    }
    if (c.type != ProjectionType::foreign) {
      EXPECT_TRUE(*projectionOf(projectionToProj4(*bare)) == *projection) << c.system;
    }
  }
}

TEST(ProjectionTest, EveryTypeInMetresAgreesWithTheSystemWrittenForIt) {
  for (short type = ProjectionType::utm; type <= ProjectionType::sinusoidal; ++type) {
    if (type >= ProjectionType::latLong2 && type <= ProjectionType::latLong) continue;
    GeneralProjection projection(type);
    const Datum datum = knownDatum(QStringLiteral("SAD69"));
    const double south = Math_Deg_To_Rad(-12.0);
    projection.Init(&datum, -1, south, Math_Deg_To_Rad(-54.0), south, Math_Deg_To_Rad(-34.0), 2e6, 1e7, 0.9);
    const auto foreign = asForeign(projection);
    for (double latitude : {-60.0, -33.3, -1.0, 20.0}) {
      const Point place = radians(-50.0, latitude);
      Point ours = place, theirs = place;
      ASSERT_TRUE(projection.geographicToPlane(ours)) << type;
      ASSERT_TRUE(foreign->geographicToPlane(theirs)) << type;
      EXPECT_NEAR(ours.x, theirs.x, 1e-6) << type;
      EXPECT_NEAR(ours.y, theirs.y, 1e-6) << type;
      ASSERT_TRUE(projection.planeToGeographic(ours) && foreign->planeToGeographic(theirs)) << type;
      EXPECT_NEAR(ours.x, place.x, 1e-11) << type;
      EXPECT_NEAR(theirs.y, place.y, 1e-11) << type;
    }
  }
}

TEST(ProjectionTest, ForeignSystemsCountFromGreenwichInTheirOwnUnits) {
  // 2 gr east of Paris, 52 gr north.
  const auto paris = projectionOf(QStringLiteral("EPSG:4807"));
  Point point(2.0, 52.0);
  ASSERT_TRUE(paris->planeToGeographic(point));
  EXPECT_NEAR(Math_Rad_To_Deg(point.x), 1.8 + 2.33722917, 1e-8);
  EXPECT_NEAR(Math_Rad_To_Deg(point.y), 46.8, 1e-12);
  ASSERT_TRUE(paris->geographicToPlane(point));
  EXPECT_NEAR(point.x, 2.0, 1e-12);
  // A foreign projection without a definition is the identity, as NONE is.
  for (short type : {ProjectionType::foreign, ProjectionType::none}) {
    const std::unique_ptr<SProjection> plain(GetNewInstance(type));
    Point same(123456.789, -1e300);
    EXPECT_TRUE(plain->planeToGeographic(same) && plain->geographicToPlane(same));
    EXPECT_EQ(same, Point(123456.789, -1e300));
  }
}

TEST(ProjectionTest, ReadsTextsThatNeedCare) {
  const auto heights = projectionOf(QStringLiteral("EPSG:9707"));
  EXPECT_EQ(heights->toParameters().epsg, 4326);
  // The code at the end belongs to another system; the shift stated wins over the known one.
  const auto stated = projectionOf(QStringLiteral(
      R"(PROJCS["unnamed",GEOGCS["SAD69",DATUM["South_American_Datum_1969",SPHEROID["GRS 1967 Modified",6378160,298.25],)"
      R"(TOWGS84[-66.87,4.37,-38.52,0,0,0,0]],PRIMEM["Greenwich",0],UNIT["degree",0.0174532925199433]],)"
      R"(PROJECTION["Transverse_Mercator"],PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",-45],)"
      R"(PARAMETER["scale_factor",0.9996],PARAMETER["false_easting",500000],PARAMETER["false_northing",10000000],)"
      R"(UNIT["metre",1],AUTHORITY["EPSG","31983"]])"));
  EXPECT_EQ(stated->toParameters().epsg, 0);
  EXPECT_EQ(stated->offsetX(), -66.87f);
  EXPECT_TRUE(projectionToWkt(*stated, WktVariant::gdal1).contains("TOWGS84[-66.87,4.37,-38.52"));
  EXPECT_TRUE(*projectionOf(projectionToProj4(*stated)) == *stated);
  // Without the shift, the ESRI form is the same as that of the known datum.
  EXPECT_TRUE(*projectionOf(projectionToWkt(*stated, WktVariant::esri1)) == *projectionOf("EPSG:29193"));
}

TEST(ProjectionTest, RefusesWhatIsNoHorizontalSystem) {
  const QStringList texts = {"",
                             "no such system",
                             "EPSG:99999999",
                             "EPSG:4978",
                             "EPSG:5773",
                             "+proj=nothing",
                             "PROJCS[\"cut",
                             QString(1 << 20, '['),
                             QChar(0) + QString("EPSG:4326")};
  for (const QString& text : texts) {
    QString error;
    EXPECT_EQ(projectionFromText(text, &error), nullptr) << text.left(40).toStdString();
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(projectionFromText(text), nullptr);
  }
}

TEST(ProjectionTest, UnusableParametersFailInConversionOnly) {
  const Datum odd(0, QStringLiteral("?"), kNoNumber, kNoNumber, 3.4e37f, 0.0f, 0.0f);
  const Datum world = knownDatum(QStringLiteral("WGS84"));
  for (short type = -1; type <= 20; ++type) {
    const std::unique_ptr<SProjection> projection(GetNewInstance(type));
    projection->Init(type, QStringLiteral("x"), odd);
    auto* general = dynamic_cast<GeneralProjection*>(projection.get());
    EXPECT_EQ(general == nullptr, type == ProjectionType::latLong2);
    if (general != nullptr)
      general->Init(&odd, 0, kUnsetValue, kNoNumber, 3e9, -3e9, kNoNumber, 1e308, kNoNumber);
    const bool inMetres = projection->type() != ProjectionType::none && !projection->isLatLong() &&
                          projection->type() != ProjectionType::foreign;
    Point point(0.1, 0.1);
    EXPECT_EQ(projection->geographicToPlane(point), !inMetres) << type;
    EXPECT_EQ(point.isUnset(), inMetres) << type;
    EXPECT_EQ(projection->DegreeToMeterMultFactor(), 1.0);
    EXPECT_TRUE(projectionToWkt(*projection, WktVariant::wkt2).isEmpty());
    EXPECT_TRUE(projectionToProj4(*projection).isEmpty());
    EXPECT_EQ(projectionEpsgCode(*projection), 0);
    EXPECT_TRUE(*projection == *projection);
  }
  const auto utm = utm23(world);
  for (Point point : {Point::unset(), Point(kNoNumber, 0.0), Point(0.0, 1e300), Point(-1e300, -1e300)}) {
    EXPECT_FALSE(utm.planeToGeographic(point));
    EXPECT_TRUE(point.isUnset());
  }
  Point pole(0.0, 1.6);
  EXPECT_FALSE(utm.geographicToPlane(pole));
  EXPECT_TRUE(pole.isUnset());
  Point after = radians(-45.0, 0.0);
  EXPECT_TRUE(utm.geographicToPlane(after));
  EXPECT_NEAR(after.x, 500000.0, 1e-6);
}

TEST(ProjectionTest, UtmImpliesItsFalseOrigin) {
  const Datum world = knownDatum(QStringLiteral("WGS84"));
  GeneralProjection given = utm23(world), implied(ProjectionType::utm);
  implied.Init(&world, -1, 0.0, given.centralMeridian(), 0.0, 0.0, 0.0, 0.0, 1.0);
  Point a = radians(-43.2, -22.9), b = a;
  ASSERT_TRUE(given.geographicToPlane(a) && implied.geographicToPlane(b));
  EXPECT_EQ(a, b);
  EXPECT_EQ(implied.falseNorthing(), 0.0);
  EXPECT_EQ(projectionEpsgCode(given), 32723);
}

TEST(ProjectionTest, CarriesBetweenDatums) {
  const Datum world = knownDatum(QStringLiteral("WGS84"));
  const struct {
    Datum from, to;
    double longitude, latitude, newLongitude, newLatitude, tolerance;  // degrees
  } cases[] = {
      {knownDatum(QStringLiteral("SAD69")), world, -43.2, -22.9, -43.200421803, -22.900495925, 1e-9},
      {knownDatum(QStringLiteral("CORREGO ALEGRE")), knownDatum(QStringLiteral("SAD69")), -43.2, -22.9,
       -43.199757348, -22.899878299, 1e-9},
      // The geocentric translation of EPSG guidance note 7-2; its place is told in hundredths of a second.
      {world, Datum(0, QStringLiteral("ED50 North Sea"), 6378388.0, 1 / 297.0, -84.87f, -96.49f, -116.95f),
       2 + 7 / 60.0 + 46.38 / 3600.0, 53 + 48 / 60.0 + 33.82 / 3600.0, 2 + 7 / 60.0 + 51.477 / 3600.0,
       53 + 48 / 60.0 + 36.563 / 3600.0, 1.5e-6},
  };
  for (const auto& c : cases) {
    GeneralProjection from = utm23(c.from), to = utm23(c.to);
    from.SetDestination(&to);
    Point point = radians(c.longitude, c.latitude);
    from.ChangeLL(point.x, point.y);
    EXPECT_NEAR(Math_Rad_To_Deg(point.x), c.newLongitude, c.tolerance);
    EXPECT_NEAR(Math_Rad_To_Deg(point.y), c.newLatitude, c.tolerance);
    to.SetDestination(&from);
    to.ChangeLL(point.x, point.y);
    // The height is dropped on the way, which costs a fraction of a millimetre each way for each ten metres
    // of shift.
    EXPECT_NEAR(Math_Rad_To_Deg(point.x), c.longitude, 2e-8);
    EXPECT_NEAR(Math_Rad_To_Deg(point.y), c.latitude, 2e-8);
  }
}

TEST(ProjectionTest, LeavesUntouchedWhatHasNowhereToGo) {
  const Datum world = knownDatum(QStringLiteral("WGS84"));
  GeneralProjection sad = utm23(knownDatum(QStringLiteral("SAD69"))), wgs = utm23(world);
  GeneralProjection none(ProjectionType::none), noDatum = utm23(Datum()),
                                                zero = utm23(Datum(1, "0", 0, 0, 0, 0, 0));
  GeneralProjection named = sad;
  named.DatumName(QStringLiteral("NONE"));
  const std::pair<SProjection*, SProjection*> pairs[] = {{&sad, nullptr}, {&sad, &none}, {&sad, &noDatum},
                                                         {&sad, &zero},   {&none, &wgs}, {&noDatum, &wgs},
                                                         {&sad, &sad},    {&named, &wgs}};
  for (const auto& [from, to] : pairs) {
    const DestinationScope scope(from, to);
    const Point start = radians(-43.2, -22.9);
    Point point = start;
    from->ChangeLL(point.x, point.y);
    EXPECT_EQ(point, start);
  }
  sad.SetDestination(&wgs);
  Point unset = Point::unset();
  sad.ChangeLL(unset.x, unset.y);
  EXPECT_EQ(unset, Point::unset());
}

TEST(ProjectionTest, PlaneToGeographicCarriesInsideTheScopeOnly) {
  GeneralProjection sad = utm23(knownDatum(QStringLiteral("SAD69")));
  const GeneralProjection wgs = utm23(knownDatum(QStringLiteral("WGS84")));
  const auto converted = [&sad](bool inBatch) {
    Point point(684580.0, 7467384.0);
    double xy[2] = {point.x, point.y};
    if (!inBatch) sad.planeToGeographic(point);
    if (inBatch) sad.planeToGeographicAll(xy, 1);
    return inBatch ? Point(xy[0], xy[1]) : point;
  };
  const Point own = converted(false);
  Point carried = own;
  sad.SetDestination(&wgs);
  sad.ChangeLL(carried.x, carried.y);
  EXPECT_NE(carried, own);
  for (bool inBatch : {false, true}) {
    EXPECT_EQ(converted(inBatch), own);
    {
      const DestinationScope scope(&sad, &wgs);
      EXPECT_EQ(converted(inBatch), carried);
      const DestinationScope inner(&sad, &wgs, DestinationScope::Carry::onlyInChangeLL);
      EXPECT_EQ(converted(inBatch), own);
    }
    EXPECT_EQ(sad.destination(), &wgs);
    EXPECT_EQ(converted(inBatch), own);
  }
  const DestinationScope nothing(nullptr, &wgs);
}

TEST(ProjectionTest, BatchesConvertLikeSinglePoints) {
  const auto projection = projectionOf(QStringLiteral("EPSG:31983"));
  double xy[] = {684623.6733, 7466421.4007, kUnsetValue, kUnsetValue, 500000.0, 1e7};
  EXPECT_FALSE(projection->planeToGeographicAll(xy, 3));
  EXPECT_NEAR(Math_Rad_To_Deg(xy[0]), -43.2, 1e-9);
  EXPECT_NEAR(Math_Rad_To_Deg(xy[1]), -22.9, 1e-9);
  EXPECT_EQ(xy[2], kUnsetValue);
  EXPECT_NEAR(Math_Rad_To_Deg(xy[4]), -45.0, 1e-12);
  EXPECT_FALSE(projection->geographicToPlaneAll(xy, 3));
  EXPECT_NEAR(xy[1], 7466421.4007, 1e-6);
  EXPECT_TRUE(projection->planeToGeographicAll(xy + 4, 1));
}

TEST(ProjectionTest, ComparesWithinWhatPrintingKeeps) {
  const Datum datum = knownDatum(QStringLiteral("SAD69"));
  const ProjectionParameters base = utm23(datum).toParameters();
  const auto same = [&base](auto&& change) {
    ProjectionParameters changed = base;
    change(changed);
    return *projectionFromParameters(base) == *projectionFromParameters(changed);
  };
  const auto shifted = [&datum](double radius, double flattening, float dx) {
    return Datum(7, QStringLiteral("other name"), datum.radius() + radius, datum.flattening() + flattening,
                 datum.dx() + dx, datum.dy(), datum.dz());
  };
  EXPECT_TRUE(same(
      [](auto& p) { p.name = "other", p.epsg = 5, p.centralMeridian += 9e-10, p.falseEasting += 9e-4; }));
  EXPECT_TRUE(same([&](auto& p) { p.datum = shifted(9e-4, 9e-11, 5e-5f), p.scale += 9e-7; }));
  EXPECT_FALSE(same([](auto& p) { p.centralMeridian += 2e-9; }));
  EXPECT_FALSE(same([](auto& p) { p.falseNorthing += 2e-3; }));
  EXPECT_FALSE(same([](auto& p) { p.scale += 2e-6; }));
  EXPECT_FALSE(same([](auto& p) { p.hemisphere = 1; }));
  EXPECT_FALSE(same([](auto& p) { p.type = ProjectionType::gaussTm; }));
  EXPECT_FALSE(same([](auto& p) { p.originLatitude = kNoNumber; }));
  EXPECT_FALSE(same([&](auto& p) { p.datum = shifted(2e-3, 0, 0); }));
  EXPECT_FALSE(same([&](auto& p) { p.datum = shifted(0, 2e-10, 0); }));
  EXPECT_FALSE(same([&](auto& p) { p.datum = shifted(0, 0, 1e-3f); }));
  ProjectionParameters geographic = base, other = base;
  geographic.type = other.type = ProjectionType::latLong;
  other.falseEasting = other.centralMeridian = 1.0;
  EXPECT_TRUE(*projectionFromParameters(geographic) == *projectionFromParameters(other));
  EXPECT_TRUE(*projectionOf("EPSG:3857") != *projectionOf("EPSG:2227"));
}

TEST(ProjectionTest, StoredParametersGiveTheSameProjection) {
  const auto original = projectionOf(QStringLiteral("EPSG:2227"));
  original->setIdentifier(12);
  const auto restored = projectionFromParameters(original->toParameters());
  const auto copy = original->clone();
  Point a = radians(-121.0, 37.5), b = a, c = a;
  ASSERT_TRUE(original->geographicToPlane(a) && restored->geographicToPlane(b) && copy->geographicToPlane(c));
  EXPECT_EQ(a, b);
  EXPECT_EQ(a, c);
  EXPECT_EQ(copy->identifier(), 12);
  EXPECT_EQ(projectionEpsgCode(*restored), 2227);
  EXPECT_EQ(projectionToWkt(*restored, WktVariant::gdal1), projectionToWkt(*original, WktVariant::gdal1));
  // New parameters take the code and the set-up machinery with them.
  const auto utm = projectionOf(QStringLiteral("EPSG:31983"));
  Point before = radians(-45.0, 0.0), after = before;
  utm->geographicToPlane(before);
  static_cast<GeneralProjection&>(*utm).Init(nullptr, -1, 0.0, Math_Deg_To_Rad(-51.0), 0, 0, 500000.0, 1e7,
                                             0.9996);
  utm->geographicToPlane(after);
  EXPECT_GT(after.x, before.x + 600000.0);
  EXPECT_EQ(projectionEpsgCode(*utm), 31982);
}

TEST(ProjectionTest, ListGivesFreshInstancesAndPrototypes) {
  SProjectionList list;
  for (SProjection* item : list) EXPECT_EQ(item->name(), projectionTypeName(item->type()));
  EXPECT_EQ(list.Size(), 14);
  SProjection* first = list.GetAnInstance(ProjectionType::gaussTm);
  first->DatumName(QStringLiteral("mine"));
  SProjection* second = list.GetAnInstance(ProjectionType::gaussTm);
  EXPECT_NE(first, second);
  EXPECT_EQ(second->name(), "GAUSS - TM");
  EXPECT_EQ(second->datum().name(), "NONE");
  EXPECT_EQ(list.Size(), 14);
}

TEST(DatumTest, KnownDatumsFillOwningLists) {
  DatumList list(List::Ownership::owns);
  list.appendKnown();
  ASSERT_NE(list.find(QStringLiteral("SAD69")), nullptr);
  EXPECT_EQ(list.find(QStringLiteral("SAD69"))->dx(), -67.35f);
  EXPECT_EQ(list.find(QStringLiteral("sad69")), nullptr);
  EXPECT_TRUE(knownDatum(QStringLiteral("nowhere")).isNone());
  DatumList borrowing;
  borrowing.appendKnown();
  EXPECT_EQ(borrowing.Size(), 0);
}

}  // namespace
