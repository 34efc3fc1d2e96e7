#pragma once
// Animation names and files travel as single whitespace-free tokens in the settings block.

#include <string>
#include <string_view>

// Blanks and tabs become "%20", equals signs "%3D"; everything else stays.
std::string EscapeName(std::string_view name);
// "%20" becomes a blank and "%3D" an equals sign; carriage returns and line feeds are dropped.
std::string UnescapeName(std::string_view text);
