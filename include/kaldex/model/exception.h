#ifndef KALDEX_MODEL_EXCEPTION_H
#define KALDEX_MODEL_EXCEPTION_H

#include <QByteArray>
#include <QString>
#include <exception>

#include "kaldex/model/api.h"

inline namespace kaldex_v1 {

/// A failure of the domain model's storage: a full disk, a locked or damaged database, a wrong statement.
class KALDEX_MODEL_API SException : public std::exception {
 public:
  enum class Kind { database, diskFull, busy, cancelled };

  explicit SException(const QString& message, Kind kind = Kind::database);
  ~SException() override;
  QString GetMsg() const { return message_; }
  Kind kind() const { return kind_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  QString message_;
  QByteArray utf8_;
  Kind kind_;
};

}  // namespace kaldex_v1

#endif
