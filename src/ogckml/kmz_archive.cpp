#include "ogckml/kmz_archive.h"

#include <zip.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

namespace kaldex {

namespace {

// Documents are packed to a fifth or a tenth; an archive that unpacks to more than this has no map in it.
constexpr std::uint64_t kAlwaysTaken = 64u << 20;
constexpr std::uint64_t kMostUnpacked = 250;  // times the packed size
constexpr zip_uint64_t kMostEntries = 1u << 20;
constexpr char kDocumentName[] = "doc.kml";
constexpr zip_uint32_t kEffort = 6;  // of packing, 1 to 9

bool isKml(std::string_view name) {
  constexpr std::string_view ending = ".kml";
  // "._doc.kml" is what a system of its own kind keeps about "doc.kml".
  const std::string_view file = name.substr(name.find_last_of('/') + 1);
  if (file.size() < ending.size() || file.substr(0, 2) == "._") return false;
  name.remove_prefix(name.size() - ending.size());
  for (std::size_t i = 0; i < ending.size(); ++i) {
    const char c = name[i];
    if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c) != ending[i]) return false;
  }
  return true;
}

QString textOf(zip_error_t& error) {
  const QString text = QString::fromLocal8Bit(zip_error_strerror(&error));
  zip_error_fini(&error);
  return text;
}

QString textOf(int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  return textOf(error);
}

}  // namespace

// Ends the use of what libzip handed out; a changed archive is left as it was.
struct ZipEnd {
  void operator()(zip_t* archive) const { zip_discard(archive); }
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

struct KmzReader::Handles {
  std::unique_ptr<zip_t, ZipEnd> archive;
  std::unique_ptr<zip_file_t, ZipEnd> file;  // goes first
};

KmzReader::KmzReader() : handles_(std::make_unique<Handles>()) {}
KmzReader::~KmzReader() = default;

bool KmzReader::isArchive(const std::string& path) {
  FILE* const file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return false;
  char head[4] = {};
  const std::size_t size = std::fread(head, 1, sizeof head, file);
  std::fclose(file);
  // The second is how an archive begins that holds nothing.
  return size == sizeof head && (std::memcmp(head, "PK\x03\x04", sizeof head) == 0 ||
                                 std::memcmp(head, "PK\x05\x06", sizeof head) == 0);
}

bool KmzReader::fail(const QString& why) {
  error_ = why;
  return false;
}

bool KmzReader::open(const std::string& path) {
  int code = 0;
  handles_->archive.reset(zip_open(path.c_str(), ZIP_RDONLY, &code));
  if (handles_->archive == nullptr) return fail(textOf(code));
  const long long document = findDocument();
  if (document < 0) return fail(QObject::tr("O arquivo ZIP não contém um documento KML"));
  path_ = path;
  return openEntry(static_cast<std::uint64_t>(document));
}

bool KmzReader::openEntry(std::uint64_t entry) {
  zip_stat_t status;
  zip_stat_init(&status);
  zip_stat_index(handles_->archive.get(), entry, 0, &status);
  constexpr zip_uint64_t most = std::numeric_limits<long long>::max();
  if (opened_.empty() && (status.valid & ZIP_STAT_SIZE) != 0)
    size_ = static_cast<long long>(std::min(status.size, most));
  // An archive may say that it is larger than it is.
  const auto whole = static_cast<zip_uint64_t>(QFileInfo(QFile::decodeName(path_.c_str())).size());
  const zip_uint64_t packed = (status.valid & ZIP_STAT_COMP_SIZE) != 0 ? status.comp_size : 0;
  packed_ = std::min(packed_ + std::min(packed, whole), whole);
  name_ = (status.valid & ZIP_STAT_NAME) != 0 ? status.name : "";
  opened_.insert(entry);
  handles_->file.reset(zip_fopen_index(handles_->archive.get(), entry, 0));
  return handles_->file != nullptr || fail(QString::fromLocal8Bit(zip_strerror(handles_->archive.get())));
}

std::string KmzReader::linkedEntry(const QString& link) const {
  const std::size_t folder = name_.rfind('/');
  const QString base = QString::fromStdString(folder != std::string::npos ? name_.substr(0, folder + 1) : "");
  const std::string entry = QDir::cleanPath(base + QUrl::fromPercentEncoding(link.toUtf8())).toStdString();
  const bool found =
      isKml(entry) && zip_name_locate(handles_->archive.get(), entry.c_str(), ZIP_FL_ENC_GUESS) >= 0;
  return found ? entry : std::string();
}

bool KmzReader::openEntry(const std::string& name) {
  const zip_int64_t entry = zip_name_locate(handles_->archive.get(), name.c_str(), ZIP_FL_ENC_GUESS);
  return entry >= 0 && opened_.count(static_cast<std::uint64_t>(entry)) == 0 &&
         openEntry(static_cast<std::uint64_t>(entry));
}

long long KmzReader::findDocument() {
  const zip_int64_t count = zip_get_num_entries(handles_->archive.get(), 0);
  long long first = -1;
  bool atTop = false;
  documents_ = 0;
  for (zip_int64_t i = 0; i < count && static_cast<zip_uint64_t>(i) < kMostEntries; ++i) {
    const char* const name =
        zip_get_name(handles_->archive.get(), static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS);
    if (name == nullptr || !isKml(name)) continue;
    ++documents_;
    const bool top = std::strchr(name, '/') == nullptr;
    if (first < 0 || (top && !atTop)) first = i;
    atTop = atTop || top;
  }
  return first;
}

long long KmzReader::read(char* to, std::size_t count) {
  const zip_int64_t size = zip_fread(handles_->file.get(), to, count);
  if (size < 0) {
    fail(QString::fromLocal8Bit(zip_file_strerror(handles_->file.get())));
    return -1;
  }
  unpacked_ += static_cast<std::uint64_t>(size);
  if (unpacked_ > kAlwaysTaken && unpacked_ / kMostUnpacked > packed_) {
    fail(QObject::tr("O arquivo ZIP se expande mais do que um documento pode"));
    return -1;
  }
  return size;
}

bool writeKmz(const std::string& path, const std::string& documentPath, QString& error) {
  int code = 0;
  std::unique_ptr<zip_t, ZipEnd> archive(zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
  if (archive == nullptr) {
    error = textOf(code);
    return false;
  }
  zip_source_t* const source = zip_source_file(archive.get(), documentPath.c_str(), 0, -1);
  const zip_int64_t entry =
      source != nullptr ? zip_file_add(archive.get(), kDocumentName, source, ZIP_FL_ENC_UTF_8) : -1;
  const bool added = entry >= 0;
  if (source != nullptr && !added) zip_source_free(source);
  // Left to itself the library takes several times as long for a hundredth less.
  if (added) {
    zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(entry), ZIP_CM_DEFLATE, kEffort);
  }
  if (!added || zip_close(archive.get()) != 0) {
    error = QString::fromLocal8Bit(zip_strerror(archive.get()));
    return false;
  }
  static_cast<void>(archive.release());  // closed
  return true;
}

}  // namespace kaldex
