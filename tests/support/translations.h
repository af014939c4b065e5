#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace fleetor::test {

/// Whether that English text has translations or is listed as lacking some. The German table stands for all:
/// tests/resources/languages_test.cpp compares them.
inline bool isTranslated(const std::string& key) {
  static const std::string texts = [] {
    std::string all;
    for (const char* path : {FLEETOR_GERMAN_TABLE, FLEETOR_UNTRANSLATED}) {
      std::ifstream file(path);
      all.append(std::istreambuf_iterator<char>(file), {});
    }
    return all;
  }();
  return texts.find('"' + key + '"') != std::string::npos;
}

}  // namespace fleetor::test
