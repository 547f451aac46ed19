#ifndef KALDEX_CLI_DATABASE_ACCESS_H
#define KALDEX_CLI_DATABASE_ACCESS_H

#include <QString>
#include <memory>

#include "kaldex/model/database.h"

namespace kaldex::cli {

/// Open an existing geographic database; null, with the reason in `trouble`.
std::unique_ptr<DataBase> openDataBase(const QString& path, QString& trouble);

/// The two names of "PROJECT/LAYER"; the layer's is empty when there is none.
struct PlaceNames {
  explicit PlaceNames(const QString& place);

  QString project;
  QString layer;
};

/// Project and layer of that name, as far as they exist.
struct Place {
  Project* project = nullptr;
  InfoLayer* layer = nullptr;
};
/// Both must exist, the layer only when it is named; else `trouble` says what is missing.
Place findPlace(DataBase& dataBase, const PlaceNames& names, QString& trouble);

/// The projection that a text of the command line means: what projectionFromText takes, a bare EPSG code,
/// "NONE", or a file that holds such a text.
std::unique_ptr<SProjection> projectionOf(const QString& text, QString& trouble);

/// A projection's name for people: its EPSG code or type with its datum.
QString projectionName(const SProjection& projection);

}  // namespace kaldex::cli

#endif
