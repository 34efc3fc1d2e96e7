#pragma once

#include <string_view>

#include "base/TextUtil.h"

// Orders keys ignoring case, for maps looked up by file names and registry names.
struct NoCaseLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return CompareNoCase(a, b) < 0; }
};
