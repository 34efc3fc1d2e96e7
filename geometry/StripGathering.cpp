#include "geometry/StripGathering.h"

#include "geometry/StripCubeGrid.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
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

// The attributes that every triangle of a batch shares with its first, and its bucket.
struct BatchKey {
    int64_t Bucket = 0;
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

constexpr int PrefetchDistance = 16;

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
        // The bucket's candidate numbers, in list order, are Order[First..End).
        size_t First = 0;
        size_t End = 0;
        // Candidates before the cursor are taken or too large for the cube of this pass.
        size_t Cursor = 0;
        bool SkippedUntaken = false;
    };

    // A group's candidates not yet taken, in list order, are among Members[First..End); the
    // slots up to the next group's First held the ones taken since. The grid, when the group has
    // one, files them for the cube it was built for.
    struct Group {
        size_t First = 0;
        size_t End = 0;
        size_t Untaken = 0;
        std::unique_ptr<StripCubeGrid> Grid;
    };

    std::vector<VMPolygon*> Polygons;
    std::vector<int> ListPositions;
    std::vector<uint8_t> Taken;
    std::vector<int> GroupOf;
    std::vector<int> Order;
    std::vector<Group> Groups;
    std::vector<int> Members;
    std::vector<Bucket> Buckets;
    std::vector<StripCandidateBox> Nearby;

    // Closes the gaps that candidates taken since left among the group's member slots.
    void DropTaken(Group& group)
    {
        const auto members = Members.begin();
        group.End = static_cast<size_t>(
            std::remove_if(members + static_cast<std::ptrdiff_t>(group.First), members + static_cast<std::ptrdiff_t>(group.End),
                           [this](int candidate) { return Taken[static_cast<size_t>(candidate)] != 0; })
            - members);
    }
};

namespace {

BatchKey KeyOf(const VMPolygon& polygon, int64_t bucket, bool stripObject)
{
    BatchKey key;
    key.Bucket = bucket;
    key.AttributeBits = polygon.AttributeBits;
    key.AttributeWord = polygon.AttributeWord;
    key.CollisionBits = static_cast<uint32_t>(polygon.CollisionFlags) & 0xFFFFu;
    key.CastShadows = polygon.CastShadows;
    key.Visible = polygon.Visible;
    key.Opacity = polygon.Opacity;
    key.Group = polygon.Group;
    key.SourceNode = stripObject ? polygon.SourceNode : 0;
    key.Name = &polygon.Name;
    return key;
}

} // namespace

StripGathering::StripGathering(const VMWorld& world, bool stripObject)
    : m_data(std::make_unique<Data>())
{
    for (int index = 0; index < world.Materials.Count(); ++index)
        if (VMMaterial* material = world.Materials.Get(index))
            material->Index = index;
    for (int index = 0; index < world.VisAreas.Count(); ++index)
        if (VMVisArea* area = world.VisAreas.Get(index))
            area->Index = index;

    Data& data = *m_data;
    std::vector<int64_t> bucketKeys;
    const int materialCount = world.Materials.Count();
    data.Polygons.reserve(static_cast<size_t>(world.Polygons.Count()));
    data.ListPositions.reserve(static_cast<size_t>(world.Polygons.Count()));
    data.GroupOf.reserve(static_cast<size_t>(world.Polygons.Count()));
    bucketKeys.reserve(static_cast<size_t>(world.Polygons.Count()));
    // Groups are numbered as the list meets them, while each record is at hand: a group never
    // spans two buckets, and only its members' order within it (list order) matters.
    std::vector<size_t> groupSizes;
    std::unordered_map<BatchKey, int, BatchKeyHash> groupNumbers;
    BatchKey previousKey;
    int previousGroup = -1;
    const int polygonCount = world.Polygons.Count();
    for (int position = 0; position < polygonCount; ++position) {
        // The polygons lie scattered over the heap; fetching ahead hides most of the wait.
        if (position + PrefetchDistance < polygonCount)
            if (const VMPolygon* ahead = world.Polygons.Get(position + PrefetchDistance))
                __builtin_prefetch(ahead);
        if (position + PrefetchDistance / 2 < polygonCount)
            if (const VMPolygon* ahead = world.Polygons.Get(position + PrefetchDistance / 2); ahead && !ahead->Corners.empty())
                __builtin_prefetch(ahead->Corners.data());
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
        const int64_t bucketKey = static_cast<int64_t>(pass) * materialCount + material->Index;
        // Neighbouring triangles nearly always share their attributes.
        const BatchKey key = KeyOf(*polygon, bucketKey, stripObject);
        if (previousGroup < 0 || !(key == previousKey)) {
            const auto [found, added] = groupNumbers.try_emplace(key, static_cast<int>(groupSizes.size()));
            if (added)
                groupSizes.push_back(0);
            previousKey = key;
            previousGroup = found->second;
        }
        ++groupSizes[static_cast<size_t>(previousGroup)];
        data.GroupOf.push_back(previousGroup);
        bucketKeys.push_back(bucketKey);
        data.Polygons.push_back(polygon);
        data.ListPositions.push_back(position);
    }

    const size_t count = data.Polygons.size();
    data.Order.resize(count);
    for (size_t candidate = 0; candidate < count; ++candidate)
        data.Order[candidate] = static_cast<int>(candidate);
    if (!std::is_sorted(bucketKeys.begin(), bucketKeys.end()))
        std::stable_sort(data.Order.begin(), data.Order.end(), [&bucketKeys](int a, int b) {
            return bucketKeys[static_cast<size_t>(a)] < bucketKeys[static_cast<size_t>(b)];
        });

    data.Taken.assign(count, 0);
    for (size_t entry = 0; entry < count; ++entry) {
        const int candidate = data.Order[entry];
        const int64_t bucketKey = bucketKeys[static_cast<size_t>(candidate)];
        if (entry == 0 || bucketKey != bucketKeys[static_cast<size_t>(data.Order[entry - 1])]) {
            if (!data.Buckets.empty())
                data.Buckets.back().End = entry;
            Data::Bucket bucket;
            bucket.Pass = static_cast<int>(bucketKey / materialCount);
            bucket.Material = static_cast<int>(bucketKey % materialCount);
            bucket.First = entry;
            data.Buckets.push_back(bucket);
        }
    }
    if (!data.Buckets.empty())
        data.Buckets.back().End = count;

    data.Groups.resize(groupSizes.size());
    size_t first = 0;
    for (size_t group = 0; group < groupSizes.size(); ++group) {
        data.Groups[group].First = first;
        data.Groups[group].End = first;
        data.Groups[group].Untaken = groupSizes[group];
        first += groupSizes[group];
    }
    data.Members.resize(count);
    for (const int candidate : data.Order) {
        Data::Group& group = data.Groups[static_cast<size_t>(data.GroupOf[static_cast<size_t>(candidate)])];
        data.Members[group.End++] = candidate;
    }
}

StripGathering::~StripGathering() = default;

int StripGathering::BucketCount() const { return static_cast<int>(m_data->Buckets.size()); }
int StripGathering::PassOf(int bucket) const { return m_data->Buckets[static_cast<size_t>(bucket)].Pass; }
int StripGathering::MaterialOf(int bucket) const { return m_data->Buckets[static_cast<size_t>(bucket)].Material; }

void StripGathering::BeginBucket(int bucket)
{
    Data::Bucket& entry = m_data->Buckets[static_cast<size_t>(bucket)];
    entry.Cursor = entry.First;
    entry.SkippedUntaken = false;
}

namespace {

// The box of a candidate with finite corners; false for the others, which no finite cube holds.
bool FiniteBoxOf(const VMPolygon& triangle, int candidate, StripCandidateBox& box)
{
    box.Candidate = candidate;
    for (int axis = 0; axis < 3; ++axis) {
        box.Min[axis] = HUGE_VALF;
        box.Max[axis] = -HUGE_VALF;
    }
    for (int corner = 0; corner < 3; ++corner) {
        const float* position = triangle.Corners[static_cast<size_t>(corner)]->Position;
        for (int axis = 0; axis < 3; ++axis) {
            if (!std::isfinite(position[axis]))
                return false;
            box.Min[axis] = std::min(box.Min[axis], position[axis]);
            box.Max[axis] = std::max(box.Max[axis], position[axis]);
        }
    }
    return true;
}

} // namespace

// Files the group's untaken candidates in a grid for this cube, dropping the taken ones from
// its member slots.
void StripGathering::BuildGrid(int groupNumber, float cubeSize)
{
    Data& data = *m_data;
    Data::Group& group = data.Groups[static_cast<size_t>(groupNumber)];
    data.DropTaken(group);
    std::vector<StripCandidateBox> boxes;
    boxes.reserve(group.End - group.First);
    StripCandidateBox box;
    for (size_t member = group.First; member < group.End; ++member) {
        const int candidate = data.Members[member];
        if (FiniteBoxOf(*data.Polygons[static_cast<size_t>(candidate)], candidate, box))
            boxes.push_back(box);
    }
    group.Grid = std::make_unique<StripCubeGrid>(boxes, cubeSize);
}

// The batch's first triangle is the first candidate of the bucket, in list order, that is
// not taken and fits the cube on its own; every candidate before it that is not taken was left
// out for the cube. The others of its group join in list order while the box allows; every
// untaken one that does not join was left out for the cube.
bool StripGathering::Gather(int bucketNumber, float cubeSize, StripBatch& batch, bool& cubeFull)
{
    batch.Triangles.clear();
    batch.ListPositions.clear();
    Data& data = *m_data;
    Data::Bucket& bucket = data.Buckets[static_cast<size_t>(bucketNumber)];
    const bool cubeLimit = cubeSize > 0.0f;
    const auto isTaken = [&data](int candidate) { return data.Taken[static_cast<size_t>(candidate)] != 0; };
    const auto polygonOf = [&data](int candidate) -> const VMPolygon& {
        return *data.Polygons[static_cast<size_t>(candidate)];
    };

    while (bucket.Cursor < bucket.End) {
        const int candidate = data.Order[bucket.Cursor];
        if (!isTaken(candidate)) {
            if (!cubeLimit || WithTriangle(Box(), polygonOf(candidate)).FitsIn(cubeSize))
                break;
            bucket.SkippedUntaken = true;
        }
        ++bucket.Cursor;
    }
    cubeFull = bucket.SkippedUntaken;
    if (bucket.Cursor == bucket.End)
        return false;

    const int firstCandidate = data.Order[bucket.Cursor];
    const int groupNumber = data.GroupOf[static_cast<size_t>(firstCandidate)];
    Data::Group& group = data.Groups[static_cast<size_t>(groupNumber)];
    const auto take = [&](int candidate) {
        data.Taken[static_cast<size_t>(candidate)] = 1;
        batch.Triangles.push_back(data.Polygons[static_cast<size_t>(candidate)]);
        batch.ListPositions.push_back(data.ListPositions[static_cast<size_t>(candidate)]);
        --group.Untaken;
    };

    // Without a finite cube every candidate of the group is reached.
    if (cubeLimit && std::isfinite(cubeSize)) {
        if (!group.Grid || group.Grid->Cube() != cubeSize)
            BuildGrid(groupNumber, cubeSize);
        Box box = WithTriangle(Box(), polygonOf(firstCandidate));
        take(firstCandidate);
        data.Nearby.clear();
        group.Grid->Reachable(box.Min, box.Max, data.Taken, data.Nearby);
        for (const StripCandidateBox& near : data.Nearby) {
            Box grown = box;
            grown.Grow(near.Min);
            grown.Grow(near.Max);
            if (!grown.FitsIn(cubeSize))
                continue;
            box = grown;
            take(near.Candidate);
        }
    } else {
        const auto members = data.Members.begin();
        batch.Triangles.reserve(group.End - group.First);
        batch.ListPositions.reserve(group.End - group.First);
        Box box;
        for (auto member = members + static_cast<std::ptrdiff_t>(group.First); member != members + static_cast<std::ptrdiff_t>(group.End); ++member) {
            const int candidate = *member;
            if (isTaken(candidate))
                continue;
            if (cubeLimit) {
                const Box grown = WithTriangle(box, polygonOf(candidate));
                if (!grown.FitsIn(cubeSize))
                    continue;
                box = grown;
            }
            take(candidate);
        }
        data.DropTaken(group);
    }
    cubeFull = cubeFull || group.Untaken > 0;
    return true;
}

void StripGathering::GiveBack(int bucketNumber, const VMPolygon* triangle)
{
    Data& data = *m_data;
    const Data::Bucket& bucket = data.Buckets[static_cast<size_t>(bucketNumber)];
    for (size_t entry = bucket.First; entry < bucket.End; ++entry) {
        const int number = data.Order[entry];
        if (data.Polygons[static_cast<size_t>(number)] != triangle)
            continue;
        data.Taken[static_cast<size_t>(number)] = 0;
        Data::Group& group = data.Groups[static_cast<size_t>(data.GroupOf[static_cast<size_t>(number)])];
        ++group.Untaken;
        // Its grid cell may have dropped it already.
        group.Grid.reset();
        const auto first = data.Members.begin() + static_cast<std::ptrdiff_t>(group.First);
        const auto end = data.Members.begin() + static_cast<std::ptrdiff_t>(group.End);
        const auto position = std::lower_bound(first, end, number);
        if (position != end && *position == number)
            return;
        std::copy_backward(position, end, end + 1);
        *position = number;
        ++group.End;
        return;
    }
}
