#include <QFileInfo>
#include <algorithm>
#include <memory>

#include "cli/ascii_kinds.h"
#include "cli/label_kinds.h"
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
constexpr char kSamples[] = "SAMPLE";
constexpr char kPoints[] = "POINT2D";
constexpr char kTexts[] = "TEXT";
constexpr char kTurns[] = "TURNS";

QString text(const char* keyword) {
  return QString::fromLatin1(keyword);
}

void note(const QString& words) {
  if (JobReport* const report = JobReport::current()) report->note(words);
}

const char* lineKeyword(short model) {
  return model == NETWORKMODEL ? kNetwork : kLines;
}

int importLines(const ImportContext& context) {
  const short kind = context.layer.model() == DIGITALMODEL ? vectorSamples : vectorLines;
  Vector* const vector = context.layer.vector(kind, true);
  return asciiImporter(context, context.projection)->ImportLines(vector, context.project.projection());
}

int importContours(const ImportContext& context) {
  Vector* const vector = context.layer.vector(vectorContours, true);
  return asciiImporter(context, context.projection)->ImportContourout(vector, context.project.projection());
}

struct SectionImport {
  const char* keyword;
  int (*run)(const ImportContext& context);
};

// What a layer of that model can take, in the order in which it is taken: turns need their lines.
std::vector<SectionImport> importsFor(short model) {
  std::vector<SectionImport> imports = {{lineKeyword(model), importLines}, {kContours, importContours}};
  if (model == DIGITALMODEL) {
    imports.push_back({kSamples, importSamples});
  } else {
    imports.push_back({kPoints, importPoints});
  }
  imports.push_back({kTexts, importTexts});
  if (model == NETWORKMODEL) imports.push_back({kTurns, importTurns});
  return imports;
}

// Every section that an import exists for; what has none is told.
int importFeatures(const ImportContext& context) {
  const AsciiOutline outline(context.path);
  const std::vector<SectionImport> imports = importsFor(context.layer.model());
  int result = 0;
  for (const SectionImport& import : imports) {
    if (outline.count(text(import.keyword)) == 0) continue;
    result = import.run(context);
    if (result == 0) return 0;
  }
  JobReport* const report = JobReport::current();
  for (const AsciiSection& section : outline.sections()) {
    const bool taken = std::any_of(imports.begin(), imports.end(), [&](const SectionImport& import) {
      return section.keyword == text(import.keyword);
    });
    if (taken) continue;
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

QString missingSamples(const ImportContext& context) {
  return noSection(context, text(kSamples));
}

QString missingPoints(const ImportContext& context) {
  return noSection(context, text(kPoints));
}

QString missingTexts(const ImportContext& context) {
  return noSection(context, text(kTexts));
}

QString missingTurns(const ImportContext& context) {
  return Say::tr("Não há em %1 restrições de direção entre linhas do plano.").arg(context.options.file);
}

QString missingFeatures(const ImportContext& context) {
  const AsciiOutline outline(context.path);
  QStringList keywords;
  for (const SectionImport& import : importsFor(context.layer.model())) {
    keywords << text(import.keyword);
    if (outline.find(keywords.last()) != nullptr) return unfinishedSection(context, keywords.last());
  }
  return Say::tr("Não há nenhuma destas seções em %1: %2")
      .arg(context.options.file, keywords.join(QStringLiteral(", ")));
}

// The section whose header speaks for the import of that kind: the first that there is.
const AsciiSection* leadingSection(const AsciiOutline& outline, const QString& kind) {
  static const struct {
    const char* kind;
    std::vector<const char*> keywords;
  } leading[] = {{"contours", {kContours}},
                 {"samples", {kSamples}},
                 {"points", {kPoints}},
                 {"texts", {kTexts}},
                 {"turns", {kTurns}},
                 {"lines", {kLines, kNetwork}},
                 {"features", {kSamples, kContours, kLines, kNetwork, kPoints, kTexts, kTurns}}};
  for (const auto& one : leading) {
    if (kind != QLatin1String(one.kind)) continue;
    for (const char* const keyword : one.keywords) {
      if (outline.count(text(keyword)) > 0) return outline.find(text(keyword));
    }
  }
  return nullptr;
}

short modelFor(const AsciiSection& section) {
  if (section.keyword == text(kContours) || section.keyword == text(kSamples)) return DIGITALMODEL;
  const bool network = section.keyword == text(kNetwork) || section.keyword == text(kTurns);
  return network ? short{NETWORKMODEL} : short{THEMATICMODEL};
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

Vector* lineSource(InfoLayer& layer) {
  return firstVector(layer, {vectorLines, vectorContours, vectorSamples});
}

Vector* contourSource(InfoLayer& layer) {
  return firstVector(layer, {vectorContours, vectorSamples, vectorLines});
}

// Those of a numeric layer go out with its samples.
bool hasLines(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorLines);
  return vector != nullptr && vector->lineCount() > 0;
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
  return asciiExporter(context)->ExportLines(&vector, context.options.usedClasses);
}

int exportPolygons(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportPolygons(&vector, context.options.usedClasses);
}

int exportContours(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportContourout(&vector);
}

std::unique_ptr<IEAsc> tableHandler(const TableContext& context) {
  auto handler = std::make_unique<IEAsc>();
  handler->Init(context.folder, 0, context.name, nullptr, nullptr, &context.dataBase, nullptr, 0,
                context.options.separator.toLatin1().constData(), nullptr, nullptr);
  return handler;
}

int importTable(const TableContext& context) {
  return tableHandler(context)->ImportAttributes(&context.category);
}

int exportTable(const TableContext& context) {
  return tableHandler(context)->ExportTable(&context.category);
}

QString missingTable(const TableContext& context) {
  return Say::tr("Não há seção %1 em %2.").arg(QStringLiteral("TABLE"), context.options.file);
}

// Headers tell the separator as a word, and coordinates must not hold it.
QString unreadableSeparator(const Options& options) {
  const QChar separator = options.separator.isEmpty() ? QLatin1Char(';') : options.separator.at(0);
  const bool unreadable =
      separator.isSpace() || separator.isLetterOrNumber() || QStringLiteral("+-.\"").contains(separator);
  return unreadable ? Say::tr("O separador \"%1\" não poderia ser lido de volta.").arg(separator) : QString();
}

std::vector<ExportKind> asciiExports() {
  std::vector<ExportKind> kinds = {{"lines", lineSource, hasLines, exportLines},
                                   {"polygons", lineSource, hasPolygons, exportPolygons},
                                   {"contours", contourSource, hasContours, exportContours},
                                   {"samples", sampleLayer, hasSamples, exportSamples}};
  for (const ExportKind& kind : labelExports()) kinds.push_back(kind);
  kinds.insert(kinds.end(), {{"texts", nullptr, hasTexts, nullptr, exportTexts},
                             {"tin", tinLayer, hasTin, exportTin},
                             {"tin3d", tinLayer, hasTin, exportTin3d},
                             {"turns", networkLayer, hasTurns, exportTurns}});
  return kinds;
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
           {"contours", DIGITALMODEL, importContours, missingContours},
           {"samples", DIGITALMODEL, importSamples, missingSamples},
           {"points", THEMATICMODEL, importPoints, missingPoints},
           {"texts", THEMATICMODEL, importTexts, missingTexts},
           {"labels", THEMATICMODEL, importLabels, missingLabels},
           {"turns", NETWORKMODEL, importTurns, missingTurns}},
          asciiExports(),
          {},
          TextForm::sections,
          {{"table", OBJECTMODEL, true, importTable, missingTable}},
          {{"table", exportTable}},
          unreadableSeparator};
}

}  // namespace kaldex::cli
