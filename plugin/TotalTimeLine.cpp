#include "plugin/TotalTimeLine.h"

#include "base/TextUtil.h"

std::string TotalTimeLine(int64_t elapsedMilliseconds)
{
    return Format("Total time taken : %i minutes, %i seconds\r\n", static_cast<int>(elapsedMilliseconds / 60000),
                  static_cast<int>((elapsedMilliseconds / 1000) % 60));
}
