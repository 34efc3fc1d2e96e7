#include <maya/MGlobal.h>

#include "SceneGraph.h"
#include "Sets.h"

#include <algorithm>
#include <optional>

namespace {

std::vector<std::string> Words(const std::string& command)
{
  std::vector<std::string> words;
  std::string current;
  bool quoted = false;
  for (char c : command) {
    if (c == '"') {
      quoted = !quoted;
      continue;
    }
    if (!quoted && (c == ' ' || c == '\t' || c == ';')) {
      if (!current.empty())
        words.push_back(current);
      current.clear();
      continue;
    }
    current += c;
  }
  if (!current.empty())
    words.push_back(current);
  return words;
}

// "dagPose -r -g -bp <node>": puts every member of the bind poses that hold the node back to its stored values.
MStatus RestoreBindPose(const std::string& nodeName)
{
  standin::Node* target = standin::FindNodeByPath(nodeName);
  if (!target)
    return MStatus(MS::kInvalidParameter, "dagPose: No object matches name: " + nodeName);
  bool restored = false;
  for (const auto& node : standin::CurrentScene().nodes) {
    if (node->type != MFn::kDagPose || node->pose.empty())
      continue;
    const bool holds = std::any_of(node->pose.begin(), node->pose.end(),
                                   [&](const standin::PoseEntry& e) { return e.member == target; });
    if (!holds)
      continue;
    for (const standin::PoseEntry& entry : node->pose)
      for (const auto& [attrName, value] : entry.values)
        if (standin::Attribute* a = entry.member->FindAttribute(attrName))
          standin::SetNumber(entry.member, standin::PlugKey{a, {}}, value);
    restored = true;
  }
  standin::CurrentScene().Touch();
  return restored ? MStatus(MS::kSuccess) : MStatus(MS::kFailure, "dagPose: No bind pose holds " + nodeName);
}

// "createAndAssignShader blinn <node>": a new blinn with its shading group, assigned to the whole mesh.
MStatus CreateAndAssignShader(const std::vector<std::string>& words)
{
  if (words.size() != 3 || words[1] != "blinn")
    return MS::kInvalidParameter;
  standin::Node* mesh = standin::FindNode(words[2]);
  if (mesh && mesh->type == MFn::kTransform)
    for (standin::Node* child : mesh->children)
      if (child->type == MFn::kMesh)
        mesh = child;
  if (!mesh || mesh->type != MFn::kMesh)
    return MStatus(MS::kInvalidParameter, "createAndAssignShader: No mesh named " + words[2]);
  standin::Node* shader = standin::NewNode("blinn", "blinn1");
  standin::Node* engine = standin::NewNode("shadingEngine", shader->name + "SG");
  standin::Connect(shader, standin::PlugKey{shader->FindAttribute("outColor"), {}}, engine,
                   standin::PlugKey{engine->FindAttribute("surfaceShader"), {}});
  standin::AddSetMember(engine, mesh, 0, nullptr);
  return MS::kSuccess;
}

MStatus Run(const MString& command, int* intResult, std::optional<std::string>* textResult = nullptr)
{
  standin::Scene& scene = standin::CurrentScene();
  const std::string text = command.asChar();
  scene.commandsRun.push_back(text);
  const std::vector<std::string> words = Words(text);
  if (words.empty())
    return MS::kSuccess;
  if (words == std::vector<std::string>{"file", "-q", "-prompt"}) {
    if (intResult)
      *intResult = scene.interactive ? 1 : 0;
    return MS::kSuccess;
  }
  if (words == std::vector<std::string>{"file", "-q", "-sceneName"} || words == std::vector<std::string>{"file", "-q", "-sn"}) {
    if (textResult)
      *textResult = scene.fileName;
    return MS::kSuccess;
  }
  if (words == std::vector<std::string>{"minimizeApp"} || words == std::vector<std::string>{"showWindow", "MayaWindow"})
    return MS::kSuccess;
  if (words.size() == 5 && words[0] == "dagPose" && words[1] == "-r" && words[2] == "-g" && words[3] == "-bp")
    return RestoreBindPose(words[4]);
  if (words[0] == "createAndAssignShader")
    return CreateAndAssignShader(words);
  return MStatus(MS::kNotImplemented, "Cannot find procedure \"" + words[0] + "\".");
}

}

MStatus MGlobal::getActiveSelectionList(MSelectionList& dest, bool)
{
  dest = standin::CurrentScene().activeSelection;
  return MS::kSuccess;
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& src, ListAdjustment mode)
{
  MSelectionList& active = standin::CurrentScene().activeSelection;
  switch (mode) {
  case kReplaceList: active = src; break;
  case kRemoveFromList: active.merge(src, MSelectionList::kRemoveFromList); break;
  case kAddToHeadOfList: {
    MSelectionList merged = src;
    merged.merge(active);
    active = merged;
    break;
  }
  default: active.merge(src); break;
  }
  return MS::kSuccess;
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment mode)
{
  MSelectionList list;
  const MStatus status = list.add(name);
  if (!status)
    return status;
  return setActiveSelectionList(list, mode);
}

MStatus MGlobal::clearSelectionList()
{
  standin::CurrentScene().activeSelection.clear();
  return MS::kSuccess;
}

MStatus MGlobal::viewFrame(const MTime& time)
{
  standin::CurrentScene().SetTime(time.as(MTime::kSeconds));
  return MS::kSuccess;
}

MStatus MGlobal::viewFrame(double frame) { return viewFrame(MTime(frame, MTime::uiUnit())); }

MStatus MGlobal::executeCommand(const MString& command, bool, bool) { return Run(command, nullptr); }

MStatus MGlobal::executeCommand(const MString& command, int& result, bool, bool) { return Run(command, &result); }

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool, bool)
{
  int number = 0;
  std::optional<std::string> text;
  const MStatus status = Run(command, &number, &text);
  result = MString(text ? *text : std::to_string(number));
  return status;
}

MString MGlobal::mayaVersion() { return "8.5"; }

int MGlobal::apiVersion() { return 850; }

MGlobal::MMayaState MGlobal::mayaState(MStatus* status)
{
  if (status)
    *status = MS::kSuccess;
  return standin::CurrentScene().interactive ? kInteractive : kBatch;
}

void MGlobal::displayInfo(const MString& text) { standin::CurrentScene().messages.push_back(text.asChar()); }

void MGlobal::displayWarning(const MString& text)
{
  standin::CurrentScene().messages.push_back(std::string("Warning: ") + text.asChar());
}

void MGlobal::displayError(const MString& text)
{
  standin::CurrentScene().messages.push_back(std::string("Error: ") + text.asChar());
}
