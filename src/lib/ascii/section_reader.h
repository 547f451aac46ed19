#ifndef KALDEX_ASCII_SECTION_READER_H
#define KALDEX_ASCII_SECTION_READER_H

#include <vector>

#include "kaldex/ascii.h"
#include "lib/frame/coordinate_transfer.h"
#include "lib/frame/progress_scope.h"

inline namespace kaldex_v1 {

/// What the imports of sections with coordinates have in common: finding the section, its header, its words,
/// and lists of coordinates. A step that fails has told the user why, unless the reason is the user's wish to
/// stop.
class IEAsc::SectionReader {
 protected:
  SectionReader(IEAsc& handler, SProjection* target)
      : handler_(handler),
        transfer_(handler.projection, target, handler.units),
        factor_(handler.Units2Meter()) {}
  ~SectionReader() = default;

  /// Put the file behind the first word that begins with the keyword; false (and no word of it) when there is
  /// none.
  bool findSection(const char* keyword);

  enum class Word { record, sectionEnd, failed };
  /// The next word that the section has to look at, into the handler's line; passes over comments and
  /// headers. A header may hold a block of classes: `classColours` says what their colours are for, see
  /// IEAsc::InfoSection.
  Word nextWord(kaldex::ProgressScope& progress, unsigned* classColours = nullptr);

  /// The next line of the record that is being read.
  bool nextLine(kaldex::ProgressScope& progress);
  bool skipRestOfLine();
  bool atRecordEnd() const;
  /// Tell the user of the handler's line; false.
  bool malformed();

  /// Read the list of pairs that begins in the handler's line into `xy()`, up to its "END".
  bool readPlanePairs(kaldex::ProgressScope& progress);
  bool readGeographicPairs(kaldex::ProgressScope& progress);
  /// The pairs read last, in the target's plane.
  std::vector<double>& xy() { return xy_; }
  /// False when one of them has no place there.
  bool allPlaced() const { return allPlaced_; }

  IEAsc& handler_;
  kaldex::CoordinateTransfer transfer_;
  double factor_;

 private:
  std::vector<double> xy_;
  bool allPlaced_ = true;
};

}  // namespace kaldex_v1

#endif
