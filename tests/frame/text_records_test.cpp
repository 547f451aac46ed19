#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "frame/open_handler.h"

namespace kaldex::test {

namespace {

/// Lines as LerLinha gives them, each begun afresh; the last entry is what the buffer held at the end of the
/// file.
QStringList linesOf(OpenHandler& handler) {
  QStringList lines;
  EXPECT_TRUE(handler.openFile("r"));
  int result = 0;
  do {
    handler.clearLine();
    result = handler.LerLinha();
    lines << QString::fromLatin1(handler.line);
  } while (result == 1);
  EXPECT_EQ(handler.file, nullptr);
  return lines;
}

TEST_F(FrameFixture, LinesOfAFile) {
  const std::pair<QByteArray, QStringList> cases[] = {
      {"a\nb\n", {"a", "b", ""}},
      {" \t a b \n", {"a b ", ""}},
      {"\n  \n\t\nx\n", {"x", ""}},
      {"// c\n  // d\nx // e\n", {"x // e", ""}},
      {"a\nlast", {"a", "last"}},
      {"//", {"//"}},
      {"/\n", {"/", ""}},
      {"\xE7\n", {"ç", ""}},
      {"", {""}},
  };
  for (const auto& [content, lines] : cases) {
    EXPECT_EQ(linesOf(*handlerFor(content)), lines) << content.toStdString();
  }
  EXPECT_TRUE(messages.shown.empty());
}

TEST_F(FrameFixture, ALineGoesOnBehindAWord) {
  auto handler = handlerFor("123.4  5 6\n//\nx\n/\n/y\nz\n");
  ASSERT_TRUE(handler->openFile("r"));
  ASSERT_TRUE(handler->readWordIntoLine());
  EXPECT_EQ(handler->LerLinha(), 1);
  EXPECT_STREQ(handler->line, "123.4  5 6");
  ASSERT_TRUE(handler->readWordIntoLine());
  EXPECT_STREQ(handler->line, "//");
  EXPECT_EQ(handler->LerLinha(), 0) << "text that begins as a comment never becomes a line";
  EXPECT_EQ(handler->file, nullptr);
}

// The buffer behind a fresh line's terminator is blank to its end, whatever stood there before.
TEST_F(FrameFixture, BlanksStandBehindALine) {
  auto handler =
      handlerFor(QByteArray(300, 'x') + "\n// " + QByteArray(500, 'c') + "\nshort\nword and more\ny\n");
  const auto blankBehind = [&] {
    const char* const end = handler->line + sizeof handler->line;
    const char* const begin = handler->line + std::strlen(handler->line) + 1;
    return std::all_of(begin, end, [](char c) { return c == ' '; });
  };
  ASSERT_TRUE(handler->openFile("r"));
  handler->setLine(std::string(20000, 'z').c_str());
  for (const char* expected : {static_cast<const char*>(nullptr), "short", "word and more", "y"}) {
    handler->clearLine();
    EXPECT_EQ(handler->LerLinha(), 1);
    if (expected != nullptr) {
      EXPECT_STREQ(handler->line, expected);
    }
    EXPECT_TRUE(blankBehind()) << handler->line;
  }
  handler->FileClose();

  // A word may hold zeros, behind which no string function looks.
  handler = handlerFor("x\n" + QByteArray("a\0", 2) + QByteArray(300, 'b') + "\nshort\n");
  ASSERT_TRUE(handler->openFile("r"));
  EXPECT_EQ(handler->LerLinha(), 1);
  ASSERT_TRUE(handler->readWordIntoLine());
  handler->clearLine();
  EXPECT_EQ(handler->LerLinha(), 1);
  EXPECT_STREQ(handler->line, "short");
  EXPECT_TRUE(blankBehind());
  handler->FileClose();
}

TEST_F(FrameFixture, OverlongLinesAreRefusedOnce) {
  auto handler = handlerFor(QByteArray(32767, '1') + "\n//" + QByteArray(50000, 'c') + "\n" +
                            QByteArray(32768, '2') + "\n3\n");
  ASSERT_TRUE(handler->openFile("r"));
  handler->clearLine();
  EXPECT_EQ(handler->LerLinha(), 1);
  EXPECT_EQ(std::strlen(handler->line), 32767u);
  handler->clearLine();
  EXPECT_EQ(handler->LerLinha(), 0);
  EXPECT_EQ(handler->file, nullptr);
  handler->inconsistent("what the reader says of it afterwards");
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!" + QString(1000, '2'));

  handler = handlerFor(QByteArray(500000, '7') + " 8\n");
  ASSERT_TRUE(handler->openFile("r"));
  ASSERT_TRUE(handler->readWordIntoLine());
  EXPECT_EQ(std::strlen(handler->line), sizeof handler->line - 1);
  EXPECT_EQ(handler->LerLinha(), 0);
  EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!" + QString(1000, '7'));
}

TEST_F(FrameFixture, LatitudeAndLongitude) {
  const double latitude = -Math_Deg_To_Rad(23 + 10 / 60.0 + 5.2 / 3600.0);
  const double longitude = -Math_Deg_To_Rad(45 + 30 / 60.0 + 10.5 / 3600.0);
  const auto plain = latLongProjection();
  OpenHandler handler;
  init(handler, "x", nullptr, 0, plain.get());
  const auto none = static_cast<float>(kUnsetValue);
  const struct {
    const char* text;
    int result;
    double x, y;  // degrees of the sign, or what a failure says
    float z;
  } cases[] = {
      {"s 23 10 5.20 o 45 30 10.50", 1, longitude, latitude, none},
      {"O 45 30 10.5   S 23 10 5.2", 1, longitude, latitude, none},
      {"S\t23 10 5.20\t\tw 45 30 10.50 z 612.5", 1, longitude, latitude, 612.5f},
      {"s 23 10 5.20 o 45 30 10.50 Z", 1, longitude, latitude, 0.0f},
      {"n 23 10 5.20 e 45 30 10.50Z-3", 1, -longitude, -latitude, -3.0f},
      {"END", 0, 0, 0, 7.0f},
      {"x 1 2 3", 0, -1, -1, 7.0f},
      {"", 0, -1, -1, 7.0f},
      {"s", 0, -1, -1, 7.0f},
      {"s 23 10 5.20", 0, -1, -1, 7.0f},
      {"s 23 10 5.20 n 45 30 10.50", 0, -1, -1, 7.0f},
      {"s 99 10 5.20 o 45 30 10.50", 0, -1, -1, 7.0f},
      {"s 23 10 5,20 o 45 30 10.50", 0, -1, -1, 7.0f},
      {"s 23 10 5.20 o 45 30 10.50 x", 0, -1, -1, 7.0f},
  };
  for (const auto& one : cases) {
    handler.setLine(one.text);
    Point point;
    float z = 7.0f;
    EXPECT_EQ(handler.LerLatLong(plain.get(), point, z), one.result) << one.text;
    const double scale = one.result == 1 ? 180 / kPi : 1.0;
    EXPECT_NEAR(point.x, one.x * scale, 1e-9) << one.text;
    EXPECT_NEAR(point.y, one.y * scale, 1e-9) << one.text;
    if (one.result == 1) {
      EXPECT_EQ(z, one.z) << one.text;
    }
  }
  std::uint32_t bits = 0;
  std::memcpy(&bits, &none, sizeof bits);
  EXPECT_EQ(bits, 0x7DCCA14Bu);
  handler.setLine((std::string("s 23 10 5.") + std::string(30000, '2') + " o 45 30 10.5").c_str());
  Point point;
  float z = 0;
  EXPECT_EQ(handler.LerLatLong(plain.get(), point, z), 0) << "longer than any angle";
}

class Transfer : public FrameFixture {
 protected:
  Point transferred(int units, SProjection* source, SProjection* target, Point point) {
    OpenHandler handler;
    init(handler, "x", nullptr, units, source);
    handler.TransfCoord(target, &point);
    return point;
  }
};

TEST_F(Transfer, EqualProjectionsLeaveLengthsAlone) {
  const auto one = utmProjection("SAD69");
  const auto same = utmProjection("SAD69");
  for (const int units : {0, 1, 2, 3, 6, 9, -1}) {
    const Point point = transferred(units, one.get(), same.get(), {400000, 7400000});
    EXPECT_TRUE(point == Point(400000, 7400000)) << units;
  }
  Point expected(-0.8, -0.4);
  same->geographicToPlane(expected);
  EXPECT_TRUE(transferred(4, one.get(), same.get(), {-0.8, -0.4}) == expected);
  EXPECT_TRUE(transferred(5, one.get(), same.get(), {-0.8, -0.4}) == expected);
  EXPECT_TRUE(transferred(0, nullptr, same.get(), {1, 2}) == Point(1, 2))
      << "an unknown source is the target's";
}

// Lengths change their datum on the way as angles do: both ways end at the same place, some sixty metres from
// where they would without the shift.
TEST_F(Transfer, BothWaysShiftTheDatum) {
  const auto source = utmProjection("SAD69");
  const auto target = utmProjection("WGS84");
  const Point plane(400000, 7400000);
  Point geographic = plane;
  source->planeToGeographic(geographic);
  const Point byLength = transferred(0, source.get(), target.get(), plane);
  const Point byAngle = transferred(4, source.get(), target.get(), geographic);
  EXPECT_NEAR(byLength.x, byAngle.x, 1e-6);
  EXPECT_NEAR(byLength.y, byAngle.y, 1e-6);
  const double shift = std::hypot(byLength.x - plane.x, byLength.y - plane.y);
  EXPECT_GT(shift, 30.0);
  EXPECT_LT(shift, 100.0);
  EXPECT_EQ(source->destination(), nullptr) << "nothing stays set on a borrowed projection";

  OpenHandler handler;
  init(handler, "x", nullptr, 0, source.get());
  QString longitude, latitude;
  Encode(geographic.x, kLongitudeKind, longitude);
  Encode(geographic.y, kLatitudeKind, latitude);
  handler.setLine((longitude + "  " + latitude).toLatin1().constData());
  Point byText;
  float z = 0;
  EXPECT_EQ(handler.LerLatLong(target.get(), byText, z), 1);
  EXPECT_NEAR(byText.x, byLength.x, 1e-3);
  EXPECT_NEAR(byText.y, byLength.y, 1e-3);
  // A unit that is neither has no first step: the numbers are taken for angles of the target.
  Point direct = geographic;
  target->geographicToPlane(direct);
  EXPECT_TRUE(transferred(9, source.get(), target.get(), geographic) == direct);
}

TEST_F(FrameFixture, DelimitedRecords) {
  const struct {
    const char* separator;
    const char* line;
    int count;
    QStringList fields;
    const char* lineAfter;
  } cases[] = {
      {";", "a;;b", 3, {"a", "", "b"}, "a;;b"},
      {";", "1,5;2", 2, {"1.5", "2"}, "1.5;2"},
      {";", "1,5,7;a,b; ,3", 3, {"1.5.7", "a,b", ",3"}, "1.5.7;a,b; ,3"},
      {",", "1,5", 2, {"1", "5"}, "1,5"},
      {";", " a ; b ;  ", 3, {"a", "b", ""}, " a ; b ;"},
      {";", ";a", 1, {"a"}, ";a"},
      {";", ";;a", 2, {"", "a"}, ";;a"},
      {";", ";", 1, {""}, ";"},
      {";", "1;2;3;4;5;6;7;8", 8, {"1", "2", "3", "4", "5", "6"}, "1;2;3;4;5;6;7;8"},
      {"", "a b", 1, {"a b"}, "a b"},
      {" ", "a  b", 2, {"a", "b"}, "a  b"},
      {"|;", "a||b;;c|", 5, {"a", "", "b", "c", ""}, "a||b;;c|"},
  };
  for (const auto& one : cases) {
    OpenHandler handler;
    init(handler, "x", one.separator);
    handler.setLine(one.line);
    short count = -1;
    std::vector<std::vector<char>> fields(6, std::vector<char>(4096, 'x'));
    EXPECT_EQ(handler.LerComSeparator(&count, fields[0].data(), fields[1].data(), fields[2].data(),
                                      fields[3].data(), fields[4].data(), fields[5].data()),
              1)
        << one.line;
    EXPECT_EQ(count, one.count) << one.line;
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(QString::fromLatin1(fields[static_cast<size_t>(i)].data()), one.fields.value(i))
          << one.line << i;
    }
    EXPECT_STREQ(handler.line, one.lineAfter);
  }
}

TEST_F(FrameFixture, DelimitedRecordsThatAreRefused) {
  const std::pair<std::string, QString> cases[] = {{"", ""},
                                                   {"   ", ""},
                                                   {"a;" + std::string(4096, 'f'), "a;" + QString(998, 'f')},
                                                   {std::string(28672, ';'), QString(1000, ';')}};
  for (const auto& [line, shown] : cases) {
    auto handler = handlerFor("x\n", ";");
    ASSERT_TRUE(handler->openFile("r"));
    handler->setLine(line.c_str());
    short count = -1;
    std::vector<char> field(4096);
    char* const to = field.data();
    EXPECT_EQ(handler->LerComSeparator(&count, to, to, to, to, to, to), 0);
    EXPECT_EQ(messages.take(), "Arquivo INCONSISTENTE!" + shown);
    EXPECT_EQ(handler->file, nullptr);
  }
}

TEST_F(FrameFixture, SeparatorOfAFile) {
  const std::pair<QByteArray, const char*> cases[] = {
      {"a;b,c\n", ";"},   {"a;;b\n", nullptr}, {"a;;b|c\n", "|"}, {"a,\n", ","},         {",a\n", nullptr},
      {"abc\n", nullptr}, {"a;b", nullptr},    {"", nullptr},     {"// x;y\na,b\n", ","}};
  for (const auto& [content, separator] : cases) {
    auto handler = handlerFor(content);
    const char* const found = handler->GetSeparator();
    EXPECT_EQ(QString(found), QString(separator)) << content.toStdString();
    EXPECT_EQ(handler->file, nullptr);
  }
}

TEST_F(FrameFixture, TypesOfColumns) {
  const struct {
    const char* separator;
    QByteArray row;
    std::vector<short> types;
  } cases[] = {
      {";", "123;1234;1.5;12/03/2001;12/x;0;abc;123456789012", {0, 1, 1, 2, 3, 3, 3, 3}},
      {";", "1,5;;/1;1#2;-5;12345678901;1.;1 2", {1, 3, 3, 3, 3, 1, 0, 3}},
      {",", "1.5,12.34,", {0, 1, 3}},
  };
  for (const auto& one : cases) {
    auto handler = handlerFor("header\n" + one.row + "\n", one.separator);
    ASSERT_TRUE(handler->openFile("r"));
    const std::unique_ptr<short[]> types(handler->LerTypes());
    ASSERT_NE(types, nullptr);
    EXPECT_EQ(std::vector<short>(types.get(), types.get() + one.types.size()), one.types);
    EXPECT_EQ(std::ftell(handler->file), 0);
    handler->FileClose();
  }
  const std::pair<QByteArray, QString> failing[] = {
      {"header\n", ""},
      {"header\nlast", ""},
      {"h\n1" + QByteArray(";1").repeated(256) + "\n", "1" + QString(";1").repeated(256)}};
  for (const auto& [content, shown] : failing) {
    auto handler = handlerFor(content, ";");
    ASSERT_TRUE(handler->openFile("r"));
    EXPECT_EQ(handler->LerTypes(), nullptr);
    EXPECT_EQ(messages.take(), shown.isEmpty() ? "" : "Arquivo INCONSISTENTE!" + shown);
    EXPECT_EQ(handler->file, nullptr);
  }
}

TEST_F(Transfer, ExportedCoordinates) {
  Project project(1, "P", latLongProjection());
  const auto exported = [&](short format, QString& longitude, QString& latitude) {
    OpenHandler handler;
    init(handler, "x", nullptr, 0, nullptr, format, &project);
    Point point(-45.5, -23.25);
    EXPECT_EQ(handler.ExpCoord(&point.x, &point.y, longitude, latitude), 1);
    return point;
  };
  QString longitude, latitude;
  EXPECT_TRUE(exported(0, longitude, latitude) == Point(-45.5, -23.25));
  EXPECT_TRUE(exported(1, longitude, latitude) == Point(-45.5, -23.25));
  EXPECT_EQ(longitude, "O 45 30 0.00000");
  EXPECT_EQ(latitude, "S 23 15 0.00000");
  EXPECT_NEAR(exported(2, longitude, latitude).x, -45.5, 1e-12);
  EXPECT_NEAR(exported(3, longitude, latitude).y, -23.25 * 3600, 1e-8);
  EXPECT_NEAR(exported(77, longitude, latitude).y, -23.25 * 3600, 1e-8);
}

}  // namespace

}  // namespace kaldex::test
