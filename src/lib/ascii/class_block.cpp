#include "lib/ascii/class_block.h"

#include <QObject>

#include "kaldex/model/database.h"
#include "lib/ascii/header_writer.h"
#include "lib/ascii/info_reader.h"
#include "lib/ascii/record_text.h"
#include "lib/frame/class_making.h"

inline namespace kaldex_v1 {

int IEAsc::ClassBlock::run() {
  if (handler_.dataBase == nullptr) return invalidArgument("dataBase");
  category_ = handler_.infoLayer != nullptr ? handler_.infoLayer->category() : nullptr;
  if (category_ == nullptr || category_->model != THEMATICMODEL) {
    return show(QObject::tr("Modelo da categoria é inválido para esta operação!"));
  }
  if (category_->classes.Size() == 0) {
    addAll_ = ask(QObject::tr("Categoria sem classes. Cria e continua ?"));
    if (!addAll_) return 0;
  }
  if (!readClasses()) return 0;
  store();
  tell();
  return 1;
}

bool IEAsc::ClassBlock::readClasses() {
  for (;;) {
    handler_.clearLine();
    if (handler_.readLine() == 0) return false;
    if (kaldex::startsWith(handler_.line, "INFO_END")) return true;
    kaldex::ClassLine line;
    if (!kaldex::parseClassLine(handler_.line, points_ ? 1 : 2, line)) {
      handler_.inconsistent(handler_.line);
      return false;
    }
    if (!take(line)) return false;
  }
}

bool IEAsc::ClassBlock::take(const kaldex::ClassLine& line) {
  if (GeoClass* const known = category_->classes.findByName(QString::fromLatin1(line.name.c_str()))) {
    ++changed_;
    colour(known->visual, line);
    return true;
  }
  const bool first = notFound_++ == 0;
  if (first && !addAll_) {
    addAll_ = ask(QObject::tr("Classe não encontrada. Adiciona TODAS as classes não encontradas ?") +
                  headOf(handler_.line));
  }
  return !addAll_ || add(line);
}

bool IEAsc::ClassBlock::add(const kaldex::ClassLine& line) {
  GeoClass* const fresh = kaldex::makeClass(*category_, QString::fromLatin1(line.name.c_str()));
  if (fresh == nullptr) return false;
  // What the line doesn't colour keeps the colours that a new visual has.
  colour(fresh->visual, line);
  ++added_;
  return true;
}

void IEAsc::ClassBlock::colour(GeneralVisual& visual, const kaldex::ClassLine& line) const {
  if (points_) {
    visual.SetPointColor(line.first[0], line.first[1], line.first[2]);
  } else {
    visual.SetPolygonColor(line.first[0], line.first[1], line.first[2]);
    visual.SetLineColor(line.second[0], line.second[1], line.second[2]);
  }
}

void IEAsc::ClassBlock::store() {
  DataBase& base = *handler_.dataBase;
  storeCategories(base, base.categoryList());
  base.beginVisualRefresh();
  for (GeoClass* geoClass : category_->classes) base.refreshClassVisual(*handler_.infoLayer, *geoClass);
  base.endVisualRefresh();
}

void IEAsc::ClassBlock::tell() const {
  const QString counts = kaldex::filledIn(
      QObject::tr("Classes não encontradas=%d e classes adicionadas=%d e visual alterados=%d %s"),
      {QString::number(notFound_), QString::number(added_), QString::number(changed_), "(THEMACLASS)"});
  show(QObject::tr("Sumário:") + counts);
}

}  // namespace kaldex_v1
