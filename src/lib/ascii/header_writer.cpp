#include "lib/ascii/header_writer.h"

#include <QObject>
#include <QRegularExpression>
#include <QStringList>

#include "kaldex/model/angle.h"

namespace kaldex {

namespace {

QString angleText(double angle, short kind) {
  QString text;
  return Encode(angle, kind, text, true);
}

// A name is a part of a line: a line feed in it would make the rest of it a line of the header.
QString oneLine(QString name) {
  for (QChar& c : name) {
    if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) c = QLatin1Char(' ');
  }
  return name;
}

}  // namespace

QString filledIn(QString pattern, const QStringList& values) {
  int at = 0;
  for (const QString& value : values) {
    at = pattern.indexOf(QRegularExpression(QStringLiteral("%[sd]")), at);
    if (at < 0) break;
    pattern.replace(at, 2, value);
    at += value.size();
  }
  return pattern;
}

HeaderWriter::HeaderWriter(TextOutput& out, const Project* project, const InfoLayer* layer, short coordFormat,
                           Latin1Loss* loss)
    : out_(out),
      project_(project),
      layer_(layer),
      coordFormat_(coordFormat),
      loss_(loss),
      projection_(project != nullptr && project->projection() != nullptr ? *project->projection() : none_) {}

void HeaderWriter::write() {
  writeComments();
  writeProjection();
  writeDatum();
  writeOffsets();
  writeBox();
  out_.append("\nSCALE\t");
  out_.appendFixed(layer_ != nullptr ? static_cast<double>(layer_->scale) : 0.0, 6);
}

void HeaderWriter::writeText(const QString& text) {
  out_.append(toLatin1(text, loss_));
}

void HeaderWriter::writeComments() {
  const QString project = oneLine(project_ != nullptr ? project_->name : QString());
  const QString layer = oneLine(layer_ != nullptr ? layer_->name : QString());
  const QString category = oneLine(layer_ != nullptr ? layer_->GetCategoryName() : QString());
  const QString model = modelName(layer_ != nullptr ? layer_->model() : short(0));
  out_.append('\n');
  writeText(QObject::tr("//Arquivo ASCII gerado pelo Sistema KALDEX"));
  out_.append('\n');
  writeText(filledIn(QObject::tr("//Projeto: %s - Plano de informação: %s"), {project, layer}));
  out_.append('\n');
  writeText(filledIn(QObject::tr("//Categoria: %s - Modelo: %s"), {category, model}));
}

void HeaderWriter::writeProjection() {
  out_.append("\nPROJECTION\t");
  writeText(projection_.name());
  out_.append(", HEMIS ");
  out_.appendInt(projection_.hemisphere());
  out_.append(", ORIG.LAT ");
  writeText(angleText(projection_.originLatitude(), kLatitudeKind));
  out_.append(", ORIG.LONG ");
  writeText(angleText(projection_.centralMeridian(), kLongitudeKind));
  out_.append(", LAT1 ");
  writeText(angleText(projection_.firstParallel(), kLatitudeKind));
  out_.append(", LAT2 ");
  writeText(angleText(projection_.secondParallel(), kLatitudeKind));
}

void HeaderWriter::writeDatum() {
  const Datum& datum = projection_.datum();
  out_.append("\nDATUM\t");
  writeText(datum.name());
  out_.append(", Prd ");
  out_.appendFixed(datum.radius(), 6);
  out_.append(", Pflt ");
  out_.appendFixed(datum.flattening(), 12);
  out_.append(", Pdx ");
  out_.appendFixed(static_cast<double>(datum.dx()), 8);
  out_.append(", Pdy ");
  out_.appendFixed(static_cast<double>(datum.dy()), 8);
  out_.append(", Pdz ");
  out_.appendFixed(static_cast<double>(datum.dz()), 8);
}

void HeaderWriter::writeOffsets() {
  out_.append("\nOFFSETX  ");
  out_.appendFixed(projection_.falseEasting(), 6);
  out_.append("   OFFSETY  ");
  out_.appendFixed(projection_.falseNorthing(), 6);
  out_.append("   SCALEFACTOR  ");
  out_.appendFixed(projection_.scale(), 6);
}

void HeaderWriter::writeBox() {
  switch (coordFormat_) {
    case 0:
      return writePlaneBox();
    case 1:
      return writeAngleBox();
    case 2:
      return writeDegreeBox(1.0);
    default:
      return writeDegreeBox(3600.0);
  }
}

void HeaderWriter::writePlaneBox() {
  const Box box = layer_ != nullptr ? layer_->box : Box();
  out_.append("\nBOX\t");
  out_.appendFixed(box.x1, 6);
  for (const double value : {box.y1, box.x2, box.y2}) {
    out_.append(", ");
    out_.appendFixed(value, 6);
  }
  const SProjection* const projection = layer_ != nullptr ? layer_->projection() : nullptr;
  if (projection != nullptr && projection->type() == ProjectionType::latLong) {
    writeUnits("DEG");
  } else {
    writeText(filledIn(QObject::tr("%sUNITS Metros"), {QStringLiteral("\n")}));
  }
}

void HeaderWriter::writeAngleBox() {
  const Box box = layer_ != nullptr ? layer_->geographicBox : Box();
  out_.append("\nBOX\tX1 ");
  writeText(angleText(box.x1, kLongitudeKind));
  out_.append(", Y1 ");
  writeText(angleText(box.y1, kLatitudeKind));
  out_.append(", X2 ");
  writeText(angleText(box.x2, kLongitudeKind));
  out_.append(", Y2 ");
  writeText(angleText(box.y2, kLatitudeKind));
  writeUnits("GMS");
}

void HeaderWriter::writeDegreeBox(double unitsPerDegree) {
  const Box box = layer_ != nullptr ? layer_->geographicBox : Box();
  const auto append = [&](const char* label, double radians) {
    out_.append(label);
    out_.appendFixed(radians * 180 * unitsPerDegree / kPi, 6);
  };
  append("\nBOX\tX1 ", box.x1);
  append(", Y1 ", box.y1);
  append(", X2 ", box.x2);
  append(", Y2 ", box.y2);
  writeUnits(unitsPerDegree > 1.0 ? "SEG" : "DEG");
}

void HeaderWriter::writeUnits(const char* unit) {
  writeText(
      filledIn(QObject::tr("%sUNITS Geográficas %s"), {QStringLiteral("\n"), QString::fromLatin1(unit)}));
}

}  // namespace kaldex
