#include <QFileInfo>
#include <cmath>
#include <memory>

#include "base/latin1.h"
#include "cli/ascii_kinds.h"
#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/dxf.h"
#include "kaldex/job_report.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/projection.h"
#include "kaldex/model/text.h"

// Drawings as the command offers them.

namespace kaldex::cli {

namespace {

const QStringList& lineEntities() {
  static const QStringList all = {QStringLiteral("LINE"), QStringLiteral("POLYLINE"), QStringLiteral("ARC"),
                                  QStringLiteral("CIRCLE")};
  return all;
}

const QStringList& pointEntities() {
  static const QStringList all = {QStringLiteral("POINT"), QStringLiteral("INSERT")};
  return all;
}

const QStringList& textEntities() {
  static const QStringList all = {QStringLiteral("TEXT"), QStringLiteral("ATTRIB")};
  return all;
}

Transform transformOf(const Placement& placement) {
  Transform transform;
  transform.Rotation(Math_Deg_To_Rad(placement.degrees));
  transform.Scale(placement.scale, placement.scale);
  transform.Translation(placement.moveX, placement.moveY);
  return transform;
}

// --- Imports ---

std::unique_ptr<IEDXF> importer(const ImportContext& context) {
  const Options& options = context.options;
  SDataLayerList layers;
  for (const QString& name : options.layers) layers.Append(new SDataLayer(name));
  auto handler = std::make_unique<IEDXF>();
  handler->Init(context.folder, context.units, context.name, &context.project, &context.layer,
                &context.dataBase, context.projection, 0, nullptr, nullptr, &layers);
  handler->setEncoding(options.encoding);
  const Placement& placement = options.placement;
  handler->SetTransf(placement.moveX, placement.moveY, Math_Deg_To_Rad(placement.degrees), placement.scale);
  return handler;
}

int takeLines(const ImportContext& context, const QStringList& untold) {
  const auto handler = importer(context);
  handler->setUntold(untold);
  const short kind = context.layer.model() == DIGITALMODEL ? vectorSamples : vectorLines;
  return handler->ImportLines(context.layer.vector(kind, true), context.project.projection());
}

int takeTexts(const ImportContext& context, const QStringList& untold) {
  const auto handler = importer(context);
  handler->setUntold(untold);
  Text* const texts = context.layer.makeText();
  EntitieList list;
  if (handler->ImportText(&list, context.project.projection(), nullptr) == 0) return 0;
  return texts->store(list);
}

int takeOnlyLines(const ImportContext& context) {
  return takeLines(context, QStringList());
}

int takeOnlyTexts(const ImportContext& context) {
  return takeTexts(context, QStringList());
}

int takeSamples(const ImportContext& context) {
  return importer(context)->ImportSamples(context.layer.vector(vectorSamples, true),
                                          context.project.projection());
}

bool hasAny(const DxfOutline& outline, const QStringList& entities, const QStringList& layers) {
  for (const QString& entity : entities) {
    if (outline.count(entity, layers) > 0) return true;
  }
  return false;
}

// Whatever there is: what neither import takes is told by the first.
int takeFeatures(const ImportContext& context) {
  const DxfOutline outline(context.path, context.options.encoding);
  const QStringList& layers = context.options.layers;
  const bool lines = hasAny(outline, lineEntities() + pointEntities(), layers);
  if (!lines && hasAny(outline, textEntities(), layers)) return takeTexts(context, QStringList());
  // Texts that a blank one keeps from being read, as attributes often do, mustn't take the lines with them.
  if (!outline.hasTexts(layers)) return takeLines(context, QStringList());
  return takeLines(context, textEntities()) != 0 ? takeTexts(context, outline.entityKinds()) : 0;
}

int takeLabels(const ImportContext& context) {
  const Options& options = context.options;
  const auto handler = importer(context);
  // Objects go into a category of their own that is called after the layer's.
  QByteArray category = context.layer.GetCategoryName().toLatin1() + "_O";
  QByteArray prefix = options.prefix.toLatin1();
  QByteArray suffix = options.suffix.toLatin1();
  short kind = options.valueKind;
  if (handler->ImportLabelPoints(context.project.projection(), nullptr, category.data(), &kind, prefix.data(),
                                 suffix.data(), nullptr, nullptr) == 0) {
    return 0;
  }
  Vector* const vector = context.layer.vector(vectorLines, true);
  return context.layer.model() == THEMATICMODEL ? handler->Classify(vector) : handler->ClassifyObj(vector);
}

QString missing(const ImportContext& context) {
  return Say::tr("Não foi possível importar %1.").arg(context.options.file);
}

// --- What a file tells ---

bool isSane(const Box& box) {
  return !box.isInverted() && std::isfinite(box.x1) && std::isfinite(box.y1) && std::isfinite(box.x2) &&
         std::isfinite(box.y2);
}

// Points at the border of a box mustn't fall out of it by the last digit of a rotation.
Box withMargin(const Box& box) {
  constexpr double kShare = 1e-9;
  const double margin =
      kShare * (std::fabs(box.x1) + std::fabs(box.x2) + std::fabs(box.y1) + std::fabs(box.y2));
  return {box.x1 - margin, box.y1 - margin, box.x2 + margin, box.y2 + margin};
}

Box placed(const Box& box, const Placement& placement) {
  const Transform transform = transformOf(placement);
  Box result = Box::inverted();
  for (const double x : {box.x1, box.x2}) {
    for (const double y : {box.y1, box.y2}) {
      Point corner(x, y);
      transform.Do(corner, corner);
      result.extend(corner.x, corner.y);
    }
  }
  return withMargin(result);
}

SourceFacts inspectDrawing(const QString& path, const QString&, const Options& options) {
  const DxfOutline outline(path, options.encoding);
  SourceFacts facts;
  facts.boxReason = Say::tr("das coordenadas");
  facts.box = [box = outline.box(options.layers), placement = options.placement](
                  SProjection* source, SProjection* target, int units) {
    if (!isSane(box)) return Box::inverted();
    const bool angles = units == 4 || units == 5;
    if (angles || placement.isIdentity()) return transferredBox(box, source, target, units);
    return transferredBox(placed(transferredBox(box, nullptr, nullptr, units), placement), source, target, 0);
  };
  for (const QString& name : options.layers) {
    if (outline.has(name)) continue;
    facts.complaint = Say::tr("%1 não tem o plano %2.").arg(options.file, name);
  }
  return facts;
}

// --- Exports ---

std::unique_ptr<IEDXF> exporter(const ExportContext& context) {
  // Three decimals are millimetres of a plane, and some hundred metres of degrees.
  const SProjection* const projection = context.project.projection();
  const short usual = projection != nullptr && projection->isLatLong() ? 2 : 0;
  auto handler = std::make_unique<IEDXF>();
  handler->Init(context.folder, 0, context.name, &context.project, &context.layer, &context.dataBase,
                context.project.projection(), static_cast<short>(context.options.coords.value_or(usual)),
                nullptr, nullptr, nullptr);
  const QString& name = context.options.layerName;
  handler->SetLayerName(toLatin1(name.isEmpty() ? context.layer.name : name).constData());
  return handler;
}

int writeLines(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportLines(&vector, context.options.usedClasses);
}

int writePolygons(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportPolygons(&vector, context.options.usedClasses);
}

int writePoints(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportPoints(&vector, context.layer.category(), context.options.usedClasses);
}

int writeContours(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportContourout(&vector);
}

int writeSamples(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportSample(&vector);
}

int writeLabels(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportLabelPoints(&vector, context.layer.category(), context.options.usedClasses);
}

int writeTin(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportTIN(&vector);
}

int writeTin3d(const ExportContext& context, Vector& vector) {
  return exporter(context)->ExportTIN3D(&vector);
}

int writeTexts(const ExportContext& context) {
  EntitieList list;
  context.layer.makeText()->load(list);
  return exporter(context)->ExportText(&list);
}

Vector* lineSource(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

Vector* contourSource(InfoLayer& layer) {
  return firstVector(layer, {vectorContours, vectorSamples, vectorLines});
}

template <short Kind, long long (Vector::*Count)()>
bool has(InfoLayer& layer) {
  Vector* const vector = layer.vector(Kind);
  return vector != nullptr && (vector->*Count)() > 0;
}

// Labels name what a drawing shows and are no other form of it: nobody gets them who didn't ask for them.
bool onlyOnRequest(InfoLayer&) {
  return false;
}

}  // namespace

Format dxfFormat() {
  Format format{
      "dxf",
      FileFormat::drawing,
      true,
      true,
      {QStringLiteral(".dxf")},
      {},
      inspectDrawing,
      {{"features", THEMATICMODEL, takeFeatures, missing},
       {"lines", THEMATICMODEL, takeOnlyLines, missing},
       {"samples", DIGITALMODEL, takeSamples, missing},
       {"texts", THEMATICMODEL, takeOnlyTexts, missing},
       {"labels", THEMATICMODEL, takeLabels, missing}},
      {{"lines", lineSource, has<vectorLines, &Vector::lineCount>, writeLines},
       {"polygons", lineSource, has<vectorLines, &Vector::polygonCount>, writePolygons, nullptr, false},
       {"points", lineSource, has<vectorLines, &Vector::point2dCount>, writePoints, nullptr, false},
       {"contours", contourSource, has<vectorContours, &Vector::lineCount>, writeContours, nullptr, false},
       {"samples", sampleLayer, hasSamples, writeSamples, nullptr, false},
       {"labels", lineSource, onlyOnRequest, writeLabels, nullptr, false},
       {"texts", nullptr, hasTexts, nullptr, writeTexts, false},
       {"tin", tinLayer, hasTin, writeTin, nullptr, false},
       {"tin3d", tinLayer, hasTin, writeTin3d, nullptr, false}},
      {}};
  format.textForm = TextForm::drawing;
  return format;
}

}  // namespace kaldex::cli
