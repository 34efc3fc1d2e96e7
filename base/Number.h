#pragma once
// Numbers in the system's text files: always a decimal point, whatever the process locale.

#include <string>
#include <string_view>

// As printf's "%.*f": FormatFloat(1.5, 4) == "1.5000".
std::string FormatFloat(double value, int decimals = 6);
// As printf's "%i".
std::string FormatInt(long long value);

// The whole text (surrounding spaces and a leading '+' allowed) must be the number; on
// failure the output is left unchanged and false is answered.
bool ParseFloat(std::string_view text, double& value);
bool ParseFloat(std::string_view text, float& value);
bool ParseInt(std::string_view text, int& value);
bool ParseInt(std::string_view text, long long& value);
bool ParseInt(std::string_view text, unsigned long long& value);
