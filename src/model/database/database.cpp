#include "kaldex/model/database.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include "kaldex/model/exception.h"
#include "model/database/geopackage_database.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::GeoPackageDataBase;

bool isServer(const QString& url) {
  return url.startsWith(QLatin1String("postgresql:"), Qt::CaseInsensitive) ||
         url.startsWith(QLatin1String("postgres:"), Qt::CaseInsensitive);
}

void tell(QString* error, const QString& message) {
  if (error != nullptr) *error = message;
}

QString text(const char* source) {
  return QCoreApplication::translate("DataBase", source);
}

QString serverMessage(const QString& url) {
  return text(QT_TRANSLATE_NOOP("DataBase", "Banco de dados PostgreSQL ainda não disponível: %1")).arg(url);
}

std::unique_ptr<DataBase> open(const QString& url, GeoPackageDataBase::Mode mode, QString* error) {
  try {
    return std::make_unique<GeoPackageDataBase>(url, mode);
  } catch (const SException& exception) {
    tell(error, text(QT_TRANSLATE_NOOP("DataBase", "O banco de dados %1 não pôde ser aberto: %2"))
                    .arg(url, exception.GetMsg()));
  }
  return nullptr;
}

}  // namespace

DataBase::~DataBase() = default;

std::unique_ptr<DataBase> DataBase::Open(const QString& url, QString* error) {
  if (isServer(url)) {
    tell(error, serverMessage(url));
    return nullptr;
  }
  // SQLite would make the file.
  if (!QFileInfo(url).isFile()) {
    tell(error, text(QT_TRANSLATE_NOOP("DataBase", "O arquivo %1 não existe.")).arg(url));
    return nullptr;
  }
  return open(url, GeoPackageDataBase::Mode::open, error);
}

std::unique_ptr<DataBase> DataBase::Create(const QString& url, QString* error) {
  if (isServer(url)) {
    tell(error, serverMessage(url));
    return nullptr;
  }
  if (QFileInfo::exists(url)) {
    tell(error, text(QT_TRANSLATE_NOOP("DataBase", "O arquivo %1 já existe.")).arg(url));
    return nullptr;
  }
  // Made here and not by SQLite, so that a file that appears in between is never taken for ours.
  QFile file(url);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
    tell(error, text(QT_TRANSLATE_NOOP("DataBase", "O arquivo %1 não pôde ser criado: %2"))
                    .arg(url, file.errorString()));
    return nullptr;
  }
  file.close();
  std::unique_ptr<DataBase> dataBase = open(url, GeoPackageDataBase::Mode::create, error);
  if (dataBase == nullptr) file.remove();
  return dataBase;
}

DBTransactionBlock::DBTransactionBlock(DataBase* dataBase) : dataBase_(dataBase) {
  if (dataBase_ != nullptr) dataBase_->beginBlock();
}

DBTransactionBlock::~DBTransactionBlock() {
  if (dataBase_ == nullptr) return;
  try {
    dataBase_->endBlock(false);
  } catch (...) {
    // The block's work is undone by SQLite itself when the file is opened again.
  }
}

void DBTransactionBlock::enableCommit() {
  // However it ends, the block is over.
  DataBase* dataBase = dataBase_;
  dataBase_ = nullptr;
  if (dataBase != nullptr) dataBase->endBlock(true);
}

}  // namespace kaldex_v1
