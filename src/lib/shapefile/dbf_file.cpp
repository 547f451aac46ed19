#include "lib/shapefile/dbf_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "base/number_text.h"

namespace kaldex {

namespace {

constexpr std::size_t kWindow = 128 * 1024;
// Language byte of the table header for ISO 8859-1.
constexpr const char* kLanguage = "LDID/87";

// One open file. Written bytes wait in a window [start_, start_ + used_) of the file.
class WindowedFile {
 public:
  explicit WindowedFile(int descriptor) : descriptor_(descriptor) {}
  ~WindowedFile() { ::close(descriptor_); }
  WindowedFile(const WindowedFile&) = delete;
  WindowedFile& operator=(const WindowedFile&) = delete;

  SAOffset write(const void* bytes, SAOffset size) {
    const bool continues = position_ >= start_ && position_ <= start_ + used_;
    if (!continues || position_ - start_ + size > kWindow) {
      flush();
      start_ = position_;
    }
    if (failed_) return 0;
    if (size > kWindow) return store(bytes, size, position_) ? advance(size) : 0;
    std::memcpy(window_ + (position_ - start_), bytes, size);
    used_ = std::max<SAOffset>(used_, position_ - start_ + size);
    return advance(size);
  }

  SAOffset read(void* bytes, SAOffset size) {
    flush();
    SAOffset got = 0;
    while (got < size) {
      const ssize_t count = ::pread(descriptor_, static_cast<char*>(bytes) + got, size - got,
                                    static_cast<off_t>(position_ + got));
      if (count <= 0) break;
      got += static_cast<SAOffset>(count);
    }
    return advance(got);
  }

  bool seek(SAOffset offset, int whence) {
    if (whence == SEEK_END) {
      struct stat status;
      flush();
      if (::fstat(descriptor_, &status) != 0) return false;
      offset += static_cast<SAOffset>(status.st_size);
    } else if (whence == SEEK_CUR) {
      offset += position_;
    }
    position_ = offset;
    return true;
  }

  SAOffset position() const { return position_; }
  bool ok() const { return !failed_; }
  void abandon() { failed_ = true; }

  bool* outcome = nullptr;  // where closing tells whether all was written; may be null

  bool flush() {
    if (used_ != 0 && !failed_) failed_ = !store(window_, used_, start_);
    start_ += used_;
    used_ = 0;
    return !failed_;
  }

 private:
  SAOffset advance(SAOffset size) {
    position_ += size;
    return size;
  }

  bool store(const void* bytes, SAOffset size, SAOffset at) {
    SAOffset done = 0;
    while (done < size) {
      const ssize_t count = ::pwrite(descriptor_, static_cast<const char*>(bytes) + done, size - done,
                                     static_cast<off_t>(at + done));
      if (count <= 0) break;
      done += static_cast<SAOffset>(count);
    }
    failed_ = failed_ || done != size;
    return !failed_;
  }

  int descriptor_;
  bool failed_ = false;
  SAOffset position_ = 0;
  SAOffset start_ = 0;
  SAOffset used_ = 0;
  char window_[kWindow];
};

WindowedFile* fileOf(SAFile file) {
  return reinterpret_cast<WindowedFile*>(file);
}

int openFlags(const char* access) {
  const bool update = std::strchr(access, '+') != nullptr;
  if (access[0] == 'w') return (update ? O_RDWR : O_WRONLY) | O_CREAT | O_TRUNC;
  return update ? O_RDWR : O_RDONLY;
}

SAFile openHook(const char* path, const char* access) {
  const int descriptor = ::open(path, openFlags(access) | O_CLOEXEC, 0666);
  if (descriptor < 0) return nullptr;
  WindowedFile* const file = new (std::nothrow) WindowedFile(descriptor);
  if (file == nullptr) ::close(descriptor);
  return reinterpret_cast<SAFile>(file);
}

// Counts of whole items, as stdio has them.
SAOffset readHook(void* bytes, SAOffset size, SAOffset count, SAFile file) {
  return size == 0 ? 0 : fileOf(file)->read(bytes, size * count) / size;
}

SAOffset writeHook(void* bytes, SAOffset size, SAOffset count, SAFile file) {
  return size == 0 ? 0 : fileOf(file)->write(bytes, size * count) / size;
}

SAOffset seekHook(SAFile file, SAOffset offset, int whence) {
  return fileOf(file)->seek(offset, whence) ? 0 : 1;
}

SAOffset tellHook(SAFile file) {
  return fileOf(file)->position();
}

int flushHook(SAFile file) {
  return fileOf(file)->flush() ? 0 : EOF;
}

int closeHook(SAFile file) {
  const std::unique_ptr<WindowedFile> owned(fileOf(file));
  const bool whole = owned->flush();
  if (owned->outcome != nullptr) *owned->outcome = whole;
  return whole ? 0 : EOF;
}

int removeHook(const char* path) {
  return std::remove(path);
}

// Failures are told by whoever asked for the table, in the user's language.
void errorHook(const char*) {}

double numberHook(const char* text) {
  return textToReal(text);
}

SAHooks hooks() {
  SAHooks table;
  table.FOpen = openHook;
  table.FRead = readHook;
  table.FWrite = writeHook;
  table.FSeek = seekHook;
  table.FTell = tellHook;
  table.FFlush = flushHook;
  table.FClose = closeHook;
  table.Remove = removeHook;
  table.Error = errorHook;
  table.Atof = numberHook;
  return table;
}

}  // namespace

DBFHandle createDbf(const char* path) {
  SAHooks table = hooks();
  return DBFCreateLL(path, kLanguage, &table);
}

DBFHandle openDbf(const char* path, const char* access) {
  SAHooks table = hooks();
  return DBFOpenLL(path, access, &table);
}

bool dbfWrites(DBFHandle table) {
  return fileOf(table->fp)->ok();
}

bool closeDbf(DBFHandle table) {
  bool whole = false;
  fileOf(table->fp)->outcome = &whole;
  DBFClose(table);
  return whole;
}

void abandonDbf(DBFHandle table) {
  fileOf(table->fp)->abandon();
  DBFClose(table);
}

}  // namespace kaldex
