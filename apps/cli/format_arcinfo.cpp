#include <memory>

#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/arcinfo.h"

// ArcInfo's text form of lines and points as the command offers it.

namespace kaldex::cli {

namespace {

using Form = UngenerateOutline::Form;

std::unique_ptr<IEArcInfo> importer(const ImportContext& context) {
  auto handler = std::make_unique<IEArcInfo>();
  handler->Init(context.folder, context.units, context.name, &context.project, &context.layer,
                &context.dataBase, context.projection, 0, nullptr, nullptr, nullptr);
  return handler;
}

int importLines(const ImportContext& context) {
  const short kind = context.layer.model() == DIGITALMODEL ? vectorSamples : vectorLines;
  return importer(context)->ImportLines(context.layer.vector(kind, true), context.project.projection());
}

int importSamples(const ImportContext& context) {
  return importer(context)->ImportSamples(context.layer.vector(vectorSamples, true),
                                          context.project.projection());
}

int importContours(const ImportContext& context) {
  return importer(context)->ImportSamples(context.layer.vector(vectorContours, true),
                                          context.project.projection());
}

int importLabels(const ImportContext& context) {
  if (context.layer.model() != THEMATICMODEL) return 0;
  const auto handler = importer(context);
  const int read = handler->ImportLabelPoints(context.project.projection(), nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr);
  return read != 0 ? handler->Classify(context.layer.vector(vectorLines, true)) : 0;
}

int importFeatures(const ImportContext& context) {
  switch (UngenerateOutline(context.path).form()) {
    case Form::linesWithHeights:
    case Form::pointsWithHeights:
      return importSamples(context);
    case Form::labelPoints:
      return importLabels(context);
    default:
      return importLines(context);
  }
}

QString missing(const ImportContext& context) {
  return Say::tr("Não foi possível importar %1.").arg(context.options.file);
}

QString missingLabels(const ImportContext& context) {
  if (context.layer.model() == THEMATICMODEL) return missing(context);
  return Say::tr("O plano %1 é de modelo %2, que não tem classes.")
      .arg(context.layer.name, modelWord(context.layer.model()));
}

QString missingFeatures(const ImportContext& context) {
  const bool labels = UngenerateOutline(context.path).form() == Form::labelPoints;
  return labels ? missingLabels(context) : missing(context);
}

SourceFacts inspectUngenerate(const QString& path, const QString&, const Options&) {
  const auto outline = std::make_shared<UngenerateOutline>(path);
  SourceFacts facts;
  const bool heights =
      outline->form() == Form::linesWithHeights || outline->form() == Form::pointsWithHeights;
  if (heights) facts.model = DIGITALMODEL;
  facts.box = [outline](SProjection* source, SProjection* target, int units) {
    return outline->extent(source, target, units);
  };
  facts.boxReason = Say::tr("das coordenadas");
  return facts;
}

std::unique_ptr<IEArcInfo> exporter(const ExportContext& context) {
  auto handler = std::make_unique<IEArcInfo>();
  handler->Init(context.folder, 0, context.name, &context.project, &context.layer, &context.dataBase,
                context.project.projection(), static_cast<short>(context.options.coords.value_or(0)), nullptr,
                nullptr, nullptr);
  return handler;
}

int exportLines(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportLines(&vector, context.options.usedClasses);
}

int exportPolygons(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportPolygons(&vector, context.options.usedClasses);
}

int exportContours(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportContourout(&vector);
}

int exportSamples(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportSample(&vector);
}

int exportLabels(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportLabelPoints(&vector, context.layer.category(), context.options.usedClasses);
}

Vector* lineSource(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

Vector* contourSource(InfoLayer& layer) {
  return firstVector(layer, {vectorContours, vectorSamples, vectorLines});
}

Vector* sampleSource(InfoLayer& layer) {
  return firstVector(layer, {vectorSamples, vectorContours, vectorLines});
}

template <short Kind, long long (Vector::*Count)()>
bool has(InfoLayer& layer) {
  Vector* const vector = layer.vector(Kind);
  return vector != nullptr && (vector->*Count)() > 0;
}

bool hasSamples(InfoLayer& layer) {
  return has<vectorSamples, &Vector::point3dCount>(layer) || has<vectorSamples, &Vector::lineCount>(layer);
}

bool onlyOnRequest(InfoLayer&) {
  return false;
}

}  // namespace

Format arcinfoFormat() {
  return {"arcinfo",
          FileFormat::ungenerate,
          true,
          false,
          {QStringLiteral(".gen"), QStringLiteral(".ung")},
          {},
          inspectUngenerate,
          {{"features", THEMATICMODEL, importFeatures, missingFeatures},
           {"lines", THEMATICMODEL, importLines, missing},
           {"samples", DIGITALMODEL, importSamples, missing},
           {"contours", DIGITALMODEL, importContours, missing},
           {"labels", THEMATICMODEL, importLabels, missingLabels}},
          {{"lines", lineSource, has<vectorLines, &Vector::lineCount>, exportLines},
           {"polygons", lineSource, has<vectorLines, &Vector::polygonCount>, exportPolygons},
           {"contours", contourSource, has<vectorContours, &Vector::lineCount>, exportContours},
           {"samples", sampleSource, hasSamples, exportSamples},
           {"labels", lineSource, onlyOnRequest, exportLabels}},
          {}};
}

}  // namespace kaldex::cli
