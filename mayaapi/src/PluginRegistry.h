#pragma once

#include "SceneGraph.h"

#include <maya/MPxFileTranslator.h>
#include <maya/MTypes.h>
#include <standin/PluginHost.h>

#include <memory>
#include <string>
#include <vector>

namespace standin {

struct PluginData : Data {
  PluginData() : Data(MFn::kBase) {}
  std::string name;
};

// Maya makes a translator once, when it is registered, and keeps that instance until it is deregistered; plug-ins
// rely on this when their creator reads state set just before the registration call.
struct TranslatorEntry {
  TranslatorInfo info;
  std::shared_ptr<MPxFileTranslator> instance;
};

struct CommandEntry {
  std::string name;
  std::string plugin;
  MCreatorFunction creator = nullptr;
};

struct LoadedPlugin {
  std::string name;
  PluginEntry uninitialize = nullptr;
  MObject object;
};

// Maya's plug-in manager: one per process, like the application it stands for.
struct PluginRegistry {
  std::vector<LoadedPlugin> plugins;
  std::vector<TranslatorEntry> translators;
  std::vector<CommandEntry> commands;
  MPxFileTranslator::FileAccessMode accessMode = MPxFileTranslator::kUnknownAccessMode;
  std::string commandResult;
};

PluginRegistry& Registry();

}
