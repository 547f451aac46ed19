#include "lib/shapefile/shape_reader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/companion_file.h"

namespace kaldex {

namespace {

bool isKnownType(int type) {
  return std::string_view(SHPTypeName(type)) != "UnknownShapeType";
}

}  // namespace

// What the library sees as a file: a window on a file, or bytes in memory.
class ShapeReader::Stream {
 public:
  explicit Stream(FileWindow& file) : file_(&file), size_(file.size()) {}
  explicit Stream(std::vector<unsigned char> bytes) : bytes_(std::move(bytes)), size_(bytes_.size()) {}

  SAOffset read(void* to, SAOffset size, SAOffset count) {
    if (size == 0 || position_ >= size_) return 0;
    const std::uint64_t items = std::min<std::uint64_t>(count, (size_ - position_) / size);
    const auto wanted = static_cast<std::size_t>(items * size);
    const std::size_t got = file_ != nullptr ? file_->read(position_, to, wanted) : copy(to, wanted);
    position_ += got;
    return got / size;
  }
  SAOffset seek(SAOffset offset, int whence) {
    const std::uint64_t base = whence == SEEK_CUR ? position_ : whence == SEEK_END ? size_ : 0;
    position_ = base + offset;
    return 0;
  }
  SAOffset tell() const { return position_; }

  static Stream& of(SAFile file) { return *reinterpret_cast<Stream*>(file); }
  SAFile asFile() { return reinterpret_cast<SAFile>(this); }

  static SAHooks hooks();
  // What the library is about to open, by the file that it asks for; it has no other way to hand this on.
  struct Opening {
    Stream* main;
    Stream* index;
  };
  static thread_local Opening opening;

 private:
  std::size_t copy(void* to, std::size_t count) const {
    std::memcpy(to, bytes_.data() + position_, count);
    return count;
  }

  FileWindow* file_ = nullptr;
  std::vector<unsigned char> bytes_;
  std::uint64_t size_;
  std::uint64_t position_ = 0;
};

thread_local ShapeReader::Stream::Opening ShapeReader::Stream::opening = {nullptr, nullptr};

SAHooks ShapeReader::Stream::hooks() {
  SAHooks hooks{};
  hooks.FOpen = [](const char* name, const char*) -> SAFile {
    const std::string_view path(name);
    Stream* stream = path.empty() || path.back() != 'x' ? opening.main : opening.index;
    return stream == nullptr ? nullptr : stream->asFile();
  };
  hooks.FRead = [](void* to, SAOffset size, SAOffset count, SAFile file) {
    return of(file).read(to, size, count);
  };
  hooks.FWrite = [](void*, SAOffset, SAOffset, SAFile) -> SAOffset { return 0; };
  hooks.FSeek = [](SAFile file, SAOffset offset, int whence) { return of(file).seek(offset, whence); };
  hooks.FTell = [](SAFile file) { return of(file).tell(); };
  hooks.FFlush = [](SAFile) { return 0; };
  // The streams are the reader's.
  hooks.FClose = [](SAFile) { return 0; };
  hooks.Remove = [](const char*) { return -1; };
  // Its complaints go to standard error otherwise; what is wrong shows in its results and is told by the
  // operation.
  hooks.Error = [](const char*) {};
  hooks.Atof = [](const char*) { return 0.0; };
  return hooks;
}

ShapeReader::ShapeReader() = default;

ShapeReader::~ShapeReader() {
  drop();
  if (handle_ != nullptr) SHPClose(handle_);
}

std::unique_ptr<ShapeReader> ShapeReader::open(const QString& path) {
  std::unique_ptr<ShapeReader> reader(new ShapeReader);
  if (!reader->openFiles(path)) return nullptr;
  Stream::opening = {reader->mainStream_.get(), reader->indexStream_.get()};
  SAHooks hooks = Stream::hooks();
  // The name only tells the two files apart.
  reader->handle_ = SHPOpenLL("main.shp", "rb", &hooks);
  Stream::opening = {nullptr, nullptr};
  if (reader->handle_ == nullptr) return nullptr;
  SHPSetFastModeReadObject(reader->handle_, 1);
  double lower[4], upper[4];
  SHPGetInfo(reader->handle_, &reader->count_, &reader->type_, lower, upper);
  return reader;
}

bool ShapeReader::openFiles(const QString& path) {
  const QByteArray mainPath = companionFile(path, "shp");
  if (mainPath.isEmpty()) return false;
  main_ = std::make_unique<FileWindow>(mainPath);
  if (!main_->isOpen()) return false;
  const QByteArray indexPath = companionFile(mainPath, "shx");
  if (!indexPath.isEmpty()) indexFile_ = std::make_unique<FileWindow>(indexPath);
  if (indexFile_ != nullptr && !indexFile_->isOpen()) indexFile_.reset();
  ShapeIndex index = checkShapeIndex(*main_, indexFile_.get());
  indexTrouble_ = index.trouble;
  unread_ = index.unread;
  mainStream_ = std::make_unique<Stream>(*main_);
  if (!index.bytes.empty()) {
    indexStream_ = std::make_unique<Stream>(std::move(index.bytes));
  } else if (indexFile_ != nullptr) {
    indexStream_ = std::make_unique<Stream>(*indexFile_);
  }
  return indexStream_ != nullptr;
}

void ShapeReader::drop() {
  if (shape_ != nullptr) SHPDestroyObject(shape_);
  shape_ = nullptr;
}

ShapeReader::Record ShapeReader::read(int number) {
  drop();
  shape_ = SHPReadObject(handle_, number);
  if (shape_ == nullptr) return Record::damaged;
  if (shape_->nSHPType == SHPT_NULL) return Record::null;
  return isKnownType(shape_->nSHPType) && partsAreSound() ? Record::shape : Record::damaged;
}

bool ShapeReader::partsAreSound() const {
  const SHPObject& shape = *shape_;
  if (shape.nVertices < 0 || shape.nParts < 0) return false;
  if (shape.nVertices > 0 && (shape.padfX == nullptr || shape.padfY == nullptr)) return false;
  if (shape.nParts > 0 && (shape.panPartStart == nullptr || shape.panPartStart[0] < 0)) return false;
  for (int part = 0; part < shape.nParts; ++part) {
    if (partEnd(part) < partStart(part) || partEnd(part) > shape.nVertices) return false;
  }
  return true;
}

}  // namespace kaldex
