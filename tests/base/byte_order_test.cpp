#include "base/byte_order.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using kaldex::ByteReader;

TEST(ByteOrder, SwapsInPlace) {
  short s = 0x0102;
  int i = 0x01020304;
  std::int32_t l = 0x01020304;
  swapps(&s);
  swappi(&i);
  swappl(&l);
  EXPECT_EQ(s, 0x0201);
  EXPECT_EQ(i, 0x04030201);
  EXPECT_EQ(l, 0x04030201);
  float f = 612.5F;
  double d = -3.25e100;
  swappf(&f);
  swappd(&d);
  EXPECT_NE(f, 612.5F);
  swappf(&f);
  swappd(&d);
  EXPECT_EQ(f, 612.5F);
  EXPECT_EQ(d, -3.25e100);
}

TEST(ByteOrder, LoadsAndStoresAtAnyAddress) {
  unsigned char bytes[17] = {};
  kaldex::storeBig<std::int32_t>(bytes + 1, 9994);
  EXPECT_EQ(bytes[3], 0x27);
  EXPECT_EQ(bytes[4], 0x0A);
  EXPECT_EQ(kaldex::loadBig<std::int32_t>(bytes + 1), 9994);
  kaldex::storeLittle<std::int16_t>(bytes + 5, -2);
  EXPECT_EQ(bytes[5], 0xFE);
  EXPECT_EQ(kaldex::loadLittle<std::int16_t>(bytes + 5), -2);
  kaldex::storeBig<double>(bytes + 9, 1.0);
  EXPECT_EQ(bytes[9], 0x3F);
  EXPECT_EQ(kaldex::loadBig<double>(bytes + 9), 1.0);
}

TEST(ByteOrder, ReaderStopsAtTheEnd) {
  const unsigned char bytes[] = {1, 0, 0, 0, 0, 0, 0, 2, 7};
  ByteReader reader(bytes, sizeof bytes);
  EXPECT_EQ(reader.little<std::int32_t>(), 1);
  EXPECT_EQ(reader.big<std::int32_t>(), 2);
  EXPECT_EQ(reader.remaining(), 1u);
  EXPECT_EQ(reader.little<std::int16_t>(), 0);
  EXPECT_FALSE(reader.ok());
  EXPECT_EQ(reader.little<std::uint8_t>(), 0) << "a failed reader stays failed";
  EXPECT_EQ(reader.take(0), nullptr);
  EXPECT_FALSE(reader.seek(10));
  EXPECT_TRUE(reader.seek(8));
  EXPECT_EQ(reader.little<std::uint8_t>(), 7);
  EXPECT_TRUE(reader.seek(0));
  EXPECT_FALSE(reader.skip(static_cast<std::size_t>(-1))) << "a huge count doesn't wrap";
}

}  // namespace
