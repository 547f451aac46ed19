#include "ogckml/xml_encoder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include "ogckml/kml_writer.h"
#include "ogckml/kmz_archive.h"

inline namespace kaldex_v1 {
namespace KdxOgc {

bool SXMLEncoderQt::save(const std::string& path) {
  return write(QFile::decodeName(path.c_str()));
}

bool SXMLEncoderQt::saveZipped(const std::string& path) {
  const QString folder = QFileInfo(QFile::decodeName(path.c_str())).path();
  QTemporaryFile document(QDir(folder).filePath(QStringLiteral(".kaldex-kml-XXXXXX")));
  if (!document.open()) {
    error_ = document.errorString();
    return false;
  }
  const QString name = document.fileName();
  document.close();
  return write(name) && kaldex::writeKmz(path, QFile::encodeName(name).toStdString(), error_);
}

bool SXMLEncoderQt::write(const QString& path) {
  error_.clear();
  QFile file(path);
  bool good = file.open(QIODevice::WriteOnly);
  if (good) {
    good = kaldex::KmlWriter(file).write(root_, *document_) && file.flush();
    file.close();
    good = good && file.error() == QFileDevice::NoError;
  }
  if (good) return true;
  error_ = file.errorString();
  QFile::remove(path);
  return false;
}

}  // namespace KdxOgc
}  // namespace kaldex_v1
