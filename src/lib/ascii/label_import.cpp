#include "lib/ascii/label_import.h"

#include <QObject>
#include <cmath>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/class_block.h"
#include "lib/ascii/header_writer.h"
#include "lib/frame/class_making.h"

inline namespace kaldex_v1 {

namespace {

constexpr short kObjectLabel = -999;

// Which field of a separated record is what.
enum Field { fieldX, fieldY, fieldThird, fieldName, fieldCategory, fieldNodes };

}  // namespace

IEAsc::LabelImport::LabelImport(IEAsc& handler, InfoLayer& layer, SProjection* target)
    : SectionReader(handler, target), layer_(layer), category_(*layer.category()) {}

IEAsc::LabelImport::~LabelImport() {
  JobReport* const job = JobReport::current();
  if (job != nullptr && read_ > 0) job->countRead("labels", read_);
}

int IEAsc::LabelImport::run() {
  if (!findSection(layer_.model() == NETWORKMODEL ? "NETWORK_OBJECTS" : "POINTS")) return 0;
  DBTransactionBlock block(handler_.dataBase);
  constexpr int bytesPerRecord = 60;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  next_ = std::make_unique<SExtLabelPoint>();
  for (;;) {
    if (!handler_.readWordIntoLine()) return handler_.inconsistent("END ???");
    progress.step();
    if (progress.cancelled()) return 0;
    const Step step = readRecord();
    if (step != Step::goOn) return step == Step::end ? finish(block) : 0;
  }
}

IEAsc::LabelImport::Step IEAsc::LabelImport::readRecord() {
  bool good = true;
  switch (kaldex::labelWord(handler_.line)) {
    case kaldex::LabelWord::comment:
      break;
    case kaldex::LabelWord::end:
      return Step::end;
    case kaldex::LabelWord::header:
      good = readHeader();
      break;
    case kaldex::LabelWord::number:
      good = readPoint(false);
      break;
    case kaldex::LabelWord::angle:
      good = readPoint(true);
      break;
    case kaldex::LabelWord::label:
      good = readWord(label_);
      if (good) next_->Label(label_.text());
      break;
    case kaldex::LabelWord::name:
      good = readWord(name_);
      if (good) next_->Name(name_.text());
      break;
    case kaldex::LabelWord::category:
      good = readWord(categoryName_);
      if (good) next_->Nclass(categoryName_.text());
      break;
    case kaldex::LabelWord::lines:
      nodes_ = 0;
      break;
    case kaldex::LabelWord::nodes:
      good = useNodes();
      break;
    case kaldex::LabelWord::unknown:
      good = malformed();
      break;
  }
  return good ? Step::goOn : Step::failed;
}

int IEAsc::LabelImport::finish(DBTransactionBlock& block) {
  DataBase& base = *handler_.dataBase;
  if (missing_ > 0 && addAll_) storeCategories(base, base.categoryList());
  if (missing_ > 0) tell();
  block.enableCommit();
  handler_.FileClose();
  return 1;
}

bool IEAsc::LabelImport::readHeader() {
  unsigned colours = ClassBlock::polygonsAndLines;
  classesKnown_ = false;
  return handler_.InfoSection(&colours, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr, nullptr) != 0;
}

bool IEAsc::LabelImport::readWord(kaldex::RememberedText& remembered) {
  char word[40];
  if (handler_.ExtraiNome(word) == 0 || word[0] == 0) {
    handler_.inconsistent(handler_.line2);
    return false;
  }
  remembered.set(word);
  return true;
}

bool IEAsc::LabelImport::useNodes() {
  if (layer_.model() != NETWORKMODEL) return malformed();
  nodes_ = 1;
  return true;
}

// --- Coordinates ---

bool IEAsc::LabelImport::readPoint(bool angles) {
  if (handler_.readLine() == 0) {
    handler_.endOfFileInRecord();
    return false;
  }
  if (!isSeparated() && !mayBeOldForm()) return false;
  Point place;
  return (angles ? readAngles(place) : readPlane(place)) && takePoint(place);
}

bool IEAsc::LabelImport::mayBeOldForm() {
  if (askedOldForm_) return true;
  askedOldForm_ = true;
  return ask(QObject::tr("Dados de entrada no formato antigo (sem SEPARATOR). Continua ?"));
}

bool IEAsc::LabelImport::splitLine() {
  short count = 0;
  return handler_.LerComSeparator(&count, fields_[0], fields_[1], fields_[2], fields_[3], fields_[4],
                                  fields_[5]) != 0;
}

bool IEAsc::LabelImport::readPlane(Point& place) {
  if (!isSeparated()) {
    const bool found = kaldex::scanReals(handler_.lineText(), &place.x, &place.y) == 2;
    if (!found || !std::isfinite(place.x) || !std::isfinite(place.y)) return malformed();
  } else {
    if (!splitLine()) return false;
    if (TestDataType(fields_[fieldX], fieldReal) == 0 || TestDataType(fields_[fieldY], fieldReal) == 0) {
      return malformed();
    }
    place.x = kaldex::textToReal(fields_[fieldX]);
    place.y = kaldex::textToReal(fields_[fieldY]);
  }
  place.x *= factor_;
  place.y *= factor_;
  transfer_.apply(place);
  return true;
}

bool IEAsc::LabelImport::readAngles(Point& place) {
  std::string record(handler_.lineText());
  if (isSeparated()) {
    if (!splitLine()) return false;
    if (!kaldex::lookLikeAngles(fields_[fieldX], fields_[fieldY])) return malformed();
    handler_.setLine((std::string(fields_[fieldX]) + "  " + fields_[fieldY]).c_str());
  }
  float height = 0.0f;
  handler_.readLatLong(transfer_, place, height);
  if (place != Point(-1.0, -1.0) && place != Point(0.0, 0.0)) return true;
  handler_.inconsistent(record.c_str());
  return false;
}

bool IEAsc::LabelImport::takePoint(const Point& place) {
  if (!(layer_.model() == THEMATICMODEL ? takeClassName() : takeObject())) return false;
  next_->Coordinate(new Point(place));
  next_->Nodes = nodes_;
  handler_.labelPoints.InsertLabel(next_.release());
  ++read_;
  next_ = std::make_unique<SExtLabelPoint>();
  return true;
}

// --- Labels of objects ---

bool IEAsc::LabelImport::takeObject() {
  if (hasFields()) {
    next_->Label(label_.set(fields_[fieldThird]));
    next_->Name(name_.set(fields_[fieldName]));
    next_->Nclass(categoryName_.set(fields_[fieldCategory]));
    const std::string_view target(fields_[fieldNodes]);
    if (target == "LINES") nodes_ = 0;
    if (target == "NODES") nodes_ = 1;
  }
  if (next_->Nclass().isEmpty()) next_->Nclass(categoryName_.text());
  if (next_->Label().isEmpty()) next_->Label(label_.text());
  const char* const lacks = categoryName_.isEmpty() ? "CATEGORY_OBJ ???"
                            : label_.isEmpty()      ? "OBJ.LABEL ???"
                                                    : nullptr;
  if (lacks != nullptr) {
    handler_.inconsistent(lacks);
    return false;
  }
  if (next_->Name().isEmpty()) next_->Name(next_->Label());
  next_->Iclass = kObjectLabel;
  return true;
}

// --- Labels of classes ---

bool IEAsc::LabelImport::takeClassName() {
  const std::string_view field = hasFields() ? std::string_view(fields_[fieldThird]) : std::string_view();
  if (!field.empty()) {
    if (name_.equals(field)) next_->Iclass = static_cast<short>(lastClass_);
    next_->Name(name_.set(field));
  } else if (next_->Name().isEmpty()) {
    if (name_.isEmpty()) {
      handler_.FileClose();
      handler_.inconsistent("CLASS_NAME ???");
      return false;
    }
    next_->Name(name_.text());
    next_->Iclass = static_cast<short>(lastClass_);
  }
  return next_->Iclass != 0 || findClass();
}

bool IEAsc::LabelImport::findClass() {
  knowClasses();
  const auto known = classes_.constFind(next_->Name());
  if (known == classes_.constEnd()) return missClass();
  lastClass_ = *known;
  next_->Iclass = static_cast<short>(lastClass_);
  return true;
}

bool IEAsc::LabelImport::missClass() {
  const bool first = missing_++ == 0;
  if (first && !addAll_) {
    addAll_ = ask(QObject::tr("Classe não encontrada. Adiciona TODAS as classes não encontradas ?") +
                  next_->Name());
  }
  lastClass_ = 0;
  return !addAll_ || addClass();
}

bool IEAsc::LabelImport::addClass() {
  const GeoClass* const fresh = kaldex::makeClass(category_, next_->Name());
  if (fresh == nullptr) return false;
  classes_.insert(fresh->name, fresh->id);
  lastClass_ = fresh->id;
  next_->Iclass = static_cast<short>(lastClass_);
  return true;
}

// A header may add classes, so the list is looked at anew after each.
void IEAsc::LabelImport::knowClasses() {
  if (classesKnown_) return;
  classesKnown_ = true;
  classes_.clear();
  for (const GeoClass* geoClass : category_.classes) {
    if (!classes_.contains(geoClass->name)) classes_.insert(geoClass->name, geoClass->id);
  }
}

void IEAsc::LabelImport::tell() const {
  const QString counts = kaldex::filledIn(
      QObject::tr("Classes não encontradas=%d e classes adicionadas=%d e visual alterados=%d %s"),
      {QString::number(missing_), QString::number(addAll_ ? missing_ : 0), QString::number(0), QString()});
  show(QObject::tr("Sumário:") + counts);
}

int IEAsc::ImportLabelPoints(SProjection* target, SProjection*, char*, short*, char*, char*, char*, char*) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportLabelPoints");
  return guardedImport(nullptr, [&] {
    if (dataBase == nullptr) return invalidArgument("dataBase");
    if (infoLayer == nullptr || infoLayer->category() == nullptr) return invalidArgument("infoLayer");
    return openFile("r") ? std::make_unique<LabelImport>(*this, *infoLayer, target)->run() : 0;
  });
}

}  // namespace kaldex_v1
