#include "shapefile/import_fixture.h"

namespace kaldex::test {
namespace {

void putBig(QByteArray& bytes, int at, qint32 value) {
  qToBigEndian(value, bytes.data() + at);
}
qint32 big(const QByteArray& bytes, int at) {
  return qFromBigEndian<qint32>(bytes.constData() + at);
}

/// Files that are not as they should be.
class ShapeImportDamageTest : public ImportFixture {
 protected:
  void writeLines(int count) {
    std::vector<TestShape> shapes;
    for (int i = 0; i < count; ++i) {
      TestShape shape{{{0.0, 1.0 * i, 10.0 + i, 1.0 * i}}};
      if (i % 3 == 0) shape.parts.front().insert(shape.parts.front().end(), {5.0, 5.0});
      shapes.push_back(shape);
    }
    writeShapes(SHPT_ARC, shapes);
  }
  int importedLines() {
    vector(vectorLines);
    const long long before = vector()->lineCount();
    EXPECT_EQ(importLines(), 1);
    return static_cast<int>(vector()->lineCount() - before);
  }
};

TEST_F(ShapeImportDamageTest, IndexesThatDoNotFitAreMadeUp) {
  writeLines(20);
  handler(THEMATICMODEL);
  const QByteArray good = read("e.shx");
  QByteArray wrongLength = good, wrongEntries = good, otherOrder = good;
  putBig(wrongLength, 24, 4711);
  for (int i = 0; i < 20; ++i) putBig(wrongEntries, 100 + 8 * i, 50);
  putBig(otherOrder, 108, big(good, 108) + 2);
  const QString incomplete = "O arquivo .shx está incompleto; o índice foi refeito na memória.";
  const QString other = "O arquivo .shx não corresponde ao .shp; o índice foi refeito na memória.";
  const std::pair<QByteArray, QString> cases[] = {
      {good, QString()},         {QByteArray(), incomplete}, {good.left(150), incomplete},
      {wrongLength, incomplete}, {wrongEntries, other},      {otherOrder, other},
  };
  for (const auto& [bytes, note] : cases) {
    write("e.shx", bytes);
    EXPECT_EQ(importedLines(), 20) << note.toStdString();
    EXPECT_EQ(report.notes.join('|'), note);
  }
  QFile::remove(path("e.shx"));
  EXPECT_EQ(importedLines(), 20);
  EXPECT_EQ(report.notes.join('|'),
            QString::fromUtf8("O arquivo .shx não existe; o índice foi refeito na memória."));
  EXPECT_EQ(messages.take(), QString());
}

// An index may leave out what was deleted from the main file; only without it the deleted comes back.
TEST_F(ShapeImportDamageTest, AGoodIndexDecidesWhichRecordsCount) {
  writeLines(4);
  handler(THEMATICMODEL);
  QByteArray index = read("e.shx");
  index.remove(108, 8);
  putBig(index, 24, index.size() / 2);
  write("e.shx", index);
  EXPECT_EQ(importedLines(), 3);
  EXPECT_EQ(report.notes, QStringList());
}

TEST_F(ShapeImportDamageTest, RecordsBehindADamagedOneAreRead) {
  writeLines(9);
  handler(THEMATICMODEL);
  QByteArray main = read("e.shp");
  const QByteArray index = read("e.shx");
  const int third = 2 * big(index, 100 + 8 * 3);
  putBig(main, third + 4, 0x7FFFFFFF);
  write("e.shp", main);
  EXPECT_EQ(importedLines(), 8) << "the index knows of them";
  EXPECT_EQ(leftOut(), QString("unsupported=1"));
  EXPECT_TRUE(report.notes.contains("1 registros danificados do .shp não foram importados."));
  QFile::remove(path("e.shx"));
  EXPECT_EQ(importedLines(), 3);
  EXPECT_EQ(report.notes.size(), 2) << report.notes.join('|').toStdString();
}

TEST_F(ShapeImportDamageTest, ExtensionsInAnyCase) {
  writeLines(3);
  handler(THEMATICMODEL);
  ASSERT_TRUE(QFile::rename(path("e.shp"), path("e.SHP")));
  ASSERT_TRUE(QFile::rename(path("e.shx"), path("e.Shx")));
  EXPECT_EQ(importedLines(), 3);
  EXPECT_EQ(report.notes, QStringList());
}

// Bytes of head and records set to extremes, cut files: nothing crashes or reads astray (sanitizers watch),
// and nothing is imported that is no geometry.
TEST_F(ShapeImportDamageTest, HostileMainFiles) {
  messages.answer("Limpa os polígonos internos duplicados ?", true);
  writeShapes(SHPT_POLYGON, {{{squareRing(0, 0, 10), squareRing(2, 2, 4, true)}}, {{squareRing(50, 0, 10)}}});
  const QByteArray main = read("e.shp");
  const QByteArray index = read("e.shx");
  handler(THEMATICMODEL);
  int done = 0;
  auto all = std::make_unique<DBTransactionBlock>(dataBase.get());
  for (int at = 0; at < main.size(); at += at < 108 ? 4 : 3) {
    for (int value : {-1, 0x7F, 0xFF}) {
      QByteArray bad = value < 0 ? main.left(at) : main;
      if (value >= 0) bad[at] = static_cast<char>(value);
      QFile::remove(path("e.shp"));
      write("e.shp", bad);
      if (value != 0x7F) {
        write("e.shx", index);
      } else {
        QFile::remove(path("e.shx"));
      }
      done += importLines();
    }
  }
  EXPECT_GT(done, 100);
  all->enableCommit();
  for (SPolygon* polygon = vector()->FirstPolygon(); polygon != nullptr; polygon = vector()->NextPolygon()) {
    EXPECT_GE(polygon->perimeter, 0.0);
    delete polygon;
  }
  EXPECT_EQ(dataBase->check(), QStringList());
}

TEST_F(ShapeImportDamageTest, CountsThatLieAskForNoMemory) {
  writeLines(3);
  handler(THEMATICMODEL);
  const QByteArray main = read("e.shp");
  struct Lie {
    int at;  // in the first record
    qint32 value;
  };
  for (const Lie& lie : {Lie{44, 0x7FFFFFFF}, Lie{48, 0x7FFFFFFF}, Lie{44, -1}, Lie{48, -1}, Lie{52, -5},
                         Lie{52, 2000}, Lie{8, 77}}) {
    QByteArray bad = main;
    qToLittleEndian(lie.value, bad.data() + 100 + lie.at);
    write("e.shp", bad);
    EXPECT_EQ(importedLines(), 2) << lie.at << ' ' << lie.value;
    EXPECT_EQ(leftOut(), QString("unsupported=1")) << lie.at << ' ' << lie.value;
  }
}

}  // namespace
}  // namespace kaldex::test
