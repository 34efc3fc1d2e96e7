#pragma once
// The prefab format: an XML scene fragment inside an editor project. Its own geometry becomes the
// static mesh "world" beside it, its lights become light shapes, and every node carrying
// "zephra_ExportTo" becomes an instance of the static mesh or model that a nested export of the
// node's subtree writes.

#include "plugin/VExportFormatWorld.h"
#include "plugin/VPrefabExportState.h"

class VExportFormatPrefab final : public VExportFormatWorld {
public:
    explicit VExportFormatPrefab(ExportSession& session);

    VExportState& GetExportState() override { return m_prefabState; }
    std::optional<std::string> ReadSettingsFile(std::string_view targetPath) const override;
    // A prefab opens in the editor, not in a viewer.
    void LaunchViewer() override {}

protected:
    // The nested exports of the node references, then the static finish.
    void Finish() override;
    // The world's static mesh (when there is geometry) and the prefab file. False when the
    // target's folder is missing or a file could not be written.
    bool Save(VMWorld& world, const std::string& targetPath, const std::string& settingsText) override;

private:
    void ExportNodeReference(const std::string& fileName, const MDagPath& node);

    VPrefabExportState m_prefabState;
};
