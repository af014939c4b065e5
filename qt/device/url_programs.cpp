#include "qt/device/url_programs.h"

#include <gio/gio.h>

namespace fleetor {

bool hasProgramForScheme(const std::string& scheme) {
  GAppInfo* const program = g_app_info_get_default_for_uri_scheme(scheme.c_str());
  if (!program) return false;
  g_object_unref(program);
  return true;
}

}  // namespace fleetor
