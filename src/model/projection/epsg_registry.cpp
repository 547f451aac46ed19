#include "model/projection/epsg_registry.h"

namespace kaldex {

int epsgCodeOf(const PJ* object) {
  if (qstrcmp(proj_get_id_auth_name(object, 0), "EPSG") != 0) return 0;
  return QByteArray(proj_get_id_code(object, 0)).toInt();
}

PjPtr registeredCrs(PJ_CONTEXT* context, int code) {
  return PjPtr(proj_create_from_database(context, "EPSG", QByteArray::number(code).constData(),
                                         PJ_CATEGORY_CRS, 0, nullptr));
}

bool isSameCrs(PJ_CONTEXT* context, const PJ* a, const PJ* b) {
  return proj_is_equivalent_to_with_ctx(context, a, b, PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS) != 0;
}

std::vector<PjPtr> likelyRegistered(PJ_CONTEXT* context, const PJ* made) {
  std::vector<PjPtr> result;
  PJ_OBJ_LIST* found = proj_identify(context, made, "EPSG", nullptr, nullptr);
  for (int i = 0; found != nullptr && i < proj_list_get_count(found); ++i) {
    PjPtr candidate(proj_list_get(context, found, i));
    if (candidate && !proj_is_deprecated(candidate.get())) result.push_back(std::move(candidate));
  }
  proj_list_destroy(found);
  return result;
}

PjPtr registeredFor(PJ_CONTEXT* context, const PJ* crs) {
  if (const int code = epsgCodeOf(crs)) {
    PjPtr registered = registeredCrs(context, code);
    // A text may carry the code of a system whose parameters it changes.
    if (registered && isSameCrs(context, crs, registered.get())) return registered;
  }
  for (PjPtr& candidate : likelyRegistered(context, crs)) {
    if (proj_get_type(candidate.get()) == proj_get_type(crs) && isSameCrs(context, crs, candidate.get())) {
      return std::move(candidate);
    }
  }
  return nullptr;
}

}  // namespace kaldex
