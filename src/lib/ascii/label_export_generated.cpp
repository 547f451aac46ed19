#include <QObject>

#include "base/tracer.h"
#include "lib/ascii/label_export.h"

inline namespace kaldex_v1 {

namespace {
constexpr int kBaseCapacity = 50;
constexpr char kCenterFile[] = "_CEN.kdx";
}  // namespace

/// Every polygon and free line under a name of its own.
class IEAsc::LabelExport::Generated : public LabelExport {
 public:
  Generated(IEAsc& handler, Vector& vector, Category& category)
      : LabelExport(handler, vector, category),
        base_(baseName(kBaseCapacity)),
        center_(handler.dataFile.contains(QLatin1String(kCenterFile))) {}

  int run();

 private:
  void writeHeader();
  void writePolygon(SPolygon& polygon);
  void writeLine(Line& line);
  void writeIdentity(const Point& place, const QByteArray& name);
  bool writeCenter(const SPolygon& polygon, const Point& place);
  void writeTail(const char* mark);
  QByteArray nextName(const char* kind) { return base_ + kind + QByteArray::number(++number_); }

  QByteArray base_;
  bool center_;
  int number_ = 0;
};

int IEAsc::LabelExport::Generated::run() {
  chooseClasses(false, false);
  writeHeader();
  visitPolygons([this](SPolygon& polygon) { writePolygon(polygon); });
  if (!center_ || !isThematic()) {
    visitLines([this](Line& line) {
      if (line.leftPolygon < 1 && line.rightPolygon < 1) writeLine(line);
    });
  }
  return finish();
}

void IEAsc::LabelExport::Generated::writeHeader() {
  if (center_) {
    writer_.begin("CENTER", QObject::tr("//Identificadores dos Polígonos com classe, área e perímetro\n"));
  } else {
    writer_.begin(sectionName(), QObject::tr("//Identificadores dos Polígonos e das Linhas Classificadas"));
  }
  if (isSeparated()) {
    writeSeparator();
    if (center_ && isThematic()) {
      writeFormat("//Formato coordx %s coordy %s class_name %s área(m2) %s perímetro(m2)");
    } else {
      writeFields();
    }
  }
  writer_.endHeader();
}

void IEAsc::LabelExport::Generated::writePolygon(SPolygon& polygon) {
  ++polygonsRead_;
  const char* mark = "";
  const Point place = labelOrVertex(polygon, mark);
  const QByteArray name = nextName("_pol");
  if (center_ && isThematic() && isSeparated()) {
    if (!writeCenter(polygon, place)) return;
  } else {
    writeIdentity(place, name);
  }
  writeTail(mark);
}

void IEAsc::LabelExport::Generated::writeLine(Line& line) {
  ++linesRead_;
  writeIdentity(labelOf(line), nextName("_lin"));
}

void IEAsc::LabelExport::Generated::writeIdentity(const Point& place, const QByteArray& name) {
  const QString text = QString::fromLatin1(name);
  if (!isSeparated()) {
    if (isThematic()) {
      writeKeyword("CLASS_NAME   ", text);
    } else {
      writeKeyword("CATEGORY_OBJ   ", QString::fromLatin1(base_));
      writeKeyword("LABEL   ", text);
    }
    writePlace(place);
    return;
  }
  writePlace(place);
  writeField(name);
  if (isThematic()) return;
  writeField(QByteArray());
  writeField(base_);
}

// A class that nobody knows leaves the coordinates alone; false then.
bool IEAsc::LabelExport::Generated::writeCenter(const SPolygon& polygon, const Point& place) {
  constexpr int decimals = 6;
  writePlace(place);
  const GeoClass* const geoClass = chosenClass(polygon.classId);
  if (geoClass == nullptr && polygon.classId != 0) return false;
  writeField(geoClass != nullptr ? geoClass->name : QStringLiteral("Nenhuma"));
  for (const double measure : {polygon.area, polygon.perimeter}) {
    writeField(QByteArray());
    writer_.out().appendFixed(measure, decimals);
  }
  return true;
}

void IEAsc::LabelExport::Generated::writeTail(const char* mark) {
  if (!isSeparated()) return;
  writer_.out().append(' ');
  writer_.out().append(mark);
}

int IEAsc::ExportLabelPointsAuto(Vector* vec, Category* category) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLabelPointsAuto");
  return LabelExport::run<LabelExport::Generated>(*this, vec, category,
                                                  [](LabelExport::Generated& work) { return work.run(); });
}

}  // namespace kaldex_v1
