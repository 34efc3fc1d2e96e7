#include "formats/DescribeModel.h"

#include "base/TextUtil.h"
#include "formats/DescribeText.h"
#include "model/VMModel.h"

#include <algorithm>

namespace {

std::string DescribeSkeleton(const VMModel& model)
{
    if (!model.Skeleton)
        return "Skeleton: none\n";
    const VMSkeleton& skeleton = *model.Skeleton;
    std::string text = Format("Skeleton: %d bones\n", skeleton.Bones.Count());
    for (const VMBone* bone : skeleton.Bones) {
        text += Format("  %d \"%s\"", bone->Index, bone->Name.c_str());
        text += bone->Parent ? Format(", parent %d \"%s\"\n", bone->Parent->Index, bone->Parent->Name.c_str())
                             : std::string(", root\n");
    }
    return text;
}

std::string DescribeVertices(const VMModel& model)
{
    std::string components = "position, normal";
    if (model.HasTangents)
        components += ", tangent";
    if (model.HasColours)
        components += ", colour";
    components += ", uv";
    if (model.HasSecondUV)
        components += ", second uv";
    int counts[VMSkinVertex::MaxInfluences + 1] = {};
    for (const VMSkinVertex* vertex : model.Vertices)
        ++counts[std::min<uint32_t>(vertex->InfluenceCount, VMSkinVertex::MaxInfluences)];
    std::string text = Format("Vertices: %d (%s)\nInfluences per vertex:", model.Vertices.Count(), components.c_str());
    for (int count = 0; count <= VMSkinVertex::MaxInfluences; ++count)
        text += Format(" %d: %d%s", count, counts[count], count < VMSkinVertex::MaxInfluences ? "," : "\n");
    return text;
}

std::string DescribeSubmeshes(const VMModel& model)
{
    std::string runs;
    int count = 0;
    for (int first = 0; first < model.Faces.Count();) {
        const VMMaterial* material = model.Faces[first]->Material();
        int end = first + 1;
        while (end < model.Faces.Count() && model.Faces[end]->Material() == material)
            ++end;
        runs += Format("  %d: material %d, triangles %d+%d\n", count++, material ? material->Index : -1, first,
                       end - first);
        first = end;
    }
    return Format("Triangles: %d\nSubmeshes: %d\n", model.Faces.Count(), count) + runs;
}

} // namespace

std::string DescribeModel(const VMModel& model)
{
    std::string text = "Model file\n" + DescribeSkeleton(model);
    text += Format("Materials: %d\n", model.Materials.Count());
    for (const VMMaterial* material : model.Materials)
        text += DescribeMaterial(static_cast<size_t>(material->Index), *material);
    text += DescribeVertices(model) + DescribeSubmeshes(model);
    text += "Bounds: " + DescribePoint(model.Box.Min) + " - " + DescribePoint(model.Box.Max) +
            Format(", radius %g\n", static_cast<double>(model.VisibilityRadius));
    text += "Collision box: " + DescribePoint(model.CollisionBox.Min) + " - " + DescribePoint(model.CollisionBox.Max) +
            "\n";
    return text;
}
