#include <QObject>
#include <memory>
#include <string>

#include "base/number_text.h"
#include "base/tracer.h"
#include "kaldex/dxf.h"
#include "lib/dxf/drawing_reader.h"
#include "lib/dxf/drawing_text.h"
#include "lib/dxf/entity_kind.h"
#include "lib/dxf/layer_selection.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::GroupCode;

constexpr std::size_t kLongestCompared = 100;

}  // namespace

/// Finds the layers of a drawing. The handler's file must be open.
class IEDXF::LayerTable {
 public:
  explicit LayerTable(IEDXF& handler) : handler_(handler), reader_(*handler.reader_) {}

  std::unique_ptr<SDataLayerList> read();

 private:
  enum class Search { table, none, fileEnd };

  Search findTable();
  std::unique_ptr<SDataLayerList> readTable();
  std::unique_ptr<SDataLayerList> readAllPairs();
  std::unique_ptr<SDataLayerList> noTables();
  std::unique_ptr<SDataLayerList> badTable();
  void beginLayer() { current_ = std::make_unique<SDataLayer>(); }
  void endLayer();
  QString nameAtHand();

  IEDXF& handler_;
  kaldex::DrawingReader& reader_;
  std::unique_ptr<kaldex::DrawingText> text_;
  std::unique_ptr<SDataLayerList> list_ = std::make_unique<SDataLayerList>();
  std::unique_ptr<SDataLayer> current_;
};

std::unique_ptr<SDataLayerList> IEDXF::LayerTable::read() {
  if (!reader_.searchSection(handler_.file, kaldex::DrawingReader::tables)) return noTables();
  text_ = std::make_unique<kaldex::DrawingText>(handler_.encoding_.toLatin1(), reader_.codePage());
  switch (findTable()) {
    case Search::table:
      return readTable();
    case Search::none:
      return readAllPairs();
    default:
      return badTable();
  }
}

IEDXF::LayerTable::Search IEDXF::LayerTable::findTable() {
  while (handler_.next()) {
    if (reader_.is(GroupCode::name, "LAYER")) return Search::table;
    if (reader_.is(GroupCode::start, "ENDSEC") || reader_.isEndOfDrawing()) return Search::none;
  }
  return Search::fileEnd;
}

std::unique_ptr<SDataLayerList> IEDXF::LayerTable::readTable() {
  while (handler_.next()) {
    const int code = reader_.code();
    if (code == GroupCode::start) {
      endLayer();
      if (reader_.value() == "LAYER") beginLayer();
      if (reader_.value() == "ENDTAB") return std::move(list_);
      if (reader_.value() == "EOF") return nullptr;
    } else if (current_ != nullptr && code == GroupCode::name) {
      current_->Label(nameAtHand());
    } else if (current_ != nullptr && code == GroupCode::color) {
      current_->flag1 = static_cast<unsigned char>(kaldex::textToInteger(reader_.value()));
    }
  }
  return badTable();
}

void IEDXF::LayerTable::endLayer() {
  if (current_ != nullptr) list_->Append(current_.release());
}

QString IEDXF::LayerTable::nameAtHand() {
  return kaldex::shownLayer(text_->name(reader_.value()));
}

// Where no table tells the layers, what the entities say does; a layer that comes back has another entry.
std::unique_ptr<SDataLayerList> IEDXF::LayerTable::readAllPairs() {
  if (!handler_.openDrawing()) return nullptr;
  std::string before;
  while (handler_.next() && !reader_.isEndOfDrawing()) {
    if (reader_.code() != GroupCode::layer) continue;
    const std::string_view raw = reader_.value().substr(0, kLongestCompared);
    if (list_->Size() > 0 && raw == before) continue;
    before = raw;
    list_->Append(new SDataLayer(nameAtHand()));
  }
  if (list_->Size() == 0) return noTables();
  return std::move(list_);
}

std::unique_ptr<SDataLayerList> IEDXF::LayerTable::noTables() {
  handler_.FileClose();
  show(QObject::tr("Arquivo sem \"SECTION TABLE\", digite o nome do plano requerido no campo PI."));
  return nullptr;
}

std::unique_ptr<SDataLayerList> IEDXF::LayerTable::badTable() {
  handler_.badLine();
  return nullptr;
}

SDataLayerList* IEDXF::GetLayers() {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::GetLayers");
  std::unique_ptr<SDataLayerList> list;
  guarded([&] {
    if (openDrawing()) list = LayerTable(*this).read();
    return list != nullptr ? 1 : 0;
  });
  return list.release();
}

namespace {

/// Counts the entities of chosen layers, each once, at its first layer pair.
class ContentCounter {
 public:
  ContentCounter(int& lines, int& polylines, int& points, int& texts)
      : lines_(lines), polylines_(polylines), points_(points), texts_(texts) {
    lines = polylines = points = texts = 0;
  }

  void begin(std::string_view name) {
    const kaldex::EntityKind kind = kaldex::entityKind(name);
    if (kind != kaldex::EntityKind::none && kind != kaldex::EntityKind::vertex) kind_ = kind;
  }
  void layer(bool chosen) {
    int* const counter = counterOf(kind_);
    if (chosen && counter != nullptr) ++*counter;
    kind_ = kaldex::EntityKind::none;
  }

 private:
  int* counterOf(kaldex::EntityKind kind) {
    switch (kind) {
      case kaldex::EntityKind::line:
        return &lines_;
      case kaldex::EntityKind::polyline:
      case kaldex::EntityKind::arc:
      case kaldex::EntityKind::circle:
        return &polylines_;
      case kaldex::EntityKind::point:
        return &points_;
      case kaldex::EntityKind::text:
        return &texts_;
      default:
        return nullptr;
    }
  }

  int& lines_;
  int& polylines_;
  int& points_;
  int& texts_;
  kaldex::EntityKind kind_ = kaldex::EntityKind::none;
};

}  // namespace

int IEDXF::GetLayerContents(int& lines, int& polylines, int& points, int& texts) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::GetLayerContents");
  ContentCounter counter(lines, polylines, points, texts);
  return guarded([&] {
    if (!openDrawing()) return 0;
    QStringList names;
    if (chosenLayer_ != nullptr) names = chosenNames();
    kaldex::ChosenLayers chosen(names, encoding_.toLatin1(), *reader_);
    while (reader_->nextOutsideBlocks(file)) {
      if (reader_->isEndOfDrawing()) return FileClose();
      if (reader_->code() == GroupCode::start) counter.begin(reader_->value());
      if (reader_->code() != GroupCode::layer) continue;
      const bool takes = chosen.selection().takes(reader_->value());
      if (takes && !names.isEmpty()) holdLayer(std::string(reader_->value()).c_str());
      counter.layer(takes);
    }
    return badLine();
  });
}

}  // namespace kaldex_v1
