#pragma once
// Collects the geometry log for the length of a test.

#include "report/GeometryLog.h"
#include "report/VLogSink.h"

#include <string>
#include <string_view>
#include <vector>

class LogRecorder : public VLogSink {
public:
    LogRecorder() : m_scope(this) {}
    void Send(std::string_view message) override { Lines.emplace_back(message); }
    bool Has(std::string_view line) const
    {
        for (const std::string& recorded : Lines) {
            if (recorded == line)
                return true;
        }
        return false;
    }
    std::vector<std::string> StartingWith(std::string_view prefix) const
    {
        std::vector<std::string> found;
        for (const std::string& line : Lines)
            if (line.starts_with(prefix))
                found.push_back(line);
        return found;
    }

    std::vector<std::string> Lines;

private:
    ScopedGeometryLogSink m_scope;
};
