#include "lib/dxf/entity_import.h"

#include <QObject>
#include <cmath>

#include "base/number_text.h"
#include "kaldex/job_report.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

namespace {

using kaldex::GroupCode;

constexpr int kMostNotes = 30;

// Codes at which an entity has to know its layer: those of its geometry.
bool needsLayer(int code) {
  return (code >= GroupCode::x && code < 60) || (code >= GroupCode::flags && code < 80);
}

// Whose coordinates are those of the entity's own plane, and not of the world.
bool liesInOwnPlane(kaldex::EntityKind kind) {
  using kaldex::EntityKind;
  return kind == EntityKind::polyline || kind == EntityKind::arc || kind == EntityKind::circle ||
         kind == EntityKind::text;
}

}  // namespace

IEDXF::EntityImport::EntityImport(IEDXF& handler, SProjection* target)
    : handler_(handler),
      reader_(*handler.reader_),
      transfer_(handler.projection, target, handler.units),
      factor_(handler.Units2Meter()),
      transforms_(!handler.transform.isIdentity()),
      names_(handler.chosenNames()),
      layers_(names_, handler.encoding_.toLatin1(), reader_) {}

IEDXF::EntityImport::~EntityImport() {
  report();
}

int IEDXF::EntityImport::run() {
  constexpr int bytesPerPair = 12;
  kaldex::ProgressScope progress(handler_.progressMaximum(bytesPerPair));
  if (!findEntities()) return handler_.badLine();
  for (;;) {
    progress.step();
    if (progress.cancelled()) return 0;
    const Step step = takePair();
    if (step == Step::failed) return 0;
    if (step == Step::end) {
      handler_.FileClose();
      return finish();
    }
    if (!handler_.next()) return handler_.badLine();
  }
}

// Without sections the first entity is the pair at hand already.
bool IEDXF::EntityImport::findEntities() {
  const bool found = reader_.searchSection(handler_.file, kaldex::DrawingReader::entities);
  return found ? handler_.next() : !reader_.ended();
}

IEDXF::EntityImport::Step IEDXF::EntityImport::takePair() {
  const int code = reader_.code();
  if (betweenSections_) return takeAfterSection();
  if (code == GroupCode::start) return startEntity();
  if (code == GroupCode::layer) {
    takeLayer(reader_.value());
    return Step::goOn;
  }
  // Also what stands behind the coordinates, with which an entity may be complete.
  if (remarks_.isOpen()) remarks_.take(code, reader_.value());
  if (kind_ == Kind::none) return Step::goOn;
  // A drawing's entity without a layer is in layer 0.
  if (!layerKnown_ && needsLayer(code)) takeLayer(kaldex::kDefaultLayer);
  return isActive() ? take(code) : Step::goOn;
}

IEDXF::EntityImport::Step IEDXF::EntityImport::startEntity() {
  const std::string_view name = reader_.value();
  notTaken_.end();
  remarks_.end();
  if (kind_ != Kind::none && !finishEntity()) return Step::failed;
  kind_ = Kind::none;
  if (name == "EOF") return Step::end;
  if (name == "SEQEND") return finishSequence() ? Step::goOn : Step::failed;
  if (name == "ENDSEC" || name == "SECTION") {
    endSection();
    return Step::goOn;
  }
  const Kind next = kaldex::entityKind(name);
  if (next == Kind::none || !takes(next)) {
    if (!kaldex::isPartOfStructure(name)) notTaken_.begin(name);
    return Step::goOn;
  }
  const bool isInsert = next == Kind::point && name == "INSERT";
  if (isInsert) ++inserts_;
  remarks_.begin(next, isInsert || liesInOwnPlane(next));
  kind_ = next;
  // The vertices of a polyline may leave their layer out: it is the polyline's.
  layerKnown_ = next == Kind::vertex;
  begin(next);
  return Step::goOn;
}

// Other sections hold blank lines that mean something.
void IEDXF::EntityImport::endSection() {
  betweenSections_ = true;
  afterOpening_ = reader_.value() == "SECTION";
  reader_.leaveSection();
}

IEDXF::EntityImport::Step IEDXF::EntityImport::takeAfterSection() {
  if (reader_.isEndOfDrawing()) return Step::end;
  const bool opens = afterOpening_ && reader_.is(GroupCode::name, "ENTITIES");
  afterOpening_ = reader_.is(GroupCode::start, "SECTION");
  if (opens) {
    betweenSections_ = false;
    reader_.enterEntities();
  }
  return Step::goOn;
}

void IEDXF::EntityImport::takeLayer(std::string_view raw) {
  const bool chosen = layers_.selection().takes(raw);
  if (notTaken_.isOpen()) {
    if (chosen) {
      notTaken_.layer(layers_.selection().name(raw));
    } else {
      notTaken_.drop();
      ++otherLayers_;
    }
  }
  if (kind_ == Kind::none) return;
  if (!chosen && !layerKnown_) ++otherLayers_;
  layerKnown_ = true;
  remarks_.choose(chosen);
  holdLayer(raw, chosen);
  enter(chosen);
}

void IEDXF::EntityImport::holdLayer(std::string_view raw, bool chosen) {
  if (raw == heldLayer_) return;
  heldLayer_ = raw;
  // Looking for a layer in the list ends with the one that is looked for, or with the last.
  if (chosen) {
    handler_.holdLayer(heldLayer_.c_str());
  } else if (handler_.layerList.Size() > 0) {
    handler_.holdLayer(names_.last().toLatin1().constData());
  }
}

double IEDXF::EntityImport::real() {
  std::size_t used = 0;
  const double number = kaldex::textToReal(reader_.value(), &used);
  if ((used != reader_.value().size() || !std::isfinite(number)) && ++badNumbers_ == 1)
    firstBadNumber_ = reader_.lines();
  return number;
}

int IEDXF::EntityImport::integer() const {
  return static_cast<int>(kaldex::textToInteger(reader_.value()));
}

bool IEDXF::EntityImport::place(double* xy, std::size_t count) const {
  for (std::size_t i = 0; i < 2 * count; ++i) xy[i] *= factor_;
  if (transforms_) {
    for (std::size_t i = 0; i < count; ++i) {
      Point point(xy[2 * i], xy[2 * i + 1]);
      handler_.TransfDxf(point);
      xy[2 * i] = point.x;
      xy[2 * i + 1] = point.y;
    }
  }
  return transfer_.isIdentity() || transfer_.apply(xy, count);
}

// As the drawing means it, if it is of the drawing.
QString IEDXF::EntityImport::heldLayerName() {
  const char* const layer = handler_.IEDlayer.get();
  if (layer == nullptr) return QString();
  return heldLayer_ == layer ? layers_.selection().name(heldLayer_) : QString::fromLatin1(layer);
}

int IEDXF::EntityImport::emptyFile(const char* what) {
  return handler_.inconsistent(
      QStringLiteral("%1 - %2 vazio %3").arg(handler_.dataFile, QString::fromLatin1(what), heldLayerName()));
}

// The contract has no message for it.
IEDXF::EntityImport::Step IEDXF::EntityImport::refused() {
  if (JobReport* const job = JobReport::current())
    job->note(QObject::tr("O plano recusou a entidade que está na linha %1, e a importação parou nela.")
                  .arg(reader_.lines()));
  return Step::failed;
}

void IEDXF::EntityImport::report() {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (layers_.isMade()) job->encoding = {layers_.text().encoding(), layers_.text().reason()};
  const long long notTaken = notTaken_.total(handler_.untold_);
  if (notTaken > 0) job->countLeftOut("unsupported", notTaken);
  const QStringList words = notTaken_.words(handler_.untold_);
  for (const QString& text : words.mid(0, kMostNotes)) job->note(text);
  if (words.size() > kMostNotes)
    job->note(QObject::tr("Não lidos: mais %1 tipos de entidade").arg(words.size() - kMostNotes));
  if (otherLayers_ > 0)
    job->note(QObject::tr("Entidades de outros planos do desenho, não pedidos: %1").arg(otherLayers_));
  if (inserts_ > 0)
    job->note(QObject::tr("Blocos lidos só como o ponto em que estão inseridos: %1").arg(inserts_));
  remarks_.tell();
  reportReading();
}

void IEDXF::EntityImport::reportReading() const {
  JobReport& job = *JobReport::current();
  const kaldex::GroupScanner& scanner = reader_.scanner();
  if (scanner.cutLines() > 0)
    job.note(QObject::tr("Linhas de mais de 1023 caracteres, lidas só até aí: %1").arg(scanner.cutLines()));
  if (scanner.blankValues() > 0)
    job.note(
        QObject::tr("Valores em branco em cujo lugar se tomou a linha seguinte: %1, o primeiro na linha %2")
            .arg(scanner.blankValues())
            .arg(scanner.firstBlankValue()));
  if (badNumbers_ > 0)
    job.note(QObject::tr("Valores que não são por inteiro números finitos, lidos só até onde o são: %1, o "
                         "primeiro na linha %2")
                 .arg(badNumbers_)
                 .arg(firstBadNumber_));
  if (transforms_ && (handler_.units == 4 || handler_.units == 5))
    job.note(
        QObject::tr("Coordenadas em ângulos não se movem, giram nem escalam: o desenho ficou onde estava."));
  if (!layers_.isMade()) return;
  const kaldex::DrawingText& text = layers_.text();
  if (!text.unknownPage().isEmpty())
    job.note(QObject::tr("A codificação indicada não é conhecida: %1").arg(text.unknownPage()));
  if (text.undecodable() > 0)
    job.note(QObject::tr("Nomes e textos com bytes que nada significam na codificação %1: %2")
                 .arg(text.encoding())
                 .arg(text.undecodable()));
}

}  // namespace kaldex_v1
