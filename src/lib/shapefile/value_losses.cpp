#include "lib/shapefile/value_losses.h"

#include <QObject>

#include "kaldex/job_report.h"

namespace kaldex {

void ValueLosses::characters(const QString& owner, const QString& column, const QString& characters) {
  tell(QObject::tr("%1, coluna %2: caracteres que o Latin-1 não tem, gravados como \"?\": %3")
           .arg(owner, column, characters));
}

void ValueLosses::cutText(const QString& owner, const QString& column, int width) {
  if (JobReport* const report = JobReport::current()) report->countLeftOut(QStringLiteral("bad_value"));
  tell(QObject::tr("%1, coluna %2: texto cortado em %3 caracteres").arg(owner, column).arg(width));
}

void ValueLosses::badNumber(const QString& owner, const QString& column) {
  if (JobReport* const report = JobReport::current()) report->countLeftOut(QStringLiteral("bad_value"));
  tell(QObject::tr("%1, coluna %2: o número não cabe na coluna e ficou vazio").arg(owner, column));
}

void ValueLosses::finish() {
  JobReport* const report = JobReport::current();
  if (report != nullptr && told_ > kListed) {
    report->note(
        QObject::tr("Mais %1 valores da tabela não puderam ser gravados como são").arg(told_ - kListed));
  }
  told_ = 0;
}

void ValueLosses::tell(const QString& text) {
  if (++told_ > kListed) return;
  if (JobReport* const report = JobReport::current()) report->note(text);
}

}  // namespace kaldex
