#include "lib/frame/anchor_objects.h"

namespace kaldex {

AnchorObjects::AnchorObjects(DataBase* dataBase, InfoLayer* layer) : dataBase_(dataBase) {
  if (dataBase == nullptr || layer == nullptr) return;
  const QString table = layer->associationTable();
  if (!dataBase->tableExists(table)) return;
  enum Column { object, category, anchor };
  const auto rows = dataBase->selectRecords(table, QStringLiteral("*"), QString(), QString(), QString());
  for (; !rows->atEnd(); rows->next()) {
    objects_[rows->integer(anchor)] = {rows->integer(object), rows->integer(category)};
  }
}

bool AnchorObjects::find(int anchor, KaldexObject& object, Category** category) const {
  const auto found = objects_.find(anchor);
  if (found == objects_.end()) return false;
  Category* const known = dataBase_->GetKaldexObjCategory().Select(found->second.category);
  if (known == nullptr || dataBase_->findObject(found->second.object, *known, object) == 0) return false;
  object.name = object.name.trimmed();
  object.label = object.label.trimmed();
  if (category != nullptr) *category = known;
  return true;
}

}  // namespace kaldex
