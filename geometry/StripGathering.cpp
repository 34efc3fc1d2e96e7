#include "geometry/StripGathering.h"

#include "model/VMWorld.h"

#include <algorithm>
#include <functional>
#include <string>
#include <unordered_map>

namespace {

struct Box {
    float Min[3] = {0.0f, 0.0f, 0.0f};
    float Max[3] = {0.0f, 0.0f, 0.0f};
    bool Empty = true;

    void Grow(const float* point)
    {
        for (int axis = 0; axis < 3; ++axis) {
            if (Empty) {
                Min[axis] = point[axis];
                Max[axis] = point[axis];
            } else {
                Min[axis] = std::min(Min[axis], point[axis]);
                Max[axis] = std::max(Max[axis], point[axis]);
            }
        }
        Empty = false;
    }

    // A NaN extent never fits.
    bool FitsIn(float size) const
    {
        for (int axis = 0; axis < 3; ++axis)
            if (!(Max[axis] - Min[axis] <= size))
                return false;
        return true;
    }
};

Box WithTriangle(Box box, const VMPolygon& triangle)
{
    for (int corner = 0; corner < 3; ++corner) {
        const float* position = triangle.Corners[static_cast<size_t>(corner)]->Position;
        // A NaN coordinate must make the box fail, which min and max would hide.
        for (int axis = 0; axis < 3; ++axis)
            if (position[axis] != position[axis]) {
                box.Min[axis] = position[axis];
                box.Max[axis] = position[axis];
                box.Empty = false;
                return box;
            }
        box.Grow(position);
    }
    return box;
}

// The attributes that every triangle of a batch shares with its first.
struct BatchKey {
    int Bucket = 0;
    uint64_t AttributeBits = 0;
    uint32_t AttributeWord = 0;
    uint32_t CollisionBits = 0;
    int32_t CastShadows = 0;
    int32_t Visible = 0;
    uint32_t Opacity = 0;
    uint32_t Group = 0;
    uint32_t SourceNode = 0;
    const std::string* Name = nullptr;

    bool operator==(const BatchKey& other) const
    {
        return Bucket == other.Bucket && AttributeBits == other.AttributeBits && AttributeWord == other.AttributeWord
            && CollisionBits == other.CollisionBits && CastShadows == other.CastShadows && Visible == other.Visible
            && Opacity == other.Opacity && Group == other.Group && SourceNode == other.SourceNode
            && *Name == *other.Name;
    }
};

struct BatchKeyHash {
    size_t operator()(const BatchKey& key) const
    {
        size_t hash = std::hash<std::string>()(*key.Name);
        const auto mix = [&hash](uint64_t value) { hash ^= std::hash<uint64_t>()(value) + 0x9E3779B97F4A7C15ull + (hash << 6) + (hash >> 2); };
        mix(static_cast<uint64_t>(key.Bucket));
        mix(key.AttributeBits);
        mix(key.AttributeWord);
        mix(key.CollisionBits);
        mix(static_cast<uint32_t>(key.CastShadows));
        mix(static_cast<uint32_t>(key.Visible));
        mix(key.Opacity);
        mix(key.Group);
        mix(key.SourceNode);
        return hash;
    }
};

bool IsStrippable(const VMMaterial& material)
{
    return (material.Kind == 0 || material.Kind == 2 || material.Kind == 5) && material.NoStripping == 0;
}

template <class T>
bool IsListed(const VMOwnedList<T>& list, const T* record)
{
    return record != nullptr && record->Index >= 0 && record->Index < list.Count() && list.Get(record->Index) == record;
}

} // namespace

struct StripGathering::Data {
    struct Bucket {
        int Pass = 0;
        int Material = 0;
        // Candidate numbers in list order.
        std::vector<int> Candidates;
        // Candidates before the cursor are taken or too large for the cube of this pass.
        size_t Cursor = 0;
        bool SkippedUntaken = false;
    };

    std::vector<StripCandidate> Candidates;
    std::vector<uint8_t> Taken;
    std::vector<int> GroupOf;
    // Per group, its candidates not yet taken, in list order.
    std::vector<std::vector<int>> Groups;
    std::vector<Bucket> Buckets;
};

StripGathering::StripGathering(const VMWorld& world, bool stripObject)
    : m_data(std::make_unique<Data>())
{
    for (int index = 0; index < world.Materials.Count(); ++index)
        if (VMMaterial* material = world.Materials.Get(index))
            material->Index = index;
    for (int index = 0; index < world.VisAreas.Count(); ++index)
        if (VMVisArea* area = world.VisAreas.Get(index))
            area->Index = index;

    struct Placed {
        int64_t BucketKey;
        int Candidate;
    };
    std::vector<Placed> placed;
    const int materialCount = world.Materials.Count();
    for (int position = 0; position < world.Polygons.Count(); ++position) {
        VMPolygon* polygon = world.Polygons.Get(position);
        if (polygon == nullptr || polygon->CornerCount() != 3 || polygon->Owners.Count() > 1)
            continue;
        if (std::find(polygon->Corners.begin(), polygon->Corners.end(), nullptr) != polygon->Corners.end())
            continue;
        const VMMaterial* material = polygon->Material();
        if (!IsListed(world.Materials, material) || !IsStrippable(*material))
            continue;
        int pass = 0;
        if (polygon->Owners.Count() == 1) {
            const VMVisArea* area = polygon->Owners.Get(0);
            if (!IsListed(world.VisAreas, area))
                continue;
            pass = area->Index + 1;
        }
        placed.push_back({static_cast<int64_t>(pass) * materialCount + material->Index, static_cast<int>(m_data->Candidates.size())});
        m_data->Candidates.push_back({polygon, position});
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const Placed& a, const Placed& b) { return a.BucketKey < b.BucketKey; });

    m_data->Taken.assign(m_data->Candidates.size(), 0);
    m_data->GroupOf.assign(m_data->Candidates.size(), 0);
    std::unordered_map<BatchKey, int, BatchKeyHash> groupNumbers;
    for (size_t entry = 0; entry < placed.size(); ++entry) {
        if (entry == 0 || placed[entry].BucketKey != placed[entry - 1].BucketKey) {
            Data::Bucket bucket;
            bucket.Pass = static_cast<int>(placed[entry].BucketKey / materialCount);
            bucket.Material = static_cast<int>(placed[entry].BucketKey % materialCount);
            m_data->Buckets.push_back(std::move(bucket));
        }
        const int candidate = placed[entry].Candidate;
        m_data->Buckets.back().Candidates.push_back(candidate);

        const VMPolygon& polygon = *m_data->Candidates[static_cast<size_t>(candidate)].Polygon;
        BatchKey key;
        key.Bucket = static_cast<int>(m_data->Buckets.size()) - 1;
        key.AttributeBits = polygon.AttributeBits;
        key.AttributeWord = polygon.AttributeWord;
        key.CollisionBits = static_cast<uint32_t>(polygon.CollisionFlags) & 0xFFFFu;
        key.CastShadows = polygon.CastShadows;
        key.Visible = polygon.Visible;
        key.Opacity = polygon.Opacity;
        key.Group = polygon.Group;
        key.SourceNode = stripObject ? polygon.SourceNode : 0;
        key.Name = &polygon.Name;
        const auto [found, added] = groupNumbers.try_emplace(key, static_cast<int>(m_data->Groups.size()));
        if (added)
            m_data->Groups.emplace_back();
        m_data->Groups[static_cast<size_t>(found->second)].push_back(candidate);
        m_data->GroupOf[static_cast<size_t>(candidate)] = found->second;
    }
}

StripGathering::~StripGathering() = default;

int StripGathering::BucketCount() const { return static_cast<int>(m_data->Buckets.size()); }
int StripGathering::PassOf(int bucket) const { return m_data->Buckets[static_cast<size_t>(bucket)].Pass; }
int StripGathering::MaterialOf(int bucket) const { return m_data->Buckets[static_cast<size_t>(bucket)].Material; }

void StripGathering::BeginBucket(int bucket)
{
    Data::Bucket& entry = m_data->Buckets[static_cast<size_t>(bucket)];
    entry.Cursor = 0;
    entry.SkippedUntaken = false;
}

// The batch's first triangle is the first candidate of the bucket, in list order, that is
// not taken and fits the cube on its own; every candidate before it that is not taken was left
// out for the cube. The others of its group join in list order while the box allows.
bool StripGathering::Gather(int bucketNumber, float cubeSize, std::vector<StripCandidate>& batch, bool& cubeFull)
{
    batch.clear();
    Data& data = *m_data;
    Data::Bucket& bucket = data.Buckets[static_cast<size_t>(bucketNumber)];
    const bool cubeLimit = cubeSize > 0.0f;
    const auto isTaken = [&data](int candidate) { return data.Taken[static_cast<size_t>(candidate)] != 0; };
    const auto polygonOf = [&data](int candidate) -> const VMPolygon& {
        return *data.Candidates[static_cast<size_t>(candidate)].Polygon;
    };

    while (bucket.Cursor < bucket.Candidates.size()) {
        const int candidate = bucket.Candidates[bucket.Cursor];
        if (!isTaken(candidate)) {
            if (!cubeLimit || WithTriangle(Box(), polygonOf(candidate)).FitsIn(cubeSize))
                break;
            bucket.SkippedUntaken = true;
        }
        ++bucket.Cursor;
    }
    cubeFull = bucket.SkippedUntaken;
    if (bucket.Cursor == bucket.Candidates.size())
        return false;

    std::vector<int>& group = data.Groups[static_cast<size_t>(data.GroupOf[static_cast<size_t>(bucket.Candidates[bucket.Cursor])])];
    Box box;
    for (const int candidate : group) {
        if (isTaken(candidate))
            continue;
        if (cubeLimit) {
            const Box grown = WithTriangle(box, polygonOf(candidate));
            if (!grown.FitsIn(cubeSize)) {
                cubeFull = true;
                continue;
            }
            box = grown;
        }
        data.Taken[static_cast<size_t>(candidate)] = 1;
        batch.push_back(data.Candidates[static_cast<size_t>(candidate)]);
    }
    std::erase_if(group, isTaken);
    return true;
}

void StripGathering::GiveBack(int bucketNumber, const StripCandidate& candidate)
{
    Data& data = *m_data;
    const Data::Bucket& bucket = data.Buckets[static_cast<size_t>(bucketNumber)];
    for (const int number : bucket.Candidates) {
        if (data.Candidates[static_cast<size_t>(number)].Polygon != candidate.Polygon)
            continue;
        data.Taken[static_cast<size_t>(number)] = 0;
        std::vector<int>& group = data.Groups[static_cast<size_t>(data.GroupOf[static_cast<size_t>(number)])];
        group.insert(std::lower_bound(group.begin(), group.end(), number), number);
        return;
    }
}
