#include "kaldex/model/angle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kaldex/model/geometry.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

QString encoded(double angle, short kind, bool portuguese = true) {
  QString text = QStringLiteral("what stood there");
  return Encode(angle, kind, text, portuguese);
}

double decoded(const QString& text, short kind) {
  short degrees = 0, minutes = 0;
  double seconds = 0.0;
  return Decode(text, kind, degrees, minutes, seconds);
}

TEST(AngleTest, WritesLetterDegreesMinutesAndSeconds) {
  const struct {
    double degrees;
    short kind;
    const char* text;
  } cases[] = {
      {-(23 + 10 / 60.0 + 5.2 / 3600.0), kLatitudeKind, "S 23 10 5.20000"},
      {-(45 + 30 / 60.0 + 10.5 / 3600.0), kLongitudeKind, "O 45 30 10.50000"},
      {0.0, kLatitudeKind, "N 0 0 0.00000"},
      {-1e-12, kLongitudeKind, "E 0 0 0.00000"},
      {10 + 59 / 60.0 + 59.999996 / 3600.0, kLatitudeKind, "N 11 0 0.00000"},
      {-59.999996 / 3600.0, kLongitudeKind, "O 0 1 0.00000"},
      {90.0, kLatitudeKind, "N 90 0 0.00000"},
      {-180.0, kLongitudeKind, "O 180 0 0.00000"},
      {190.0, kLongitudeKind, "O 170 0 0.00000"},
      {90.1, kLatitudeKind, ""},
  };
  for (const auto& c : cases) EXPECT_EQ(encoded(Math_Deg_To_Rad(c.degrees), c.kind).toStdString(), c.text);
  EXPECT_EQ(encoded(-1.0, kLongitudeKind, false).left(1), "W");
  for (double bad : {kNoNumber, kInfinity, -kInfinity, kUnsetValue}) {
    EXPECT_TRUE(encoded(bad, kLatitudeKind).isEmpty());
    EXPECT_TRUE(encoded(bad, kLongitudeKind).isEmpty());
  }
}

TEST(AngleTest, WhatWasWrittenReadsBackToTheSameText) {
  for (int i = 0; i < 200000; ++i) {
    // Steps that share nothing with the grid of seconds.
    const double angle = std::fmod(i * 0.7390851332151607, 2.0 * kPi) - kPi;
    const short kind = std::fabs(angle) <= kPi / 2.0 && i % 2 == 0 ? kLatitudeKind : kLongitudeKind;
    const QString text = encoded(angle, kind);
    const double back = decoded(text, kind);
    ASSERT_NEAR(back, angle, 2.5e-11) << text.toStdString();
    ASSERT_EQ(encoded(back, kind), text);
  }
}

TEST(AngleTest, ReadsOtherWritersForms) {
  short degrees = 0, minutes = 0;
  double seconds = 0.0;
  const double angle = Decode(QStringLiteral(" s 23 10 5.20"), kLatitudeKind, degrees, minutes, seconds);
  EXPECT_DOUBLE_EQ(angle, -Math_Deg_To_Rad(23 + 10 / 60.0 + 5.2 / 3600.0));
  EXPECT_EQ(degrees, 23);
  EXPECT_EQ(minutes, 10);
  EXPECT_EQ(seconds, 5.2);
  for (const char* west : {"O 45 30 10", "o 45 30 10.", "W  45 30  10.0000000", "w 45 30 10 "}) {
    EXPECT_DOUBLE_EQ(decoded(west, kLongitudeKind), -Math_Deg_To_Rad(45 + 30 / 60.0 + 10 / 3600.0)) << west;
  }
  EXPECT_DOUBLE_EQ(decoded(QStringLiteral("N 1 59 60.00"), kLatitudeKind), Math_Deg_To_Rad(2.0));
}

TEST(AngleTest, RefusesBadText) {
  const QStringList latitudes = {"",
                                 "S",
                                 "S 23 10",
                                 "S 23 10 5 1",
                                 "S23 10 5.2",
                                 "23 10 5.2 S",
                                 "E 23 10 5.2",
                                 "O 23 10 5.2",
                                 "S -23 10 5.2",
                                 "S 23 +10 5.2",
                                 "S 23 10 -5.2",
                                 "S 23 10 5,2",
                                 "S 23 10 1e1",
                                 "S 23 10 nan",
                                 "S 23 10 .",
                                 "S 23.5 10 5",
                                 "S 23 60 5",
                                 "S 23 10 60.00001",
                                 "S 90 0 0.00001",
                                 "S\t23 10 5.2"};
  const QStringList longitudes = {"S 23 10 5.2", "X 23 10 5.2", "E 180 0 1", "E 99999999999 0 0"};
  for (const short kind : {kLatitudeKind, kLongitudeKind}) {
    for (const QString& text : kind == kLatitudeKind ? latitudes : longitudes) {
      short degrees = 9, minutes = 9;
      double seconds = 9.0;
      EXPECT_EQ(Decode(text, kind, degrees, minutes, seconds), kUnsetValue) << text.toStdString();
      EXPECT_EQ(degrees + minutes + seconds, 0.0) << text.toStdString();
    }
  }
}

}  // namespace
