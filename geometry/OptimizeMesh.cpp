#include "geometry/OptimizeMesh.h"

#include "geometry/FixModelID.h"
#include "geometry/MemberTable.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"
#include "report/GeometryLog.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace {

constexpr int ProgressStep = 2000;

// Where a vertex's animation differs from its own position and normal: one entry per vertex
// track that moves it, in track order. Entries equal to the vertex's own values are left out, as
// they read the same as no entry.
struct TrackEntry {
    uint32_t Track;
    float Position[3];
    float Normal[3];
};

class TrackSignatures {
public:
    explicit TrackSignatures(const VMModel& model)
    {
        const size_t count = static_cast<size_t>(model.Vertices.Count());
        m_begin.assign(count + 1, 0);
        // Two passes over the tracks: count each vertex's entries, then fill them in place.
        for (int pass = 0; pass < 2; ++pass) {
            std::vector<uint32_t> fill;
            if (pass == 1) {
                for (size_t i = 0; i < count; ++i)
                    m_begin[i + 1] += m_begin[i];
                m_entries.resize(m_begin[count]);
                fill.assign(m_begin.begin(), m_begin.end() - 1);
            }
            std::vector<uint32_t> lastTrack(count, UINT32_MAX);
            uint32_t track = 0;
            ForEachTrack(model, [&](const VMVertexTrack& vertexTrack) {
                for (const VMVertexDelta& delta : vertexTrack.Deltas) {
                    const int index = IndexOf(model, delta.Vertex);
                    // A second entry for the same vertex in one track is not read.
                    if (index < 0 || lastTrack[static_cast<size_t>(index)] == track ||
                        SameAsOwn(delta, *delta.Vertex))
                        continue;
                    lastTrack[static_cast<size_t>(index)] = track;
                    if (pass == 0) {
                        ++m_begin[static_cast<size_t>(index) + 1];
                        continue;
                    }
                    TrackEntry& entry = m_entries[fill[static_cast<size_t>(index)]++];
                    entry.Track = track;
                    std::memcpy(entry.Position, delta.Position, sizeof entry.Position);
                    std::memcpy(entry.Normal, delta.Normal, sizeof entry.Normal);
                }
                ++track;
            });
        }
    }

    const TrackEntry* Begin(int vertex) const { return m_entries.data() + m_begin[static_cast<size_t>(vertex)]; }
    const TrackEntry* End(int vertex) const { return m_entries.data() + m_begin[static_cast<size_t>(vertex) + 1]; }

    // Over the vertex tracks of every animation, in a fixed order.
    template <class Model, class Visit>
    static void ForEachTrack(Model& model, Visit visit)
    {
        for (auto* animations : {&model.BoneAnimations, &model.VertexAnimations}) {
            for (VMAnimation* animation : *animations) {
                for (VMVertexTrack* track : animation->VertexTracks)
                    visit(*track);
            }
        }
    }

    // The vertex's list position when it is one of the model's (numbered before this is built).
    static int IndexOf(const VMModel& model, const VMSkinVertex* vertex)
    {
        if (vertex == nullptr)
            return -1;
        const int index = static_cast<int>(vertex->Index);
        return model.Vertices.Get(index) == vertex ? index : -1;
    }

private:
    static bool SameAsOwn(const VMVertexDelta& delta, const VMSkinVertex& vertex)
    {
        for (int axis = 0; axis < 3; ++axis) {
            if (!(delta.Position[axis] == vertex.Position[axis] && delta.Normal[axis] == vertex.Normal[axis]))
                return false;
        }
        return true;
    }

    std::vector<uint32_t> m_begin;
    std::vector<TrackEntry> m_entries;
};

// A vertex's influences in a canonical order, so that equal sets compare and hash alike.
struct InfluenceSet {
    uint32_t Count = 0;
    const VMBone* Bones[VMSkinVertex::MaxInfluences] = {};
    float Weights[VMSkinVertex::MaxInfluences] = {};

    explicit InfluenceSet(const VMSkinVertex& vertex)
    {
        Count = std::min<uint32_t>(vertex.InfluenceCount, VMSkinVertex::MaxInfluences);
        for (uint32_t slot = 0; slot < Count; ++slot) {
            uint32_t at = slot;
            for (; at > 0 && Before(vertex.InfluenceBones[slot], vertex.InfluenceWeights[slot], at - 1); --at) {
                Bones[at] = Bones[at - 1];
                Weights[at] = Weights[at - 1];
            }
            Bones[at] = vertex.InfluenceBones[slot];
            Weights[at] = vertex.InfluenceWeights[slot];
        }
    }

    bool operator==(const InfluenceSet& other) const
    {
        if (Count != other.Count)
            return false;
        for (uint32_t i = 0; i < Count; ++i) {
            if (Bones[i] != other.Bones[i] || !(Weights[i] == other.Weights[i]))
                return false;
        }
        return true;
    }

private:
    bool Before(const VMBone* bone, float weight, uint32_t index) const
    {
        if (bone != Bones[index])
            return std::less<const VMBone*>()(bone, Bones[index]);
        return weight < Weights[index];
    }
};

bool SameFloats(const float* a, const float* b, int count)
{
    for (int i = 0; i < count; ++i) {
        if (!(a[i] == b[i]))
            return false;
    }
    return true;
}

class Identity {
public:
    Identity(const VMModel& model, const TrackSignatures& tracks) : m_model(model), m_tracks(tracks) {}

    bool Identical(int a, int b) const
    {
        const VMSkinVertex& x = *m_model.Vertices[a];
        const VMSkinVertex& y = *m_model.Vertices[b];
        if (!SameFloats(x.Position, y.Position, 3) || !SameFloats(x.BaseUV, y.BaseUV, 2) ||
            !SameFloats(x.SecondUV, y.SecondUV, 2) || !SameFloats(x.Normal, y.Normal, 3) ||
            !SameFloats(x.Tangent, y.Tangent, 3) || std::memcmp(x.Colour, y.Colour, sizeof x.Colour) != 0 ||
            !(InfluenceSet(x) == InfluenceSet(y)))
            return false;
        const TrackEntry* p = m_tracks.Begin(a);
        const TrackEntry* q = m_tracks.Begin(b);
        if (m_tracks.End(a) - p != m_tracks.End(b) - q)
            return false;
        for (; p != m_tracks.End(a); ++p, ++q) {
            if (p->Track != q->Track || !SameFloats(p->Position, q->Position, 3) || !SameFloats(p->Normal, q->Normal, 3))
                return false;
        }
        return true;
    }

    uint64_t Hash(int index) const
    {
        const VMSkinVertex& v = *m_model.Vertices[index];
        uint64_t h = HashWords(Bits(v.Position[0]), Bits(v.Position[1]), Bits(v.Position[2]));
        h = Mix(h, Bits(v.BaseUV[0]), Bits(v.BaseUV[1]));
        h = Mix(h, Bits(v.Normal[0]), Bits(v.Normal[1]));
        const InfluenceSet influences(v);
        for (uint32_t i = 0; i < influences.Count; ++i)
            h = Mix(h, reinterpret_cast<uintptr_t>(influences.Bones[i]), Bits(influences.Weights[i]));
        for (const TrackEntry* entry = m_tracks.Begin(index); entry != m_tracks.End(index); ++entry)
            h = Mix(h, entry->Track, Bits(entry->Position[0]));
        return h;
    }

    // NaN equals nothing, so a vertex carrying one is identical to no other.
    bool Mergeable(int index) const
    {
        const VMSkinVertex& v = *m_model.Vertices[index];
        const float* fields[] = {v.Position, v.Normal, v.Tangent};
        for (const float* field : fields) {
            if (std::isnan(field[0]) || std::isnan(field[1]) || std::isnan(field[2]))
                return false;
        }
        return !std::isnan(v.BaseUV[0]) && !std::isnan(v.BaseUV[1]) && !std::isnan(v.SecondUV[0]) &&
               !std::isnan(v.SecondUV[1]);
    }

private:
    // Equal floats give equal bits: -0 is folded onto +0.
    static uint64_t Bits(float value) { return std::bit_cast<uint32_t>(value == 0.0f ? 0.0f : value); }
    static uint64_t Mix(uint64_t h, uint64_t a, uint64_t b) { return HashWords(h, a, b); }

    const VMModel& m_model;
    const TrackSignatures& m_tracks;
};

struct VertexKey {
    const Identity* Rule;
    int Index;
    bool operator==(const VertexKey& other) const { return Rule->Identical(Index, other.Index); }
};

struct KeyOfVertex {
    const Identity* Rule;
    VertexKey operator()(int member) const { return {Rule, member}; }
};

struct HashOfVertex {
    uint64_t operator()(const VertexKey& key) const { return key.Rule->Hash(key.Index); }
};

// For each vertex the earlier vertex it merges into, -1 for the first of its kind.
std::vector<int> FindSurvivors(const VMModel& model)
{
    const int count = model.Vertices.Count();
    const TrackSignatures tracks(model);
    const Identity rule(model, tracks);
    std::vector<int> survivor(static_cast<size_t>(count), -1);
    MemberTable<VertexKey, KeyOfVertex, HashOfVertex> table(static_cast<size_t>(count), KeyOfVertex {&rule},
                                                            HashOfVertex {});
    for (int index = 0; index < count; ++index) {
        if (index % ProgressStep == 0)
            GeometryLog("Opt. Move vertex %i/%i\n", index, count);
        if (!rule.Mergeable(index))
            continue;
        int& first = table.Member(VertexKey {&rule, index});
        if (first < 0)
            first = index;
        else
            survivor[static_cast<size_t>(index)] = first;
    }
    return survivor;
}

void MergeVertices(VMModel& model, const std::vector<int>& survivor)
{
    for (VMFace* face : model.Faces) {
        for (int corner = 0; corner < face->CornerCount(); ++corner) {
            const int index = TrackSignatures::IndexOf(model, face->Corner(corner));
            if (index >= 0 && survivor[static_cast<size_t>(index)] >= 0)
                face->SetCorner(corner, model.Vertices[survivor[static_cast<size_t>(index)]]);
        }
    }
    // A split copy whose source merges away follows the survivor, which is the same vertex.
    for (VMSkinVertex* vertex : model.Vertices) {
        const int source = TrackSignatures::IndexOf(model, vertex->Source);
        if (source >= 0 && survivor[static_cast<size_t>(source)] >= 0)
            vertex->Source = model.Vertices[survivor[static_cast<size_t>(source)]];
    }
    TrackSignatures::ForEachTrack(model, [&](VMVertexTrack& track) {
        std::erase_if(track.Deltas, [&](const VMVertexDelta& delta) {
            const int index = TrackSignatures::IndexOf(model, delta.Vertex);
            return index >= 0 && survivor[static_cast<size_t>(index)] >= 0;
        });
    });
    const int count = model.Vertices.Count();
    for (int index = count - 1; index >= 0; --index) {
        if (index % ProgressStep == 0)
            GeometryLog("Opt. Merge vertex %i/%i\n", index, count);
        if (survivor[static_cast<size_t>(index)] < 0)
            continue;
        VMSkinVertex& vertex = *model.Vertices[index];
        while (vertex.InfluenceCount > 0)
            DetachSlot(vertex, static_cast<int>(vertex.InfluenceCount) - 1);
        model.Vertices.RemoveLeaveEmpty(index);
    }
    model.Vertices.Compact();
}

} // namespace

int OptimizeMesh(VMModel& model, float epsVert)
{
    GeometryLog("OptimizeMesh() - begin\n");
    model.Vertices.Compact();
    uint32_t position = 0;
    for (VMSkinVertex* vertex : model.Vertices) {
        vertex->Index = position++;
        vertex->IdLink = nullptr;
    }

    GeometryLog("OptimizeMesh() - move vertices\n");
    std::vector<int> survivor;
    if (epsVert >= 0.0f) {
        try {
            survivor = FindSurvivors(model);
        } catch (const std::bad_alloc&) {
            return -301;
        }
    }
    GeometryLog("OptimizeMesh() - move end\n");

    GeometryLog("OptimizeMesh() - merge vertices\n");
    if (!survivor.empty())
        MergeVertices(model, survivor);
    GeometryLog("OptimizeMesh() - merge end\n");

    GeometryLog("OptimizeMesh() - normalize weights\n");
    for (VMSkinVertex* vertex : model.Vertices)
        NormalizeWeights(*vertex);

    GeometryLog("OptimizeMesh() - fix ID\n");
    const int result = FixModelID(model);

    GeometryLog("OptimizeMesh() - Enum\n");
    model.Enumerate();
    GeometryLog("OptimizeMesh() - Finished\n");
    return result;
}
