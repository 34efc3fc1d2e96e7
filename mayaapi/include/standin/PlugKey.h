#pragma once

#include <compare>
#include <vector>

namespace standin {

struct Attribute;

// Names one plug of a node: the attribute and the logical index of every array attribute on the way from the
// top-level attribute down to it (outermost first). An array plug itself carries one index fewer than its elements.
struct PlugKey {
  Attribute* attribute = nullptr;
  std::vector<unsigned int> indices;

  auto operator<=>(const PlugKey&) const = default;
  bool operator==(const PlugKey&) const = default;
};

}
