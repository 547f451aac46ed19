#ifndef KALDEX_OGCKML_KMZ_ARCHIVE_H
#define KALDEX_OGCKML_KMZ_ARCHIVE_H

#include <QString>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace kaldex {

// Reads the document of a KMZ file, a ZIP archive: the first entry at its top whose name ends in ".kml", else
// the first such entry anywhere. It is unpacked as it is read.
class KmzReader {
 public:
  KmzReader();
  ~KmzReader();

  // `path` in the bytes of the file system. False when there is none; `error` says why.
  bool open(const std::string& path);
  // The next bytes of the document, 0 at its end, -1 when the archive is damaged or unpacks to far more than
  // any document does.
  long long read(char* to, std::size_t count);
  const QString& error() const { return error_; }
  // What the archive says of the document's size, and how many other ones there are.
  long long size() const { return size_; }
  long long otherDocuments() const { return documents_ - 1; }

  static bool isArchive(const std::string& path);

 private:
  struct Handles;

  long long findDocument();
  bool fail(const QString& why);

  std::unique_ptr<Handles> handles_;
  long long documents_ = 0;
  long long size_ = 0;
  std::uint64_t packed_ = 0;
  std::uint64_t unpacked_ = 0;
  QString error_;
};

// Makes the archive `path` (bytes of the file system) with one document in it, which is copied from
// `documentPath`. False after a failure, with the reason in `error`; no archive is left then.
bool writeKmz(const std::string& path, const std::string& documentPath, QString& error);

}  // namespace kaldex

#endif
