#include "lib/arcinfo/line_export.h"

#include "base/tracer.h"
#include "kaldex/job_report.h"

inline namespace kaldex_v1 {

IEArcInfo::LineExport::LineExport(IEArcInfo& handler, Vector& vector, bool onlyUsedClasses)
    : vector_(vector),
      filter_(onlyUsedClasses, handler.dataBase, vector.infoLayer()),
      lineFilter_(filter_, vector),
      writer_(handler),
      progress_(kaldex::progressSteps(vector.lineCount() + vector.polygonCount())) {}

IEArcInfo::LineExport::~LineExport() {
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

template <class Take>
bool IEArcInfo::LineExport::eachLine(Take take) {
  for (Line* line = vector_.FirstLine(); line != nullptr && wantsMore(); line = vector_.NextLine()) {
    ++linesRead_;
    progress_.step();
    // A record without an inner line is one that no reader takes.
    if (line->Size() >= 2) {
      take(*line);
    } else {
      ++fewPoints_;
    }
    giveBack(vector_, line);
  }
  return !progress_.cancelled();
}

void IEArcInfo::LineExport::write(const Line& line, const float* height) {
  writer_.record(line, height);
  ++linesWritten_;
}

int IEArcInfo::LineExport::exportLines() {
  const bool complete = eachLine([this](const Line& line) {
    if (lineFilter_.passes(line)) {
      write(line);
    } else {
      ++filtered_;
    }
  });
  return writer_.finish(complete);
}

int IEArcInfo::LineExport::exportContours() {
  return writer_.finish(eachLine([this](const Line& line) { write(line, &line.height); }));
}

int IEArcInfo::LineExport::exportPolygons() {
  const auto writeLoose = [this](const Line& line) {
    if (line.leftPolygon > 0 || line.rightPolygon > 0) return;
    if (filter_.passes(line.classId)) {
      write(line);
    } else {
      ++filtered_;
    }
  };
  return writer_.finish(writePolygons() && eachLine(writeLoose));
}

bool IEArcInfo::LineExport::writePolygons() {
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

void IEArcInfo::LineExport::writeOutline(SPolygon& polygon) {
  const Line* const outline = polygon.CreatePoints(nullptr);
  if (outline == nullptr) {
    ++withoutOutline_;
    return;
  }
  writer_.record(*outline);
  polygon.DeletePoints();
  ++polygonsWritten_;
}

// A son of a class that isn't wanted would leave no trace of its border: it is written as a record of its
// own.
void IEArcInfo::LineExport::writeSonsOfOtherClasses(SPolygon& polygon) {
  if (filter_.takesAll() || polygon.NumSons() == 0) return;
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) {
    if (!filter_.passes(son->classId)) writeOutline(*son);
    giveBack(vector_, son);
  }
  vector_.GetPolygon(polygon.id);
}

// --- The operations ---

int IEArcInfo::ExportLines(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportLines");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportLines() : 0;
  });
}

int IEArcInfo::ExportContourout(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportContourout");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorContours) return logicRestriction("No Contourout in Vector");
    return openFile("w+") ? LineExport(*this, *vec, false).exportContours() : 0;
  });
}

int IEArcInfo::ExportPolygons(Vector* vec, short onlyUsedClasses) {
  const Tracer tracer(__FILE__, __LINE__, "IEArcInfo::ExportPolygons");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (vec->representation() != vectorLines) return logicRestriction("No LINES in Vector");
    return openFile("w+") ? LineExport(*this, *vec, onlyUsedClasses != 0).exportPolygons() : 0;
  });
}

}  // namespace kaldex_v1
