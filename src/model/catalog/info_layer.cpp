#include <algorithm>
#include <limits>
#include <map>

#include "kaldex/model/database.h"
#include "kaldex/model/text.h"
#include "kaldex/model/tin.h"
#include "kaldex/model/vector.h"
#include "model/vector/vector_store.h"

inline namespace kaldex_v1 {

struct InfoLayer::Representations {
  struct Entry {
    std::unique_ptr<Vector> vector;
    bool certain =
        true;  ///< false after a rollback, until the database says whether the representation is stored
  };

  std::map<short, Entry> vectors;
  bool textsCertain = true;
};

InfoLayer::InfoLayer(int id, const LayerDefinition& definition, Project& project, DataBase& dataBase)
    : id(id),
      name(definition.name),
      box(definition.box),
      // No file or user may give a layer an infinite scale: it would be written to files as a word.
      scale(static_cast<float>(std::min(definition.scale, double{std::numeric_limits<float>::max()}))),
      resolution(definition.resolution),
      category_(definition.category),
      project_(project),
      dataBase_(dataBase),
      representations_(std::make_unique<Representations>()) {}

InfoLayer::~InfoLayer() = default;

QString InfoLayer::GetCategoryName() const {
  return category_ != nullptr ? category_->name : QString();
}

short InfoLayer::model() const {
  return category_ != nullptr ? category_->model : short{0};
}

QString InfoLayer::associationTable() const {
  return QStringLiteral("GA%1").arg(id, 6, 10, QLatin1Char('0'));
}

Vector* InfoLayer::vector(short kind, bool make) {
  const auto known = representations_->vectors.find(kind);
  if (known != representations_->vectors.end()) {
    Representations::Entry& entry = known->second;
    if (!entry.certain) entry.certain = dataBase_.hasVector(*this, kind);
    // A caller may still hold the vector of a representation that fell with a rollback: it comes back to life
    // when it is wanted again.
    if (entry.certain || make) {
      entry.certain = true;
      return entry.vector.get();
    }
    return nullptr;
  }
  std::unique_ptr<kaldex::VectorStore> store = dataBase_.openVectorStore(*this, kind, make);
  if (store == nullptr) return nullptr;
  Representations::Entry& entry = representations_->vectors[kind];
  if (kind == vectorTin) {
    entry.vector = std::make_unique<Tin>(std::move(store));
  } else {
    entry.vector = std::make_unique<Vector>(std::move(store));
  }
  return entry.vector.get();
}

int InfoLayer::Get(Text*& text) {
  text = nullptr;
  if (text_ != nullptr && !representations_->textsCertain && !dataBase_.hasTexts(*this)) return 0;
  if (text_ == nullptr && !dataBase_.hasTexts(*this)) return 0;
  text = makeText();
  return 1;
}

Text* InfoLayer::makeText() {
  representations_->textsCertain = true;
  if (text_ == nullptr) {
    text_ = std::make_unique<Text>(*this);
    dataBase_.openTexts(*this, *text_);
  }
  return text_.get();
}

void InfoLayer::flush() {
  for (auto& [kind, entry] : representations_->vectors) entry.vector->flush();
}

void InfoLayer::afterRollback() {
  for (auto& [kind, entry] : representations_->vectors) entry.certain = false;
  representations_->textsCertain = false;
}

int Text::load(EntitieList& list) {
  return layer_.dataBase()->loadTexts(layer_, list);
}

int Text::store(EntitieList& list) {
  return layer_.dataBase()->storeTexts(layer_, *this, list);
}

long long Text::count() {
  return layer_.dataBase()->textCount(layer_);
}

}  // namespace kaldex_v1
