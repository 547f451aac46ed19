#include <QObject>

#include "base/tracer.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/header_writer.h"
#include "lib/ascii/section_writer.h"
#include "lib/frame/vector_walk.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kNetworkDecimals = 6;

bool isNetwork(const InfoLayer* layer) {
  return layer != nullptr && layer->model() == NETWORKMODEL;
}

}  // namespace

/// Writes the lines of a vector as one section, as their export wants them: all lines, contours, or polygon
/// outlines with the lines that bound none. One export an object; the handler's file must be open.
class IEAsc::LineExport {
 public:
  LineExport(IEAsc& handler, Vector& vector, bool onlyUsedClasses)
      : handler_(handler),
        writer_(handler),
        walk_(vector, onlyUsedClasses, handler.dataBase, handler.infoLayer, writer_.out()) {}

  int exportLines();
  int exportContours();
  int exportPolygons();

 private:
  void writeNetworkComments();
  void writeNetworkRecord(const Line& line);
  void write(const Line& line);

  IEAsc& handler_;
  SectionWriter writer_;
  kaldex::LineWalk walk_;
};

void IEAsc::LineExport::write(const Line& line) {
  writer_.coordinates(line);
  writer_.endRecord();
}

int IEAsc::LineExport::exportLines() {
  const bool network = isNetwork(handler_.infoLayer);
  writer_.begin(network ? "NETWORK" : "LINES", QObject::tr("//Arcos sem Topologia"));
  if (network) writeNetworkComments();
  writer_.endHeader();
  const auto wanted = [&](const Line& line) {
    // In front of the class test: the record of a line that is left out stands in the file without
    // coordinates.
    if (network) writeNetworkRecord(line);
    return walk_.wantsClass(line);
  };
  return writer_.finish(walk_.lines(wanted, [this](const Line& line) { write(line); }));
}

void IEAsc::LineExport::writeNetworkComments() {
  const QString separator = QString::fromLatin1(handler_.separator);
  writer_.out().append('\n');
  writer_.text(QObject::tr("//Formato Num_linha Impedancia_positiva Impedancia_negativa Demanda"));
  writer_.out().append('\n');
  writer_.text(kaldex::filledIn(QObject::tr("//Formato (turns) linha_1 %s linha_2 %s custo_1_2 %s custo_2_1"),
                                {separator, separator, separator}));
}

void IEAsc::LineExport::writeNetworkRecord(const Line& line) {
  kaldex::TextOutput& out = writer_.out();
  out.append("\n ");
  out.appendInt(line.id);
  for (const float value : {line.impedancePositive, line.impedanceNegative, line.demand}) {
    out.append("   ");
    out.appendFixed(static_cast<double>(value), kNetworkDecimals);
  }
}

int IEAsc::LineExport::exportContours() {
  writer_.begin("CONTOURLINES", QObject::tr("//Isolinhas"));
  writer_.endHeader();
  const auto isContour = [](const Line& line) { return line.Type() != lineBreak; };
  return writer_.finish(walk_.lines(isContour, [this](const Line& line) {
    writer_.contourHead(line);
    write(line);
  }));
}

int IEAsc::LineExport::exportPolygons() {
  writer_.begin("POLYGONS", QObject::tr("//Arcos sem Topologia"));
  writer_.endHeader();
  return writer_.finish(walk_.polygons([this](const Line& line) { write(line); }));
}

// --- The operations ---

int IEAsc::ExportLines(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportLines");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return show(QObject::tr("Não existe linhas neste vetor!"));
    return openFile("a+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportLines() : 0;
  });
}

int IEAsc::ExportContourout(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportContourout");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorContours) return logicRestriction("No Contourout in Vector");
    return openFile("a+") ? LineExport(*this, *vec, false).exportContours() : 0;
  });
}

int IEAsc::ExportPolygons(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportPolygons");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return show(QObject::tr("Não existe linhas neste vetor!"));
    return openFile("a+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportPolygons() : 0;
  });
}

}  // namespace kaldex_v1
