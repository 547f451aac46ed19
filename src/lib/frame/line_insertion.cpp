#include "lib/frame/line_insertion.h"

#include <QObject>

#include "kaldex/job_report.h"
#include "lib/frame/give_back.h"

namespace kaldex {

LineInsertion::~LineInsertion() {
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

bool LineInsertion::take(std::unique_ptr<Line> line, const std::vector<double>& xy, bool placed) {
  ++read_;
  if (!isWorthInserting(xy, placed)) return true;
  line->assign(xy.data(), static_cast<int>(xy.size() / 2));
  if (vector_.Insert(*line, 1) == 0) {
    ++refused_;
    return false;
  }
  ++written_;
  // The line is the vector's now; giving it back at once keeps memory flat, however long the file is.
  giveBack(vector_, line.release());
  return true;
}

bool LineInsertion::isWorthInserting(const std::vector<double>& xy, bool placed) {
  if (xy.size() < 4) {
    ++fewPoints_;
  } else if (!placed) {
    ++refused_;
    unplaced_ = true;
  } else if (xy.size() == 4 && xy[0] == xy[2] && xy[1] == xy[3]) {
    ++degenerate_;
  } else {
    return true;
  }
  return false;
}

}  // namespace kaldex
