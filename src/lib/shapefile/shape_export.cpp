#include "lib/shapefile/shape_export.h"

#include <QFile>
#include <QObject>
#include <algorithm>
#include <limits>

#include "kaldex/job_report.h"
#include "kaldex/model/report.h"
#include "lib/frame/shield.h"
#include "lib/shapefile/sidecars.h"

namespace kaldex {

namespace {

int progressMaximum(long long steps) {
  return static_cast<int>(std::min<long long>(steps, std::numeric_limits<int>::max()));
}

}  // namespace

void showMessage(const QString& text) {
  SMessageBox::Show(0, nullptr, QObject::tr("KALDEX"), text);
}

ExportOutcome guarded(const std::function<ExportOutcome()>& operation) {
  ExportOutcome outcome = ExportOutcome::failed;
  return shielded([&] { outcome = operation(); }) ? outcome : ExportOutcome::failed;
}

ExportOutcome refuseGeometry() {
  showMessage(QObject::tr("Formato inválido!"));
  return ExportOutcome::refused;
}

std::int32_t flatShapeType(short geometry) {
  switch (geometry) {
    case ExportGeometry::points:
      return ShapeKind::point;
    case ExportGeometry::lines:
      return ShapeKind::arc;
    case ExportGeometry::polygons:
      return ShapeKind::polygon;
    default:
      return ShapeKind::null;
  }
}

ShapeExport::ShapeExport(const ExportRequest& request)
    : request_(request), coordinates_(request.vector.projection(), request.coordMode), sink_(request.file) {}

ShapeExport::~ShapeExport() = default;

ExportOutcome ShapeExport::run(std::int32_t shapeType) {
  if (request_.name == nullptr) {
    showMessage(QObject::tr("Um argumento inválido foi passado!") + "arg : name");
    return ExportOutcome::failed;
  }
  request_.file.byteOrderMode = 1;
  const FilesKeptOpen keptOpen(vector());
  SFieldList columns;
  addColumns(columns);
  base_ = request_.name;
  if (!nameIsGood() || !sink_.open(base_, shapeType, columns)) return tellProblem();
  ProgressScope progress(progressMaximum(stepCount()));
  progress_ = &progress;
  writeRecords();
  progress_ = nullptr;
  return SGError->cancelled() ? ExportOutcome::failed : finish();
}

// A longer name would not fit, with its ending, where programs of this family keep it.
bool ShapeExport::nameIsGood() const {
  return base_.size() <= static_cast<std::size_t>(ShapeFile::kMaxName);
}

ExportOutcome ShapeExport::finish() {
  // That records could not be written is remembered and told here, though the files were closed: a truncated
  // shapefile must not pass for a whole one.
  if (!sink_.close(coordinates_.apply(vector().BoundingBox()))) return tellProblem();
  bool withProjection = false;
  if (!writeEncodingFile(base_) ||
      !writeProjectionFile(base_, vector().projection(), coordinates_, withProjection)) {
    return tellProblem();
  }
  report(withProjection);
  return ExportOutcome::done;
}

ExportOutcome ShapeExport::tellProblem() {
  JobReport* const report = JobReport::current();
  if (report != nullptr && sink_.problem() == ShapeSink::Problem::tooLarge) {
    report->note(QObject::tr("O arquivo passaria de 4 GB, o limite do formato"));
  }
  showMessage(QObject::tr("Erro de I/O."));
  return ExportOutcome::failed;
}

void ShapeExport::addColumn(SFieldList& columns, const QString& name, short type, int width, int decimals) {
  columns.Append(new SField(name, type, static_cast<short>(width), static_cast<short>(decimals),
                            static_cast<short>(columns.Size())));
}

bool ShapeExport::goOn() {
  progress_->step();
  return sink_.ok() && !progress_->cancelled();
}

void ShapeExport::writeLine(const Line& line) {
  const std::int32_t start = 0;
  const int count = line.Size();
  sink_.writeArc(coordinates_.apply(line.box),
                 {&start, 1, coordinates_.applied(line.coordinates(), count), count});
}

void ShapeExport::writePoint(const Point& point) {
  double x = point.x;
  double y = point.y;
  coordinates_.apply(x, y);
  sink_.writePoint(x, y);
}

void ShapeExport::report(bool withProjection) {
  JobReport* const report = JobReport::current();
  if (report == nullptr) return;
  for (const auto& [kind, count] : read_) report->countRead(QString::fromLatin1(kind), count);
  for (const auto& [kind, count] : written_) report->countWritten(QString::fromLatin1(kind), count);
  for (const auto& [reason, count] : leftOut_) report->countLeftOut(QString::fromLatin1(reason), count);
  for (const char* ending : {".shp", ".shx", ".dbf", ".cpg"}) {
    report->files.append(QFile::decodeName((base_ + ending).c_str()));
  }
  if (withProjection) report->files.append(QFile::decodeName((base_ + ".prj").c_str()));
  if (withProjection) {
    const SProjection& projection = *vector().projection();
    report->projection = coordinates_.isDegrees()
                             ? JobReport::Choice{projection.datum().name(), QStringLiteral("coords")}
                             : JobReport::Choice{projection.name(), QStringLiteral("layer")};
  }
  report->encoding = {QStringLiteral("ISO-8859-1"), QStringLiteral("format")};
  if (coordinates_.hasFailed()) {
    report->note(QObject::tr("Há coordenadas sem correspondente geográfico; ficaram indefinidas"));
  }
  if (sink_.bytes() > kWidelyReadBytes) {
    report->note(QObject::tr("O arquivo passa de 2 GB, e nem todo programa o lê"));
  }
}

}  // namespace kaldex
