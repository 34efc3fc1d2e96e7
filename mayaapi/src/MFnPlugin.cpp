#include <maya/MFnPlugin.h>

#include "PluginRegistry.h"

namespace {

std::string PluginName(const MObject& object)
{
  const auto* data = dynamic_cast<const standin::PluginData*>(object.standinData());
  return data ? data->name : std::string();
}

}

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* status)
    : m_vendor(vendor), m_version(version), m_apiVersion(requiredApiVersion)
{
  const bool isPlugin = dynamic_cast<const standin::PluginData*>(object.standinData()) != nullptr;
  if (isPlugin)
    m_object = object;
  if (status)
    *status = isPlugin ? MS::kSuccess : MS::kInvalidParameter;
}

MString MFnPlugin::vendor(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_vendor;
}

MString MFnPlugin::version(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_version;
}

MString MFnPlugin::apiVersion(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_apiVersion;
}

MString MFnPlugin::name(MStatus* status) const
{
  if (status)
    *status = m_object.isNull() ? MS::kFailure : MS::kSuccess;
  return MString(PluginName(m_object));
}

MStatus MFnPlugin::registerFileTranslator(const MString& translatorName, const char* pixmapName,
                                          MCreatorFunction creatorFunction, const char* optionsScriptName,
                                          const char* defaultOptionsString, bool requiresFullMel)
{
  if (m_object.isNull() || !creatorFunction || translatorName.isEmpty())
    return MS::kInvalidParameter;
  auto& translators = standin::Registry().translators;
  for (const auto& entry : translators)
    if (entry.info.name == translatorName.asChar())
      return MStatus(MS::kFailure, "Translator " + translatorName.asStdString() + " is already registered");
  standin::TranslatorEntry entry;
  entry.info.name = translatorName.asChar();
  entry.info.pixmap = pixmapName ? pixmapName : "";
  entry.info.optionsScript = optionsScriptName ? optionsScriptName : "";
  entry.info.defaultOptions = defaultOptionsString ? defaultOptionsString : "";
  entry.info.requiresFullMel = requiresFullMel;
  entry.info.plugin = PluginName(m_object);
  entry.instance.reset(static_cast<MPxFileTranslator*>(creatorFunction()));
  if (!entry.instance)
    return MStatus(MS::kFailure, "Translator creator returned nothing");
  translators.push_back(entry);
  return MS::kSuccess;
}

MStatus MFnPlugin::deregisterFileTranslator(const MString& translatorName)
{
  const size_t removed = std::erase_if(standin::Registry().translators, [&](const standin::TranslatorEntry& t) {
    return t.info.name == translatorName.asChar();
  });
  return removed ? MS::kSuccess : MS::kNotFound;
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction, MCreateSyntaxFunction)
{
  if (m_object.isNull() || !creatorFunction || commandName.isEmpty())
    return MS::kInvalidParameter;
  auto& commands = standin::Registry().commands;
  for (const auto& entry : commands)
    if (entry.name == commandName.asChar())
      return MStatus(MS::kFailure, "Command " + commandName.asStdString() + " is already registered");
  commands.push_back(standin::CommandEntry{commandName.asChar(), PluginName(m_object), creatorFunction});
  return MS::kSuccess;
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName)
{
  const size_t removed = std::erase_if(standin::Registry().commands,
                                       [&](const standin::CommandEntry& c) { return c.name == commandName.asChar(); });
  return removed ? MS::kSuccess : MS::kNotFound;
}
