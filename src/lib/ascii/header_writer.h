#ifndef KALDEX_ASCII_HEADER_WRITER_H
#define KALDEX_ASCII_HEADER_WRITER_H

#include <QString>

#include "base/latin1.h"
#include "base/text_output.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/projection.h"

namespace kaldex {

// Writes a section's header lines: project and layer, projection, datum, box with its units, and scale. Each
// begins with its own line feed. What is missing (null) is written as empty texts and zeros.
class HeaderWriter {
 public:
  HeaderWriter(TextOutput& out, const Project* project, const InfoLayer* layer, short coordFormat,
               Latin1Loss* loss);
  void write();

 private:
  void writeText(const QString& text);
  void writeComments();
  void writeProjection();
  void writeDatum();
  void writeOffsets();
  void writeBox();
  void writePlaneBox();
  void writeAngleBox();
  void writeDegreeBox(double unitsPerDegree);
  void writeUnits(const char* unit);

  TextOutput& out_;
  const Project* project_;
  const InfoLayer* layer_;
  short coordFormat_;
  Latin1Loss* loss_;
  SProjection none_;
  const SProjection& projection_;
};

// The pattern with its "%s" and "%d", in order, replaced by the values.
QString filledIn(QString pattern, const QStringList& values);

}  // namespace kaldex

#endif
