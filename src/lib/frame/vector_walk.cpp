#include "lib/frame/vector_walk.h"

#include "kaldex/job_report.h"
#include "lib/frame/give_back.h"

namespace kaldex {

namespace {

using Count = void (JobReport::*)(const QString& what, long long count);

void tell(Count count, const char* what, long long number) {
  JobReport* const job = JobReport::current();
  if (job != nullptr && number > 0) (job->*count)(QLatin1String(what), number);
}

}  // namespace

void VectorWalk::eachLine(const TextOutput& out, const LineWriter& visit) {
  for (Line* line = vector_.FirstLine(); line != nullptr && goesOn(out); line = vector_.NextLine()) {
    visit(*line);
    giveBack(vector_, line);
  }
}

// --- Lines and polygons ---

LineWalk::LineWalk(Vector& vector, bool onlyUsedClasses, DataBase* dataBase, InfoLayer* layer,
                   const TextOutput& out)
    : VectorWalk(vector, vector.lineCount() + vector.polygonCount()),
      filter_(onlyUsedClasses, dataBase, layer),
      lineFilter_(filter_, vector),
      out_(out) {}

LineWalk::~LineWalk() {
  tell(&JobReport::countRead, "lines", linesRead_);
  tell(&JobReport::countWritten, "lines", linesWritten_);
  tell(&JobReport::countRead, "polygons", polygonsRead_);
  tell(&JobReport::countWritten, "polygons", polygonsWritten_);
  tell(&JobReport::countLeftOut, "few_points", fewPoints_);
  tell(&JobReport::countLeftOut, "class_filter", filtered_);
  tell(&JobReport::countLeftOut, "no_geometry", withoutOutline_);
}

bool LineWalk::counted(bool wanted) {
  filtered_ += wanted ? 0 : 1;
  return wanted;
}

bool LineWalk::lines(const Wanted& wanted, const LineWriter& write) {
  eachLine(out_, [&](const Line& line) {
    progress_.step();
    take(line, wanted, write);
  });
  return complete();
}

void LineWalk::take(const Line& line, const Wanted& wanted, const LineWriter& write) {
  ++linesRead_;
  if (!isLong(line)) {
    ++fewPoints_;
  } else if (wanted(line)) {
    write(line);
    ++linesWritten_;
  }
}

bool LineWalk::polygons(const LineWriter& write) {
  if (!outlines(write)) return false;
  eachLine(out_, [&](const Line& line) {
    progress_.step();
    if (line.leftPolygon > 0 || line.rightPolygon > 0) return;  // it went out with its polygons
    take(
        line, [this](const Line& loose) { return counted(filter_.passes(loose.classId)); }, write);
  });
  return complete();
}

bool LineWalk::outlines(const LineWriter& write) {
  for (SPolygon* polygon = vector_.FirstPolygon(); polygon != nullptr && goesOn(out_);
       polygon = vector_.NextPolygon()) {
    ++polygonsRead_;
    progress_.step();
    if (counted(filter_.passes(polygon->classId))) {
      outline(*polygon, write);
      outlinesOfOtherSons(*polygon, write);
    }
    giveBack(vector_, polygon);
  }
  return complete();
}

void LineWalk::outline(SPolygon& polygon, const LineWriter& write) {
  const Line* const line = polygon.CreatePoints(nullptr);
  if (line == nullptr) {
    ++withoutOutline_;
    return;
  }
  write(*line);
  polygon.DeletePoints();
  ++polygonsWritten_;
}

// A son of a class that isn't wanted would leave no trace of its border: it is written like a polygon that
// is.
void LineWalk::outlinesOfOtherSons(SPolygon& polygon, const LineWriter& write) {
  if (filter_.takesAll() || polygon.NumSons() == 0) return;
  for (SPolygon* son = polygon.FirstSon(); son != nullptr; son = polygon.NextSon()) {
    if (!filter_.passes(son->classId)) {
      outline(*son, write);
      --filtered_;  // as which it counts where the walk comes to it by itself
    }
    giveBack(vector_, son);
  }
  // The sons have moved the cursor.
  vector_.GetPolygon(polygon.id);
}

// --- Samples ---

SampleWalk::~SampleWalk() {
  tell(&JobReport::countRead, "samples", points_);
  tell(&JobReport::countWritten, "samples", points_);
  tell(&JobReport::countRead, "lines", linesRead_);
  tell(&JobReport::countWritten, "lines", linesWritten_);
  tell(&JobReport::countLeftOut, "few_points", fewPoints_);
}

void SampleWalk::heightLines(const TextOutput& out, const LineWriter& write) {
  eachLine(out, [&](const Line& line) {
    ++linesRead_;
    progress_.step();
    const bool breakLine = line.Type() == lineBreak;
    hasBreakLines_ = hasBreakLines_ || breakLine;
    if (!isLong(line)) {
      ++fewPoints_;
    } else if (!breakLine) {
      write(line);
      ++linesWritten_;
    }
  });
}

void SampleWalk::breakLines(const TextOutput& out, const LineWriter& write) {
  eachLine(out, [&](const Line& line) {
    if (line.Type() != lineBreak || !isLong(line)) return;
    write(line);
    ++linesWritten_;
  });
}

}  // namespace kaldex
