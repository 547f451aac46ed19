#include <sys/stat.h>

#include <QFile>
#include <QObject>
#include <algorithm>
#include <limits>
#include <new>

#include "base/text_input.h"
#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "lib/frame/file_place.h"

inline namespace kaldex_v1 {

namespace {

constexpr std::size_t kStreamBuffer = 64 * 1024;

// The names under which a path may stand in the file system, in the order of trying. Names are Latin-1 by
// contract, so that files of older systems are found; but a new file gets the name that the user typed.
QList<QByteArray> fileNames(const QString& path, bool mayCreate) {
  const QByteArray local = QFile::encodeName(path);
  const QByteArray latin1 = path.toLatin1();
  if (latin1 == local || QString::fromLatin1(latin1) != path) return {local};
  struct stat status;
  if (mayCreate && stat(latin1.constData(), &status) != 0) return {local};
  return {latin1, local};
}

bool isKind(FILE* file, mode_t kind) {
  struct stat status;
  return fstat(fileno(file), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

}  // namespace

int SExtFormats::FileOpen(const char* mode) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::FileOpen");
  if (dataHome.isEmpty()) return show(QObject::tr("Defina o diretório!"));
  if (dataFile.isEmpty()) return show(QObject::tr("Defina o nome do arquivo!"));
  if (mode == nullptr || *mode == 0) return show(QObject::tr("Arquivo INCONSISTENTE!") + "expmsg fileopen");
  if (!openStream(mode)) return ioError();
  if (firstLineIsDos()) return show(QObject::tr("Arquivo no formato DOS, converter para UNIX!"));
  rewind(file);
  return 1;
}

bool SExtFormats::openStream(const char* mode) {
  FileClose();
  ++openings_;
  lineRefused_ = false;
  places_.reset();
  const QList<QByteArray> names =
      fileNames(QStringLiteral("%1/%2").arg(dataHome, dataFile), *mode == 'w' || *mode == 'a');
  for (const QByteArray& name : names) {
    openedPath_ = name;
    file = std::fopen(name.constData(), mode);
    if (file != nullptr) break;
  }
  if (file == nullptr) return false;
  if (isKind(file, S_IFDIR)) {
    FileClose();
    return false;
  }
  if (streamBuffer_ == nullptr) streamBuffer_.reset(new (std::nothrow) char[kStreamBuffer]);
  if (streamBuffer_ != nullptr) std::setvbuf(file, streamBuffer_.get(), _IOFBF, kStreamBuffer);
  return true;
}

// Devices and pipes have no first line to look at: they may never end, or not come back.
bool SExtFormats::firstLineIsDos() {
  if (!isKind(file, S_IFREG)) return false;
  bool carriageReturn = false;
  for (;;) {
    const int c = kaldex::readCharacter(file);
    if (c == EOF) return false;
    if (c == '\n') return carriageReturn;
    carriageReturn = carriageReturn || c == '\r';
  }
}

int SExtFormats::FileClose() {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::FileClose");
  if (file == nullptr) return 1;
  closedAt_ = ftello(file);
  closedWell_ = std::fclose(file) == 0;
  file = nullptr;
  return 1;
}

bool SExtFormats::openFile(const char* mode) {
  if (FileOpen(mode) != 0) return true;
  FileClose();
  return false;
}

bool SExtFormats::closeWritten() {
  closedWell_ = true;
  FileClose();
  return closedWell_;
}

long long SExtFormats::fileSize() const {
  struct stat status;
  return file != nullptr && fstat(fileno(file), &status) == 0 ? static_cast<long long>(status.st_size) : 0;
}

int SExtFormats::progressMaximum(int bytesPerRecord) const {
  const long long records = fileSize() / bytesPerRecord;
  return static_cast<int>(std::min<long long>(records, std::numeric_limits<int>::max()));
}

}  // namespace kaldex_v1
