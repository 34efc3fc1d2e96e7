#pragma once
// The report page of an export from the command line: what the export left (the asset read back,
// its copied textures, its stored settings), the phases it went through and the issues it filed,
// written as "report.html" beside the target.

#include "report/VReportEntry.h"

#include <string>
#include <vector>

// scene: native, as typed; target: a system path. False with the reason in error.
bool WriteExportReportPage(const std::string& scene, const std::string& target, const std::vector<VReportEntry>& entries,
                           std::string& error);
