#pragma once
// One export file type and the run of an export to it. The format objects are module-wide and
// rebound to a new target by every Init; Run then drives the options dialog, the format's
// pipeline and its save.

#include <maya/MDagPath.h>

#include <optional>
#include <string>
#include <string_view>

struct ExportSession;

class VExportFormat {
public:
    struct Description {
        // Also the file extension.
        const char* ShortName;
        const char* TranslatorName;
        int FormatKind;
        bool StaticGeometryControls;
        bool UsesProject;
        bool RequiresProject;
    };

    VExportFormat(const Description& description, ExportSession& session);
    virtual ~VExportFormat() = default;

    VExportFormat(const VExportFormat&) = delete;
    VExportFormat& operator=(const VExportFormat&) = delete;

    const char* ShortName() const { return m_description.ShortName; }
    const char* TranslatorName() const { return m_description.TranslatorName; }
    int FormatKind() const { return m_description.FormatKind; }
    bool StaticGeometryControls() const { return m_description.StaticGeometryControls; }
    bool UsesProject() const { return m_description.UsesProject; }
    bool RequiresProject() const { return m_description.RequiresProject; }

    // Binds the session to targetPath. False when the path's extension names another format or a
    // required project is missing; nothing has been written then.
    bool Init(std::string_view targetPath, int unused, bool noPrompt, bool loadSettings, bool selectionOnly);
    // Prepare, Export, Finish; answers Export's result, false when the options were cancelled.
    bool Run();
    bool Prepare();
    bool ShowOptions();
    bool PrepareTextureDir();

    // Deletes the cooked meshes the engine left in the target's data folder.
    void DeleteCookedMeshes();

    virtual std::optional<std::string> ReadSettingsFile(std::string_view targetPath) const = 0;
    virtual void LaunchViewer() = 0;

    bool Interactive() const { return m_interactive; }
    void SetInteractive(bool interactive) { m_interactive = interactive; }
    const std::string& SettingsText() const { return m_settingsText; }
    // Where the node walk starts: invalid (the whole scene) but for the nested export of a node.
    const MDagPath& RootPath() const { return m_rootPath; }
    void SetRootPath(const MDagPath& path) { m_rootPath = path; }

protected:
    virtual bool Export() = 0;
    virtual void Finish() {}

    ExportSession& Session() const { return m_session; }
    // Starts the viewer program (an application setting) on the target with its arguments.
    void StartViewer(const std::string& program, const std::string& arguments) const;

private:
    Description m_description;
    ExportSession& m_session;
    bool m_interactive = true;
    MDagPath m_rootPath;
    std::string m_settingsText;
};
