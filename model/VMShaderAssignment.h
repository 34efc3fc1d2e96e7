#pragma once
// An effect assigned to a material: the library file, the effect in it, its parameters as
// (name, value) pairs and the further entries written after them.

#include "base/VDictEntry.h"

#include <string>
#include <vector>

struct VMShaderAssignment {
    std::string EffectLibrary;
    std::string EffectName;
    std::vector<VDictEntry<std::string>> Parameters;
    std::vector<std::string> FurtherEntries;
};
