#include "lib/frame/give_back.h"

#include "kaldex/extforma.h"

namespace kaldex {

namespace {

struct Handlers : SExtFormats {
  using SExtFormats::giveBack;
};

}  // namespace

void giveBack(Vector& vector, Line* line) {
  Handlers::giveBack(vector, line);
}

void giveBack(Vector& vector, SPolygon* polygon) {
  Handlers::giveBack(vector, polygon);
}

}  // namespace kaldex
