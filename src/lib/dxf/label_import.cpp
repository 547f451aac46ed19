#include <QHash>
#include <QObject>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/database.h"
#include "lib/ascii/header_writer.h"
#include "lib/dxf/label_filter.h"
#include "lib/dxf/text_walk.h"

inline namespace kaldex_v1 {

namespace {

constexpr short kObjectLabel = -999;
constexpr int kMostOfText = 32;
const QLatin1String kNotSelected("NAOSELECIONAR");

QString fromLatin1(const char* text) {
  return QString::fromLatin1(text != nullptr ? text : "");
}

}  // namespace

/// Texts into the handler's label points.
class IEDXF::LabelImport : public IEDXF::TextWalk {
 public:
  struct Wish {
    kaldex::LabelFilter filter;
    QString categoryName;
    QString addPrefix;
    QString addSuffix;
  };

  LabelImport(IEDXF& handler, InfoLayer& layer, SProjection* target, Wish wish)
      : TextWalk(handler, target),
        layer_(layer),
        category_(*layer.category()),
        wish_(std::move(wish)),
        thematic_(layer.model() == THEMATICMODEL) {}
  ~LabelImport() override;

  /// Asks whether a category without classes gets some.
  bool mayGoOn() const;

 private:
  void beginText() override;
  Step take(int code) override;
  bool finishText() override;
  int finish() override;

  void takePlace();
  void takeText();
  void classify();
  void missClass(const QString& name);
  void knowClasses();
  void tellClasses() const;

  InfoLayer& layer_;
  Category& category_;
  Wish wish_;
  bool thematic_;
  std::unique_ptr<SExtLabelPoint> label_;
  Point place_;
  bool placed_ = false;

  QHash<QString, short> classes_;
  QString lastName_;
  short lastClass_ = 0;
  bool asked_ = false;
  bool addAll_ = false;
  int missing_ = 0;
  int added_ = 0;

  long long read_ = 0;
  long long imported_ = 0;
  long long outside_ = 0;
  long long notSelected_ = 0;
};

IEDXF::LabelImport::~LabelImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("labels", read_);
  if (outside_ > 0) job->countLeftOut("outside_box", outside_);
  if (notSelected_ > 0) job->note(QObject::tr("Textos que não são identificadores: %1").arg(notSelected_));
}

bool IEDXF::LabelImport::mayGoOn() const {
  return !thematic_ || category_.classes.Size() > 0 ||
         ask(QObject::tr("Categoria sem classes. Cria e continua ?"));
}

void IEDXF::LabelImport::beginText() {
  label_ = std::make_unique<SExtLabelPoint>();
  label_->Nclass(wish_.categoryName);
  label_->Label(QString(kNotSelected));
  placed_ = false;
}

IEDXF::EntityImport::Step IEDXF::LabelImport::take(int code) {
  using kaldex::GroupCode;
  if (code == GroupCode::x) x_ = real();
  if (code == GroupCode::y) takePlace();
  if (code == GroupCode::text) takeText();
  return Step::goOn;
}

void IEDXF::LabelImport::takePlace() {
  double xy[] = {x_, real()};
  place(xy, 1);
  place_ = Point(xy[0], xy[1]);
  placed_ = true;
  label_->Nodes = 0;
}

void IEDXF::LabelImport::takeText() {
  const QString text = this->text().text(value()).left(kMostOfText);
  const bool taken = !text.isEmpty() && wish_.filter.takes(text);
  label_->Label(taken ? text : QString(kNotSelected));
  label_->Name(text);
}

bool IEDXF::LabelImport::finishText() {
  ++read_;
  if (!placed_ || !layer_.box.Contains(place_)) {
    ++outside_;
    return true;
  }
  if (label_->Label() == kNotSelected) {
    ++notSelected_;
    return true;
  }
  const QString name = wish_.addPrefix + label_->Name() + wish_.addSuffix;
  label_->Label(name);
  label_->Name(name);
  if (thematic_) {
    classify();
  } else {
    label_->Iclass = kObjectLabel;
  }
  label_->Coordinate(new Point(place_));
  handler_.labelPoints.InsertLabel(label_.release());
  ++imported_;
  return true;
}

void IEDXF::LabelImport::classify() {
  const QString& name = label_->Name();
  if (name != lastName_ || imported_ == 0) {
    if (classes_.isEmpty()) knowClasses();
    lastName_ = name;
    const auto known = classes_.constFind(name);
    lastClass_ = known != classes_.constEnd() ? *known : short(0);
  }
  if (lastClass_ == 0) missClass(name);
  label_->Iclass = lastClass_;
}

void IEDXF::LabelImport::knowClasses() {
  for (const GeoClass* geoClass : category_.classes) {
    if (!classes_.contains(geoClass->name)) classes_.insert(geoClass->name, static_cast<short>(geoClass->id));
  }
}

void IEDXF::LabelImport::missClass(const QString& name) {
  ++missing_;
  if (!asked_) {
    asked_ = true;
    addAll_ = ask(QObject::tr("Classe não encontrada. Adiciona TODAS as classes não encontradas ?"));
  }
  if (!addAll_) return;
  auto* const fresh =
      new GeoClass(-1, name, category_.model, category_.name, category_.classes.Size() + 1, &category_);
  category_.classes.Append(fresh);
  lastClass_ = static_cast<short>(fresh->id);
  classes_.insert(name, lastClass_);
  ++added_;
}

int IEDXF::LabelImport::finish() {
  if (imported_ == 0) return emptyFile("layer");
  if (outside_ > 0) show(QObject::tr("Existem dados fora da área do projeto! ") + QString::number(outside_));
  if (missing_ > 0) {
    if (added_ > 0 && handler_.dataBase != nullptr)
      storeCategories(*handler_.dataBase, handler_.dataBase->categoryList());
    tellClasses();
  }
  return 1;
}

void IEDXF::LabelImport::tellClasses() const {
  const QString counts = kaldex::filledIn(
      QObject::tr("Classes não encontradas=%d e classes adicionadas=%d e visual alterados=%d %s"),
      {QString::number(missing_), QString::number(added_), QString::number(0), QString()});
  show(QObject::tr("Sumário:") + counts);
}

int IEDXF::ImportLabelPoints(SProjection* target, SProjection*, char* className, short* valueKind,
                             char* prefix, char* suffix, char* addPrefix, char* addSuffix) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ImportLabelPoints");
  return guardedImport(nullptr, [&] {
    if (infoLayer == nullptr || infoLayer->category() == nullptr) return invalidArgument("infoLayer");
    if (!openDrawing()) return 0;
    const kaldex::LabelFilter filter{valueKind != nullptr ? *valueKind : short(0), fromLatin1(prefix),
                                     fromLatin1(suffix)};
    // New classes are stored wholly or not at all.
    DBTransactionBlock block(dataBase);
    LabelImport import(*this, *infoLayer, target,
                       {filter, fromLatin1(className), fromLatin1(addPrefix), fromLatin1(addSuffix)});
    const int result = import.mayGoOn() ? import.run() : 0;
    if (result != 0) block.enableCommit();
    return result;
  });
}

}  // namespace kaldex_v1
