#include "report/ReportText.h"

namespace {

std::string_view SeverityLine(int32_t severity)
{
    switch (severity) {
    case SeverityInformation:
        return "Information:\r\n";
    case SeverityWarning:
        return "Warning:\r\n";
    case SeverityError:
        return "Error:\r\n";
    default:
        return "*** UNKNOWN TYPE ***:\r\n";
    }
}

}

std::string ReportText(const std::vector<VReportEntry>& entries, std::string_view header)
{
    std::string text;
    if (entries.empty())
        return text;
    if (!header.empty()) {
        text += header;
        text += "\r\n\r\n";
    }
    for (const VReportEntry& entry : entries) {
        text += SeverityLine(entry.Severity);
        text += entry.Title;
        text += "\r\n";
        text += entry.Explanation;
        text += "\r\n";
        text += entry.Detail;
        text += "\r\n\r\n";
    }
    return text;
}
