#include "HistoryNode.h"
#include "MeshEdit.h"

#include "../NumberCast.h"

// tweak: the vertex moves an artist made on a deformed mesh, which Maya keeps in front of the deformers (the shape's
// tweakLocation points at vlist[0].vertex). Relative (the default), each listed vertex moves by its vlist and plist
// offsets, scaled by the envelope; absolute, a listed vertex goes to its vlist position.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"relativeTweak", "rtw", K::Bool, 1.0},
    {"plist", "pl", K::Compound, 0.0, nullptr, true},
    {"controlPoints", "cp", K::Compound, 0.0, "plist", true},
    {"xValue", "xv", K::Distance, 0.0, "controlPoints"},
    {"yValue", "yv", K::Distance, 0.0, "controlPoints"},
    {"zValue", "zv", K::Distance, 0.0, "controlPoints"},
    {"vlist", "vl", K::Compound, 0.0, nullptr, true},
    {"vertex", "vt", K::Compound, 0.0, "vlist", true},
    {"xVertex", "vx", K::Float, 0.0, "vertex"},
    {"yVertex", "vy", K::Float, 0.0, "vertex"},
    {"zVertex", "vz", K::Float, 0.0, "vertex"},
};

std::shared_ptr<Mesh> ComputeTweak(Node& node, unsigned int index, std::string& problem)
{
  Deformation d;
  if (!StartDeformation(node, index, problem, d))
    return nullptr;
  const bool relative = Number(node, "relativeTweak") != 0.0;
  auto apply = [&](const char* list, const char* (&axes)[3], bool offsets) {
    for (unsigned int v : Elements(node, list, {index})) {
      if (v >= d.moved.size() || !d.moved[v])
        continue;
      for (int c = 0; c < 3; ++c) {
        const double value = Number(node, axes[c], {index, v});
        float& p = d.out->points[static_cast<size_t>(v) * 3 + static_cast<size_t>(c)];
        p = ClampTo<float>(offsets ? p + d.envelope * value : value);
      }
    }
  };
  const char* vertexAxes[3] = {"xVertex", "yVertex", "zVertex"};
  const char* pointAxes[3] = {"xValue", "yValue", "zValue"};
  apply("vertex", vertexAxes, relative);
  if (relative)
    apply("controlPoints", pointAxes, true);
  return d.out;
}

}

const HistoryNodeType kTweakType{"tweak", MFn::kTweak, kGeometryFilterAttributes, kAttributes,
                                 "outputGeometry", "inputGeometry", ComputeTweak};

}
