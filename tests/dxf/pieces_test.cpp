#include <cmath>
#include <memory>

#include "dxf/dxf_fixture.h"
#include "lib/dxf/arc_points.h"
#include "lib/dxf/drawing_text.h"
#include "lib/dxf/group_scanner.h"
#include "lib/dxf/label_filter.h"
#include "lib/dxf/mesh_chain.h"

namespace kaldex::test {
namespace {

struct Closer {
  void operator()(FILE* file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<FILE, Closer>;

Stream streamOf(const QByteArray& text) {
  Stream stream(std::tmpfile());
  std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stream.get());
  std::rewind(stream.get());
  return stream;
}

// "code=value" of all pairs, and the number of lines.
QString scanned(const QByteArray& text, GroupScanner::Blanks blanks) {
  const Stream stream = streamOf(text);
  GroupScanner scanner;
  QStringList all;
  while (scanner.next(stream.get(), blanks))
    all << QString("%1=%2")
               .arg(scanner.code())
               .arg(QString::fromLatin1(scanner.value().data(), static_cast<int>(scanner.value().size())));
  return QString("%1 (%2)").arg(all.join(' ')).arg(scanner.lines());
}

TEST(GroupScanner, Pairs) {
  const struct {
    QByteArray text;
    const char* strict;
    const char* lenient;
  } cases[] = {
      {"  0\nLINE\n 10 \t\n  1.5  \n", "0=LINE 10=1.5 (5)", "0=LINE 10=1.5 (5)"},
      {"8\n\n0\nLINE\n", "8= 0=LINE (5)", "8=0 (5)"},
      {"\n0\n\n5\n", "0=0 0=5 (5)", "0=5 (5)"},
      {"1\n\n1000\n\n8\nA\n", "1= 1000= 8=A (7)", "1= 1000= 8=A (7)"},
      {"999\nby hand\n0\nEOF\n", "0=EOF (5)", "0=EOF (5)"},
      {"999\n\n0\nEOF\n", "0=EOF (5)", "0=EOF (5)"},
      {"x\ny\n-5\nz\n12ab\nw", "0=y -5=z 12=w (7)", "0=y -5=z 12=w (7)"},
      {"0\n", " (2)", " (2)"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(scanned(one.text, GroupScanner::Blanks::areValues), one.strict);
    EXPECT_EQ(scanned(one.text, GroupScanner::Blanks::arePassedOver), one.lenient);
  }
}

TEST(GroupScanner, ALongLineIsOneLine) {
  const QByteArray whole(1023, 'a');
  for (const int more : {0, 1, 5000}) {
    const Stream stream = streamOf("1\n" + whole + QByteArray(more, 'b') + "\n8\nA\n");
    GroupScanner scanner;
    ASSERT_TRUE(scanner.next(stream.get(), GroupScanner::Blanks::areValues));
    EXPECT_EQ(scanner.value(), std::string(1023, 'a'));
    EXPECT_EQ(scanner.cutLines(), more > 0 ? 1 : 0);
    ASSERT_TRUE(scanner.next(stream.get(), GroupScanner::Blanks::areValues));
    EXPECT_EQ(scanner.code(), 8);
    EXPECT_EQ(scanner.lines(), 4);
  }
}

TEST(DrawingText, CodesAndEncodings) {
  DrawingText latin("", "");
  DrawingText cyrillic("", "ANSI_1251");
  DrawingText dos("", "dos850");
  DrawingText plain("", "ascii");
  DrawingText fixed("windows-1252", "ANSI_1251");
  const struct {
    DrawingText& text;
    QByteArray bytes;
    QString expected;
  } cases[] = {
      {latin, "45%%d %%P0.1 %%c12 %%%%d", "45\u00B0 \u00B10.1 \u230012 %%d"},
      {latin, "%%uunder%%U %%oover%%o %%065 %%06 %%x 100%", "under over A %%06 %%x 100%"},
      {latin, "a\\U+00E7a \\u+4E2d \\U+12 \\U+0000", "a\u00E7a \u4E2D \\U+12 \\U+0000"},
      {latin, "\\M+182A0 \\M+9ABCD", "\u3042 \\M+9ABCD"},
      {latin, "a\xE7\xE3o", "a\u00E7\u00E3o"},
      {latin, "a\xC3\xA7", "a\u00E7"},
      {cyrillic, "\xCF\xEB\xE0\xED", "\u041F\u043B\u0430\u043D"},
      {dos, "a\x87", "a\u00E7"},
      {plain, "a\xE7", "a\u00E7"},
      {fixed, "\xC3\xA7\x80", "\u00C3\u00A7\u20AC"},
      {latin, QByteArray("ab\0cd", 5), "ab"},
  };
  for (const auto& one : cases)
    EXPECT_EQ(one.text.text({one.bytes.constData(), static_cast<std::size_t>(one.bytes.size())}),
              one.expected);
  EXPECT_EQ(latin.name("50%%d"), "50%%d");
  EXPECT_EQ(latin.encoding(), "UTF-8");
  EXPECT_EQ(cyrillic.encoding(), "windows-1251");
  EXPECT_EQ(drawingBytes("a\u00E7\u4E2D\nb"), QByteArray("a\xE7\\U+4E2D b"));
  EXPECT_EQ(latin.text("a\xE7\\U+4E2D b"), "a\u00E7\u4E2D b");
}

TEST(ArcPoints, Steps) {
  std::vector<double> xy;
  ASSERT_TRUE(appendArc({10, 20, 2, 0, 90}, xy));
  EXPECT_EQ(xy.size(), 2u * 91);
  EXPECT_EQ(xy[0], 12.0);
  EXPECT_NEAR(xy[180], 10.0, 1e-6);
  EXPECT_NEAR(xy[181], 22.0, 1e-6);
  xy.clear();
  // Across 0 degrees, with an end that is no whole step: 350, 351, ... 369, and 369.5 exactly.
  ASSERT_TRUE(appendArc({0, 0, 1, 350, 9.5}, xy));
  EXPECT_EQ(xy.size(), 2u * 21);
  EXPECT_DOUBLE_EQ(xy[40], std::cos(9.5 * 0.017453293));
  EXPECT_DOUBLE_EQ(xy[41], std::sin(9.5 * 0.017453293));
  xy.clear();
  ASSERT_TRUE(appendArc({0, 0, 1, 30, 30}, xy));
  EXPECT_EQ(xy.size(), 2u);
  xy.clear();
  for (const double end : {1e18, std::nan(""), HUGE_VAL}) EXPECT_FALSE(appendArc({0, 0, 1, 0, end}, xy));
  EXPECT_TRUE(xy.empty());
  appendCircle({3, 4, 0.5, 0, 0}, xy);
  EXPECT_EQ(xy.size(), 2u * 361);
  EXPECT_EQ(xy[0], 3.5);
  EXPECT_EQ(xy[1], 4.0);
}

TEST(MeshChain, EdgesThatFollowEachOtherAreOneLine) {
  MeshChain mesh;
  for (const double x : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}) mesh.addVertex(x, 10 * x);
  mesh.addFace({-4, 1, -2, 3});  // 1 to 2, 3 to 4
  mesh.addFace({-5, 3, -2, 4});  // 3 to 2, 4 to 5
  mesh.addFace({1, 2, 3, 4});    // shows other edges
  mesh.addFace({-9, 6, -6, 1});  // of which one leads out of the list
  std::vector<double> xy;
  EXPECT_EQ(mesh.join(xy), 1u);
  EXPECT_EQ(xy, (std::vector<double>{1, 10, 2, 20, 3, 30, 4, 40, 5, 50}));
  mesh.clear();
  xy.clear();
  EXPECT_EQ(mesh.join(xy), 0u);
  EXPECT_TRUE(xy.empty());
}

TEST(MeshChain, ManyEdgesAreNoQuadraticWork) {
  constexpr int count = 200000;
  MeshChain mesh;
  for (int i = 0; i <= count; ++i) mesh.addVertex(i, 0);
  mesh.addFace({-3, 1, -2, 2});
  for (int i = count; i >= 4; i -= 2) mesh.addFace({-i, i - 1, -i, i + 1});
  std::vector<double> xy;
  EXPECT_EQ(mesh.join(xy), 0u);
  EXPECT_EQ(xy.size(), 2u * (count + 1));
}

TEST(LabelFilter, PrefixSuffixAndKind) {
  const struct {
    LabelFilter filter;
    const char* text;
    bool taken;
  } cases[] = {
      {{0, "", ""}, "any", true},   {{0, "Q", ""}, "Q12", true},    {{0, "Q", ""}, "12Q", false},
      {{0, "", "-A"}, "7-A", true}, {{0, "", "-A"}, "7-A-", false}, {{0, "", "aa"}, "xaa", false},
      {{1, "", ""}, "Rua", true},   {{1, "", ""}, "Rua 1", false},  {{2, "", ""}, "0042", true},
      {{2, "", ""}, "4.2", false},  {{3, "", ""}, "A1", true},      {{3, "", ""}, "A 1", false},
  };
  for (const auto& one : cases) EXPECT_EQ(one.filter.takes(one.text), one.taken) << one.text;
}

}  // namespace
}  // namespace kaldex::test
