#ifndef KALDEX_TESTS_I18N_TS_FILE_H
#define KALDEX_TESTS_I18N_TS_FILE_H

#include <QMap>
#include <QPair>
#include <QString>

namespace kaldex::test {

// Translations by context and source text; an unfinished one is empty.
using Translations = QMap<QPair<QString, QString>, QString>;

// The messages of a Qt translation source file. Throws std::runtime_error when it can't be read.
Translations readTsFile(const QString& path);

}  // namespace kaldex::test

#endif
