#include "kaldex/model/dbf.h"

#include "support/dbf_maker.h"
#include "support/model_fixture.h"

namespace {

using kaldex::test::DbfMaker;

class DbfTest : public kaldex::test::FolderFixture {
 protected:
  QString write(const QByteArray& bytes, const QString& name = "t.dbf") {
    QFile::remove(path(name));
    FolderFixture::write(name, bytes);
    return path(name);
  }
  /// All rows: values separated by "|", rows by a line feed.
  static QString content(DbfImpExp& dbf) {
    QStringList rows;
    for (int there = dbf.First(); there != 0; there = dbf.Next()) {
      QStringList values;
      for (int i = 0; i < dbf.NumFields(); ++i) values << dbf.GetFieldValue(i);
      rows << values.join('|');
    }
    return rows.join('\n');
  }
  QString contentOf(const QByteArray& bytes) {
    DbfImpExp dbf(write(bytes), OpenMode::read);
    return dbf.isOpen() ? content(dbf) : QString("not open");
  }
};

TEST_F(DbfTest, TypesFollowTheHeadUnlessValuesContradict) {
  DbfMaker maker({{"TXT", 'C', 12},
                  {"INT", 'N', 5},
                  {"FRAC", 'N', 6},
                  {"WHOLE", 'N', 6},
                  {"WIDE", 'N', 12},
                  {"BIG", 'N', 12},
                  {"REAL", 'F', 9, 3},
                  {"DAY", 'D', 8},
                  {"FLAG", 'L', 1},
                  {"MEMO", 'M', 10},
                  {"", 'C', 1}});
  maker.row(
      {"abc", "  -12", "  1.5", "7.00", "2147483647", "2147483648", "1.250", "20240229", "T", "1", "x"});
  maker.row({"", "*****", "", "", "", "", "*********", "00000000", "?", "", ""});
  DbfImpExp dbf(write(maker.bytes()), OpenMode::read);
  SFieldList fields;
  ASSERT_EQ(dbf.ReadAttr(path("t.dbf"), &fields), 1);
  QStringList told;
  for (const SField* field : fields) {
    told << QString("%1:%2:%3:%4:%5")
                .arg(field->name)
                .arg(field->type)
                .arg(field->size)
                .arg(field->decimals)
                .arg(field->index);
  }
  EXPECT_EQ(told.join(' '),
            QString("TXT:3:12:0:0 INT:0:5:0:1 FRAC:1:6:1:2 WHOLE:0:6:0:3 WIDE:0:12:0:4 BIG:1:12:0:5 "
                    "REAL:1:9:3:6 DAY:2:8:0:7 FLAG:3:1:0:8 COLUMN10:3:1:0:9"));
  EXPECT_EQ(dbf.ignoredColumns(), QStringList("MEMO"));
  EXPECT_EQ(content(dbf), QString("abc|-12|1.5|7|2147483647|2147483648|1.250|20240229|T|x\n|||||||||"));
  EXPECT_TRUE(dbf.IsEOF());
  EXPECT_TRUE(dbf.GetFieldValue(0).isNull());
  ASSERT_EQ(dbf.Go(1), 1);
  for (int i = -1; i <= dbf.NumFields(); ++i) EXPECT_TRUE(dbf.GetFieldValue(i).isNull()) << i;
  EXPECT_EQ(dbf.Go(2), 0);
  EXPECT_EQ(dbf.Go(-1), 0);
  EXPECT_EQ(dbf.Next(), 0);
}

TEST_F(DbfTest, RowsAreThoseInTheFileWhateverTheHeadCounts) {
  DbfMaker maker({{"A", 'C', 3}, {"B", 'N', 4}});
  maker.row({"one", "1"}).row({"two", "2"}, '*').row({"six", "6"});
  const QString all = "one|1\ntwo|2\nsix|6";
  EXPECT_EQ(contentOf(maker.bytes()), all) << "deleted rows count";
  for (long long declared : {0LL, 1LL, 4LL, 0xFFFFFFFFLL}) {
    DbfMaker liar = maker;
    liar.declaredRows = declared;
    EXPECT_EQ(contentOf(liar.bytes()), all) << declared;
    liar.endMark = false;
    EXPECT_EQ(contentOf(liar.bytes()), all) << declared;
  }
  const QByteArray bytes = maker.bytes();
  EXPECT_EQ(contentOf(bytes.left(bytes.size() - 3)), QString("one|1\ntwo|2")) << "a row cut short is none";
  EXPECT_EQ(contentOf(bytes + QByteArray(20, 'z')), all) << "rubbish behind the end mark";
}

TEST_F(DbfTest, WrongLengthsInTheHead) {
  DbfMaker maker({{"A", 'C', 3}, {"B", 'N', 4}});
  maker.row({"one", "1"}).row({"two", "2"});
  const QString all = "one|1\ntwo|2";
  for (int record : {0, 1, 5, 200}) {
    DbfMaker liar = maker;
    liar.declaredRecord = record;
    EXPECT_EQ(contentOf(liar.bytes()), all) << "record length " << record;
  }
  for (int header : {0, 33, 60, 64, 60000}) {
    DbfMaker liar = maker;
    liar.declaredHeader = header;
    EXPECT_EQ(contentOf(liar.bytes()), all) << "header length " << header;
  }
  // The column says 4, but record length, row count and file size agree on less.
  DbfMaker narrow({{"A", 'C', 3}, {"B", 'N', 2}});
  narrow.row({"one", "12"}).row({"two", "34"});
  QByteArray bytes = narrow.bytes();
  bytes[32 + 32 + 16] = 40;
  EXPECT_EQ(contentOf(bytes), QString("one|12\ntwo|34"));
}

TEST_F(DbfTest, LongTextsOfClipperAndNamesWithoutTerminator) {
  DbfMaker maker({{"ELEVENBYTES", 'C', 44, 1}, {"B", 'C', 2}});
  maker.declaredRecord = 1 + 300 + 2;
  QByteArray bytes = maker.bytes();
  bytes.chop(1);
  bytes += ' ' + QByteArray(299, 'a') + "zOK";
  DbfImpExp dbf(write(bytes), OpenMode::read);
  SFieldList fields;
  ASSERT_EQ(dbf.ReadAttr(path("t.dbf"), &fields), 1);
  EXPECT_EQ(fields.at(0)->name, QString("ELEVENBYTES"));
  EXPECT_EQ(fields.at(0)->size, 300);
  ASSERT_EQ(dbf.First(), 1);
  EXPECT_EQ(dbf.GetFieldValue(0).size(), 300);
  EXPECT_EQ(dbf.GetFieldValue(1), QString("OK"));
}

TEST_F(DbfTest, BinaryColumns) {
  DbfMaker maker({{"I", 'I', 4}, {"B", 'B', 8}});
  maker.version = 0x30;
  QByteArray integer(4, '\0'), real(8, '\0');
  qToLittleEndian<qint32>(-70000, integer.data());
  qToLittleEndian<double>(0.1, real.data());
  maker.row({integer, real});
  EXPECT_EQ(contentOf(maker.bytes()), QString("-70000|0.1"));
}

TEST_F(DbfTest, NoTableAtAll) {
  DbfMaker maker({{"A", 'C', 3}, {"B", 'N', 4}});
  maker.row({"one", "1"});
  const QByteArray good = maker.bytes();
  QByteArray level7 = good;
  level7[0] = 4;
  for (const QByteArray& bytes :
       {QByteArray(), good.left(20), good.left(40), QByteArray(500, 'x'), QByteArray(70000, '\0'), level7}) {
    DbfImpExp dbf(write(bytes), OpenMode::read);
    SFieldList fields;
    EXPECT_FALSE(dbf.isOpen()) << bytes.size();
    EXPECT_EQ(dbf.ReadAttr(path("t.dbf"), &fields), 0);
    EXPECT_EQ(dbf.First() + dbf.Next() + dbf.NumFields(), 0);
    EXPECT_TRUE(dbf.IsEOF());
    EXPECT_TRUE(dbf.GetFieldValue(0).isNull());
  }
  EXPECT_FALSE(DbfImpExp(path("missing.dbf"), OpenMode::read).isOpen());
}

// Any byte of the head set to an extreme, and any cut: nothing is read beyond the file (sanitizers watch).
TEST_F(DbfTest, DamagedHeadsAreSafe) {
  DbfMaker maker({{"A", 'C', 3}, {"B", 'N', 4}, {"C", 'D', 8}, {"I", 'I', 4}});
  maker.row({"one", "1", "20240101", "abcd"}).row({"two", "2", "", "efgh"});
  const QByteArray good = maker.bytes();
  long long read = 0;
  for (int at = 0; at < good.size(); ++at) {
    for (int value : {-1, 0, 1, 0x7F, 0xFF}) {
      QByteArray bad = value < 0 ? good.left(at) : good;
      if (value >= 0) bad[at] = static_cast<char>(value);
      DbfImpExp dbf(write(bad), OpenMode::read);
      SFieldList fields;
      dbf.ReadAttr(path("t.dbf"), &fields);
      EXPECT_EQ(fields.Size(), dbf.NumFields());
      read += content(dbf).size();
    }
  }
  EXPECT_GT(read, 0);
}

TEST_F(DbfTest, CompanionsInAnyCase) {
  DbfMaker maker({{"A", 'C', 3}});
  maker.row({"\xE7"});
  write(maker.bytes(), "X.DBF");
  write("ISO-8859-2", "X.Cpg");
  DbfImpExp dbf(path("X.shp"), OpenMode::read);
  ASSERT_TRUE(dbf.isOpen());
  EXPECT_EQ(dbf.encodingName(), QString("ISO-8859-2"));
  EXPECT_FALSE(DbfImpExp(path("x.shp"), OpenMode::read).isOpen()) << "only the extension's case is free";
}

TEST_F(DbfTest, ReadsTheColumnsOfAnotherFileInPassing) {
  DbfMaker one({{"A", 'C', 3}}), other({{"B", 'C', 3}, {"C", 'C', 3}});
  DbfImpExp dbf(write(one.bytes(), "one.dbf"), OpenMode::read);
  write(other.bytes(), "other.dbf");
  SFieldList fields;
  EXPECT_EQ(dbf.ReadAttr(path("other.shp"), &fields), 1);
  EXPECT_EQ(fields.Size(), 2);
  EXPECT_EQ(dbf.NumFields(), 1);
}

}  // namespace
