#include "formats/MaterialsXml.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/ParameterString.h"
#include "formats/SaveParams.h"
#include "formats/TransparencyModes.h"
#include "formats/XmlPrinter.h"
#include "formats/chunk/LastError.h"

#include <tinyxml2.h>

#include <string>

namespace {

using tinyxml2::XMLDocument;
using tinyxml2::XMLElement;

void SetOrRemove(XMLElement& element, const char* name, const std::string& value)
{
    if (value.empty())
        element.DeleteAttribute(name);
    else
        element.SetAttribute(name, value.c_str());
}

void SetFloat(XMLElement& element, const char* name, float value)
{
    element.SetAttribute(name, Format("%f", static_cast<double>(value)).c_str());
}

void WriteShader(XMLElement& element, const VMMaterial& material)
{
    if (material.ShaderAssignments.empty())
        return;
    const VMShaderAssignment& shader = *material.ShaderAssignments.front();
    XMLElement* shaderElement = element.FirstChildElement("Shader");
    if (shaderElement == nullptr)
        shaderElement = element.InsertNewChildElement("Shader");
    shaderElement->SetAttribute("library", shader.EffectLibrary.c_str());
    shaderElement->SetAttribute("effect", shader.EffectName.c_str());
    shaderElement->SetAttribute("paramstring", MakeParameterString(shader).c_str());
}

void WriteGroups(XMLElement& element, const VMMaterial& material, uint32_t flags)
{
    if (flags & SaveFlagTextures) {
        SetOrRemove(element, "diffuse", material.DiffuseTexture);
        SetOrRemove(element, "normalmap", material.NormalMap);
        SetOrRemove(element, "specularmap", material.SpecularMap);
    }
    if (flags & SaveFlagTransparency) {
        if (const char* mode = TransparencyModeName(material.Transparency))
            element.SetAttribute("transparency", mode);
    }
    if (flags & SaveFlagDoubleSided)
        element.SetAttribute("doublesided", material.DoubleSided ? "TRUE" : "FALSE");
    if (flags & SaveFlagSpecular) {
        SetFloat(element, "specmul", material.SpecularMultiplier);
        SetFloat(element, "specexp", material.SpecularExponent);
    }
    if (flags & SaveFlagParallax) {
        SetFloat(element, "parallaxscale", material.ParallaxScale);
        SetFloat(element, "parallaxbias", material.ParallaxBias);
    }
    if (flags & SaveFlagLightmap) {
        element.SetAttribute("lightmapsize", Format("%i,%i", material.LightmapSize[0], material.LightmapSize[1]).c_str());
        SetFloat(element, "lightmapgran", material.LightmapGranularity);
        element.SetAttribute("lightmapID", Format("%d", material.LightmapID).c_str());
    }
    if (flags & SaveFlagShader)
        WriteShader(element, material);
}

bool NamesMaterial(const char* name, const VMOwnedList<VMMaterial>& materials)
{
    for (const VMMaterial* material : materials) {
        if (EqualsNoCase(name, material->Name))
            return true;
    }
    return false;
}

XMLElement* FindMaterialElement(XMLElement& list, const std::string& name)
{
    for (XMLElement* child = list.FirstChildElement("Material"); child; child = child->NextSiblingElement("Material")) {
        const char* childName = child->Attribute("name");
        if (childName != nullptr && EqualsNoCase(childName, name))
            return child;
    }
    return nullptr;
}

void RemoveVanished(XMLElement& list, const VMOwnedList<VMMaterial>& materials)
{
    for (XMLElement* child = list.FirstChildElement("Material"); child;) {
        XMLElement* next = child->NextSiblingElement("Material");
        const char* name = child->Attribute("name");
        if (name != nullptr && !NamesMaterial(name, materials))
            list.DeleteChild(child);
        child = next;
    }
}

XMLElement& MaterialList(XMLDocument& document, const VMOwnedList<VMMaterial>& materials)
{
    XMLElement* root = document.RootElement();
    if (XMLElement* list = root ? root->FirstChildElement("Materials") : nullptr) {
        RemoveVanished(*list, materials);
        return *list;
    }
    if (root == nullptr)
        root = document.InsertEndChild(document.NewElement("root"))->ToElement();
    return *root->InsertNewChildElement("Materials");
}

} // namespace

void MergeMaterials(XMLDocument& document, const VMOwnedList<VMMaterial>& materials, uint32_t flags)
{
    XMLElement& list = MaterialList(document, materials);
    for (const VMMaterial* material : materials) {
        if (XMLElement* element = FindMaterialElement(list, material->Name)) {
            WriteGroups(*element, *material, flags);
            continue;
        }
        XMLElement* element = list.InsertNewChildElement("Material");
        element->SetAttribute("name", material->Name.c_str());
        WriteGroups(*element, *material, flags | SaveFlagMaterialGroups);
    }
}

bool SaveMaterialsXml(const VMOwnedList<VMMaterial>& materials, std::string_view xmlPath, uint32_t flags)
{
    const std::string path(xmlPath);
    XMLDocument document(true, XmlReadWhitespace);
    if (FileExists(path)) {
        // An empty file is as broken as any other that does not parse: the user may have
        // emptied it by mistake, and rebuilding it would lose their edits for good.
        std::string contents;
        if (!ReadWholeFile(path, contents) || document.Parse(contents.data(), contents.size()) != tinyxml2::XML_SUCCESS) {
            SetLastError(Format("Error reading XML file '%s'. Please fix or delete this file", ShownPath(path).c_str()));
            return false;
        }
    }
    MergeMaterials(document, materials, flags);

    if (!WriteXmlFile(document, path)) {
        SetLastError(Format("Error writing XML file '%s'", ShownPath(path).c_str()));
        return false;
    }
    return true;
}
