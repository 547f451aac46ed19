#ifndef KALDEX_SHAPEFILE_ID_SET_H
#define KALDEX_SHAPEFILE_ID_SET_H

#include <bitset>
#include <unordered_map>

namespace kaldex {

// Identifiers, a bit each: a layer's worth of them takes kilobytes.
class IdSet {
 public:
  void insert(int id) { pages_[pageOf(id)].set(bitOf(id)); }
  bool contains(int id) const {
    const auto page = pages_.find(pageOf(id));
    return page != pages_.end() && page->second.test(bitOf(id));
  }

 private:
  static constexpr unsigned kPage = 4096;
  static unsigned pageOf(int id) { return static_cast<unsigned>(id) / kPage; }
  static unsigned bitOf(int id) { return static_cast<unsigned>(id) % kPage; }

  std::unordered_map<unsigned, std::bitset<kPage>> pages_;
};

}  // namespace kaldex

#endif
