#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ui/component.h"

namespace fleetor {

/// A few values side by side, each with its caption. Without any, it takes no room.
class FactStrip : public Component {
 public:
  struct Fact {
    std::string caption;
    std::string value;

    friend bool operator==(const Fact&, const Fact&) = default;
  };

  const std::vector<Fact>& facts() const { return facts_; }
  void setFacts(std::vector<Fact> facts) { assign(facts_, std::move(facts)); }

 private:
  std::vector<Fact> facts_;
};

}  // namespace fleetor
