#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/VLogSink.h"

class RecordingLogSink final : public VLogSink {
public:
    void Send(std::string_view message) override { Messages.emplace_back(message); }

    std::vector<std::string> Messages;
};
