#pragma once
// The exporter's version as the module reports it to Maya, to the debug file and to the user.

inline constexpr const char* ExporterVersionText = "7, 6, 3, 0";
