#pragma once
// The plug-in loaded through the stand-in's host for one command, and everything it was handed,
// let go in reverse order.

#include "plugin/PluginEntry.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"

#include <standin/PluginHost.h>

class LoadedPlugin {
public:
    explicit LoadedPlugin(const PluginServices& services) { StartPluginModule(services); }
    ~LoadedPlugin()
    {
        standin::UnloadPlugin(Name);
        StopPluginModule();
        SetLogSink(nullptr);
    }
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    bool Load() { return static_cast<bool>(standin::LoadPlugin(Name, initializePlugin, uninitializePlugin)); }

private:
    static constexpr const char* Name = "Kestrel";
};
