#pragma once

#include <cstdint>
#include <string>

enum VReportSeverity : int32_t {
    SeverityInformation = 0,
    SeverityWarning = 1,
    SeverityError = 2,
};

// A problem or statistic as it was raised; the detail may be empty.
struct VReportIssue {
    uint32_t Kind = 0;
    std::string Detail;
};

// What the artist is shown for one kind of issue once the report is finalised.
struct VReportEntry {
    std::string Title;
    std::string Explanation;
    std::string Detail;
    int32_t Severity = SeverityInformation;
};
