#include <QDir>
#include <QFileInfo>
#include <cmath>
#include <memory>

#include "cli/object_category.h"
#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/shapefile.h"
#include "kaldex/shapeie.h"

// Shapefiles as the command offers them.

namespace kaldex::cli {

namespace {

// Selectors of the exports.
constexpr short kPoints = 1;
constexpr short kLines = 2;
constexpr short kPolygons = 3;

std::unique_ptr<IEShp> importer(const ImportContext& context) {
  auto handler = std::make_unique<IEShp>();
  handler->Init(context.folder, context.units, context.name, &context.project, &context.layer,
                &context.dataBase, context.projection, 0, nullptr, nullptr, nullptr);
  handler->setEncoding(context.options.encoding);
  return handler;
}

int importShapes(const ImportContext& context) {
  return importer(context)->ImportLines(context.layer.vector(vectorLines, true),
                                        context.project.projection());
}

int importSamples(const ImportContext& context) {
  return importer(context)->ImportSamples(context.layer.vector(vectorSamples, true),
                                          context.project.projection());
}

int importContours(const ImportContext& context) {
  return importer(context)->ImportSamples(context.layer.vector(vectorContours, true),
                                          context.project.projection());
}

QString missing(const ImportContext& context) {
  return Say::tr("Não foi possível importar %1.").arg(context.options.file);
}

// Why shapes of this type can't come in as a kind that names one type; empty when they can.
QString complaintAbout(const ShapeOutline& outline, const QString& kind, const QString& file) {
  const bool fits = kind == QLatin1String("lines")      ? outline.isLines()
                    : kind == QLatin1String("points")   ? outline.isPoints()
                    : kind == QLatin1String("polygons") ? outline.isPolygons()
                                                        : true;
  if (fits) return QString();
  return Say::tr("%1 guarda outro tipo de geometria: %2.").arg(file, outline.typeName());
}

bool isSane(const Box& box) {
  const bool finite =
      std::isfinite(box.x1) && std::isfinite(box.y1) && std::isfinite(box.x2) && std::isfinite(box.y2);
  return finite && !box.isInverted() && !(box == Box());
}

SourceFacts inspectShapefile(const QString& path, const QString& kind, const Options& options) {
  SourceFacts facts;
  const ShapeOutline outline(path);
  facts.box = [](SProjection*, SProjection*, int) { return Box::inverted(); };
  if (!outline.isValid()) return facts;
  facts.complaint = complaintAbout(outline, kind, options.file);
  facts.projection = IEShp::sourceProjection(path, &facts.projectionReason);
  if (facts.projection != nullptr) facts.projectionReason = QStringLiteral("prj");
  // Points outside the layer's box are left out by the imports, so the header's word isn't enough for them.
  const bool tested =
      outline.isPoints() || kind == QLatin1String("samples") || kind == QLatin1String("contours");
  const bool walk = tested || !isSane(outline.box());
  const Box box = walk ? outline.extent() : outline.box();
  facts.boxReason = walk ? Say::tr("das coordenadas") : Say::tr("do cabeçalho");
  facts.box = [box](SProjection* source, SProjection* target, int units) {
    return box.isInverted() ? box : transferredBox(box, source, target, units);
  };
  return facts;
}

short coordMode(const ExportContext& context) {
  return static_cast<short>(context.options.coords.value_or(0));
}

// The exports take the files' path without ending.
QByteArray baseName(const ExportContext& context) {
  const QString ending = QStringLiteral(".shp");
  QString path = context.path;
  if (path.endsWith(ending, Qt::CaseInsensitive)) path.chop(ending.size());
  return QFile::encodeName(path);
}

int exportByObject(const ExportContext& context, Vector& vector, short geometry) {
  Category* const category = objectCategoryOf(context.dataBase, context.layer, context.options.category);
  if (category == nullptr) return 0;
  ShapeFile file;
  return file.ExportObjShape(context.dataBase, vector, *category, baseName(context).constData(), geometry,
                             coordMode(context));
}

int exportByRegion(const ExportContext& context, Vector& vector) {
  ShapeFile file;
  QString base = QFile::decodeName(baseName(context));
  return file.ExportImageLabelShape(context.dataBase, vector, base, coordMode(context));
}

int exportShapes(const ExportContext& context, Vector& vector, short geometry) {
  const QString& by = context.options.by;
  if (by == QLatin1String("object")) return exportByObject(context, vector, geometry);
  if (by == QLatin1String("region")) return exportByRegion(context, vector);
  ShapeFile file;
  const QByteArray base = baseName(context);
  Category& category = *context.layer.category();
  if (by == QLatin1String("height")) {
    return file.ExportDigital2DShape(context.dataBase, vector, category, base.constData(), geometry,
                                     coordMode(context));
  }
  return file.GenerateShapefile(context.dataBase, vector, category, base.constData(), geometry,
                                coordMode(context), context.options.usedClasses);
}

int exportLines(const ExportContext& context, Vector& vector) {
  return exportShapes(context, vector, kLines);
}

int exportPolygons(const ExportContext& context, Vector& vector) {
  return exportShapes(context, vector, kPolygons);
}

int exportPoints(const ExportContext& context, Vector& vector) {
  return exportShapes(context, vector, kPoints);
}

Vector* planeSource(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorSamples, vectorContours});
}

Vector* contourSource(InfoLayer& layer) {
  return firstVector(layer, {vectorContours, vectorSamples});
}

Vector* sampleSource(InfoLayer& layer) {
  return firstVector(layer, {vectorSamples, vectorContours});
}

template <short Kind, long long (Vector::*Count)()>
bool has(InfoLayer& layer) {
  Vector* const vector = layer.vector(Kind);
  return vector != nullptr && (vector->*Count)() > 0;
}

bool hasLines(InfoLayer& layer) {
  return has<vectorLines, &Vector::lineCount>(layer) || has<vectorSamples, &Vector::lineCount>(layer);
}

}  // namespace

Format shapefileFormat() {
  return {"shapefile",
          FileFormat::shapefile,
          false,
          false,
          {QStringLiteral(".shp")},
          {QStringLiteral(".shp"), QStringLiteral(".shx"), QStringLiteral(".dbf"), QStringLiteral(".prj"),
           QStringLiteral(".cpg"), QStringLiteral(".qix"), QStringLiteral(".sbn"), QStringLiteral(".sbx")},
          inspectShapefile,
          {{"features", THEMATICMODEL, importShapes, missing},
           {"lines", THEMATICMODEL, importShapes, missing},
           {"points", THEMATICMODEL, importShapes, missing},
           {"polygons", THEMATICMODEL, importShapes, missing},
           {"samples", DIGITALMODEL, importSamples, missing},
           {"contours", DIGITALMODEL, importContours, missing}},
          {{"lines", planeSource, hasLines, exportLines},
           {"polygons", planeSource, has<vectorLines, &Vector::polygonCount>, exportPolygons},
           {"points", planeSource, has<vectorLines, &Vector::point2dCount>, exportPoints},
           {"contours", contourSource, has<vectorContours, &Vector::lineCount>, exportLines},
           {"samples", sampleSource, has<vectorSamples, &Vector::point3dCount>, exportPoints}},
          {QStringLiteral("class"), QStringLiteral("object"), QStringLiteral("height"),
           QStringLiteral("region")}};
}

}  // namespace kaldex::cli
