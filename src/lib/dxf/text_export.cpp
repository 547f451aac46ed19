#include "base/tracer.h"
#include "kaldex/model/text.h"
#include "lib/ascii/text_scale.h"
#include "lib/dxf/drawing_export.h"

inline namespace kaldex_v1 {

/// Writes a list of texts.
class IEDXF::TextExport : private IEDXF::DrawingExport {
 public:
  TextExport(IEDXF& handler, EntitieList& texts);
  ~TextExport();

  int run();

 private:
  void write(const EText& text);

  kaldex::ProgressScope progress_;
  EntitieList& texts_;
  kaldex::TextScale scale_;
  TextVisual layerLook_;
  long long read_ = 0;
  long long empty_ = 0;
};

IEDXF::TextExport::TextExport(IEDXF& handler, EntitieList& texts)
    : DrawingExport(handler),
      progress_(kaldex::progressSteps(texts.Size())),
      texts_(texts),
      scale_(handler.infoLayer, handler.project != nullptr ? handler.project->projection() : nullptr) {
  Text* text = nullptr;
  if (handler.infoLayer != nullptr && handler.infoLayer->Get(text) != 0) layerLook_ = text->visual.text;
}

IEDXF::TextExport::~TextExport() {
  kaldex::reportRead("texts", read_);
  kaldex::reportWritten("texts", read_ - empty_);
  kaldex::noteEmptyTexts(empty_);
}

int IEDXF::TextExport::run() {
  begin();
  for (Entitie* const entity : texts_) {
    if (!wantsMore()) break;
    progress_.step();
    if (const auto* const text = dynamic_cast<const EText*>(entity)) write(*text);
  }
  return finish();
}

void IEDXF::TextExport::write(const EText& text) {
  ++read_;
  // Readers of drawings, ours among them, stop at a text without characters.
  if (text.String().trimmed().isEmpty()) {
    ++empty_;
    return;
  }
  // Only sizes of a text's own are at map scale: those of the layer's look are on paper as they stand.
  kaldex::DrawingOutput::TextLook look;
  if (text.Own() != 0) {
    look.height = scale_.toPaper(text.Height());
    look.angle = static_cast<double>(text.Angle());
  } else {
    look.height = static_cast<double>(layerLook_.height);
    look.angle = static_cast<double>(layerLook_.angle);
  }
  writeText(text.Position(), text.String(), look);
}

int IEDXF::ExportText(EntitieList* texts) {
  const Tracer tracer(__FILE__, __LINE__, "IEDXF::ExportText");
  return guarded([&] {
    if (texts == nullptr) return invalidArgument("list");
    return openFile("w+") ? TextExport(*this, *texts).run() : 0;
  });
}

}  // namespace kaldex_v1
