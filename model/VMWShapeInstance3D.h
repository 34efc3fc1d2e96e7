#pragma once
// The base of the prefab shape classes. The concrete classes, their properties and their XML
// form live with the prefab writer; the world only needs to own and scale them.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tinyxml2 {
class XMLElement;
}

class VMWShapeInstance3DCollection;

class VMWShapeInstance3D {
public:
    VMWShapeInstance3D() = default;
    VMWShapeInstance3D(const VMWShapeInstance3D&) = delete;
    VMWShapeInstance3D& operator=(const VMWShapeInstance3D&) = delete;
    virtual ~VMWShapeInstance3D() = default;

    // Writes the "class" attribute and the properties into a "shape" element, or reads them back.
    virtual bool ExchangeXML(VMWShapeInstance3DCollection& owner, tinyxml2::XMLElement& element, bool write) = 0;
    virtual const char* GetClassName() const = 0;
    // Before saving: gives an unnamed shape its default name and prepares the children.
    virtual void Prepare(VMWShapeInstance3DCollection& owner, int index);
    virtual void ResolveReferences(VMWShapeInstance3DCollection& owner);
    virtual void LinkTargets(VMWShapeInstance3DCollection& owner);
    // Multiplies the position by the factor and scales every child.
    virtual void Scale(float factor);

    uint64_t UniqueID = 0;
    std::string Name;
    std::vector<std::unique_ptr<VMWShapeInstance3D>> Children;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Orientation[3] = {0.0f, 0.0f, 0.0f};
    float Scaling[3] = {1.0f, 1.0f, 1.0f};
    std::string ScriptFile;
    bool Export = true;
    bool Visible = true;

protected:
    // The "Shape%03i"-style name that Prepare gives an unnamed shape.
    virtual std::string DefaultName(int index) const;
};

class VMWShapeInstance3DCollection {
public:
    std::vector<std::unique_ptr<VMWShapeInstance3D>> Shapes;
    // The source of fresh unique IDs; 0 while none has been handed out.
    uint64_t LastUniqueID = 0;
    // The file header's texts; empty ones are not written.
    bool Convertible = false;
    std::string Name;
    std::string Category;
    std::string Description;

    void Scale(float factor);
    void Clear();
};
