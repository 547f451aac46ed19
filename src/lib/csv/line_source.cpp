#include "lib/csv/line_source.h"

#include <algorithm>
#include <cstring>

namespace kaldex {

bool LineSource::next(std::string_view& line) {
  if (offset_ >= file_.size()) return false;
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(kLongestRecord + 1, file_.size() - offset_));
  const auto* const bytes = reinterpret_cast<const char*>(file_.view(offset_, count));
  failed_ = bytes == nullptr;
  if (failed_) return false;
  if (!cut_) ++number_;
  const auto* const feed = static_cast<const char*>(std::memchr(bytes, '\n', count));
  const std::size_t length = feed != nullptr ? static_cast<std::size_t>(feed - bytes) : count;
  line = std::string_view(bytes, length);
  offset_ += length + (feed != nullptr ? 1 : 0);
  cut_ = feed == nullptr && offset_ < file_.size();
  return true;
}

}  // namespace kaldex
