#include "lib/arcinfo/ungenerate_reader.h"

inline namespace kaldex_v1 {

bool IEArcInfo::Reader::nextLine() {
  handler_.clearLine();
  return handler_.readLine() != 0 ? step() : endOfFile();
}

bool IEArcInfo::Reader::step() {
  progress_.step();
  return !progress_.cancelled();
}

bool IEArcInfo::Reader::malformed() {
  handler_.inconsistent(handler_.line);
  return false;
}

bool IEArcInfo::Reader::endOfFile() {
  handler_.inconsistent("END ???");
  return false;
}

}  // namespace kaldex_v1
