#include <QDir>
#include <QFile>
#include <memory>

#include "cli/database_access.h"
#include "cli/interrupt.h"
#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/job_report.h"
#include "kaldex/kml.h"
#include "kaldex/model/report.h"

// KML and KMZ as the command offers them.

namespace kaldex::cli {

namespace {

std::unique_ptr<SProjection> wgs84() {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::latLong;
  parameters.name = projectionTypeName(ProjectionType::latLong);
  parameters.datum = knownDatum(QStringLiteral("WGS84"));
  return projectionFromParameters(parameters);
}

// What the look at a file has read of it, for the import that comes next: reading is most of the work.
std::shared_ptr<KmlOutline>& lastOutline() {
  static std::shared_ptr<KmlOutline> outline;
  return outline;
}

// The document says of itself that it is on WGS84, so that only the target's projection counts.
std::unique_ptr<IEKml> importer(const ImportContext& context) {
  auto handler = std::make_unique<IEKml>();
  handler->Init(context.folder, 0, context.name, &context.project, &context.layer, &context.dataBase,
                context.project.projection(), 0, nullptr, nullptr, nullptr);
  handler->use(std::move(lastOutline()));
  return handler;
}

template <int (IEKml::*Import)(Vector*, SProjection*)>
int import(const ImportContext& context) {
  return (importer(context).get()->*Import)(context.layer.vector(vectorLines, true),
                                            context.project.projection());
}

QString missing(const ImportContext& context) {
  return Say::tr("Não foi possível importar %1.").arg(context.options.file);
}

// Coordinates of another projection are not looked for in a document.
bool contradicts(const QString& crsFrom) {
  QString trouble;
  const std::unique_ptr<SProjection> said = crsFrom.isEmpty() ? nullptr : projectionOf(crsFrom, trouble);
  return said != nullptr && !(*said == *wgs84());
}

SourceFacts inspectKml(const QString& path, const QString&, const Options& options) {
  const auto outline = std::make_shared<KmlOutline>(path);
  SourceFacts facts;
  // What was interrupted is no bad file: the import will not go far either, and says what happened.
  if (!outline->isValid() && !interrupted()) {
    facts.complaint = Say::tr("%1 não pode ser lido como KML: %2").arg(options.file, outline->error());
    return facts;
  }
  if (contradicts(options.crsFrom)) {
    facts.complaint = Say::tr("Documentos KML têm longitudes e latitudes em WGS84; --crs-from não vale.");
    return facts;
  }
  facts.projection = wgs84();
  facts.projectionReason = QStringLiteral("format");
  facts.box = [box = outline->extent()](SProjection*, SProjection* target, int) {
    const std::unique_ptr<SProjection> source = wgs84();
    return box.isInverted() ? box : transferredBox(box, source.get(), target, 0);
  };
  facts.boxReason = Say::tr("das coordenadas");
  lastOutline() = outline;
  return facts;
}

// The handler itself shows no message: why it could not write is a note behind those that were there before.
int write(IEKml& handler) {
  JobReport* const report = JobReport::current();
  const int before = report != nullptr ? report->notes.size() : 0;
  if (handler.WriteToFile() != 0) return 1;
  if (report != nullptr && report->notes.size() > before)
    SMessageBox::Show(0, nullptr, QStringLiteral("KALDEX"), report->notes.takeLast());
  return 0;
}

/// One document, under the name that was asked for.
class DocumentExport {
 public:
  explicit DocumentExport(const ExportContext& context) : context_(context), projection_(wgs84()) {}

  int run(Vector& vector, int (*fill)(IEKml& handler, Vector& vector));

 private:
  const ExportContext& context_;
  std::unique_ptr<SProjection> projection_;
};

int DocumentExport::run(Vector& vector, int (*fill)(IEKml& handler, Vector& vector)) {
  QString name = context_.name;
  const bool zipped = name.endsWith(QLatin1String(".kmz"), Qt::CaseInsensitive);
  const QString ending = zipped ? QStringLiteral(".kmz") : QStringLiteral(".kml");
  if (name.endsWith(ending, Qt::CaseInsensitive)) name.chop(ending.size());
  const auto handler = std::make_unique<IEKml>();
  handler->Init(context_.folder, 0, name, &context_.project, &context_.layer, &context_.dataBase,
                projection_.get(), 0, nullptr, nullptr, nullptr);
  handler->setZipped(zipped);
  if (fill(*handler, vector) == 0 || write(*handler) == 0) return 0;
  if (JobReport* const report = JobReport::current())
    report->projection = {projectionName(*projection_), QStringLiteral("format")};
  // The handler puts the ending in small letters behind the name.
  const QString made = QDir(context_.folder).filePath(name + ending);
  return made == context_.path || QFile::rename(made, context_.path) ? 1 : 0;
}

int exportLines(const ExportContext& context, Vector& vector) {
  return DocumentExport(context).run(
      vector, [](IEKml& handler, Vector& from) { return handler.ExportLines(&from, 0); });
}

int exportPolygons(const ExportContext& context, Vector& vector) {
  return DocumentExport(context).run(
      vector, [](IEKml& handler, Vector& from) { return handler.ExportPolygons(&from, 0); });
}

int exportPoints(const ExportContext& context, Vector& vector) {
  return DocumentExport(context).run(
      vector, [](IEKml& handler, Vector& from) { return handler.ExportPoints(&from, nullptr, 0); });
}

int exportAll(const ExportContext& context, Vector& vector) {
  return DocumentExport(context).run(
      vector, [](IEKml& handler, Vector& from) { return handler.ExportAll(&from, 0); });
}

Vector* source(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

bool hasLines(InfoLayer& layer) {
  Vector* const vector = source(layer);
  return vector != nullptr && vector->lineCount() > 0;
}

bool hasPoints(InfoLayer& layer) {
  Vector* const vector = source(layer);
  return vector != nullptr && vector->point2dCount() > 0;
}

// Which of the kinds is meant when nobody says one.
bool onlyLines(InfoLayer& layer) {
  return hasLines(layer) && !hasPoints(layer);
}

bool onlyPoints(InfoLayer& layer) {
  return hasPoints(layer) && !hasLines(layer);
}

bool both(InfoLayer& layer) {
  return hasLines(layer) && hasPoints(layer);
}

// Polygons go out as their lines, which is what "lines" says.
bool onlyOnRequest(InfoLayer&) {
  return false;
}

}  // namespace

Format kmlFormat() {
  return {"kml",
          FileFormat::kml,
          false,
          false,
          {QStringLiteral(".kml"), QStringLiteral(".kmz")},
          {},
          inspectKml,
          {{"features", THEMATICMODEL, import <&IEKml::ImportAll>, missing},
           {"lines", THEMATICMODEL, import <&IEKml::ImportLines>, missing},
           {"points", THEMATICMODEL, import <&IEKml::ImportPoint2d>, missing},
           {"polygons", THEMATICMODEL, import <&IEKml::ImportPolygons>, missing}},
          {{"lines", source, onlyLines, exportLines},
           {"points", source, onlyPoints, exportPoints},
           {"polygons", source, onlyOnRequest, exportPolygons},
           {"all", source, both, exportAll}},
          {}};
}

}  // namespace kaldex::cli
