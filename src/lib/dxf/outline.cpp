#include <QHash>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "base/companion_file.h"
#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/dxf.h"
#include "lib/dxf/entity_kind.h"
#include "lib/dxf/layer_selection.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::EntityKind;
using kaldex::GroupCode;

constexpr std::size_t kMostLayers = 100000;  // a file that invents names must not fill the memory
constexpr int kMostKinds = 500;

struct StreamCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};

// The part of the plane that one entity covers.
struct Extent {
  double x = 0.0, y = 0.0, endX = 0.0, endY = 0.0, radius = 0.0;
  bool hasPlace = false, hasEnd = false;

  void take(int code, double value) {
    switch (code) {
      case GroupCode::x:
        x = value;
        break;
      case GroupCode::y:
        y = value;
        hasPlace = true;
        break;
      case GroupCode::endX:
        endX = value;
        break;
      case GroupCode::endY:
        endY = value;
        hasEnd = true;
        break;
      case GroupCode::size:
        radius = value;
        break;
      default:
        break;
    }
  }

  void addTo(Box& box, EntityKind kind) const {
    if (!hasPlace || kind == EntityKind::none || kind == EntityKind::polyline) return;
    // No layer takes it, and it mustn't take the others' box away.
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    // Vertices that lack a coordinate aren't read.
    if (kind == EntityKind::vertex && (x == 0.0 || y == 0.0)) return;
    const bool round = kind == EntityKind::arc || kind == EntityKind::circle;
    const double reach = round ? std::fabs(radius) : 0.0;
    if (!std::isfinite(reach)) return;
    box.extend(x - reach, y - reach);
    box.extend(x + reach, y + reach);
    if (kind == EntityKind::line && hasEnd && std::isfinite(endX) && std::isfinite(endY))
      box.extend(endX, endY);
  }
};

}  // namespace

/// Fills an outline from a file.
class DxfOutline::Survey {
 public:
  Survey(DxfOutline& outline, FILE* file, const QString& encoding)
      : outline_(outline), file_(file), names_(QStringList(), encoding.toLatin1(), reader_) {}

  void run();

 private:
  void takePair();
  void beginEntity(std::string_view name);
  void endEntity();
  void takeLayer(std::string_view raw);
  Layer& layerCalled(const QString& name);
  void beginRecord();
  void takeRecord();
  void countText(Layer& layer);

  DxfOutline& outline_;
  FILE* file_;
  kaldex::DrawingReader reader_;
  kaldex::ChosenLayers names_;
  QHash<QString, std::size_t> positions_;

  bool inRecord_ = false;  ///< of the table of layers
  Layer* record_ = nullptr;
  int recordColor_ = 0;

  std::string name_;  ///< of the entity at hand; empty: none that counts
  EntityKind kind_ = EntityKind::none;
  Extent extent_;
  std::size_t layer_ = 0;
  bool layerKnown_ = false;
  bool blank_ = false;  ///< its text
  long long texts_ = 0;
};

void DxfOutline::Survey::run() {
  while (reader_.nextOutsideBlocks(file_) && !reader_.isEndOfDrawing()) takePair();
  outline_.complete_ = reader_.isEndOfDrawing();
  endEntity();
  if (inRecord_) takeRecord();
  outline_.version_ = QString::fromLatin1(reader_.version());
  outline_.unitsCode_ = reader_.unitsCode();
  outline_.encodingName_ = names_.text().encoding();
  outline_.encodingReason_ = names_.text().reason();
}

void DxfOutline::Survey::takePair() {
  const int code = reader_.code();
  if (code == GroupCode::start) {
    endEntity();
    beginRecord();
    if (reader_.mayHoldEntities()) beginEntity(reader_.value());
  } else if (inRecord_) {
    if (code == GroupCode::name && record_ == nullptr)
      record_ = &layerCalled(names_.text().name(reader_.value()));
    if (code == GroupCode::color) recordColor_ = static_cast<int>(kaldex::textToInteger(reader_.value()));
    if (record_ != nullptr) takeRecord();
  } else if (name_.empty()) {
    return;
  } else if (code == GroupCode::layer) {
    if (!layerKnown_) takeLayer(reader_.value());
  } else if (code == GroupCode::text) {
    blank_ = blank_ || reader_.value().empty();
  } else if (kind_ != EntityKind::none && code >= GroupCode::x && code <= GroupCode::size) {
    extent_.take(code, kaldex::textToReal(reader_.value()));
  }
}

// --- The table of layers ---

void DxfOutline::Survey::beginRecord() {
  inRecord_ = reader_.section() == kaldex::DrawingReader::tables && reader_.value() == "LAYER";
  record_ = nullptr;
  recordColor_ = 0;
}

void DxfOutline::Survey::takeRecord() {
  if (record_ == nullptr) return;
  record_->declared = true;
  if (recordColor_ != 0) record_->color = recordColor_;
}

// --- Entities ---

void DxfOutline::Survey::beginEntity(std::string_view name) {
  kind_ = kaldex::entityKind(name);
  const bool counts = kind_ == EntityKind::vertex || !kaldex::isPartOfStructure(name);
  name_ = counts ? std::string(name) : std::string();
  extent_ = Extent();
  blank_ = false;
  // A vertex may leave its layer out: it is the polyline's.
  if (kind_ != EntityKind::vertex) layerKnown_ = false;
}

void DxfOutline::Survey::takeLayer(std::string_view raw) {
  layerKnown_ = true;
  Layer& layer = layerCalled(names_.text().name(raw));
  layer_ = static_cast<std::size_t>(&layer - outline_.layers_.data());
}

void DxfOutline::Survey::endEntity() {
  if (name_.empty()) return;
  if (!layerKnown_) takeLayer(kaldex::kDefaultLayer);
  Layer& layer = outline_.layers_[layer_];
  extent_.addTo(layer.box, kind_);
  if (kind_ == EntityKind::text) countText(layer);
  if (kind_ != EntityKind::vertex) {
    const QString kind = QString::fromLatin1(name_.data(), static_cast<int>(name_.size()));
    const bool known = layer.entities.contains(kind) || layer.entities.size() < kMostKinds;
    ++layer.entities[known ? kind : QStringLiteral("...")];
  }
  name_.clear();
}

void DxfOutline::Survey::countText(Layer& layer) {
  ++texts_;
  long long& first = blank_ ? layer.firstBlankText : layer.firstText;
  if (first == 0) first = texts_;
}

DxfOutline::Layer& DxfOutline::Survey::layerCalled(const QString& name) {
  const auto known = positions_.constFind(name);
  if (known != positions_.constEnd()) return outline_.layers_[*known];
  const bool room = outline_.layers_.size() < kMostLayers;
  if (room) {
    outline_.layers_.emplace_back();
    const bool isLast = outline_.layers_.size() == kMostLayers;
    outline_.layers_.back().name = isLast ? QStringLiteral("...") : name;
  }
  const std::size_t position = outline_.layers_.size() - 1;
  if (room) positions_.insert(name, position);
  return outline_.layers_[position];
}

// --- The outline ---

DxfOutline::DxfOutline(const QString& path, const QString& encoding) {
  const Tracer tracer(__FILE__, __LINE__, "DxfOutline::DxfOutline");
  const std::unique_ptr<FILE, StreamCloser> file(std::fopen(kaldex::pathBytes(path).constData(), "r"));
  if (file != nullptr) Survey(*this, file.get(), encoding).run();
}

bool DxfOutline::has(const QString& layer) const {
  const QString name = kaldex::realLayer(layer);
  return std::any_of(layers_.begin(), layers_.end(), [&](const Layer& one) { return one.name == name; });
}

template <typename Action>
void DxfOutline::forEach(const QStringList& names, Action&& action) const {
  QStringList wanted;
  for (const QString& name : names) wanted << kaldex::realLayer(name);
  for (const Layer& layer : layers_) {
    if (wanted.isEmpty() || wanted.contains(layer.name)) action(layer);
  }
}

long long DxfOutline::count(const QString& entity, const QStringList& names) const {
  long long all = 0;
  forEach(names, [&](const Layer& layer) { all += layer.entities.value(entity); });
  return all;
}

Box DxfOutline::box(const QStringList& names) const {
  Box all = Box::inverted();
  forEach(names, [&](const Layer& layer) { all.extend(layer.box); });
  return all;
}

bool DxfOutline::hasTexts(const QStringList& names) const {
  constexpr long long kNever = std::numeric_limits<long long>::max();
  long long first = kNever, blank = kNever;
  forEach(names, [&](const Layer& layer) {
    if (layer.firstText > 0) first = std::min(first, layer.firstText);
    if (layer.firstBlankText > 0) blank = std::min(blank, layer.firstBlankText);
  });
  return first < blank;
}

QStringList DxfOutline::entityKinds() const {
  QStringList kinds;
  for (const Layer& layer : layers_) {
    for (const QString& kind : layer.entities.keys()) {
      if (!kinds.contains(kind)) kinds << kind;
    }
  }
  return kinds;
}

}  // namespace kaldex_v1
