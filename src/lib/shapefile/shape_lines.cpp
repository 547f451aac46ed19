#include <QObject>
#include <new>

#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

IEShp::Import::Import(IEShp& handler, ShapeSource& shapes, Vector& vector, kaldex::ShapeTally& tally)
    : handler_(handler), shapes_(shapes), vector_(vector), tally_(tally) {}

IEShp::Import::~Import() = default;

void IEShp::Import::beginObject() {
  if (objects != nullptr) objects->begin(shapes_.record());
}

void IEShp::Import::endObject() {
  if (objects != nullptr && !objects->end()) ++tally_.withoutGeometry;
}

std::unique_ptr<Line> IEShp::Import::newLine(const double* xy, int count) {
  try {
    auto line = std::make_unique<Line>();
    line->Type(linePlain);
    line->assign(xy, count);
    return line;
  } catch (const std::bad_alloc&) {
    outOfMemory("plin = new Line");
    throw kaldex::ImportStopped{};
  }
}

std::unique_ptr<Line> IEShp::Import::lineOf(int part) {
  ++tally_.read;
  const double* xy = shapes_.xy() + 2 * shapes_.partStart(part);
  const int count = shapes_.partSize(part);
  return lineIsDegenerate(xy, count) ? nullptr : newLine(xy, count);
}

bool IEShp::Import::lineIsDegenerate(const double* xy, int count) {
  if (count < 2) {
    ++tally_.fewPoints;
    return true;
  }
  const bool withoutLength = count == 2 && xy[0] == xy[2] && xy[1] == xy[3];
  if (withoutLength) ++tally_.degenerate;
  return withoutLength;
}

Line* IEShp::Import::insert(std::unique_ptr<Line> line) {
  if (vector_.Insert(*line, 1) == 0) {
    ++tally_.refused;
    return nullptr;
  }
  ++tally_.lines;
  return line.release();
}

void IEShp::Import::giveBackChanged(Line* line) {
  if (line->state != stateNew) line->state = stateChanged;
  IEShp::giveBack(vector_, line);
}

void IEShp::Import::tellOutside(bool anyImported, const QString& ignored) {
  if (tally_.outside == 0) return;
  if (anyImported) {
    show(QObject::tr("Existem dados fora da área do projeto que não foram importados, ") + ignored);
  } else {
    show(QObject::tr("TODOS os dados FORA do projeto, NENHUM dado importado -") +
         QObject::tr(" VERIFICAR BOX ou PROJEçâO ou Unidade importação (m/km/graus/..."));
  }
}

void IEShp::LineImport::run() {
  while (shapes_.next()) {
    beginObject();
    for (int part = 0; part < shapes_.partCount(); ++part) takePart(part);
    endObject();
  }
}

void IEShp::LineImport::takePart(int part) {
  std::unique_ptr<Line> made = lineOf(part);
  if (made == nullptr) return;
  Line* line = insert(std::move(made));
  if (line == nullptr) return;
  if (objects != nullptr) objects->take(*line);
  line->classId = 0;
  const double* xy = line->coordinates();
  GetMiddlePoint(Point(xy[0], xy[1]), Point(xy[2], xy[3]), line->labelPoint, 0.0f);
  giveBackChanged(line);
}

}  // namespace kaldex_v1
