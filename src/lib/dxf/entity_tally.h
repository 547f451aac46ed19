#ifndef KALDEX_DXF_ENTITY_TALLY_H
#define KALDEX_DXF_ENTITY_TALLY_H

#include <QMap>
#include <QString>
#include <QStringList>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kaldex {

// Counts entities by kind and layer, where neither is known before.
class EntityTally {
 public:
  // An entity of that kind begins; its layer is not known yet.
  void begin(std::string_view kind);
  // The layer of the entity that has begun; further layers of it don't count.
  void layer(const QString& name);
  // Nothing of the entity is to be counted.
  void drop() { open_ = false; }
  // Whether an entity waits for its layer.
  bool isOpen() const { return open_; }
  // An entity ends: without a layer of its own it is in that of drawings.
  void end() {
    if (open_) layer(QStringLiteral("0"));
  }

  bool isEmpty() const { return counts_.empty(); }
  long long total(const QStringList& except) const;
  // "MTEXT (5, planos A 3, B 2)", the most frequent kinds and layers first; a long list ends in dots.
  QStringList words(const QStringList& except) const;

 private:
  using Layers = QMap<QString, long long>;

  bool open_ = false;
  std::string kind_;
  std::unordered_map<std::string, Layers> counts_;
};

}  // namespace kaldex

#endif
