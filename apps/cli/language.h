#ifndef KALDEX_CLI_LANGUAGE_H
#define KALDEX_CLI_LANGUAGE_H

#include <QHash>
#include <QString>
#include <QTranslator>

namespace kaldex::cli {

/// The translation that is in force. It remembers what texts of operations it has handed out, so that an
/// answer may name a question by its source text too. Portuguese needs no translation.
class Language : public QTranslator {
 public:
  /// "pt", "en" or "es"; empty: by the environment. A missing translation file leaves the texts as they are.
  explicit Language(const QString& asked);

  QString translate(const char* context, const char* source, const char* disambiguation,
                    int n) const override;

  /// The source text of a shown one, as far as it was translated: what was put behind a translated text
  /// stays.
  QString sourceOf(const QString& shown) const;

  static bool isKnown(const QString& language);
  static QString ofEnvironment();

 private:
  mutable QHash<QString, QString> sources_;
};

}  // namespace kaldex::cli

#endif
