#ifndef KALDEX_DXF_LAYER_SELECTION_H
#define KALDEX_DXF_LAYER_SELECTION_H

#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "lib/dxf/drawing_reader.h"
#include "lib/dxf/drawing_text.h"

namespace kaldex {

// What lists show for layer "0", and its real name.
inline constexpr char kDefaultLayer[] = "0";
inline constexpr char kDefaultLayerShown[] = "0 { DXF Default Layer }";
// The name as lists show it, and back.
QString shownLayer(const QString& name);
QString realLayer(const QString& shown);

// The layers that an import takes: those named, or all when none is.
class LayerSelection {
 public:
  LayerSelection(const QStringList& names, DrawingText& text)
      : names_(names.begin(), names.end()), text_(text) {}

  // By the name as it stands in the file.
  bool takes(std::string_view raw) { return find(raw).taken; }
  const QString& name(std::string_view raw) { return find(raw).name; }

 private:
  struct Known {
    QString name;
    bool taken;
  };
  static constexpr std::size_t kMostKnown = 20000;  // a file that invents names must not fill the memory

  const Known& find(std::string_view raw);

  QSet<QString> names_;
  DrawingText& text_;
  std::unordered_map<std::string, Known> known_;
  const Known* last_ = nullptr;  // entities of a layer follow each other
  std::string lastRaw_;
};

// A selection that is made when it is first wanted: not before the drawing's header has been read.
class ChosenLayers {
 public:
  ChosenLayers(const QStringList& names, const QByteArray& encoding, const DrawingReader& reader)
      : names_(names), encoding_(encoding), reader_(reader) {}

  LayerSelection& selection() {
    make();
    return *selection_;
  }
  DrawingText& text() {
    make();
    return *text_;
  }
  const DrawingText& text() const { return *text_; }
  bool isMade() const { return text_.has_value(); }

 private:
  void make() {
    if (text_) return;
    text_.emplace(encoding_, reader_.codePage());
    selection_.emplace(names_, *text_);
  }

  QStringList names_;
  QByteArray encoding_;
  const DrawingReader& reader_;
  std::optional<DrawingText> text_;
  std::optional<LayerSelection> selection_;
};

}  // namespace kaldex

#endif
