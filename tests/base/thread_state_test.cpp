#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "base/numeric_locale.h"
#include "base/tracer.h"

namespace {

using kaldex::NumericLocaleGuard;

void descend(int levels) {
  const Tracer tracer(__FILE__, levels, "descend");
  if (levels > 1) return descend(levels - 1);
  EXPECT_EQ(Tracer::depth(), 60);
  const auto frames = Tracer::frames();
  ASSERT_EQ(frames.size(), static_cast<std::size_t>(Tracer::kMaxFrames));
  EXPECT_EQ(frames.front().line, 60);
  EXPECT_EQ(frames.back().line, 11);
}

TEST(Tracer, RecordsFiftyFramesAndCountsTheRest) {
  descend(60);
  EXPECT_EQ(Tracer::depth(), 0);
  const Tracer tracer("path.cpp", 12, "ImportLines");
  const auto frames = Tracer::frames();
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_STREQ(frames[0].path, "path.cpp");
  EXPECT_STREQ(frames[0].name, "ImportLines");
}

TEST(Tracer, EachThreadHasItsStack) {
  const Tracer tracer(__FILE__, __LINE__, "outer");
  int depth = -1;
  std::thread([&] { depth = Tracer::depth(); }).join();
  EXPECT_EQ(depth, 0);
}

std::string printedHalf() {
  char text[16];
  std::snprintf(text, sizeof text, "%.1f", 0.5);
  return text;
}

TEST(NumericLocale, TheDecimalCommaRunHasADecimalComma) {
  const char* asked = std::getenv("LC_ALL");
  if (asked == nullptr || std::string(asked).rfind("pt_BR", 0) != 0) GTEST_SKIP();
  EXPECT_EQ(printedHalf(), "0,5");
}

TEST(NumericLocale, GuardGivesThePointToItsThreadOnly) {
  const std::string before = printedHalf();
  const std::string categories = std::setlocale(LC_ALL, nullptr);
  {
    const NumericLocaleGuard outer;
    {
      const NumericLocaleGuard inner;
      EXPECT_EQ(printedHalf(), "0.5");
    }
    EXPECT_EQ(printedHalf(), "0.5");
    EXPECT_GT(MB_CUR_MAX, 1u) << "the character type stays that of the environment";
    std::string elsewhere;
    std::thread([&] { elsewhere = printedHalf(); }).join();
    EXPECT_EQ(elsewhere, before);
  }
  EXPECT_EQ(printedHalf(), before);
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), categories);
}

}  // namespace
