// Micro-benchmarks of what every import and export spends its time on: scanning and printing numbers, and the
// vector store. Each stands beside what the C library (or nothing but the copy) costs, so that a change shows
// where it belongs.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "kaldex/model/projection.h"
#include "kaldex/model/vector.h"

namespace {

std::vector<std::string> coordinateRecords() {
  std::vector<std::string> records;
  for (int i = 0; i < 1000; ++i) {
    std::string record;
    kaldex::appendFixed(record, 500000.0 + i * 17.123457, 6);
    record += "     ";
    kaldex::appendFixed(record, 7400000.0 + i * 13.765433, 6);
    records.push_back(record);
  }
  return records;
}

void scanRecords(benchmark::State& state) {
  const std::vector<std::string> records = coordinateRecords();
  double x = 0, y = 0;
  for (auto _ : state) {
    for (const std::string& record : records) benchmark::DoNotOptimize(kaldex::scanReals(record, &x, &y));
  }
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(scanRecords);

void scanRecordsBySscanf(benchmark::State& state) {
  const std::vector<std::string> records = coordinateRecords();
  double x = 0, y = 0;
  for (auto _ : state) {
    for (const std::string& record : records)
      benchmark::DoNotOptimize(std::sscanf(record.c_str(), "%lf %lf", &x, &y));
  }
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(scanRecordsBySscanf);

void printCoordinates(benchmark::State& state) {
  char text[kaldex::kNumberTextCapacity];
  double value = 7400000.123457;
  for (auto _ : state) {
    benchmark::DoNotOptimize(kaldex::appendFixed(text, value, 6));
    value += 1.765433;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(printCoordinates);

void printCoordinatesByPrintf(benchmark::State& state) {
  char text[512];
  double value = 7400000.123457;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%.6f", value));
    value += 1.765433;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(printCoordinatesByPrintf);

constexpr int linesOfALoad = 20000;
constexpr int verticesOfALine = 20;

void fillVector(Vector& vector) {
  double xy[2 * verticesOfALine];
  for (int i = 0; i < linesOfALoad; ++i) {
    for (int k = 0; k < verticesOfALine; ++k) {
      xy[2 * k] = (i % 150) * 1000.0 + k * 10.5;
      xy[2 * k + 1] = (i / 150) * 1000.0 + k * 13.25;
    }
    auto* line = new Line;
    line->assign(xy, verticesOfALine);
    if (vector.Insert(*line, 1) == 0) std::abort();
    delete line;
  }
}

/// 20,000 lines of 20 vertices into a new vector, spatial index and commit included.
void storeLines(benchmark::State& state) {
  SProjection projection;
  for (auto _ : state) {
    QTemporaryDir directory;
    Vector vector;
    vector.Init(&projection, Box(0, 0, 1e6, 1e6), vectorLines, 4, directory.path(),
                QStringLiteral("bench.gpkg"));
    fillVector(vector);
    vector.flush();
  }
  state.SetItemsProcessed(state.iterations() * linesOfALoad);
}
BENCHMARK(storeLines)->Unit(benchmark::kMillisecond);

/// The same lines walked and read.
void walkLines(benchmark::State& state) {
  SProjection projection;
  QTemporaryDir directory;
  Vector vector;
  vector.Init(&projection, Box(0, 0, 1e6, 1e6), vectorLines, 4, directory.path(),
              QStringLiteral("bench.gpkg"));
  fillVector(vector);
  vector.flush();
  for (auto _ : state) {
    double sum = 0;
    for (Line* line = vector.FirstLine(); line != nullptr; line = vector.NextLine()) {
      sum += line->coordinates()[0];
      delete line;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * linesOfALoad);
}
BENCHMARK(walkLines)->Unit(benchmark::kMillisecond);

/// Lines by box, as the removal of duplicated inner polygons asks for them.
void searchLines(benchmark::State& state) {
  SProjection projection;
  QTemporaryDir directory;
  Vector vector;
  vector.Init(&projection, Box(0, 0, 1e6, 1e6), vectorLines, 4, directory.path(),
              QStringLiteral("bench.gpkg"));
  fillVector(vector);
  vector.flush();
  int i = 0;
  for (auto _ : state) {
    LineList list;
    const double x = (i % 150) * 1000.0, y = (i / 150 % 100) * 1000.0;
    benchmark::DoNotOptimize(vector.Lines(Box(x, y, x + 300, y + 300), list));
    for (Line* line : list) delete line;
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(searchLines);

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
