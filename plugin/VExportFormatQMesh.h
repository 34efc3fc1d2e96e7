#pragma once
// The static mesh format: ".qmesh" with its collision mesh and settings folder.

#include "plugin/VExportFormatWorld.h"

class VMWorld;

class VExportFormatQMesh final : public VExportFormatWorld {
public:
    explicit VExportFormatQMesh(ExportSession& session);

    std::optional<std::string> ReadSettingsFile(std::string_view targetPath) const override;
    void LaunchViewer() override;

protected:
    // Writes the static mesh, the side files, the stored settings and, unless ColMesh is 0, the
    // collision mesh. False when the target's folder is missing or a file could not be written.
    bool Save(VMWorld& world, const std::string& targetPath, const std::string& settingsText) override;
};
