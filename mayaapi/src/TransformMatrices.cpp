#include "SceneGraph.h"

#include "NumberCast.h"

#include <maya/MEulerRotation.h>

#include <algorithm>

namespace standin {
namespace {

MVector Triple(Node* node, const char* attrName)
{
  Attribute* a = node->FindAttribute(attrName);
  if (!a || a->children.size() != 3)
    return MVector();
  return MVector(EvaluatePlug(node, PlugKey{a->children[0], {}}).number,
                 EvaluatePlug(node, PlugKey{a->children[1], {}}).number,
                 EvaluatePlug(node, PlugKey{a->children[2], {}}).number);
}

MMatrix Translation(const MVector& t)
{
  MMatrix m;
  m(3, 0) = t.x;
  m(3, 1) = t.y;
  m(3, 2) = t.z;
  return m;
}

MMatrix Scaling(const MVector& s)
{
  MMatrix m;
  m(0, 0) = s.x;
  m(1, 1) = s.y;
  m(2, 2) = s.z;
  return m;
}

bool IsTransform(const Node* node)
{
  return node && (node->type == MFn::kTransform || node->type == MFn::kJoint);
}

// Maya's transform: [Sp^-1 S Sp Spt] [Rp^-1 Ra R Rp Rpt] [T]; a joint: [S] [Ra] [R] [Jo] [Is] [T] with Is the
// inverse of the parent's scale when segment scale compensation is on.
MMatrix ComputeLocalMatrix(Node* node)
{
  const auto order = static_cast<MEulerRotation::RotationOrder>(RotateOrderIndex(EvaluateNumber(node, "rotateOrder")));
  const MMatrix r = MEulerRotation(Triple(node, "rotate"), order).asMatrix();
  const MMatrix ra = MEulerRotation(Triple(node, "rotateAxis")).asMatrix();
  const MMatrix s = Scaling(Triple(node, "scale"));
  const MMatrix t = Translation(Triple(node, "translate"));
  if (node->type == MFn::kJoint) {
    const MMatrix jo = MEulerRotation(Triple(node, "jointOrient")).asMatrix();
    MMatrix is;
    if (EvaluateNumber(node, "segmentScaleCompensate") != 0.0) {
      const MVector parentScale = Triple(node, "inverseScale");
      if (parentScale.x != 0.0 && parentScale.y != 0.0 && parentScale.z != 0.0)
        is = Scaling(MVector(1.0 / parentScale.x, 1.0 / parentScale.y, 1.0 / parentScale.z));
    }
    return s * ra * r * jo * is * t;
  }
  const MVector sp = Triple(node, "scalePivot");
  const MVector rp = Triple(node, "rotatePivot");
  return Translation(-sp) * s * Translation(sp) * Translation(Triple(node, "scalePivotTranslate")) *
         Translation(-rp) * ra * r * Translation(rp) * Translation(Triple(node, "rotatePivotTranslate")) * t;
}

// A node's matrices hold until the scene's next generation: every edit and every new time starts one.
MatrixCache& FreshCache(Node* node)
{
  MatrixCache& cache = node->matrices;
  if (cache.generation != node->scene->generation) {
    cache.generation = node->scene->generation;
    cache.hasLocal = false;
    cache.worlds.clear();
  }
  return cache;
}

// A value computed while evaluation was cut short (a connection cycle, a chain past the depth limit) may hold
// defaults that a shallower query would not see, so it is used once and not kept.
bool Keepable(std::uint64_t cutoffsBefore) { return EvaluationCutoffs() == cutoffsBefore; }

const MMatrix* CachedWorld(Node* node, const std::vector<Node*>& path, size_t depth)
{
  const MatrixCache& cache = FreshCache(node);
  for (const auto& [above, matrix] : cache.worlds)
    if (std::equal(above.begin(), above.end(), path.begin(), path.begin() + static_cast<std::ptrdiff_t>(depth)))
      return &matrix;
  return nullptr;
}

// The node's matrix and whether it inherits its parents', each evaluated once per generation.
const MatrixCache& Local(Node* node)
{
  MatrixCache& cache = FreshCache(node);
  if (cache.hasLocal)
    return cache;
  const std::uint64_t cutoffs = EvaluationCutoffs();
  cache.local = IsTransform(node) ? ComputeLocalMatrix(node) : MMatrix();
  const Attribute* inherits = node->FindAttribute("inheritsTransform");
  cache.inheritsTransform = !inherits || EvaluatePlug(node, PlugKey{const_cast<Attribute*>(inherits), {}}).number != 0.0;
  cache.hasLocal = Keepable(cutoffs);
  return cache;
}

}

MMatrix LocalMatrix(Node* node)
{
  return node ? Local(node).local : MMatrix();
}

// The product runs from the node up, as it always has, so that matrices keep their last bits; only the local
// matrices along the way and each path's result are kept for the generation.
MMatrix PathMatrix(const std::vector<Node*>& path)
{
  if (path.empty())
    return MMatrix();
  const size_t above = path.size() - 1;
  if (const MMatrix* known = CachedWorld(path.back(), path, above))
    return *known;
  const std::uint64_t cutoffs = EvaluationCutoffs();
  MMatrix m;
  for (size_t i = path.size(); i-- > 0;) {
    const MatrixCache& local = Local(path[i]);
    m = m * local.local;
    if (!local.inheritsTransform)
      break;
  }
  if (Keepable(cutoffs))
    FreshCache(path.back()).worlds.emplace_back(
        std::vector<Node*>(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(above)), m);
  return m;
}

}
