#include <memory>
#include <new>

#include "base/tracer.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/record_text.h"
#include "lib/ascii/section_reader.h"
#include "lib/frame/line_insertion.h"

inline namespace kaldex_v1 {

/// Reads the first section of lines into a vector. What was inserted before a failure stays.
class IEAsc::LineImport : private IEAsc::SectionReader {
 public:
  LineImport(IEAsc& handler, Vector& vector, SProjection* target)
      : SectionReader(handler, target),
        lines_(vector),
        network_(layerModel(handler) == NETWORKMODEL),
        type_(layerModel(handler) == DIGITALMODEL ? lineBreak : linePlain) {}

  /// Whether the vector can take lines in a layer of this model; tells the user if not.
  static bool accepts(const IEAsc& handler, const Vector& vector);
  int run();

 private:
  static short layerModel(const IEAsc& handler);

  bool readRecord(kaldex::ProgressScope& progress);
  bool readNetworkHead(Line& line, kaldex::ProgressScope& progress);

  kaldex::LineInsertion lines_;
  bool network_;
  char type_;
};

short IEAsc::LineImport::layerModel(const IEAsc& handler) {
  return handler.infoLayer != nullptr ? handler.infoLayer->model() : short(0);
}

bool IEAsc::LineImport::accepts(const IEAsc& handler, const Vector& vector) {
  const bool numeric = layerModel(handler) == DIGITALMODEL;
  if (vector.representation() == (numeric ? vectorSamples : vectorLines)) return true;
  logicRestriction(numeric ? "Not a SAMPLE Vector" : "Not a LINE Vector");
  return false;
}

int IEAsc::LineImport::run() {
  if (!findSection(network_ ? "NETWORK" : "LINES")) return 0;
  constexpr int bytesPerRecord = 35;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  for (;;) {
    const Word word = nextWord(progress);
    if (word != Word::record) return word == Word::sectionEnd ? 1 : 0;
    if (!kaldex::startsCoordinates(handler_.line)) return handler_.inconsistent(handler_.line);
    if (!readRecord(progress)) return 0;
  }
}

bool IEAsc::LineImport::readRecord(kaldex::ProgressScope& progress) {
  std::unique_ptr<Line> line(new (std::nothrow) Line);
  if (line == nullptr) {
    outOfMemory("pLin = new Line");
    return false;
  }
  line->Type(type_);
  if (handler_.readLine() == 0) return false;
  if (network_ && !readNetworkHead(*line, progress)) return false;
  const bool plane = kaldex::startsLikeNumber(handler_.line);
  if (!(plane ? readPlanePairs(progress) : readGeographicPairs(progress))) return false;
  return lines_.take(std::move(line), xy(), allPlaced());
}

bool IEAsc::LineImport::readNetworkHead(Line& line, kaldex::ProgressScope& progress) {
  kaldex::NetworkRecord record;
  if (!kaldex::parseNetworkRecord(handler_.line, record)) return malformed();
  line.impedancePositive = record.impedancePositive;
  line.impedanceNegative = record.impedanceNegative;
  line.demand = record.demand;
  return nextLine(progress);
}

int IEAsc::ImportLines(Vector* vec, SProjection* target) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportLines");
  return guardedImport(vec, [&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (!LineImport::accepts(*this, *vec) || !openFile("r")) return 0;
    return LineImport(*this, *vec, target).run();
  });
}

}  // namespace kaldex_v1
