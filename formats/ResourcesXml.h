#pragma once
// resources.xml: the files an asset depends on, for the engine's editor. Rewritten whole on
// every save.
//
// <root><Resources Version="1" Count="n" PathType="Project|Relative">
//   <Resource Manager="Textures" Filename="..." CustomInt="1,2" Size="1"/>...</Resources></root>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class VMMeshBase;
class VMModel;

enum VResourceKind : int {
    ResourceFile = 0,
    ResourceTexture = 1,
    ResourceEffectLibrary = 2,
    ResourceAnimation = 3,
};

struct VResource {
    // The kind's name; empty for a plain file, written as "FILE".
    std::string Manager;
    std::string Filename;
    // Up to four values; written only when there are any.
    std::vector<int32_t> CustomInts;
    int32_t Size = 1;
    int32_t Priority = 0;
    // Orders resources of equal priority, smallest first.
    int32_t Order = 0;
};

enum VResourcePathType : int32_t {
    ResourcePathProject = 0,
    ResourcePathRelative = 1,
};

struct VResourceList {
    int32_t PathType = ResourcePathProject;
    std::vector<VResource> Resources;
};

// Appends one resource of the kind (with its name and priority, size 1) unless filename is
// empty or the list already has the same file under the same kind name, both compared
// without regard to case.
void AddResource(VResourceList& list, int kind, std::string_view filename);

// Every material's diffuse texture, normal map and specular map, then its shaders' libraries.
VResourceList CollectResources(const VMMeshBase& container);
// The materials' resources, then the animation file ("hero.anim" beside "hero.model") when the
// model has animations.
VResourceList CollectResources(const VMModel& model, std::string_view modelPath);

// Highest priority first, then smallest order; the order of equal resources is kept.
void SortResources(VResourceList& list);
// The document text, sorted.
std::string MakeResourcesXml(VResourceList list);
// Replaces the file whole; false on failure.
bool SaveResourcesXml(const VResourceList& list, std::string_view xmlPath);
