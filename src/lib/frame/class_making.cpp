#include "lib/frame/class_making.h"

#include <QObject>
#include <memory>

#include "kaldex/model/report.h"

namespace kaldex {

GeoClass* makeClass(Category& category, const QString& name) {
  auto fresh = std::make_unique<GeoClass>(-1, name, category.model, category.name,
                                          category.classes.Size() + 1, &category);
  // A class without an identifier would be none in every layer, but stand in every list.
  if (fresh->id == 0) {
    SMessageBox::Show(0, nullptr, QObject::tr("KALDEX"),
                      QObject::tr("Problemas na atualização de Categorias!"));
    return nullptr;
  }
  category.classes.Append(fresh.get());
  return fresh.release();
}

}  // namespace kaldex
