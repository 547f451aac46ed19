#ifndef KALDEX_DXF_DRAWING_EXPORT_H
#define KALDEX_DXF_DRAWING_EXPORT_H

#include <vector>

#include "base/text_output.h"
#include "kaldex/dxf.h"
#include "kaldex/job_report.h"
#include "kaldex/model/line.h"
#include "kaldex/model/report.h"
#include "lib/ascii/coordinate_writer.h"
#include "lib/dxf/drawing_output.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// What every export of a drawing has around its entities. One export an object; the handler's file must be
/// open. Write failures stick and are told at the end.
class IEDXF::DrawingExport {
 protected:
  /// Decimals of the kinds of entities, in the plane; those of degrees and seconds are the same for all.
  static constexpr int kPlaneDecimals = 3;
  static constexpr int kLabelDecimals = 6;

  explicit DrawingExport(IEDXF& handler, int planeDecimals = kPlaneDecimals);
  ~DrawingExport() = default;

  void begin(short layers = 1) { out_.header(handler_.infoLayer, handler_.coordFormat, layers); }
  /// End the drawing and close the file: 1, or 0 after a cancellation or a write that failed.
  int finish();
  bool wantsMore() const { return text_.ok() && !SGError->cancelled(); }

  /// Plane coordinates become the numbers that the form of the export prints.
  void convert(double* xy, std::size_t count) { coordinates_.convert(xy, count); }
  void writePolyline(const Line& line, const char* suffix);
  void writePoint(const Point& place);
  void writeText(const Point& place, const QString& string, const kaldex::DrawingOutput::TextLook& look);

  IEDXF& handler_;
  kaldex::TextOutput text_;
  kaldex::DrawingOutput out_;

 private:
  void report() const;
  void noteForm(JobReport& job) const;

  int planeDecimals_;
  kaldex::CoordinateWriter coordinates_;
  std::vector<double> converted_;
};

}  // namespace kaldex_v1

namespace kaldex {

// Into the current job report, if there is one and anything to count.
void reportRead(const char* kind, long long count);
void reportWritten(const char* kind, long long count);
void reportLeftOut(const char* reason, long long count);
void noteEmptyTexts(long long count);

}  // namespace kaldex

#endif
