#include <standin/PluginHost.h>

#include <maya/MArgList.h>
#include <maya/MFileObject.h>
#include <maya/MPxCommand.h>

#include "PluginRegistry.h"

#include <algorithm>
#include <memory>

namespace standin {
namespace {

const TranslatorEntry* FindTranslator(const std::string& name)
{
  for (const TranslatorEntry& entry : Registry().translators)
    if (entry.info.name == name)
      return &entry;
  return nullptr;
}

MFileObject FileNamed(const std::string& fileName)
{
  std::string forward = fileName;
  std::replace(forward.begin(), forward.end(), '\\', '/');
  MFileObject file;
  file.setRawFullName(MString(forward));
  return file;
}

struct AccessModeScope {
  explicit AccessModeScope(MPxFileTranslator::FileAccessMode mode) { Registry().accessMode = mode; }
  ~AccessModeScope() { Registry().accessMode = MPxFileTranslator::kUnknownAccessMode; }
  AccessModeScope(const AccessModeScope&) = delete;
  AccessModeScope& operator=(const AccessModeScope&) = delete;
};

}

PluginRegistry& Registry()
{
  static PluginRegistry registry;
  return registry;
}

MStatus LoadPlugin(const std::string& pluginName, PluginEntry initialize, PluginEntry uninitialize)
{
  PluginRegistry& registry = Registry();
  if (!initialize || pluginName.empty())
    return MS::kInvalidParameter;
  for (const LoadedPlugin& plugin : registry.plugins)
    if (plugin.name == pluginName)
      return MStatus(MS::kFailure, "Plug-in " + pluginName + " is already loaded");
  auto data = std::make_shared<PluginData>();
  data->name = pluginName;
  const MObject object{std::shared_ptr<Data>(data)};
  registry.plugins.push_back(LoadedPlugin{pluginName, uninitialize, object});
  const MStatus status = initialize(object);
  if (!status) {
    UnloadPlugin(pluginName);
    return status;
  }
  return MS::kSuccess;
}

MStatus UnloadPlugin(const std::string& pluginName)
{
  PluginRegistry& registry = Registry();
  const auto found = std::find_if(registry.plugins.begin(), registry.plugins.end(),
                                  [&](const LoadedPlugin& p) { return p.name == pluginName; });
  if (found == registry.plugins.end())
    return MS::kNotFound;
  const LoadedPlugin plugin = *found;
  const MStatus status = plugin.uninitialize ? plugin.uninitialize(plugin.object) : MStatus(MS::kSuccess);
  std::erase_if(registry.translators, [&](const TranslatorEntry& t) { return t.info.plugin == pluginName; });
  std::erase_if(registry.commands, [&](const CommandEntry& c) { return c.plugin == pluginName; });
  std::erase_if(registry.plugins, [&](const LoadedPlugin& p) { return p.name == pluginName; });
  return status;
}

std::vector<TranslatorInfo> RegisteredTranslators()
{
  std::vector<TranslatorInfo> list;
  for (const TranslatorEntry& entry : Registry().translators)
    list.push_back(entry.info);
  return list;
}

std::vector<std::string> RegisteredCommands()
{
  std::vector<std::string> list;
  for (const CommandEntry& entry : Registry().commands)
    list.push_back(entry.name);
  return list;
}

MStatus ExportFile(const std::string& translatorName, const std::string& fileName,
                   MPxFileTranslator::FileAccessMode mode, const std::string& options)
{
  const TranslatorEntry* entry = FindTranslator(translatorName);
  if (!entry)
    return MStatus(MS::kNotFound, "No translator named " + translatorName);
  if (mode != MPxFileTranslator::kExportAccessMode && mode != MPxFileTranslator::kExportActiveAccessMode &&
      mode != MPxFileTranslator::kSaveAccessMode)
    return MStatus(MS::kInvalidParameter, "Not a writing access mode");
  const std::shared_ptr<MPxFileTranslator> translator = entry->instance;
  if (!translator->haveWriteMethod())
    return MStatus(MS::kFailure, "Translator " + translatorName + " cannot write files");
  AccessModeScope scope(mode);
  return translator->writer(FileNamed(fileName), MString(options), mode);
}

MStatus ImportFile(const std::string& translatorName, const std::string& fileName, const std::string& options)
{
  const TranslatorEntry* entry = FindTranslator(translatorName);
  if (!entry)
    return MStatus(MS::kNotFound, "No translator named " + translatorName);
  const std::shared_ptr<MPxFileTranslator> translator = entry->instance;
  if (!translator->haveReadMethod())
    return MStatus(MS::kFailure, "Translator " + translatorName + " cannot read files");
  AccessModeScope scope(MPxFileTranslator::kImportAccessMode);
  return translator->reader(FileNamed(fileName), MString(options), MPxFileTranslator::kImportAccessMode);
}

std::vector<std::string> TranslatorsFor(const std::string& fileName)
{
  std::vector<std::string> names;
  const MFileObject file = FileNamed(fileName);
  for (const TranslatorEntry& entry : Registry().translators)
    if (entry.instance->identifyFile(file, nullptr, 0) == MPxFileTranslator::kIsMyFileType)
      names.push_back(entry.info.name);
  return names;
}

MStatus RunCommand(const std::string& commandName, const std::vector<std::string>& args)
{
  for (const CommandEntry& entry : Registry().commands) {
    if (entry.name != commandName)
      continue;
    std::unique_ptr<MPxCommand> command(static_cast<MPxCommand*>(entry.creator()));
    MArgList list;
    for (const std::string& arg : args)
      list.addArg(MString(arg));
    Registry().commandResult.clear();
    return command ? command->doIt(list) : MStatus(MS::kFailure);
  }
  return MStatus(MS::kNotFound, "Cannot find procedure \"" + commandName + "\".");
}

}
