#include "importers/mayaascii/MayaAsciiMesh.h"

#include <maya/MPoint.h>
#include <maya/MVector.h>
#include <standin/SceneBuilder.h>

#include <algorithm>
#include <type_traits>
#include <utility>

namespace {

bool Named(const MaPlugSegment& segment, const char* longName, const char* shortName)
{
    return segment.Name == longName || segment.Name == shortName;
}

// Writes values of width numbers per element into a contiguous array from the segment's first index on. Maya
// writes these arrays in order, so an element beyond the end of what is there is refused: it would leave a gap of
// undefined elements.
template <typename T>
bool Store(std::vector<T>& array, const MaPlugSegment& segment, const std::vector<double>& values, size_t width,
           std::string& why)
{
    const size_t first = segment.First.value_or(0);
    const size_t count = segment.First ? segment.Last - first + 1 : values.size() / width;
    if (values.size() != count * width) {
        why = "it gives " + std::to_string(values.size()) + " values for " + std::to_string(count) +
              " elements of " + std::to_string(width);
        return false;
    }
    if (first * width > array.size()) {
        why = "it leaves elements before index " + std::to_string(first) + " unset";
        return false;
    }
    if (std::is_integral_v<T> && std::any_of(values.begin(), values.end(), [](double v) {
            return v != static_cast<double>(static_cast<long long>(v)) || v < -2147483648.0 || v > 2147483647.0;
        })) {
        why = "it gives a value that is not an index";
        return false;
    }
    if (array.size() < (first + count) * width)
        array.resize((first + count) * width);
    for (size_t i = 0; i < values.size(); ++i)
        array[first * width + i] = static_cast<T>(values[i]);
    return true;
}

// The set an index names, made when needed; none for an index beyond what a damaged file could mean.
template <typename T>
T* SetAt(std::vector<T>& sets, const MaPlugSegment& segment, std::string& why)
{
    const size_t index = segment.First.value_or(0);
    constexpr size_t kMostSets = 1024;
    if (index >= kMostSets) {
        why = "set index " + std::to_string(index) + " is out of range";
        return nullptr;
    }
    if (sets.size() <= index)
        sets.resize(index + 1);
    return &sets[index];
}

} // namespace

// A colour set holds as many values per colour as its representation has channels (1 alpha, 3 RGB, 4 RGBA);
// the stand-in keeps RGBA, the missing channels at 1.
bool MaMeshData::StoreColors(ColorSetData& colors, const MaPlugSegment& segment, const std::vector<double>& values,
                             std::string& why)
{
    const auto width = static_cast<size_t>(colors.Representation);
    std::vector<double> rgba;
    rgba.reserve(values.size() / width * 4);
    for (size_t i = 0; i + width <= values.size(); i += width) {
        const double a = width == 3 ? 1.0 : values[i + width - 1];
        rgba.insert(rgba.end(), {width == 1 ? 1.0 : values[i], width == 1 ? 1.0 : values[i + 1],
                                 width == 1 ? 1.0 : values[i + 2], a});
    }
    if (values.size() % width != 0) {
        why = "it gives " + std::to_string(values.size()) + " values for colours of " + std::to_string(width);
        return false;
    }
    return Store(colors.RGBA, segment, rgba, 4, why);
}

bool MaMeshData::Holds(const MaPlugPath& path)
{
    static const char* const kNames[] = {"vt",   "vrts",  "ed",    "edge", "fc",           "face", "uvst",
                                         "uvSet", "cuvs", "currentUVSet", "clst", "colorSet", "ccls",
                                         "currentColorSet", "n", "normals"};
    const std::string& first = path.Segments.front().Name;
    return std::find(std::begin(kNames), std::end(kNames), first) != std::end(kNames);
}

bool MaMeshData::Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why)
{
    const MaPlugSegment& top = path.Segments.front();
    const MaPlugSegment* child = path.Segments.size() > 1 ? &path.Segments[1] : nullptr;
    const std::vector<double>& values = set.Numbers;
    if (Named(top, "vrts", "vt"))
        return Store(m_points, top, values, 3, why);
    if (Named(top, "normals", "n"))
        return Store(m_normals, top, values, 3, why);
    if (Named(top, "edge", "ed"))
        return Store(m_edges, top, values, 3, why);
    if (Named(top, "face", "fc")) {
        if (!set.Faces && values.empty())
            return true; // "setAttr -s 4009 .fc" only announces how many faces follow
        if (!set.Faces) {
            why = "faces are given as polyFaces";
            return false;
        }
        m_faceChunks.push_back({top.First.value_or(0), set.Faces});
        return true;
    }
    if (Named(top, "currentUVSet", "cuvs") || Named(top, "currentColorSet", "ccls")) {
        (Named(top, "currentUVSet", "cuvs") ? m_currentUVSet : m_currentColorSet) =
            set.Strings.empty() ? std::string() : set.Strings.front();
        return true;
    }
    if (!child)
        return true; // "setAttr -s 2 .uvst" only announces how many sets follow
    if (Named(top, "uvSet", "uvst")) {
        UVSetData* uvs = SetAt(m_uvSets, top, why);
        if (!uvs)
            return false;
        if (Named(*child, "uvSetName", "uvsn")) {
            uvs->Name = set.Strings.empty() ? std::string() : set.Strings.front();
            return true;
        }
        return !Named(*child, "uvSetPoints", "uvsp") || Store(uvs->UV, *child, values, 2, why);
    }
    ColorSetData* colors = SetAt(m_colorSets, top, why);
    if (!colors)
        return false;
    if (Named(*child, "colorName", "clsn"))
        colors->Name = set.Strings.empty() ? std::string() : set.Strings.front();
    else if (Named(*child, "colorSetPoints", "clsp"))
        return StoreColors(*colors, *child, values, why);
    else if (Named(*child, "representation", "rprt") && values.size() == 1 &&
             (values.front() == 1 || values.front() == 3 || values.front() == 4))
        colors->Representation = static_cast<int>(values.front());
    return true;
}

void MaMeshData::Build(const MObject& shape, const std::string& name, int line, ImportResult& result) const
{
    auto refuse = [&](const std::string& why) {
        result.Warn("the mesh '" + name + "' is left empty: " + why, line);
    };
    const int vertexCount = static_cast<int>(m_points.size() / 3);
    const std::vector<float>& points = m_points;
    const int edgeCount = static_cast<int>(m_edges.size() / 3);
    for (int e = 0; e < edgeCount; ++e)
        for (int k = 0; k < 2; ++k)
            if (m_edges[static_cast<size_t>(e) * 3 + static_cast<size_t>(k)] < 0 ||
                m_edges[static_cast<size_t>(e) * 3 + static_cast<size_t>(k)] >= vertexCount)
                return refuse("edge " + std::to_string(e) + " names a vertex it does not have");

    standin::MeshDescription mesh;
    for (int v = 0; v < vertexCount; ++v)
        mesh.points.emplace_back(points[static_cast<size_t>(v) * 3], points[static_cast<size_t>(v) * 3 + 1],
                                 points[static_cast<size_t>(v) * 3 + 2]);
    // Corner ids of every UV and colour set, filled from the polyFaces' per-loop lists.
    std::vector<std::vector<int>> uvIds(m_uvSets.size());
    std::vector<std::vector<int>> colorIds(m_colorSets.size());
    std::vector<FaceChunk> chunks = m_faceChunks;
    std::stable_sort(chunks.begin(), chunks.end(),
                     [](const FaceChunk& a, const FaceChunk& b) { return a.FirstFace < b.FirstFace; });
    bool holes = false;
    for (const FaceChunk& chunk : chunks) {
        if (chunk.FirstFace != mesh.counts.size())
            return refuse("its faces from " + std::to_string(chunk.FirstFace) + " on do not follow the faces before");
        const MaPolyFaces& faces = *chunk.Faces;
        std::vector<int> loopCorner(faces.Loops.size(), -1);
        for (size_t l = 0; l < faces.Loops.size(); ++l) {
            const MaPolyFaces::Loop& loop = faces.Loops[l];
            // A hole is cut out of its face in Maya; the stand-in's polygons have none, so the face is kept whole.
            if (loop.Hole) {
                holes = true;
                continue;
            }
            loopCorner[l] = static_cast<int>(mesh.connects.size());
            for (int i = 0; i < loop.EdgeCount; ++i) {
                const int edge = faces.Edges[static_cast<size_t>(loop.EdgeStart + i)];
                const int index = edge < 0 ? -1 - edge : edge;
                if (index >= edgeCount)
                    return refuse("face " + std::to_string(mesh.counts.size()) + " names an edge it does not have");
                mesh.connects.push_back(m_edges[static_cast<size_t>(index) * 3 + (edge < 0 ? 1 : 0)]);
            }
            mesh.counts.push_back(loop.EdgeCount);
        }
        auto spread = [&](const std::vector<MaPolyFaces::LoopIds>& lists, std::vector<std::vector<int>>& ids) {
            for (const MaPolyFaces::LoopIds& list : lists) {
                const int corner = loopCorner[static_cast<size_t>(list.Loop)];
                if (corner < 0 || static_cast<size_t>(list.Set) >= ids.size())
                    continue;
                std::vector<int>& set = ids[static_cast<size_t>(list.Set)];
                set.resize(mesh.connects.size(), -1);
                const int count = faces.Loops[static_cast<size_t>(list.Loop)].EdgeCount;
                for (int i = 0; i < count; ++i)
                    set[static_cast<size_t>(corner + i)] = std::max(-1, faces.Ids[static_cast<size_t>(list.IdStart + i)]);
            }
        };
        spread(faces.UVs, uvIds);
        spread(faces.Colors, colorIds);
    }
    for (size_t f = 0; f < mesh.counts.size(); ++f)
        if (mesh.counts[f] < 3)
            return refuse("face " + std::to_string(f) + " has fewer than three corners");
    if (!standin::SetMeshGeometry(shape, mesh))
        return refuse("its faces name vertices it does not have");
    if (holes)
        result.Warn("the mesh '" + name + "' has faces with holes; the holes are filled", line);

    const size_t corners = mesh.connects.size();
    for (size_t s = 0; s < m_uvSets.size(); ++s) {
        standin::UVSpec uvs;
        uvs.name = m_uvSets[s].Name.empty() ? (s == 0 ? "map1" : "uvSet" + std::to_string(s)) : m_uvSets[s].Name;
        for (size_t i = 0; i + 1 < m_uvSets[s].UV.size(); i += 2) {
            uvs.u.push_back(m_uvSets[s].UV[i]);
            uvs.v.push_back(m_uvSets[s].UV[i + 1]);
        }
        uvs.ids = uvIds[s];
        uvs.ids.resize(corners, -1);
        if (std::any_of(uvs.ids.begin(), uvs.ids.end(), [&](int id) { return id >= static_cast<int>(uvs.u.size()); })) {
            result.Warn("the mesh '" + name + "' names UVs its set '" + uvs.name + "' does not have; they are dropped",
                        line);
            for (int& id : uvs.ids)
                id = id < static_cast<int>(uvs.u.size()) ? id : -1;
        }
        standin::SetUVs(shape, uvs);
    }
    if (!m_currentUVSet.empty())
        standin::SetCurrentUVSet(shape, m_currentUVSet);
    for (size_t s = 0; s < m_colorSets.size(); ++s) {
        standin::ColorSpec colors;
        colors.name = m_colorSets[s].Name.empty() ? "colorSet" + std::to_string(s + 1) : m_colorSets[s].Name;
        colors.representation = m_colorSets[s].Representation;
        colors.rgba = m_colorSets[s].RGBA;
        colors.ids = colorIds[s];
        colors.ids.resize(corners, -1);
        for (int& id : colors.ids)
            id = id < static_cast<int>(colors.rgba.size() / 4) ? id : -1;
        standin::SetColors(shape, colors);
    }
    if (!m_currentColorSet.empty())
        standin::SetCurrentColorSet(shape, m_currentColorSet);
    std::vector<std::pair<int, int>> hard;
    for (int e = 0; e < edgeCount; ++e)
        if (m_edges[static_cast<size_t>(e) * 3 + 2] == 0)
            hard.emplace_back(m_edges[static_cast<size_t>(e) * 3], m_edges[static_cast<size_t>(e) * 3 + 1]);
    standin::SetHardEdges(shape, hard);
    if (m_normals.empty())
        return;
    // Maya keeps user normals either per face-vertex or, when they were locked per vertex, one per vertex.
    const bool perVertex = m_normals.size() != corners * 3;
    if (perVertex && m_normals.size() != static_cast<size_t>(vertexCount) * 3) {
        result.Warn("the mesh '" + name + "' gives " + std::to_string(m_normals.size() / 3) +
                        " normals, neither one per vertex nor one per face-vertex; they are dropped",
                    line);
        return;
    }
    std::vector<MVector> normals;
    normals.reserve(corners);
    for (size_t i = 0; i < corners; ++i) {
        const size_t n = perVertex ? static_cast<size_t>(mesh.connects[i]) : i;
        normals.emplace_back(m_normals[n * 3], m_normals[n * 3 + 1], m_normals[n * 3 + 2]);
    }
    standin::SetFaceVertexNormals(shape, normals);
}
