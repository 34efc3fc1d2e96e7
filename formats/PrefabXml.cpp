#include "formats/PrefabXml.h"

#include "base/FileSystem.h"
#include "base/Number.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "base/Version.h"
#include "formats/PrefabShapes.h"
#include "formats/ShapeOrientation.h"
#include "formats/XmlPrinter.h"
#include "model/VMWShapeInstance3D.h"

#include <tinyxml2.h>

#include <functional>
#include <set>

namespace {

using Shapes = std::vector<std::unique_ptr<VMWShapeInstance3D>>;

void EachShape(const Shapes& shapes, const std::function<void(VMWShapeInstance3D&)>& visit)
{
    for (const std::unique_ptr<VMWShapeInstance3D>& shape : shapes) {
        visit(*shape);
        EachShape(shape->Children, visit);
    }
}

bool IdsNeedRenewal(const VMWShapeInstance3DCollection& collection)
{
    std::set<uint64_t> seen;
    bool renew = false;
    EachShape(collection.Shapes, [&](VMWShapeInstance3D& shape) {
        renew = renew || shape.UniqueID == 0 || !seen.insert(shape.UniqueID).second;
    });
    return renew;
}

// The ID source starts from the file's name, so that shapes of different prefabs placed in one
// scene are unlikely to meet, and counts up from there: unique within the file, and the same
// from one export to the next.
void RenewIds(VMWShapeInstance3DCollection& collection, std::string_view path)
{
    if (collection.LastUniqueID == 0)
        collection.LastUniqueID = StableHash(ToLowerAscii(FileNameOf(path))) & ~0xFFFFFull;
    EachShape(collection.Shapes, [&](VMWShapeInstance3D& shape) {
        if (++collection.LastUniqueID == 0)
            ++collection.LastUniqueID;
        shape.UniqueID = collection.LastUniqueID;
    });
}

void WriteShape(VMWShapeInstance3DCollection& owner, VMWShapeInstance3D& shape, tinyxml2::XMLElement& element)
{
    shape.ExchangeXML(owner, element, true);
    for (const std::unique_ptr<VMWShapeInstance3D>& child : shape.Children)
        WriteShape(owner, *child, *element.InsertNewChildElement("shape"));
}

void ReadShapes(VMWShapeInstance3DCollection& owner, tinyxml2::XMLElement& parent, Shapes& shapes)
{
    for (tinyxml2::XMLElement* element = parent.FirstChildElement("shape"); element;
         element = element->NextSiblingElement("shape")) {
        const char* className = element->Attribute("class");
        std::unique_ptr<VMWPrefabShape> shape = NewPrefabShape(className ? className : "");
        if (!shape)
            continue;
        shape->ExchangeXML(owner, *element, false);
        ReadShapes(owner, *element, shape->Children);
        shapes.push_back(std::move(shape));
    }
}

std::string Vector(const float* values)
{
    return FormatFloat(values[0], 4) + "," + FormatFloat(values[1], 4) + "," + FormatFloat(values[2], 4);
}

void DescribeShape(const VMWShapeInstance3D& shape, int depth, std::string& text)
{
    text += std::string(static_cast<size_t>(2 * depth), ' ') + "  " + shape.GetClassName() + " '" + shape.Name +
            "' id " + std::to_string(shape.UniqueID) + " at (" + Vector(shape.Position) + ")";
    if (const auto* mesh = dynamic_cast<const VMWStaticMeshInstance*>(&shape))
        text += ", mesh " + mesh->MeshFileName;
    if (const auto* entity = dynamic_cast<const VMWEntityInstance*>(&shape))
        text += ", model " + entity->ModelFile;
    if (const auto* light = dynamic_cast<const VMWLightInstance*>(&shape)) {
        float forward[3];
        ForwardFromOrientation(light->Orientation, forward);
        text += Format(", colour %u,%u,%u, radius %s, multiplier %s", light->Colour >> 16 & 0xFF,
                       light->Colour >> 8 & 0xFF, light->Colour & 0xFF, FormatFloat(light->Radius, 3).c_str(),
                       FormatFloat(light->Multiplier, 3).c_str());
        if (light->Type != VMWLightInstance::PointType)
            text += ", direction (" + Vector(forward) + ")";
        if (light->Type == VMWLightInstance::SpotType)
            text += ", cone " + FormatFloat(light->SpotAngle, 3);
    }
    text += "\n";
    for (const std::unique_ptr<VMWShapeInstance3D>& child : shape.Children)
        DescribeShape(*child, depth + 1, text);
}

} // namespace

int32_t SavePrefabXML(VMWShapeInstance3DCollection& shapes, std::string_view path)
{
    if (IdsNeedRenewal(shapes))
        RenewIds(shapes, path);
    for (size_t i = 0; i < shapes.Shapes.size(); ++i)
        shapes.Shapes[i]->Prepare(shapes, static_cast<int>(i));
    // Targets given as shapes become IDs now that every shape has its ID.
    EachShape(shapes.Shapes, [&](VMWShapeInstance3D& shape) { shape.LinkTargets(shapes); });

    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = document.NewElement("root");
    if (!root || !document.InsertEndChild(root))
        return PrefabNoRoot;
    tinyxml2::XMLElement* header = root->InsertNewChildElement("header");
    header->SetAttribute("version", "0");
    header->SetAttribute("convertible", shapes.Convertible ? "TRUE" : "FALSE");
    if (!shapes.Name.empty())
        header->SetAttribute("name", shapes.Name.c_str());
    if (!shapes.Category.empty())
        header->SetAttribute("category", shapes.Category.c_str());
    if (!shapes.Description.empty())
        header->SetAttribute("description", shapes.Description.c_str());
    root->InsertNewChildElement("info")->SetAttribute(
        "generatedby", (std::string("Gemvor Version ") + ExporterVersionText).c_str());
    for (const std::unique_ptr<VMWShapeInstance3D>& shape : shapes.Shapes)
        WriteShape(shapes, *shape, *root->InsertNewChildElement("shape"));

    return WriteXmlFile(document, path) ? 0 : PrefabSaveFailed;
}

int32_t LoadPrefabXML(std::string_view path, VMWShapeInstance3DCollection& shapes, std::string& error)
{
    std::string contents;
    if (!ReadWholeFile(path, contents, &error))
        return PrefabUnreadable;
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = nullptr;
    if (document.Parse(contents.data(), contents.size()) != tinyxml2::XML_SUCCESS ||
        !(root = document.FirstChildElement("root"))) {
        error = document.Error() ? document.ErrorStr() : "the file has no \"root\" element";
        return PrefabNotXml;
    }

    shapes.Clear();
    if (const tinyxml2::XMLElement* header = root->FirstChildElement("header")) {
        int version = 0;
        if (const char* text = header->Attribute("version"); text && ParseInt(text, version) && version > 0) {
            error = Format("the file's version %d is newer than this exporter reads", version);
            return PrefabNewerVersion;
        }
        const char* convertible = header->Attribute("convertible");
        shapes.Convertible = convertible && EqualsNoCase(convertible, "TRUE");
        shapes.Name = header->Attribute("name") ? header->Attribute("name") : "";
        shapes.Category = header->Attribute("category") ? header->Attribute("category") : "";
        shapes.Description = header->Attribute("description") ? header->Attribute("description") : "";
    }
    ReadShapes(shapes, *root, shapes.Shapes);
    EachShape(shapes.Shapes, [&](VMWShapeInstance3D& shape) { shape.ResolveReferences(shapes); });
    EachShape(shapes.Shapes, [&](VMWShapeInstance3D& shape) { shape.LinkTargets(shapes); });
    return 0;
}

std::string DescribePrefab(const VMWShapeInstance3DCollection& shapes)
{
    std::string text = "Prefab";
    if (!shapes.Name.empty())
        text += " '" + shapes.Name + "'";
    int count = 0;
    EachShape(shapes.Shapes, [&](VMWShapeInstance3D&) { ++count; });
    text += Format(": %d shapes%s\n", count, shapes.Convertible ? ", convertible" : "");
    for (const std::unique_ptr<VMWShapeInstance3D>& shape : shapes.Shapes)
        DescribeShape(*shape, 0, text);
    return text;
}
