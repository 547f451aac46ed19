#include "cli/language.h"

#include <QCoreApplication>
#include <QDir>
#include <cstring>

namespace kaldex::cli {

namespace {

constexpr int kMostSources = 10000;

QStringList translationFolders() {
  const QDir beside(QCoreApplication::applicationDirPath());
  return {QStringLiteral(":/i18n"), beside.filePath(QStringLiteral("../share/kaldex/translations")),
          beside.filePath(QStringLiteral("../i18n"))};
}

}  // namespace

Language::Language(const QString& asked) {
  const QString language = asked.isEmpty() ? ofEnvironment() : asked;
  const QString name = QStringLiteral("kaldex_%1.qm").arg(language);
  for (const QString& folder : translationFolders()) {
    const QString path = QDir(folder).filePath(name);
    if (QFile::exists(path) && load(path)) break;
  }
  QCoreApplication::installTranslator(this);
}

QString Language::translate(const char* context, const char* source, const char* disambiguation,
                            int n) const {
  const QString shown = QTranslator::translate(context, source, disambiguation, n);
  const bool ofOperation = context != nullptr && std::strcmp(context, "QObject") == 0;
  if (ofOperation && !shown.isEmpty() && sources_.size() < kMostSources)
    sources_.insert(shown, QString::fromUtf8(source));
  return shown;
}

QString Language::sourceOf(const QString& shown) const {
  QString best;
  for (auto known = sources_.constBegin(); known != sources_.constEnd(); ++known) {
    if (known.key().size() > best.size() && shown.startsWith(known.key())) best = known.key();
  }
  return best.isEmpty() ? shown : sources_.value(best) + shown.mid(best.size());
}

bool Language::isKnown(const QString& language) {
  return language == QLatin1String("pt") || language == QLatin1String("en") ||
         language == QLatin1String("es");
}

QString Language::ofEnvironment() {
  for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const QByteArray value = qgetenv(variable);
    if (value.isEmpty()) continue;
    if (value.startsWith("pt")) return QStringLiteral("pt");
    return value.startsWith("es") ? QStringLiteral("es") : QStringLiteral("en");
  }
  return QStringLiteral("en");
}

}  // namespace kaldex::cli
