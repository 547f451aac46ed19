#include <QFileInfo>
#include <memory>

#include "cli/registry.h"
#include "cli/texts.h"
#include "kaldex/ascii.h"
#include "kaldex/job_report.h"

// The system's own text format as the command offers it.

namespace kaldex::cli {

namespace {

constexpr char kLines[] = "LINES";
constexpr char kNetwork[] = "NETWORK";
constexpr char kContours[] = "CONTOURLINES";

QString text(const char* keyword) {
  return QString::fromLatin1(keyword);
}

void note(const QString& words) {
  if (JobReport* const report = JobReport::current()) report->note(words);
}

std::unique_ptr<IEAsc> importer(const ImportContext& context) {
  auto handler = std::make_unique<IEAsc>();
  const QByteArray separator = context.options.separator.toLatin1();
  handler->Init(context.folder, context.units, context.name, &context.project, &context.layer,
                &context.dataBase, context.projection, 0, separator.constData(), nullptr, nullptr);
  return handler;
}

const char* lineKeyword(short model) {
  return model == NETWORKMODEL ? kNetwork : kLines;
}

int importLines(const ImportContext& context) {
  const short kind = context.layer.model() == DIGITALMODEL ? vectorSamples : vectorLines;
  Vector* const vector = context.layer.vector(kind, true);
  return importer(context)->ImportLines(vector, context.project.projection());
}

int importContours(const ImportContext& context) {
  Vector* const vector = context.layer.vector(vectorContours, true);
  return importer(context)->ImportContourout(vector, context.project.projection());
}

// Every section that an import exists for; what has none is told.
int importFeatures(const ImportContext& context) {
  const AsciiOutline outline(context.path);
  const QString lines = text(lineKeyword(context.layer.model()));
  int result = 0;
  if (outline.find(lines) != nullptr) {
    result = importLines(context);
    if (result == 0) return 0;
  }
  if (outline.find(text(kContours)) != nullptr) {
    result = importContours(context);
    if (result == 0) return 0;
  }
  JobReport* const report = JobReport::current();
  for (const AsciiSection& section : outline.sections()) {
    if (section.keyword == lines || section.keyword == text(kContours)) continue;
    note(Say::tr("Seção %1 (linha %2) não importada.").arg(section.keyword).arg(section.line));
    if (report != nullptr) report->countLeftOut(QStringLiteral("unsupported"));
  }
  return result;
}

// An import ends without a word also where the file stops in some places of a section: that is there, then.
QString unfinishedSection(const ImportContext& context, const QString& keyword) {
  return Say::tr("A seção %1 de %2 não pôde ser lida até o fim.").arg(keyword, context.options.file);
}

QString noSection(const ImportContext& context, const QString& keyword) {
  if (AsciiOutline(context.path).find(keyword) != nullptr) return unfinishedSection(context, keyword);
  return Say::tr("Não há seção %1 em %2.").arg(keyword, context.options.file);
}

QString missingLines(const ImportContext& context) {
  return noSection(context, text(lineKeyword(context.layer.model())));
}

QString missingContours(const ImportContext& context) {
  return noSection(context, text(kContours));
}

QString missingFeatures(const ImportContext& context) {
  const AsciiOutline outline(context.path);
  for (const QString& keyword : {text(lineKeyword(context.layer.model())), text(kContours)}) {
    if (outline.find(keyword) != nullptr) return unfinishedSection(context, keyword);
  }
  return Say::tr("Não há seção %1 nem %2 em %3.")
      .arg(text(lineKeyword(context.layer.model())), text(kContours), context.options.file);
}

// The section whose header speaks for the import of that kind.
const AsciiSection* leadingSection(const AsciiOutline& outline, const QString& kind) {
  if (kind == QLatin1String("contours")) return outline.find(text(kContours));
  const AsciiSection* const lines = outline.find(text(kLines));
  const AsciiSection* const network = outline.find(text(kNetwork));
  const AsciiSection* const contours = outline.find(text(kContours));
  if (kind == QLatin1String("lines")) return lines != nullptr ? lines : network;
  if (contours != nullptr) return contours;
  return lines != nullptr ? lines : network;
}

short modelFor(const AsciiSection& section) {
  if (section.keyword == text(kContours)) return DIGITALMODEL;
  return section.keyword == text(kNetwork) ? short{NETWORKMODEL} : short{THEMATICMODEL};
}

SourceFacts inspectAscii(const QString& path, const QString& kind, const Options&) {
  const auto outline = std::make_shared<AsciiOutline>(path);
  SourceFacts facts;
  facts.box = [](SProjection*, SProjection*, int) { return Box::inverted(); };
  const AsciiSection* const section = leadingSection(*outline, kind);
  if (section == nullptr) return facts;
  if (outline->count(section->keyword) > 1) {
    note(Say::tr("O arquivo tem %1 seções %2; só a primeira (linha %3) é importada.")
             .arg(outline->count(section->keyword))
             .arg(section->keyword)
             .arg(section->line));
  }
  AsciiHeader header = outline->header(*section);
  facts.model = modelFor(*section);
  facts.units = header.units;
  facts.scale = header.scale;
  if (header.projection != nullptr && header.projection->type() != ProjectionType::none) {
    facts.projection = std::move(header.projection);
    facts.projectionReason = QStringLiteral("header");
  }
  if (header.hasBox) {
    // The box is in the plane already, whatever the form of the coordinates.
    facts.box = [box = header.box](SProjection* source, SProjection* target, int units) {
      return transferredBox(box, source, target, units == 4 || units == 5 ? 0 : units);
    };
    facts.boxReason = Say::tr("do cabeçalho");
  } else {
    facts.box = [outline, section](SProjection* source, SProjection* target, int units) {
      return outline->extent(*section, source, target, units);
    };
    facts.boxReason = Say::tr("das coordenadas");
  }
  return facts;
}

std::unique_ptr<IEAsc> exporter(const ExportContext& context) {
  auto handler = std::make_unique<IEAsc>();
  const QByteArray separator = context.options.separator.toLatin1();
  handler->Init(context.folder, 0, context.name, &context.project, &context.layer, &context.dataBase,
                context.project.projection(), static_cast<short>(context.options.coords.value_or(0)),
                separator.constData(), nullptr, nullptr);
  return handler;
}

Vector* lineSource(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

Vector* contourSource(InfoLayer& layer) {
  return firstVector(layer, {vectorContours, vectorSamples, vectorLines});
}

// Break lines of a numeric layer too, though the handler has no export for them alone: what is there is told.
bool hasLines(InfoLayer& layer) {
  for (const short kind : {vectorLines, vectorSamples}) {
    Vector* const vector = layer.vector(kind);
    if (vector != nullptr && vector->lineCount() > 0) return true;
  }
  return false;
}

bool hasPolygons(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorLines);
  return vector != nullptr && vector->polygonCount() > 0;
}

bool hasContours(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorContours);
  return vector != nullptr && vector->lineCount() > 0;
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

}  // namespace

Format asciiFormat() {
  return {"ascii",
          FileFormat::ascii,
          true,
          true,
          {QStringLiteral(".kdx"), QStringLiteral(".txt"), QStringLiteral(".asc")},
          {},
          inspectAscii,
          {{"features", THEMATICMODEL, importFeatures, missingFeatures},
           {"lines", THEMATICMODEL, importLines, missingLines},
           {"contours", DIGITALMODEL, importContours, missingContours}},
          {{"lines", lineSource, hasLines, exportLines},
           {"polygons", lineSource, hasPolygons, exportPolygons},
           {"contours", contourSource, hasContours, exportContours}},
          {}};
}

}  // namespace kaldex::cli
