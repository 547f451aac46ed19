#ifndef KALDEX_OGCKML_KMZ_ARCHIVE_H
#define KALDEX_OGCKML_KMZ_ARCHIVE_H

#include <QString>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>

namespace kaldex {

// Reads the document of a KMZ file, a ZIP archive: the first entry at its top whose name ends in ".kml", else
// the first such entry anywhere; then those that are linked to. They are unpacked as they are read.
class KmzReader {
 public:
  KmzReader();
  ~KmzReader();

  // `path` in the bytes of the file system. False when there is none; `error` says why.
  bool open(const std::string& path);
  // The next bytes of the document, 0 at its end, -1 when the archive is damaged or unpacks, all that was
  // opened of it taken together, to far more than any document does.
  long long read(char* to, std::size_t count);
  const QString& error() const { return error_; }
  // The entry that a link of the document leads to; empty when it leads elsewhere.
  std::string linkedEntry(const QString& link) const;
  // Go on with that entry; false when it was read already, and with an error when it can't be.
  bool openEntry(const std::string& name);
  // What the archive says of the first document's size, and how many have not been opened.
  long long size() const { return size_; }
  long long otherDocuments() const { return documents_ - static_cast<long long>(opened_.size()); }

  static bool isArchive(const std::string& path);

 private:
  struct Handles;

  long long findDocument();
  bool openEntry(std::uint64_t entry);
  bool fail(const QString& why);

  std::unique_ptr<Handles> handles_;
  std::string path_;
  std::string name_;  // of the entry
  std::set<std::uint64_t> opened_;
  long long documents_ = 0;
  long long size_ = 0;
  std::uint64_t packed_ = 0;  // of all entries together
  std::uint64_t unpacked_ = 0;
  QString error_;
};

// Makes the archive `path` (bytes of the file system) with one document in it, which is copied from
// `documentPath`. False after a failure, with the reason in `error`; no archive is left then.
bool writeKmz(const std::string& path, const std::string& documentPath, QString& error);

}  // namespace kaldex

#endif
