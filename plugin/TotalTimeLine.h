#pragma once

#include <cstdint>
#include <string>

// "Total time taken : <m> minutes, <s> seconds\r\n" for an export that took elapsedMilliseconds;
// both figures truncated.
std::string TotalTimeLine(int64_t elapsedMilliseconds);
