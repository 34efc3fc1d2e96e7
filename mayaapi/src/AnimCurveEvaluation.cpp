#include "SceneGraph.h"

#include <maya/MFnAnimCurve.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace standin {
namespace {

// Rise over run of the keys a and b; zero for keys at one time.
double Secant(const std::vector<AnimKey>& keys, size_t a, size_t b)
{
  const double dt = keys[b].seconds - keys[a].seconds;
  return dt > 0.0 ? (keys[b].value - keys[a].value) / dt : 0.0;
}

// The stored handle of a key's side as (x seconds, y value), when it gives a direction forward in time.
std::optional<std::pair<double, double>> StoredHandle(const AnimKey& key, bool outgoing)
{
  const double x = outgoing ? key.outX : key.inX;
  const double y = outgoing ? key.outY : key.inY;
  if (!(x > 0.0) || !std::isfinite(x) || !std::isfinite(y))
    return std::nullopt;
  return std::make_pair(x, y);
}

// Horizontal length of a weighted handle: the stored weight, else the segment's length (which draws the curve as
// the unweighted one does), never past the far key so that time keeps running forward along the segment.
double HandleLength(const AnimKey& key, bool outgoing, double span)
{
  const auto handle = StoredHandle(key, outgoing);
  return std::min(handle ? handle->first : span, 3.0 * span);
}

// Slope (value per second) of key k's in- or out-tangent as its tangent type computes it.
double Slope(const std::vector<AnimKey>& keys, size_t k, bool outgoing, bool weighted)
{
  const size_t n = keys.size();
  const bool first = k == 0;
  const bool last = k + 1 >= n;
  const Tangent type = outgoing ? keys[k].out : keys[k].in;
  auto linear = [&]() {
    if (n < 2)
      return 0.0;
    if (outgoing)
      return !last ? Secant(keys, k, k + 1) : Secant(keys, k - 1, k);
    return !first ? Secant(keys, k - 1, k) : Secant(keys, k, k + 1);
  };
  auto smooth = [&]() { return first || last ? linear() : Secant(keys, k - 1, k + 1); };
  // A segment whose handles rise no further than the key at its other end stays between its keys' values: the smooth
  // slope limited so keeps the curve from overshooting next to a key of close value. A handle reaches a third of
  // its length along the segment, the segment's length on unweighted curves.
  auto limited = [&](double slope) {
    double bound = std::numeric_limits<double>::infinity();
    for (const bool side : {false, true}) {
      if (side ? last : first)
        continue;
      const size_t other = side ? k + 1 : k - 1;
      const double span = std::fabs(keys[other].seconds - keys[k].seconds);
      const double length = weighted ? HandleLength(keys[k], side, span) : span;
      if (length > 0.0)
        bound = std::min(bound, 3.0 * std::fabs(keys[other].value - keys[k].value) / length);
    }
    return std::clamp(slope, -bound, bound);
  };
  switch (type) {
  case Tangent::Linear: return linear();
  case Tangent::Flat:
  case Tangent::Step:
  case Tangent::StepNext: return 0.0;
  case Tangent::Spline: return smooth();
  case Tangent::Fixed:
    if (const auto handle = StoredHandle(keys[k], outgoing))
      return handle->second / handle->first;
    return limited(smooth());
  // Slow and fast are Maya's legacy easing types, kept as clamped.
  case Tangent::Slow:
  case Tangent::Fast:
  case Tangent::Clamped: return limited(smooth());
  // Flat at the curve's ends and at a key that is a peak, a trough or level with a neighbour; else clamped smooth.
  case Tangent::Plateau:
  case Tangent::Auto:
    if (first || last || Secant(keys, k - 1, k) * Secant(keys, k, k + 1) <= 0.0)
      return 0.0;
    return limited(smooth());
  }
  return 0.0;
}

double Cubic(double p0, double p1, double p2, double p3, double u)
{
  const double v = 1.0 - u;
  return v * v * v * p0 + 3.0 * v * v * u * p1 + 3.0 * v * u * u * p2 + u * u * u * p3;
}

// A weighted segment is a Bezier curve in (time, value) with handles a third of each tangent's length from its key;
// the curve's parameter at the time is found by bisection, time rising monotonically along it.
double WeightedSegment(const std::vector<AnimKey>& keys, size_t i, double seconds)
{
  const AnimKey& a = keys[i];
  const AnimKey& b = keys[i + 1];
  const double span = b.seconds - a.seconds;
  const double outLength = HandleLength(a, true, span);
  const double inLength = HandleLength(b, false, span);
  const double t1 = a.seconds + outLength / 3.0;
  const double t2 = b.seconds - inLength / 3.0;
  const double v1 = a.value + Slope(keys, i, true, true) * outLength / 3.0;
  const double v2 = b.value - Slope(keys, i + 1, false, true) * inLength / 3.0;
  double low = 0.0;
  double high = 1.0;
  for (int step = 0; step < 60 && high - low > 1e-15; ++step) {
    const double middle = 0.5 * (low + high);
    (Cubic(a.seconds, t1, t2, b.seconds, middle) < seconds ? low : high) = middle;
  }
  return Cubic(a.value, v1, v2, b.value, 0.5 * (low + high));
}

// Between the keys: Hermite segments with slopes from each key's tangent type, Bezier segments on weighted curves;
// a stepped out-tangent holds the key's value up to the next key.
double EvaluateBetweenKeys(const std::vector<AnimKey>& keys, bool weighted, double seconds)
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
  if (weighted)
    return WeightedSegment(keys, i, seconds);
  const double h = b.seconds - a.seconds;
  const double s = (seconds - a.seconds) / h;
  const double m0 = Slope(keys, i, true, weighted) * h;
  const double m1 = Slope(keys, i + 1, false, weighted) * h;
  const double s2 = s * s;
  const double s3 = s2 * s;
  return (2 * s3 - 3 * s2 + 1) * a.value + (s3 - 2 * s2 + s) * m0 + (-2 * s3 + 3 * s2) * b.value + (s3 - s2) * m1;
}

double StoredNumber(const Node* curve, const char* attrName)
{
  Attribute* attribute = curve->FindAttribute(attrName);
  const auto found = attribute ? curve->values.find(PlugKey{attribute, {}}) : curve->values.end();
  return found == curve->values.end() ? 0.0 : found->second.number;
}

} // namespace

int CurveInfinity(const Node* curve, bool before)
{
  return static_cast<int>(StoredNumber(curve, before ? "preInfinity" : "postInfinity"));
}

bool CurveWeighted(const Node* curve) { return StoredNumber(curve, "weightedTangents") != 0.0; }

// Beyond the keys as the curve's infinity types say: constant, linear along the end key's tangent, or the keyed
// span repeated (cycle), repeated with each repeat offset by the span's rise (cycle relative), or mirrored every
// other time (oscillate).
double EvaluateCurve(const Node* curve, double seconds)
{
  const std::vector<AnimKey>& keys = curve->keys;
  if (keys.empty())
    return 0.0;
  const bool weighted = CurveWeighted(curve);
  const AnimKey& first = keys.front();
  const AnimKey& last = keys.back();
  const bool before = seconds < first.seconds;
  if (!before && seconds <= last.seconds)
    return EvaluateBetweenKeys(keys, weighted, seconds);
  const int infinity = CurveInfinity(curve, before);
  if (infinity == MFnAnimCurve::kLinear)
    return before ? first.value + (seconds - first.seconds) * Slope(keys, 0, false, weighted)
                  : last.value + (seconds - last.seconds) * Slope(keys, keys.size() - 1, true, weighted);
  const double span = last.seconds - first.seconds;
  if (infinity < MFnAnimCurve::kCycle || infinity > MFnAnimCurve::kOscillate || !(span > 0.0))
    return before ? first.value : last.value;
  const double cycles = std::floor((seconds - first.seconds) / span);
  double local = seconds - cycles * span;
  if (infinity == MFnAnimCurve::kOscillate && std::fmod(std::abs(cycles), 2.0) == 1.0)
    local = first.seconds + last.seconds - local;
  const double rise = infinity == MFnAnimCurve::kCycleRelative ? cycles * (last.value - first.value) : 0.0;
  return EvaluateBetweenKeys(keys, weighted, local) + rise;
}

}
