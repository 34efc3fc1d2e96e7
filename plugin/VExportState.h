#pragma once
// The node collector of a static export with the world it fills. Owned by its format object for
// the module's lifetime; Reset between exports.

#include "harvest/StaticSceneVisitor.h"
#include "model/VMWorld.h"

class VExportState : public StaticSceneVisitor {
public:
    using StaticSceneVisitor::StaticSceneVisitor;

    void Reset() override
    {
        StaticSceneVisitor::Reset();
        PlacementTaken = 0;
    }

    // A prefab of nested exports holds something even when its own world is empty.
    virtual bool PlacesOtherAssets() const { return false; }

    VMWorld World;
};
