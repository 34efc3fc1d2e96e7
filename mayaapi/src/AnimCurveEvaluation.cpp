#include "SceneGraph.h"

#include <maya/MFnAnimCurve.h>

#include <algorithm>
#include <cmath>

namespace standin {
namespace {

double Slope(const std::vector<AnimKey>& keys, size_t k, bool outgoing)
{
  const size_t n = keys.size();
  const Tangent type = outgoing ? keys[k].out : keys[k].in;
  auto segment = [&](size_t a, size_t b) {
    const double dt = keys[b].seconds - keys[a].seconds;
    return dt > 0.0 ? (keys[b].value - keys[a].value) / dt : 0.0;
  };
  auto linear = [&]() {
    if (n < 2)
      return 0.0;
    if (outgoing)
      return k + 1 < n ? segment(k, k + 1) : segment(k - 1, k);
    return k > 0 ? segment(k - 1, k) : segment(k, k + 1);
  };
  auto spline = [&]() {
    if (k == 0 || k + 1 >= n)
      return linear();
    return segment(k - 1, k + 1);
  };
  switch (type) {
  case Tangent::Linear: return linear();
  case Tangent::Flat:
  case Tangent::Step:
  case Tangent::StepNext: return 0.0;
  case Tangent::Spline: return spline();
  // Fixed handles, slow, fast, plateau and auto tangents are evaluated as clamped ones for now: close to Maya's
  // curves between keys and equal at the keys.
  case Tangent::Fixed:
  case Tangent::Slow:
  case Tangent::Fast:
  case Tangent::Plateau:
  case Tangent::Auto:
  case Tangent::Clamped: {
    const double tolerance = 1e-9 * std::max(1.0, std::fabs(keys[k].value));
    if ((k > 0 && std::fabs(keys[k].value - keys[k - 1].value) <= tolerance) ||
        (k + 1 < n && std::fabs(keys[k].value - keys[k + 1].value) <= tolerance))
      return 0.0;
    return spline();
  }
  }
  return 0.0;
}

} // namespace

int CurveInfinity(const Node* curve, bool before)
{
  Attribute* attribute = curve->FindAttribute(before ? "preInfinity" : "postInfinity");
  const auto found = attribute ? curve->values.find(PlugKey{attribute, {}}) : curve->values.end();
  return found == curve->values.end() ? 0 : static_cast<int>(found->second.number);
}

namespace {

// Hermite segments between keys with slopes from each key's tangent type; a stepped out-tangent holds the key's
// value up to the next key.
double EvaluateBetweenKeys(const std::vector<AnimKey>& keys, double seconds)
{
  if (seconds <= keys.front().seconds)
    return keys.front().value;
  if (seconds >= keys.back().seconds)
    return keys.back().value;
  const auto next = std::upper_bound(keys.begin(), keys.end(), seconds,
                                     [](double t, const AnimKey& key) { return t < key.seconds; });
  const size_t i = static_cast<size_t>(next - keys.begin()) - 1;
  const AnimKey& a = keys[i];
  const AnimKey& b = keys[i + 1];
  if (a.out == Tangent::Step)
    return a.value;
  if (a.out == Tangent::StepNext)
    return b.value;
  const double h = b.seconds - a.seconds;
  const double s = (seconds - a.seconds) / h;
  const double m0 = Slope(keys, i, true) * h;
  const double m1 = Slope(keys, i + 1, false) * h;
  const double s2 = s * s;
  const double s3 = s2 * s;
  return (2 * s3 - 3 * s2 + 1) * a.value + (s3 - 2 * s2 + s) * m0 + (-2 * s3 + 3 * s2) * b.value + (s3 - s2) * m1;
}

} // namespace

// Beyond the keys as the curve's infinity types say: constant, linear along the end key's tangent, or the keyed
// span repeated (cycle), repeated with each repeat offset by the span's rise (cycle relative), or mirrored every
// other time (oscillate).
double EvaluateCurve(const Node* curve, double seconds)
{
  const std::vector<AnimKey>& keys = curve->keys;
  if (keys.empty())
    return 0.0;
  const AnimKey& first = keys.front();
  const AnimKey& last = keys.back();
  const bool before = seconds < first.seconds;
  if (!before && seconds <= last.seconds)
    return EvaluateBetweenKeys(keys, seconds);
  const int infinity = CurveInfinity(curve, before);
  if (infinity == MFnAnimCurve::kLinear)
    return before ? first.value + (seconds - first.seconds) * Slope(keys, 0, false)
                  : last.value + (seconds - last.seconds) * Slope(keys, keys.size() - 1, true);
  const double span = last.seconds - first.seconds;
  if (infinity < MFnAnimCurve::kCycle || infinity > MFnAnimCurve::kOscillate || !(span > 0.0))
    return before ? first.value : last.value;
  const double cycles = std::floor((seconds - first.seconds) / span);
  double local = seconds - cycles * span;
  if (infinity == MFnAnimCurve::kOscillate && std::fmod(std::abs(cycles), 2.0) == 1.0)
    local = first.seconds + last.seconds - local;
  const double rise = infinity == MFnAnimCurve::kCycleRelative ? cycles * (last.value - first.value) : 0.0;
  return EvaluateBetweenKeys(keys, local) + rise;
}

}
