#include <QFileInfo>
#include <algorithm>
#include <memory>

#include "cli/ascii_kinds.h"
#include "cli/label_kinds.h"
#include "cli/registry.h"
#include "cli/table_kind.h"
#include "cli/texts.h"
#include "kaldex/ascii.h"
#include "kaldex/job_report.h"
#include "kaldex/model/report.h"

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
constexpr char kLabels[] = "POINTS";
constexpr char kNetworkLabels[] = "NETWORK_OBJECTS";
constexpr char kTable[] = "TABLE";

QString text(const char* keyword) {
  return QString::fromLatin1(keyword);
}

void note(const QString& words) {
  if (JobReport* const report = JobReport::current()) report->note(words);
}

bool isKnown(const SProjection* projection) {
  return projection != nullptr && projection->type() != ProjectionType::none;
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

// Importers compare no more than the length of their keyword.
QString hiddenBy(const AsciiSection& found, const QString& keyword) {
  if (found.keyword == keyword) return QString();
  return Say::tr("A seção %1 (linha %2) está antes da seção %3 e seria tomada por ela; separe-as.")
      .arg(found.keyword)
      .arg(found.line)
      .arg(keyword);
}

QString missingTurns(const ImportContext& context) {
  return Say::tr("Não há em %1 restrições de direção entre linhas do plano.").arg(context.options.file);
}

struct SectionImport {
  const char* keyword;
  int (*run)(const ImportContext& context);
};

// What a layer of that model can take, in the order in which it is taken: labels and turns need what they are
// about.
std::vector<SectionImport> importsFor(short model) {
  const bool network = model == NETWORKMODEL;
  std::vector<SectionImport> imports = {{lineKeyword(model), importLines}, {kContours, importContours}};
  if (model == DIGITALMODEL) {
    imports.push_back({kSamples, importSamples});
  } else {
    imports.push_back({kPoints, importPoints});
  }
  imports.push_back({kTexts, importTexts});
  if (takesLabels(model)) imports.push_back({network ? kNetworkLabels : kLabels, importLabels});
  if (network) imports.push_back({kTurns, importTurns});
  return imports;
}

/// Every section of a file that an import exists for; what has none is told.
class FeaturesImport {
 public:
  explicit FeaturesImport(const ImportContext& context)
      : context_(context), outline_(context.path), imports_(importsFor(context.layer.model())) {}

  int run();

 private:
  int importOne(const SectionImport& import, const AsciiSection& section) const;
  bool isTaken(const AsciiSection& section) const;
  void tellLeftOut(const AsciiSection& section) const;
  static bool hasReadTurns();

  const ImportContext& context_;
  AsciiOutline outline_;
  std::vector<SectionImport> imports_;
};

int FeaturesImport::run() {
  int result = 0;
  for (const SectionImport& import : imports_) {
    if (outline_.count(text(import.keyword)) == 0) continue;
    const int one = importOne(import, *outline_.find(text(import.keyword)));
    if (one == 0 && import.run == importTurns && !hasReadTurns()) {
      // Exports write the section of a network without turns, too.
      note(missingTurns(context_));
      continue;
    }
    if (one == 0) return 0;
    result = one;
  }
  for (const AsciiSection& section : outline_.sections()) {
    if (!isTaken(section)) tellLeftOut(section);
  }
  return result;
}

// Each section has a projection and a form of coordinates of its own.
int FeaturesImport::importOne(const SectionImport& import, const AsciiSection& section) const {
  const QString trouble = hiddenBy(section, text(import.keyword));
  if (!trouble.isEmpty()) {
    SMessageBox::Show(0, nullptr, QString(), trouble);
    return 0;
  }
  const Options& options = context_.options;
  const AsciiHeader header = outline_.header(section);
  const bool ownProjection =
      options.crsFrom.isEmpty() && isKnown(header.projection.get()) && isKnown(context_.project.projection());
  const ImportContext own{options,
                          context_.path,
                          context_.folder,
                          context_.name,
                          context_.dataBase,
                          context_.project,
                          context_.layer,
                          ownProjection ? header.projection.get() : context_.projection,
                          options.units || options.coords ? context_.units : header.units};
  return import.run(own);
}

bool FeaturesImport::isTaken(const AsciiSection& section) const {
  return std::any_of(imports_.begin(), imports_.end(),
                     [&](const SectionImport& import) { return section.keyword == text(import.keyword); });
}

void FeaturesImport::tellLeftOut(const AsciiSection& section) const {
  const AsciiHeader header = outline_.header(section);
  QString words = Say::tr("Seção %1 (linha %2) não importada.").arg(section.keyword).arg(section.line);
  if (section.keyword == text(kTable) && header.spatial && !header.category.isEmpty()) {
    words += QLatin1Char(' ') +
             Say::tr("Uma tabela se importa para a sua categoria: %1")
                 .arg(QStringLiteral("kaldex import ascii table %1 %2 %3")
                          .arg(context_.options.file, context_.options.dataBase, header.category));
  }
  note(words);
  if (JobReport* const report = JobReport::current()) report->countLeftOut(QStringLiteral("unsupported"));
}

bool FeaturesImport::hasReadTurns() {
  const JobReport* const report = JobReport::current();
  return report == nullptr || report->read.contains(QStringLiteral("turns"));
}

int importFeatures(const ImportContext& context) {
  return FeaturesImport(context).run();
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

// The keyword of the section whose header speaks for the import of that kind: the first that there is; null
// when there is none.
const char* leadingKeyword(const AsciiOutline& outline, const QString& kind) {
  static const struct {
    const char* kind;
    std::vector<const char*> keywords;
  } leading[] = {{"contours", {kContours}},
                 {"samples", {kSamples}},
                 {"points", {kPoints}},
                 {"texts", {kTexts}},
                 {"turns", {kTurns}},
                 {"labels", {kLabels, kNetworkLabels}},
                 {"lines", {kLines, kNetwork}},
                 {"features",
                  {kSamples, kContours, kLines, kNetwork, kPoints, kTexts, kLabels, kNetworkLabels, kTurns}}};
  for (const auto& one : leading) {
    if (kind != QLatin1String(one.kind)) continue;
    for (const char* const keyword : one.keywords) {
      if (outline.count(text(keyword)) > 0) return keyword;
    }
  }
  return nullptr;
}

short modelFor(const AsciiSection& section) {
  if (section.keyword == text(kContours) || section.keyword == text(kSamples)) return DIGITALMODEL;
  const bool network = section.keyword == text(kNetwork) || section.keyword == text(kTurns) ||
                       section.keyword == text(kNetworkLabels);
  return network ? short{NETWORKMODEL} : short{THEMATICMODEL};
}

SourceFacts inspectAscii(const QString& path, const QString& kind, const Options&) {
  const auto outline = std::make_shared<AsciiOutline>(path);
  SourceFacts facts;
  facts.box = [](SProjection*, SProjection*, int) { return Box::inverted(); };
  const char* const keyword = leadingKeyword(*outline, kind);
  if (keyword == nullptr) return facts;
  const AsciiSection* const section = outline->find(text(keyword));
  facts.complaint = hiddenBy(*section, text(keyword));
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
  if (isKnown(header.projection.get())) {
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

// Headers tell the separator as a word, and coordinates must not hold it.
QString unreadableSeparator(const Options& options) {
  const QChar separator = options.separator.isEmpty() ? QLatin1Char(';') : options.separator.at(0);
  const bool unreadable =
      separator.isSpace() || separator.isLetterOrNumber() || QStringLiteral("+-.\"_").contains(separator);
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
          {tableImport()},
          {tableExport()},
          unreadableSeparator};
}

}  // namespace kaldex::cli
