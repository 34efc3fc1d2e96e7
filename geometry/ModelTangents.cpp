#include "geometry/ModelTangents.h"

#include "geometry/TangentFrames.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <vector>

namespace {

constexpr float SmallestLength = 1.1920929e-7f;
constexpr float MirroredTangentLength = 1.7320508f;

// Divided by its length unless that is too small to trust.
void NormaliseIfLong(float v[3])
{
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (length >= SmallestLength) {
        for (int axis = 0; axis < 3; ++axis)
            v[axis] /= length;
    }
}

void StoreTangent(VMSkinVertex& vertex, const TangentFrameVertex& frame)
{
    float t[3] = {frame.Tangent[0], frame.Tangent[1], frame.Tangent[2]};
    float b[3] = {frame.Binormal[0], frame.Binormal[1], frame.Binormal[2]};
    NormaliseIfLong(t);
    NormaliseIfLong(b);
    const float* n = vertex.Normal;
    const float nt = n[0] * t[0] + n[1] * t[1] + n[2] * t[2];
    float tangent[3] = {t[0] - n[0] * nt, t[1] - n[1] * nt, t[2] - n[2] * nt};
    NormaliseIfLong(tangent);
    const float cross[3] = {n[1] * t[2] - n[2] * t[1], n[2] * t[0] - n[0] * t[2], n[0] * t[1] - n[1] * t[0]};
    if (cross[0] * b[0] + cross[1] * b[1] + cross[2] * b[2] > 0.0f) {
        for (float& component : tangent)
            component *= MirroredTangentLength;
    }
    if (!std::isfinite(tangent[0]) || !std::isfinite(tangent[1]) || !std::isfinite(tangent[2])) {
        tangent[0] = 1.0f;
        tangent[1] = tangent[2] = 0.0f;
    }
    std::copy_n(tangent, 3, vertex.Tangent);
}

} // namespace

int ComputeModelTangents(VMModel& model)
{
    model.Vertices.Compact();
    model.Enumerate();
    const size_t vertexCount = static_cast<size_t>(model.Vertices.Count());
    TangentFrames frames;
    std::vector<std::unique_ptr<VMSkinVertex>> copies;
    try {
        std::vector<TangentFrameVertex> input(vertexCount);
        size_t i = 0;
        for (const VMSkinVertex* vertex : model.Vertices) {
            TangentFrameVertex& record = input[i++];
            std::copy_n(vertex->Position, 3, record.Position);
            std::copy_n(vertex->Normal, 3, record.Normal);
            record.S = vertex->BaseUV[0];
            record.T = vertex->BaseUV[1];
        }
        std::vector<uint32_t> indices;
        indices.reserve(static_cast<size_t>(model.Faces.Count()) * 3);
        for (const VMFace* face : model.Faces) {
            for (int corner = 0; corner < 3; ++corner) {
                const bool triangle = face->CornerCount() == 3;
                // Faces of other sizes point outside the list, which leaves them out.
                indices.push_back(triangle ? face->Corner(corner)->Index : static_cast<uint32_t>(vertexCount));
            }
        }
        frames = GenerateTangentFrames(input, indices);
        for (size_t k = vertexCount; k < frames.Vertices.size(); ++k) {
            auto copy = VMModel::NewVertex();
            if (!copy)
                return -301;
            const VMSkinVertex& source = *model.Vertices.begin()[frames.Sources[k]];
            static_cast<VMVertexData&>(*copy) = source;
            copy->Source = source.Source != nullptr ? source.Source : model.Vertices.begin()[frames.Sources[k]];
            copies.push_back(std::move(copy));
        }
        model.Vertices.Reserve(static_cast<int>(frames.Vertices.size()));
    } catch (const std::bad_alloc&) {
        return -301;
    }

    for (std::unique_ptr<VMSkinVertex>& copy : copies)
        model.Vertices.Add(copy.release());
    const auto vertices = model.Vertices.begin();
    for (size_t k = 0; k < frames.Vertices.size(); ++k) {
        VMSkinVertex& vertex = *vertices[k];
        const TangentFrameVertex& frame = frames.Vertices[k];
        std::copy_n(frame.Position, 3, vertex.Position);
        std::copy_n(frame.Normal, 3, vertex.Normal);
        vertex.BaseUV[0] = frame.S;
        vertex.BaseUV[1] = frame.T;
        StoreTangent(vertex, frame);
    }
    int faceIndex = 0;
    for (VMFace* face : model.Faces) {
        if (face->CornerCount() == 3) {
            for (int corner = 0; corner < 3; ++corner)
                face->SetCorner(corner, vertices[frames.Indices[3 * static_cast<size_t>(faceIndex) + corner]]);
        }
        ++faceIndex;
    }
    model.Enumerate();
    for (size_t k = vertexCount; k < frames.Vertices.size(); ++k) {
        VMSkinVertex& copy = *vertices[k];
        const VMSkinVertex& source = *vertices[frames.Sources[k]];
        for (uint32_t slot = 0; slot < source.InfluenceCount; ++slot)
            AttachVertex(source.InfluenceBones[slot], &copy, source.InfluenceWeights[slot]);
        // The copy lies where its source lies, so it has the same place in every bone's space.
        std::copy_n(&source.SlotPositions[0][0], 3 * VMSkinVertex::MaxInfluences, &copy.SlotPositions[0][0]);
        std::copy_n(source.SlotNormal, 3, copy.SlotNormal);
    }
    model.HasTangents = 1;
    return 0;
}
