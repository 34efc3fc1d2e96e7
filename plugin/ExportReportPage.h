#pragma once
// The report page of an export: what the export left (the asset read back, its copied textures, its
// stored settings), the phases it went through and every issue the report holds, written as
// "report.html" beside the target.

#include "report/VReportEntry.h"

#include <string>
#include <vector>

// scene: as a person reads it; target: a system path. False with the reason in error.
bool WriteExportReportPage(const std::string& scene, const std::string& target, const std::vector<VReportEntry>& entries,
                           std::string& error);
