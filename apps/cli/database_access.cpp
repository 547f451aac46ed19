#include "cli/database_access.h"

#include <QFile>
#include <QFileInfo>

#include "cli/texts.h"
#include "kaldex/model/projection_text.h"

namespace kaldex::cli {

namespace {

constexpr qint64 kLongestDefinition = 64 * 1024;

// A text that can't be one of a reference system, but may be the name of a file that holds one.
QString contentOf(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return QString();
  return QString::fromUtf8(file.read(kLongestDefinition)).trimmed();
}

bool isNumber(const QString& text) {
  bool good = false;
  text.toUInt(&good);
  return good;
}

}  // namespace

std::unique_ptr<DataBase> openDataBase(const QString& path, QString& trouble) {
  if (!QFileInfo::exists(path)) {
    trouble = Say::tr("Não há banco de dados %1; crie-o com: kaldex init %1").arg(path);
    return nullptr;
  }
  QString error;
  std::unique_ptr<DataBase> dataBase = DataBase::Open(path, &error);
  if (dataBase == nullptr)
    trouble = Say::tr("Não foi possível abrir o banco de dados %1: %2").arg(path, error);
  return dataBase;
}

PlaceNames::PlaceNames(const QString& place) {
  const int slash = place.indexOf(QLatin1Char('/'));
  project = slash < 0 ? place : place.left(slash);
  if (slash >= 0) layer = place.mid(slash + 1);
}

Place findPlace(DataBase& dataBase, const PlaceNames& names, QString& trouble) {
  Place place;
  place.project = dataBase.findProject(names.project);
  if (place.project == nullptr) {
    trouble = Say::tr("Não há projeto %1 em %2.").arg(names.project, dataBase.name());
    return place;
  }
  if (names.layer.isEmpty()) return place;
  place.layer = dataBase.findLayer(*place.project, names.layer);
  if (place.layer == nullptr)
    trouble = Say::tr("Não há plano %1 no projeto %2.").arg(names.layer, names.project);
  return place;
}

std::unique_ptr<SProjection> projectionOf(const QString& text, QString& trouble) {
  if (text.compare(QLatin1String("NONE"), Qt::CaseInsensitive) == 0)
    return std::make_unique<GeneralProjection>();
  const QString stored = contentOf(text);
  QString definition = stored.isEmpty() ? text : stored;
  if (isNumber(definition)) definition.prepend(QStringLiteral("EPSG:"));
  QString error;
  std::unique_ptr<SProjection> projection = projectionFromText(definition, &error);
  if (projection == nullptr) trouble = Say::tr("Projeção não entendida: %1 (%2)").arg(text, error);
  return projection;
}

QString projectionName(const SProjection& projection) {
  const QString datum = projection.datum().name();
  QString name = projection.name();
  if (name.isEmpty()) name = projectionTypeName(projection.type());
  if (datum.isEmpty() || projection.datum().isNone() || name.contains(datum)) return name;
  return QStringLiteral("%1/%2").arg(name, datum);
}

}  // namespace kaldex::cli
