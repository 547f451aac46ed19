#include "lib/shapefile/sidecars.h"

#include <QByteArray>
#include <cstdio>

#include "kaldex/model/projection_text.h"

namespace kaldex {

namespace {

bool writeSmallFile(const std::string& path, const QByteArray& content) {
  FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const auto size = static_cast<std::size_t>(content.size());
  const bool written = std::fwrite(content.constData(), 1, size, file) == size;
  return std::fclose(file) == 0 && written;
}

QByteArray referenceSystem(const SProjection& projection, const CoordinateOutput& coordinates) {
  if (!coordinates.changes()) return projectionToWkt(projection, WktVariant::esri1).toLatin1();
  if (!coordinates.isDegrees()) return QByteArray();
  ProjectionParameters geographic;
  geographic.type = ProjectionType::latLong;
  geographic.name = projectionTypeName(ProjectionType::latLong);
  geographic.datum = projection.datum();
  return projectionToWkt(*projectionFromParameters(geographic), WktVariant::esri1).toLatin1();
}

}  // namespace

bool writeEncodingFile(const std::string& base) {
  return writeSmallFile(base + ".cpg", "ISO-8859-1");
}

bool writeProjectionFile(const std::string& base, const SProjection* projection,
                         const CoordinateOutput& coordinates, bool& written) {
  const std::string path = base + ".prj";
  const QByteArray text = projection != nullptr ? referenceSystem(*projection, coordinates) : QByteArray();
  written = !text.isEmpty();
  if (written) return writeSmallFile(path, text);
  std::remove(path.c_str());
  return true;
}

}  // namespace kaldex
