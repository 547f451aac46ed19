#include "lib/dxf/entity_remarks.h"

#include <QObject>
#include <QString>

#include "base/number_text.h"
#include "kaldex/job_report.h"
#include "lib/dxf/group_scanner.h"

namespace kaldex {

void EntityRemarks::begin(EntityKind kind, bool inOwnPlane) {
  open_ = true;
  vertex_ = kind == EntityKind::vertex;
  inOwnPlane_ = inOwnPlane;
  if (!vertex_) chosen_ = false;
  paper_ = tilted_ = bulged_ = false;
}

void EntityRemarks::take(int code, std::string_view value) {
  constexpr double kUpright = 1.0 - 1e-9;
  switch (code) {
    case GroupCode::bulge:
      bulged_ = vertex_ && textToReal(value) != 0.0;
      break;
    case GroupCode::paperSpace:
      paper_ = !vertex_ && textToInteger(value) != 0;
      break;
    case GroupCode::normalZ:
      tilted_ = inOwnPlane_ && textToReal(value) < kUpright;
      break;
    default:
      break;
  }
}

void EntityRemarks::end() {
  if (!open_) return;
  open_ = false;
  if (!chosen_) return;
  papers_ += paper_ ? 1 : 0;
  tilts_ += tilted_ ? 1 : 0;
  bulges_ += bulged_ ? 1 : 0;
}

void EntityRemarks::tell() const {
  JobReport* const job = JobReport::current();
  if (job == nullptr) return;
  if (papers_ > 0)
    job->note(QObject::tr("Entidades do espaço do papel, lidas como as outras: %1").arg(papers_));
  if (tilts_ > 0)
    job->note(
        QObject::tr("Entidades num plano inclinado ou espelhado (extrusão), cujas coordenadas foram lidas "
                    "como estão: %1")
            .arg(tilts_));
  if (bulges_ > 0) job->note(QObject::tr("Trechos curvos de polilinhas, lidos como retos: %1").arg(bulges_));
}

}  // namespace kaldex
