#include <QHash>
#include <QObject>
#include <unordered_set>

#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "kaldex/model/catalog.h"
#include "lib/frame/class_making.h"

inline namespace kaldex_v1 {

/// Finds the classes of label points in a thematic category, and makes those that are missing.
class SExtFormats::ClassResolution {
 public:
  ClassResolution(Category& category, bool byIdentifier, short& addAll)
      : category_(category), byIdentifier_(byIdentifier), addAll_(addAll) {
    for (const GeoClass* geoClass : category.classes) know(*geoClass);
  }

  /// False when the user wants no classes in a category without.
  bool begin();
  /// False when no more classes can be made.
  bool resolve(SExtLabelPoint& labelPoint);
  void tell() const;

 private:
  void know(const GeoClass& geoClass);
  int find(const SExtLabelPoint& labelPoint) const;
  bool add(SExtLabelPoint& labelPoint);

  Category& category_;
  bool byIdentifier_;
  short& addAll_;
  int missing_ = 0;
  std::unordered_set<int> identifiers_;
  QHash<QString, int> names_;
};

// The first of several classes of a name is meant by it.
void SExtFormats::ClassResolution::know(const GeoClass& geoClass) {
  if (geoClass.id == 0) return;
  identifiers_.insert(geoClass.id);
  if (!names_.contains(geoClass.name)) names_.insert(geoClass.name, geoClass.id);
}

int SExtFormats::ClassResolution::find(const SExtLabelPoint& labelPoint) const {
  if (!byIdentifier_) return names_.value(labelPoint.Name(), 0);
  return identifiers_.count(labelPoint.Iclass) != 0 ? labelPoint.Iclass : 0;
}

bool SExtFormats::ClassResolution::begin() {
  if (category_.classes.Size() > 0) return true;
  if (!ask(QObject::tr("Categoria sem classes. Cria e continua ?"))) return false;
  addAll_ = 1;
  return true;
}

bool SExtFormats::ClassResolution::resolve(SExtLabelPoint& labelPoint) {
  labelPoint.Iclass = static_cast<short>(find(labelPoint));
  if (labelPoint.Iclass != 0) return true;
  const bool first = missing_++ == 0;
  if (first && addAll_ == 0 &&
      ask(QObject::tr("Classe não encontrada. Adiciona TODAS as classes não encontradas ?") +
          labelPoint.Name())) {
    addAll_ = 1;
  }
  return addAll_ != 1 || add(labelPoint);
}

bool SExtFormats::ClassResolution::add(SExtLabelPoint& labelPoint) {
  const GeoClass* const fresh = kaldex::makeClass(category_, labelPoint.Name());
  if (fresh == nullptr) return false;
  know(*fresh);
  // Whoever goes by identifiers of its own can't know the new class's: it stays apart from the label.
  if (!byIdentifier_) labelPoint.Iclass = static_cast<short>(fresh->id);
  return true;
}

void SExtFormats::ClassResolution::tell() const {
  if (missing_ == 0) return;
  const QString counts =
      QObject::tr("Classes não encontradas=%1 e classes adicionadas=%2 e visual alterados=%3 %4");
  show(QObject::tr("Sumário:") + counts.arg(missing_).arg(addAll_ != 0 ? missing_ : 0).arg(0).arg(QString()));
}

int SExtFormats::CategorizeLabelPoints(Category* category, int byIdentifier, short* addAll) {
  const Tracer tracer(__FILE__, __LINE__, "SExtFormats::CategorizeLabelPoints");
  return guarded([&] {
    if (labelPoints.Count() == 0) return 1;
    if (category == nullptr) return invalidArgument("cat");
    if (addAll == nullptr) return invalidArgument("addAll");
    // Labels of objects have a category of their own.
    if (category->model != THEMATICMODEL) return 1;
    ClassResolution resolution(*category, byIdentifier == 1, *addAll);
    if (!resolution.begin()) return 0;
    for (SExtLabelPoint* labelPoint : labelPoints) {
      if (!resolution.resolve(*labelPoint)) return 0;
    }
    resolution.tell();
    return 1;
  });
}

}  // namespace kaldex_v1
