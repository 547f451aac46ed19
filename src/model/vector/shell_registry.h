#ifndef KALDEX_MODEL_SHELL_REGISTRY_H
#define KALDEX_MODEL_SHELL_REGISTRY_H

#include <deque>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kaldex {

/// The live shells of one kind that a vector handed out or took in, by identifier. The registry deletes what
/// is left when it dies; callers may delete a shell before, which must then say so by `remove`.
template <class Shell>
class ShellRegistry {
 public:
  ShellRegistry() = default;
  ShellRegistry(const ShellRegistry&) = delete;
  ShellRegistry& operator=(const ShellRegistry&) = delete;

  Shell* find(int id) const {
    const auto entry = shells_.find(id);
    return entry == shells_.end() ? nullptr : entry->second;
  }
  bool holds(const Shell& shell) const { return find(shell.id) == &shell; }
  void add(Shell& shell) { shells_[shell.id] = &shell; }
  void remove(const Shell& shell) {
    const auto entry = shells_.find(shell.id);
    if (entry != shells_.end() && entry->second == &shell) {
      shells_.erase(entry);
    } else {
      orphans_.erase(const_cast<Shell*>(&shell));
    }
  }
  /// A rollback took away what the shells stand for. Callers may still hold them, so they stay until they are
  /// deleted.
  void orphanAll() {
    for (const auto& entry : shells_) orphans_.insert(entry.second);
    shells_.clear();
  }
  /// The shells as they are now: what is done with one may change the registry.
  std::vector<Shell*> all() const {
    std::vector<Shell*> shells;
    shells.reserve(shells_.size());
    for (const auto& entry : shells_) shells.push_back(entry.second);
    return shells;
  }
  void deleteAll() {
    for (Shell* shell : all()) delete shell;
    const std::unordered_set<Shell*> orphans = orphans_;
    for (Shell* shell : orphans) delete shell;
  }
  std::size_t size() const { return shells_.size(); }

 private:
  std::unordered_map<int, Shell*> shells_;
  std::unordered_set<Shell*> orphans_;
};

}  // namespace kaldex

#endif
