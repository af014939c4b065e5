#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/service/faults.h"
#include "demo/service/service.h"

namespace fleetor::demo {

struct ProgramOptions {
  ServiceOptions service;
  int port = 8845;
  std::vector<Fault> faults;
  bool help = false;
};

std::string usage();

// The program's arguments without its name. Nothing when one is wrong; `problem` then says which and why.
std::optional<ProgramOptions> parseOptions(const std::vector<std::string_view>& arguments,
                                           std::string& problem);

}  // namespace fleetor::demo
