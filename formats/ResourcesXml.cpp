#include "formats/ResourcesXml.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/XmlPrinter.h"
#include "model/VMMeshBase.h"
#include "model/VMModel.h"

#include <algorithm>

namespace {

struct KindInfo {
    const char* Manager;
    int32_t Priority;
};

KindInfo InfoOf(int kind)
{
    switch (kind) {
    case ResourceTexture:
        return {"Textures", 100};
    case ResourceEffectLibrary:
        return {"EffectLibs", 10};
    case ResourceAnimation:
        return {"Animations", 5};
    default:
        return {"", 0};
    }
}

std::string_view WithoutLeadingSeparator(std::string_view filename)
{
    if (!filename.empty() && (filename.front() == '\\' || filename.front() == '/'))
        filename.remove_prefix(1);
    return filename;
}

std::string JoinCustomInts(const std::vector<int32_t>& values)
{
    std::string text;
    for (size_t i = 0; i < values.size() && i < 4; ++i) {
        if (i > 0)
            text += ',';
        text += Format("%i", values[i]);
    }
    return text;
}

} // namespace

void AddResource(VResourceList& list, int kind, std::string_view filename)
{
    if (filename.empty())
        return;
    const KindInfo info = InfoOf(kind);
    const bool listed = std::any_of(list.Resources.begin(), list.Resources.end(), [&](const VResource& resource) {
        return EqualsNoCase(resource.Filename, filename) && EqualsNoCase(resource.Manager, info.Manager);
    });
    if (listed)
        return;
    VResource resource;
    resource.Manager = info.Manager;
    resource.Filename = std::string(filename);
    resource.Priority = info.Priority;
    list.Resources.push_back(std::move(resource));
}

VResourceList CollectResources(const VMMeshBase& container)
{
    VResourceList list;
    for (const VMMaterial* material : container.Materials) {
        AddResource(list, ResourceTexture, material->DiffuseTexture);
        AddResource(list, ResourceTexture, material->NormalMap);
        AddResource(list, ResourceTexture, material->SpecularMap);
        for (const auto& shader : material->ShaderAssignments)
            AddResource(list, ResourceEffectLibrary, shader->EffectLibrary);
    }
    return list;
}

VResourceList CollectResources(const VMModel& model, std::string_view modelPath)
{
    VResourceList list = CollectResources(static_cast<const VMMeshBase&>(model));
    if (!model.BoneAnimations.IsEmpty() || !model.VertexAnimations.IsEmpty())
        AddResource(list, ResourceAnimation, WithoutExtension(FileNameOf(modelPath)) + ".anim");
    return list;
}

void SortResources(VResourceList& list)
{
    std::stable_sort(list.Resources.begin(), list.Resources.end(), [](const VResource& a, const VResource& b) {
        if (a.Priority != b.Priority)
            return a.Priority > b.Priority;
        return a.Order < b.Order;
    });
}

std::string MakeResourcesXml(VResourceList list)
{
    SortResources(list);
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = document.NewElement("root");
    document.InsertEndChild(root);
    tinyxml2::XMLElement* resources = root->InsertNewChildElement("Resources");
    resources->SetAttribute("Version", 1);
    resources->SetAttribute("Count", static_cast<int>(list.Resources.size()));
    resources->SetAttribute("PathType", list.PathType == ResourcePathRelative ? "Relative" : "Project");
    for (const VResource& resource : list.Resources) {
        tinyxml2::XMLElement* element = resources->InsertNewChildElement("Resource");
        element->SetAttribute("Manager", resource.Manager.empty() ? "FILE" : resource.Manager.c_str());
        element->SetAttribute("Filename", std::string(WithoutLeadingSeparator(resource.Filename)).c_str());
        if (!resource.CustomInts.empty())
            element->SetAttribute("CustomInt", JoinCustomInts(resource.CustomInts).c_str());
        element->SetAttribute("Size", resource.Size);
    }
    return PrintXml(document);
}

bool SaveResourcesXml(const VResourceList& list, std::string_view xmlPath)
{
    return WriteFileAtomically(xmlPath, MakeResourcesXml(list));
}
