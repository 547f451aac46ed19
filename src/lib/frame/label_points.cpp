#include <QObject>
#include <limits>

#include "base/tracer.h"
#include "kaldex/extforma.h"
#include "kaldex/model/report.h"

inline namespace kaldex_v1 {

SDataLayer::SDataLayer(const SDataLayer& other) : SObject(other), label(other.label) {}
SDataLayer& SDataLayer::operator=(const SDataLayer& other) {
  label = other.label;
  return *this;
}
SDataLayer::~SDataLayer() = default;
SDataLayerList::~SDataLayerList() = default;

SExtLabelPoint::~SExtLabelPoint() = default;
SExtLabelPointList::~SExtLabelPointList() = default;

int SExtLabelPointList::InsertLabel(SExtLabelPoint* labelPoint) {
  const Tracer tracer(__FILE__, __LINE__, "SExtLabelPointList::InsertLabel");
  if (labelPoint == nullptr) {
    SMessageBox::Show(0, nullptr, QObject::tr("KALDEX"),
                      QObject::tr("Um argumento inválido foi passado!") + "arg : lp");
    return 0;
  }
  // The list's plain operations don't keep the account, so a size that changed meanwhile asks for a new one.
  if (Size() != counted_) countAnew();
  count(*labelPoint);
  Append(labelPoint);
  counted_ = Size();
  return 1;
}

void SExtLabelPointList::count(const SExtLabelPoint& labelPoint) {
  const auto place = static_cast<unsigned short>(labelPoint.Nodes);
  if (seen_.test(place)) return;
  seen_.set(place);
  if (count_ < std::numeric_limits<short>::max()) ++count_;
}

void SExtLabelPointList::countAnew() {
  seen_.reset();
  count_ = 0;
  for (const SExtLabelPoint* labelPoint : *this) count(*labelPoint);
}

}  // namespace kaldex_v1
