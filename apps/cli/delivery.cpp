#include "cli/delivery.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "base/disk_room.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

const char kOld[] = ".kaldex-old";

// The bytes of a file at the end of another open one, in blocks.
bool copyInto(QFile& from, QFile& to) {
  constexpr qint64 kBlock = 1024 * 1024;
  while (!from.atEnd()) {
    const QByteArray block = from.read(kBlock);
    if (block.isEmpty() || to.write(block) != block.size()) return false;
  }
  return to.flush();
}

// By what the names lead to: links and other ways to write a path are the same file.
bool isSameFile(const QString& one, const QString& other) {
  struct stat first {
  }, second{};
  return stat(QFile::encodeName(one).constData(), &first) == 0 &&
         stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

bool rename(const QString& from, const QString& to) {
  return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

}  // namespace

Delivery::Delivery(const QString& target, const QStringList& companions)
    : given_(target), companions_(companions) {
  // A link stays one: what it leads to is replaced.
  const QFileInfo given(target);
  const QFileInfo info(given.isSymLink() && given.isFile() ? given.canonicalFilePath() : target);
  folder_ = info.path();
  base_ = info.fileName();
  device_ = info.exists() && !info.isFile() && !info.isDir();
  if (companions_.isEmpty()) return;
  const QString& main = companions_.first();
  ending_ = main;
  if (base_.endsWith(main, Qt::CaseInsensitive)) base_.chop(main.size());
}

QString Delivery::objection(const QStringList& sources) const {
  const QString folder = Say::tr("%1 é uma pasta; espera-se o nome de um arquivo.");
  if (given_.endsWith(QLatin1Char('/')) || QFileInfo(given_).isDir()) return folder.arg(given_);
  for (const QString& name : names(base_)) {
    const QString path = finalPath(name);
    if (QFileInfo(path).isDir()) return folder.arg(path);
    for (const QString& source : sources) {
      if (isSameFile(source, path))
        return Say::tr("%1 é o que se lê aqui, e não pode ser o destino.").arg(path);
    }
  }
  return QString();
}

QString Delivery::finalPath(const QString& name) const {
  return folder_ == QLatin1String(".") ? name : QDir(folder_).filePath(name);
}

QStringList Delivery::names(const QString& base) const {
  QStringList all;
  if (companions_.isEmpty()) {
    if (work_ != nullptr) all = QDir(work_->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    all.removeAll(base);
    return QStringList(base) + all;
  }
  for (const QString& ending : companions_) all << base + ending;
  return all;
}

bool Delivery::exists() const {
  if (device_) return false;
  const QStringList all = names(base_);
  return std::any_of(all.begin(), all.end(),
                     [this](const QString& name) { return QFileInfo::exists(finalPath(name)); });
}

bool Delivery::begin(bool append, bool replace, QString& trouble) {
  append_ = append;
  replace_ = replace;
  if (!QFileInfo(folder_).isDir()) {
    trouble = Say::tr("Não há pasta %1.").arg(folder_);
    return false;
  }
  const QString place = device_ ? QDir::tempPath() : folder_;
  work_ = std::make_unique<QTemporaryDir>(QDir(place).filePath(QStringLiteral(".kaldex-XXXXXX")));
  if (!work_->isValid()) {
    trouble = Say::tr("Não foi possível escrever na pasta %1: %2").arg(place, work_->errorString());
    return false;
  }
  if (!append || !QFileInfo::exists(finalPath(base_))) return true;
  QFile from(finalPath(base_));
  QFile to(workPath());
  const bool copied = from.open(QIODevice::ReadOnly) && to.open(QIODevice::WriteOnly) && copyInto(from, to);
  if (!copied)
    trouble = (Say::tr("Não foi possível copiar %1.").arg(finalPath(base_)) + ' ' + shortage()).trimmed();
  to.setPermissions(from.permissions());
  return copied;
}

QString Delivery::workPath() const {
  return work_->filePath(base_ + ending_);
}

QString Delivery::shortage() const {
  if (work_ == nullptr || !isDiskFull(work_->path())) return QString();
  return Say::tr("O disco de %1 está cheio.").arg(device_ ? QDir::tempPath() : folder_);
}

bool Delivery::finish(QString& trouble) {
  if (device_) return copyToDevice(trouble);
  if (joinSideFiles(trouble) && setAside(trouble) && moveIn(trouble)) return true;
  putBack();
  return false;
}

bool Delivery::joinSideFiles(QString& trouble) const {
  if (!companions_.isEmpty() || replace_) return true;
  for (const QString& name : names(base_)) {
    if (name == base_ || !QFileInfo::exists(finalPath(name))) continue;
    if (!append_) {
      trouble = Say::tr("%1 já existe; use --append ou --overwrite.").arg(finalPath(name));
      return false;
    }
    const QString made = work_->filePath(name);
    const QString part = made + QLatin1String(kOld);
    if (!rename(made, part)) return false;
    QFile before(finalPath(name)), after(part), whole(made);
    const bool joined = before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly) &&
                        whole.open(QIODevice::WriteOnly) && copyInto(before, whole) && copyInto(after, whole);
    after.remove();
    if (!joined) {
      trouble = Say::tr("Não foi possível copiar %1.").arg(finalPath(name));
      return false;
    }
  }
  return true;
}

// What has the names is moved away first, all of it: files that a new export doesn't make would tell lies
// beside it.
bool Delivery::setAside(QString& trouble) {
  const QString old = work_->filePath(QLatin1String(kOld));
  for (const QString& name : names(base_)) {
    if (!QFileInfo::exists(finalPath(name))) continue;
    // A folder would take all that it holds with it.
    if (QFileInfo(finalPath(name)).isDir() || !QDir().mkpath(old) ||
        !rename(finalPath(name), QDir(old).filePath(name))) {
      trouble = Say::tr("Não foi possível substituir %1.").arg(finalPath(name));
      return false;
    }
    aside_ << name;
  }
  return true;
}

bool Delivery::moveIn(QString& trouble) {
  for (const QString& name : names(base_)) {
    const QString made = work_->filePath(name);
    if (!QFileInfo::exists(made)) continue;
    if (!rename(made, finalPath(name))) {
      trouble = Say::tr("Não foi possível gravar %1.").arg(finalPath(name));
      return false;
    }
    files_ << finalPath(name);
  }
  return true;
}

void Delivery::putBack() {
  for (const QString& path : files_) QFile::remove(path);
  files_.clear();
  const QDir old(work_->filePath(QLatin1String(kOld)));
  for (const QString& name : aside_) rename(old.filePath(name), finalPath(name));
}

bool Delivery::copyToDevice(QString& trouble) const {
  const QStringList made = QDir(work_->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  if (made.size() > 1) {
    trouble =
        Say::tr("%1 só pode receber um arquivo, e a saída são %2 arquivos.").arg(given_).arg(made.size());
    return false;
  }
  QFile from(workPath());
  QFile to(finalPath(base_));
  const bool copied = from.open(QIODevice::ReadOnly) &&
                      to.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && copyInto(from, to);
  if (!copied) trouble = Say::tr("Não foi possível gravar %1.").arg(finalPath(base_));
  return copied;
}

}  // namespace kaldex::cli
