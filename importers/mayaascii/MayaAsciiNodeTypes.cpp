#include "importers/mayaascii/MayaAsciiNodeTypes.h"

#include <algorithm>
#include <iterator>

namespace {

template <size_t N>
bool Listed(const char* const (&names)[N], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

} // namespace

bool IsWithoutExportEffect(std::string_view nodeType)
{
    static const char* const kTypes[] = {
        "materialInfo", "renderLayer", "renderLayerManager", "displayLayerManager", "lightLinker", "script",
        "nodeGraphEditorInfo", "shapeEditorManager", "poseInterpolatorManager", "hyperGraphInfo", "hyperLayout",
        "hyperView", "sequenceManager", "sequencer", "trackInfoManager", "strokeGlobals", "renderGlobals",
        "renderGlobalsList", "hardwareRenderGlobals", "hardwareRenderingGlobals", "vectorRenderGlobals",
        "resolution", "renderQuality", "partition", "objectFilter", "objectTypeFilter", "objectMultiFilter",
        "objectNameFilter", "objectAttrFilter", "objectRenderFilter", "objectScriptFilter", "selectionListOperator",
        "brush", "polyBlindData", "blindDataTemplate", "dof", "timeEditor", "timeEditorTracks", "ikRPsolver",
        "ikSCsolver", "ikSplineSolver", "ikSystem", "colorManagementGlobals", "viewColorManager", "defaultLightList",
        "defaultShaderList", "defaultTextureList", "defaultRenderUtilityList", "postProcessList", "lightList",
        "characterPartition", "dynController", "globalCacheControl", "mentalrayItemsList", "mentalrayGlobals",
        "mentalrayOptions", "mentalrayFramebuffer", "shadingNodeAttributeSet", "reference", "container",
        "containerBase", "assemblyReference", "clipLibrary", "clipScheduler", "clipToGhostData", "animClip",
        "cameraView", "cameraSet", "uvChooser", "mute",
    };
    return Listed(kTypes, nodeType);
}

bool IsTransformKind(std::string_view nodeType)
{
    static const char* const kTypes[] = {"ikHandle", "ikEffector", "lodGroup", "place3dTexture", "hikIKEffector",
                                         "hikFKJoint", "hikGroundPlane", "dagContainer", "assembly"};
    return Listed(kTypes, nodeType);
}

bool IsAttributeWithoutExportEffect(std::string_view attribute)
{
    static const char* const kAttributes[] = {
        // every node: history, evaluation and editor state
        "ihi", "isHistoricallyInteresting", "nds", "nodeState", "cch", "caching", "fzn", "frozen", "bnm",
        "binMembership",
        // transforms and joints: handles, limits, display
        "dh", "displayHandle", "hdl", "selectHandle", "smd", "showManipDefault", "sml", "bps", "bindPose", "pa",
        "preferredAngle", "radi", "radius", "mnrl", "minRotLimit", "mxrl", "maxRotLimit", "oc", "objectColor",
        "uoc", "useObjectColor", "obcc", "objectColorRGB", "dla", "displayLocalAxis", "typ", "sd", "otp", "liw",
        // meshes: display, component data, the instance groups of components
        "bck", "backfaceCulling", "dcol", "displayColors", "dcc", "displayColorChannel", "dsm", "displaySmoothMesh",
        "hfd", "holeFaceData", "pd", "pinData", "pv", "uvPivot", "vcs", "vertexColorSource", "ciog",
        "compInstObjGroups", "gco", "objectGroupColor", "cd", "cdvm", "covm", "cvd", "de", "din", "dmb", "dn", "dr",
        "dtn", "ndt", "ns", "tnt", "tsa", "twl", "vbc", "vif", "vir", "uvst", "ai_opaque", "ai_translator",
        // sets and shading groups
        "ro", "renderableOnlySet", "mwc", "memberWireframeColor", "vo", "verticesOnlySet", "eo", "edgesOnlySet",
        "fo", "facetsOnlySet", "epo", "editPointsOnlySet", "gn", "groupNodes", "ub", "usedBy", "an", "annotation",
        "bbx", "il", "tpv", "uit", "vwm",
        // lights and cameras
        "ltd", "lightData", "esp", "emitSpecular", "edi", "emitDiffuse", "us", "sc", "shadowColor", "lang",
        "lightAngle", "cap", "coi", "centerOfInterest", "den", "depthName", "dgm", "ff", "fl", "focalLength", "hc",
        "homeCommand", "imn", "imageName", "man", "mask", "o", "orthographic", "ovr", "ow", "orthographicWidth",
        "rnd", "renderable", "tp",
        // file textures and their placement beyond repeat and offset
        "ail", "alphaIsLuminance", "c", "coverage", "cmcf", "cmcp", "cme", "cs", "colorSpace", "fs", "ifr", "mu",
        "mirrorU", "mv", "mirrorV", "n", "noiseUV", "ot", "rf", "rotateFrame", "r", "rotateUV", "s", "stagger", "tf",
        "translateFrame", "vc1", "vc2", "vt1", "vt2", "vt3", "ws", "wu", "wrapU", "wv", "wrapV", "ofs",
        // skin clusters, bind poses, curves and character sets
        "bm", "bindMethod", "bp", "dpf", "dropoff", "ifcl", "lw", "lockWeights", "mmi", "maintainMaxInfluences",
        "ucm", "useComponentsMatrix", "cid", "childIndices", "itc", "g", "global", "p", "parents", "w", "world", "a", "apply", "aal",
        "attributeAliasList", "am", "av", "cer", "cim", "lv", "tce", "tcs", "uv",
        // the time node
        "etw", "tms", "tps", "unw",
    };
    return Listed(kAttributes, attribute);
}
