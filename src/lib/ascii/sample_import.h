#ifndef KALDEX_ASCII_SAMPLE_IMPORT_H
#define KALDEX_ASCII_SAMPLE_IMPORT_H

#include <memory>
#include <vector>

#include "kaldex/model/vector.h"
#include "lib/ascii/section_reader.h"

inline namespace kaldex_v1 {

/// Reads a section of blocks of samples: "POINT3D" with points, "LINE3D" and "LINE3D-MASTER" with a height
/// and the points of a line. Points are always tested against the vector's box.
class IEAsc::SampleImport : private IEAsc::SectionReader {
 public:
  SampleImport(IEAsc& handler, Vector& vector, SProjection* target, const char* keyword);
  ~SampleImport();

  /// Whether the vector can take samples; tells the user if not.
  static bool accepts(const Vector& vector);
  int run();

 private:
  bool readBlock(kaldex::ProgressScope& progress);

  bool readLineBlock(char type, kaldex::ProgressScope& progress);
  bool readHeight(float& height);
  bool readLinePoints(bool& empty, kaldex::ProgressScope& progress);
  void insertLine(char type, float height);

  bool readPointBlock(kaldex::ProgressScope& progress);
  bool readPlanePoints(kaldex::ProgressScope& progress);
  bool readGeographicPoints(kaldex::ProgressScope& progress);
  bool insertPoint(const double* xy, float z);
  bool insertPending();

  int finish();

  Vector& vector_;
  const char* keyword_;
  Box box_;
  std::vector<double> pendingXy_;  ///< plane points that wait for being carried to the target all at once
  std::vector<float> pendingZ_;
  long long outside_ = 0;
  long long linesRead_ = 0;
  long long linesWritten_ = 0;
  long long linesRefused_ = 0;
  long long pointsRead_ = 0;
  long long pointsWritten_ = 0;
};

}  // namespace kaldex_v1

#endif
