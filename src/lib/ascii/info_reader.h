#ifndef KALDEX_ASCII_INFO_READER_H
#define KALDEX_ASCII_INFO_READER_H

#include "kaldex/ascii.h"
#include "lib/ascii/grid_definition.h"

inline namespace kaldex_v1 {

/// Reads one header block; see IEAsc::InfoSection for what it fills.
class IEAsc::InfoReader {
 public:
  struct Targets {
    unsigned* linesOrMode;
    unsigned* columns;
    double* noData;
    Category* category;
    short* formatted;
    SFieldList* fields;
    short* keyColumn;
    short* nameColumn;
    double* x;
    double* y;
    float* resX;
    float* resY;
    double* classCount;
  };

  InfoReader(IEAsc& handler, const Targets& targets) : handler_(handler), targets_(targets) {}

  int run();

  /// The next line of a block into the handler's line; tells the user of a file that ends in it.
  static bool nextLine(IEAsc& handler);

 private:
  enum class Outcome { goOn, done, failed };

  bool openAtGrid();
  Outcome readKeyword();
  bool readSeparator();
  bool readGrid();
  bool readGeographicCorner(kaldex::GridDefinition& grid);
  void carryPlaneCorner(kaldex::GridDefinition& grid) const;
  void storeGrid(const kaldex::GridDefinition& grid) const;
  bool countClasses();
  Outcome readBlock();
  bool malformed();
  bool lineStarts(const char* keyword) const;

  IEAsc& handler_;
  Targets targets_;
};

}  // namespace kaldex_v1

#endif
