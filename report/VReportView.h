#pragma once
// The report dialog is a user-interface service; the report only hands it the finalised entries.

#include <string_view>
#include <vector>

#include "report/VReportEntry.h"

class VReportView {
public:
    virtual ~VReportView() = default;
    // Modal: answers once the user has closed the dialog. Never called with no entries.
    virtual void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) = 0;
};
