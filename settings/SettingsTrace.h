#pragma once
// Where the settings functions send their debug lines; the export session passes the debug
// file's writer. An empty trace discards them.

#include <functional>
#include <string_view>

using SettingsTrace = std::function<void(std::string_view line)>;

inline void Trace(const SettingsTrace& trace, std::string_view line)
{
    if (trace)
        trace(line);
}
