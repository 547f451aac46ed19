#include <QObject>
#include <cmath>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/text.h"
#include "lib/ascii/text_scale.h"
#include "lib/dxf/text_walk.h"

inline namespace kaldex_v1 {

namespace {

// What is printed with six decimals differs by less when it is the same.
bool differs(float value, float other) {
  constexpr float kSamePrinted = 5e-7f;
  return !(std::fabs(value - other) <= kSamePrinted);
}

// What the look can hold; anything else leaves the layer's.
bool isSize(double value) {
  return std::isfinite(static_cast<float>(value));
}

}  // namespace

/// Texts into a list.
class IEDXF::TextImport : public IEDXF::TextWalk {
 public:
  TextImport(IEDXF& handler, EntitieList& texts, const TextVisual& look)
      : TextWalk(handler, nullptr),
        texts_(texts),
        look_(look),
        scale_(handler.infoLayer, handler.project != nullptr ? handler.project->projection() : nullptr) {}
  ~TextImport() override;

 private:
  void beginText() override;
  Step take(int code) override;
  bool finishText() override;
  int finish() override;

  void takePlace();
  void takeHeight();
  void takeAngle();
  void takeExpansion();
  Step emptyValue();

  EntitieList& texts_;
  TextVisual look_;
  kaldex::TextScale scale_;
  std::unique_ptr<EText> text_;
  bool endedEarly_ = false;
  long long imported_ = 0;
};

IEDXF::TextImport::~TextImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr || imported_ == 0) return;
  job->countRead("texts", imported_);
  job->countWritten("texts", imported_);
}

void IEDXF::TextImport::beginText() {
  text_ = std::make_unique<EText>();
  TextVisual look = look_;
  look.height = scale_.fromPaper(static_cast<double>(look_.height));
  text_->look(look);
  text_->Own(0);
}

IEDXF::EntityImport::Step IEDXF::TextImport::take(int code) {
  using kaldex::GroupCode;
  switch (code) {
    case GroupCode::x:
      x_ = real();
      break;
    case GroupCode::y:
      takePlace();
      break;
    case GroupCode::size:
      if (value().empty()) return emptyValue();
      takeHeight();
      break;
    case GroupCode::text:
      if (value().empty()) return emptyValue();
      text_->String(text().text(value()));
      break;
    case GroupCode::expansion:
      takeExpansion();
      break;
    case GroupCode::startAngle:
      takeAngle();
      break;
    default:
      break;
  }
  return Step::goOn;
}

// Texts stay where the file has them, also where the layer has another projection.
void IEDXF::TextImport::takePlace() {
  const double factor = handler_.Units2Meter();
  Point place(x_ * factor, real() * factor);
  handler_.TransfDxf(place);
  text_->Position(place);
}

void IEDXF::TextImport::takeHeight() {
  const double height = real();
  if (!isSize(height) || !differs(static_cast<float>(height), look_.height)) return;
  text_->Height(scale_.fromPaper(height));
  text_->Own(1);
}

void IEDXF::TextImport::takeAngle() {
  const auto angle = static_cast<float>(real());
  if (!std::isfinite(angle) || !differs(angle, look_.angle)) return;
  text_->Angle(angle);
  text_->Own(1);
}

void IEDXF::TextImport::takeExpansion() {
  const double expansion = real();
  if (isSize(expansion)) text_->Expansion(static_cast<float>(expansion));
}

// By contract an empty value is the end of the texts.
IEDXF::EntityImport::Step IEDXF::TextImport::emptyValue() {
  endedEarly_ = true;
  return Step::end;
}

bool IEDXF::TextImport::finishText() {
  const Point& place = text_->Position();
  // A text without a place can't be stored; no drawing has one.
  if (!std::isfinite(place.x) || !std::isfinite(place.y)) {
    if (JobReport* const job = JobReport::current()) job->countLeftOut("refused");
    return true;
  }
  texts_.Append(text_.release());
  ++imported_;
  return true;
}

int IEDXF::TextImport::finish() {
  JobReport* const job = JobReport::current();
  if (endedEarly_ && job != nullptr)
    job->note(
        QObject::tr("Um texto vazio, na linha %1, terminou a leitura dos textos.").arg(reader_.lines()));
  return imported_ > 0 ? 1 : emptyFile("layer");
}

int IEDXF::ImportText(EntitieList* texts, SProjection* target, GeneralVisual* visual) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ImportText");
  return guarded([&] {
    if (texts == nullptr) return invalidArgument("list");
    if (!openDrawing()) return 0;
    Text* layerTexts = nullptr;
    if (infoLayer == nullptr || infoLayer->Get(layerTexts) == 0)
      return show(QObject::tr("Não existe representação no Plano de Informação!") + "text");
    JobReport* const job = JobReport::current();
    if (job != nullptr && target != nullptr && projection != nullptr && *target != *projection)
      job->note(QObject::tr("Textos ficam nas coordenadas do arquivo, sem mudança de projeção."));
    return TextImport(*this, *texts, visual != nullptr ? visual->text : layerTexts->visual.text).run();
  });
}

}  // namespace kaldex_v1
