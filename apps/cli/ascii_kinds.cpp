#include "cli/ascii_kinds.h"

#include <QFile>

#include "kaldex/job_report.h"
#include "kaldex/model/text.h"

namespace kaldex::cli {

namespace {

QString turnFile(const InfoLayer& layer) {
  return layer.directory + QLatin1Char('/') + layer.fileName + QStringLiteral(".turn");
}

/// Puts a file back as it was, unless its change is to be kept.
class FileAsItWas {
 public:
  explicit FileAsItWas(const QString& path) : file_(path) {
    existed_ = file_.open(QIODevice::ReadOnly);
    if (existed_) content_ = file_.readAll();
    file_.close();
  }
  void putBack() {
    if (!existed_) {
      file_.remove();
    } else if (file_.open(QIODevice::WriteOnly)) {
      file_.write(content_);
      file_.close();
    }
  }

 private:
  QFile file_;
  bool existed_ = false;
  QByteArray content_;
};

}  // namespace

std::unique_ptr<IEAsc> asciiImporter(const ImportContext& context, SProjection* projection) {
  auto handler = std::make_unique<IEAsc>();
  const QByteArray separator = context.options.separator.toLatin1();
  handler->Init(context.folder, context.units, context.name, &context.project, &context.layer,
                &context.dataBase, projection, 0, separator.constData(), nullptr, nullptr);
  return handler;
}

std::unique_ptr<IEAsc> asciiExporter(const ExportContext& context) {
  auto handler = std::make_unique<IEAsc>();
  const QByteArray separator = context.options.separator.toLatin1();
  handler->Init(context.folder, 0, context.name, &context.project, &context.layer, &context.dataBase,
                context.project.projection(), static_cast<short>(context.options.coords.value_or(0)),
                separator.constData(), nullptr, nullptr);
  return handler;
}

// --- Samples ---

int importSamples(const ImportContext& context) {
  Vector* const vector = context.layer.vector(vectorSamples, true);
  return asciiImporter(context, context.projection)->ImportSamples(vector, context.project.projection());
}

Vector* sampleLayer(InfoLayer& layer) {
  return firstVector(layer, {vectorSamples, vectorContours});
}

bool hasSamples(InfoLayer& layer) {
  Vector* const vector = layer.vector(vectorSamples);
  return vector != nullptr && (vector->point3dCount() > 0 || vector->lineCount() > 0);
}

int exportSamples(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportSample(&vector);
}

// --- Points ---

int importPoints(const ImportContext& context) {
  Vector* const vector = context.layer.vector(vectorLines, true);
  return asciiImporter(context, context.projection)->ImportPoint2d(vector, context.project.projection());
}

// --- Texts ---

int importTexts(const ImportContext& context) {
  Text* const texts = context.layer.makeText();
  EntitieList list;
  const int result =
      asciiImporter(context, context.projection)->ImportText(&list, context.project.projection(), nullptr);
  const bool keeps = result != 0 || context.options.keepPartial;
  if (!keeps || texts->store(list) == 0) return 0;
  if (JobReport* const report = JobReport::current(); report != nullptr && list.Size() > 0)
    report->countWritten(QStringLiteral("texts"), list.Size());
  return result;
}

bool hasTexts(InfoLayer& layer) {
  Text* texts = nullptr;
  return layer.Get(texts) != 0 && texts->count() > 0;
}

int exportTexts(const ExportContext& context) {
  EntitieList list;
  context.layer.makeText()->load(list);
  return asciiExporter(context)->ExportText(&list);
}

// --- Triangulations ---

Vector* tinLayer(InfoLayer& layer) {
  return layer.vector(vectorTin);
}

bool hasTin(InfoLayer& layer) {
  return tinLayer(layer) != nullptr;
}

int exportTin(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportTIN(&vector);
}

int exportTin3d(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportTIN3D(&vector);
}

// --- Turns ---

int importTurns(const ImportContext& context) {
  Vector* const vector = context.layer.vector(vectorLines, true);
  FileAsItWas turns(turnFile(context.layer));
  // Their angles are looked up in the plane of the lines, whatever the file says of its own.
  const int result = asciiImporter(context, context.project.projection())->ImportTurns(vector);
  if (context.options.dryRun) turns.putBack();
  return result;
}

Vector* networkLayer(InfoLayer& layer) {
  return layer.vector(vectorLines);
}

bool hasTurns(InfoLayer& layer) {
  return networkLayer(layer) != nullptr && QFile::exists(turnFile(layer));
}

int exportTurns(const ExportContext& context, Vector& vector) {
  return asciiExporter(context)->ExportTurns(&vector);
}

}  // namespace kaldex::cli
