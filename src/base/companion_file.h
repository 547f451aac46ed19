#ifndef KALDEX_BASE_COMPANION_FILE_H
#define KALDEX_BASE_COMPANION_FILE_H

#include <QByteArray>
#include <QString>

#include "base/api.h"

namespace kaldex {

// The path of an existing file in the bytes of the file system: in Latin-1 if that names one, else in the
// local encoding, whether it exists or not.
KALDEX_BASE_API QByteArray pathBytes(const QString& path);

// The file beside `path` that has the same name but for its extension, which is `extension` ("dbf", no point,
// lower case) in lower case, capitals or any mixture. Empty if there is none. A path that already has this
// extension and exists is taken as it stands; one without an extension gets it appended.
KALDEX_BASE_API QByteArray companionFile(const QByteArray& path, const char* extension);

// The same for a path as text: tried in Latin-1, then in the local encoding.
KALDEX_BASE_API QByteArray companionFile(const QString& path, const char* extension);

}  // namespace kaldex

#endif
