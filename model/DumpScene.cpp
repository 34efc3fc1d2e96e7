#include "model/DumpScene.h"

#include "base/TextUtil.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"

#include <memory>
#include <type_traits>
#include <unordered_map>

namespace {

// List positions of the records of one list, so that a dump never shows an address.
class Positions {
public:
    template <class List>
    explicit Positions(const List& list)
    {
        int index = 0;
        for (const auto* record : list)
            m_positions.emplace(record, index++);
    }

    int Of(const void* record) const
    {
        if (record == nullptr)
            return -1;
        const auto found = m_positions.find(record);
        // -2 marks a reference to a record outside the container.
        return found == m_positions.end() ? -2 : found->second;
    }

private:
    std::unordered_map<const void*, int> m_positions;
};

std::string Vector(const float* values, int count)
{
    std::string text = "(";
    for (int i = 0; i < count; ++i)
        text += Format(i == 0 ? "%g" : " %g", static_cast<double>(values[i]));
    return text + ")";
}

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

template <class Range>
std::string References(const Range& records, const Positions& positions)
{
    std::string text = "[";
    bool first = true;
    for (const auto* record : records) {
        text += Format(first ? "%d" : " %d", positions.Of(record));
        first = false;
    }
    return text + "]";
}

void DumpMeshBase(const VMMeshBase& mesh, std::string& out)
{
    out += Format("components tangents %d colours %d seconduv %d\n", mesh.HasTangents, mesh.HasColours,
                  mesh.HasSecondUV);
    out += Format("materials %d\n", mesh.Materials.Count());
    for (int i = 0; i < mesh.Materials.Count(); ++i) {
        const VMMaterial* m = mesh.Materials[i];
        if (m == nullptr) {
            out += Format("  material %d empty\n", i);
            continue;
        }
        out += Format("  material %d %s kind %u transparency %u flags %u doublesided %d model %d lighting %d fourth %d"
                      " nostrip %d uses %u\n",
                      i, Quoted(m->Name).c_str(), m->Kind, m->Transparency, m->FlagWord, m->DoubleSided, m->ModelFlag,
                      m->LightingFlag, m->FourthFlag, m->NoStripping, m->UseCount);
        out += Format("    textures diffuse %s normal %s specular %s userdata %s shaders %zu\n",
                      Quoted(m->DiffuseTexture).c_str(), Quoted(m->NormalMap).c_str(), Quoted(m->SpecularMap).c_str(),
                      Quoted(m->UserData).c_str(), m->ShaderAssignments.size());
        out += Format("    specular %g %g ambient (%u %u %u) diffuse (%u %u %u) uv %s\n",
                      static_cast<double>(m->SpecularMultiplier), static_cast<double>(m->SpecularExponent),
                      m->AmbientColour[0], m->AmbientColour[1], m->AmbientColour[2], m->DiffuseColour[0],
                      m->DiffuseColour[1], m->DiffuseColour[2], Vector(m->UVTransform, 4).c_str());
    }
}

void DumpVertexData(const VMVertexData& v, const Positions& materials, std::string& out)
{
    out += Format(" pos %s normal %s uv %s uv2 %s tangent %s colour (%u %u %u %u) material %d",
                  Vector(v.Position, 3).c_str(), Vector(v.Normal, 3).c_str(), Vector(v.BaseUV, 2).c_str(),
                  Vector(v.SecondUV, 2).c_str(), Vector(v.Tangent, 3).c_str(), v.Colour[0], v.Colour[1], v.Colour[2],
                  v.Colour[3], materials.Of(v.MaterialLink));
}

template <class T>
void DumpPrimitives(const char* kind, const char* plural, const VMOwnedList<T>& list, const Positions& vertices,
                    const Positions& materials,
                    const Positions& areas, std::string& out)
{
    out += Format("%s %d\n", plural, list.Count());
    for (int i = 0; i < list.Count(); ++i) {
        const T* p = list[i];
        if (p == nullptr) {
            out += Format("  %s %d empty\n", kind, i);
            continue;
        }
        out += Format("  %s %d corners %s material %d node %u areas %s name %s\n", kind, i,
                      References(p->Corners, vertices).c_str(), materials.Of(p->Material()), p->SourceNode,
                      References(p->Owners, areas).c_str(), Quoted(p->Name).c_str());
    }
}

void DumpVisAreas(const VMWorld& world, const Positions& polygons, const Positions& triLists, const Positions& planes,
                  std::string& out)
{
    out += Format("visareas %d\n", world.VisAreas.Count());
    for (int i = 0; i < world.VisAreas.Count(); ++i) {
        const VMVisArea* area = world.VisAreas[i];
        if (area == nullptr) {
            out += Format("  visarea %d empty\n", i);
            continue;
        }
        out += Format("  visarea %d %s box %s %s planes %s polygons %s trilists %s patches %d heightfields %d\n", i,
                      Quoted(area->Name).c_str(), Vector(area->Box.Min, 3).c_str(), Vector(area->Box.Max, 3).c_str(),
                      References(area->Planes, planes).c_str(), References(area->Polygons(), polygons).c_str(),
                      References(area->TriLists(), triLists).c_str(), area->Patches().Count(),
                      area->Heightfields().Count());
    }
    out += Format("visplanes %d\n", world.VisPlanes.Count());
    for (int i = 0; i < world.VisPlanes.Count(); ++i) {
        const VMVisPlane* plane = world.VisPlanes[i];
        if (plane != nullptr)
            out += Format("  visplane %d normal (%g %g %g) d %g\n", i, plane->Normal[0], plane->Normal[1],
                          plane->Normal[2], plane->D);
    }
}

template <class T>
void DumpOutlines(const char* kind, const VMOwnedList<T>& list, const Positions& areas, std::string& out)
{
    out += Format("%ss %d\n", kind, list.Count());
    for (int i = 0; i < list.Count(); ++i) {
        const T* outline = list[i];
        if (outline == nullptr)
            continue;
        out += Format("  %s %d %s", kind, i, Quoted(outline->Name).c_str());
        if constexpr (std::is_same_v<T, VMVisPortal>)
            out += Format(" front %d back %d outside %d", areas.Of(outline->Front), areas.Of(outline->Back),
                          outline->LeadsOutside);
        for (const std::unique_ptr<VMVertex>& corner : outline->Corners) {
            out += ' ';
            out += corner ? Vector(corner->Position, 3) : std::string("none");
        }
        out += "\n";
    }
}

void DumpBones(const VMModel& model, const Positions& vertices, const Positions& bones, std::string& out)
{
    if (!model.Skeleton) {
        out += "skeleton none\n";
        return;
    }
    const VMSkeleton& skeleton = *model.Skeleton;
    out += Format("skeleton bones %d root %d\n", skeleton.Bones.Count(), bones.Of(skeleton.Root));
    for (int i = 0; i < skeleton.Bones.Count(); ++i) {
        const VMBone* bone = skeleton.Bones[i];
        if (bone == nullptr)
            continue;
        out += Format("  bone %d %s parent %d anchored %d global %s local %s vertices %s\n", i,
                      Quoted(bone->Name).c_str(), bones.Of(bone->Parent), bone->Anchored,
                      Vector(bone->GlobalTransform.M, 12).c_str(), Vector(bone->LocalTransform.M, 12).c_str(),
                      References(bone->Vertices, vertices).c_str());
    }
}

void DumpAnimations(const char* kind, const VMOwnedList<VMAnimation>& animations, const Positions& vertices,
                    const Positions& bones, std::string& out)
{
    out += Format("%ss %d\n", kind, animations.Count());
    for (int i = 0; i < animations.Count(); ++i) {
        const VMAnimation* a = animations[i];
        if (a == nullptr)
            continue;
        out += Format("  %s %d %s keys %d events %d motiondelta %d compensate %d axis (%d %d %d) move (%d %d %d)\n",
                      kind, i, Quoted(a->Name).c_str(), a->FrameCount(), a->Events.Count(), a->ExtractMotionDelta,
                      a->CompensateRotation, a->RotationAxis[0], a->RotationAxis[1], a->RotationAxis[2], a->Move[0],
                      a->Move[1], a->Move[2]);
        for (const VMEvent* event : a->Events)
            out += Format("    event %g %s\n", static_cast<double>(event->Time), Quoted(event->Name).c_str());
        for (int k = 0; k < a->FrameCount(); ++k) {
            const VMFrameKey& key = a->Keys[static_cast<size_t>(k)];
            out += Format("    key %d time %g duration %d", k, static_cast<double>(key.Time), key.DurationMs);
            if (const VMAnimFrame* frame = a->Frames[k]) {
                out += Format(" bones %s motion %s %s", References(frame->Bones(), bones).c_str(),
                              Vector(frame->MotionTranslation, 3).c_str(), Vector(frame->MotionRotation, 3).c_str());
            }
            if (const VMVertexTrack* track = a->VertexTracks[k]) {
                out += Format(" deltas %zu", track->Deltas.size());
                for (const VMVertexDelta& delta : track->Deltas)
                    out += Format(" %d:%s", vertices.Of(delta.Vertex), Vector(delta.Position, 3).c_str());
            }
            out += "\n";
        }
    }
}

} // namespace

std::string DumpScene(const VMWorld& world)
{
    const Positions materials(world.Materials);
    const Positions vertices(world.Vertices);
    const Positions polygons(world.Polygons);
    const Positions triLists(world.TriLists);
    const Positions areas(world.VisAreas);
    const Positions planes(world.VisPlanes);

    std::string out = "world\n";
    out += Format("bounds %s %s corners %d\n", Vector(world.Bounds.Min, 3).c_str(), Vector(world.Bounds.Max, 3).c_str(),
                  world.CornerReferenceCount);
    DumpMeshBase(world, out);
    out += Format("vertices %d\n", world.Vertices.Count());
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        const VMVertex* v = world.Vertices[i];
        if (v == nullptr) {
            out += Format("  vertex %d empty\n", i);
            continue;
        }
        out += Format("  vertex %d", i);
        DumpVertexData(*v, materials, out);
        out += Format(" merge %d\n", vertices.Of(v->MergeLink));
    }
    DumpPrimitives("polygon", "polygons", world.Polygons, vertices, materials, areas, out);
    DumpPrimitives("trilist", "trilists", world.TriLists, vertices, materials, areas, out);
    DumpPrimitives("patch", "patches", world.Patches, vertices, materials, areas, out);
    DumpPrimitives("heightfield", "heightfields", world.Heightfields, vertices, materials, areas, out);
    out += Format("lights %d\n", world.Lights.Count());
    for (int i = 0; i < world.Lights.Count(); ++i) {
        const VMLight* light = world.Lights[i];
        if (light != nullptr)
            out += Format("  light %d %s type %u pos %s colour %s intensity %g radius %g\n", i,
                          Quoted(light->Name).c_str(), light->Type, Vector(light->Position, 3).c_str(),
                          Vector(light->Colour, 3).c_str(), static_cast<double>(light->Intensity),
                          static_cast<double>(light->Radius));
    }
    DumpVisAreas(world, polygons, triLists, planes, out);
    DumpOutlines("portal", world.Portals, areas, out);
    DumpOutlines("antiportal", world.AntiPortals, areas, out);
    out += Format("shapes %zu\n", world.Shapes.Shapes.size());
    for (size_t i = 0; i < world.Shapes.Shapes.size(); ++i) {
        if (!world.Shapes.Shapes[i])
            continue;
        const VMWShapeInstance3D& shape = *world.Shapes.Shapes[i];
        out += Format("  shape %zu %s %s pos %s children %zu\n", i, shape.GetClassName(), Quoted(shape.Name).c_str(),
                      Vector(shape.Position, 3).c_str(), shape.Children.size());
    }
    return out;
}

std::string DumpScene(const VMModel& model)
{
    const Positions materials(model.Materials);
    const Positions vertices(model.Vertices);
    const Positions bones = model.Skeleton ? Positions(model.Skeleton->Bones) : Positions(VMOwnedList<VMBone>());

    std::string out = "model\n";
    out += Format("box %s %s collision %s %s radius %g bones %d vertexanimation %d blended %d\n",
                  Vector(model.Box.Min, 3).c_str(), Vector(model.Box.Max, 3).c_str(),
                  Vector(model.CollisionBox.Min, 3).c_str(), Vector(model.CollisionBox.Max, 3).c_str(),
                  static_cast<double>(model.VisibilityRadius), model.HasBones, model.HasVertexAnimation, model.Blended);
    DumpMeshBase(model, out);
    out += Format("vertices %d\n", model.Vertices.Count());
    for (int i = 0; i < model.Vertices.Count(); ++i) {
        const VMSkinVertex* v = model.Vertices[i];
        if (v == nullptr) {
            out += Format("  vertex %d empty\n", i);
            continue;
        }
        out += Format("  vertex %d", i);
        DumpVertexData(*v, materials, out);
        out += " influences";
        for (uint32_t slot = 0; slot < v->InfluenceCount && slot < VMSkinVertex::MaxInfluences; ++slot)
            out += Format(" %d:%g", bones.Of(v->InfluenceBones[slot]), static_cast<double>(v->InfluenceWeights[slot]));
        out += "\n";
    }
    out += Format("faces %d\n", model.Faces.Count());
    for (int i = 0; i < model.Faces.Count(); ++i) {
        const VMFace* face = model.Faces[i];
        if (face != nullptr)
            out += Format("  face %d corners %s material %d\n", i, References(face->Corners(), vertices).c_str(),
                          materials.Of(face->Material()));
    }
    DumpBones(model, vertices, bones, out);
    DumpAnimations("boneanimation", model.BoneAnimations, vertices, bones, out);
    DumpAnimations("vertexanimation", model.VertexAnimations, vertices, bones, out);
    return out;
}
