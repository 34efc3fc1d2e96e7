#include "plugin/KestrelCommand.h"

#include "plugin/PrefabProjectFlows.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>

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
