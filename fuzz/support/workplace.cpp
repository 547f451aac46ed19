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
  if (text.startsWith(QLatin1String("Banco de Dados com problemas")) ||
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
  dataBase_->commit();
  contentsBefore_ = contents();
}

void Workplace::makeCategories() {
  CategoryList fresh(List::Ownership::owns);
  for (const short model : {THEMATICMODEL, NETWORKMODEL, CADASTRALMODEL, DIGITALMODEL}) {
    fresh.Append(new Category(-1, QString("Categoria %1").arg(model), model, "", 0, nullptr));
  }
  fresh.Append(new Category(-1, "Lotes", OBJECTMODEL, "", 0, nullptr));
  fresh.Append(new Category(-1, "Objetos", OBJECTMODEL, "", 0, nullptr));
  insist(dataBase_->storeCategories(fresh) != 0, "categories");
  SFieldList columns;
  columns.Append(new SField("GEOID", 0, 10, 0, 0, ""));
  columns.Append(new SField("AREA_M2", 1, 17, 8, 1, ""));
  columns.Append(new SField("BAIRRO", 3, 20, 0, 2, ""));
  insist(dataBase_->createAttributeTable(*objects(true), columns) != 0, "attribute table");
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

Category* Workplace::objects(bool withTable) const {
  return dataBase_->categoryList().Select(withTable ? QStringLiteral("Lotes") : QStringLiteral("Objetos"));
}

long long Workplace::contents() const {
  long long count = dataBase_->categoryList().Size();
  for (int kind = 0; kind < layerKinds; ++kind) {
    Vector* stored = vector(static_cast<LayerKind>(kind));
    if (stored == nullptr) return -1;
    count += stored->lineCount() + stored->polygonCount() + stored->point2dCount() + stored->point3dCount() +
             stored->anchorCount();
  }
  return count;
}

void Workplace::undone(std::uint8_t answers, const std::function<void()>& operation) {
  presenter_.start(answers);
  JobReport report;
  {
    const JobReportScope scope(report);
    const DBTransactionBlock block(dataBase_.get());
    operation();
  }
  if (contents() != contentsBefore_) finding("a transaction that was given up left something behind");
}

}  // namespace kaldex::fuzz
