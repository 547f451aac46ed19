#include <QObject>

#include "base/tracer.h"
#include "lib/ascii/label_export.h"

inline namespace kaldex_v1 {

/// What has a class, or the places of objects.
class IEAsc::LabelExport::Plain : public LabelExport {
 public:
  using LabelExport::LabelExport;

  int run(bool onlyUsed);

 private:
  void writeHeader();
  void writeClassBlock();
  void writeClasses();
  void writeObjects();
  void writeObject(const Point& place, const Identity& identity, const char* target);
};

int IEAsc::LabelExport::Plain::run(bool onlyUsed) {
  // Which classes are in use is found out for the list in the header: without that there are none.
  if (isThematic()) chooseClasses(onlyUsed, isSeparated());
  writeHeader();
  if (isThematic()) {
    writeClasses();
  } else {
    writeObjects();
  }
  return finish();
}

void IEAsc::LabelExport::Plain::writeHeader() {
  writer_.begin(sectionName(), QObject::tr("//Identificadores dos Polígonos e das Linhas Classificadas"));
  if (isSeparated()) {
    writeSeparator();
    if (isThematic()) writeClassBlock();
    writeFields();
  }
  writer_.endHeader();
}

void IEAsc::LabelExport::Plain::writeClassBlock() {
  writer_.out().append(
      "//Formato THEMACLASS <polcolorR> <polcolorG> <polcolorB> <lincolorR> <lincolorG> <lincolorB> "
      "<nameclass> (PARAMETRO OPCIONAL)\nTHEMACLASS");
  for (const GeoClass* geoClass : chosen()) {
    writeRow({&geoClass->visual.polygon.color, &geoClass->visual.line.color}, geoClass->name);
  }
  writer_.out().append('\n');
}

void IEAsc::LabelExport::Plain::writeClasses() {
  visitPolygons([this](SPolygon& polygon) {
    const GeoClass* const geoClass = chosenClass(polygon.classId);
    if (geoClass == nullptr) return;
    ++polygonsRead_;
    Point place;
    if (labelOf(polygon, place)) {
      writeClass(place, geoClass->name);
    } else {
      ++withoutPlace_;
    }
  });
  visitLines([this](Line& line) {
    const GeoClass* const geoClass = chosenClass(line.classId);
    if (geoClass == nullptr) return;
    ++linesRead_;
    writeClass(labelOf(line), geoClass->name);
  });
}

void IEAsc::LabelExport::Plain::writeObjects() {
  visitAnchors([this](const Anchor& anchor, const Identity& identity) {
    visitPolygons(anchor, [&](SPolygon& polygon) {
      ++polygonsRead_;
      Point place;
      if (labelOf(polygon, place)) {
        writeObject(place, identity, nullptr);
      } else {
        ++withoutPlace_;
      }
    });
    visitLines(anchor, [&](Line& line) {
      ++linesRead_;
      writeObject(labelOf(line), identity, isNetwork() ? "LINES" : "");
    });
    if (!isNetwork()) return;
    for (const int id : anchor.points) {
      const Point2d* const node = vector_.GetPoint2d(id);
      if (node == nullptr) continue;
      ++pointsRead_;
      writeObject(*node, identity, "NODES");
    }
  });
}

// `target` tells a network's lines from its nodes; null for a polygon, which needs no word.
void IEAsc::LabelExport::Plain::writeObject(const Point& place, const Identity& identity,
                                            const char* target) {
  if (!isSeparated()) {
    writeKeyword("CATEGORY_OBJ  ", identity.category);
    writeKeyword("LABEL  ", identity.label);
    writeKeyword("NAME   ", identity.name);
    if (target != nullptr && *target != 0) {
      writer_.out().append('\n');
      writer_.out().append(target);
    }
    writePlace(place);
    return;
  }
  writePlace(place);
  for (const QString& value : {identity.label, identity.name, identity.category}) writeField(value);
  if (target != nullptr) writeField(QByteArray(target));
}

int IEAsc::ExportLabelPoints(Vector* vec, Category* category, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLabelPoints");
  return LabelExport::run<LabelExport::Plain>(
      *this, vec, category, [&](LabelExport::Plain& work) { return work.run(onlyUsedClasses != 0); });
}

}  // namespace kaldex_v1
