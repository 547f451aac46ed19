#ifndef KALDEX_BASE_FILE_WINDOW_H
#define KALDEX_BASE_FILE_WINDOW_H

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/api.h"

namespace kaldex {

// Reads a file at any offset through one window of memory: records that follow each other cost a copy or
// nothing, whatever the file's size. A file that shrinks meanwhile gives short reads.
class KALDEX_BASE_API FileWindow {
 public:
  static constexpr std::size_t kCapacity = 256 * 1024;

  // `path` in the bytes of the file system. A folder or a pipe is not open. `window`, at most kCapacity, is
  // what a read out of order costs.
  explicit FileWindow(const QByteArray& path, std::size_t window = kCapacity);
  ~FileWindow();
  FileWindow(const FileWindow&) = delete;
  FileWindow& operator=(const FileWindow&) = delete;

  bool isOpen() const { return descriptor_ >= 0; }
  // As it was when the file was opened.
  std::uint64_t size() const { return size_; }

  // Copies up to `count` bytes from `offset`; returns how many there were.
  std::size_t read(std::uint64_t offset, void* to, std::size_t count);
  // The `count` bytes (at most the window) at `offset`, valid until the next call; null if the file has
  // fewer.
  const unsigned char* view(std::uint64_t offset, std::size_t count) {
    if (offset >= start_ && count <= length_ && offset - start_ <= length_ - count) {
      return window_.get() + (offset - start_);
    }
    return viewAnew(offset, count);
  }

 private:
  const unsigned char* viewAnew(std::uint64_t offset, std::size_t count);
  std::size_t readFully(std::uint64_t offset, void* to, std::size_t count) const;

  int descriptor_;
  std::size_t capacity_;
  std::uint64_t size_ = 0;
  std::unique_ptr<unsigned char[]> window_;
  std::uint64_t start_ = 0;
  std::size_t length_ = 0;
};

}  // namespace kaldex

#endif
