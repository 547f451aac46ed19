#ifndef KALDEX_MODEL_STIME_H
#define KALDEX_MODEL_STIME_H

#include <QDateTime>
#include <QString>

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

/// The moment at which an object was made, as the object tables hold it.
class KALDEX_MODEL_API STime {
 public:
  STime() : moment_(QDateTime::currentDateTime()) {}
  explicit STime(const QDateTime& moment) : moment_(moment) {}
  QString date() const { return moment_.toString(QStringLiteral("yyyyMMdd")); }
  QString time() const { return moment_.toString(QStringLiteral("HH:mm:ss")); }

 private:
  QDateTime moment_;
};

}  // namespace kaldex_v1

#endif
