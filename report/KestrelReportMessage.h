#pragma once
// The exporter's own vocabulary of issues (VIssueKind): title, explanation, severity and how the
// raised details are listed, for every kind.

#include "report/VReportMessage.h"

class KestrelReportMessage : public VReportMessage {
protected:
    void FillInReportMessage(uint32_t kind, const std::string& data, std::string& title, std::string& detail,
                             std::string& explanation, int32_t& severity) override;
};

// The one report of the module: cleared at the start of every export, filled by every part of the
// exporter and shown or filed at its end.
VReport& ModuleReport();
