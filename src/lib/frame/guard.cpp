#include "kaldex/extforma.h"
#include "kaldex/model/database.h"
#include "kaldex/model/vector.h"
#include "lib/frame/shield.h"

inline namespace kaldex_v1 {

namespace {

class Level {
 public:
  explicit Level(int& depth) : depth_(depth) { ++depth_; }
  ~Level() { --depth_; }

 private:
  int& depth_;
};

template <class Action>
bool succeeds(Action&& action) {
  try {
    action();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

bool SExtFormats::shielded(const std::function<void()>& action) {
  return kaldex::shielded(action);
}

int SExtFormats::guarded(const std::function<int()>& operation) {
  if (guardDepth_ > 0) return operation();
  const Level level(guardDepth_);
  const bool wasOpen = file != nullptr;
  const int openings = openings_;
  int result = 0;
  const bool good = shielded([&] { result = operation(); });
  // What the caller had open stays so, unless the operation has opened its own file in its place.
  if (!good || !wasOpen || openings_ != openings) succeeds([&] { FileClose(); });
  return good ? result : 0;
}

int SExtFormats::guardedImport(Vector* target, const std::function<int()>& operation) {
  if (guardDepth_ > 0) return operation();
  DataBase* const base = dataBaseOf(target);
  bool begun = false;
  bool ended = false;
  bool stored = false;
  const int result = guarded([&] {
    // What the caller did before is no part of the import, and mustn't go with it if that has to be rolled
    // back.
    if (base != nullptr) base->commit();
    begun = true;
    const int outcome = operation();
    ended = true;
    store(target, base);
    stored = true;
    return outcome;
  });
  if (stored || !begun) return result;
  // The storage failed. What stands is kept if it still can be.
  if (!ended && succeeds([&] { store(target, base); })) return result;
  if (base != nullptr) succeeds([&] { base->rollback(); });
  return result;
}

DataBase* SExtFormats::dataBaseOf(Vector* target) const {
  InfoLayer* const layer = target != nullptr ? target->infoLayer() : nullptr;
  return layer != nullptr ? layer->dataBase() : dataBase;
}

void SExtFormats::store(Vector* target, DataBase* base) {
  if (target != nullptr) target->flush();
  if (base != nullptr) base->commit();
}

void SExtFormats::giveBack(Vector& vector, Line* line) {
  LineSet* const set = vector.lineSet();
  if (set != nullptr && set->keepsInMemory()) {
    line->Free(1);
  } else {
    delete line;
  }
}

void SExtFormats::giveBack(Vector& vector, SPolygon* polygon) {
  if (vector.PolygonsInMemory()) {
    polygon->Free();
  } else {
    delete polygon;
  }
}

}  // namespace kaldex_v1
