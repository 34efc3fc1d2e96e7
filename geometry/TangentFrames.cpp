#include "geometry/TangentFrames.h"

#include <cmath>
#include <cstddef>

namespace {

struct Vector3 {
    float X = 0.0f, Y = 0.0f, Z = 0.0f;
};

Vector3 Sub(const float a[3], const float b[3]) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
float Dot(const Vector3& a, const Vector3& b) { return a.X * b.X + a.Y * b.Y + a.Z * b.Z; }
Vector3 Scale(const Vector3& a, float s) { return {a.X * s, a.Y * s, a.Z * s}; }
Vector3 Add(const Vector3& a, const Vector3& b) { return {a.X + b.X, a.Y + b.Y, a.Z + b.Z}; }
Vector3 Cross(const Vector3& a, const Vector3& b)
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}
Vector3 Unit(const Vector3& a)
{
    const float length = std::sqrt(Dot(a, a));
    return length > 0.0f && std::isfinite(length) ? Scale(a, 1.0f / length) : Vector3 {};
}
bool IsZero(const Vector3& a) { return a.X == 0.0f && a.Y == 0.0f && a.Z == 0.0f; }

// One triangle's contribution to the frames of its corners.
struct TriangleFrame {
    Vector3 Tangent;
    Vector3 Binormal;
};

TriangleFrame FrameOf(const TangentFrameVertex& a, const TangentFrameVertex& b, const TangentFrameVertex& c)
{
    const Vector3 e1 = Sub(b.Position, a.Position);
    const Vector3 e2 = Sub(c.Position, a.Position);
    const float s1 = b.S - a.S, t1 = b.T - a.T;
    const float s2 = c.S - a.S, t2 = c.T - a.T;
    const float determinant = s1 * t2 - s2 * t1;
    if (determinant == 0.0f || !std::isfinite(determinant))
        return {};
    const float area = 0.5f * std::sqrt(Dot(Cross(e1, e2), Cross(e1, e2)));
    const float sign = determinant > 0.0f ? 1.0f : -1.0f;
    const Vector3 tangent = Unit(Scale(Add(Scale(e1, t2), Scale(e2, -t1)), sign));
    const Vector3 binormal = Unit(Scale(Add(Scale(e2, s1), Scale(e1, -s2)), sign));
    if (!std::isfinite(area))
        return {};
    return {Scale(tangent, area), Scale(binormal, area)};
}

// The frames growing at one input vertex: which output vertex each is, and its sums.
struct Group {
    uint32_t Output;
    Vector3 Tangent;
    Vector3 Binormal;
};

bool Agrees(const Group& group, const TriangleFrame& frame)
{
    // A degenerate triangle has no direction and joins any group; a group that has only met such
    // triangles has none yet and takes any frame.
    if ((IsZero(frame.Tangent) && IsZero(frame.Binormal)) || (IsZero(group.Tangent) && IsZero(group.Binormal)))
        return true;
    return Dot(group.Tangent, frame.Tangent) > 0.0f && Dot(group.Binormal, frame.Binormal) > 0.0f;
}

void Store(const Vector3& sum, float out[3])
{
    out[0] = sum.X;
    out[1] = sum.Y;
    out[2] = sum.Z;
}

} // namespace

TangentFrames GenerateTangentFrames(const std::vector<TangentFrameVertex>& vertices,
                                    const std::vector<uint32_t>& indices)
{
    const size_t vertexCount = vertices.size();
    TangentFrames result;
    result.Vertices = vertices;
    result.Indices = indices;
    result.Sources.resize(vertexCount);
    for (size_t i = 0; i < vertexCount; ++i)
        result.Sources[i] = static_cast<uint32_t>(i);

    // The corners of each input vertex, in triangle order (counting sort).
    std::vector<uint32_t> cornerStart(vertexCount + 1, 0);
    const size_t triangleCount = indices.size() / 3;
    const auto valid = [&](size_t triangle) {
        return indices[3 * triangle] < vertexCount && indices[3 * triangle + 1] < vertexCount &&
               indices[3 * triangle + 2] < vertexCount;
    };
    for (size_t triangle = 0; triangle < triangleCount; ++triangle) {
        if (valid(triangle)) {
            for (size_t k = 0; k < 3; ++k)
                ++cornerStart[indices[3 * triangle + k] + 1];
        }
    }
    for (size_t i = 0; i < vertexCount; ++i)
        cornerStart[i + 1] += cornerStart[i];
    std::vector<uint32_t> corners(cornerStart[vertexCount]);
    std::vector<uint32_t> fill(cornerStart.begin(), cornerStart.end() - 1);
    std::vector<TriangleFrame> frames(triangleCount);
    for (size_t triangle = 0; triangle < triangleCount; ++triangle) {
        if (!valid(triangle))
            continue;
        const uint32_t* t = &indices[3 * triangle];
        frames[triangle] = FrameOf(vertices[t[0]], vertices[t[1]], vertices[t[2]]);
        for (size_t k = 0; k < 3; ++k)
            corners[fill[t[k]]++] = static_cast<uint32_t>(3 * triangle + k);
    }

    std::vector<Group> groups;
    for (size_t vertex = 0; vertex < vertexCount; ++vertex) {
        groups.clear();
        for (uint32_t c = cornerStart[vertex]; c < cornerStart[vertex + 1]; ++c) {
            const uint32_t corner = corners[c];
            const TriangleFrame& frame = frames[corner / 3];
            Group* home = nullptr;
            for (Group& group : groups) {
                if (Agrees(group, frame)) {
                    home = &group;
                    break;
                }
            }
            if (home == nullptr) {
                uint32_t output = static_cast<uint32_t>(vertex);
                if (!groups.empty()) {
                    output = static_cast<uint32_t>(result.Vertices.size());
                    result.Vertices.push_back(vertices[vertex]);
                    result.Sources.push_back(static_cast<uint32_t>(vertex));
                }
                groups.push_back({output, {}, {}});
                home = &groups.back();
            }
            home->Tangent = Add(home->Tangent, frame.Tangent);
            home->Binormal = Add(home->Binormal, frame.Binormal);
            result.Indices[corner] = home->Output;
        }
        for (const Group& group : groups) {
            Store(group.Tangent, result.Vertices[group.Output].Tangent);
            Store(group.Binormal, result.Vertices[group.Output].Binormal);
        }
    }
    return result;
}
