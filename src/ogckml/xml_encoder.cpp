#include "ogckml/xml_encoder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QTemporaryFile>

#include "base/disk_room.h"
#include "ogckml/kml_writer.h"
#include "ogckml/kmz_archive.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

namespace {

// To be asked while what was written is still there.
QString reasonOf(const QString& path, const QString& otherwise) {
  return kaldex::isDiskFull(QFileInfo(path).path()) ? QObject::tr("O disco está cheio.") : otherwise;
}

}  // namespace

bool SXMLEncoderQt::save(const std::string& path) {
  return write(QFile::decodeName(path.c_str()));
}

bool SXMLEncoderQt::saveZipped(const std::string& path) {
  const QString archive = QFile::decodeName(path.c_str());
  QTemporaryFile document(QDir(QFileInfo(archive).path()).filePath(QStringLiteral(".kaldex-kml-XXXXXX")));
  if (!document.open()) {
    error_ = reasonOf(archive, document.errorString());
    return false;
  }
  const QString name = document.fileName();
  document.close();
  if (!write(name)) return false;
  const bool zipped = kaldex::writeKmz(path, QFile::encodeName(name).toStdString(), error_);
  if (!zipped) error_ = reasonOf(archive, error_);
  return zipped;
}

bool SXMLEncoderQt::write(const QString& path) {
  error_.clear();
  QFile file(path);
  const bool written =
      file.open(QIODevice::WriteOnly) && kaldex::KmlWriter(file).write(root_, *document_) && file.flush();
  // Closing forgets why a write failed.
  if (!written) error_ = reasonOf(path, file.errorString());
  file.close();
  if (written && file.error() == QFileDevice::NoError) return true;
  if (written) error_ = reasonOf(path, file.errorString());
  QFile::remove(path);
  return false;
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
