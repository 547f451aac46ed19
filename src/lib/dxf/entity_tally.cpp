#include "lib/dxf/entity_tally.h"

#include <QObject>
#include <algorithm>
#include <numeric>
#include <vector>

namespace kaldex {

namespace {

constexpr std::size_t kMostKinds = 500;  // a file that invents names must not fill the memory
constexpr int kMostLayers = 1000;
constexpr std::size_t kLayersTold = 8;

struct Counted {
  QString name;
  long long count;
};

void mostFirst(std::vector<Counted>& counted) {
  std::sort(counted.begin(), counted.end(), [](const Counted& one, const Counted& other) {
    return one.count != other.count ? one.count > other.count : one.name < other.name;
  });
}

QString nameOf(const std::string& kind) {
  return QString::fromLatin1(kind.data(), static_cast<int>(kind.size()));
}

long long sum(const QMap<QString, long long>& layers) {
  return std::accumulate(layers.begin(), layers.end(), 0LL);
}

QString layersText(const QMap<QString, long long>& layers) {
  std::vector<Counted> counted;
  for (auto layer = layers.begin(); layer != layers.end(); ++layer)
    counted.push_back({layer.key(), layer.value()});
  mostFirst(counted);
  QStringList parts;
  for (std::size_t i = 0; i < counted.size() && i < kLayersTold; ++i)
    parts << QStringLiteral("%1: %2").arg(counted[i].name).arg(counted[i].count);
  if (counted.size() > kLayersTold) parts << QStringLiteral("...");
  return parts.join(QStringLiteral(", "));
}

}  // namespace

void EntityTally::begin(std::string_view kind) {
  end();
  kind_ = kind;
  open_ = true;
}

void EntityTally::layer(const QString& name) {
  open_ = false;
  auto kind = counts_.find(kind_);
  if (kind == counts_.end()) {
    if (counts_.size() >= kMostKinds) kind_ = "...";
    kind = counts_.emplace(kind_, Layers()).first;
  }
  Layers& layers = kind->second;
  const auto known = layers.find(name);
  if (known != layers.end()) {
    ++known.value();
  } else {
    ++layers[layers.size() < kMostLayers ? name : QStringLiteral("...")];
  }
}

long long EntityTally::total(const QStringList& except) const {
  long long all = 0;
  for (const auto& kind : counts_) {
    if (!except.contains(nameOf(kind.first))) all += sum(kind.second);
  }
  return all;
}

QStringList EntityTally::words(const QStringList& except) const {
  std::vector<Counted> kinds;
  for (const auto& kind : counts_) {
    if (!except.contains(nameOf(kind.first))) kinds.push_back({nameOf(kind.first), sum(kind.second)});
  }
  mostFirst(kinds);
  QStringList all;
  for (const Counted& kind : kinds) {
    const Layers& layers = counts_.at(kind.name.toLatin1().toStdString());
    all << QObject::tr("Não lidos: %1 %2 (%3)").arg(kind.count).arg(kind.name, layersText(layers));
  }
  return all;
}

}  // namespace kaldex
