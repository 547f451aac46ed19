#include "base/number_text.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "base/numeric_locale.h"

// The C library's own answers, taken with a decimal point, are the measure; ours are taken under the run's
// locale.

namespace {

using kaldex::NumericLocaleGuard;
using kaldex::TextScan;

const double kEdges[] = {
    // Ties, and values a hair off one.
    0.5, 1.5, 2.5, 0.125, 0.375, 5e-7, 4.9999999e-7, 0.9999995, 0.99999949999, 999999.9999995, 9.5, 99.5,
    4503599627370496.5,
    // Where whole part, mantissa or 64 bits end.
    0.0, 1e-7, 1.0 / 3, 1e15, 9007199254740993.0, 1.8446744073709549e19, 1.8446744073709552e19,
    3.689348814741910e19, 1e22, 1e23, 3.4e+37, 6.5e-29, FLT_MAX, DBL_MAX, DBL_MIN, DBL_TRUE_MIN,
    std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};

class Numbers {
 public:
  // One of the shapes in which rounding is delicate, or any bit pattern.
  double next() {
    const double sign = (random_() & 1) != 0 ? -1.0 : 1.0;
    switch (random_() % 6) {
      case 0: {
        const std::uint64_t bits = random_();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
      }
      case 1:
        return sign * static_cast<double>(random_() % 20000000000000ULL) / 1e6;
      case 2:  // exact ties among them
        return sign *
               std::ldexp(static_cast<double>(random_() % 10000000000ULL), -static_cast<int>(random_() % 20));
      case 3:
        return sign * std::ldexp(static_cast<double>(random_() >> 11), -static_cast<int>(random_() % 130));
      case 4:
        return std::nextafter(static_cast<double>(random_() % 100000) / 1000.0, sign * DBL_MAX);
      default:
        return sign * static_cast<double>(random_());
    }
  }
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

 private:
  std::mt19937_64 random_{20240229};
};

std::string printed(const char* format, int precision, double value) {
  const NumericLocaleGuard guard;
  char text[512];
  std::snprintf(text, sizeof text, format, precision, value);
  return text;
}

std::string fixed(double value, int decimals) {
  std::string text;
  kaldex::appendFixed(text, value, decimals);
  return text;
}

std::string general(double value, int precision) {
  std::string text;
  kaldex::appendGeneral(text, value, precision);
  return text;
}

TEST(NumberText, PrintsEdgeValuesAsPrintfDoes) {
  for (const double edge : kEdges) {
    for (const double value : {edge, -edge}) {
      for (int n = 0; n <= kaldex::kMaxDecimals; ++n) {
        EXPECT_EQ(printed("%.*f", n, value), fixed(value, n)) << n;
        EXPECT_EQ(printed("%.*g", n, value), general(value, n)) << n;
      }
    }
  }
}

TEST(NumberText, PrintsRandomValuesAsPrintfDoes) {
  Numbers numbers;
  for (int i = 0; i < 150000; ++i) {
    const double value = numbers.next();
    const int n = numbers.below(13);
    ASSERT_EQ(printed("%.*f", n, value), fixed(value, n)) << std::hexfloat << value;
    ASSERT_EQ(printed("%.*g", n, value), general(value, n)) << std::hexfloat << value;
  }
}

TEST(NumberText, KeepsWidthsAndCapacities) {
  EXPECT_EQ(fixed(-DBL_MAX, kaldex::kMaxDecimals).size(), 1u + 309 + 1 + kaldex::kMaxDecimals);
  EXPECT_LE(1u + 309 + 1 + kaldex::kMaxDecimals, kaldex::kNumberTextCapacity);
  std::string text;
  kaldex::appendInt(text, LLONG_MIN);
  EXPECT_EQ(text, "-9223372036854775808");
  EXPECT_EQ(kaldex::fixedText(5.2, 2, 10), "      5.20");
  EXPECT_EQ(kaldex::fixedText(-123456.789, 2, 4), "-123456.79");
  EXPECT_EQ(fixed(1.25, -1), "1");
  EXPECT_EQ(fixed(0.5, 99), "0.50000000000000000");
}

// Texts glued from pieces that meet in unlikely ways: cut exponents, bare prefixes, half words, values out of
// range.
class Texts {
 public:
  std::string next() {
    static const QStringList pieces =
        QString::fromLatin1(
            "0|1|12|007|2.5|1,5|9007199254740993|16777217|123456789012345678901234567890|0.1|.|..|e|E|e+|e-5|"
            "E7|e22|e-23|e400|"
            "e-400|e99999999999999999999|5e-324|3.4028236e38|1.17549e-38|x|0x|0X1|p|p3|p-2|a|f|inf|INFI|"
            "inity|nan|NaN|+|-|,|abc|"
            "\xE9| |\t|\n|\v")
            .split(QLatin1Char('|'));
    QString text;
    for (int i = numbers_.below(7); i > 0; --i) text += pieces[numbers_.below(pieces.size())];
    return text.toLatin1().toStdString();
  }

 private:
  Numbers numbers_;
};

template <typename Real>
bool sameBits(Real a, Real b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(NumberText, ScansTextsAsScanfDoes) {
  Texts texts;
  for (int i = 0; i < 60000; ++i) {
    const std::string text = texts.next();
    double x = -7, y = -7, ourX = -7, ourY = -7;
    float z = -7, ourZ = -7;
    short s = -7, ourS = -7;
    int d = -7, ourD = -7, used = -1;
    char word[256] = "?";
    std::string_view ourWord = "?";
    int reals = 0, mixed = 0;
    {
      const NumericLocaleGuard guard;
      reals = std::sscanf(text.c_str(), "%lf %lf %f%n", &x, &y, &z, &used);
      mixed = std::sscanf(text.c_str(), "%hd %255s %d", &s, word, &d);
    }
    ASSERT_EQ(reals, kaldex::scanReals(text, &ourX, &ourY, &ourZ)) << text;
    ASSERT_TRUE(sameBits(x, ourX) && sameBits(y, ourY) && sameBits(z, ourZ)) << text;
    TextScan scan(text);
    if (scan.readAll(ourX, ourY, ourZ) == 3) {
      ASSERT_EQ(text.substr(static_cast<std::size_t>(used)), scan.rest());
    }
    ASSERT_EQ(mixed, TextScan(text).readAll(ourS, ourWord, ourD)) << text;
    ASSERT_TRUE(s == ourS && d == ourD && word == ourWord) << text;
  }
}

TEST(NumberText, ReadsPrefixesAsStrtodAndStrtolDo) {
  Texts texts;
  for (int i = 0; i < 60000; ++i) {
    const std::string text = texts.next();
    const NumericLocaleGuard guard;
    char* end = nullptr;
    std::size_t used = 0;
    const double real = std::strtod(text.c_str(), &end);
    ASSERT_TRUE(sameBits(real, kaldex::textToReal(text, &used))) << text;
    ASSERT_EQ(static_cast<std::size_t>(end - text.c_str()), used) << text;
    const long integer = std::strtol(text.c_str(), &end, 10);
    ASSERT_EQ(integer, kaldex::textToInteger(text, &used)) << text;
    ASSERT_EQ(static_cast<std::size_t>(end - text.c_str()), used) << text;
  }
}

TEST(NumberText, FewerTargetsReadFewerNumbers) {
  double x = 0, y = 0;
  EXPECT_EQ(kaldex::scanReals("1 2 3", &x), 1);
  EXPECT_EQ(kaldex::scanReals("1 2 3", &x, &y), 2);
  EXPECT_EQ(kaldex::scanReals("END", &x, &y), 0);
  EXPECT_EQ(kaldex::scanReals(" \t", &x, &y), -1);
  // The text needs no terminator, and what stands behind it isn't looked at.
  EXPECT_EQ(kaldex::scanReals(std::string_view("12e5", 3), &x), 1);
  EXPECT_EQ(x, 12.0);
}

}  // namespace
