#include "cli/import_target.h"

#include "cli/texts.h"

namespace kaldex::cli {

namespace {

bool isNone(const SProjection& projection) {
  return projection.type() == ProjectionType::none;
}

int unitsOfCoords(int coords) {
  constexpr int kDegrees = 4;
  constexpr int kSeconds = 5;
  return coords == 2 ? kDegrees : coords == 3 ? kSeconds : 0;
}

}  // namespace

bool ImportTarget::refuse(const QString& why) {
  job_.fail(why);
  return false;
}

bool ImportTarget::prepare() {
  if (!readProjections() || !findProject()) return false;
  settleSource();
  chooseUnits();
  return findLayer();
}

bool ImportTarget::readProjections() {
  QString trouble;
  if (!options_.crs.isEmpty() && (asked_ = projectionOf(options_.crs, trouble)) == nullptr)
    return refuse(trouble);
  if (!options_.crsFrom.isEmpty()) {
    source_ = projectionOf(options_.crsFrom, trouble);
    if (source_ == nullptr) return refuse(trouble);
    sourceReason_ = QStringLiteral("crs-from");
  } else if (facts_.projection != nullptr) {
    source_ = facts_.projection->clone();
    sourceReason_ = facts_.projectionReason;
  } else if (!facts_.projectionReason.isEmpty()) {
    job_.report().note(
        Say::tr("A projeção que o arquivo diz não foi entendida: %1").arg(facts_.projectionReason));
  }
  return true;
}

bool ImportTarget::findProject() {
  const QString name = PlaceNames(options_.place).project;
  project_ = dataBase_.findProject(name);
  if (project_ != nullptr) {
    if (asked_ == nullptr || *asked_ == *project_->projection()) return true;
    return refuse(Say::tr("O projeto %1 já existe, com a projeção %2; --crs não a muda.")
                      .arg(name, projectionName(*project_->projection())));
  }
  const GeneralProjection none;
  const SProjection* const known = asked_ != nullptr ? asked_.get() : source_.get();
  const SProjection& projection = known != nullptr ? *known : none;
  project_ = dataBase_.createProject(name, projection);
  if (project_ == nullptr) return refuse(Say::tr("Não foi possível criar o projeto %1.").arg(name));
  const QString reason = asked_ != nullptr    ? QString()
                         : source_ != nullptr ? Say::tr(", a do arquivo")
                                              : Say::tr(", pois o arquivo não diz a sua");
  made_ << Say::tr("Projeto %1 criado com a projeção %2%3.").arg(name, projectionName(projection), reason);
  return true;
}

// Coordinates are only converted between two known projections.
void ImportTarget::settleSource() {
  SProjection& target = *project_->projection();
  if (source_ == nullptr || isNone(*source_) || isNone(target)) {
    const bool dropped = source_ != nullptr && !isNone(*source_);
    if (dropped)
      job_.report().note(Say::tr("O projeto não tem projeção: as coordenadas são tomadas como estão."));
    if (!dropped)
      sourceReason_ = isNone(target)      ? QStringLiteral("unknown")
                      : asked_ != nullptr ? QStringLiteral("crs")
                                          : QStringLiteral("project");
    job_.report().projection = {projectionName(dropped ? *source_ : target), sourceReason_};
    source_ = target.clone();
    return;
  }
  job_.report().projection = {projectionName(*source_), sourceReason_};
}

void ImportTarget::chooseUnits() {
  units_ = options_.units    ? *options_.units
           : options_.coords ? unitsOfCoords(*options_.coords)
                             : facts_.units;
}

bool ImportTarget::findLayer() {
  const QString name = PlaceNames(options_.place).layer;
  layer_ = dataBase_.findLayer(*project_, name);
  return layer_ != nullptr ? suitsLayer() : makeLayer();
}

bool ImportTarget::suitsLayer() {
  if (options_.model != 0 && options_.model != layer_->model()) {
    return refuse(
        Say::tr("O plano %1 já existe, de modelo %2.").arg(layer_->name, modelWord(layer_->model())));
  }
  if (!options_.category.isEmpty() && options_.category != layer_->GetCategoryName()) {
    return refuse(
        Say::tr("O plano %1 já existe, na categoria %2.").arg(layer_->name, layer_->GetCategoryName()));
  }
  if (options_.box || options_.scale)
    job_.report().note(Say::tr("O plano %1 já existe: sua caixa e sua escala não mudam.").arg(layer_->name));
  return true;
}

short ImportTarget::chosenModel(const QString& category) const {
  if (options_.model != 0) return options_.model;
  // A category that is named must be meant as it is.
  if (!options_.category.isEmpty()) {
    const Category* const known = dataBase_.categoryList().Select(category);
    if (known != nullptr) return known->model;
  }
  return facts_.model != 0 ? facts_.model : kind_.model;
}

Category* ImportTarget::findCategory(short model) {
  const QString name = options_.category.isEmpty() ? PlaceNames(options_.place).layer : options_.category;
  for (Category* const category : dataBase_.categoryList()) {
    if (category->name == name && category->model == model) return category;
  }
  return makeCategory(name, model);
}

Category* ImportTarget::makeCategory(const QString& name, short model) {
  CategoryList fresh(List::Ownership::owns);
  auto* const category = new Category(-1, name, model, QString(), 0, nullptr);
  fresh.Append(category);
  return dataBase_.storeCategories(fresh) != 0 ? category : nullptr;
}

Box ImportTarget::chosenBox(QString& reason) const {
  if (options_.box) return *options_.box;
  const Box box = facts_.box(source_.get(), project_->projection(), units_);
  reason = box.isInverted() ? Say::tr("o arquivo não tem dados") : facts_.boxReason;
  return box.isInverted() ? Box() : box;
}

bool ImportTarget::makeLayer() {
  LayerDefinition definition;
  definition.name = PlaceNames(options_.place).layer;
  const short model = chosenModel(options_.category);
  definition.category = findCategory(model);
  if (definition.category == nullptr)
    return refuse(Say::tr("Não foi possível criar a categoria do plano %1.").arg(definition.name));
  QString boxReason;
  definition.box = chosenBox(boxReason);
  definition.scale = options_.scale       ? *options_.scale
                     : facts_.scale > 0.0 ? facts_.scale
                                          : suggestedScale(definition.box, project_->projection());
  layer_ = dataBase_.createLayer(*project_, definition);
  if (layer_ == nullptr) return refuse(Say::tr("Não foi possível criar o plano %1.").arg(definition.name));
  const Box& box = definition.box;
  made_ << Say::tr("Plano %1 criado: modelo %2, categoria %3, escala 1:%4, caixa %5%6.")
               .arg(definition.name, modelWord(model), definition.category->name,
                    numberText(definition.scale), boxText(box.x1, box.y1, box.x2, box.y2),
                    boxReason.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(boxReason));
  return true;
}

}  // namespace kaldex::cli
