#ifndef KALDEX_CLI_MAP_PAINTER_H
#define KALDEX_CLI_MAP_PAINTER_H

#include <QPainter>
#include <QPolygonF>
#include <vector>

#include "cli/map_view.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"
#include "kaldex/model/visual.h"

namespace kaldex::cli {

/// Draws the layers of a map, one feature at a time: areas first, then lines, points and texts, so that no
/// layer hides what is smaller in another.
class MapPainter {
 public:
  MapPainter(DataBase& dataBase, const MapView& view, QPainter& painter)
      : dataBase_(dataBase), view_(view), painter_(painter) {}

  /// False when the user has interrupted.
  bool draw(const std::vector<InfoLayer*>& layers);

 private:
  void drawPolygons(InfoLayer& layer);
  void drawPolygon(SPolygon& polygon, const InfoLayer& layer);
  void addRing(QPainterPath& path, SPolygon& polygon);
  bool isHole(const SPolygon& polygon) const;
  QColor fill(const SPolygon& polygon, const InfoLayer& layer);
  void findObjects(Vector& vector);
  void drawLines(InfoLayer& layer, short kind);
  void drawLine(Line& line, const InfoLayer& layer, short kind);
  QPen pen(const Line& line, const InfoLayer& layer, short kind) const;
  void drawPoints(InfoLayer& layer);
  void drawSamples(InfoLayer& layer);
  void drawTexts(InfoLayer& layer);
  void dot(const QPointF& place, double radius, const QColor& color);

  struct Object {
    int anchor;
    int visual;
  };

  DataBase& dataBase_;
  const MapView& view_;
  QPainter& painter_;
  QPolygonF path_;
  /// Objects mostly share theirs: the one that was looked up last is kept.
  struct StoredVisual {
    int id = 0;
    bool known = false;
    GeneralVisual visual;
  };
  StoredVisual stored_;
  std::vector<Object> objects_;  ///< of the layer at hand, by polygon identifier
};

}  // namespace kaldex::cli

#endif
