#include "geometry/CollisionHulls.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>

// Last: Qhull's header defines macros of common names (True, False, minimize_, ...).
#include <libqhull_r/qhull_ra.h>

namespace {

// Qhull's messages (a flat object is the expected case, not an error worth showing) go to a
// memory stream that is thrown away.
class DiscardedMessages {
public:
    DiscardedMessages() : m_stream(open_memstream(&m_text, &m_size)) {}
    ~DiscardedMessages()
    {
        if (m_stream != nullptr)
            std::fclose(m_stream);
        std::free(m_text);
    }
    DiscardedMessages(const DiscardedMessages&) = delete;
    DiscardedMessages& operator=(const DiscardedMessages&) = delete;

    std::FILE* Stream() const { return m_stream; }

private:
    char* m_text = nullptr;
    size_t m_size = 0;
    std::FILE* m_stream;
};

// One Qhull run, its memory freed with the object on every path.
class QhullRun {
public:
    explicit QhullRun(std::FILE* messages) { qh_zero(&m_qh, messages); }
    ~QhullRun()
    {
        qh_freeqhull(&m_qh, !qh_ALL);
        int stillLong = 0;
        int totalLong = 0;
        qh_memfreeshort(&m_qh, &stillLong, &totalLong);
    }
    QhullRun(const QhullRun&) = delete;
    QhullRun& operator=(const QhullRun&) = delete;

    qhT* State() { return &m_qh; }

private:
    qhT m_qh;
};

double Cross(const double* a, const double* b, const double* c, double normal[3])
{
    const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const double v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    normal[0] = u[1] * v[2] - u[2] * v[1];
    normal[1] = u[2] * v[0] - u[0] * v[2];
    normal[2] = u[0] * v[1] - u[1] * v[0];
    return normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2];
}

// The hull of the points (x, y, z each) as triples of point numbers; false when the points span
// no volume. "Qt" triangulates the facets Qhull merged for precision; the zero-area triangles
// that this can leave are dropped.
bool HullTriangles(std::vector<double>& points, std::vector<int32_t>& triangles)
{
    const int count = static_cast<int>(points.size() / 3);
    if (count < 4)
        return false;
    DiscardedMessages messages;
    if (messages.Stream() == nullptr)
        return false;
    QhullRun run(messages.Stream());
    qhT* qh = run.State();
    char options[] = "qhull Qt";
    if (qh_new_qhull(qh, 3, count, points.data(), False, options, nullptr, messages.Stream()) != 0)
        return false;

    facetT* facet = nullptr;
    vertexT* vertex = nullptr;
    vertexT** vertexp = nullptr;
    FORALLfacets {
        int corner[3];
        int corners = 0;
        FOREACHvertex_(facet->vertices) {
            if (corners < 3)
                corner[corners] = qh_pointid(qh, vertex->point);
            ++corners;
        }
        if (corners != 3)
            return false;
        double normal[3];
        if (Cross(&points[static_cast<size_t>(corner[0]) * 3], &points[static_cast<size_t>(corner[1]) * 3],
                  &points[static_cast<size_t>(corner[2]) * 3], normal) == 0.0)
            continue;
        const double facing = normal[0] * facet->normal[0] + normal[1] * facet->normal[1] + normal[2] * facet->normal[2];
        if (facing < 0.0)
            std::swap(corner[1], corner[2]);
        triangles.insert(triangles.end(), {corner[0], corner[1], corner[2]});
    }
    return !triangles.empty();
}

struct CollisionObject {
    uint32_t Number = 0;
    std::vector<size_t> Triangles;
};

// The objects in the order of their first triangle, each with its triangles in order.
std::vector<CollisionObject> ObjectsOf(const std::vector<uint32_t>& objects)
{
    std::vector<CollisionObject> found;
    std::unordered_map<uint32_t, size_t> position;
    for (size_t triangle = 0; triangle < objects.size(); ++triangle) {
        const auto [entry, added] = position.try_emplace(objects[triangle], found.size());
        if (added)
            found.push_back({objects[triangle], {}});
        found[entry->second].Triangles.push_back(triangle);
    }
    return found;
}

} // namespace

std::vector<uint32_t> ReplaceByConvexHulls(const std::vector<float>& positions, std::vector<int32_t>& indices,
                                           std::vector<uint32_t>& objects)
{
    std::vector<uint32_t> kept;
    std::vector<int32_t> newIndices;
    std::vector<uint32_t> newObjects;
    for (const CollisionObject& object : ObjectsOf(objects)) {
        // The object's own points, numbered in the order its triangles first use them.
        std::unordered_map<int32_t, int32_t> local;
        std::vector<int32_t> global;
        std::vector<double> points;
        for (size_t triangle : object.Triangles)
            for (size_t k = 0; k < 3; ++k) {
                const int32_t point = indices[triangle * 3 + k];
                if (!local.try_emplace(point, static_cast<int32_t>(global.size())).second)
                    continue;
                global.push_back(point);
                const float* p = &positions[static_cast<size_t>(point) * 3];
                points.insert(points.end(), {p[0], p[1], p[2]});
            }

        std::vector<int32_t> hull;
        if (HullTriangles(points, hull)) {
            for (int32_t corner : hull)
                newIndices.push_back(global[static_cast<size_t>(corner)]);
            newObjects.insert(newObjects.end(), hull.size() / 3, object.Number);
            continue;
        }
        kept.push_back(object.Number);
        for (size_t triangle : object.Triangles) {
            newIndices.insert(newIndices.end(), indices.begin() + static_cast<std::ptrdiff_t>(triangle * 3),
                              indices.begin() + static_cast<std::ptrdiff_t>(triangle * 3 + 3));
            newObjects.push_back(object.Number);
        }
    }
    indices = std::move(newIndices);
    objects = std::move(newObjects);
    return kept;
}
