#include "importers/mayaascii/BuildMayaAsciiScene.h"

#include "importers/mayaascii/MayaAsciiAnimCurve.h"
#include "importers/mayaascii/MayaAsciiAttributes.h"
#include "importers/mayaascii/MayaAsciiDagPose.h"
#include "importers/mayaascii/MayaAsciiMesh.h"
#include "importers/mayaascii/MayaAsciiNodeTypes.h"
#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiSkinWeights.h"
#include "importers/mayaascii/MayaAsciiUnits.h"

#include "base/Number.h"
#include "base/Path.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectHandle.h>
#include <maya/MSelectionList.h>
#include <standin/SceneBuilder.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace {

struct HandleHash {
    size_t operator()(const MObjectHandle& handle) const { return handle.hashCode(); }
};

// Data kept beside a node until the file is read, with what messages about it name.
template <typename Data>
struct Kept {
    Data Value;
    std::string Name;
    int Line = 0;
};

template <typename Data>
using KeptData = std::unordered_map<MObjectHandle, Kept<Data>, HandleHash>;

// A node the file creates that the stand-in does not hold.
struct Skipped {
    std::string Type;
    int Line = 0;
};

// A Trax clip of the file; source clips hold the range of the curves they gather.
struct TraxClip {
    double Start = 0.0;
    double End = 0.0;
    bool Instance = true;
    int Line = 0;
};

class SceneBuild {
public:
    SceneBuild(const MaFileAccess& files, ImportResult& result) : m_files(files), m_result(result)
    {
        // Nodes every Maya scene has before a file is read; files address them as ":time1" and so on.
        standin::CreateNode("time", "time1");
        standin::CreateNode("lambert", "lambert1");
        standin::CreateNode("shadingEngine", "initialShadingGroup");
        standin::CreateNode("shadingEngine", "initialParticleSE");
        standin::ConnectAttr("lambert1.outColor", "initialShadingGroup.surfaceShader");
    }

    void Run(const MaRecord& record, const std::string& nameSpace, const std::string& file, int depth)
    {
        const std::string outerSpace = m_nameSpace;
        const std::string outerFile = m_file;
        const int outerDepth = m_depth;
        m_nameSpace = nameSpace;
        m_file = file;
        m_depth = depth;
        m_current = MObject();
        m_currentName.clear();
        for (const MaCommand& command : record.Commands) {
            m_line = command.Line;
            std::visit([this](const auto& data) { Do(data); }, command.Data);
        }
        m_nameSpace = outerSpace;
        m_file = outerFile;
        m_depth = outerDepth;
        m_current = MObject();
        m_currentName.clear();
    }

    void Finish();

private:
    void Warn(const std::string& text) { m_result.Warn((m_file.empty() ? "" : "'" + m_file + "': ") + text, m_line); }

    // Names inside a referenced file live in its namespace; ":name" is in the root namespace, where the nodes every
    // scene has live.
    std::string Qualified(const std::string& name) const
    {
        std::string qualified;
        size_t at = 0;
        while (at <= name.size()) {
            const size_t bar = std::min(name.find('|', at), name.size());
            const std::string part = name.substr(at, bar - at);
            if (at > 0)
                qualified += '|';
            if (!part.empty())
                qualified += part.front() == ':' ? part.substr(1) : m_nameSpace + part;
            at = bar + 1;
        }
        return qualified;
    }

    static bool IsRootName(const std::string& name) { return !name.empty() && name.front() == ':'; }

    bool IsSkipped(const std::string& qualified) const { return m_skipped.count(LastName(qualified)) > 0; }

    static std::string LastName(const std::string& name)
    {
        const size_t bar = name.rfind('|');
        return bar == std::string::npos ? name : name.substr(bar + 1);
    }

    // Files name nodes thousands of times, so the nodes they made are looked up by name in a table first; paths,
    // and nodes the file did not make, go through a selection list as Maya resolves them.
    MObject FindNode(const std::string& qualified, unsigned int* instance = nullptr) const
    {
        if (instance)
            *instance = 0;
        const auto made = m_byName.find(qualified);
        if (made != m_byName.end())
            return made->second.object();
        MSelectionList list;
        if (qualified.empty() || !list.add(MString(qualified.c_str())))
            return MObject();
        MDagPath path;
        if (instance)
            *instance = list.getDagPath(0, path) ? path.instanceNumber() : 0;
        MObject node;
        list.getDependNode(0, node);
        return node;
    }

    void Do(const MaRequires& required)
    {
        for (const std::string& type : required.NodeTypes)
            m_pluginOfType[type] = required.Plugin;
    }

    void Do(const MaCurrentUnit& unit)
    {
        if (!unit.Linear.empty() && !LinearUnitNamed(unit.Linear, m_units.Linear))
            Warn("currentUnit: the linear unit '" + unit.Linear + "' is unknown; centimetres are taken");
        if (!unit.Angle.empty() && !AngularUnitNamed(unit.Angle, m_units.Angular))
            Warn("currentUnit: the angular unit '" + unit.Angle + "' is unknown; degrees are taken");
        if (!unit.Time.empty() && !TimeUnitNamed(unit.Time, m_units.Time))
            Warn("currentUnit: the time unit '" + unit.Time + "' is unknown; film (24 fps) is taken");
        if (m_depth > 0)
            return;
        MDistance::setUIUnit(m_units.Linear);
        MAngle::setUIUnit(m_units.Angular);
        MTime::setUIUnit(m_units.Time);
    }

    void Do(const MaFileReference& reference)
    {
        // A file that references itself, directly or not, would never end.
        constexpr int kDeepestReference = 8;
        if (m_depth >= kDeepestReference) {
            Warn("file: references nest deeper than " + std::to_string(kDeepestReference) + " files; '" +
                 reference.Path + "' is not read");
            return;
        }
        MaRecord record;
        ImportResult read;
        const std::string path = m_files.Locate ? m_files.Locate(reference.Path) : std::string();
        if (path.empty()) {
            Warn("file: the referenced file '" + reference.Path + "' does not exist; its nodes are missing");
            return;
        }
        if (!m_files.Read || !m_files.Read(path, record, read)) {
            Warn("file: the referenced file '" + reference.Path + "' cannot be read: " + read.Error +
                 "; its nodes are missing");
            return;
        }
        for (const ImportWarning& warning : read.Warnings)
            for (int i = 0; i < warning.Count; ++i)
                m_result.Warn("'" + FileNameOf(FromNativePath(reference.Path)) + "': " + warning.Text, warning.Line);
        const MaUnits outer = m_units;
        const std::string space = reference.Namespace.empty() ? m_nameSpace : m_nameSpace + reference.Namespace + ":";
        Run(record, space, FileNameOf(FromNativePath(reference.Path)), m_depth + 1);
        m_units = outer;
    }

    void Do(const MaCreateNode& create)
    {
        const std::string name = Qualified(create.Name);
        m_current = MObject();
        m_currentName = name;
        m_currentSkipped = false;
        m_scriptCurrent = false;
        if (create.Shared && !name.empty()) {
            m_current = FindNode(name);
            if (!m_current.isNull())
                return;
        }
        MObject parent;
        if (!create.Parent.empty()) {
            const std::string parentName = Qualified(create.Parent);
            if (IsSkipped(parentName)) {
                Skip(name, create.Type, "the nodes below it are passed over with it");
                return;
            }
            parent = FindNode(parentName);
            if (parent.isNull()) {
                Warn("createNode: the parent '" + create.Parent + "' does not exist; the node '" + create.Name +
                     "' is passed over");
                Skip(name, create.Type, std::string());
                return;
            }
        }
        m_scriptCurrent = create.Type == "script";
        m_current = standin::CreateNode(create.Type, name, parent);
        if (m_current.isNull() && IsTransformKind(create.Type))
            m_current = standin::CreateNode("transform", name, parent);
        if (m_current.isNull() && IsWithoutExportEffect(create.Type)) {
            Skip(name, create.Type, std::string());
            return;
        }
        // As Maya keeps the nodes of a plug-in it does not have, a node of a type the stand-in does not implement is
        // kept with whatever the file gives it; it computes nothing.
        if (m_current.isNull()) {
            Warn(UnknownTypeText(create.Type));
            m_current = standin::CreateUnknownNode(create.Type, name, parent);
        }
        if (m_current.isNull()) {
            Skip(name, create.Type, std::string());
            return;
        }
        m_currentName = MFnDependencyNode(m_current).name().asChar();
        if (!IsRootName(create.Name) && create.Name.find('|') == std::string::npos && m_currentName != name)
            Warn("createNode: the name '" + name + "' is taken; the node is named '" + m_currentName + "'");
        m_createdLine[MObjectHandle(m_current)] = m_line;
        m_byName.emplace(m_currentName, MObjectHandle(m_current));
    }

    std::string UnknownTypeText(const std::string& type) const
    {
        const auto plugin = m_pluginOfType.find(type);
        if (plugin != m_pluginOfType.end())
            return "the node type '" + type + "' of the plug-in '" + plugin->second +
                   "' is not available; its nodes are kept but compute nothing";
        return "the node type '" + type + "' is not supported; its nodes are kept but compute nothing";
    }

    static bool IsUnknown(const MObject& node) { return node.hasFn(MFn::kUnknown) || node.hasFn(MFn::kUnknownDag); }

    void Skip(const std::string& name, const std::string& type, const std::string& warning)
    {
        if (!warning.empty())
            Warn(warning);
        if (!name.empty())
            m_skipped[LastName(name)] = Skipped{type, m_line};
        m_current = MObject();
        m_currentSkipped = true;
    }

    void Do(const MaSelect& select)
    {
        const std::string name = Qualified(select.Name);
        m_currentName = name;
        m_scriptCurrent = false;
        m_current = FindNode(name);
        m_currentSkipped = m_current.isNull() && (IsSkipped(name) || IsRootName(select.Name));
        if (m_current.isNull() && !m_currentSkipped) {
            Warn("select: no node is named '" + select.Name + "'; the commands for it are passed over");
            m_currentSkipped = true;
        }
    }

    void Do(const MaRename& rename)
    {
        const MObject node = rename.From.empty() ? m_current : FindNode(Qualified(rename.From));
        if (node.isNull()) {
            if (!m_currentSkipped || !rename.From.empty())
                Warn("rename: no node is named '" + (rename.From.empty() ? m_currentName : rename.From) + "'");
            return;
        }
        const std::string before = MFnDependencyNode(node).name().asChar();
        const std::string after = MFnDependencyNode(node).setName(MString(Qualified(rename.To).c_str())).asChar();
        const auto made = m_byName.find(before);
        if (made != m_byName.end() && made->second.object() == node) {
            m_byName.erase(made);
            m_byName.emplace(after, MObjectHandle(node));
        }
    }

    // The node a command addresses: its own name, or the current node for a plug that starts with '.'. Null, with
    // silent set, for a node passed over on purpose.
    MObject Target(const std::string& written, const std::string& command, bool& silent, unsigned int& instance)
    {
        silent = false;
        instance = 0;
        if (written.empty()) {
            silent = m_currentSkipped;
            if (m_current.isNull() && !silent)
                Warn(command + ": no node is current");
            return m_current;
        }
        const std::string name = Qualified(written);
        const MObject node = FindNode(name, &instance);
        if (node.isNull()) {
            silent = IsSkipped(name) || IsRootName(written);
            if (!silent)
                Warn(command + ": no node is named '" + written + "'");
        }
        return node;
    }

    template <typename Data>
    bool Keep(KeptData<Data>& kept, const MObject& node, const MaPlugPath& path, const MaSetAttr& set)
    {
        Kept<Data>& entry = kept[MObjectHandle(node)];
        if (entry.Name.empty()) {
            entry.Name = MFnDependencyNode(node).name().asChar();
            const auto created = m_createdLine.find(MObjectHandle(node));
            entry.Line = created == m_createdLine.end() ? m_line : created->second;
        }
        std::string why;
        bool taken = false;
        if constexpr (std::is_same_v<Data, MaCurveData>)
            taken = entry.Value.Take(path, set, m_units, why);
        else
            taken = entry.Value.Take(path, set, why);
        if (!taken)
            Warn("setAttr \"" + set.Plug + "\" on '" + entry.Name + "' is passed over: " + why);
        return true;
    }

    void Do(const MaSetAttr& set)
    {
        MaPlugPath path;
        if (!ParsePlugPath(set.Plug, path)) {
            if (set.Plug.find('.') == std::string::npos && !set.Plug.empty())
                Warn("setAttr: '" + set.Plug + "' names no attribute");
            else
                Warn("setAttr: '" + set.Plug + "' is not an attribute name");
            return;
        }
        bool silent = false;
        unsigned int instance = 0;
        const MObject node = Target(path.Node, "setAttr", silent, instance);
        if (node.isNull()) {
            if (m_scriptCurrent && path.Node.empty())
                ReadSceneConfiguration(path, set);
            KeepFromSkipped(path.Node.empty() ? m_currentName : Qualified(path.Node), path, set);
            return;
        }
        // Values on a node that computes nothing are kept by Maya for its plug-in; no export reads them.
        if (IsUnknown(node))
            return;
        if (node.hasFn(MFn::kMesh) && MaMeshData::Holds(path) && Keep(m_meshes, node, path, set))
            return;
        if (node.hasFn(MFn::kAnimCurve) && MaCurveData::Holds(path) && Keep(m_curves, node, path, set))
            return;
        if (node.hasFn(MFn::kSkinClusterFilter) && MaSkinWeights::Holds(path) && Keep(m_skins, node, path, set))
            return;
        if (node.hasFn(MFn::kDagPose) && MaDagPose::Holds(path) && Keep(m_poses, node, path, set))
            return;
        const int range = path.RangeSegment();
        if (range >= 0) {
            const MaPlugSegment& segment = path.Segments[static_cast<size_t>(range)];
            if (segment.Last - *segment.First >= set.Numbers.size() + set.Strings.size()) {
                Warn("setAttr \"" + set.Plug + "\": the range names more elements than the values fill");
                return;
            }
        }
        std::vector<MPlug> plugs;
        std::string missing;
        switch (ResolvePlugs(node, instance, path, false, plugs, missing)) {
        case MaResolve::MissingAttribute:
            if (!IsAttributeWithoutExportEffect(missing))
                Warn("setAttr: the " + std::string(MFnDependencyNode(node).typeName().asChar()) + " '" +
                     MFnDependencyNode(node).name().asChar() + "' has no attribute '" + missing + "'");
            return;
        case MaResolve::Malformed: Warn("setAttr \"" + set.Plug + "\": " + missing); return;
        case MaResolve::Resolved: break;
        }
        // The time node's output is the scene's current time, which the stand-in keeps in its time control.
        if (node.hasFn(MFn::kTime)) {
            if (m_depth == 0 && set.Numbers.size() == 1 && set.Strings.empty())
                MAnimControl::setCurrentTime(MTime(set.Numbers.front(), m_units.Time));
            return;
        }
        std::string why;
        if (!WritePlugValues(plugs, set, m_units, why))
            Warn("setAttr \"" + set.Plug + "\" on '" + MFnDependencyNode(node).name().asChar() + "': " + why);
    }

    void ReadSceneConfiguration(const MaPlugPath& path, const MaSetAttr& set);

    // What passed-over nodes hold that the scene still needs: the source range of a Trax clip, to list it.
    void KeepFromSkipped(const std::string& name, const MaPlugPath& path, const MaSetAttr& set)
    {
        const auto skipped = m_skipped.find(LastName(name));
        if (skipped == m_skipped.end())
            return;
        const std::string& attribute = path.Segments.front().Name;
        if (skipped->second.Type != "animClip" || set.Numbers.size() != 1)
            return;
        TraxClip& clip = m_clips[skipped->first];
        clip.Line = skipped->second.Line;
        if (attribute == "ss" || attribute == "sourceStart")
            clip.Start = set.Numbers.front();
        else if (attribute == "se" || attribute == "sourceEnd")
            clip.End = set.Numbers.front();
        else if (attribute == "ci" || attribute == "clipInstance")
            clip.Instance = set.Numbers.front() != 0.0;
    }

    void Do(const MaAddAttr& add)
    {
        bool silent = false;
        unsigned int instance = 0;
        const MObject node = Target(add.Node, "addAttr", silent, instance);
        if (node.isNull())
            return;
        // Aliases rename attributes for Maya's editors; files address attributes by their own names.
        if (add.DataType == "attributeAlias")
            return;
        std::string why;
        if (!AddDynamicAttribute(node, add, why))
            Warn("addAttr: '" + add.LongName + "' is not added to '" +
                 std::string(MFnDependencyNode(node).name().asChar()) + "': " + why);
    }

    // One end of a connection.
    struct End {
        std::string Text;
        MaPlugPath Path;
        MObject Node;
        unsigned int Instance = 0;
        MPlug Plug;
    };

    // The node of one end; false, with nothing said for a node passed over on purpose.
    bool FindEnd(const std::string& text, End& end)
    {
        end.Text = text;
        if (!ParsePlugPath(text, end.Path) || end.Path.Node.empty() || end.Path.RangeSegment() >= 0) {
            Warn("connectAttr: '" + text + "' is not a plug name");
            return false;
        }
        bool silent = false;
        end.Node = Target(end.Path.Node, "connectAttr", silent, end.Instance);
        return !end.Node.isNull();
    }

    // The plug of one end. A node kept without a type takes the attributes the file names, of the kind of the plug
    // at the other end (like).
    bool ResolveEnd(End& end, const MPlug& like)
    {
        if (IsUnknown(end.Node)) {
            end.Plug = standin::UnknownNodePlug(end.Node, end.Text.substr(end.Text.find('.') + 1), like);
            return !end.Plug.isNull();
        }
        std::vector<MPlug> plugs;
        std::string missing;
        switch (ResolvePlugs(end.Node, end.Instance, end.Path, true, plugs, missing)) {
        case MaResolve::MissingAttribute:
            if (!IsAttributeWithoutExportEffect(missing))
                Warn("connectAttr: the " + std::string(MFnDependencyNode(end.Node).typeName().asChar()) + " '" +
                     MFnDependencyNode(end.Node).name().asChar() + "' has no attribute '" + missing + "'");
            return false;
        case MaResolve::Malformed: Warn("connectAttr \"" + end.Text + "\": " + missing); return false;
        case MaResolve::Resolved: break;
        }
        end.Plug = plugs.front();
        return true;
    }

    void Do(const MaConnectAttr& connect)
    {
        End source;
        End destination;
        if (!FindEnd(connect.Source, source) || !FindEnd(connect.Destination, destination))
            return;
        // A node without a type learns the kind of its attribute from the other end, so the known end comes first.
        const bool sourceFirst = !IsUnknown(source.Node);
        if (!ResolveEnd(sourceFirst ? source : destination, MPlug()) ||
            !ResolveEnd(sourceFirst ? destination : source, sourceFirst ? source.Plug : destination.Plug))
            return;
        if (destination.Plug.isArray()) {
            // "-na" takes the next free element; Maya's files use it for set members and list nodes.
            MIntArray used;
            destination.Plug.getExistingArrayAttributeIndices(used);
            unsigned int next = 0;
            for (unsigned int i = 0; i < used.length(); ++i)
                next = std::max(next, static_cast<unsigned int>(used[i]) + 1);
            destination.Plug = destination.Plug.elementByLogicalIndex(next);
        }
        if (source.Plug.isArray() || !standin::ConnectAttr(source.Plug, destination.Plug))
            Warn("connectAttr: '" + connect.Source + "' cannot feed '" + connect.Destination + "'");
    }

    void Do(const MaParent& parent)
    {
        MObject target;
        if (!parent.World) {
            target = FindNode(Qualified(parent.Parent));
            if (target.isNull()) {
                if (!IsSkipped(Qualified(parent.Parent)))
                    Warn("parent: no node is named '" + parent.Parent + "'");
                return;
            }
        }
        for (const std::string& child : parent.Children) {
            const MObject node = FindNode(Qualified(child));
            if (node.isNull()) {
                if (!IsSkipped(Qualified(child)))
                    Warn("parent: no node is named '" + child + "'");
                continue;
            }
            const bool done = parent.AddInstance ? standin::AddInstance(node, target) : standin::Reparent(node, target);
            if (!done)
                Warn("parent: '" + child + "' cannot go below '" + parent.Parent + "'");
        }
    }

    void ReportHistoryProblems();
    void LocateTextures();
    void ListClips();

    const MaFileAccess& m_files;
    ImportResult& m_result;
    MaUnits m_units;
    std::string m_nameSpace;
    std::string m_file;
    int m_depth = 0;
    int m_line = 0;
    MObject m_current;
    std::string m_currentName;
    bool m_currentSkipped = false;
    bool m_scriptCurrent = false;
    std::map<std::string, std::string> m_pluginOfType;
    std::unordered_map<std::string, Skipped> m_skipped;
    std::unordered_map<MObjectHandle, int, HandleHash> m_createdLine;
    std::unordered_map<std::string, MObjectHandle> m_byName;
    std::map<std::string, TraxClip> m_clips;
    KeptData<MaMeshData> m_meshes;
    KeptData<MaCurveData> m_curves;
    KeptData<MaSkinWeights> m_skins;
    KeptData<MaDagPose> m_poses;
    std::optional<std::pair<double, double>> m_playback;
};

// Maya keeps the playback range in a script node that runs "playbackOptions -min 1 -max 120 ..." when the scene
// opens; the range is read from that text instead of running it.
void SceneBuild::ReadSceneConfiguration(const MaPlugPath& path, const MaSetAttr& set)
{
    const std::string& attribute = path.Segments.front().Name;
    if (m_depth > 0 || (attribute != "b" && attribute != "before") || set.Strings.empty())
        return;
    const std::string& text = set.Strings.front();
    const size_t command = text.find("playbackOptions");
    if (command == std::string::npos)
        return;
    auto flag = [&](const char* name, double& value) {
        const size_t at = text.find(std::string(" ") + name + " ", command);
        if (at == std::string::npos)
            return false;
        const size_t begin = at + std::char_traits<char>::length(name) + 2;
        const size_t end = text.find_first_of(" ;\n", begin);
        return ParseFloat(text.substr(begin, end == std::string::npos ? std::string::npos : end - begin), value);
    };
    double first = 0.0;
    double last = 0.0;
    if ((flag("-min", first) || flag("-minTime", first)) && (flag("-max", last) || flag("-maxTime", last)) &&
        first <= last)
        m_playback = std::make_pair(first, last);
}

void SceneBuild::LocateTextures()
{
    if (!m_files.Locate)
        return;
    for (MItDependencyNodes it(MFn::kFileTexture); !it.isDone(); it.next()) {
        MPlug name = MFnDependencyNode(it.thisNode()).findPlug("fileTextureName");
        const std::string written = name.asString().asChar();
        const std::string located = written.empty() ? std::string() : m_files.Locate(written);
        if (!located.empty() && located != written)
            name.setValue(MString(located.c_str()));
    }
}

// Trax source clips are listed with their ranges so that they can become animation entries; the clips are not
// evaluated, so the attributes they drive keep the values the file gives them.
void SceneBuild::ListClips()
{
    int first = 0;
    for (const auto& [name, clip] : m_clips) {
        if (clip.Instance || clip.End < clip.Start)
            continue;
        m_result.Clips.push_back({name, clip.Start, clip.End});
        first = first == 0 ? clip.Line : std::min(first, clip.Line);
    }
    if (first > 0)
        m_result.Warn("Trax clips are listed but not evaluated; the attributes they drive keep their values", first);
}

// Meshes whose history reaches a node the stand-in does not evaluate are named with that node, as Maya would show
// them empty or with the geometry the file stored.
void SceneBuild::ReportHistoryProblems()
{
    for (const standin::HistoryProblem& problem : standin::HistoryProblems()) {
        const auto created = m_createdLine.find(MObjectHandle(FindNode(problem.mesh)));
        m_result.Warn("the mesh '" + problem.mesh + "' is made by '" + problem.node + "' (" + problem.nodeType +
                          "): " + problem.reason +
                          (problem.empty ? "; the mesh is empty" : "; the mesh shows the geometry the file stores"),
                      created == m_createdLine.end() ? 0 : created->second);
    }
}

void SceneBuild::Finish()
{
    for (const auto& [node, kept] : m_meshes)
        kept.Value.Build(node.object(), kept.Name, kept.Line, m_result);
    for (const auto& [node, kept] : m_curves)
        kept.Value.Build(node.object(), kept.Name, kept.Line, m_result);
    for (const auto& [node, kept] : m_skins)
        kept.Value.Build(node.object(), kept.Name, kept.Line, m_result);
    for (const auto& [node, kept] : m_poses)
        kept.Value.Build(node.object(), kept.Name, kept.Line, m_result);
    LocateTextures();
    ListClips();
    ReportHistoryProblems();
    if (m_playback)
        standin::SetPlaybackRange(MTime(m_playback->first, MTime::uiUnit()), MTime(m_playback->second, MTime::uiUnit()));
}

} // namespace

void BuildMayaAsciiScene(const MaRecord& record, const MaFileAccess& files, ImportResult& result)
{
    SceneBuild build(files, result);
    build.Run(record, std::string(), std::string(), 0);
    build.Finish();
}
