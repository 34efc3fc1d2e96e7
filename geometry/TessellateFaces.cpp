#include "geometry/TessellateFaces.h"

#include "geometry/SplitPolygon.h"
#include "model/VMModel.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

int TessellateFaces(VMModel& model)
{
    int needed = 0;
    bool splitting = false;
    for (const VMFace* face : model.Faces) {
        if (face == nullptr)
            continue;
        needed += std::max(face->CornerCount() - 2, 1);
        splitting = splitting || face->CornerCount() > 3;
    }
    if (!splitting)
        return 0;
    // Room for every triangle first: the list is rebuilt rather than edited, so that a model of
    // quads splits in linear time, and no face can be lost to a list that fails to grow half way.
    try {
        model.Faces.Reserve(model.Faces.Count() + needed);
    } catch (const std::bad_alloc&) {
        return -301;
    }
    std::vector<std::unique_ptr<VMFace>> faces = model.Faces.TakeAll();
    for (std::unique_ptr<VMFace>& face : faces) {
        if (face != nullptr && face->CornerCount() <= 3)
            model.Faces.Add(face.release());
    }
    int result = 0;
    for (std::unique_ptr<VMFace>& face : faces) {
        if (face == nullptr)
            continue;
        if (result != 0) {
            model.Faces.Add(face.release());
            continue;
        }
        const std::vector<VMSkinVertex*>& corners = face->Corners();
        result = SplitCorners<VMSkinVertex>(
            corners.data(), face->CornerCount(), 0, 3, [&](const std::vector<VMSkinVertex*>& piece) {
                std::unique_ptr<VMFace> triangle = VMModel::NewFace();
                if (!triangle)
                    return -301;
                for (VMSkinVertex* corner : piece) {
                    if (triangle->AddCorner(corner) != 0)
                        return -301;
                }
                triangle->SetMaterial(face->Material());
                return model.Faces.Add(triangle.release());
            });
    }
    return result;
}
