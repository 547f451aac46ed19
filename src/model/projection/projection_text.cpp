#include "kaldex/model/projection_text.h"

#include <QCoreApplication>

#include "model/projection/crs_reader.h"
#include "model/projection/crs_writer.h"
#include "model/projection/epsg_registry.h"
#include "model/projection/projection_engine.h"

inline namespace kaldex_v1 {
namespace {

/// No reference system is told in more; a file taken by mistake for a .prj file may be.
constexpr int kMaxTextLength = 1 << 16;

std::unique_ptr<SProjection> refuse(QString* error, const char* message, const QString& text) {
  if (error != nullptr)
    *error = QCoreApplication::translate("SProjection", message).arg(text.left(80).simplified());
  return nullptr;
}

PJ_WKT_TYPE wktTypeOf(WktVariant variant) {
  switch (variant) {
    case WktVariant::gdal1:
      return PJ_WKT1_GDAL;
    case WktVariant::esri1:
      return PJ_WKT1_ESRI;
    default:
      return PJ_WKT2_2019;
  }
}

/// Same system as far as an EPSG code tells: shifts are no part of it, the datum is.
bool isSameSystem(const ProjectionParameters& a, ProjectionParameters b) {
  if (a.datum.name() != b.datum.name()) return false;
  const Datum& d = b.datum;
  b.datum = Datum(d.id(), d.name(), d.radius(), d.flattening(), a.datum.dx(), a.datum.dy(), a.datum.dz());
  return *projectionFromParameters(a) == *projectionFromParameters(b);
}

}  // namespace

std::unique_ptr<SProjection> projectionFromText(const QString& text, QString* error) {
  if (error != nullptr) error->clear();
  if (text.size() > kMaxTextLength || text.contains(QChar(0))) {
    return refuse(error, QT_TRANSLATE_NOOP("SProjection", "Sistema de referência desconhecido: %1"), text);
  }
  PJ_CONTEXT* context = kaldex::threadPjContext();
  kaldex::PjPtr crs = kaldex::createCrs(context, text);
  if (!crs)
    return refuse(error, QT_TRANSLATE_NOOP("SProjection", "Sistema de referência desconhecido: %1"), text);
  const auto parameters = kaldex::CrsReader(context, std::move(crs)).read();
  if (!parameters) {
    return refuse(error, QT_TRANSLATE_NOOP("SProjection", "O sistema de referência não é horizontal: %1"),
                  text);
  }
  return projectionFromParameters(*parameters);
}

QString projectionToWkt(const SProjection& projection, WktVariant variant) {
  PJ_CONTEXT* context = kaldex::threadPjContext();
  const ProjectionParameters& parameters = projection.toParameters();
  kaldex::PjPtr crs = kaldex::makePlainCrs(context, parameters);
  // PROJ would write a method of its own invention there.
  if (variant == WktVariant::esri1 && parameters.type == ProjectionType::bipolar) return QString();
  if (variant != WktVariant::esri1) crs = kaldex::stateShift(context, std::move(crs), parameters, true);
  if (!crs) return QString();
  const char* const options[] = {"MULTILINE=NO", nullptr};
  return QString::fromUtf8(proj_as_wkt(context, crs.get(), wktTypeOf(variant), options));
}

QString projectionToProj4(const SProjection& projection) {
  PJ_CONTEXT* context = kaldex::threadPjContext();
  const ProjectionParameters& parameters = projection.toParameters();
  const kaldex::PjPtr crs =
      kaldex::stateShift(context, kaldex::makePlainCrs(context, parameters), parameters, false);
  return crs ? QString::fromUtf8(proj_as_proj_string(context, crs.get(), PJ_PROJ_4, nullptr)) : QString();
}

int projectionEpsgCode(const SProjection& projection) {
  const ProjectionParameters& parameters = projection.toParameters();
  if (parameters.epsg != 0) return parameters.epsg;
  PJ_CONTEXT* context = kaldex::threadPjContext();
  const kaldex::PjPtr crs = kaldex::makePlainCrs(context, parameters);
  const kaldex::PjPtr base = crs ? kaldex::baseGeographic(context, crs.get()) : nullptr;
  // Nothing registered stands on a datum that isn't; the search would take long to find that out.
  if (!base || kaldex::epsgCodeOf(base.get()) == 0) return 0;
  for (kaldex::PjPtr& candidate : kaldex::likelyRegistered(context, crs.get())) {
    const auto read = kaldex::CrsReader(context, std::move(candidate)).read();
    if (read && read->epsg != 0 && isSameSystem(*read, parameters)) return read->epsg;
  }
  return 0;
}

}  // namespace kaldex_v1
