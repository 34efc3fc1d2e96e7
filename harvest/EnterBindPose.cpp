#include "harvest/EnterBindPose.h"

#include "harvest/HarvestState.h"
#include "report/DebugFile.h"

#include <maya/MAnimControl.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>

MTime EnterBindPose(const HarvestState& state)
{
    const MTime remembered = MAnimControl::currentTime();
    MGlobal::viewFrame(MTime(0.0, MTime::uiUnit()));
    const MDagPath& root = state.Stats.FirstJoint;
    if (state.Parameters.Options.GotoBindPose && root.isValid()) {
        const MString rootName = root.partialPathName();
        DebugPrint("Entering Bind Pose for skeleton with root %s\r\n", rootName.asChar());
        MGlobal::executeCommand(MString("dagPose -r -g -bp ") + rootName, false, false);
    }
    return remembered;
}
