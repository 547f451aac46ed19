#ifndef KALDEX_TESTS_I18N_TRANSLATION_RULES_H
#define KALDEX_TESTS_I18N_TRANSLATION_RULES_H

#include <QString>
#include <QStringList>

namespace kaldex::test {

// What a translation changes that programs, and not only people, depend on; empty when it is all right. Texts
// of exported files, which are those that begin with "//" or "%s", must besides go into Latin-1 and neither
// lose nor gain a word that a reader of such files looks for.
QStringList flawsOf(const QString& source, const QString& translation);

}  // namespace kaldex::test

#endif
