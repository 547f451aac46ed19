#include "fuzz/support/scratch.h"

#include <QDir>
#include <QFile>
#include <cstdio>
#include <cstdlib>

namespace kaldex::fuzz {

namespace {

QString place() {
  const QString inMemory = QStringLiteral("/dev/shm");
  return (QDir(inMemory).exists() ? inMemory : QDir::tempPath()) + QStringLiteral("/kaldex-fuzz-XXXXXX");
}

}  // namespace

void finding(const QString& what) {
  std::fprintf(stderr, "FINDING: %s\n", qUtf8Printable(what));
  std::abort();
}

Scratch::Scratch() : folder_(place()) {}

QString Scratch::path(const char* name) const {
  return folder_.filePath(QString::fromLatin1(name));
}

void Scratch::write(const char* name, std::string_view content) const {
  const QByteArray place = QFile::encodeName(path(name));
  std::remove(place.constData());
  if (content.empty()) return;
  FILE* out = std::fopen(place.constData(), "wb");
  if (out == nullptr) finding("the scratch file can't be made");
  const std::size_t written = std::fwrite(content.data(), 1, content.size(), out);
  if (std::fclose(out) != 0 || written != content.size()) finding("the scratch file can't be written");
}

}  // namespace kaldex::fuzz
