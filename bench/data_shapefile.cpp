#include "data_shapefile.h"

namespace kaldex {

namespace {

constexpr std::string_view kProjectionWkt =
    "PROJCS[\"WGS_1984_UTM_Zone_23S\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
    "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",10000000.0],"
    "PARAMETER[\"Central_Meridian\",-45.0],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";

}  // namespace

Shapefile::Shapefile(const std::filesystem::path& path, int shapeType, const std::vector<Column>& columns)
    : path_(path.string()),
      shapeType_(shapeType),
      shapes_(SHPCreate(path_.c_str(), shapeType)),
      table_(columns.empty() ? nullptr : DBFCreateEx(path_.c_str(), "UTF-8")),
      hasTable_(!columns.empty()) {
  if (!shapes_ || (hasTable_ && !table_)) fail("cannot make " + path_);
  for (const Column& column : columns) {
    if (DBFAddNativeFieldType(table_.get(), column.name, column.type, column.width, column.decimals) < 0)
      fail("cannot add column " + std::string(column.name));
  }
  TextFile projection(std::filesystem::path(path).replace_extension(".prj"));
  projection << kProjectionWkt;
  projection.close();
}

void Shapefile::write(const Vertices& vertices, const std::vector<int>& starts) {
  writeShape(SHPCreateObject(shapeType_, -1, static_cast<int>(starts.size()), starts.data(), nullptr,
                             vertices.size(), vertices.x.data(), vertices.y.data(), nullptr, nullptr));
}

void Shapefile::writePoint(double x, double y, double z) {
  writeShape(SHPCreateSimpleObject(shapeType_, 1, &x, &y, &z));
}

void Shapefile::writeShape(SHPObject* made) {
  const std::unique_ptr<SHPObject, ShapefileCloser> shape(made);
  row_ = shape ? SHPWriteObject(shapes_.get(), -1, shape.get()) : -1;
  field_ = 0;
  if (row_ < 0) fail("cannot write " + path_);
}

void Shapefile::close(int expected) {
  shapes_.reset();
  table_.reset();
  const std::unique_ptr<SHPInfo, ShapefileCloser> shapes(SHPOpen(path_.c_str(), "rb"));
  int written = -1;
  if (shapes) SHPGetInfo(shapes.get(), &written, nullptr, nullptr, nullptr);
  if (written != expected) fail(path_ + " is not complete");
  if (!hasTable_) return;
  const std::unique_ptr<DBFInfo, ShapefileCloser> table(DBFOpen(path_.c_str(), "rb"));
  if (!table || DBFGetRecordCount(table.get()) != expected)
    fail("the table of " + path_ + " is not complete");
}

}  // namespace kaldex
