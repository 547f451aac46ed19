#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <memory>

#include "base/number_text.h"
#include "kaldex/model/vector.h"

// The file: a line that names it, then a line a turn with the identifiers of its two lines and its cost.

inline namespace kaldex_v1 {

namespace {

const char kHead[] = "KALDEX TURNS 1";
constexpr qint64 kLongestLine = 256;

QString fileName(const std::string& path) {
  return QFile::decodeName(QByteArray::fromStdString(path));
}

}  // namespace

RestrictionList::RestrictionList(const std::string& path)
    : TypedList<Restriction>(Ownership::owns), path_(path) {
  QFile file(fileName(path_));
  if (!file.open(QIODevice::ReadOnly) || file.readLine(kLongestLine).trimmed() != kHead) return;
  while (!file.atEnd()) {
    const QByteArray row = file.readLine(kLongestLine);
    auto turn = std::make_unique<Restriction>();
    kaldex::TextScan scan({row.constData(), static_cast<std::size_t>(row.size())});
    if (scan.readAll(turn->from, turn->to, turn->cost) >= 2) Append(turn.release());
  }
}

int RestrictionList::Save() const {
  const QString name = fileName(path_);
  if (!QDir().mkpath(QFileInfo(name).path())) return 0;
  // What was there stays until all of the new is written.
  QSaveFile file(name);
  if (!file.open(QIODevice::WriteOnly)) return 0;
  std::string text = kHead;
  text += '\n';
  for (const SObject* const item : items()) {
    const auto& turn = *static_cast<const Restriction*>(item);
    kaldex::appendInt(text, turn.from);
    text += ' ';
    kaldex::appendInt(text, turn.to);
    text += ' ';
    kaldex::appendGeneral(text, static_cast<double>(turn.cost), 9);
    text += '\n';
  }
  const auto size = static_cast<qint64>(text.size());
  return file.write(text.data(), size) == size && file.commit() ? 1 : 0;
}

}  // namespace kaldex_v1
