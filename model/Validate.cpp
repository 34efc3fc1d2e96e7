#include "model/Validate.h"

#include "base/TextUtil.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

template <class T>
std::unordered_set<const T*> Members(const VMOwnedList<T>& list)
{
    std::unordered_set<const T*> members;
    for (const T* record : list)
        if (record != nullptr)
            members.insert(record);
    return members;
}

template <class T>
void CheckNoEmptySlots(const VMOwnedList<T>& list, const char* listName, std::vector<std::string>& problems)
{
    for (int i = 0; i < list.Count(); ++i)
        if (list[i] == nullptr)
            problems.push_back(Format("%s slot %d is empty", listName, i));
}

class MaterialUseCheck {
public:
    MaterialUseCheck(const VMOwnedList<VMMaterial>& materials, std::vector<std::string>& problems)
        : m_materials(Members(materials))
        , m_problems(problems)
    {
    }

    void Use(const VMMaterial* material, const char* kind, int index)
    {
        if (material == nullptr)
            return;
        if (m_materials.count(material) == 0) {
            m_problems.push_back(Format("%s %d uses a material that is not in the material list", kind, index));
            return;
        }
        ++m_uses[material];
    }

    void CheckLink(const VMMaterial* material, int vertexIndex)
    {
        if (material != nullptr && m_materials.count(material) == 0)
            m_problems.push_back(Format("vertex %d links a material that is not in the material list", vertexIndex));
    }

    void CheckCounts(const VMOwnedList<VMMaterial>& materials)
    {
        for (int i = 0; i < materials.Count(); ++i) {
            const VMMaterial* material = materials[i];
            if (material == nullptr)
                continue;
            const auto found = m_uses.find(material);
            const unsigned uses = found == m_uses.end() ? 0u : found->second;
            if (material->UseCount != uses)
                m_problems.push_back(Format("material %d has use count %u but %u users", i, material->UseCount, uses));
        }
    }

private:
    std::unordered_set<const VMMaterial*> m_materials;
    std::unordered_map<const VMMaterial*, unsigned> m_uses;
    std::vector<std::string>& m_problems;
};

template <class T>
void CheckPrimitives(const VMOwnedList<T>& list, const char* kind, const std::unordered_set<const VMVertex*>& vertices,
                     const std::unordered_set<const VMVisArea*>& areas, MaterialUseCheck& materials,
                     std::vector<std::string>& problems)
{
    for (int i = 0; i < list.Count(); ++i) {
        const T* primitive = list[i];
        if (primitive == nullptr)
            continue;
        for (int corner = 0; corner < primitive->CornerCount(); ++corner)
            if (vertices.count(primitive->Corners[static_cast<size_t>(corner)]) == 0)
                problems.push_back(Format("%s %d corner %d is not a vertex of the world", kind, i, corner));
        for (const VMVisArea* area : primitive->Owners) {
            if (areas.count(area) == 0)
                problems.push_back(Format("%s %d is owned by a vis area that is not in the world", kind, i));
            else if (!area->Lists(primitive))
                problems.push_back(Format("%s %d names a vis area that does not list it", kind, i));
        }
        materials.Use(primitive->Material(), kind, i);
    }
}

template <class T>
void CheckAreaList(const VPListT<T>& listed, const std::unordered_set<const T*>& members, const char* kind,
                   int areaIndex,
                   const VMVisArea* area, std::vector<std::string>& problems)
{
    for (const T* primitive : listed) {
        if (members.count(primitive) == 0)
            problems.push_back(Format("vis area %d lists a %s that is not in the world", areaIndex, kind));
        else if (primitive->Owners.Find(area) < 0)
            problems.push_back(Format("vis area %d lists a %s that does not name it as owner", areaIndex, kind));
    }
}

void CheckVisAreas(const VMWorld& world, std::vector<std::string>& problems)
{
    const auto polygons = Members(world.Polygons);
    const auto triLists = Members(world.TriLists);
    const auto patches = Members(world.Patches);
    const auto heightfields = Members(world.Heightfields);
    const auto planes = Members(world.VisPlanes);
    for (int i = 0; i < world.VisAreas.Count(); ++i) {
        const VMVisArea* area = world.VisAreas[i];
        if (area == nullptr)
            continue;
        CheckAreaList(area->Polygons(), polygons, "polygon", i, area, problems);
        CheckAreaList(area->TriLists(), triLists, "tri-list", i, area, problems);
        CheckAreaList(area->Patches(), patches, "patch", i, area, problems);
        CheckAreaList(area->Heightfields(), heightfields, "heightfield", i, area, problems);
        const int sum = area->Polygons().Count() + area->TriLists().Count() + area->Patches().Count()
                      + area->Heightfields().Count();
        if (area->ElementCount() != sum)
            problems.push_back(Format("vis area %d counts %d elements but lists %d", i, area->ElementCount(), sum));
        for (const VMVisPlane* plane : area->Planes)
            if (planes.count(plane) == 0)
                problems.push_back(Format("vis area %d has a plane that is not in the world's plane list", i));
    }
}

void CheckPortals(const VMWorld& world, std::vector<std::string>& problems)
{
    const auto areas = Members(world.VisAreas);
    for (int i = 0; i < world.Portals.Count(); ++i) {
        const VMVisPortal* portal = world.Portals[i];
        if (portal == nullptr)
            continue;
        if ((portal->Front != nullptr && areas.count(portal->Front) == 0)
            || (portal->Back != nullptr && areas.count(portal->Back) == 0))
            problems.push_back(Format("portal %d leads to a vis area that is not in the world", i));
        for (const std::unique_ptr<VMVertex>& corner : portal->Corners)
            if (!corner)
                problems.push_back(Format("portal %d has an empty corner", i));
    }
}

void CheckWorldVertices(const VMWorld& world, const std::unordered_set<const VMVertex*>& vertices,
                        MaterialUseCheck& materials, std::vector<std::string>& problems)
{
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        const VMVertex* vertex = world.Vertices[i];
        if (vertex == nullptr)
            continue;
        materials.CheckLink(vertex->MaterialLink, i);
        if (vertex->MergeLink != nullptr && vertices.count(vertex->MergeLink) == 0)
            problems.push_back(Format("vertex %d links a vertex that is not in the world", i));
    }
}

void CheckTriListCorners(const VMWorld& world, std::vector<std::string>& problems)
{
    for (int i = 0; i < world.TriLists.Count(); ++i) {
        const VMTriList* triList = world.TriLists[i];
        if (triList != nullptr && triList->CornerCount() % 3 != 0)
            problems.push_back(Format("tri-list %d has %d corners, not a multiple of 3", i, triList->CornerCount()));
    }
}

void CheckModelVertices(const VMModel& model, const std::unordered_set<const VMBone*>& bones,
                        MaterialUseCheck& materials, std::vector<std::string>& problems)
{
    for (int i = 0; i < model.Vertices.Count(); ++i) {
        const VMSkinVertex* vertex = model.Vertices[i];
        if (vertex == nullptr)
            continue;
        materials.CheckLink(vertex->MaterialLink, i);
        if (vertex->InfluenceCount > VMSkinVertex::MaxInfluences) {
            problems.push_back(Format("vertex %d has %u influences", i, vertex->InfluenceCount));
            continue;
        }
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot) {
            const VMBone* bone = vertex->InfluenceBones[slot];
            const uint32_t entry = vertex->InfluenceEntries[slot];
            if (bones.count(bone) == 0)
                problems.push_back(Format("vertex %d slot %u names a bone that is not in the skeleton", i, slot));
            else if (entry >= bone->Vertices.size() || bone->Vertices[entry] != vertex)
                problems.push_back(Format("vertex %d slot %u names a bone that does not list it there", i, slot));
            else if (!(bone->Weights[entry] == vertex->InfluenceWeights[slot]))
                problems.push_back(Format("vertex %d slot %u weighs differently on its bone", i, slot));
        }
    }
}

void CheckSkeleton(const VMModel& model, const std::unordered_set<const VMSkinVertex*>& vertices,
                   const std::unordered_set<const VMBone*>& bones, std::vector<std::string>& problems)
{
    if (!model.Skeleton)
        return;
    CheckNoEmptySlots(model.Skeleton->Bones, "bone", problems);
    if (model.Skeleton->Root != nullptr && bones.count(model.Skeleton->Root) == 0)
        problems.push_back("the root bone is not in the skeleton");
    for (int i = 0; i < model.Skeleton->Bones.Count(); ++i) {
        const VMBone* bone = model.Skeleton->Bones[i];
        if (bone == nullptr)
            continue;
        if (bone->Parent != nullptr && bones.count(bone->Parent) == 0)
            problems.push_back(Format("bone %d has a parent that is not in the skeleton", i));
        if (bone->Vertices.size() != bone->Weights.size())
            problems.push_back(Format("bone %d has %zu vertices but %zu weights", i, bone->Vertices.size(),
                                      bone->Weights.size()));
        for (const VMSkinVertex* vertex : bone->Vertices) {
            if (vertices.count(vertex) == 0) {
                problems.push_back(Format("bone %d lists a vertex that is not in the model", i));
                continue;
            }
            const uint32_t slots = std::min<uint32_t>(vertex->InfluenceCount, VMSkinVertex::MaxInfluences);
            const auto end = vertex->InfluenceBones + slots;
            if (std::find(vertex->InfluenceBones, end, bone) == end)
                problems.push_back(Format("bone %d lists a vertex that does not name it", i));
        }
    }
}

void CheckAnimations(const VMOwnedList<VMAnimation>& animations, const char* kind, bool vertexAnimation,
                     const std::unordered_set<const VMSkinVertex*>& vertices, std::vector<std::string>& problems)
{
    CheckNoEmptySlots(animations, kind, problems);
    for (int i = 0; i < animations.Count(); ++i) {
        const VMAnimation* animation = animations[i];
        if (animation == nullptr)
            continue;
        const int contentCount = vertexAnimation ? animation->VertexTracks.Count() : animation->Frames.Count();
        if (contentCount != animation->FrameCount())
            problems.push_back(
                Format("%s %d has %d keys but %d frames", kind, i, animation->FrameCount(), contentCount));
        for (const VMVertexTrack* track : animation->VertexTracks) {
            if (track == nullptr)
                continue;
            for (const VMVertexDelta& delta : track->Deltas)
                if (vertices.count(delta.Vertex) == 0)
                    problems.push_back(Format("%s %d moves a vertex that is not in the model", kind, i));
        }
    }
}

} // namespace

std::vector<std::string> Validate(const VMWorld& world)
{
    std::vector<std::string> problems;
    CheckNoEmptySlots(world.Materials, "material", problems);
    CheckNoEmptySlots(world.Vertices, "vertex", problems);
    CheckNoEmptySlots(world.Polygons, "polygon", problems);
    CheckNoEmptySlots(world.TriLists, "tri-list", problems);
    CheckNoEmptySlots(world.Patches, "patch", problems);
    CheckNoEmptySlots(world.Heightfields, "heightfield", problems);
    CheckNoEmptySlots(world.Lights, "light", problems);
    CheckNoEmptySlots(world.VisAreas, "vis area", problems);
    CheckNoEmptySlots(world.VisPlanes, "vis plane", problems);
    CheckNoEmptySlots(world.Portals, "portal", problems);
    CheckNoEmptySlots(world.AntiPortals, "anti-portal", problems);

    const auto vertices = Members(world.Vertices);
    const auto areas = Members(world.VisAreas);
    MaterialUseCheck materials(world.Materials, problems);
    CheckPrimitives(world.Polygons, "polygon", vertices, areas, materials, problems);
    CheckPrimitives(world.TriLists, "tri-list", vertices, areas, materials, problems);
    CheckPrimitives(world.Patches, "patch", vertices, areas, materials, problems);
    CheckPrimitives(world.Heightfields, "heightfield", vertices, areas, materials, problems);
    CheckTriListCorners(world, problems);
    CheckWorldVertices(world, vertices, materials, problems);
    materials.CheckCounts(world.Materials);
    CheckVisAreas(world, problems);
    CheckPortals(world, problems);
    return problems;
}

std::vector<std::string> Validate(const VMModel& model)
{
    std::vector<std::string> problems;
    CheckNoEmptySlots(model.Materials, "material", problems);
    CheckNoEmptySlots(model.Vertices, "vertex", problems);
    CheckNoEmptySlots(model.Faces, "face", problems);

    const auto vertices = Members(model.Vertices);
    std::unordered_set<const VMBone*> bones;
    if (model.Skeleton)
        bones = Members(model.Skeleton->Bones);

    MaterialUseCheck materials(model.Materials, problems);
    for (int i = 0; i < model.Faces.Count(); ++i) {
        const VMFace* face = model.Faces[i];
        if (face == nullptr)
            continue;
        for (int corner = 0; corner < face->CornerCount(); ++corner)
            if (vertices.count(face->Corner(corner)) == 0)
                problems.push_back(Format("face %d corner %d is not a vertex of the model", i, corner));
        materials.Use(face->Material(), "face", i);
    }
    CheckModelVertices(model, bones, materials, problems);
    materials.CheckCounts(model.Materials);
    CheckSkeleton(model, vertices, bones, problems);
    CheckAnimations(model.BoneAnimations, "bone animation", false, vertices, problems);
    CheckAnimations(model.VertexAnimations, "vertex animation", true, vertices, problems);
    return problems;
}
