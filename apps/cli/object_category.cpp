#include "cli/object_category.h"

#include <QStringList>

#include "cli/texts.h"
#include "kaldex/model/report.h"

namespace kaldex::cli {

namespace {

Category* tell(const QString& text) {
  SMessageBox::Show(0, nullptr, QStringLiteral("KALDEX"), text);
  return nullptr;
}

bool hasObjects(DataBase& dataBase, const QString& associations, const Category& category) {
  const QString condition = QStringLiteral("%1->CATEGORIA = %2").arg(associations).arg(category.id);
  return !dataBase
              .selectRecords(associations, QStringLiteral("%1->CATEGORIA").arg(associations), condition,
                             QString(), QString())
              ->atEnd();
}

}  // namespace

std::vector<Category*> objectCategories(DataBase& dataBase, InfoLayer& layer) {
  std::vector<Category*> found;
  const QString associations = layer.associationTable();
  if (!dataBase.tableExists(associations)) return found;
  for (Category* const category : dataBase.GetKaldexObjCategory()) {
    if (hasObjects(dataBase, associations, *category)) found.push_back(category);
  }
  return found;
}

Category* objectCategoryOf(DataBase& dataBase, InfoLayer& layer, const QString& name) {
  if (!name.isEmpty()) {
    Category* const category = dataBase.GetKaldexObjCategory().Select(name);
    return category != nullptr ? category : tell(Say::tr("Não há categoria de objetos %1.").arg(name));
  }
  const std::vector<Category*> found = objectCategories(dataBase, layer);
  if (found.size() == 1) return found.front();
  if (found.empty()) return tell(Say::tr("O plano %1 não tem objetos.").arg(layer.name));
  QStringList names;
  for (const Category* const category : found) names << category->name;
  return tell(Say::tr("O plano %1 tem objetos de várias categorias; escolha uma com --category: %2")
                  .arg(layer.name, names.join(QStringLiteral(", "))));
}

}  // namespace kaldex::cli
