#pragma once
// The plug-in loaded through the stand-in's host with recording platform services, a fresh scene
// and a scratch folder per test.

#include "base/Path.h"
#include "plugin/PluginEntry.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"
#include "report/VLogSink.h"
#include "report/VReportView.h"
#include "settings/IniSettingsStore.h"
#include "settings/VProcessLauncher.h"
#include "tests/UniqueTempFolder.h"
#include "ui/VMessageBox.h"

#include <maya/MPxFileTranslator.h>
#include <maya/MStatus.h>
#include <standin/PluginHost.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

class RecordingLog final : public VLogSink {
public:
    void Send(std::string_view message) override
    {
        Messages.emplace_back(message);
        if (OnMessage)
            OnMessage(message);
    }
    bool Has(std::string_view message) const
    {
        return std::find(Messages.begin(), Messages.end(), message) != Messages.end();
    }

    std::vector<std::string> Messages;
    std::function<void(std::string_view)> OnMessage;
};

class RecordingReportView final : public VReportView {
public:
    void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) override
    {
        Captions.emplace_back(caption);
        Entries.insert(Entries.end(), entries.begin(), entries.end());
    }
    const VReportEntry* Find(std::string_view title) const
    {
        for (const VReportEntry& entry : Entries)
            if (entry.Title == title)
                return &entry;
        return nullptr;
    }

    std::vector<std::string> Captions;
    std::vector<VReportEntry> Entries;
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

class RefusingLauncher final : public VProcessLauncher {
public:
    bool StartProcess(std::string_view commandLine, std::string*) override
    {
        Started.emplace_back(commandLine);
        return false;
    }
    int ShellOpen(std::string_view file, std::string_view, std::string_view) override
    {
        Started.emplace_back(file);
        return 2;
    }
    std::vector<std::string> Started;
};

class PluginFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        standin::NewScene();
        m_store.Load();
        Services.SettingsStore = &m_store;
        Services.ProcessLauncher = &Launcher;
        Services.MessageBox = &MessageBoxes;
        Services.ReportView = &Report;
        Services.FiledReportView = &Report;
        // Each page costs a picture of the asset; the tests of the page switch it on.
        Services.ReportPage = false;
        Start();
        SetLogWindowLocator([this] { return &Log; });
    }
    void TearDown() override
    {
        Stop();
        SetLogSink(nullptr);
        SetLogWindowLocator({});
    }

    // Restarts the module with the current Services, as Maya loading the plug-in again would.
    void Start()
    {
        StartPluginModule(Services);
        ASSERT_TRUE(standin::LoadPlugin("Kestrel", initializePlugin, uninitializePlugin));
    }
    void Stop()
    {
        standin::UnloadPlugin("Kestrel");
        StopPluginModule();
    }

    // Maya's forward-slash file name of a file in the scratch folder.
    std::string MayaName(const std::string& relative) const { return (m_folder / relative).generic_string(); }
    std::filesystem::path Native(const std::string& relative) const { return m_folder / relative; }
    bool Has(const std::string& relative) const { return std::filesystem::exists(Native(relative)); }
    std::string Read(const std::string& relative) const
    {
        std::ifstream in(Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    void Write(const std::string& relative, const std::string& contents) const
    {
        std::filesystem::create_directories(Native(relative).parent_path());
        std::ofstream(Native(relative), std::ios::binary) << contents;
    }
    // The system path the exporter reads files under.
    std::string SystemPath(const std::string& relative) const { return FromNativePath(Native(relative).string()); }

    MStatus ExportAll(const std::string& relative)
    {
        return standin::ExportFile("Zephra_Static_Mesh", MayaName(relative), MPxFileTranslator::kExportAccessMode);
    }
    MStatus ExportSelection(const std::string& relative)
    {
        return standin::ExportFile("Zephra_Static_Mesh", MayaName(relative),
                                   MPxFileTranslator::kExportActiveAccessMode);
    }
    // Option lines applied over the stored settings of every export from now on.
    void SetOptions(const std::string& block)
    {
        Stop();
        Services.OptionOverrides = block;
        Start();
    }

    PluginServices Services;
    RecordingLog Log;
    RecordingReportView Report;
    RecordingMessageBox MessageBoxes;
    RefusingLauncher Launcher;

private:
    UniqueTempFolder m_scratch{"kestrel_plugin"};
    const std::filesystem::path& m_folder = m_scratch.Native();
    IniSettingsStore m_store {FromNativePath((m_folder / "settings.ini").string())};
};
