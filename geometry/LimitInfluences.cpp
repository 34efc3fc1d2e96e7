#include "geometry/LimitInfluences.h"

#include "model/SkinInfluences.h"
#include "model/VMModel.h"

int LimitInfluences(VMModel& model, int maximum)
{
    if (maximum < 1 || maximum > VMSkinVertex::MaxInfluences)
        return -1;
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        while (vertex->InfluenceCount > static_cast<uint32_t>(maximum))
            DetachSlot(*vertex, WeakestSlot(*vertex));
        NormalizeWeights(*vertex);
    }
    return 0;
}

int ApplyBlendThreshold(VMModel& model, float threshold)
{
    if (!(threshold >= 0.0f && threshold <= 0.5f))
        return -1;
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr || vertex->InfluenceCount < 2)
            continue;
        for (;;) {
            NormalizeWeights(*vertex);
            const int weakest = WeakestSlot(*vertex);
            if (vertex->InfluenceCount < 2 || !(vertex->InfluenceWeights[weakest] < threshold))
                break;
            DetachSlot(*vertex, weakest);
        }
    }
    return 0;
}
