#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

class MFnPlugin : public MFnBase {
public:
  MFnPlugin() = default;
  MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
            const char* requiredApiVersion = "Any", MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kBase; }
  MString vendor(MStatus* status = nullptr) const;
  MString version(MStatus* status = nullptr) const;
  MString apiVersion(MStatus* status = nullptr) const;
  MString name(MStatus* status = nullptr) const;

  MStatus registerFileTranslator(const MString& translatorName, const char* pixmapName, MCreatorFunction creatorFunction,
                                 const char* optionsScriptName = nullptr, const char* defaultOptionsString = nullptr,
                                 bool requiresFullMel = false);
  MStatus deregisterFileTranslator(const MString& translatorName);
  MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                          MCreateSyntaxFunction createSyntaxFunction = nullptr);
  MStatus deregisterCommand(const MString& commandName);

private:
  MString m_vendor;
  MString m_version;
  MString m_apiVersion;
};
