#include "base/companion_file.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QFile>
#include <memory>

namespace kaldex {

namespace {

bool isFile(const QByteArray& path) {
  struct stat status {};
  return !path.isEmpty() && ::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode);
}

// Length of the path without its extension; a point that begins the name doesn't begin an extension.
int stemLength(const QByteArray& path) {
  const int nameStart = path.lastIndexOf('/') + 1;
  const int point = path.lastIndexOf('.');
  return point > nameStart ? point : path.size();
}

QByteArray anyCase(const QByteArray& stem, const QByteArray& extension) {
  const int nameStart = stem.lastIndexOf('/') + 1;
  const QByteArray folder = nameStart == 0 ? QByteArray("./") : stem.left(nameStart);
  const QByteArray prefix = stem.mid(nameStart) + '.';
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.constData()), ::closedir);
  if (entries == nullptr) return QByteArray();
  while (const dirent* entry = ::readdir(entries.get())) {
    const QByteArray name(entry->d_name);
    if (!name.startsWith(prefix) || name.mid(prefix.size()).compare(extension, Qt::CaseInsensitive) != 0)
      continue;
    const QByteArray found = stem.left(nameStart) + name;
    if (isFile(found)) return found;
  }
  return QByteArray();
}

}  // namespace

QByteArray pathBytes(const QString& path) {
  const QByteArray latin1 = path.toLatin1();
  return isFile(latin1) ? latin1 : QFile::encodeName(path);
}

QByteArray companionFile(const QByteArray& path, const char* extension) {
  const QByteArray wanted(extension);
  const int stemEnd = stemLength(path);
  if (path.mid(stemEnd + 1).compare(wanted, Qt::CaseInsensitive) == 0 && isFile(path)) return path;
  const QByteArray stem = path.left(stemEnd);
  for (const QByteArray& variant : {wanted, wanted.toUpper()}) {
    const QByteArray candidate = stem + '.' + variant;
    if (isFile(candidate)) return candidate;
  }
  return anyCase(stem, wanted);
}

QByteArray companionFile(const QString& path, const char* extension) {
  const QByteArray found = companionFile(path.toLatin1(), extension);
  return found.isEmpty() ? companionFile(QFile::encodeName(path), extension) : found;
}

}  // namespace kaldex
