#include "kaldex/model/report.h"
#include "lib/shapefile/shape_import.h"

inline namespace kaldex_v1 {

IEShp::ShapeSource::ShapeSource(IEShp& handler, kaldex::ShapeReader& shapes, SProjection* target,
                                kaldex::ShapeTally& tally)
    : shapes_(shapes),
      tally_(tally),
      factor_(handler.Units2Meter()),
      transfer_(handler.projection, target, handler.units) {}

bool IEShp::ShapeSource::next() {
  using Record = kaldex::ShapeReader::Record;
  while (true) {
    if (stepDue_) SGError->ProgressStep();
    stepDue_ = false;
    if (cancelled()) throw kaldex::ImportStopped{kaldex::ImportStopped::Tell::nothing};
    if (record_ + 1 >= shapes_.count()) return false;
    ++record_;
    const Record record = shapes_.read(record_);
    if (record == Record::null) {
      ++tally_.nullShapes;
      continue;
    }
    stepDue_ = true;
    if (record == Record::shape) break;
    ++tally_.damaged;
  }
  convert();
  return true;
}

void IEShp::ShapeSource::convert() {
  const std::size_t count = at(shapes_.vertexCount());
  const double* x = shapes_.x();
  const double* y = shapes_.y();
  xy_.resize(2 * count);
  double* out = xy_.data();
  for (std::size_t i = 0; i < count; ++i) {
    out[2 * i] = x[i] * factor_;
    out[2 * i + 1] = y[i] * factor_;
  }
  if (!transfer_.isIdentity()) transfer_.apply(out, count);
}

}  // namespace kaldex_v1
