#include "lib/ascii/section_writer.h"

#include <QFile>
#include <QObject>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "lib/ascii/header_writer.h"

inline namespace kaldex_v1 {

IEAsc::SectionWriter::SectionWriter(IEAsc& handler)
    : handler_(handler),
      out_(handler.file),
      coordinates_(out_, handler.coordFormat,
                   handler.project != nullptr ? handler.project->projection() : nullptr) {}

void IEAsc::SectionWriter::text(const QString& text) {
  out_.append(kaldex::toLatin1(text, &loss_));
}

void IEAsc::SectionWriter::begin(const char* keyword, const QString& comment) {
  begin(keyword, &comment);
}

void IEAsc::SectionWriter::begin(const char* keyword) {
  begin(keyword, nullptr);
}

void IEAsc::SectionWriter::begin(const char* keyword, const QString* comment) {
  out_.append('\n');
  out_.append(keyword);
  out_.append("\nINFO");
  if (comment != nullptr) {
    out_.append('\n');
    text(*comment);
  }
  header();
}

void IEAsc::SectionWriter::header() {
  kaldex::HeaderWriter(out_, handler_.project, handler_.infoLayer, handler_.coordFormat, &loss_).write();
}

void IEAsc::SectionWriter::contourHead(const Line& line) {
  constexpr int heightDecimals = 6;
  out_.append(line.Type() == lineMaster ? "\nLINE3D-MASTER" : "\nLINE3D");
  out_.append("\nHEIGHT ");
  out_.appendFixed(static_cast<double>(line.height), heightDecimals);
}

int IEAsc::SectionWriter::finish(End end) {
  if (end == End::word) endRecord();
  const bool flushed = out_.flush();
  const bool closed = handler_.closeWritten();
  if (!flushed || !closed) return ioError();
  report();
  return end != End::none ? 1 : 0;
}

void IEAsc::SectionWriter::report() const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const QString name = QFile::decodeName(handler_.openedPath());
  if (!job->files.contains(name)) job->files.append(name);
  if (loss_.count() > 0) {
    job->note(QObject::tr("Caracteres que não existem em Latin-1 foram gravados como \"?\": %1")
                  .arg(loss_.characters().join(QLatin1Char(' '))));
  }
  if (coordinates_.failed() > 0) {
    job->note(QObject::tr("Coordenadas sem valor geográfico: %1").arg(coordinates_.failed()));
  }
}

int IEAsc::InfoPrint() {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::InfoPrint");
  if (file == nullptr) return 0;
  kaldex::TextOutput out(file);
  kaldex::HeaderWriter(out, project, infoLayer, coordFormat, nullptr).write();
  return out.flush() ? 1 : 0;
}

}  // namespace kaldex_v1
