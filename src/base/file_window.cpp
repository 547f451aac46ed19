#include "base/file_window.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kaldex {

FileWindow::FileWindow(const QByteArray& path, std::size_t window)
    : descriptor_(::open(path.constData(), O_RDONLY | O_CLOEXEC)), capacity_(std::min(window, kCapacity)) {
  struct stat status {};
  if (descriptor_ < 0) return;
  if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) {
    ::close(descriptor_);
    descriptor_ = -1;
    return;
  }
  size_ = static_cast<std::uint64_t>(status.st_size);
  window_.reset(new unsigned char[capacity_]);
}

FileWindow::~FileWindow() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::size_t FileWindow::read(std::uint64_t offset, void* to, std::size_t count) {
  if (offset >= size_ || count == 0) return 0;
  count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
  if (count > capacity_) return readFully(offset, to, count);
  const unsigned char* bytes = view(offset, count);
  if (bytes == nullptr) return readFully(offset, to, count);
  std::memcpy(to, bytes, count);
  return count;
}

const unsigned char* FileWindow::viewAnew(std::uint64_t offset, std::size_t count) {
  if (!isOpen() || count > capacity_ || offset > size_ || size_ - offset < count) return nullptr;
  start_ = offset;
  length_ = readFully(offset, window_.get(), capacity_);
  return length_ >= count ? window_.get() : nullptr;
}

std::size_t FileWindow::readFully(std::uint64_t offset, void* to, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(descriptor_, static_cast<unsigned char*>(to) + done, count - done,
                                static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

}  // namespace kaldex
