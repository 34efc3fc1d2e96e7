#include "plugin/OptionsDialogHost.h"

#include "harvest/NodeAttributes.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/VExportFormat.h"
#include "ui/ExportOptionsDialog.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MObject.h>

namespace {

// Joints whose parent is no joint, in scene order: the roots a model's skeleton may start from.
std::vector<std::string> RootJointNames()
{
    std::vector<std::string> names;
    for (MItDag joints(MItDag::kDepthFirst, MFn::kJoint); !joints.isDone(); joints.next()) {
        MDagPath path;
        joints.getPath(path);
        const MFnDagNode node(path);
        if (node.parentCount() > 0 && node.parent(0).hasFn(MFn::kJoint))
            continue;
        names.push_back(GetNodeName(path.node()));
    }
    return names;
}

} // namespace

bool OptionsDialogHost::ShowOptionsDialog(const VExportFormat& format, ExportSession& session)
{
    OptionsDialogContext context;
    context.FormatKind = format.FormatKind();
    context.StaticGeometryControls = format.StaticGeometryControls();
    context.UsesProject = format.UsesProject();
    context.TargetFile = session.TargetFile;
    context.ProjectFile = session.ProjectFile;
    context.ProjectDirectory = session.ProjectDirectory;
    context.TargetDirectory = session.TargetDirectory;
    context.NoPrompt = session.NoPrompt;
    context.TriangleCount = session.Harvest.Stats.TriangleCount;
    if (context.FormatKind == kFormatKindModel)
        context.RootBones = RootJointNames();

    const OptionsDialogServices services {TheMessageBox(), TheServices().DialogView, TheApplicationSettings(),
                                          TheSettingsStore()};
    return ::ShowOptionsDialog(context, &session.Options, session.Animations, services, session.TextureDirectory) == 1;
}
