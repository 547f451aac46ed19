#ifndef KALDEX_DXF_ENTITY_REMARKS_H
#define KALDEX_DXF_ENTITY_REMARKS_H

#include <string_view>

#include "lib/dxf/entity_kind.h"

namespace kaldex {

// Counts the entities that say more of their shape and place than the reader takes.
class EntityRemarks {
 public:
  // An entity that is taken begins; its layer is not known yet, but for a vertex, which has its polyline's.
  void begin(EntityKind kind, bool inOwnPlane);
  // Whether its layer was chosen.
  void choose(bool chosen) { chosen_ = chosen; }
  bool isOpen() const { return open_; }
  void take(int code, std::string_view value);
  void end();

  // To the current job report.
  void tell() const;

 private:
  bool open_ = false;
  bool chosen_ = false;
  bool vertex_ = false;
  bool inOwnPlane_ = false;
  bool paper_ = false;
  bool tilted_ = false;
  bool bulged_ = false;

  long long papers_ = 0;
  long long tilts_ = 0;
  long long bulges_ = 0;
};

}  // namespace kaldex

#endif
