#pragma once

#include <cairo.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fleetor::demo {

enum class Face { regular, bold, italic };

// The outlines of a typeface's letters, so that names can bend along streets and are the same on every tile.
// Read-only after construction, from any thread.
class Lettering {
 public:
  struct Letter {
    // One unit is the size of the type; y downwards from the base line. None for a blank.
    std::shared_ptr<cairo_path_t> outline;
    double advance = 0;
  };

  Lettering();
  // One letter for each character of the text; characters that are not expected in names are left out.
  std::vector<const Letter*> letters(std::string_view utf8, Face face) const;

 private:
  std::map<std::pair<Face, std::string>, Letter> letters_;
};

}  // namespace fleetor::demo
