#include "report/VReportMessage.h"

void VReportMessage::FillInReportMessage(uint32_t, const std::string& data, std::string& title, std::string& detail,
                                         std::string& explanation, int32_t& severity)
{
    title = "No errors or warnings defined";
    explanation = "No error messages or warnings were defined. Please, override "
                  "VReportMessage::FillInReportMessage to define your own messages.";
    detail = "The message data was:\r\n" + data;
    severity = SeverityError;
}
