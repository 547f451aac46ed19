#ifndef KALDEX_MODEL_STIME_H
#define KALDEX_MODEL_STIME_H

#include <QDateTime>
#include <QString>

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

/// The moment at which an object was made, as the object tables hold it: local date and time. Taking the
/// moment is cheap, its texts are not.
class KALDEX_MODEL_API STime {
 public:
  STime() : milliseconds_(QDateTime::currentMSecsSinceEpoch()) {}
  explicit STime(const QDateTime& moment) : milliseconds_(moment.toMSecsSinceEpoch()) {}
  QString date() const { return moment().toString(QStringLiteral("yyyyMMdd")); }
  QString time() const { return moment().toString(QStringLiteral("HH:mm:ss")); }
  /// Seconds since 1970: moments of the same second have the same texts.
  qint64 seconds() const { return milliseconds_ / 1000; }

 private:
  QDateTime moment() const { return QDateTime::fromMSecsSinceEpoch(milliseconds_); }

  qint64 milliseconds_;
};

}  // namespace kaldex_v1

#endif
