#include "plugin/PluginEntry.h"

#include "base/Version.h"
#include "plugin/CreateProj.h"
#include "plugin/ImportExportScene.h"
#include "plugin/KestrelCommand.h"
#ifdef KESTREL_MAYA_QT
#include "plugin/MayaDialogs.h"
#endif
#include "plugin/PluginModule.h"
#include "plugin/VExportFormat.h"

#include <maya/MFnPlugin.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <array>

const char* MApiVersion = "850";

namespace {

struct Entry {
    const char* Name;
    MCreatorFunction Creator;
};

constexpr std::array ExportFormatNames {"prefab", "qmesh", "model"};

// Maya's creators take no arguments and may run long after registration, so each format has a
// creator of its own instead of one reading a pointer set while registering.
template <size_t Index>
void* CreateExportTranslator()
{
    return new ImportExportScene(FindExportFormat(ExportFormatNames[Index]));
}

constexpr std::array ExportTranslators {
    Entry {ExportFormatNames[0], CreateExportTranslator<0>},
    Entry {ExportFormatNames[1], CreateExportTranslator<1>},
    Entry {ExportFormatNames[2], CreateExportTranslator<2>},
};
constexpr const char* ProjectTranslatorName = "Tessor_Project";
constexpr std::array Commands {
    Entry {"ZephraNodeProperties", nodeProperties::creator},
    Entry {"ZephraPrefab", PrefabShapeCommand::creator},
};

} // namespace

MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object, "Orvalle GmbH", ExporterVersionText, "Any");
#ifdef KESTREL_MAYA_QT
    UseMayaDialogs();
#endif
    for (const Entry& translator : ExportTranslators) {
        if (const VExportFormat* format = FindExportFormat(translator.Name))
            plugin.registerFileTranslator(format->TranslatorName(), "none", translator.Creator, nullptr, nullptr,
                                          false);
    }
    plugin.registerFileTranslator(ProjectTranslatorName, "none", createProj::creator);
    for (const Entry& command : Commands)
        plugin.registerCommand(command.Name, command.Creator);
    return MS::kSuccess;
}

MStatus uninitializePlugin(MObject object)
{
    MFnPlugin plugin(object, "Unknown", "Unknown", "Any");
    for (const char* name : ExportFormatNames) {
        if (const VExportFormat* format = FindExportFormat(name))
            plugin.deregisterFileTranslator(format->TranslatorName());
    }
    plugin.deregisterFileTranslator(ProjectTranslatorName);
    for (const Entry& command : Commands)
        plugin.deregisterCommand(command.Name);
    return MS::kSuccess;
}
