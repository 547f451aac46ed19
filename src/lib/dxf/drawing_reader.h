#ifndef KALDEX_DXF_DRAWING_READER_H
#define KALDEX_DXF_DRAWING_READER_H

#include <QByteArray>

#include "lib/dxf/group_scanner.h"

namespace kaldex {

// Walks a drawing pair by pair and knows in which section it is. The file is its caller's.
class DrawingReader {
 public:
  enum Section : char {
    header = 'H',
    tables = 'T',
    blocks = 'B',
    entities = 'E',
    fileEnd = 'F',
    other = 'I',
  };

  // At the start of a file.
  void restart();

  // The next pair; false at the end of the file.
  bool next(FILE* file);
  int code() const { return scanner_.code(); }
  std::string_view value() const { return scanner_.value(); }
  bool is(int code, std::string_view value) const { return this->code() == code && this->value() == value; }
  bool isEndOfDrawing() const { return is(GroupCode::start, "EOF"); }

  // The next pair that stands in no block, sections being followed.
  bool nextOutsideBlocks(FILE* file);
  // Go on to the header of a section, a bare entity or the pair "EOF"; false at the end of the file. Inside
  // of blocks there are no bare entities.
  bool nextSection(FILE* file);
  // Go on to that section: true. False when the drawing ends, or when entities begin, of another section or
  // of none: the first one is the pair at hand then, and `ended()` tells which it was.
  bool searchSection(FILE* file, Section wanted);
  // Whether the file has ended.
  bool ended() const { return ended_; }

  // In the section of entities, in a drawing that has had no section yet, or behind a bare entity.
  bool mayHoldEntities() const { return section_ == entities || !sawSection_ || bare_; }
  Section section() const { return section_; }
  void leaveSection() { section_ = other; }
  void enterEntities() { section_ = entities; }
  long lines() const { return scanner_.lines(); }
  const GroupScanner& scanner() const { return scanner_; }

  // What the header tells, as far as it has been read.
  const QByteArray& codePage() const { return codePage_; }
  const QByteArray& version() const { return version_; }
  int unitsCode() const { return unitsCode_; }

 private:
  bool takePair();
  bool takeName();
  void takeVariable();

  GroupScanner scanner_;
  Section section_ = other;
  bool ended_ = false;
  bool afterOpening_ = false;  // the pair before was "SECTION"
  bool opened_ = false;        // in a section that was opened by that word: names in it open none
  bool inBlocks_ = false;
  bool sawSection_ = false;
  bool bare_ = false;  // entities that no section holds have begun
  QByteArray variable_;
  QByteArray codePage_;
  QByteArray version_;
  int unitsCode_ = 0;
};

// Whether entities of that name begin a drawing without sections.
bool isBareEntity(std::string_view name);

}  // namespace kaldex

#endif
