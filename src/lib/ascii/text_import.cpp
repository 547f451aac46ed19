#include <QObject>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/text.h"
#include "lib/ascii/header_writer.h"
#include "lib/ascii/record_text.h"
#include "lib/ascii/section_reader.h"
#include "lib/ascii/text_scale.h"
#include "lib/frame/delimited_record.h"

inline namespace kaldex_v1 {

namespace {

// Positions of the fields of a record.
enum Field {
  atX,
  atY,
  atText,
  atAngle,
  atThickness,
  atHeight,
  atRed,
  atGreen,
  atBlue,
  atHorizontal,
  atVertical,
  atFont,
  atCount
};
constexpr int kRequired = 3;

// What is printed with six decimals differs by less when it is the same.
constexpr float kSamePrinted = 5e-7f;

bool differs(float value, float other) {
  return !(std::fabs(value - other) <= kSamePrinted);
}

short smallInteger(std::string_view text) {
  constexpr long least = std::numeric_limits<short>::min();
  constexpr long most = std::numeric_limits<short>::max();
  return static_cast<short>(std::clamp(kaldex::textToInteger(text), least, most));
}

QString fromLatin1(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

}  // namespace

/// Reads a section of texts into a list.
class IEAsc::TextImport : private IEAsc::SectionReader {
 public:
  TextImport(IEAsc& handler, EntitieList& texts, SProjection* target, const GeneralVisual* replacement)
      : SectionReader(handler, target),
        texts_(texts),
        replacement_(replacement),
        scale_(handler.infoLayer, handler.projection) {}
  ~TextImport();

  int run();

 private:
  bool setUp();
  bool readRecord(kaldex::ProgressScope& progress);
  bool splitLine(int& count);
  bool fill(EText& text);
  bool place(EText& text);
  void dress(EText& text) const;
  void dressInSizes(TextVisual& look, bool& own) const;
  void dressInNumbers(TextVisual& look, bool& own) const;
  void replaceLook(EText& text) const;
  int finish() const;

  EntitieList& texts_;
  const GeneralVisual* replacement_;
  kaldex::TextScale scale_;
  TextVisual layerLook_;
  std::string record_;
  std::array<std::string_view, atCount> fields_;
  long long read_ = 0;
  long long bad_ = 0;
};

IEAsc::TextImport::~TextImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ + bad_ > 0) job->countRead("texts", read_ + bad_);
  if (bad_ > 0) job->countLeftOut("refused", bad_);
}

int IEAsc::TextImport::run() {
  if (!findSection("TEXT") || !setUp()) return 0;
  constexpr int bytesPerRecord = 50;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  for (;;) {
    const Word word = nextWord(progress);
    if (word == Word::sectionEnd) return finish();
    if (word == Word::failed) return 0;
    if (kaldex::startsCoordinates(handler_.line)) {
      if (!readRecord(progress)) return 0;
    } else {
      handler_.readLine();
      ++bad_;
    }
  }
}

bool IEAsc::TextImport::setUp() {
  handler_.SetSeparator(";");
  Text* text = nullptr;
  if (handler_.infoLayer == nullptr || handler_.infoLayer->Get(text) == 0) {
    show(QObject::tr("Não existe representação no Plano de Informação!") + "text");
    return false;
  }
  layerLook_ = text->visual.text;
  return true;
}

bool IEAsc::TextImport::readRecord(kaldex::ProgressScope& progress) {
  if (handler_.readLine() == 0) {
    handler_.endOfFileInRecord();
    return false;
  }
  progress.step();
  int count = 0;
  if (!splitLine(count)) return malformed();
  auto text = std::make_unique<EText>();
  if (count < kRequired || !fill(*text)) {
    ++bad_;
    return true;
  }
  if (replacement_ != nullptr) replaceLook(*text);
  texts_.Append(text.release());
  ++read_;
  return true;
}

bool IEAsc::TextImport::splitLine(int& count) {
  record_ = handler_.lineText();
  if (handler_.separator[0] != ',') kaldex::mendDecimalCommas(record_.data());
  count = kaldex::splitRecord(record_, handler_.separator, fields_.data(), atCount);
  return count > 0;
}

bool IEAsc::TextImport::fill(EText& text) {
  if (!place(text) || fields_[atText].empty()) return false;
  text.String(fromLatin1(fields_[atText]));
  dress(text);
  return true;
}

bool IEAsc::TextImport::place(EText& text) {
  Point point;
  if (kaldex::startsLikeNumber(record_.c_str())) {
    point.x = kaldex::textToReal(fields_[atX]);
    point.y = kaldex::textToReal(fields_[atY]);
    // A zero is what a field without a number reads as.
    if (point.x == 0.0 || point.y == 0.0) return false;
    point.x *= factor_;
    point.y *= factor_;
    transfer_.apply(point);
  } else {
    const std::string pair = std::string(fields_[atX]) + "  " + std::string(fields_[atY]);
    handler_.setLine(pair.c_str());
    float height = 0.0f;
    if (handler_.readLatLong(transfer_, point, height) == 0) return false;
  }
  if (!std::isfinite(point.x) || !std::isfinite(point.y) || point.isUnset()) return false;
  text.Position(point);
  return true;
}

// A text begins with the layer's look, its sizes at map scale: if a single value makes the look its own, the
// others are still the layer's.
void IEAsc::TextImport::dress(EText& text) const {
  TextVisual look = layerLook_;
  look.thickness = scale_.fromPaper(static_cast<double>(layerLook_.thickness));
  look.height = scale_.fromPaper(static_cast<double>(layerLook_.height));
  look.space = scale_.fromPaper(static_cast<double>(layerLook_.space));
  bool own = false;
  dressInSizes(look, own);
  dressInNumbers(look, own);
  if (!fields_[atFont].empty()) look.fontName = fromLatin1(fields_[atFont]);
  text.look(look);
  text.Own(own ? 1 : 0);
}

void IEAsc::TextImport::dressInSizes(TextVisual& look, bool& own) const {
  if (!fields_[atAngle].empty()) {
    const auto angle = static_cast<float>(kaldex::textToReal(fields_[atAngle]));
    if (differs(angle, layerLook_.angle)) {
      look.angle = angle;
      own = true;
    }
  }
  if (!fields_[atThickness].empty()) {
    const double thickness = kaldex::textToReal(fields_[atThickness]);
    if (differs(static_cast<float>(thickness), layerLook_.thickness)) {
      look.thickness = scale_.fromPaper(thickness);
      own = true;
    }
  }
  // A height makes the look the text's own, even one that is equal to the layer's.
  if (!fields_[atHeight].empty()) {
    look.height = scale_.fromPaper(kaldex::textToReal(fields_[atHeight]));
    own = true;
  }
}

void IEAsc::TextImport::dressInNumbers(TextVisual& look, bool& own) const {
  const auto take = [&](Field field, short& target) {
    if (fields_[field].empty()) return;
    const short value = smallInteger(fields_[field]);
    if (value == target) return;
    target = value;
    own = true;
  };
  take(atRed, look.color.red);
  take(atGreen, look.color.green);
  take(atBlue, look.color.blue);
  take(atHorizontal, look.horizontalAlignment);
  take(atVertical, look.verticalAlignment);
}

void IEAsc::TextImport::replaceLook(EText& text) const {
  const TextVisual& given = replacement_->text;
  TextVisual look = text.look();
  const auto atMapScale = [&](float size) {
    return static_cast<float>(static_cast<double>(size) * (scale_.scale() / 1000) * scale_.toMetre());
  };
  look.color = given.color;
  look.height = atMapScale(given.height);
  look.thickness = atMapScale(given.thickness);
  look.space = atMapScale(given.space);
  look.angle = given.angle;
  look.fontName = given.fontName;
  text.look(look);
  text.Own(1);
}

int IEAsc::TextImport::finish() const {
  if (bad_ > 0) {
    show(QObject::tr("Formato inválido!") +
         kaldex::filledIn(QObject::tr("%d linhas"), {QString::number(bad_)}));
  }
  handler_.FileClose();
  return 1;
}

int IEAsc::ImportText(EntitieList* texts, SProjection* target, GeneralVisual* visual) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportText");
  return guarded([&] {
    if (texts == nullptr) return invalidArgument("list");
    return openFile("r") ? TextImport(*this, *texts, target, visual).run() : 0;
  });
}

}  // namespace kaldex_v1
