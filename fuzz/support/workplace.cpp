#include "fuzz/support/workplace.h"

#include "kaldex/job_report.h"
#include "kaldex/model/angle.h"
#include "kaldex/model/field.h"

namespace kaldex::fuzz {

namespace {

struct LayerSetup {
  const char* name;
  short model;
  short representation;
};

constexpr LayerSetup kLayers[Workplace::layerKinds] = {
    {"thematic", THEMATICMODEL, vectorLines},   {"network", NETWORKMODEL, vectorLines},
    {"cadastral", CADASTRALMODEL, vectorLines}, {"contours", DIGITALMODEL, vectorContours},
    {"samples", DIGITALMODEL, vectorSamples},
};

std::unique_ptr<SProjection> utm() {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::utm;
  parameters.name = "UTM/SAD69";
  parameters.datum = knownDatum("SAD69");
  parameters.hemisphere = -1;
  parameters.centralMeridian = Math_Deg_To_Rad(-45.0);
  parameters.falseEasting = 500000.0;
  parameters.falseNorthing = 10000000.0;
  parameters.scale = 0.9996;
  return projectionFromParameters(parameters);
}

std::unique_ptr<SProjection> latLong() {
  ProjectionParameters parameters;
  parameters.type = ProjectionType::latLong;
  parameters.name = "LATLONG";
  parameters.datum = knownDatum("WGS84");
  return projectionFromParameters(parameters);
}

void insist(bool holds, const char* what) {
  if (!holds) finding(QString::fromLatin1("the workplace can't be made: %1").arg(QLatin1String(what)));
}

}  // namespace

void BitPresenter::start(std::uint8_t answers) {
  answers_ = answers;
  asked_ = 0;
}

int BitPresenter::present(int kind, QWidget*, const QString&, const QString& text) {
  // A table can't have as many columns as a file may: that is told, and no fault.
  const bool refused = text.contains(QLatin1String("too many columns"));
  if ((text.startsWith(QLatin1String("Banco de Dados com problemas")) && !refused) ||
      text.startsWith(QString::fromUtf8("Memória insuficiente"))) {
    finding(text);
  }
  if (kind == 0) return 0;
  const bool yes = ((answers_ >> (asked_++ % 8)) & 1u) != 0;
  return yes ? kAnswerYes : kAnswerNo;
}

Workplace& Workplace::instance() {
  static int argc = 1;
  static char name[] = "fuzz";
  static char* argv[] = {name, nullptr};
  static QCoreApplication application(argc, argv);
  static Workplace workplace;
  return workplace;
}

Workplace::Workplace() : foreign_(latLong()) {
  SMessageBox::install(&presenter_);
  QString error;
  dataBase_ = DataBase::Create(path("base.gpkg"), &error);
  insist(dataBase_ != nullptr, qPrintable(error));
  project_ = dataBase_->createProject("Projeto", *utm());
  insist(project_ != nullptr, "project");
  makeCategories();
  makeLayers();
  for (int kind = 0; kind < layerKinds; ++kind) fill(static_cast<LayerKind>(kind));
  dataBase_->commit();
  countAnew();
}

void Workplace::makeCategories() {
  CategoryList fresh(List::Ownership::owns);
  for (const short model : {THEMATICMODEL, NETWORKMODEL, CADASTRALMODEL, DIGITALMODEL}) {
    fresh.Append(new Category(-1, QString("Categoria %1").arg(model), model, "", 0, nullptr));
  }
  insist(dataBase_->storeCategories(fresh) != 0, "categories");
}

void Workplace::needObjects() {
  if (hasObjects_) return;
  hasObjects_ = true;
  CategoryList fresh(List::Ownership::owns);
  for (const char* name : {"Objetos", "Lotes", "known_O"}) {
    fresh.Append(new Category(-1, name, OBJECTMODEL, "", 0, nullptr));
  }
  fresh.Append(new Category(-1, "Tabela", NOTSPACIALMODEL, "", 0, nullptr));
  insist(dataBase_->storeCategories(fresh) != 0, "categories of objects");
  insist(layers_[thematic]->makeText() != nullptr, "texts");
  makeTable("Lotes", {{"AREA_M2", 1, 17, 8, 1, ""}, {"BAIRRO", 3, 20, 0, 2, ""}});
  makeTable("known_O", {{"NOME1", 3, 12, 0, 1, ""}, {"AREA1", 1, 9, 2, 2, ""}, {"POP", 0, 6, 0, 3, ""}});
  makeKnownObject();
  dataBase_->commit();
  countAnew();
}

void Workplace::makeTable(const char* category, const std::vector<SField>& columns) {
  SFieldList list;
  list.Append(new SField("GEOID", 0, 10, 0, 0, ""));
  for (const SField& column : columns) list.Append(new SField(column));
  insist(dataBase_->createAttributeTable(*objects(category), list) != 0, category);
}

void Workplace::makeKnownObject() {
  ObjectDefinition definition;
  definition.category = objects("known_O");
  definition.name = definition.label = "000000001";
  KaldexObject object;
  insist(dataBase_->createObject(definition, object) != 0, "object");
  Point2d place(9e6, 9e7);
  Anchor anchor;
  insist(vector(cadastral)->Insert(place) != 0, "point of the object");
  anchor.InsertPoint(place);
  insist(vector(cadastral)->Insert(anchor) != 0, "anchor");
  insist(dataBase_->linkAnchor(*layers_[cadastral], anchor, object) != 0, "link of the anchor");
}

void Workplace::countAnew() {
  for (int kind = 0; kind < layerKinds; ++kind)
    contentsBefore_[kind] = contents(static_cast<LayerKind>(kind));
}

void Workplace::makeLayers() {
  for (int kind = 0; kind < layerKinds; ++kind) {
    LayerDefinition definition;
    definition.name = kLayers[kind].name;
    definition.category = dataBase_->categoryList().Select(QString("Categoria %1").arg(kLayers[kind].model));
    definition.box = Box(0, 0, 1e7, 1e8);
    definition.scale = 25000.0;
    layers_[kind] = dataBase_->createLayer(*project_, definition);
    insist(layers_[kind] != nullptr, kLayers[kind].name);
    insist(layers_[kind]->vector(kLayers[kind].representation, true) != nullptr, kLayers[kind].name);
  }
}

void Workplace::init(SExtFormats& handler, LayerKind kind, const char* dataFile, std::uint8_t settings) {
  static constexpr const char* kSeparators[] = {nullptr, ";"};
  const int units = (settings & 7) % 7;
  const auto coordFormat = static_cast<short>((settings >> 3) & 3);
  SProjection* source = (settings & 0x20) != 0 ? foreign_.get() : projection();
  handler.Init(scratch_.folder(), units, QString::fromLatin1(dataFile), project_, layers_[kind],
               dataBase_.get(), source, coordFormat, kSeparators[(settings >> 6) & 1], nullptr, nullptr);
}

Vector* Workplace::vector(LayerKind kind) const {
  return layers_[kind]->vector(kLayers[kind].representation);
}

Category* Workplace::objects(const char* name) const {
  return dataBase_->categoryList().Select(QString::fromLatin1(name));
}

void Workplace::fill(LayerKind kind) {
  Vector* stored = vector(kind);
  const double corner[] = {9e6, 9e7, 9e6 + 10, 9e7, 9e6, 9e7 + 10, 9e6, 9e7};
  auto line = std::make_unique<Line>();
  line->assign(corner, 4);
  insist(stored->Insert(*line, 1) != 0, "line");
  Line* const boundary = line.release();
  if (kLayers[kind].model == DIGITALMODEL) {
    Point3d sample(corner[0], corner[1], 0.0f);
    insist(stored->Insert(sample, 0) != 0, "sample");
    return;
  }
  auto polygon = std::make_unique<SPolygon>();
  polygon->AppendLine(boundary);
  insist(stored->Insert(*polygon) != 0, "polygon");
  polygon.release();
  Point2d point(corner[0], corner[1]);
  insist(stored->Insert(point) != 0, "point");
}

long long Workplace::contents(LayerKind kind) const {
  Vector* stored = vector(kind);
  if (stored == nullptr) return -1;
  return dataBase_->categoryList().Size() + stored->lineCount() + stored->polygonCount() +
         stored->point2dCount() + stored->point3dCount() + stored->anchorCount();
}

void Workplace::undone(LayerKind kind, std::uint8_t answers, const std::function<void()>& operation) {
  presenter_.start(answers);
  JobReport report;
  const JobReportScope scope(report);
  if (block_ == nullptr) block_ = std::make_unique<DBTransactionBlock>(dataBase_.get());
  operation();
  if (contents(kind) == contentsBefore_[kind]) return;
  block_.reset();
  if (contents(kind) != contentsBefore_[kind])
    finding("a transaction that was given up left something behind");
}

}  // namespace kaldex::fuzz
