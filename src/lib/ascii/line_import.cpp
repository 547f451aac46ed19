#include <QObject>
#include <memory>
#include <new>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/record_text.h"
#include "lib/ascii/section_reader.h"

inline namespace kaldex_v1 {

/// Reads the first section of lines into a vector. What was inserted before a failure stays.
class IEAsc::LineImport : private IEAsc::SectionReader {
 public:
  LineImport(IEAsc& handler, Vector& vector, SProjection* target)
      : SectionReader(handler, target),
        vector_(vector),
        network_(layerModel(handler) == NETWORKMODEL),
        type_(layerModel(handler) == DIGITALMODEL ? lineBreak : linePlain) {}
  ~LineImport();

  /// Whether the vector can take lines in a layer of this model; tells the user if not.
  static bool accepts(const IEAsc& handler, const Vector& vector);
  int run();

 private:
  static short layerModel(const IEAsc& handler);

  bool readRecord(kaldex::ProgressScope& progress);
  bool readNetworkHead(Line& line, kaldex::ProgressScope& progress);
  bool isWorthInserting();
  bool insert(std::unique_ptr<Line> line);

  Vector& vector_;
  bool network_;
  char type_;
  long long read_ = 0;
  long long written_ = 0;
  long long fewPoints_ = 0;
  long long degenerate_ = 0;
  long long refused_ = 0;
  bool unplaced_ = false;
};

IEAsc::LineImport::~LineImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("lines", read_);
  if (written_ > 0) job->countWritten("lines", written_);
  if (fewPoints_ > 0) job->countLeftOut("few_points", fewPoints_);
  if (degenerate_ > 0) job->countLeftOut("degenerate", degenerate_);
  if (refused_ > 0) job->countLeftOut("refused", refused_);
  if (unplaced_) {
    job->note(QObject::tr("Linhas com coordenadas sem lugar na projeção de destino não foram importadas"));
  }
}

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
  ++read_;
  return !isWorthInserting() || insert(std::move(line));
}

bool IEAsc::LineImport::readNetworkHead(Line& line, kaldex::ProgressScope& progress) {
  kaldex::NetworkRecord record;
  if (!kaldex::parseNetworkRecord(handler_.line, record)) return malformed();
  line.impedancePositive = record.impedancePositive;
  line.impedanceNegative = record.impedanceNegative;
  line.demand = record.demand;
  return nextLine(progress);
}

bool IEAsc::LineImport::isWorthInserting() {
  const std::vector<double>& points = xy();
  if (points.size() < 4) {
    ++fewPoints_;
  } else if (!allPlaced()) {
    ++refused_;
    unplaced_ = true;
  } else if (points.size() == 4 && points[0] == points[2] && points[1] == points[3]) {
    ++degenerate_;
  } else {
    return true;
  }
  return false;
}

bool IEAsc::LineImport::insert(std::unique_ptr<Line> line) {
  line->assign(xy().data(), static_cast<int>(xy().size() / 2));
  if (vector_.Insert(*line, 1) == 0) {
    ++refused_;
    return false;
  }
  ++written_;
  // The line is the vector's now; giving it back at once keeps memory flat, however long the file is.
  giveBack(vector_, line.release());
  return true;
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
