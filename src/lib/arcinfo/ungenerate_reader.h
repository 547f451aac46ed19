#ifndef KALDEX_ARCINFO_UNGENERATE_READER_H
#define KALDEX_ARCINFO_UNGENERATE_READER_H

#include "kaldex/arcinfo.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// What the imports of ungenerate files have in common. A step that fails has told the user why, unless the
/// reason is the user's wish to stop.
class IEArcInfo::Reader {
 protected:
  Reader(IEArcInfo& handler, SProjection* target, int bytesPerRecord)
      : handler_(handler),
        transfer_(handler.projection, target, handler.units),
        factor_(handler.Units2Meter()),
        progress_(handler.progressMaximum(bytesPerRecord)) {}
  ~Reader() = default;

  /// The next line into the handler's; at the end of the file the user is told that it came too early.
  bool nextLine();
  bool step();
  /// Tell the user of the handler's line; false.
  bool malformed();
  bool endOfFile();
  /// Behind the "END" that closes the file: 1. What follows it is left to the job report.
  int finish();

  IEArcInfo& handler_;
  kaldex::CoordinateTransfer transfer_;
  double factor_;
  kaldex::ProgressScope progress_;
};

}  // namespace kaldex_v1

#endif
