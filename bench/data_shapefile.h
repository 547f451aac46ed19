#ifndef KALDEX_BENCH_DATA_SHAPEFILE_H
#define KALDEX_BENCH_DATA_SHAPEFILE_H

#include <shapefil.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "data_tools.h"

namespace kaldex {

struct Vertices {
  std::vector<double> x;
  std::vector<double> y;

  void clear() {
    x.clear();
    y.clear();
  }
  void add(double east, double north) {
    x.push_back(rounded(east));
    y.push_back(rounded(north));
  }
  int size() const { return static_cast<int>(x.size()); }
};

struct Column {
  const char* name;
  char type;  // dBASE: N number, C text, D date
  int width;
  int decimals;
};

struct ShapefileCloser {
  void operator()(SHPHandle shapes) const { SHPClose(shapes); }
  void operator()(DBFHandle table) const { DBFClose(table); }
  void operator()(SHPObject* shape) const { SHPDestroyObject(shape); }
};

// A shapefile with its .prj, and with .dbf and .cpg unless it has no columns. Texts are UTF-8.
class Shapefile {
 public:
  Shapefile(const std::filesystem::path& path, int shapeType, const std::vector<Column>& columns);

  void write(const Vertices& vertices, const std::vector<int>& starts);
  void writePoint(double x, double y, double z);

  // The values of the row of the shape just written, column by column.
  void value(int number) { check(DBFWriteIntegerAttribute(table_.get(), row_, field_++, number)); }
  void value(double number) { check(DBFWriteDoubleAttribute(table_.get(), row_, field_++, number)); }
  void value(const std::string& text) {
    check(DBFWriteStringAttribute(table_.get(), row_, field_++, text.c_str()));
  }

  // Closing tells no error, so the files are counted afterwards.
  void close(int expected);

 private:
  void writeShape(SHPObject* made);
  void check(int written) const {
    if (!written) fail("cannot write the table of " + path_);
  }

  std::string path_;
  int shapeType_;
  std::unique_ptr<SHPInfo, ShapefileCloser> shapes_;
  std::unique_ptr<DBFInfo, ShapefileCloser> table_;
  bool hasTable_;
  int row_ = 0;
  int field_ = 0;
};

}  // namespace kaldex

#endif
