#pragma once
// The text form of finalised entries: the contents of "ErrLog.txt", also printed by the command
// line. Lines end with "\r\n"; the texts are copied as bytes.

#include <string>
#include <string_view>
#include <vector>

#include "report/VReportEntry.h"

// "" when there are no entries; otherwise the header (when not empty) and a blank line, then per
// entry its severity line, title, explanation and detail, closed by a blank line.
std::string ReportText(const std::vector<VReportEntry>& entries, std::string_view header = {});
