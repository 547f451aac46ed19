#ifndef KALDEX_CLI_MAP_COLORS_H
#define KALDEX_CLI_MAP_COLORS_H

#include <QColor>

#include "kaldex/model/visual.h"

namespace kaldex::cli {

/// A fill, and a stroke, out of a set of colours that go well together; numbers that follow each other get
/// colours that differ.
QColor paletteFill(int number);
QColor paletteStroke(int number);

/// What a visual says, or `otherwise` where it was left at what every new visual has.
QColor fillOf(const GeneralVisual& visual, const QColor& otherwise);
QColor strokeOf(const GeneralVisual& visual, const QColor& otherwise);
QColor dotOf(const GeneralVisual& visual, const QColor& otherwise);

}  // namespace kaldex::cli

#endif
