#include "lib/arcinfo/ungenerate_writer.h"

#include <QFile>
#include <QObject>

#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kPlaneDecimals = 3;
constexpr int kHeightDecimals = 6;
constexpr short kAngleTexts = 1;
constexpr short kDecimalDegrees = 2;

}  // namespace

IEArcInfo::Writer::Writer(IEArcInfo& handler)
    : handler_(handler),
      out_(handler.file),
      coordinates_(out_, handler.coordFormat == kAngleTexts ? kDecimalDegrees : handler.coordFormat,
                   handler.project != nullptr ? handler.project->projection() : nullptr) {
  handler_.exportedRecords = 0;
}

void IEArcInfo::Writer::record(const Line& line, const float* height) {
  ++handler_.exportedRecords;
  out_.appendInt(handler_.exportedRecords);
  out_.append('\n');
  const int count = line.Size();
  const double* const points = line.coordinates();
  xy_.assign(points, points + 2 * static_cast<std::size_t>(count));
  coordinates_.convert(xy_.data(), static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < xy_.size(); i += 2) {
    pair(&xy_[i]);
    if (height != nullptr) heightBehind(*height);
    out_.append('\n');
  }
  out_.append("END\n");
}

void IEArcInfo::Writer::sample(std::string_view before, const Point& at, float height) {
  place(before, at);
  heightBehind(height);
  out_.append('\n');
}

void IEArcInfo::Writer::label(std::string_view before, const Point& at) {
  place(before, at);
  out_.append("   \n");
}

void IEArcInfo::Writer::place(std::string_view before, const Point& at) {
  double xy[] = {at.x, at.y};
  coordinates_.convert(xy, 1);
  out_.append(before);
  pair(xy);
}

void IEArcInfo::Writer::pair(const double* xy) {
  coordinates_.print(xy, "  ", kPlaneDecimals);
}

void IEArcInfo::Writer::heightBehind(float height) {
  out_.append("  ");
  out_.appendFixed(static_cast<double>(height), kHeightDecimals);
}

QByteArray IEArcInfo::Writer::text(const QString& text) {
  return kaldex::toLatin1(text, &loss_);
}

int IEArcInfo::Writer::finish(bool complete) {
  if (complete) out_.append("END\n");
  const bool flushed = out_.flush();
  const bool closed = handler_.closeWritten();
  if (!flushed || !closed) return ioError();
  report();
  return complete ? 1 : 0;
}

void IEArcInfo::Writer::report() const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const QString name = QFile::decodeName(handler_.openedPath());
  if (!job->files.contains(name)) job->files.append(name);
  if (handler_.coordFormat == kAngleTexts) {
    job->note(QObject::tr(
        "O formato não tem graus, minutos e segundos: as coordenadas foram escritas em graus decimais"));
  }
  if (loss_.count() > 0) {
    job->note(QObject::tr("Caracteres que não existem em Latin-1 foram gravados como \"?\": %1")
                  .arg(loss_.characters().join(QLatin1Char(' '))));
  }
  if (coordinates_.failed() > 0) {
    job->note(QObject::tr("Coordenadas sem valor geográfico: %1").arg(coordinates_.failed()));
  }
}

}  // namespace kaldex_v1
