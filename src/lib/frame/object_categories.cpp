#include <QObject>

#include "kaldex/extforma.h"
#include "kaldex/model/database.h"

inline namespace kaldex_v1 {

bool SExtFormats::storeCategories(DataBase& base, CategoryList& list) {
  if (base.storeCategories(list) != 0) return true;
  show(QObject::tr("Problemas na atualização de Categorias!"));
  return false;
}

bool SExtFormats::offerToMakeCategory(const QString& name, Category*& category) {
  category = nullptr;
  if (!ask(QObject::tr("Categoria objeto inexistente Cria e continua ?") + name)) return false;
  CategoryList list(List::Ownership::owns);
  list.Append(new Category(-1, name, OBJECTMODEL, QString(), 0, nullptr));
  if (storeCategories(*dataBase, list)) category = list.First();
  return true;
}

}  // namespace kaldex_v1
