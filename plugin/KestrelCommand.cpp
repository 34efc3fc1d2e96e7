#include "plugin/KestrelCommand.h"

#include "plugin/PrefabProjectFlows.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

void* nodeProperties::creator()
{
    return new nodeProperties;
}

MStatus nodeProperties::doIt(const MArgList& /*args*/)
{
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    MDagPath path;
    if (selection.length() != 1 || !selection.getDagPath(0, path) || !path.hasFn(MFn::kMesh) ||
        !path.hasFn(MFn::kTransform)) {
        displayError("Zephra Properties: No nodes or more than one node selected\r\n");
        return MS::kFailure;
    }
    displayInfo(MString("The node properties dialog for '") + path.partialPathName() + "' is not available yet");
    return MS::kSuccess;
}

void* PrefabShapeCommand::creator()
{
    return new PrefabShapeCommand;
}

MStatus PrefabShapeCommand::doIt(const MArgList& args)
{
    if (args.length() == 0)
        return MS::kInvalidParameter;
    const MString flag = args.asString(0);
    if (flag == "-edit")
        EditPrefabNodeSettings();
    else if (flag == "-setproj")
        ChoosePrefabProject();
    else if (flag == "-newproj")
        CreatePrefabProject();
    return MS::kSuccess;
}
