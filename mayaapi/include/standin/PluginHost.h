#pragma once

#include <maya/MObject.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MStatus.h>

#include <string>
#include <vector>

// What Maya does with a plug-in module: loads it through its entry points, keeps the translators and commands
// it registers, and runs their writer, reader and doIt on request. The command line drives plug-ins through it.
namespace standin {

using PluginEntry = MStatus (*)(MObject);

struct TranslatorInfo {
  std::string name;
  std::string pixmap;
  std::string optionsScript;
  std::string defaultOptions;
  bool requiresFullMel = false;
  std::string plugin;
};

MStatus LoadPlugin(const std::string& pluginName, PluginEntry initialize, PluginEntry uninitialize);
MStatus UnloadPlugin(const std::string& pluginName);
std::vector<TranslatorInfo> RegisteredTranslators();
std::vector<std::string> RegisteredCommands();

// File > Export All (kExportAccessMode) or Export Selection (kExportActiveAccessMode) through the named translator.
MStatus ExportFile(const std::string& translatorName, const std::string& fileName,
                   MPxFileTranslator::FileAccessMode mode, const std::string& options = "");
MStatus ImportFile(const std::string& translatorName, const std::string& fileName, const std::string& options = "");
// The translators whose identifyFile claims the file, in registration order.
std::vector<std::string> TranslatorsFor(const std::string& fileName);
MStatus RunCommand(const std::string& commandName, const std::vector<std::string>& args);

}
