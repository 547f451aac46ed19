#include "i18n/ts_file.h"

#include <QFile>
#include <QXmlStreamReader>
#include <stdexcept>

namespace kaldex::test {

Translations readTsFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + path.toStdString());
  QXmlStreamReader xml(&file);
  Translations all;
  QString context, source;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QLatin1String("name")) {
      context = xml.readElementText();
    } else if (xml.name() == QLatin1String("source")) {
      source = xml.readElementText();
    } else if (xml.name() == QLatin1String("translation")) {
      const bool finished = xml.attributes().value(QLatin1String("type")).isEmpty();
      const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
      all.insert({context, source}, finished ? text : QString());
    }
  }
  if (xml.hasError()) throw std::runtime_error(path.toStdString() + ": " + xml.errorString().toStdString());
  return all;
}

}  // namespace kaldex::test
