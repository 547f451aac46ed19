#include <functional>

#include "kaldex/shapefile.h"
#include "lib/shapefile/shape_layout.h"
#include "shapefile/byte_maker.h"
#include "support/folder_fixture.h"

namespace kaldex::test {
namespace {

class ShapeFileTest : public FolderFixture {
 protected:
  std::string path(const char* name) const {
    return QFile::encodeName(FolderFixture::path(name)).toStdString();
  }
  /// What `write` leaves in a new file.
  QByteArray written(const std::function<bool(ShapeFile&)>& write, int mode = 1) {
    ShapeFile file;
    file.byteOrderMode = mode;
    EXPECT_TRUE(file.OpenFile(path("w.shp").c_str(), "w"));
    EXPECT_TRUE(write(file));
    EXPECT_TRUE(file.CloseFile());
    return read("w.shp");
  }
  /// Opens a file of this content for reading.
  void open(ShapeFile& file, const QByteArray& content) {
    write("r.shp", content);
    ASSERT_TRUE(file.OpenFile(path("r.shp").c_str(), nullptr));
  }
};

template <typename Record>
Record shape(const std::vector<std::int32_t>& starts, const std::vector<double>& xy) {
  Record record;
  record.numParts = static_cast<std::int32_t>(starts.size());
  record.numPoints = static_cast<std::int32_t>(xy.size() / 2);
  EXPECT_TRUE(record.Alloc());
  EXPECT_EQ(record.points, std::vector<double>(xy.size(), 0.0));
  record.parts = starts;
  record.points = xy;
  record.XMinimum = 1;
  record.YMinimum = 2;
  record.XMaximum = 3;
  record.YMaximum = 4.5;
  return record;
}

const std::vector<double> kBox{1, 2, 3, 4.5};
const std::vector<double> kFive{1, 2, 3, 4.5, 2, 2.5, -0.0, 1e300, 1.5, 2};

TEST_F(ShapeFileTest, WritesHeadersAtTheStartWhereverTheStreamStands) {
  ShapeFile file;
  file.MainHeader.ShapeType = 5;
  file.MainHeader.FileLength = 0x01020304;
  file.MainHeader.XMinimum = -1.25;
  file.MainHeader.YMaximum = 8;
  file.IndexHeader = file.MainHeader;
  file.IndexHeader.FileLength = 54;
  ASSERT_TRUE(file.OpenFile(path("h.shp").c_str(), "w"));
  ASSERT_TRUE(file.OpenIndexFile(path("h.shx").c_str(), "w"));
  EXPECT_TRUE(file.WriteHeader());
  EXPECT_TRUE(file.WriteRecordHeader({7, 10}));
  EXPECT_TRUE(file.WriteIndexRecordHeader({50, 10}));
  EXPECT_TRUE(file.WriteHeader());
  EXPECT_TRUE(file.WriteIndexHeader());
  EXPECT_TRUE(file.CloseFile());
  EXPECT_TRUE(file.CloseIndexFile());
  EXPECT_EQ(read("h.shp"), QByteArray(ByteMaker().header(0x01020304, 5, {-1.25, 0, 0, 8}).big({7, 10})));
  EXPECT_EQ(read("h.shx"), QByteArray(ByteMaker().header(54, 5, {-1.25, 0, 0, 8})));

  ShapeFile again;
  ASSERT_TRUE(again.OpenFile(path("h.shp").c_str(), nullptr));
  ASSERT_TRUE(again.OpenIndexFile(path("h.shx").c_str(), nullptr));
  RecordHeader record;
  EXPECT_TRUE(again.ReadHeader());
  EXPECT_TRUE(again.ReadRecordHeader(record));
  EXPECT_TRUE(again.ReadIndexHeader());
  EXPECT_EQ(again.MainHeader.FileLength, 0x01020304);
  EXPECT_EQ(again.MainHeader.XMinimum, -1.25);
  EXPECT_EQ(again.IndexHeader.FileLength, 54);
  EXPECT_EQ(record.RecordNumber, 7);
  EXPECT_EQ(record.ContentLength, 10);
}

TEST_F(ShapeFileTest, RecordsHaveTheFormatsBytesAndComeBack) {
  PointZRecord point;
  point.x = 1.5;
  point.y = -2;
  point.z = 7;
  const QByteArray pointBytes = ByteMaker().little({11}).reals({1.5, -2, 7, 0});
  EXPECT_EQ(written([&](ShapeFile& file) { return file.WritePointZRecord(point); }), pointBytes);
  EXPECT_EQ(pointBytes.size(), kPointZBytes);
  ShapeFile points;
  open(points, pointBytes);
  PointZRecord pointBack;
  EXPECT_TRUE(points.ReadPointZRecord(pointBack));
  EXPECT_EQ(pointBack.z, 7);

  const auto polygon = shape<PolygonRecord>({0, 3}, kFive);
  const QByteArray polygonBytes = ByteMaker().little({5}).reals(kBox).little({2, 5, 0, 3}).reals(kFive);
  EXPECT_EQ(polygonBytes.size(), arcBytes(2, 5));
  EXPECT_EQ(written([&](ShapeFile& file) { return file.WritePolygonRecord(polygon, 1); }), polygonBytes);
  EXPECT_EQ(written([&](ShapeFile& file) {
              return file.WritePolygonRecord(polygon, 0) && file.WritePartsData(2, polygon.parts.data()) &&
                     file.WritePointsData(5, polygon.points.data());
            }),
            polygonBytes);
  ShapeFile polygons;
  open(polygons, polygonBytes);
  PolygonRecord polygonBack;
  EXPECT_TRUE(polygons.ReadPolygonRecord(polygonBack));
  EXPECT_EQ(polygonBack.parts, polygon.parts);
  EXPECT_EQ(polygonBack.points, kFive);
  EXPECT_EQ(polygonBack.YMaximum, 4.5);
}

TEST_F(ShapeFileTest, LinesWithHeightsCarryMeasuresOnlyWhenTheRecordHasThem) {
  auto line = shape<ArcZRecord>({0}, {1, 2, 3, 4.5});
  ASSERT_TRUE(line.AllocZ());
  line.z = {10, 20};
  const QByteArray flat =
      ByteMaker().little({13}).reals(kBox).little({1, 2, 0}).reals({1, 2, 3, 4.5, 0, 0, 10, 20});
  EXPECT_EQ(flat.size(), arcZBytes(1, 2));
  EXPECT_EQ(written([&](ShapeFile& file) { return file.WriteArcZRecord(line); }), flat);
  ASSERT_TRUE(line.AllocM());
  line.MMaximum = 6;
  line.m = {5, 6};
  const QByteArray measured = flat + QByteArray(ByteMaker().reals({0, 6, 5, 6}));
  EXPECT_EQ(written([&](ShapeFile& file) { return file.WriteArcZRecord(line); }), measured);

  // The same bytes, with and without the measures counted in the record's length.
  for (int words : {static_cast<int>(arcZBytes(1, 2) / 2), static_cast<int>(arcZMBytes(1, 2) / 2)}) {
    ShapeFile file;
    open(file, measured);
    ArcZRecord back;
    EXPECT_TRUE(file.ReadArcZRecord(back, words));
    EXPECT_EQ(back.z, line.z);
    EXPECT_EQ(back.m.size(), words == arcZMBytes(1, 2) / 2 ? 2u : 0u);
  }
}

TEST_F(ShapeFileTest, TheByteOrderModeDecidesWhichFieldsAreSwapped) {
  PointRecord point;
  point.x = 1.5;
  const auto record = [&](ShapeFile& file) {
    return file.WriteRecordHeader({1, 10}) && file.WritePointRecord(point) &&
           file.WritePointsData(1, std::vector<double>{1.5, 0}.data());
  };
  const QByteArray right = ByteMaker().big({1, 10}).little({1}).reals({1.5, 0, 1.5, 0});
  EXPECT_EQ(written(record, 1), right);
  const QByteArray mirrored = written(record, 2);
  QByteArray expected = ByteMaker().little({1, 10}).big({1});
  QByteArray real = ByteMaker().reals({1.5});
  std::reverse(real.begin(), real.end());
  for (int i = 0; i < 2; ++i) expected += real + QByteArray(8, '\0');
  EXPECT_EQ(mirrored, expected);

  for (int mode : {0, 3}) {
    ShapeFile file;
    file.byteOrderMode = mode;
    open(file, right);
    RecordHeader header;
    EXPECT_FALSE(record(file));
    EXPECT_FALSE(file.WriteHeader());
    EXPECT_FALSE(file.ReadRecordHeader(header));
    EXPECT_FALSE(file.ReadHeader());
  }
}

TEST_F(ShapeFileTest, OpensAndClosesAsCallersRelyOn) {
  ShapeFile file;
  const double xy[] = {1, 2};
  EXPECT_FALSE(file.CreateFile(path("no/such/folder.shp").c_str()));
  EXPECT_FALSE(file.OpenIndexFile(path("missing.shx").c_str(), nullptr));
  EXPECT_FALSE(file.WriteHeader());
  EXPECT_FALSE(file.WritePointsData(1, xy));
  EXPECT_TRUE(file.CloseFile());
  write("a.shp", "old");
  EXPECT_TRUE(file.CreateFile(path("a.shp").c_str()));
  EXPECT_EQ(read("a.shp"), QByteArray(""));
  write("a.shp", "old");
  EXPECT_TRUE(file.OpenFile(path("a.shp").c_str(), "r"));  // any text but none writes from empty
  EXPECT_TRUE(file.OpenFile(path("no/such/folder.shp").c_str(), "w"));
  EXPECT_TRUE(file.WritePointsData(1, xy));
  EXPECT_FALSE(file.WritePointsData(-1, xy));
  EXPECT_FALSE(file.WritePartsData(1, nullptr));
  const std::int32_t none = 0;
  EXPECT_TRUE(file.WritePartsData(0, &none));
  EXPECT_FALSE(file.WriteMultiPointRecord(MultiPointRecord()));
  EXPECT_TRUE(file.CloseFile());
  EXPECT_EQ(read("a.shp").size(), 16);
  EXPECT_EQ(file.ExportTextShape(nullptr, "t", 0), 1);
  EXPECT_FALSE(QFile::exists("t.shp"));
}

TEST_F(ShapeFileTest, AFullDiskIsToldAtTheLatestWhenTheFileIsClosed) {
  if (!QFile::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  ShapeFile file;
  ASSERT_TRUE(file.OpenFile("/dev/full", "w"));
  EXPECT_TRUE(file.WriteRecordHeader({1, 10}));
  EXPECT_FALSE(file.CloseFile());
}

TEST_F(ShapeFileTest, BlocksAreRefusedForCountsBelowOne) {
  MultiPointRecord points;
  EXPECT_FALSE(points.Alloc());
  points.numPoints = 2;
  EXPECT_TRUE(points.Alloc());
  EXPECT_EQ(points.points.size(), 4u);
  ArcZRecord line;
  line.numPoints = 3;
  EXPECT_FALSE(line.Alloc());
  EXPECT_TRUE(line.AllocZ());
  line.numParts = 1;
  EXPECT_TRUE(line.Alloc());
  ASSERT_NE(line.GetPoints(2), nullptr);
  EXPECT_EQ(line.GetPoints(2), line.points.data() + 4);
  EXPECT_EQ(line.GetPoints(3), nullptr);
  EXPECT_EQ(line.GetPoints(-1), nullptr);
  line.numPoints = -1;
  EXPECT_FALSE(line.Alloc());
  EXPECT_FALSE(line.AllocM());
  EXPECT_EQ(line.GetPoints(0), nullptr);
}

TEST_F(ShapeFileTest, NullShapesClearTheRecord) {
  const QByteArray null = ByteMaker().little({0});
  ShapeFile file;
  open(file, null + null + null);
  PointRecord point;
  point.x = 5;
  auto arc = shape<ArcRecord>({0}, {1, 2, 3, 4});
  MultiPointRecord points;
  points.numPoints = 1;
  points.Alloc();
  EXPECT_TRUE(file.ReadPointRecord(point));
  EXPECT_TRUE(file.ReadArcRecord(arc));
  EXPECT_TRUE(file.ReadMultiPointRecord(points));
  EXPECT_EQ(point.x, 0);
  EXPECT_EQ(arc.numPoints + arc.numParts + points.numPoints, 0);
  EXPECT_EQ(arc.XMaximum, 0);
  EXPECT_TRUE(arc.points.empty() && arc.parts.empty() && points.points.empty());
}

TEST_F(ShapeFileTest, DamagedRecordsAreRefusedBeforeMemoryIsAskedFor) {
  const QByteArray arcHead = ByteMaker().little({3}).reals(kBox);
  const QByteArray cases[] = {
      ByteMaker().little({3}).reals({1, 2}),                           // cut in the box
      arcHead + QByteArray(ByteMaker().little({1, 0x7fffffff, 0})),    // more points than the file has
      arcHead + QByteArray(ByteMaker().little({0x7fffffff, 1})),       // more parts
      arcHead + QByteArray(ByteMaker().little({-1, 1})),               // a negative count
      arcHead + QByteArray(ByteMaker().little({1, 1, 0}).reals({1})),  // cut in the points
      ByteMaker().little({1}).reals({1, 2}),                           // a shape of another family
  };
  for (const QByteArray& content : cases) {
    ShapeFile file;
    open(file, content);
    ArcRecord record;
    EXPECT_FALSE(file.ReadArcRecord(record)) << content.toHex().constData();
    EXPECT_TRUE(record.points.empty());
  }
}

TEST_F(ShapeFileTest, PrintsItsFieldsWithADecimalPoint) {
  ShapeHeader header;
  header.XMinimum = 1.5;
  PointRecord point;
  point.y = -2.25;
  const auto arc = shape<ArcRecord>({0}, {1, 2, 3, 4.5});
  FILE* const out = std::fopen(path("print.txt").c_str(), "wb");
  ASSERT_NE(out, nullptr);
  header.Print(out);
  point.Print(out);
  arc.Print(out);
  std::fclose(out);
  EXPECT_EQ(read("print.txt").toStdString(),
            "Header information:\nFile code: 9994  File length: 0  Version: 1000  Shape Type: 0\n"
            "XMinimum: 1.500000  YMinimum: 0.000000  XMaximum: 0.000000  YMaximum: 0.000000\n\n"
            "Shape type: 1  X: 0.000000  Y: -2.250000\n"
            "Shape type: 3\nXMinimum: 1.000000  YMinimum: 2.000000  XMaximum: 3.000000  YMaximum: 4.500000\n"
            "Number of Points: 2\nPoints:\n1.000000 2.000000\n3.000000 4.500000\n");
}

TEST(ShapeLayoutTest, RefusesWhatLengthsInWordsCannotTell) {
  // Lengths are signed counts of 16-bit words: the file may hold 2^32 - 2 bytes.
  EXPECT_TRUE(fitsShapeFile(100, kPointBytes));
  EXPECT_TRUE(fitsShapeFile(4294967294 - 28, kPointBytes));
  EXPECT_FALSE(fitsShapeFile(4294967294 - 26, kPointBytes));
  EXPECT_FALSE(fitsShapeFile(100, arcBytes(1, 0x7fffffff)));
  EXPECT_EQ(toWords(4294967294), 0x7fffffff);
  EXPECT_TRUE(fitsTableFile(65, 10, (4294967294 - 66) / 10));
  EXPECT_FALSE(fitsTableFile(65, 10, (4294967294 - 66) / 10 + 1));
}

}  // namespace
}  // namespace kaldex::test
