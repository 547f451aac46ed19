#include <QObject>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>

#include "base/number_text.h"
#include "base/strings.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/class_block.h"
#include "lib/ascii/point_objects.h"
#include "lib/ascii/record_text.h"
#include "lib/ascii/section_reader.h"
#include "lib/frame/class_making.h"
#include "lib/frame/delimited_record.h"

inline namespace kaldex_v1 {

namespace {

constexpr char kNone[] = "Nenhuma";  // no class, no object
constexpr float kSamePlace = 1e-06f;
constexpr std::size_t kLongestRecord = 28671;
constexpr int kFields = 5;
constexpr std::size_t kNameCapacity = 40;

bool isNone(const std::string& name) {
  return Sstrcasecmp(name.c_str(), kNone) == 0;
}

QString fromLatin1(const std::string& text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

bool leadsAngle(std::string_view field) {
  return !field.empty() && kaldex::isHemisphereLetter(field.front());
}

bool hasLetterAlone(std::string_view field) {
  return field.size() > 1 && (field[1] == ' ' || field[1] == '\t');
}

}  // namespace

/// Reads a section of 2D points into a vector: in a thematic layer points of classes, in any other the places
/// of objects.
class IEAsc::PointImport : private IEAsc::SectionReader {
 public:
  PointImport(IEAsc& handler, Vector& vector, SProjection* target)
      : SectionReader(handler, target), vector_(vector), box_(vector.BoundingBox()) {}
  ~PointImport();

  int run();

 private:
  bool setUp();
  bool readWordRecord(kaldex::ProgressScope& progress);
  bool readName(std::string& current, std::string* lasting, bool mayBeEmpty);

  bool readPoint(kaldex::ProgressScope& progress);
  bool readPlane(Point& point);
  bool readGeographic(Point& point);
  bool splitFields();
  bool agreedToOldForm();
  bool hasSeparator() const { return handler_.separator[0] != 0; }
  /// A field behind the coordinates as a name, if there is one.
  bool nameFromField(std::size_t field, std::string& name) const;

  bool takeOfClass(const Point& place);
  bool chooseClass(const std::string& name);
  void knowClasses();
  bool addMissingClass(const std::string& name, const GeoClass*& made);
  bool takeOfObject(const Point& place);
  bool pointAt(const Point& place, Point2d& point);

  int finish(DBTransactionBlock& block);
  bool storeClasses();
  void tell() const;

  Vector& vector_;
  Box box_;
  Category* category_ = nullptr;           ///< of a thematic layer
  std::unique_ptr<PointObjects> objects_;  ///< of any other
  bool agreed_ = false;                    ///< to a file without separator

  // Names as the lines before a point give them. The current ones are for the next point, the lasting ones
  // for all points without one of their own.
  std::string label_, name_, objectCategory_;
  std::string lastingLabel_ = kNone, lastingClass_ = kNone, lastingCategory_;

  std::string record_;  ///< what the fields are of
  std::array<std::string_view, kFields> fields_;
  std::string text_;  ///< a name at work

  int classId_ = 0;  ///< of the lasting class
  bool addAll_ = false;
  bool refusedClasses_ = false;
  std::unordered_map<std::string, int> classIds_;
  int classesKnown_ = 0;  ///< so many of the list are in there
  long long notFound_ = 0;
  PointObjects::Counts counts_;
  long long read_ = 0;
  long long written_ = 0;
  long long outside_ = 0;
};

IEAsc::PointImport::~PointImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("points", read_);
  if (written_ > 0) job->countWritten("points", written_);
  if (counts_.objects > 0) job->countWritten("objects", counts_.objects);
  if (outside_ > 0) job->countLeftOut("outside_box", outside_);
}

int IEAsc::PointImport::run() {
  if (!findSection("POINT2D")) return 0;
  // All that follows stands or falls together.
  DBTransactionBlock block(handler_.dataBase);
  if (!setUp()) return 0;
  constexpr int bytesPerRecord = 50;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  for (;;) {
    unsigned colours = ClassBlock::points;
    const Word word = nextWord(progress, &colours);
    if (word == Word::sectionEnd) return finish(block);
    if (word == Word::failed || !readWordRecord(progress)) return 0;
  }
}

bool IEAsc::PointImport::setUp() {
  if (handler_.infoLayer->model() != THEMATICMODEL) {
    objects_ = std::make_unique<PointObjects>(handler_, vector_);
    return objects_->open();
  }
  category_ = handler_.infoLayer->category();
  if (category_->classes.Size() == 0) {
    addAll_ = ask(QObject::tr("Categoria sem classes. Cria e continua ?"));
    if (!addAll_) return false;
  }
  return true;
}

bool IEAsc::PointImport::readWordRecord(kaldex::ProgressScope& progress) {
  if (kaldex::startsCoordinates(handler_.line)) return readPoint(progress);
  const std::string_view word = handler_.line;
  if (word == "LABEL") return readName(label_, &lastingLabel_, false);
  if (word == "CATEGORY_OBJ") return readName(objectCategory_, &lastingCategory_, false);
  if (word == "NAME" || word == "CLASS_NAME" || word == "CLASS") return readName(name_, nullptr, true);
  return malformed();
}

bool IEAsc::PointImport::readName(std::string& current, std::string* lasting, bool mayBeEmpty) {
  char name[kNameCapacity];
  if (handler_.ExtraiNome(name) == 0 || (!mayBeEmpty && name[0] == 0)) {
    handler_.inconsistent(handler_.line2);
    return false;
  }
  current = kaldex::nameOf(name);
  if (lasting != nullptr) *lasting = current;
  return true;
}

// --- A point ---

bool IEAsc::PointImport::readPoint(kaldex::ProgressScope& progress) {
  if (handler_.readLine() == 0) {
    handler_.endOfFileInRecord();
    return false;
  }
  progress.step();
  Point place;
  const bool good = kaldex::startsLikeNumber(handler_.line) ? readPlane(place) : readGeographic(place);
  if (!good) return false;
  ++read_;
  if (!(category_ != nullptr ? takeOfClass(place) : takeOfObject(place))) return false;
  label_.clear();
  name_.clear();
  objectCategory_.clear();
  return true;
}

bool IEAsc::PointImport::readPlane(Point& point) {
  if (!hasSeparator()) {
    if (!agreedToOldForm()) return false;
    const bool found = kaldex::scanReals(handler_.lineText(), &point.x, &point.y) == 2;
    if (!found || !std::isfinite(point.x) || !std::isfinite(point.y)) return malformed();
  } else {
    if (!splitFields()) return false;
    if (!kaldex::parseReal(fields_[0], point.x) || !kaldex::parseReal(fields_[1], point.y))
      return malformed();
  }
  point.x *= factor_;
  point.y *= factor_;
  transfer_.apply(point);
  return true;
}

bool IEAsc::PointImport::readGeographic(Point& point) {
  std::memcpy(handler_.line2, handler_.line, qstrlen(handler_.line) + 1);
  if (!hasSeparator()) {
    if (!agreedToOldForm()) return false;
  } else {
    if (!splitFields()) return false;
    const bool parted = hasLetterAlone(fields_[0]) || hasLetterAlone(fields_[1]);
    const bool led = leadsAngle(fields_[0]) || leadsAngle(fields_[1]);
    if (!parted || !led) return malformed();
    text_.assign(fields_[0]).append("  ").append(fields_[1]);
    handler_.setLine(text_.c_str());
  }
  float height = 0.0f;
  handler_.readLatLong(transfer_, point, height);
  if (point != Point(-1.0, -1.0) && point != Point(0.0, 0.0)) return true;
  handler_.inconsistent(handler_.line2);
  return false;
}

// The fields as LerComSeparator makes them, without room for each: there is one record for each point.
bool IEAsc::PointImport::splitFields() {
  // In the line itself, as LerComSeparator does: messages show it so.
  if (handler_.separator[0] != ',' && handler_.lineText().find(',') != std::string_view::npos)
    kaldex::mendDecimalCommas(handler_.line);
  record_ = handler_.lineText();
  if (record_.size() <= kLongestRecord &&
      kaldex::splitRecord(record_, handler_.separator, fields_.data(), kFields) > 0)
    return true;
  return malformed();
}

bool IEAsc::PointImport::agreedToOldForm() {
  fields_.fill({});
  if (!agreed_) agreed_ = ask(QObject::tr("Dados de entrada no formato antigo (sem SEPARATOR). Continua ?"));
  return agreed_;
}

bool IEAsc::PointImport::nameFromField(std::size_t field, std::string& name) const {
  const bool parted = handler_.separator[0] != 0 && handler_.separator[1] == 0;
  if (!parted || fields_[field].empty()) return false;
  name = kaldex::nameOf(fields_[field]);
  return true;
}

// --- Points of classes ---

bool IEAsc::PointImport::takeOfClass(const Point& place) {
  std::string& name = text_;
  if (!nameFromField(2, name)) name = name_;
  if (name.empty()) name = lastingClass_;
  int classId = 0;
  if (name == lastingClass_) {
    classId = classId_;
  } else if (!isNone(name)) {
    if (!chooseClass(name)) return false;
    classId = classId_;
  }
  if (!box_.Contains(place)) {
    ++outside_;
    return true;
  }
  Point2d point(place.x, place.y);
  point.classId = classId;
  if (vector_.Insert(point) == 0) return malformed();
  ++written_;
  ++(classId == 0 ? counts_.notAssociated : counts_.associated);
  return true;
}

bool IEAsc::PointImport::chooseClass(const std::string& name) {
  knowClasses();
  lastingClass_ = name;
  const auto known = classIds_.find(name);
  classId_ = known != classIds_.end() ? known->second : 0;
  if (known != classIds_.end()) return true;
  const GeoClass* made = nullptr;
  if (!addMissingClass(name, made)) return false;
  if (made != nullptr) classId_ = made->id;
  return true;
}

// Classes are only ever added, by a header or by a point. The first of a name is meant by it.
void IEAsc::PointImport::knowClasses() {
  for (; classesKnown_ < category_->classes.Size(); ++classesKnown_) {
    const GeoClass& known = *category_->classes.at(classesKnown_);
    const QByteArray name = known.name.toLatin1();
    // A name that Latin-1 can't hold is none that a file could have.
    if (QString::fromLatin1(name) == known.name) classIds_.emplace(name.toStdString(), known.id);
  }
}

// Null in `made` when the user doesn't want it; false when no more can be made.
bool IEAsc::PointImport::addMissingClass(const std::string& name, const GeoClass*& made) {
  ++notFound_;
  if (refusedClasses_) return true;
  if (!addAll_) {
    addAll_ = ask(QObject::tr("Classe não encontrada. Adiciona TODAS as classes não encontradas ?") +
                  fromLatin1(name));
    refusedClasses_ = !addAll_;
    if (refusedClasses_) return true;
  }
  made = kaldex::makeClass(*category_, fromLatin1(name));
  return made != nullptr;
}

// --- Places of objects ---

bool IEAsc::PointImport::takeOfObject(const Point& place) {
  Point2d point;
  if (!pointAt(place, point)) return malformed();
  if (nameFromField(2, label_)) lastingLabel_ = label_;
  nameFromField(3, name_);
  if (nameFromField(4, objectCategory_)) lastingCategory_ = objectCategory_;
  if (label_.empty()) label_ = lastingLabel_;
  if (isNone(label_)) {
    ++objects_->counts().notAssociated;
    return true;
  }
  if (name_.empty()) name_ = label_;
  if (objectCategory_.empty()) objectCategory_ = lastingCategory_;
  if (objectCategory_.empty()) {
    handler_.inconsistent("CATEGORY_OBJ ???");
    return false;
  }
  return objects_->take(point, label_, name_, objectCategory_);
}

// The stored point at the place, made when there is none; without identifier when it lies outside.
bool IEAsc::PointImport::pointAt(const Point& place, Point2d& point) {
  if (const Point2d* const known = vector_.FindPoint2d(place, kSamePlace)) {
    point = *known;
    return true;
  }
  if (!box_.Contains(place)) {
    ++outside_;
    return true;
  }
  point.SetPoint(&place);
  if (vector_.Insert(point) == 0) return false;
  ++written_;
  return true;
}

// --- The end ---

int IEAsc::PointImport::finish(DBTransactionBlock& block) {
  if (objects_ != nullptr) {
    objects_->close();
    counts_ = objects_->counts();
  }
  if (notFound_ > 0 && addAll_) storeClasses();
  tell();
  block.enableCommit();
  handler_.FileClose();
  return 1;
}

bool IEAsc::PointImport::storeClasses() {
  return storeCategories(*handler_.dataBase, handler_.dataBase->categoryList());
}

void IEAsc::PointImport::tell() const {
  if (notFound_ > 0) {
    const long long added = addAll_ ? notFound_ : 0;
    show(QObject::tr("Sumário:") +
         QObject::tr("Classes não encontradas=%1 e classes adicionadas=%2 e visual alterados=%3 %4")
             .arg(notFound_)
             .arg(added)
             .arg(0)
             .arg(QString()));
  }
  show(QObject::tr("Sumário:") +
       QObject::tr("Classes/Objetos: associados=%1, não associados=%2, já estavam associados=%3")
           .arg(counts_.associated)
           .arg(counts_.notAssociated)
           .arg(counts_.already));
}

int IEAsc::ImportPoint2d(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportPoint2d");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (infoLayer == nullptr || infoLayer->category() == nullptr) return invalidArgument("infoLayer");
    if (dataBase == nullptr) return invalidArgument("dataBase");
    return openFile("r") ? PointImport(*this, *vec, target).run() : 0;
  });
}

}  // namespace kaldex_v1
