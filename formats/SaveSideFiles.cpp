#include "formats/SaveSideFiles.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/MaterialsXml.h"
#include "formats/ResourcesXml.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"

namespace {

bool MakeSettingsFolder(const std::string& folder)
{
    if (CreateDirectories(folder))
        return true;
    SetLastError(Format("Failed to create settings directory : %s.\r\n", ShownPath(folder).c_str()));
    return false;
}

bool SaveXmlFiles(const VMMeshBase& container, const std::string& folder, uint32_t flags, const VResourceList& resources)
{
    if ((flags & SaveFlagMaterialGroups) != 0 &&
        !SaveMaterialsXml(container.Materials, JoinPath(folder, "materials.xml"), flags))
        return false;
    if ((flags & SaveFlagResources) != 0 && !SaveResourcesXml(resources, JoinPath(folder, "resources.xml"))) {
        SetLastError(Format("Error writing XML file '%s'", ShownPath(JoinPath(folder, "resources.xml")).c_str()));
        return false;
    }
    return true;
}

} // namespace

std::string SettingsFolderOf(std::string_view targetPath)
{
    return std::string(targetPath) + "_data";
}

bool SaveSideFiles(const VMWorld& world, std::string_view targetPath, const VSaveParams& params)
{
    const uint32_t flags = params.Flags;
    if ((flags & SaveFlagSideFiles) == 0)
        return true;
    const std::string folder = SettingsFolderOf(targetPath);
    if (!MakeSettingsFolder(folder))
        return false;
    if (!SaveXmlFiles(world, folder, flags, (flags & SaveFlagResources) ? CollectResources(world) : VResourceList {}))
        return false;
    if ((flags & SaveFlagVisibility) != 0 && params.SaveVisibility)
        return params.SaveVisibility(world, folder);
    return true;
}

bool SaveSideFiles(const VMModel& model, std::string_view targetPath, uint32_t flags)
{
    if ((flags & SaveFlagSideFiles) == 0)
        return true;
    const std::string folder = SettingsFolderOf(targetPath);
    if (!MakeSettingsFolder(folder))
        return false;
    return SaveXmlFiles(model, folder, flags,
                        (flags & SaveFlagResources) ? CollectResources(model, targetPath) : VResourceList {});
}
