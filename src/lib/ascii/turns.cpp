#include <QFile>
#include <QObject>
#include <memory>
#include <string>

#include "base/tracer.h"
#include "kaldex/job_report.h"
#include "kaldex/model/catalog.h"
#include "kaldex/model/vector.h"
#include "lib/ascii/section_writer.h"
#include "lib/ascii/turn_record.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {

constexpr int kPlaneDecimals = 6;
constexpr std::size_t kLongestPoint = 1023;

std::string turnFile(const InfoLayer& layer) {
  return QFile::encodeName(layer.directory + QLatin1Char('/') + layer.fileName + QStringLiteral(".turn"))
      .toStdString();
}

}  // namespace

/// Writes the turns of a network layer. The handler's file must be open.
class IEAsc::TurnExport {
 public:
  TurnExport(IEAsc& handler, Vector& vector)
      : handler_(handler), vector_(vector), writer_(handler), turns_(turnFile(*handler.infoLayer)) {}
  ~TurnExport();

  int run();

 private:
  void writeHead();
  bool endsOf(int lineId, kaldex::LineEnds& ends);
  void write(const Restriction& turn);
  void writePoint(const Point& point);

  IEAsc& handler_;
  Vector& vector_;
  SectionWriter writer_;
  RestrictionList turns_;
  long long written_ = 0;
  long long lineless_ = 0;
};

IEAsc::TurnExport::~TurnExport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (written_ + lineless_ > 0) job->countRead("turns", written_ + lineless_);
  if (written_ > 0) job->countWritten("turns", written_);
  if (lineless_ > 0) job->countLeftOut("no_geometry", lineless_);
}

int IEAsc::TurnExport::run() {
  kaldex::ProgressScope progress(kaldex::progressSteps(turns_.Size()));
  writeHead();
  for (const Restriction* const turn : turns_) {
    if (!writer_.ok() || progress.cancelled()) break;
    progress.step();
    write(*turn);
  }
  if (progress.cancelled()) return writer_.finish(SectionWriter::End::none);
  writer_.out().append("END_TURNS\n");
  return writer_.finish(SectionWriter::End::own);
}

void IEAsc::TurnExport::writeHead() {
  // The sections before don't end their last line, and this one doesn't begin with a line end.
  if (handler_.fileSize() > 0) writer_.out().append('\n');
  writer_.out().append("TURNS\nINFO\n");
  writer_.text(QObject::tr("// Restrições de direção"));
  writer_.out().append('\n');
  writer_.header();
  writer_.endHeader();
  writer_.out().append('\n');
}

bool IEAsc::TurnExport::endsOf(int lineId, kaldex::LineEnds& ends) {
  Line* const line = vector_.GetLine(lineId);
  if (line == nullptr) return false;
  const bool hasEnds = line->Size() > 0;
  if (hasEnds) {
    ends.first = *line->First();
    ends.last = *line->Last();
  }
  giveBack(vector_, line);
  return hasEnds;
}

void IEAsc::TurnExport::write(const Restriction& turn) {
  kaldex::LineEnds from, to;
  if (!endsOf(turn.from, from) || !endsOf(turn.to, to)) {
    ++lineless_;
    return;
  }
  for (const Point& point : kaldex::turnPoints(from, to)) writePoint(point);
  writer_.out().append('\n');
  ++written_;
}

void IEAsc::TurnExport::writePoint(const Point& point) {
  double place[2] = {point.x, point.y};
  writer_.coordinateWriter().convert(place, 1);
  if (handler_.coordFormat == 1) {
    writer_.coordinateWriter().print(place, " ");
  } else {
    writer_.out().appendFixed(place[0], kPlaneDecimals);
    writer_.out().append(' ');
    writer_.out().appendFixed(place[1], kPlaneDecimals);
  }
  writer_.out().append(' ');
}

/// Reads a file of turns, and adds those between lines of the vector to the layer's.
class IEAsc::TurnImport {
 public:
  TurnImport(IEAsc& handler, Vector& vector)
      : handler_(handler),
        vector_(vector),
        transfer_(handler.projection, handler.projection, handler.units),
        turns_(turnFile(*handler.infoLayer)) {}
  ~TurnImport();

  int run();

 private:
  bool takeLine();
  bool readPoints(const std::array<std::string, 3>& texts, std::array<Point, 3>& points);
  int lineBetween(const Point& from, const Point& to);

  IEAsc& handler_;
  Vector& vector_;
  kaldex::CoordinateTransfer transfer_;
  RestrictionList turns_;
  long long read_ = 0;
  long long added_ = 0;
};

IEAsc::TurnImport::~TurnImport() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (read_ > 0) job->countRead("turns", read_);
  if (added_ > 0) job->countWritten("turns", added_);
  if (read_ > added_) job->countLeftOut("no_geometry", read_ - added_);
}

int IEAsc::TurnImport::run() {
  const int header = handler_.InfoSection(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  if (header == 0) return 0;
  constexpr int bytesPerRecord = 130;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerRecord));
  for (bool more = true; more;) {
    progress.step();
    if (progress.cancelled()) return 0;
    handler_.clearLine();
    more = handler_.readLine() != 0;
    // A last line without an end is one too.
    if (!takeLine()) return 0;
  }
  handler_.FileClose();
  return added_ > 0 ? turns_.Save() : 0;
}

bool IEAsc::TurnImport::takeLine() {
  std::array<std::string, 3> texts;
  if (!kaldex::parseTurn(handler_.lineText(), texts)) return true;
  ++read_;
  std::array<Point, 3> points;
  const QString record = QString::fromLatin1(handler_.line);
  if (!readPoints(texts, points)) {
    handler_.FileClose();
    handler_.notePlace();
    show(QObject::tr("Falha na leitura do arquivo %1.").arg(record));
    return false;
  }
  const int from = lineBetween(points[0], points[1]);
  const int to = from != 0 ? lineBetween(points[1], points[2]) : 0;
  if (to == 0) return true;
  turns_.Append(new Restriction(from, to));
  ++added_;
  return true;
}

bool IEAsc::TurnImport::readPoints(const std::array<std::string, 3>& texts, std::array<Point, 3>& points) {
  float height = 0.0f;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    handler_.setLine(texts[i].substr(0, kLongestPoint).c_str());
    const int read = handler_.readLatLong(transfer_, points[i], height);
    if (read == 0 && points[i] == Point(-1.0, -1.0)) return false;
  }
  return true;
}

int IEAsc::TurnImport::lineBetween(const Point& from, const Point& to) {
  Line* const line = vector_.FindLine(from, to);
  if (line == nullptr) return 0;
  const int id = line->id;
  giveBack(vector_, line);
  return id;
}

int IEAsc::ExportTurns(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ExportTurns");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (infoLayer == nullptr) return invalidArgument("infoLayer");
    return openFile("a+") ? TurnExport(*this, *vec).run() : 0;
  });
}

int IEAsc::ImportTurns(Vector* vec) {
  const Tracer tracer(__FILE__, __LINE__, "IEAsc::ImportTurns");
  return guarded([&] {
    if (vec == nullptr) return invalidArgument("vec");
    if (infoLayer == nullptr) return invalidArgument("infoLayer");
    return openFile("a+") ? TurnImport(*this, *vec).run() : 0;
  });
}

}  // namespace kaldex_v1
