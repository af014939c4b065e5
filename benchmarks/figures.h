#pragma once

// Figures for ./bench to keep and compare. Standard C++ only, so that programs of different toolkits share
// it.

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fleetor::bench {

/// Adds a figure of a table as one line of JSON to the file that FLEETOR_BENCH_FIGURES names, if it is set.
/// The names are plain text without quotes.
inline void record(const std::string& table, const std::string& row, const std::string& figure,
                   double value) {
  const char* const path = std::getenv("FLEETOR_BENCH_FIGURES");
  std::FILE* const file = path ? std::fopen(path, "a") : nullptr;
  if (!file) return;
  std::fprintf(file, "{\"table\": \"%s\", \"row\": \"%s\", \"figure\": \"%s\", \"value\": %.6g}\n",
               table.c_str(), row.c_str(), figure.c_str(), value);
  std::fclose(file);
}

}  // namespace fleetor::bench
