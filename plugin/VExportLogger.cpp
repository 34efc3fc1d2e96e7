#include "plugin/VExportLogger.h"

#include "base/TextUtil.h"
#include "report/LogWindow.h"

#include <cstdarg>
#include <string>

void VExportLogger::Print(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    LogPrint("%s", text.c_str());
}

void VExportLogger::Warning(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    LogPrint("Warning:%s", text.c_str());
}
