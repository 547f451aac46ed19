#include "lib/frame/anchor_objects.h"

namespace kaldex {

AnchorObjects::AnchorObjects(DataBase* dataBase, InfoLayer* layer) : dataBase_(dataBase) {
  if (dataBase == nullptr || layer == nullptr) return;
  const QString table = layer->associationTable();
  if (!dataBase->tableExists(table)) return;
  enum Column { object, category, anchor };
  const auto rows = dataBase->selectRecords(table, QStringLiteral("*"), QString(), QString(), QString());
  for (; !rows->atEnd(); rows->next()) {
    keys_[rows->integer(anchor)] = {rows->integer(object), rows->integer(category)};
  }
}

bool AnchorObjects::find(const Anchor& anchor, KaldexObject& object) const {
  const auto found = keys_.find(anchor.id);
  if (found == keys_.end()) return false;
  Category* const category = dataBase_->GetKaldexObjCategory().Select(found->second.category);
  return category != nullptr && dataBase_->findObject(found->second.object, *category, object) != 0;
}

}  // namespace kaldex
