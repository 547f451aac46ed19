#include <QObject>

#include "kaldex/extforma.h"
#include "kaldex/job_report.h"
#include "kaldex/model/report.h"
#include "lib/frame/file_place.h"

inline namespace kaldex_v1 {

namespace {
constexpr unsigned kLongestDetail = 1000;  // a box with a longer text than this hides its buttons
}

int SExtFormats::show(const QString& text) {
  SMessageBox::Show(0, nullptr, QObject::tr("KALDEX"), text);
  return 0;
}

bool SExtFormats::ask(const QString& text) {
  return SMessageBox::Show(1, nullptr, QObject::tr("KALDEX"), text) != kAnswerNo;
}

int SExtFormats::invalidArgument(const char* argument) {
  return show(QObject::tr("Um argumento inválido foi passado!") + "arg : " + argument);
}

int SExtFormats::outOfMemory(const char* expression) {
  return show(QObject::tr("Memória insuficiente: Falha na alocação de memória!") + expression);
}

int SExtFormats::ioError() {
  return show(QObject::tr("Erro de I/O."));
}

int SExtFormats::logicRestriction(const QString& detail) {
  return show(QObject::tr("Erro associado com uma restrição lógica!") + detail);
}

int SExtFormats::inconsistent(const QString& detail) {
  return inconsistentAs(QObject::tr("Arquivo INCONSISTENTE!") + detail);
}

int SExtFormats::inconsistent(const char* latin1Detail) {
  return inconsistent(headOf(latin1Detail));
}

QString SExtFormats::headOf(const char* latin1) {
  return QString::fromLatin1(latin1, static_cast<int>(qstrnlen(latin1, kLongestDetail)));
}

int SExtFormats::endOfFileInRecord() {
  return inconsistentAs(QObject::tr("Arquivo INCONSISTENTE! ") + "FEOF");
}

int SExtFormats::inconsistentAs(const QString& text) {
  if (lineRefused_) return 0;
  notePlace();
  return show(text);
}

void SExtFormats::notePlace() {
  JobReport* const report = JobReport::current();
  if (report == nullptr) return;
  const long long end = file != nullptr ? ftello(file) : closedAt_;
  if (places_ == nullptr) places_ = std::make_unique<kaldex::PlaceFinder>();
  const kaldex::RecordPlace place = places_->find(openedPath_, end);
  report->place = {QStringLiteral("%1/%2").arg(dataHome, dataFile), place.line, place.column};
}

void SExtFormats::tellRenamed(const QStringList& names, const QStringList& replacements, const char* gap) {
  if (names.isEmpty()) return;
  QString text = QObject::tr(
      "Atenção os seguintes atributos tiveram seus nomes modificados pois eram palavras reservadas do "
      "sistema! ");
  for (int i = 0; i < names.size(); ++i) {
    text += names[i] + QObject::tr(" para ") + replacements[i] + QLatin1String(gap);
  }
  show(text);
}

bool SExtFormats::cancelled() {
  return SGError->cancelled();
}

}  // namespace kaldex_v1
