#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace fleetor::test {

/// Whether the German table has that English text; the tables are tested to hold the same ones.
inline bool isTranslated(const std::string& key) {
  static const std::string table = [] {
    std::ifstream file(FLEETOR_GERMAN_TABLE);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  return table.find('"' + key + "\": ") != std::string::npos;
}

}  // namespace fleetor::test
