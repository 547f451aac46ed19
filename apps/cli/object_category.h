#ifndef KALDEX_CLI_OBJECT_CATEGORY_H
#define KALDEX_CLI_OBJECT_CATEGORY_H

#include <QString>
#include <vector>

#include "kaldex/model/database.h"

namespace kaldex::cli {

/// The object categories that have objects in the layer, in order of identifier.
std::vector<Category*> objectCategories(DataBase& dataBase, InfoLayer& layer);

/// The one to export by: that of the name if one is given, else the only one of the layer. Null, and told,
/// when there is none or more than one.
Category* objectCategoryOf(DataBase& dataBase, InfoLayer& layer, const QString& name);

}  // namespace kaldex::cli

#endif
