#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <memory>

#include "cli/commands.h"
#include "cli/database_access.h"
#include "cli/delivery.h"
#include "cli/interrupt.h"
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

bool write(const QImage& image, const QString& path) {
  // Made in memory: the library of the format would print its own words about a file that can't be written.
  QBuffer made;
  QFile file(path);
  return made.open(QIODevice::WriteOnly) && image.save(&made, "PNG") && file.open(QIODevice::WriteOnly) &&
         file.write(made.data()) == made.size() && file.flush();
}

// Why the image could not be saved, or an empty text.
QString save(const QImage& image, const QString& path) {
  Delivery delivery(path, {});
  QString trouble;
  if (!delivery.begin(false, true, trouble)) return trouble;
  if (!write(image, delivery.workPath()))
    return (Say::tr("Não foi possível gravar %1.").arg(path) + ' ' + delivery.shortage()).trimmed();
  return delivery.finish(trouble) ? QString() : trouble;
}

// Why the picture may not go there, or an empty text.
QString objectionTo(const Options& options) {
  const Delivery delivery(options.output, {});
  const QString objection = delivery.objection({options.dataBase});
  if (!objection.isEmpty() || options.overwrite || !delivery.exists()) return objection;
  return Say::tr("%1 já existe; use --overwrite.").arg(options.output);
}

int tellDone(const Options& options) {
  tellResult(options, Result::done, {}, {options.output});
  if (!options.json && !options.quiet) printLine(stdout, Say::tr("Mapa desenhado: %1").arg(options.output));
  return kExitDone;
}

}  // namespace

int runDraw(const Options& options) {
  QString trouble = objectionTo(options);
  if (!trouble.isEmpty()) return failPlainly(options, trouble);
  const std::unique_ptr<DataBase> dataBase = openDataBase(options.dataBase, trouble);
  if (dataBase == nullptr) return failPlainly(options, trouble);
  const Place place = findPlace(*dataBase, PlaceNames(options.place), trouble);
  if (!trouble.isEmpty()) return failPlainly(options, trouble);

  std::vector<InfoLayer*> layers;
  if (place.layer != nullptr) {
    layers.push_back(place.layer);
  } else {
    for (InfoLayer* const layer : dataBase->layers(*place.project)) layers.push_back(layer);
  }
  if (layers.empty())
    return failPlainly(options, Say::tr("O projeto %1 não tem planos.").arg(place.project->name));
  QImage image(options.size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return failPlainly(options, Say::tr("Falta memória."));
  if (!paint(*dataBase, place, layers, image)) {
    tellResult(options, Result::cancelled, {}, {});
    return kExitCancelled;
  }
  trouble = save(image, options.output);
  return trouble.isEmpty() ? tellDone(options) : failPlainly(options, trouble);
}

}  // namespace kaldex::cli
