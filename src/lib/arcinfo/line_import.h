#ifndef KALDEX_ARCINFO_LINE_IMPORT_H
#define KALDEX_ARCINFO_LINE_IMPORT_H

#include <vector>

#include "kaldex/model/vector.h"
#include "lib/arcinfo/ungenerate_reader.h"

inline namespace kaldex_v1 {

/// Reads a file of lines, with or without heights, into a vector. What was inserted before a failure stays.
class IEArcInfo::LineImport : private IEArcInfo::Reader {
 public:
  enum class Form { plane, heights };

  LineImport(IEArcInfo& handler, Vector& vector, SProjection* target, char type, Form form);
  ~LineImport();

  int run();

 private:
  static constexpr int kBytesPerRecord = 30;

  bool readRecord();
  bool skipIdentifierLine();
  bool readVertices();
  bool isWorthInserting();
  bool insert();

  Vector& vector_;
  char type_;
  Form form_;
  std::vector<double> xy_;
  float height_ = 0.0f;
  bool flat_ = true;
  long long read_ = 0;
  long long written_ = 0;
  long long fewPoints_ = 0;
  long long degenerate_ = 0;
  long long refused_ = 0;
  long long notFlat_ = 0;
  bool unplaced_ = false;
};

}  // namespace kaldex_v1

#endif
