#ifndef KALDEX_CLI_MAP_FRAME_H
#define KALDEX_CLI_MAP_FRAME_H

#include <QPainter>
#include <QSize>
#include <QString>

#include "cli/map_view.h"

namespace kaldex::cli {

/// What stands around a map: the sheet with its margins, the frame, a title, and a scale bar.
class MapFrame {
 public:
  explicit MapFrame(const QSize& size);

  /// Where the map itself goes.
  QRectF inside() const { return inside_; }
  void drawSheet(QPainter& painter) const;
  void drawFrame(QPainter& painter, const QString& title, const QString& remark) const;
  /// `units` for a plane without a projection: lengths are then plain numbers.
  void drawScaleBar(QPainter& painter, const MapView& view, bool units) const;

 private:
  QSize size_;
  double margin_;
  QRectF inside_;
};

}  // namespace kaldex::cli

#endif
