#include "lib/dxf/drawing_export.h"

#include <QFile>
#include <QObject>

#include "kaldex/model/catalog.h"

inline namespace kaldex_v1 {

namespace {

constexpr short kAngleTexts = 1;
constexpr short kDegrees = 2;
constexpr int kDegreeDecimals = 8;
constexpr int kSecondDecimals = 5;

// Degrees, minutes and seconds are texts, for which drawings have no place.
short numberFormat(short coordFormat) {
  return coordFormat == kAngleTexts ? kDegrees : coordFormat;
}

int decimals(short coordFormat, int planeDecimals) {
  if (coordFormat == 0) return planeDecimals;
  return numberFormat(coordFormat) == kDegrees ? kDegreeDecimals : kSecondDecimals;
}

}  // namespace

IEDXF::DrawingExport::DrawingExport(IEDXF& handler, int planeDecimals)
    : handler_(handler),
      text_(handler.file),
      out_(text_, handler.IEDlayerok.get()),
      planeDecimals_(planeDecimals),
      coordinates_(text_, numberFormat(handler.coordFormat),
                   handler.project != nullptr ? handler.project->projection() : nullptr) {
  out_.setDecimals(decimals(handler.coordFormat, planeDecimals));
}

int IEDXF::DrawingExport::finish() {
  out_.end();
  const bool flushed = text_.flush();
  const bool closed = handler_.closeWritten();
  if (!flushed || !closed) return ioError();
  report();
  return SGError->cancelled() ? 0 : 1;
}

void IEDXF::DrawingExport::report() const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const QString name = QFile::decodeName(handler_.openedPath());
  if (!job->files.contains(name)) job->files.append(name);
  const QString asked = QString::fromLatin1(handler_.chosenLayer_.get());
  const QString layer = QString::fromLatin1(out_.layer().c_str());
  if (!asked.isEmpty() && asked != layer) job->renamed.append({asked, layer});
  noteForm(*job);
  if (coordinates_.failed() > 0)
    job->note(QObject::tr("Coordenadas sem valor geográfico: %1").arg(coordinates_.failed()));
}

// Decimals that are plenty in metres are few in degrees.
void IEDXF::DrawingExport::noteForm(JobReport& job) const {
  if (handler_.coordFormat == kAngleTexts)
    job.note(QObject::tr("DXF não tem graus, minutos e segundos: gravados graus decimais."));
  const SProjection* const plane = handler_.project != nullptr ? handler_.project->projection() : nullptr;
  if (handler_.coordFormat == 0 && plane != nullptr && plane->isLatLong() &&
      planeDecimals_ < kDegreeDecimals) {
    job.note(QObject::tr("Graus gravados com %1 casas decimais; a forma de graus decimais grava %2.")
                 .arg(planeDecimals_)
                 .arg(kDegreeDecimals));
  }
}

void IEDXF::DrawingExport::writePolyline(const Line& line, const char* suffix) {
  const int count = line.Size();
  const double* xy = line.coordinates();
  if (handler_.coordFormat != 0) {
    converted_.assign(xy, xy + 2 * static_cast<std::size_t>(count));
    convert(converted_.data(), static_cast<std::size_t>(count));
    xy = converted_.data();
  }
  out_.polyline(xy, count, line.height, suffix);
}

void IEDXF::DrawingExport::writePoint(const Point& place) {
  double xy[] = {place.x, place.y};
  convert(xy, 1);
  out_.point(xy[0], xy[1]);
}

void IEDXF::DrawingExport::writeText(const Point& place, const QString& string,
                                     const kaldex::DrawingOutput::TextLook& look) {
  double xy[] = {place.x, place.y};
  convert(xy, 1);
  out_.text(xy[0], xy[1], string, look);
}

}  // namespace kaldex_v1

namespace kaldex {

void reportRead(const char* kind, long long count) {
  JobReport* const job = JobReport::current();
  if (job != nullptr && count > 0) job->countRead(QString::fromLatin1(kind), count);
}

void reportWritten(const char* kind, long long count) {
  JobReport* const job = JobReport::current();
  if (job != nullptr && count > 0) job->countWritten(QString::fromLatin1(kind), count);
}

void reportLeftOut(const char* reason, long long count) {
  JobReport* const job = JobReport::current();
  if (job != nullptr && count > 0) job->countLeftOut(QString::fromLatin1(reason), count);
}

void noteEmptyTexts(long long count) {
  JobReport* const job = JobReport::current();
  if (job != nullptr && count > 0)
    job->note(QObject::tr("Textos vazios, que um DXF não guarda: %1").arg(count));
}

}  // namespace kaldex
