#pragma once
// The parameter string of a shader assignment, as materials.xml and the material chunk store it:
// "name=value;" per parameter, then "/entry;" per further entry, every "|" turned into ",".

#include <cstddef>
#include <string>

struct VMShaderAssignment;

// The engine's parser reads the text into a 4,000-character buffer with its terminator.
inline constexpr size_t ParameterStringLimit = 4000;

// Cut off as soon as it passes the limit: at most ParameterStringLimit - 1 characters.
std::string MakeParameterString(const VMShaderAssignment& assignment);
