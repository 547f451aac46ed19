#include "lib/frame/shield.h"

#include <QObject>
#include <QString>
#include <new>

#include "kaldex/model/exception.h"
#include "kaldex/model/report.h"

namespace kaldex {

namespace {

// Must be called from a handler. Null for a failure that is not to be told: the user has cancelled.
QString messageOfCurrentException() {
  QString detail;
  try {
    throw;
  } catch (const SException& exception) {
    if (exception.kind() == SException::Kind::cancelled) return QString();
    detail = exception.GetMsg();
  } catch (const std::bad_alloc&) {
    return QObject::tr("Memória insuficiente: Falha na alocação de memória!");
  } catch (const std::exception& exception) {
    detail = QString::fromUtf8(exception.what());
  } catch (...) {
  }
  return QObject::tr("Banco de Dados com problemas!\n(%1)").arg(detail);
}

}  // namespace

bool shielded(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (...) {
    // There may be no memory for words.
    try {
      const QString failure = messageOfCurrentException();
      if (!failure.isNull()) SMessageBox::Show(0, nullptr, QObject::tr("KALDEX"), failure);
    } catch (...) {
    }
  }
  return false;
}

}  // namespace kaldex
