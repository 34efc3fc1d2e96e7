#pragma once
// Stand-ins for the platform services of program launching and the log window: they record what
// would have been started or shown.

#include <string>
#include <string_view>
#include <vector>

#include "report/LogWindow.h"
#include "report/VLogSink.h"
#include "settings/VProcessLauncher.h"
#include "ui/VMessageBox.h"

class RecordingLauncher final : public VProcessLauncher {
public:
    struct ShellCall {
        std::string File;
        std::string Arguments;
        std::string WorkingFolder;
    };

    bool StartProcess(std::string_view commandLine, std::string*) override
    {
        CommandLines.emplace_back(commandLine);
        return StartSucceeds;
    }
    int ShellOpen(std::string_view file, std::string_view arguments, std::string_view workingFolder) override
    {
        ShellCalls.push_back({std::string(file), std::string(arguments), std::string(workingFolder)});
        return ShellResult;
    }

    bool StartSucceeds = true;
    int ShellResult = 42;
    std::vector<std::string> CommandLines;
    std::vector<ShellCall> ShellCalls;
};

class RecordingMessageBox final : public VMessageBox {
public:
    VMessageBoxAnswer Show(const VMessageBoxRequest& request) override
    {
        Requests.push_back(request);
        return request.DefaultAnswer;
    }

    std::vector<VMessageBoxRequest> Requests;
};

// Takes the log window's messages while it lives.
class LogWindowRecorder final : public VLogSink {
public:
    LogWindowRecorder() { SetLogSink(this); }
    ~LogWindowRecorder() override { SetLogSink(nullptr); }
    void Send(std::string_view message) override { Messages.emplace_back(message); }

    std::vector<std::string> Messages;
};
