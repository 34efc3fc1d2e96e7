#include "plugin/PrefabProjectFlows.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "harvest/AddNodeAttribute.h"
#include "harvest/NodeAttributes.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/SaveStaticMesh.h"
#include "plugin/VExportFormat.h"
#include "settings/CreateProject.h"
#include "settings/RelativePath.h"
#include "settings/SettingsBlock.h"
#include "ui/VFileDialog.h"

#include <maya/MDagPath.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <optional>

namespace {

const MString ExportToAttribute("zephra_ExportTo");

void UseProject(const std::string& projectFile)
{
    PrefabCommandProject& project = ThePrefabCommandProject();
    project.File = projectFile;
    const std::string folder = DirectoryOf(projectFile);
    project.Directory = folder.empty() ? folder : folder + "\\";
}

// The one selected path whose own node carries the attribute, with its text; nothing when none
// or several do.
std::optional<std::pair<MDagPath, std::string>> SelectedPrefabNode()
{
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    std::optional<std::pair<MDagPath, std::string>> found;
    for (unsigned int i = 0; i < selection.length(); ++i) {
        MDagPath path;
        std::string exportTo;
        if (!selection.getDagPath(i, path) || !GetOwnStringAttribute(ExportToAttribute, path, exportTo))
            continue;
        if (found)
            return std::nullopt;
        found.emplace(path, exportTo);
    }
    return found;
}

} // namespace

void ChoosePrefabProject()
{
    VFileDialogRequest request;
    request.Kind = VFileDialogKind::Open;
    request.Title = "Please select the project file";
    request.Filter = "Project files (*.Project)";
    if (const std::optional<std::string> chosen = TheFileDialog().Choose(request))
        UseProject(*chosen);
}

void CreatePrefabProject()
{
    VFileDialogRequest request;
    request.Kind = VFileDialogKind::Save;
    request.Filter = "Project file (*.Project)";
    request.DefaultExtension = "Project";
    const std::optional<std::string> chosen = TheFileDialog().Choose(request);
    if (!chosen)
        return;
    std::string error;
    if (!CreateProject(*chosen, &error)) {
        MGlobal::displayError(MString(Format("Tessor project '%s' create failed: %s", chosen->c_str(), error.c_str()).c_str()));
        return;
    }
    UseProject(ProjectFileName(*chosen));
}

void EditPrefabNodeSettings()
{
    VExportFormat* const qmesh = FindExportFormat("qmesh");
    if (!qmesh)
        return;
    if (ThePrefabCommandProject().File.empty())
        ChoosePrefabProject();
    const PrefabCommandProject& project = ThePrefabCommandProject();
    if (project.File.empty())
        return;
    std::optional<std::pair<MDagPath, std::string>> node = SelectedPrefabNode();
    if (!node)
        return;
    auto& [path, exportTo] = *node;

    if (exportTo.empty()) {
        VFileDialogRequest request;
        request.Kind = VFileDialogKind::Save;
        request.Filter = "QMesh files (*.qmesh)";
        request.DefaultExtension = "qmesh";
        request.StartFolder = project.Directory;
        const std::optional<std::string> chosen = TheFileDialog().Choose(request);
        if (!chosen)
            return;
        exportTo = RelativePath(*chosen, project.Directory);
        if (!SetNodeStringAttribute(ExportToAttribute, path, MString(exportTo.c_str()), TheMessageBox()))
            return;
    }

    const std::string file = JoinPath(project.Directory, exportTo);
    if (!qmesh->Init(file, 0, false, true, false)) {
        MGlobal::displayError(MString(Format("'%s' is no static mesh file (.qmesh)", file.c_str()).c_str()));
        return;
    }
    ExportSession& session = TheExportSession();
    // The nested export places the mesh at the node, so its options are edited that way.
    session.Options.CenterMethod = 4;
    if (!qmesh->ShowOptions())
        return;
    if (!EqualsNoCase(session.TargetFile, file))
        SetNodeStringAttribute(ExportToAttribute, path, MString(RelativePath(session.TargetFile, project.Directory).c_str()),
                               TheMessageBox());
    StoreSettings(session.TargetFile, SaveSettingsToString(session.Options, session.Animations));
}
