#pragma once
// A report without a message table: every kind is shown as an error that says so, with the raw
// data, so that a missing table is noticed instead of hiding the issues.

#include "report/VReport.h"

class VReportMessage : public VReport {
protected:
    void FillInReportMessage(uint32_t kind, const std::string& data, std::string& title, std::string& detail,
                             std::string& explanation, int32_t& severity) override;
};
