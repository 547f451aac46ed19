#include "lib/ascii/line_export.h"

#include <QObject>
#include <algorithm>
#include <limits>
#include <memory>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "lib/ascii/header_writer.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kNetworkDecimals = 6;

int stepsOf(long long records) {
  return static_cast<int>(std::min<long long>(records, std::numeric_limits<int>::max()));
}

bool isNetwork(const InfoLayer* layer) {
  return layer != nullptr && layer->model() == NETWORKMODEL;
}

}  // namespace

IEAsc::LineExport::LineExport(IEAsc& handler, Vector& vector, bool onlyUsedClasses)
    : handler_(handler),
      vector_(vector),
      filter_(onlyUsedClasses, handler.dataBase, handler.infoLayer),
      lineFilter_(filter_, vector),
      writer_(handler),
      progress_(stepsOf(vector.lineCount() + vector.polygonCount())) {}

IEAsc::LineExport::~LineExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  const auto count = [](long long number, const auto& tell) {
    if (number > 0) tell(number);
  };
  count(linesRead_, [&](long long n) { job->countRead("lines", n); });
  count(linesWritten_, [&](long long n) { job->countWritten("lines", n); });
  count(polygonsRead_, [&](long long n) { job->countRead("polygons", n); });
  count(polygonsWritten_, [&](long long n) { job->countWritten("polygons", n); });
  count(fewPoints_, [&](long long n) { job->countLeftOut("few_points", n); });
  count(filtered_, [&](long long n) { job->countLeftOut("class_filter", n); });
  count(withoutOutline_, [&](long long n) { job->countLeftOut("no_geometry", n); });
}

bool IEAsc::LineExport::wantsMore() const {
  return writer_.ok() && !progress_.cancelled();
}

template <class Begin>
bool IEAsc::LineExport::writeLines(Begin begin) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    ++linesRead_;
    progress_.step();
    const bool enough = line->Size() >= 2;
    fewPoints_ += enough ? 0 : 1;
    const bool taken = enough && begin(*line);
    if (taken) writer_.coordinates(*line);
    giveBack(vector_, line);
    if (!taken) continue;
    writer_.endRecord();
    ++linesWritten_;
  }
  return !progress_.cancelled();
}

// --- Lines ---

int IEAsc::LineExport::exportLines() {
  const bool network = isNetwork(handler_.infoLayer);
  writer_.begin(network ? "NETWORK" : "LINES", QObject::tr("//Arcos sem Topologia"));
  if (network) writeNetworkComments();
  writer_.endHeader();
  return finish(writeLines([&](const Line& line) {
    // In front of the class test: the record of a line that is left out stands in the file without
    // coordinates.
    if (network) writeNetworkRecord(line);
    const bool wanted = lineFilter_.passes(line);
    filtered_ += wanted ? 0 : 1;
    return wanted;
  }));
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

// --- Contours ---

int IEAsc::LineExport::exportContours() {
  writer_.begin("CONTOURLINES", QObject::tr("//Isolinhas"));
  writer_.endHeader();
  return finish(writeLines([&](const Line& line) {
    if (line.Type() == lineBreak) return false;
    writer_.contourHead(line);
    return true;
  }));
}

// --- Polygons ---

int IEAsc::LineExport::exportPolygons() {
  writer_.begin("POLYGONS", QObject::tr("//Arcos sem Topologia"));
  writer_.endHeader();
  return finish(writePolygons() && writeLines([&](const Line& line) {
                  if (!isLoose(line)) return false;
                  const bool wanted = filter_.passes(line.classId);
                  filtered_ += wanted ? 0 : 1;
                  return wanted;
                }));
}

bool IEAsc::LineExport::writePolygons() {
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && wantsMore();
       polygon = vector_.NextPolygon()) {
    ++polygonsRead_;
    progress_.step();
    if (filter_.passes(polygon->classId)) {
      writeOutline(*polygon);
      writeSonsOfOtherClasses(*polygon);
    } else {
      ++filtered_;
    }
    giveBack(vector_, polygon);
  }
  return !progress_.cancelled();
}

void IEAsc::LineExport::writeOutline(SPolygon& polygon) {
  const Line* const outline = polygon.CreatePoints(nullptr);
  if (outline != nullptr) {
    writer_.coordinates(*outline);
    polygon.DeletePoints();
    writer_.endRecord();
    ++polygonsWritten_;
  } else {
    ++withoutOutline_;
  }
}

// A son of a class that isn't wanted would leave no trace of its border: it is written as a polygon of its
// own.
void IEAsc::LineExport::writeSonsOfOtherClasses(SPolygon& polygon) {
  if (filter_.takesAll() || polygon.NumSons() == 0) return;
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) {
    if (!filter_.passes(son->classId)) writeOutline(*son);
    giveBack(vector_, son);
  }
  vector_.GetPolygon(polygon.id);
}

bool IEAsc::LineExport::isLoose(const Line& line) const {
  return line.leftPolygon <= 0 && line.rightPolygon <= 0;
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
