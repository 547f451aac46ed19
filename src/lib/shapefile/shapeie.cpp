#include "kaldex/shapeie.h"

#include <QFile>
#include <QObject>

#include "base/companion_file.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/database.h"
#include "kaldex/model/projection_text.h"
#include "kaldex/model/report.h"
#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::ImportStopped;
using kaldex::ShapeReader;
using kaldex::ShapeTally;

void noteIndex(const ShapeReader& shapes) {
  JobReport* report = JobReport::current();
  if (report == nullptr) return;
  switch (shapes.indexTrouble()) {
    case kaldex::ShapeIndex::Trouble::none:
      break;
    case kaldex::ShapeIndex::Trouble::missing:
      report->note(QObject::tr("O arquivo .shx não existe; o índice foi refeito na memória."));
      break;
    case kaldex::ShapeIndex::Trouble::short_:
      report->note(QObject::tr("O arquivo .shx está incompleto; o índice foi refeito na memória."));
      break;
    case kaldex::ShapeIndex::Trouble::inconsistent:
      report->note(QObject::tr("O arquivo .shx não corresponde ao .shp; o índice foi refeito na memória."));
      break;
  }
  if (shapes.unreadBytes() > 0) {
    report->note(QObject::tr("%1 bytes no fim do .shp não puderam ser lidos.").arg(shapes.unreadBytes()));
  }
}

void countLeftOut(JobReport& report, const char* reason, long long count) {
  if (count > 0) report.countLeftOut(QString::fromLatin1(reason), count);
}

void reportRead(const ShapeTally& tally, const char* kind) {
  JobReport* report = JobReport::current();
  if (report == nullptr) return;
  if (tally.read > 0) report->countRead(QString::fromLatin1(kind), tally.read);
  countLeftOut(*report, "null_shape", tally.nullShapes + tally.nullCoordinates);
  countLeftOut(*report, "unsupported", tally.damaged);
  countLeftOut(*report, "few_points", tally.fewPoints);
  countLeftOut(*report, "degenerate", tally.degenerate);
  countLeftOut(*report, "outside_box", tally.outside);
  countLeftOut(*report, "refused", tally.refused);
  countLeftOut(*report, "duplicate", tally.duplicates);
  countLeftOut(*report, "unplaced_hole", tally.unplacedHoles);
  countLeftOut(*report, "no_geometry", tally.withoutGeometry);
  if (tally.damaged > 0) {
    report->note(QObject::tr("%1 registros danificados do .shp não foram importados.").arg(tally.damaged));
  }
}

void reportWritten(const ShapeTally& tally, const char* lineKind, const char* pointKind) {
  JobReport* report = JobReport::current();
  if (report == nullptr) return;
  const std::pair<const char*, long long> counts[] = {{lineKind, tally.lines},
                                                      {"polygons", tally.polygons},
                                                      {pointKind, tally.points},
                                                      {"objects", tally.objects}};
  for (const auto& [kind, count] : counts) {
    if (count > 0) report->countWritten(QString::fromLatin1(kind), count);
  }
}

const char* kindOfShapes(int type) {
  switch (type % 10) {
    case 1:
      return "points";
    case 3:
      return "lines";
    default:
      return "polygons";
  }
}

bool isPointType(int type) {
  return type == SHPT_POINT || type == SHPT_POINTZ || type == SHPT_POINTM;
}
bool isLineType(int type) {
  return type == SHPT_ARC || type == SHPT_ARCZ || type == SHPT_ARCM;
}
bool isPolygonType(int type) {
  return type == SHPT_POLYGON || type == SHPT_POLYGONZ || type == SHPT_POLYGONM;
}

}  // namespace

IEShp::IEShp() = default;

IEShp::~IEShp() {
  reservedNames.clear();
  replacementNames.clear();
}

QString IEShp::path() const {
  return dataHome + QLatin1Char('/') + dataFile;
}

int IEShp::ImportLines(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEShp::ImportLines");
  if (vec == nullptr) return invalidArgument("vec");
  if (vec->representation() != vectorLines) return logicRestriction(QStringLiteral("No LINES in Vector"));
  if (dataHome.isEmpty()) return show(QObject::tr("Defina o diretório!"));
  if (dataFile.isEmpty()) return show(QObject::tr("Defina o nome do arquivo!"));
  return guardedImport(vec, [&] { return importFile(*vec, target, &IEShp::importFeatures); });
}

int IEShp::ImportSamples(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEShp::ImportSamples");
  if (vec == nullptr) return invalidArgument("vec");
  if ((vec->representation() & 7) == 0) return logicRestriction(QStringLiteral("No SAMPLE in Vector"));
  return guardedImport(vec, [&] { return importFile(*vec, target, &IEShp::importHeights); });
}

int IEShp::importFile(Vector& vector, SProjection* target,
                      void (IEShp::*import)(Vector&, ShapeReader&, SProjection*)) {
  std::unique_ptr<ShapeReader> shapes = ShapeReader::open(path());
  if (shapes == nullptr) return show(QObject::tr("Erro Open "));
  const kaldex::ProgressScope progress(shapes->count());
  SGError->ProgressSetText(QObject::tr("Importando shapefile..."));
  noteIndex(*shapes);
  badValues_ = 0;
  try {
    (this->*import)(vector, *shapes, target);
    return 1;
  } catch (const ImportStopped& stopped) {
    shapes.reset();
    return stopped.tell == ImportStopped::Tell::nothing ? 0 : show(QObject::tr("Valor inválido!"));
  }
}

void IEShp::importFeatures(Vector& vector, ShapeReader& shapes, SProjection* target) {
  AttributeSource attributes(*this);
  if (!attributes.prepare()) throw ImportStopped{ImportStopped::Tell::nothing};
  ShapeTally tally;
  ShapeSource source(*this, shapes, target, tally);
  const std::unique_ptr<Import> import = featureImport(shapes.type(), source, vector, tally);
  if (import == nullptr) {
    show(QObject::tr("não disponível ") + QStringLiteral("SHAPE TYPE VALUE %1").arg(shapes.type(), 2));
    throw ImportStopped{};
  }
  ObjectMaker objects(*this, attributes, vector);
  if (attributes.on()) import->objects = &objects;
  runImport(*import, tally, kindOfShapes(shapes.type()));
  tally.objects = objects.made();
  reportWritten(tally, "lines", "points");
  attributes.report(shapes.count());
}

std::unique_ptr<IEShp::Import> IEShp::featureImport(int type, ShapeSource& source, Vector& vector,
                                                    ShapeTally& tally) {
  if (isPointType(type)) return std::make_unique<PointImport>(*this, source, vector, tally);
  if (isLineType(type)) return std::make_unique<LineImport>(*this, source, vector, tally);
  if (!isPolygonType(type)) return nullptr;
  if (ask(QObject::tr("Limpa os polígonos internos duplicados ?"))) {
    return std::make_unique<CleanedPolygonImport>(*this, source, vector, tally);
  }
  return std::make_unique<NestedPolygonImport>(*this, source, vector, tally);
}

void IEShp::importHeights(Vector& vector, ShapeReader& shapes, SProjection* target) {
  const int type = shapes.type();
  if (type == SHPT_POINT || type == SHPT_ARC || type == SHPT_POLYGON) {
    show(QObject::tr("SHAPE TYPE VALUE %1.").arg(type, 2) +
         QObject::tr("Utilize interface Conversâo ASCII-KALDEX para definir o atributo COTA e importe KDX"));
    throw ImportStopped{};
  }
  if (!isPointType(type) && !isLineType(type) && !isPolygonType(type)) {
    show(QObject::tr("Arquivo INCONSISTENTE!") + QObject::tr("SHAPE TYPE VALUE %1").arg(type, 2));
    throw ImportStopped{};
  }
  ShapeTally tally;
  ShapeSource source(*this, shapes, target, tally);
  if (isPointType(type)) {
    SampleImport import(*this, source, vector, tally);
    runImport(import, tally, "samples");
  } else {
    ContourImport import(*this, source, vector, tally);
    runImport(import, tally, "contours");
  }
  reportWritten(tally, "contours", "samples");
}

void IEShp::runImport(Import& import, const ShapeTally& tally, const char* kind) {
  {
    DBTransactionBlock block(dataBase);
    try {
      import.run();
    } catch (...) {
      reportRead(tally, kind);
      throw;
    }
    block.enableCommit();
  }
  reportRead(tally, kind);
  import.tell();
}

std::unique_ptr<SProjection> IEShp::sourceProjection(const QString& path, QString* error) {
  const Tracer tracer(__FILE__, __LINE__, "IEShp::sourceProjection");
  if (error != nullptr) error->clear();
  const QByteArray found = kaldex::companionFile(path, "prj");
  if (found.isEmpty()) return nullptr;
  constexpr qint64 kLongestText = 64 * 1024;
  QFile file(QFile::decodeName(found));
  if (!file.open(QIODevice::ReadOnly)) {
    if (error != nullptr) *error = file.errorString();
    return nullptr;
  }
  return projectionFromText(QString::fromUtf8(file.read(kLongestText)).trimmed(), error);
}

}  // namespace kaldex_v1
