#include "lib/dxf/layer_selection.h"

namespace kaldex {

QString shownLayer(const QString& name) {
  return name == QLatin1String(kDefaultLayer) ? QString::fromLatin1(kDefaultLayerShown) : name;
}

QString realLayer(const QString& shown) {
  return shown == QLatin1String(kDefaultLayerShown) ? QString::fromLatin1(kDefaultLayer) : shown;
}

const LayerSelection::Known& LayerSelection::find(std::string_view raw) {
  if (last_ != nullptr && raw == lastRaw_) return *last_;
  lastRaw_ = raw;
  const auto place = known_.find(lastRaw_);
  if (place != known_.end()) {
    last_ = &place->second;
    return *last_;
  }
  if (known_.size() >= kMostKnown) known_.clear();
  const QString name = text_.name(raw);
  // Callers who know nothing of encodings name a layer by its bytes.
  const QString bytes = QString::fromLatin1(raw.data(), static_cast<int>(raw.size()));
  const bool taken = names_.isEmpty() || names_.contains(name) || names_.contains(bytes);
  last_ = &known_.emplace(lastRaw_, Known{name, taken}).first->second;
  return *last_;
}

}  // namespace kaldex
