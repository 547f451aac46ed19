#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <cstdio>
#include <memory>

#include "base/disk_room.h"
#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/interrupt.h"
#include "cli/json_writer.h"
#include "cli/map_frame.h"
#include "cli/map_painter.h"
#include "cli/texts.h"

namespace kaldex::cli {

namespace {

Box extentOf(const std::vector<InfoLayer*>& layers) {
  Box extent = Box::inverted();
  for (InfoLayer* const layer : layers) {
    for (const short kind : {vectorLines, vectorContours, vectorSamples}) {
      Vector* const vector = layer->vector(kind);
      if (vector == nullptr) continue;
      const Box data = vector->dataExtent();
      if (!data.isInverted()) extent.extend(data);
    }
  }
  if (extent.isInverted()) {
    for (const InfoLayer* const layer : layers) extent.extend(layer->box);
  }
  return extent;
}

bool paint(DataBase& dataBase, const Place& place, const std::vector<InfoLayer*>& layers, QImage& image) {
  const SProjection& projection = *place.project->projection();
  const MapFrame frame(image.size());
  const MapView view(extentOf(layers), &projection, frame.inside());
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  frame.drawSheet(painter);
  painter.setClipRect(frame.inside());
  const bool whole = MapPainter(dataBase, view, painter).draw(layers);
  painter.setClipping(false);
  const QString title = place.layer != nullptr
                            ? QStringLiteral("%1/%2").arg(place.project->name, place.layer->name)
                            : place.project->name;
  const bool units = projection.type() == ProjectionType::none;
  frame.drawFrame(painter, title, units ? QString() : projectionName(projection));
  frame.drawScaleBar(painter, view, units);
  return whole;
}

// Why the image could not be saved, or an empty text.
QString save(const QImage& image, const QString& path) {
  // Made in memory: the library of the format would print its own words about a file that can't be written.
  QBuffer made;
  QSaveFile file(path);
  // A commit does not notice that its own flush failed.
  const bool written = made.open(QIODevice::WriteOnly) && image.save(&made, "PNG") &&
                       file.open(QIODevice::WriteOnly) && file.write(made.data()) == made.size() &&
                       file.flush();
  const QString folder = QFileInfo(path).path();
  const bool full = !written && isDiskFull(folder);
  if (written && file.commit()) return QString();
  const QString trouble = Say::tr("Não foi possível gravar %1.").arg(path);
  return full ? trouble + ' ' + Say::tr("O disco de %1 está cheio.").arg(folder) : trouble;
}

int tellDone(const Options& options) {
  if (options.json) {
    JsonWriter json;
    json.beginObject();
    json.member("result", QStringLiteral("done"));
    json.key("files");
    json.list({options.output});
    json.endObject();
    std::fputs(json.take().constData(), stdout);
  } else if (!options.quiet) {
    printLine(stdout, Say::tr("Mapa desenhado: %1").arg(options.output));
  }
  return kExitDone;
}

}  // namespace

int runDraw(const Options& options) {
  if (QFileInfo::exists(options.output) && !options.overwrite)
    return failPlainly(Say::tr("%1 já existe; use --overwrite.").arg(options.output));
  QString trouble;
  const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
  if (dataBase == nullptr) return failPlainly(trouble);
  const Place place = findPlace(*dataBase, PlaceNames(options.place), trouble);
  if (!trouble.isEmpty()) return failPlainly(trouble);

  std::vector<InfoLayer*> layers;
  if (place.layer != nullptr) {
    layers.push_back(place.layer);
  } else {
    for (InfoLayer* const layer : dataBase->layers(*place.project)) layers.push_back(layer);
  }
  if (layers.empty()) return failPlainly(Say::tr("O projeto %1 não tem planos.").arg(place.project->name));
  QImage image(options.size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return failPlainly(Say::tr("Falta memória."));
  if (!paint(*dataBase, place, layers, image)) return kExitCancelled;
  trouble = save(image, options.output);
  return trouble.isEmpty() ? tellDone(options) : failPlainly(trouble);
}

}  // namespace kaldex::cli
