#include "plugin/VExportFormatPrefab.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/SaveStaticMesh.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/VIssueKind.h"
#include "settings/RelativePath.h"
#include "settings/SettingsFile.h"

namespace {

constexpr VExportFormat::Description PrefabDescription {
    .ShortName = "PREFAB",
    .TranslatorName = "Zephra_Scene_Prefab",
    .FormatKind = kFormatKindStatic,
    .StaticGeometryControls = true,
    .UsesProject = true,
    .RequiresProject = true,
};

// What a nested export changes in the module-wide session, put back once it is done.
struct SessionStrings {
    explicit SessionStrings(const ExportSession& session)
        : Options(session.Options)
        , TargetFile(session.TargetFile)
        , TargetDirectory(session.TargetDirectory)
        , ProjectFile(session.ProjectFile)
        , ProjectDirectory(session.ProjectDirectory)
        , TextureDirectory(session.TextureDirectory)
        , BaseDirectory(session.BaseDirectory)
        , NoPrompt(session.NoPrompt)
        , Format(session.Format)
        , FormatKind(session.FormatKind)
    {
    }

    void RestoreInto(ExportSession& session) const
    {
        session.Options = Options;
        session.TargetFile = TargetFile;
        session.TargetDirectory = TargetDirectory;
        session.ProjectFile = ProjectFile;
        session.ProjectDirectory = ProjectDirectory;
        session.TextureDirectory = TextureDirectory;
        session.BaseDirectory = BaseDirectory;
        session.NoPrompt = NoPrompt;
        session.Format = Format;
        session.FormatKind = FormatKind;
    }

    VExportOptions Options;
    std::string TargetFile;
    std::string TargetDirectory;
    std::string ProjectFile;
    std::string ProjectDirectory;
    std::string TextureDirectory;
    std::string BaseDirectory;
    bool NoPrompt;
    VExportFormat* Format;
    int FormatKind;
};

// Every static mesh instance the prefab makes starts alike: at the origin, fully visible, lit and
// colliding, casting static shadows only.
std::unique_ptr<VMWStaticMeshInstance> WorldInstance(const std::string& meshFileName)
{
    auto instance = std::make_unique<VMWStaticMeshInstance>();
    instance->Name = "world";
    instance->UniqueID = StableHash(instance->Name);
    instance->MeshFileName = meshFileName;
    return instance;
}

bool HasGeometry(const VMWorld& world)
{
    return !world.Polygons.IsEmpty() || !world.TriLists.IsEmpty();
}

} // namespace

VExportFormatPrefab::VExportFormatPrefab(ExportSession& session)
    : VExportFormatWorld(PrefabDescription, session)
    , m_prefabState(session.Harvest)
{
}

std::optional<std::string> VExportFormatPrefab::ReadSettingsFile(std::string_view targetPath) const
{
    return ::ReadSettingsFile(targetPath, false);
}

bool VExportFormatPrefab::Save(VMWorld& world, const std::string& targetPath, const std::string& settingsText)
{
    if (!DirectoryExists(DirectoryOf(targetPath))) {
        ModuleReport().AddIssue(IssueFileNotSaved);
        return false;
    }
    const ExportSession& session = Session();
    const VExportOptions& options = session.Options;
    const VSaveParams params = StaticSaveParams(options);
    if (options.CreateDataDir)
        StoreSettings(targetPath, settingsText);

    VMWShapeInstance3DCollection& shapes = world.Shapes;
    bool saved = true;
    if (HasGeometry(world)) {
        const std::string meshFile = RelativePath(WithoutExtension(targetPath) + ".qmesh", session.ProjectDirectory);
        shapes.Shapes.insert(shapes.Shapes.begin(), WorldInstance(meshFile));
        saved = SaveStaticMesh(world, JoinPath(session.ProjectDirectory, meshFile), params, options, session.Harvest.MeshNodes);
    }
    // The pipeline scales the geometry by MeshFactor but leaves lights and the walk's instances
    // where they were; their shapes take the factor here so that they stay where the geometry is.
    for (std::unique_ptr<VMWShapeInstance3D>& instance : m_prefabState.Shapes.Shapes) {
        instance->Scale(options.MeshFactor);
        shapes.Shapes.push_back(std::move(instance));
    }
    m_prefabState.Shapes.Shapes.clear();
    for (const VMLight* light : world.Lights) {
        std::unique_ptr<VMWLightInstance> shape = MakeLightShape(*light);
        shape->UniqueID = StableHash(shape->Name);
        shape->Scale(options.MeshFactor);
        shapes.Shapes.push_back(std::move(shape));
    }

    saved = SavePrefabXML(shapes, targetPath) == 0 && saved;
    LogPrint("SavePrefab(%s) returned %i\r\n", ShownPath(targetPath).c_str(), saved ? 1 : 0);
    if (HasGeometry(world))
        shapes.Shapes.erase(shapes.Shapes.begin());
    return saved;
}

void VExportFormatPrefab::Finish()
{
    // Copied: a nested export runs this very session and may not touch the list it walks.
    const std::vector<VDictEntry<NodeReference>> references = m_prefabState.NodeReferences;
    for (const VDictEntry<NodeReference>& reference : references)
        ExportNodeReference(reference.Name, reference.Value.Node);
    VExportFormatWorld::Finish();
}

void VExportFormatPrefab::ExportNodeReference(const std::string& fileName, const MDagPath& node)
{
    const std::string extension = ExtensionOf(fileName);
    VExportFormat* format = extension.empty() ? nullptr : FindExportFormat(std::string_view(extension).substr(1));
    if (!format)
        return;
    ExportSession& session = Session();
    const std::string path = IsAbsolutePath(fileName) ? fileName : JoinPath(session.ProjectDirectory, fileName);
    CreateDirectories(DirectoryOf(path));

    const SessionStrings saved(session);
    if (format->Init(path, 0, true, true, false)) {
        format->SetRootPath(node);
        format->SetInteractive(false);
        session.Options.MeshFactor = saved.Options.MeshFactor;
        session.Options.WarnIfMoreThan64kVerts = saved.Options.WarnIfMoreThan64kVerts;
        session.Options.CenterMethod = 4;
        format->Run();
    }
    saved.RestoreInto(session);
}
