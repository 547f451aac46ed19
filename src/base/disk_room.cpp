#include "base/disk_room.h"

#include <sys/statvfs.h>

#include <QFile>
#include <cstdint>

namespace kaldex {

namespace {

// What was to be written next needs not be as small as a block of the file system: texts are written by the
// buffer, and what a failed write left of its file may be gone already.
constexpr std::uint64_t kLittle = 64 * 1024;

}  // namespace

bool isDiskFull(const QString& folder) {
  struct statvfs status {};
  if (::statvfs(QFile::encodeName(folder).constData(), &status) != 0) return false;
  // File systems that make inodes as they are needed tell none.
  const bool noFiles = status.f_files != 0 && status.f_favail == 0;
  return noFiles || std::uint64_t{status.f_bavail} * status.f_frsize < kLittle;
}

}  // namespace kaldex
