#include "geometry/FixModelID.h"

#include "geometry/ExactPositionGroups.h"
#include "model/VMModel.h"

#include <new>

int FixModelID(VMModel& model)
{
    model.Enumerate();
    for (VMSkinVertex* vertex : model.Vertices)
        vertex->IdLink = nullptr;
    if (model.Vertices.IsEmpty())
        return 0;
    try {
        const ExactPositionGroups groups(model.Vertices, static_cast<size_t>(model.Vertices.Count()));
        // Each group's ring climbs from its lowest member, which is met first.
        for (int first = 0; first < model.Vertices.Count(); ++first) {
            VMSkinVertex* vertex = model.Vertices[first];
            if (vertex->IdLink != nullptr)
                continue;
            for (int member = groups.Next(first); member > first; member = groups.Next(member))
                model.Vertices[member]->IdLink = vertex;
        }
    } catch (const std::bad_alloc&) {
        return -301;
    }
    return 0;
}
