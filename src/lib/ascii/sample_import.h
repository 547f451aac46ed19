#ifndef KALDEX_ASCII_SAMPLE_IMPORT_H
#define KALDEX_ASCII_SAMPLE_IMPORT_H

#include <memory>
#include <vector>

#include "kaldex/model/vector.h"
#include "lib/ascii/section_reader.h"

inline namespace kaldex_v1 {

/// Reads a section of blocks of samples: "POINT3D" with points, "LINE3D" and "LINE3D-MASTER" with a height
/// and the points of a line. Points are always tested against the vector's box; in a section of samples the
/// points of lines are too, and the user is told of what lies outside.
class IEAsc::SampleImport : private IEAsc::SectionReader {
 public:
  enum class Section { contours, samples };

  SampleImport(IEAsc& handler, Vector& vector, SProjection* target, Section section);
  ~SampleImport();

  /// Whether the vector can take samples; tells the user if not.
  static bool accepts(const Vector& vector);
  int run();

 private:
  bool readBlock(kaldex::ProgressScope& progress);

  bool readLineBlock(char type, kaldex::ProgressScope& progress);
  bool readHeight(float& height);
  bool readLinePoints(bool& empty, kaldex::ProgressScope& progress);
  void dropOutside();
  void insertLine(char type, float height);

  bool readPointBlock(kaldex::ProgressScope& progress);
  bool readPlanePoints(kaldex::ProgressScope& progress);
  bool readGeographicPoints(kaldex::ProgressScope& progress);
  bool insertPoint(const double* xy, float z);
  bool insertPending();

  int finish();
  void tellOutside() const;

  Vector& vector_;
  Section section_;
  Box box_;
  std::vector<double> pendingXy_;  ///< plane points that wait for being carried to the target all at once
  std::vector<float> pendingZ_;
  long long inside_ = 0;  ///< points of either kind of block
  long long outside_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long linesRefused_ = 0;
  long long pointsRead_ = 0;
  long long pointsWritten_ = 0;
};

}  // namespace kaldex_v1

#endif
